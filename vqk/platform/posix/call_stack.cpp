// POSIX side of the call-stack seam: backtrace() captures, elfutils' libdw reads the
// names and lines from the loaded modules' own symbol and line tables (dladdr alone
// would name only exported symbols).
#include "vqk/platform/call_stack.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <elfutils/libdw.h>
#include <elfutils/libdwfl.h>
#include <execinfo.h>
#include <unistd.h>

#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace vq {
namespace platform {
namespace {

const Dwfl_Callbacks kCallbacks = {
    dwfl_linux_proc_find_elf,
    dwfl_standard_find_debuginfo,
    nullptr,
    nullptr,
};

struct SSymbols {
    std::mutex lock;
    Dwfl* dwfl = nullptr;
};

SSymbols& symbols() {
    static SSymbols* s = new SSymbols;
    return *s;
}

// Reads the process's module list again: libraries loaded since the last report would
// otherwise stay nameless. Caller holds the lock.
bool report(SSymbols& s) {
    if (!s.dwfl)
        s.dwfl = dwfl_begin(&kCallbacks);
    if (!s.dwfl)
        return false;
    dwfl_report_begin(s.dwfl);
    int rc = dwfl_linux_proc_report(s.dwfl, getpid());
    dwfl_report_end(s.dwfl, nullptr, nullptr);
    return rc == 0;
}

Dwfl_Module* moduleOf(SSymbols& s, Dwarf_Addr addr) {
    Dwfl_Module* mod = s.dwfl ? dwfl_addrmodule(s.dwfl, addr) : nullptr;
    if (!mod && report(s))
        mod = dwfl_addrmodule(s.dwfl, addr);
    return mod;
}

const char* baseName(const char* path) {
    const char* slash = path ? std::strrchr(path, '/') : nullptr;
    return slash ? slash + 1 : (path ? path : "");
}

// Appends printf output to buf at *used, never past size.
void append(char* buf, size_t size, size_t* used, const char* format, ...)
    __attribute__((format(printf, 4, 5)));
void append(char* buf, size_t size, size_t* used, const char* format, ...) {
    if (*used + 1 >= size)
        return;
    va_list args;
    va_start(args, format);
    int n = std::vsnprintf(buf + *used, size - *used, format, args);
    va_end(args);
    if (n > 0)
        *used = *used + size_t(n) < size ? *used + size_t(n) : size - 1;
}

void appendName(char* buf, size_t size, size_t* used, const char* mangled) {
    int status = -1;
    char* plain = abi::__cxa_demangle(mangled, nullptr, nullptr, &status);
    append(buf, size, used, "%s", status == 0 && plain ? plain : mangled);
    std::free(plain);
}

// The file and line of `addr`. libdw finds the unit through .debug_aranges, which clang
// leaves out unless asked; without it, each unit's own address ranges are searched.
bool sourceLine(Dwfl_Module* mod, Dwarf_Addr addr, const char*& file, int& lineNo) {
    if (Dwfl_Line* line = dwfl_module_getsrc(mod, addr)) {
        file = dwfl_lineinfo(line, nullptr, &lineNo, nullptr, nullptr, nullptr);
        return file != nullptr;
    }
    Dwarf_Addr bias = 0;
    Dwarf* dwarf = dwfl_module_getdwarf(mod, &bias);
    Dwarf_CU* unit = nullptr;
    Dwarf_Die unitDie;
    while (dwarf && dwarf_get_units(dwarf, unit, &unit, nullptr, nullptr, &unitDie, nullptr) == 0) {
        if (dwarf_haspc(&unitDie, addr - bias) <= 0)
            continue;
        Dwarf_Line* line = dwarf_getsrc_die(&unitDie, addr - bias);
        file = line ? dwarf_linesrc(line, nullptr, nullptr) : nullptr;
        return file && dwarf_lineno(line, &lineNo) == 0;
    }
    return false;
}

} // namespace

__attribute__((noinline)) int captureStack(void** frames, int maxFrames, int skip) {
    if (!frames || maxFrames <= 0)
        return 0;
    if (skip < 0)
        skip = 0;
    void* all[256];
    int want = maxFrames + skip + 1;
    int n = backtrace(all, want < 256 ? want : 256);
    int stored = 0;
    for (int i = skip + 1; i < n && stored < maxFrames; ++i)
        frames[stored++] = all[i];
    return stored;
}

void describeFrame(const void* address, bool exact, char* buf, size_t size) {
    if (!buf || size == 0)
        return;
    buf[0] = 0;
    size_t used = 0;
    // A return address may already belong to the next line or function.
    const Dwarf_Addr pc = Dwarf_Addr(reinterpret_cast<uintptr_t>(address));
    const Dwarf_Addr addr = exact || pc == 0 ? pc : pc - 1;

    SSymbols& s = symbols();
    std::lock_guard<std::mutex> hold(s.lock);
    Dwfl_Module* mod = moduleOf(s, addr);
    if (!mod) {
        // Code outside every reported module (generated code, a vanished library).
        Dl_info info{};
        if (dladdr(address, &info) && info.dli_sname)
            appendName(buf, size, &used, info.dli_sname);
        else
            append(buf, size, &used, "0x%" PRIxPTR, uintptr_t(pc));
        return;
    }
    Dwarf_Addr start = 0;
    const char* modName = dwfl_module_info(mod, nullptr, &start, nullptr, nullptr, nullptr,
                                           nullptr, nullptr);
    const char* sym = dwfl_module_addrname(mod, addr);
    if (sym)
        appendName(buf, size, &used, sym);
    else
        append(buf, size, &used, "0x%" PRIxPTR, uintptr_t(pc));
    const char* file = nullptr;
    int lineNo = 0;
    if (sourceLine(mod, addr, file, lineNo))
        append(buf, size, &used, " at %s:%d", file, lineNo);
    append(buf, size, &used, " [%s+0x%" PRIx64 "]", baseName(modName), uint64_t(pc - start));
}

} // namespace platform
} // namespace vq
