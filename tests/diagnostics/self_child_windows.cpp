// Children started with CreateProcessW; the variables are set in this process for the
// child to inherit and put back afterwards.
#include "self_child.h"

#include "vqk/platform/environment.h"

#include <csignal>
#include "support/test_files.h"

#include <windows.h>

namespace {

// The exception that ended a process, as the signal POSIX would have reported.
int signalOf(DWORD code) {
    switch (code) {
    case EXCEPTION_BREAKPOINT:
        return kTrapSignal;
    case EXCEPTION_ACCESS_VIOLATION:
        return SIGSEGV;
    case EXCEPTION_ILLEGAL_INSTRUCTION:
        return SIGILL;
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
    case EXCEPTION_FLT_DIVIDE_BY_ZERO:
        return SIGFPE;
    default:
        return 0;
    }
}

} // namespace

SChildEnd runSelf(const std::string& role, const std::vector<std::pair<std::string, const char*>>& env,
                  const std::string& outFile) {
    std::vector<std::pair<std::string, std::string>> saved;
    std::vector<bool> had;
    auto set = [&](const std::string& name, const char* value) {
        std::string old;
        had.push_back(vq::platform::getEnv(name.c_str(), old));
        saved.emplace_back(name, old);
        vq::platform::setEnv(name.c_str(), value);
    };
    set(kSelfChildRole, role.c_str());
    for (const auto& kv : env)
        set(kv.first, kv.second);

    SChildEnd end;
    std::wstring exe = test_files::wide(vq::platform::executablePath());
    std::wstring line = L"\"" + exe + L"\"";
    SECURITY_ATTRIBUTES sa{sizeof sa, nullptr, TRUE};
    HANDLE out = CreateFileW(outFile.empty() ? L"NUL" : test_files::wide(outFile).c_str(), GENERIC_WRITE,
                             FILE_SHARE_READ | FILE_SHARE_WRITE, &sa, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    si.hStdOutput = out;
    si.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION pi{};
    // No error dialogs or debugger for a child that is meant to crash.
    UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    BOOL started = CreateProcessW(exe.c_str(), &line[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                  &si, &pi);
    SetErrorMode(mode);
    CloseHandle(out);
    for (size_t i = saved.size(); i-- > 0;)
        vq::platform::setEnv(saved[i].first.c_str(), had[i] ? saved[i].second.c_str() : nullptr);
    if (!started)
        return end;
    WaitForSingleObject(pi.hProcess, INFINITE);
    end.pid = int(pi.dwProcessId);
    DWORD code = 0;
    GetExitCodeProcess(pi.hProcess, &code);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    end.signal = signalOf(code);
    end.exited = end.signal == 0;
    end.code = end.exited ? int(code) : -1;
    return end;
}
