// vqk/xml/xin.h (being written)
#pragma once
