// vqk/xml/xml_in.h (being written)
#pragma once
