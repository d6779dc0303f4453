#include "vqk/platform/file_ops.h"

#include <windows.h>

#include <string>

namespace vq {
namespace platform {
namespace {

std::wstring wide(const char* s) {
    const int n = MultiByteToWideChar(CP_UTF8, 0, s, -1, nullptr, 0);
    std::wstring w(n > 0 ? n - 1 : 0, L'\0');
    if (n > 1)
        MultiByteToWideChar(CP_UTF8, 0, s, -1, &w[0], n);
    return w;
}

std::string narrow(const wchar_t* w) {
    const int n = WideCharToMultiByte(CP_UTF8, 0, w, -1, nullptr, 0, nullptr, nullptr);
    std::string s(n > 0 ? n - 1 : 0, '\0');
    if (n > 1)
        WideCharToMultiByte(CP_UTF8, 0, w, -1, &s[0], n, nullptr, nullptr);
    return s;
}

bool isFolder(const std::wstring& p) {
    const DWORD a = GetFileAttributesW(p.c_str());
    return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

bool makeFolders(const char* folder) {
    if (!folder || !*folder)
        return false;
    const std::wstring path = wide(folder);
    for (size_t i = 1; i <= path.size(); ++i) {
        if (i < path.size() && path[i] != L'\\' && path[i] != L'/')
            continue;
        const std::wstring part = path.substr(0, i);
        if (part.size() == 2 && part[1] == L':')
            continue; // a drive
        if (!CreateDirectoryW(part.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
            return false;
    }
    return isFolder(path);
}

bool replaceFile(const char* from, const char* to) {
    return MoveFileExW(wide(from).c_str(), wide(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

intptr_t lockFile(const char* path) {
    HANDLE h = CreateFileW(wide(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return -1;
    OVERLAPPED o = {};
    if (!LockFileEx(h, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &o)) {
        CloseHandle(h);
        return -1;
    }
    return reinterpret_cast<intptr_t>(h);
}

void unlockFile(intptr_t lock) {
    if (lock == -1)
        return;
    HANDLE h = reinterpret_cast<HANDLE>(lock);
    OVERLAPPED o = {};
    UnlockFileEx(h, 0, 1, 0, &o);
    CloseHandle(h);
}

std::string userSettingsFolder() {
    const wchar_t* appData = _wgetenv(L"APPDATA");
    return appData && *appData ? narrow(appData) : std::string();
}

} // namespace platform
} // namespace vq
