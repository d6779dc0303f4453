// The runtime's format conventions spelt for a C library that reads formats by the C
// standard (glibc; MinGW-w64's C99 printf). Inside the platform seam only: the systems'
// nativeFormat choose whether their C library needs it.
#pragma once

#include <cstddef>
#include <string>

namespace vq {
namespace platform {

// fmt itself when nothing in it reads differently; otherwise the rewritten form, in
// `local` (size elements) when it fits there, else in `heap`.
const char* standardFormat(const char* fmt, char* local, size_t size, std::string& heap);
const wchar_t* standardFormat(const wchar_t* fmt, wchar_t* local, size_t size, std::wstring& heap);

} // namespace platform
} // namespace vq
