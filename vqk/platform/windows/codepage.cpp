// The Windows side of the code-page seam: the system's own "ANSI" converter, whose
// default character for what the code page cannot hold is '?'.
#include "vqk/platform/codepage.h"

#include <cstring>
#include <cwchar>
#include <windows.h>

namespace vq {
namespace platform {

int ansiToWide(const char* s, int len, wchar_t* out, int outSize) {
    if (!s || outSize < 0)
        return 0;
    int n = len < 0 ? int(std::strlen(s)) + 1 : len;
    if (n == 0)
        return 0;
    return MultiByteToWideChar(CP_ACP, 0, s, n, outSize ? out : nullptr, outSize);
}

int wideToAnsi(const wchar_t* s, int len, char* out, int outSize) {
    if (!s || outSize < 0)
        return 0;
    int n = len < 0 ? int(std::wcslen(s)) + 1 : len;
    if (n == 0)
        return 0;
    return WideCharToMultiByte(CP_ACP, 0, s, n, outSize ? out : nullptr, outSize, nullptr,
                               nullptr);
}

} // namespace platform
} // namespace vq
