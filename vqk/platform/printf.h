// vqk/platform/printf.h
//
// Counting printf, which the C library lacks for wide text: the number of characters
// the formatted text needs, without the terminator; -1 when it cannot be formatted (a
// null format, or text the locale cannot encode).
//
//   int n = vq::platform::vscwprintf(L"%s=%d", args);   // then size a block n + 1
//
// Formats follow the Windows runtime's conventions on every system, so that code written
// for it prints the same everywhere: in a wide format %s and %c take wide text and %S and
// %C narrow text (the other way round in a narrow format), %hs is always narrow and %ls or
// %ws always wide; %I64d, %I64u, %I64x are 64-bit, %I32d 32-bit, %Id pointer-sized.
// CNativeFormat spells such a format the way this system's C library reads it, and every
// printer of the library hands the C library that spelling:
//
//   vq::platform::CNativeFormat<wchar_t> f(L"%s: %I64u");
//   std::vswprintf(buf, n, f.str(), args);   // L"%ls: %llu" on POSIX
#pragma once

#include "vqk/config.h"

#include <cstdarg>
#include <cstddef>
#include <string>

namespace vq {
namespace platform {

VQK_API int vscwprintf(const wchar_t* fmt, va_list args);
VQK_API int vscprintf(const char* fmt, va_list args);

// Returns fmt itself when the C library reads it as the runtime does; otherwise its
// rewritten form, in `local` (size elements) when it fits there, else in `heap`.
VQK_API const char* nativeFormat(const char* fmt, char* local, size_t size, std::string& heap);
VQK_API const wchar_t* nativeFormat(const wchar_t* fmt, wchar_t* local, size_t size, std::wstring& heap);

template <class T> class CNativeFormat {
public:
    explicit CNativeFormat(const T* fmt) : m_text(fmt ? nativeFormat(fmt, m_local, kLocal, m_heap) : fmt) {}
    CNativeFormat(const CNativeFormat&) = delete;
    CNativeFormat& operator=(const CNativeFormat&) = delete;
    const T* str() const { return m_text; }

private:
    enum { kLocal = 256 };
    T m_local[kLocal];
    std::basic_string<T> m_heap;
    const T* m_text;
};

} // namespace platform
} // namespace vq
