// Child processes on Windows: CreateProcessW suspended, job objects that kill their
// processes when the last handle closes, Toolhelp snapshots.
#include "vqk/platform/process.h"

#include <windows.h>
#include <psapi.h>
#include <tlhelp32.h>

#include <cstring>

namespace vq {
namespace platform {

namespace {

std::string systemText(DWORD code) {
    char* text = nullptr;
    DWORD n = FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                 FORMAT_MESSAGE_IGNORE_INSERTS,
                             nullptr, code, 0, reinterpret_cast<char*>(&text), 0, nullptr);
    std::string s = n && text ? std::string(text, n) : "error " + std::to_string(code);
    if (text)
        LocalFree(text);
    while (!s.empty() && (s.back() == '\n' || s.back() == '\r' || s.back() == ' '))
        s.pop_back();
    return s;
}

} // namespace

bool processCreate(const wchar_t* cmdLine, unsigned long flags, const char*, SChildProcess& child,
                   std::string& error) {
    child = SChildProcess();
    error.clear();
    if (!cmdLine || !*cmdLine) {
        error = systemText(ERROR_INVALID_PARAMETER);
        return false;
    }
    // CreateProcessW may write into the command line.
    std::wstring line(cmdLine);
    STARTUPINFOW si;
    std::memset(&si, 0, sizeof si);
    si.cb = sizeof si;
    PROCESS_INFORMATION pi;
    std::memset(&pi, 0, sizeof pi);
    if (!CreateProcessW(nullptr, &line[0], nullptr, nullptr, FALSE, flags | CREATE_SUSPENDED, nullptr,
                        nullptr, &si, &pi)) {
        error = systemText(GetLastError());
        return false;
    }
    child.process = pi.hProcess;
    child.thread = pi.hThread;
    child.id = pi.dwProcessId;
    return true;
}

void processResume(SChildProcess& child) {
    if (child.thread)
        ResumeThread(child.thread);
}

EProcessWait processWait(SChildProcess& child, int milliseconds) {
    switch (WaitForSingleObject(child.process, milliseconds < 0 ? INFINITE : (DWORD)milliseconds)) {
    case WAIT_OBJECT_0:
        return EProcessWait::ended;
    case WAIT_TIMEOUT:
        return EProcessWait::timedOut;
    default:
        return EProcessWait::failed;
    }
}

void processPeekMessages() {
    MSG msg;
    PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE);
}

bool processTerminate(SChildProcess& child, unsigned int exitCode) {
    return TerminateProcess(child.process, exitCode) != 0;
}

bool processExitCode(SChildProcess& child, unsigned long& code) {
    DWORD c = 0;
    if (!GetExitCodeProcess(child.process, &c))
        return false;
    code = c;
    return true;
}

bool processPeakMemory(SChildProcess& child, uint64& bytes) {
    PROCESS_MEMORY_COUNTERS pmc;
    std::memset(&pmc, 0, sizeof pmc);
    if (!GetProcessMemoryInfo(child.process, &pmc, sizeof pmc)) {
        bytes = 0;
        return false;
    }
    bytes = pmc.PeakWorkingSetSize;
    return true;
}

void processClose(SChildProcess& child) {
    if (child.thread)
        CloseHandle(child.thread);
    if (child.process)
        CloseHandle(child.process);
    child = SChildProcess();
}

bool processJoinJob(void* process, const char* jobName) {
    SECURITY_ATTRIBUTES sa;
    sa.nLength = sizeof sa;
    sa.lpSecurityDescriptor = nullptr;
    sa.bInheritHandle = TRUE;
    HANDLE job = CreateJobObjectA(&sa, jobName);
    if (!job)
        return false;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION info;
    std::memset(&info, 0, sizeof info);
    info.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;  // 0x2000
    if (!SetInformationJobObject(job, JobObjectExtendedLimitInformation, &info, sizeof info)) {
        CloseHandle(job);
        return false;
    }
    // The job handle stays open for the rest of this process's life: closing it would
    // kill the job's processes.
    return AssignProcessToJobObject(job, process) != 0;
}

void* processFind(const char* exeName) {
    if (!exeName)
        return nullptr;
    HANDLE snap = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snap == INVALID_HANDLE_VALUE)
        return nullptr;
    void* found = nullptr;
    PROCESSENTRY32 entry;
    entry.dwSize = sizeof entry;
    for (BOOL ok = Process32First(snap, &entry); ok; ok = Process32Next(snap, &entry)) {
        if (_stricmp(entry.szExeFile, exeName) == 0) {
            found = OpenProcess(PROCESS_ALL_ACCESS, FALSE, entry.th32ProcessID);
            break;
        }
    }
    CloseHandle(snap);
    return found;
}

void processCloseHandle(void* process) {
    if (process)
        CloseHandle(process);
}

const char* executableSuffix() { return ".exe"; }

} // namespace platform
} // namespace vq
