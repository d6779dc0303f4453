// The absolute-path resolver on POSIX: the current folder from getcwd, then a purely
// textual fold of "." and ".." so that paths to files not yet written resolve too
// (realpath would refuse them and would also follow links, which the caller did not ask for).
#include "vqk/platform/path.h"
#include "vqk/platform/path_deliver.h"
#include "vqk/text/utf8.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

namespace vq {
namespace platform {
namespace {

bool currentFolder(std::string& out) {
    std::vector<char> buf(256);
    for (;;) {
        if (getcwd(buf.data(), buf.size())) {
            out = buf.data();
            return true;
        }
        if (errno != ERANGE || buf.size() > (size_t(1) << 20))
            return false;
        buf.resize(buf.size() * 2);
    }
}

bool isSlash(char c) { return c == '/' || c == '\\'; }

// Appends the components of text to parts, folding "." and "..". Backslashes separate
// only where the caller says so: the current folder is taken as the system gives it.
void foldInto(std::vector<std::string>& parts, const char* text, bool backslashSeparates) {
    const char* p = text;
    while (*p) {
        const char* b = p;
        while (*p && *p != '/' && !(backslashSeparates && *p == '\\'))
            ++p;
        std::string part(b, size_t(p - b));
        if (*p)
            ++p;
        if (part.empty() || part == ".")
            continue;
        if (part == "..") {
            if (!parts.empty())
                parts.pop_back();
            continue;
        }
        parts.push_back(std::move(part));
    }
}

bool absoluteOf(const char* rel, std::string& out) {
    if (!rel || !*rel)
        return currentFolder(out);
    std::vector<std::string> parts;
    if (!isSlash(rel[0])) {
        std::string cwd;
        if (!currentFolder(cwd))
            return false;
        foldInto(parts, cwd.c_str(), false);
    }
    foldInto(parts, rel, true);
    out.clear();
    for (const std::string& part : parts) {
        out += '/';
        out += part;
    }
    // A trailing separator says "this is a folder"; keep saying it.
    size_t n = std::char_traits<char>::length(rel);
    if (out.empty() || isSlash(rel[n - 1]))
        out += '/';
    return true;
}

} // namespace

char* fullpath(char* absPath, const char* relPath, size_t maxLength) {
    std::string out;
    if (!absoluteOf(relPath, out))
        return nullptr;
    return deliverPath(absPath, maxLength, out.c_str(), out.size());
}

wchar_t* fullpath(wchar_t* absPath, const wchar_t* relPath, size_t maxLength) {
    std::string rel;
    if (relPath && *relPath) {
        int n = wideToUtf8(relPath, -1, nullptr, 0);
        rel.resize(size_t(n));
        if (n == 0 || wideToUtf8(relPath, -1, &rel[0], n) == 0) {
            errno = EINVAL;
            return nullptr;
        }
        rel.resize(size_t(n - 1));
    }
    std::string out;
    if (!absoluteOf(rel.c_str(), out))
        return nullptr;
    int n = utf8ToWide(out.c_str(), -1, nullptr, 0);
    std::wstring wide(size_t(n), L'\0');
    if (n == 0 || utf8ToWide(out.c_str(), -1, &wide[0], n) == 0) {
        errno = EINVAL;
        return nullptr;
    }
    return deliverPath(absPath, maxLength, wide.c_str(), size_t(n - 1));
}

} // namespace platform
} // namespace vq
