// Windows side of the crash seam: the unhandled-exception filter, files through the
// system's handles, and a minidump written by DbgHelp.
#include "vqk/platform/crash.h"
#include "vqk/platform/windows/dbghelp.h"

#include <windows.h>

namespace vq {
namespace platform {
namespace {

volatile CrashCallback g_callback = nullptr;
LPTOP_LEVEL_EXCEPTION_FILTER g_previous = nullptr;
volatile LONG g_busy = 0;

LONG WINAPI onUnhandled(EXCEPTION_POINTERS* info) {
    if (InterlockedExchange(&g_busy, 1) == 0 && g_callback)
        g_callback(info);
    // End as the process would have without us.
    return g_previous ? g_previous(info) : EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

bool installCrashHandler(CrashCallback onCrash) {
    g_callback = onCrash;
    dumpSupport(); // loads DbgHelp now rather than in the dying process
    LPTOP_LEVEL_EXCEPTION_FILTER before = SetUnhandledExceptionFilter(onUnhandled);
    if (before != onUnhandled)
        g_previous = before;
    return true;
}

bool isCrashHandlerActive() {
    LPTOP_LEVEL_EXCEPTION_FILTER current = SetUnhandledExceptionFilter(onUnhandled);
    SetUnhandledExceptionFilter(current);
    return current == onUnhandled && g_callback != nullptr;
}

intptr_t crashFileOpen(const char* path, bool truncate) {
    if (!path || !*path) {
        SetLastError(ERROR_INVALID_NAME);
        return -1;
    }
    HANDLE h = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           truncate ? CREATE_ALWAYS : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return -1;
    if (!truncate)
        SetFilePointer(h, 0, nullptr, FILE_END);
    return reinterpret_cast<intptr_t>(h);
}

bool crashFileWrite(intptr_t file, const char* data, size_t size) {
    HANDLE h = reinterpret_cast<HANDLE>(file);
    while (size > 0) {
        DWORD chunk = size > 0x40000000 ? 0x40000000 : DWORD(size);
        DWORD written = 0;
        if (!WriteFile(h, data, chunk, &written, nullptr) || written == 0)
            return false;
        data += written;
        size -= written;
    }
    return true;
}

void crashFileClose(intptr_t file) {
    if (file != -1)
        CloseHandle(reinterpret_cast<HANDLE>(file));
}

int crashLastError() { return int(GetLastError()); }

void crashLocalTime(SCrashTime& t) {
    SYSTEMTIME st;
    GetLocalTime(&st);
    t.year = st.wYear;
    t.month = st.wMonth;
    t.day = st.wDay;
    t.hour = st.wHour;
    t.minute = st.wMinute;
    t.second = st.wSecond;
}

EDumpSupport dumpSupport() {
    EnterCriticalSection(&dbgHelpLock());
    SDbgHelp& d = dbgHelp();
    EDumpSupport r = !d.module ? eDumpMissing : !d.miniDumpWriteDump ? eDumpTooOld : eDumpReady;
    LeaveCriticalSection(&dbgHelpLock());
    return r;
}

int writeCrashDump(intptr_t file, const SExceptionPointers* info) {
    EnterCriticalSection(&dbgHelpLock());
    SDbgHelp& d = dbgHelp();
    int rc = 0;
    if (!d.miniDumpWriteDump) {
        rc = ERROR_PROC_NOT_FOUND;
    } else {
        MINIDUMP_EXCEPTION_INFORMATION exception{};
        exception.ThreadId = GetCurrentThreadId();
        exception.ExceptionPointers = const_cast<EXCEPTION_POINTERS*>(info);
        exception.ClientPointers = FALSE;
        if (!d.miniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(),
                                 reinterpret_cast<HANDLE>(file), MiniDumpNormal,
                                 info ? &exception : nullptr, nullptr, nullptr))
            rc = int(GetLastError());
    }
    LeaveCriticalSection(&dbgHelpLock());
    return rc;
}

bool flushIfFree(std::FILE* stream) { return stream && std::fflush(stream) == 0; }

} // namespace platform
} // namespace vq
