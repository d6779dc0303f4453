// Runs the tool through CreateProcessW. Its output goes to files in the test's folder
// rather than pipes, so that one thread can wait with a time limit and read both
// streams afterwards.
#include "tool_process.h"

#include "vqk/platform/environment.h"

#include "support/test_files.h"

#include <windows.h>

#include <string>

namespace {

// One argument quoted by the rules the runtime uses to split a command line.
void appendQuoted(std::wstring& line, const std::wstring& arg) {
    if (!arg.empty() && arg.find_first_of(L" \t\"") == std::wstring::npos) {
        line += arg;
        return;
    }
    line += L'"';
    size_t slashes = 0;
    for (wchar_t c : arg) {
        if (c == L'\\') {
            ++slashes;
            continue;
        }
        line.append(c == L'"' ? slashes * 2 + 1 : slashes, L'\\');
        slashes = 0;
        line += c;
    }
    line.append(slashes * 2, L'\\');
    line += L'"';
}

HANDLE inheritable(const std::wstring& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES sa{sizeof sa, nullptr, TRUE};
    return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &sa, disposition,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Sets a variable for the child's sake and puts it back when the run is over.
class CEnvFor {
public:
    CEnvFor(const char* name, const char* value) : m_name(name) {
        m_had = vq::platform::getEnv(name, m_old);
        vq::platform::setEnv(name, value);
    }
    ~CEnvFor() { vq::platform::setEnv(m_name, m_had ? m_old.c_str() : nullptr); }

private:
    const char* m_name;
    bool m_had;
    std::string m_old;
};

} // namespace

SToolRun runTool(const std::vector<std::string>& args, const std::string& cwd, int timeoutSeconds) {
    SToolRun run;
    std::wstring line;
    appendQuoted(line, test_files::wide(toolPath()));
    for (const std::string& a : args) {
        line += L' ';
        appendQuoted(line, test_files::wide(a));
    }
    // Beside the workflow logs, not in `cwd`, whose listing some tests check; named by
    // this process, as test programs run side by side.
    const std::string own = toolLogDir() + "/run_" + std::to_string(vq::platform::processId());
    const std::string outPath = own + ".out", errPath = own + ".err";
    HANDLE in = inheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
    HANDLE out = inheritable(test_files::wide(outPath), GENERIC_WRITE, CREATE_ALWAYS);
    HANDLE err = inheritable(test_files::wide(errPath), GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdInput = in;
    si.hStdOutput = out;
    si.hStdError = err;
    PROCESS_INFORMATION pi{};
    BOOL started;
    {
        // A run as from a fresh shell, with its workflow log in the tests' folder.
        CEnvFor prefix("_ORV_LOGPREFIX", nullptr), indent("_ORV_LOGINDENT", nullptr),
            temp("TEMP", toolLogDir().c_str());
        started = CreateProcessW(nullptr, &line[0], nullptr, nullptr, TRUE, 0, nullptr,
                                 test_files::wide(cwd).c_str(), &si, &pi);
    }
    CloseHandle(in);
    CloseHandle(out);
    CloseHandle(err);
    if (!started)
        return run;
    if (WaitForSingleObject(pi.hProcess, DWORD(timeoutSeconds) * 1000u) != WAIT_OBJECT_0) {
        run.timedOut = true;
        TerminateProcess(pi.hProcess, 1);
        WaitForSingleObject(pi.hProcess, INFINITE);
    } else {
        DWORD code = 0;
        if (GetExitCodeProcess(pi.hProcess, &code))
            run.exitCode = int(code);
    }
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    // As a text-mode reader sees it, so that the tests compare the same text on both
    // systems.
    run.out = lfOnly(readFile(outPath));
    run.err = lfOnly(readFile(errPath));
    std::remove(outPath.c_str());
    std::remove(errPath.c_str());
    return run;
}

bool terminalRunsSupported() { return false; }

SToolRun runToolOnTerminal(const std::vector<std::string>&, const std::string&,
                           const std::string&, char, bool& keyTyped, int) {
    keyTyped = false;
    return SToolRun();
}

SToolRun runToolWithErrOnTerminal(const std::vector<std::string>&, const std::string&, int, int) {
    return SToolRun();
}
