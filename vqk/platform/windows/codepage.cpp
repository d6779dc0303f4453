// The Windows side of the code-page seam: the system's own "ANSI" converter, whose
// default character for what the code page cannot hold is '?'.
#include "vqk/platform/codepage.h"

#include <cstring>
#include <cwchar>
#include <string>
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
    // A surrogate pair is one character, and no single-byte code page holds it: one '?',
    // as on every system, where the converter would write one per half.
    std::wstring joined;
    for (int i = 0; i + 1 < n; ++i) {
        if (s[i] >= 0xD800 && s[i] <= 0xDBFF && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
            joined.assign(s, size_t(n));
            break;
        }
    }
    if (!joined.empty()) {
        size_t w = 0;
        for (size_t r = 0; r < joined.size(); ++r) {
            wchar_t c = joined[r];
            if (c >= 0xD800 && c <= 0xDBFF && r + 1 < joined.size() && joined[r + 1] >= 0xDC00 &&
                joined[r + 1] <= 0xDFFF) {
                c = L'?';
                ++r;
            }
            joined[w++] = c;
        }
        joined.resize(w);
        s = joined.c_str();
        n = int(w);
    }
    return WideCharToMultiByte(CP_ACP, 0, s, n, outSize ? out : nullptr, outSize, nullptr,
                               nullptr);
}

} // namespace platform
} // namespace vq
