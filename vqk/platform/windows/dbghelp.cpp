#include "vqk/platform/windows/dbghelp.h"

#include <cstring>

namespace vq {
namespace platform {
namespace {

HMODULE loadBesideVqk() {
    HMODULE self = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCSTR>(&dbgHelp), &self))
        return nullptr;
    char path[MAX_PATH + 16];
    DWORD n = GetModuleFileNameA(self, path, MAX_PATH);
    if (n == 0 || n >= MAX_PATH)
        return nullptr;
    char* slash = std::strrchr(path, '\\');
    if (!slash)
        return nullptr;
    std::strcpy(slash, "\\dbghelp.dll");
    return LoadLibraryA(path);
}

template <class F> void bind(HMODULE m, F& fn, const char* name) {
    fn = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(m, name)));
}

} // namespace

CRITICAL_SECTION& dbgHelpLock() {
    static CRITICAL_SECTION* cs = [] {
        auto* c = new CRITICAL_SECTION;
        InitializeCriticalSection(c);
        return c;
    }();
    return *cs;
}

SDbgHelp& dbgHelp() {
    static SDbgHelp* d = [] {
        auto* h = new SDbgHelp;
        h->module = loadBesideVqk();
        if (!h->module)
            h->module = LoadLibraryA("DBGHELP.DLL");
        if (h->module) {
            bind(h->module, h->symInitialize, "SymInitialize");
            bind(h->module, h->symSetOptions, "SymSetOptions");
            bind(h->module, h->symFromAddr, "SymFromAddr");
            bind(h->module, h->symGetLineFromAddr64, "SymGetLineFromAddr64");
            bind(h->module, h->miniDumpWriteDump, "MiniDumpWriteDump");
        }
        if (h->symInitialize && h->symSetOptions) {
            h->symSetOptions(SYMOPT_UNDNAME | SYMOPT_DEFERRED_LOADS | SYMOPT_LOAD_LINES);
            h->symbolsReady = h->symInitialize(GetCurrentProcess(), nullptr, TRUE) != FALSE;
        }
        return h;
    }();
    return *d;
}

} // namespace platform
} // namespace vq
