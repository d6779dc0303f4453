#include "run_self.h"

#include <windows.h>

int runSelf(const std::string& exe) {
    std::wstring path(exe.size() + 1, L'\0');
    path.resize(size_t(MultiByteToWideChar(CP_UTF8, 0, exe.c_str(), -1, &path[0], int(path.size()))));
    std::wstring line = L"\"" + std::wstring(path.c_str()) + L"\"";
    SECURITY_ATTRIBUTES sa{sizeof sa, nullptr, TRUE};
    HANDLE nul = CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_WRITE, &sa, OPEN_EXISTING, 0, nullptr);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    si.hStdOutput = nul;
    si.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION pi{};
    BOOL started = CreateProcessW(path.c_str(), &line[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &si, &pi);
    CloseHandle(nul);
    if (!started)
        return -1;
    WaitForSingleObject(pi.hProcess, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return code == 0 ? int(pi.dwProcessId) : -1;
}
