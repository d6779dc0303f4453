// The Windows command-line rules, kept on every system so that the quoted command lines
// the library builds mean the same everywhere.
#include "vqk/platform/process.h"

namespace vq {
namespace platform {

namespace {

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

} // namespace

std::vector<std::wstring> processSplitCommandLine(const wchar_t* cmdLine) {
    std::vector<std::wstring> args;
    if (!cmdLine)
        return args;
    const wchar_t* p = cmdLine;
    while (isBlank(*p))
        ++p;
    if (!*p)
        return args;

    // The program name: quotes group, backslashes are path separators.
    std::wstring name;
    bool quoted = false;
    for (; *p && (quoted || !isBlank(*p)); ++p) {
        if (*p == L'"')
            quoted = !quoted;
        else
            name += *p;
    }
    args.push_back(name);

    for (;;) {
        while (isBlank(*p))
            ++p;
        if (!*p)
            break;
        std::wstring arg;
        quoted = false;
        while (*p && (quoted || !isBlank(*p))) {
            size_t slashes = 0;
            while (*p == L'\\') {
                ++slashes;
                ++p;
            }
            if (*p == L'"') {
                arg.append(slashes / 2, L'\\');
                if (slashes % 2) {
                    arg += L'"';
                } else if (quoted && p[1] == L'"') {
                    arg += L'"';
                    ++p;
                } else {
                    quoted = !quoted;
                }
                ++p;
            } else {
                arg.append(slashes, L'\\');
                if (*p && (quoted || !isBlank(*p)))
                    arg += *p++;
            }
        }
        args.push_back(arg);
    }
    return args;
}

} // namespace platform
} // namespace vq
