// The absolute-path resolver on Windows: GetFullPathNameW, which folds "." and ".."
// against the current folder (and drive) textually, turns slashes into backslashes and
// does not need the file to exist.
#include "vqk/platform/path.h"
#include "vqk/platform/path_deliver.h"
#include "vqk/platform/windows/wide_text.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>
#include <windows.h>

namespace vq {
namespace platform {
namespace {

bool absoluteOf(const wchar_t* rel, std::wstring& out) {
    const wchar_t* what = rel && *rel ? rel : L".";
    DWORD need = GetFullPathNameW(what, 0, nullptr, nullptr);
    if (need == 0) {
        errno = ENOENT;
        return false;
    }
    std::vector<wchar_t> buf(need);
    DWORD n = GetFullPathNameW(what, need, buf.data(), nullptr);
    if (n == 0 || n >= need) {
        errno = ENOENT;
        return false;
    }
    out.assign(buf.data(), n);
    return true;
}

} // namespace

char* fullpath(char* absPath, const char* relPath, size_t maxLength) {
    bool ok = false;
    std::wstring rel = widen(relPath, &ok);
    if (relPath && *relPath && !ok) {
        errno = EINVAL;
        return nullptr;
    }
    std::wstring out;
    if (!absoluteOf(rel.c_str(), out))
        return nullptr;
    std::string text = narrow(out);
    return deliverPath(absPath, maxLength, text.c_str(), text.size());
}

wchar_t* fullpath(wchar_t* absPath, const wchar_t* relPath, size_t maxLength) {
    std::wstring out;
    if (!absoluteOf(relPath, out))
        return nullptr;
    return deliverPath(absPath, maxLength, out.c_str(), out.size());
}

} // namespace platform
} // namespace vq
