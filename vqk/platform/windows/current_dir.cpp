#include "vqk/platform/current_dir.h"
#include "vqk/platform/windows/wide_text.h"

#include <vector>
#include <windows.h>

namespace vq {
namespace platform {

bool changeDir(const char* dir) {
    bool ok = false;
    std::wstring w = widen(dir, &ok);
    return ok && !w.empty() && SetCurrentDirectoryW(w.c_str());
}

bool currentDir(CStr& dir) {
    dir.reset();
    DWORD need = GetCurrentDirectoryW(0, nullptr);
    if (need == 0)
        return false;
    std::vector<wchar_t> buf(need);
    DWORD n = GetCurrentDirectoryW(need, buf.data());
    if (n == 0 || n >= need)
        return false;
    dir = narrow(buf.data(), n).c_str();
    return true;
}

} // namespace platform
} // namespace vq
