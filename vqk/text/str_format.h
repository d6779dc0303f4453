// vqk/text/str_format.h (being written)
#pragma once
