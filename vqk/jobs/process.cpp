// Child processes: the fixed sequence of creating held, joining the job, releasing and
// waiting, on top of the platform's process operations.
#include "vqk/jobs/process.h"

#include "vqk/diagnostics/log_workflow.h"
#include "vqk/platform/memory_info.h"
#include "vqk/platform/process.h"
#include "vqk/text/bounded.h"
#include "vqk/text/convert.h"

#include <string>

namespace vq {

namespace {

constexpr int kWaitSliceMs = 500;
constexpr const char* kJobPrefix = "orv_child_job_";

} // namespace

unsigned long startProcess(const wchar_t* cmd, bool wait, int timeoutSec, bool asJob,
                           unsigned long flags) {
    CStr utf8;
    wstrtoutf8(utf8, cmd);
    CStr tagText;
    tagText.cformat("cmd = '%s'", utf8.str());
    CLogWorkflow::CTag tag(5, "startProcess", tagText.str());

    platform::SChildProcess child;
    std::string error;
    if (!platform::processCreate(cmd, flags, asJob ? kJobPrefix : nullptr, child, error)) {
        CLogWorkflow::msg(5, "startProcess error: '%s'", error.c_str());
        return kProcessNotStarted;
    }
    if (asJob) {
        // Named after the handle, not the process id: a job name is reused only once the
        // handle value is, and joining a job that still lives keeps both children in it.
        char name[260];
        vq::sprintf(name, sizeof name, "%s%i", kJobPrefix, (int)(uint32_t)(uintptr_t)child.process);
        assignToJob(child.process, name);
    }
    platform::processResume(child);

    unsigned long exitCode = 0;
    if (wait) {
        if (timeoutSec < 0) {
            while (platform::processWait(child, kWaitSliceMs) == platform::EProcessWait::timedOut)
                platform::processPeekMessages();
            platform::processExitCode(child, exitCode);
        } else if (platform::processWait(child, timeoutSec * 1000) == platform::EProcessWait::timedOut) {
            platform::processTerminate(child, (unsigned int)-1);
            platform::processWait(child, -1);
            unsigned long ignored = 0;
            platform::processExitCode(child, ignored);
            exitCode = kProcessTimedOut;
        } else {
            platform::processExitCode(child, exitCode);
        }
        uint64 peak = 0;
        if (!platform::processPeakMemory(child, peak))
            peak = 0;
        CLogWorkflow::msg(5, "startProcess() exit = %i, peak memory usage = %i Mb", (int)exitCode,
                          (int)(peak >> 20));
    }
    platform::processClose(child);
    return exitCode;
}

unsigned long startProcess(const char* cmd, bool wait, int timeoutSec, bool asJob,
                           unsigned long flags) {
    CWStr wide;
    strtowstr(wide, cmd, true);
    return startProcess(wide.str(), wait, timeoutSec, asJob, flags);
}

bool assignToJob(void* process, const char* jobName) {
    return process && jobName && platform::processJoinJob(process, jobName);
}

void* findProcess(const char* exeName) { return platform::processFind(exeName); }

void* findProcess(const wchar_t* exeName) {
    CStr utf8;
    wstrtoutf8(utf8, exeName);
    return platform::processFind(utf8.str());
}

void closeProcess(void* process) { platform::processCloseHandle(process); }

void getMemInfo(uint64& privateBytes, uint64& peakBytes) {
    privateBytes = 0;
    peakBytes = 0;
    platform::SMemoryInfo info;
    if (platform::queryMemoryInfo(info)) {
        privateBytes = info.privateBytes;
        peakBytes = info.peakResidentBytes;
    }
}

} // namespace vq
