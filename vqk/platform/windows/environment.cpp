// The environment through the wide calls, so that values are UTF-8 on the library's
// side whatever the system code page. Setting goes through the runtime as well, so that
// getenv in the same process sees the change, not only the children.
#include "vqk/platform/environment.h"
#include "vqk/platform/windows/wide_text.h"

#include <cstdlib>
#include <cstring>
#include <vector>
#include <windows.h>

namespace vq {
namespace platform {

bool getEnv(const char* name, std::string& value) {
    value.clear();
    if (!name || !*name)
        return false;
    std::wstring w = widen(name);
    DWORD need = GetEnvironmentVariableW(w.c_str(), nullptr, 0);
    if (need == 0)
        return false;
    std::vector<wchar_t> buf(need);
    DWORD n = GetEnvironmentVariableW(w.c_str(), buf.data(), need);
    if (n >= need)
        return false;
    value = narrow(buf.data(), n);
    return true;
}

bool setEnv(const char* name, const char* value) {
    if (!name || !*name || std::strchr(name, '='))
        return false;
    std::wstring w = widen(name);
    // The runtime's copy cannot hold an empty value ("NAME=" removes); the system's can.
    std::wstring entry = w + L"=" + (value ? widen(value) : std::wstring());
    _wputenv(entry.c_str());
    return SetEnvironmentVariableW(w.c_str(), value ? widen(value).c_str() : nullptr) ||
           (!value && GetLastError() == ERROR_ENVVAR_NOT_FOUND);
}

int processId() { return int(GetCurrentProcessId()); }

std::string executablePath() {
    std::vector<wchar_t> buf(MAX_PATH);
    for (;;) {
        DWORD n = GetModuleFileNameW(nullptr, buf.data(), DWORD(buf.size()));
        if (n == 0)
            return std::string();
        if (n < buf.size())
            return narrow(buf.data(), n);
        if (buf.size() >= 32768)
            return std::string();
        buf.resize(buf.size() * 2);
    }
}

std::string tempFolder() {
    std::string dir;
    for (const char* name : {"TEMP", "TMP", "TMPDIR"})
        if (getEnv(name, dir) && !dir.empty())
            break;
    if (dir.empty()) {
        wchar_t buf[MAX_PATH + 1];
        DWORD n = GetTempPathW(MAX_PATH + 1, buf);
        dir = n > 0 && n <= MAX_PATH ? narrow(buf, n) : std::string("C:\\Windows\\Temp");
    }
    if (dir.back() != '\\' && dir.back() != '/')
        dir += '\\';
    return dir;
}

} // namespace platform
} // namespace vq
