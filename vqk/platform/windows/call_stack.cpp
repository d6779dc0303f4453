// Windows side of the call-stack seam: RtlCaptureStackBackTrace captures, DbgHelp names
// the functions and lines from the modules' debug information.
#include "vqk/platform/call_stack.h"
#include "vqk/platform/windows/dbghelp.h"

#include <cstdio>
#include <cstring>

namespace vq {
namespace platform {
namespace {

const char* baseName(const char* path) {
    const char* slash = std::strrchr(path, '\\');
    const char* fwd = std::strrchr(path, '/');
    if (fwd > slash)
        slash = fwd;
    return slash ? slash + 1 : path;
}

void append(char* buf, size_t size, size_t* used, const char* text) {
    int n = std::snprintf(buf + *used, size - *used, "%s", text);
    if (n > 0)
        *used = *used + size_t(n) < size ? *used + size_t(n) : size - 1;
}

} // namespace

__declspec(noinline) int captureStack(void** frames, int maxFrames, int skip) {
    if (!frames || maxFrames <= 0)
        return 0;
    if (skip < 0)
        skip = 0;
    if (maxFrames > 62)
        maxFrames = 62; // the most one capture returns on older systems
    return int(RtlCaptureStackBackTrace(DWORD(skip + 1), DWORD(maxFrames), frames, nullptr));
}

void describeFrame(const void* address, bool exact, char* buf, size_t size) {
    if (!buf || size == 0)
        return;
    buf[0] = 0;
    size_t used = 0;
    const DWORD64 pc = DWORD64(reinterpret_cast<ULONG_PTR>(address));
    const DWORD64 addr = exact || pc == 0 ? pc : pc - 1;
    char piece[1024];

    EnterCriticalSection(&dbgHelpLock());
    SDbgHelp& d = dbgHelp();
    bool named = false;
    if (d.symbolsReady && d.symFromAddr) {
        alignas(SYMBOL_INFO) char storage[sizeof(SYMBOL_INFO) + MAX_SYM_NAME];
        auto* sym = reinterpret_cast<SYMBOL_INFO*>(storage);
        std::memset(storage, 0, sizeof storage);
        sym->SizeOfStruct = sizeof(SYMBOL_INFO);
        sym->MaxNameLen = MAX_SYM_NAME;
        DWORD64 displacement = 0;
        if (d.symFromAddr(GetCurrentProcess(), addr, &displacement, sym)) {
            append(buf, size, &used, sym->Name);
            named = true;
        }
    }
    if (!named) {
        std::snprintf(piece, sizeof piece, "0x%llx", static_cast<unsigned long long>(pc));
        append(buf, size, &used, piece);
    }
    if (d.symbolsReady && d.symGetLineFromAddr64) {
        IMAGEHLP_LINE64 line{};
        line.SizeOfStruct = sizeof line;
        DWORD displacement = 0;
        if (d.symGetLineFromAddr64(GetCurrentProcess(), addr, &displacement, &line) &&
            line.FileName) {
            std::snprintf(piece, sizeof piece, " at %s:%lu", line.FileName,
                          static_cast<unsigned long>(line.LineNumber));
            append(buf, size, &used, piece);
        }
    }
    LeaveCriticalSection(&dbgHelpLock());

    HMODULE mod = nullptr;
    char path[MAX_PATH];
    if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCSTR>(address), &mod) &&
        GetModuleFileNameA(mod, path, MAX_PATH) > 0) {
        std::snprintf(piece, sizeof piece, " [%s+0x%llx]", baseName(path),
                      static_cast<unsigned long long>(pc - DWORD64(reinterpret_cast<ULONG_PTR>(mod))));
        append(buf, size, &used, piece);
    }
}

} // namespace platform
} // namespace vq
