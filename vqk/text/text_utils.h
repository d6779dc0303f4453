// vqk/text/text_utils.h (being written)
#pragma once
