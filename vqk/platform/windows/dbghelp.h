// The system's debugging support library, loaded when first needed: beside the vqk
// module first (an application may ship a newer one), then by name. Internal to the
// Windows side of the seam.
#pragma once

#include <windows.h>

#include <dbghelp.h>

namespace vq {
namespace platform {

struct SDbgHelp {
    HMODULE module = nullptr;
    decltype(&SymInitialize) symInitialize = nullptr;
    decltype(&SymSetOptions) symSetOptions = nullptr;
    decltype(&SymFromAddr) symFromAddr = nullptr;
    decltype(&SymGetLineFromAddr64) symGetLineFromAddr64 = nullptr;
    decltype(&MiniDumpWriteDump) miniDumpWriteDump = nullptr;
    bool symbolsReady = false;
};

// The loaded library (module null when it is missing). The symbol handler is initialised
// for the current process on the first call. Callers hold dbgHelpLock().
SDbgHelp& dbgHelp();
CRITICAL_SECTION& dbgHelpLock();

} // namespace platform
} // namespace vq
