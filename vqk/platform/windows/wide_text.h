// vqk/platform/windows/wide_text.h
//
// The library speaks UTF-8; the wide Win32 calls want UTF-16. Private to the Windows
// side of the seam.
#pragma once

#include "vqk/text/utf8.h"

#include <string>

namespace vq {
namespace platform {

// Empty for a null text or one that does not convert; `ok` tells the two apart.
inline std::wstring widen(const char* s, bool* ok = nullptr) {
    if (ok)
        *ok = s != nullptr;
    if (!s || !*s)
        return std::wstring();
    int n = utf8ToWide(s, -1, nullptr, 0);
    std::wstring w(size_t(n > 0 ? n : 1), L'\0');
    if (n <= 0 || utf8ToWide(s, -1, &w[0], n) <= 0) {
        if (ok)
            *ok = false;
        return std::wstring();
    }
    w.resize(size_t(n - 1));
    return w;
}

inline std::string narrow(const wchar_t* w, size_t len) {
    if (!w || len == 0)
        return std::string();
    int n = wideToUtf8(w, int(len), nullptr, 0);
    std::string s(size_t(n > 0 ? n : 0), '\0');
    if (n <= 0 || wideToUtf8(w, int(len), &s[0], n) <= 0)
        return std::string();
    return s;
}

inline std::string narrow(const std::wstring& w) { return narrow(w.c_str(), w.size()); }

} // namespace platform
} // namespace vq
