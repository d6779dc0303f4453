// vqk/platform/process.h
//
// Child processes as the system makes them: created held (not yet running the program),
// optionally put into a kill-on-exit job, released, waited for with a time limit,
// terminated, and asked for their exit code and peak memory.
//
//   vq::platform::SChildProcess child;
//   std::string error;
//   if (!vq::platform::processCreate(L"tool \"a b\"", 0, nullptr, child, error)) ...
//   vq::platform::processResume(child);
//   if (vq::platform::processWait(child, 1000) == vq::platform::EProcessWait::timedOut) ...
//   unsigned long code = 0;
//   vq::platform::processExitCode(child, code);
//   vq::platform::processClose(child);
//
// The handle (SChildProcess::process) is a HANDLE on Windows and a pidfd on Linux, whose
// descriptor number is the handle value. On Linux the command line is split into
// arguments by the Windows rules (processSplitCommandLine), the program is found on PATH
// when its name has no '/', and a program that cannot be executed is known when
// processCreate returns: it fails with the system's text in `error`. A child ended by
// signal n reports the exit code 128 + n.
//
// Jobs: a job is a named group of processes that die when the process that made the job
// ends. On Windows it is a job object with the kill-on-close limit; on Linux the job's
// children get the parent-death signal SIGKILL and share one process group per job name,
// killed when this process exits. Because a Linux child can only be moved into a group
// before its program starts, processCreate is told the job's name prefix: the child then
// joins the job named prefix + its handle value before the program runs, and
// processJoinJob confirms it. There the child is held by the creating thread, which
// sleeps until the child has started its program (or failed to); processResume then has
// nothing left to do. The parent-death signal follows the creating thread: a child made
// as a job from a thread that then ends is killed with it.
#pragma once

#include "vqk/config.h"

#include <string>
#include <vector>

namespace vq {
namespace platform {

struct SChildProcess {
    void* process = nullptr;  // the handle, null when there is no child
    void* thread = nullptr;   // the main thread's handle (Windows), else null
    long long id = 0;         // the process id
    bool reaped = false;      // the exit status has been collected
    unsigned long exitCode = 0;
    uint64 peakBytes = 0;
    bool peakKnown = false;
};

enum class EProcessWait { ended, timedOut, failed };

// Creates the child held before its program runs. jobNamePrefix: see above; null when the
// child joins no job. False, with the system's text in `error`, when it cannot be started.
VQK_API bool processCreate(const wchar_t* cmdLine, unsigned long flags, const char* jobNamePrefix,
                           SChildProcess& child, std::string& error);
// Lets the held child run.
VQK_API void processResume(SChildProcess& child);
// Waits up to `milliseconds` (negative: without limit) for the child to end.
VQK_API EProcessWait processWait(SChildProcess& child, int milliseconds);
// Looks at (without removing) the calling thread's window messages, so that a user
// interface waiting on a child stays responsive; nothing to do where there are none.
VQK_API void processPeekMessages();
VQK_API bool processTerminate(SChildProcess& child, unsigned int exitCode);
VQK_API bool processExitCode(SChildProcess& child, unsigned long& code);
// The child's peak working set (resident set) in bytes, once it has ended.
VQK_API bool processPeakMemory(SChildProcess& child, uint64& bytes);
// Closes the handles; a child that is still running goes on and is reaped later.
VQK_API void processClose(SChildProcess& child);

// Puts a process into the named job, making the job the first time its name is used;
// the job lives as long as this process. False when the process cannot join.
VQK_API bool processJoinJob(void* process, const char* jobName);
// The first running process whose executable file name equals exeName, ignoring case,
// opened with all access rights; null when there is none.
VQK_API void* processFind(const char* exeName);
VQK_API void processCloseHandle(void* process);

// The file name ending of programs: ".exe" on Windows, empty elsewhere.
VQK_API const char* executableSuffix();

// Splits a command line into arguments the way Windows programs do: blanks and tabs
// separate arguments outside double quotes; 2n backslashes before a quote give n
// backslashes and the quote opens or closes quoting, 2n+1 give n and a literal quote;
// "" inside quotes is a literal quote; other backslashes are kept. The program name (the
// first argument) ends at the first blank outside quotes and takes backslashes literally.
VQK_API std::vector<std::wstring> processSplitCommandLine(const wchar_t* cmdLine);

} // namespace platform
} // namespace vq
