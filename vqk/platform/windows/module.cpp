// The module that holds one of the library's own functions is vqk.dll itself, whatever
// program loaded it and from where.
#include "vqk/platform/module.h"
#include "vqk/platform/windows/wide_text.h"

#include <vector>
#include <windows.h>

namespace vq {
namespace platform {

std::string libraryFolder() {
    HMODULE self = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&libraryFolder), &self))
        return std::string();
    std::vector<wchar_t> buf(MAX_PATH);
    DWORD n;
    while ((n = GetModuleFileNameW(self, buf.data(), DWORD(buf.size()))) >= buf.size()) {
        if (buf.size() >= 32768)
            return std::string();
        buf.resize(buf.size() * 2);
    }
    std::string path = narrow(buf.data(), n);
    size_t slash = path.find_last_of("\\/");
    if (slash == std::string::npos)
        return std::string(".\\");
    return path.substr(0, slash + 1);
}

} // namespace platform
} // namespace vq
