// vqk/platform/printf.h
//
// Counting printf, which the C library lacks for wide text: the number of characters
// the formatted text needs, without the terminator; -1 when it cannot be formatted (a
// null format, or text the locale cannot encode).
//
//   int n = vq::platform::vscwprintf(L"%ls=%d", args);   // then size a block n + 1
#pragma once

#include "vqk/config.h"

#include <cstdarg>

namespace vq {
namespace platform {

VQK_API int vscwprintf(const wchar_t* fmt, va_list args);
VQK_API int vscprintf(const char* fmt, va_list args);

} // namespace platform
} // namespace vq
