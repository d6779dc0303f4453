// The Microsoft runtime reads its own conventions, so formats go to it unchanged; MinGW-w64
// builds print through its C99 printf (__USE_MINGW_ANSI_STDIO, on for C++), which reads
// them as glibc does.
#include "vqk/platform/printf.h"
#include "vqk/platform/printf_standard.h"

#include <cstdio>

namespace vq {
namespace platform {

#if defined(__USE_MINGW_ANSI_STDIO) && __USE_MINGW_ANSI_STDIO
const char* nativeFormat(const char* fmt, char* local, size_t size, std::string& heap) {
    return standardFormat(fmt, local, size, heap);
}
const wchar_t* nativeFormat(const wchar_t* fmt, wchar_t* local, size_t size, std::wstring& heap) {
    return standardFormat(fmt, local, size, heap);
}
#else
const char* nativeFormat(const char* fmt, char*, size_t, std::string&) { return fmt; }
const wchar_t* nativeFormat(const wchar_t* fmt, wchar_t*, size_t, std::wstring&) { return fmt; }
#endif

} // namespace platform
} // namespace vq
