// FindFirstFileW lists the folder, and the mask is applied here rather than by the
// system: the system's matcher also tries each file's short 8.3 name, so "*.xml" would
// list "a.xmlx", and the rule must be the one matchesMask states on every system.
#include "vqk/platform/dir_list.h"
#include "vqk/platform/windows/wide_text.h"

#include <algorithm>
#include <cwctype>
#include <string>
#include <vector>
#include <windows.h>

namespace vq {
namespace platform {
namespace {

wchar_t fold(wchar_t c) { return wchar_t(std::towlower(wint_t(c))); }

bool match(const wchar_t* n, const wchar_t* m) {
    // Iterative star matching: remember the last star and retry one character later.
    const wchar_t* star = nullptr;
    const wchar_t* resume = nullptr;
    while (*n) {
        if (*m == L'*') {
            star = m++;
            resume = n;
        } else if (*m && (*m == L'?' || fold(*m) == fold(*n))) {
            ++m;
            ++n;
        } else if (star) {
            m = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (*m == L'*')
        ++m;
    return *m == 0;
}

} // namespace

bool matchesMask(const char* name, const char* mask) {
    if (!name || !mask)
        return false;
    return match(widen(name).c_str(), widen(mask).c_str());
}

bool listFiles(const char* dir, const char* mask, TVectorC<CStr>& names) {
    names.clear();
    std::string folder = dir && *dir ? dir : ".";
    std::string pattern = mask ? mask : "*";
    size_t slash = pattern.find_last_of("/\\");
    if (slash != std::string::npos) {
        folder += '\\';
        folder.append(pattern, 0, slash);
        pattern.erase(0, slash + 1);
    }
    WIN32_FIND_DATAW found;
    HANDLE h = FindFirstFileW(widen((folder + "\\*").c_str()).c_str(), &found);
    if (h == INVALID_HANDLE_VALUE)
        return false;
    std::wstring wideMask = widen(pattern.c_str());
    std::vector<std::string> hits;
    do {
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            continue;
        if (match(found.cFileName, wideMask.c_str()))
            hits.push_back(narrow(std::wstring(found.cFileName)));
    } while (FindNextFileW(h, &found));
    FindClose(h);
    std::sort(hits.begin(), hits.end());
    for (const std::string& n : hits)
        names.push_back(CStr(n.c_str()));
    return true;
}

} // namespace platform
} // namespace vq
