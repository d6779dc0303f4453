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

// The runtime's conversion of a 64-bit unsigned integer for printf and scanf; no other
// code spells it.
constexpr const char* kUint64Conversion =
#if defined(_WIN32)
    "%I64u";
#else
    "%llu";
#endif

VQK_API int vscwprintf(const wchar_t* fmt, va_list args);
VQK_API int vscprintf(const char* fmt, va_list args);

} // namespace platform
} // namespace vq
