// vqk/platform/crash.h
//
// What the library needs to leave a record when the process dies of a fault: a handler
// installed for the fatal faults, files and time readable while the process is in an
// unknown state (nothing here allocates), and the dump itself.
//
//   vq::platform::installCrashHandler(onCrash);   // onCrash(info) runs, then the process
//                                                 // ends as it would have without it
//   intptr_t f = vq::platform::crashFileOpen("/tmp/22_November_14_02.dmp", true);
//   vq::platform::writeCrashDump(f, info);
//
// On Windows the handler is the unhandled-exception filter and SExceptionPointers is the
// system's EXCEPTION_POINTERS; the dump is a minidump written by DbgHelp. On POSIX the
// handler catches SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGABRT (on an alternate stack, so
// that a stack overflow is caught too), SExceptionPointers carries the signal's
// information, and the dump is a text report: the signal, the fault address, the stack
// with function names, files and lines, and the memory map.
//
// Failure: functions return -1 / false / an error code; nothing throws.
#pragma once

#include "vqk/config.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

#if defined(_WIN32)
struct _EXCEPTION_POINTERS;
namespace vq {
using SExceptionPointers = ::_EXCEPTION_POINTERS;
}
#else
namespace vq {
// What a fatal signal tells about the fault.
struct SExceptionPointers {
    int signal = 0;
    int code = 0;                   // the signal's si_code
    const void* address = nullptr;  // the fault address (si_addr)
    const void* pc = nullptr;       // the faulting instruction, null when unknown
    void* context = nullptr;        // the interrupted context (ucontext_t*)
};
} // namespace vq
#endif

namespace vq {
namespace platform {

using CrashCallback = void (*)(SExceptionPointers* info);

// Installs the handler (replacing an earlier one of this library, keeping whatever was
// installed before it as what ends the process afterwards). False when the system
// refused it.
VQK_API bool installCrashHandler(CrashCallback onCrash);
// True when a fault would reach the handler now: nothing installed since has taken over.
VQK_API bool isCrashHandlerActive();

// Files usable from the handler. Open returns -1 on failure (crashLastError tells why);
// without `truncate` writes go to the end of the file.
VQK_API intptr_t crashFileOpen(const char* path, bool truncate);
VQK_API bool crashFileWrite(intptr_t file, const char* data, size_t size);
VQK_API void crashFileClose(intptr_t file);
// The system's code of the last failed call of this thread.
VQK_API int crashLastError();

struct SCrashTime {
    int year, month, day, hour, minute, second; // month 1-12
};
// The local time, read without the locks of the runtime's time functions (the offset
// from UTC is the one in force when the handler was installed).
VQK_API void crashLocalTime(SCrashTime& t);

enum EDumpSupport { eDumpReady = 0, eDumpMissing = -1, eDumpTooOld = -2 };
// Whether this system can write dumps: on Windows, whether DbgHelp and its
// MiniDumpWriteDump are there.
VQK_API EDumpSupport dumpSupport();
// Writes the dump of the current process and thread, with the fault when `info` is
// given, into the open file. 0 when written, else the system's error code.
VQK_API int writeCrashDump(intptr_t file, const SExceptionPointers* info);

// Flushes the stream unless another thread is inside it (waiting could hang the dying
// process); false when it was busy or the flush failed.
VQK_API bool flushIfFree(std::FILE* stream);

} // namespace platform
} // namespace vq
