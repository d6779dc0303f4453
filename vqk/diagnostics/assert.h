// vqk/diagnostics/assert.h
//
// The library's assertion facility: process-wide settings and one XML record per failed
// assertion, appended to an assertion log that a tool shares with the tools it starts.
//
//   vq::CAssert::setMode(vq::eAssertLog);          // off until an application says so
//   VQ_ASSERT(n >= 0, 3);                           // records when n < 0
//   VQ_ASSERT_MSG(cell.isOpen(), "cell left open", 5);
//
// A record, one line each (level 5 adds the call stack after it):
//   <assert time="14:02:11" file="src/a.cpp" line="42" func="load" expr="n >= 0" level="3" id="1"/>
//   <assert ... expr="cell.isOpen()" msg="cell left open" level="5" id="2"/>
// Double quotes in the expression or message become blanks; nothing else is escaped.
//
// Levels below minLevel (3) are neither counted nor written. Mode off counts, mode log
// writes, mode break stops at a debugger trap. After maxLogRecords records (1000; a
// negative value means no cap) one "<too_many_asserts/>" line is written and nothing
// more, while nAssert() keeps counting.
//
// The log: the name given to setLogName, else the environment variable _ORV_ASSERTS,
// else "asserts.log" in the temporary folder. setLogName puts _ORV_ASSERTS into the
// environment, so child processes write to the same file. The first process of a
// process tree empties the file with its first record and then sets
// _ORV_ASSERTS_FIRST_OUT=0, so that it and every child started afterwards append.
// The file is opened and closed for every record, so that nothing is lost when a process
// dies; a log that cannot be opened loses the record silently. Nothing here throws.
#pragma once

#include "vqk/config.h"
#include "vqk/platform/crash.h"
#include "vqk/text/str.h"

namespace vq {

enum EAssertMode : int32_t {
    eAssertOff = 0,
    eAssertLog = 1,
    eAssertBreak = 2,
};

class VQK_API CAssert {
public:
    static void setMaxLogRecords(int n);
    static void setMinLevel(int level);
    static void setMode(EAssertMode mode);
    static EAssertMode getMode();
    static void setLogName(const char* name);
    // Writes `text` as it is into the log; mode log only.
    static void logStr(const char* text);
    // Writes <model name="..."/> (cut to 1023 bytes); mode log only.
    static void logModelName(const char* name);
    // One failed assertion; VQ_ASSERT fills in where it happened.
    static void ass(const char* file, int line, const char* func, const char* expr,
                    const char* msg, int level);
    static int nAssert();
    // Clearing the flag tells this process and its future children to append.
    static void setFirstOut(bool firstOut);

    // Appends the calling thread's stack to the log, one frame per line inside a CDATA
    // block: function, source file and line where known, module and offset.
    static void dumpCallStack();
    // The same after a "<crash/>" line (mode log only); the argument is not used.
    static void dumpCallStack(int);

    // Crash records. writeMiniDump writes a dump of the process, with the fault `info`
    // describes when given, into the folder `path` (null: the one given to
    // installCrashHandler, else the temporary folder) as "<day>_<Month>_<hour>_<minute>.dmp"
    // in local time, and a <writeMiniDump> block into the log (whatever the mode) telling
    // the library's version and where the dump went, or why it did not. 0 when the dump
    // was saved, else the system's error code (negative: no dump support). It allocates
    // nothing and may run in a dying process.
    static long writeMiniDump(SExceptionPointers* info, const char* path);
    // From now on a fatal fault (on POSIX the signals SIGSEGV, SIGBUS, SIGFPE, SIGILL and
    // SIGABRT; on Windows an unhandled exception) flushes vq::xout's stream, so that the
    // job_log written so far survives, calls writeMiniDump with the fault and `dumpFolder`,
    // then lets the process end as it would have. False when the system refused.
    static bool installCrashHandler(const char* dumpFolder);

private:
    static CStr logName();
    static bool isFirstOut();
};

// For use as an exception filter: writes the dump and returns 1 (run the handler);
// `code` is not used.
VQK_API int logException(unsigned code, SExceptionPointers* info, const char* path);

} // namespace vq

// The expression is evaluated once, whatever the mode.
#define VQ_ASSERT(expr, level)                                                                     \
    ((expr) ? (void)0 : ::vq::CAssert::ass(__FILE__, __LINE__, __func__, #expr, nullptr, (level)))
#define VQ_ASSERT_MSG(expr, msg, level)                                                            \
    ((expr) ? (void)0 : ::vq::CAssert::ass(__FILE__, __LINE__, __func__, #expr, (msg), (level)))
