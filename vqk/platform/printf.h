// vqk/platform/printf.h
//
// Counting printf for wide text, which the C library lacks: the number of characters
// the formatted text needs, without the terminator; -1 when it cannot be formatted.
#pragma once

#include "vqk/config.h"

#include <cstdarg>

namespace vq {
namespace platform {

VQK_API int vscwprintf(const wchar_t* fmt, va_list args);
VQK_API int vscprintf(const char* fmt, va_list args);

} // namespace platform
} // namespace vq
