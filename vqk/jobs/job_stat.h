// vqk/jobs/job_stat.h
//
// SJobStat counts what happened in one job or a set of jobs, and the reporting family
// (logFail, logWarn, logCrash, logTimeout) is how job code records a problem: each call
// counts it, prints a console line into the job's output and files a record with the
// caller's source file and line in the running job's collector (vq::sum), which the
// job host writes out as the job's `info` element.
//
//   bool myJob(int argc, char* const* argv, vq::SJobStat& stat) {
//       if (argc < 2) {
//           vq::logFail(stat, "no input file", "my_tool", __LINE__);
//           return false;
//       }
//       ...
//   }
//
// A job that only warned is not OK: isOk() wants all four problem counters at 0.
// The reporting functions never fail loudly: a record that does not fit its 2048-byte
// buffer is dropped (the count and the console line remain), and without a running
// job (vq::sum null) no record is filed. They are not thread-safe; call them from the
// thread that runs the job.
#pragma once

#include "vqk/config.h"

#include <cstdint>

namespace vq {

class CXmlOut;
class COutFile;

struct VQK_API SJobStat {
    int32_t job = 0;
    int32_t fail = 0;
    int32_t warn = 0;
    int32_t crash = 0;
    int32_t timeout = 0;

    void newJob() { ++job; }
    void newFail() { ++fail; }
    void newWarn() { ++warn; }
    void newCrash() { ++crash; }
    void newTimeout() { ++timeout; }

    void add(const SJobStat& other) {
        job += other.job;
        fail += other.fail;
        warn += other.warn;
        crash += other.crash;
        timeout += other.timeout;
    }
    bool isOk() const { return fail == 0 && warn == 0 && crash == 0 && timeout == 0; }

    // Writes the `stat` element (the five counters, then nThread and memPeakMb) when
    // `out` is open, and the five counters as one text line to `also` when given.
    void print(CXmlOut& out, COutFile* also) const;
};

// `file` is the caller's source file name without folder and extension, `line` its
// line; `msg` goes into the record unescaped, so it must not hold double quotes or
// markup if the job's output is to stay well-formed XML.
VQK_API void logFail(SJobStat& stat, const char* msg, const char* file, int line);
VQK_API void logWarn(SJobStat& stat, const char* msg, const char* file, int line);
VQK_API void logCrash(SJobStat& stat, const char* msg, const char* file, int line);
VQK_API void logTimeout(SJobStat& stat, const char* msg, const char* file, int line);

} // namespace vq
