// vqk/xml/xml_out.h (being written)
#pragma once
