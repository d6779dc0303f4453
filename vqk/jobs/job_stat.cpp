#include "vqk/jobs/job_stat.h"

#include "vqk/files/out_file.h"
#include "vqk/jobs/job_info.h"
#include "vqk/platform/memory_info.h"
#include "vqk/text/bounded.h"
#include "vqk/xml/xml_out.h"

#include <omp.h>

namespace vq {

void SJobStat::print(CXmlOut& out, COutFile* also) const {
    if (out.isOpen()) {
        platform::SMemoryInfo mem;
        int peakMb = platform::queryMemoryInfo(mem) ? int(mem.peakResidentBytes >> 20) : 0;
        CXmlOutElem elem(out, "stat");
        out.attr("job", "%d", job);
        out.attr("fail", "%d", fail);
        out.attr("warn", "%d", warn);
        out.attr("crash", "%d", crash);
        out.attr("timeout", "%d", timeout);
        out.attr("nThread", "%i", omp_get_max_threads());
        out.attr("memPeakMb", "%i", peakMb);
    }
    if (also)
        also->print("\njob=\"%d\" fail=\"%d\" warn=\"%d\" crash=\"%d\" timeout=\"%d\"\n", job, fail,
                    warn, crash, timeout);
}

namespace {

// Counts, prints the console line into the job's output and files the record with the
// innermost running job. The record is built in a fixed buffer so that reporting a
// failure never allocates; one that does not fit is dropped.
void report(int32_t& counter, const char* consoleLine, const char* record, const char* msg,
            const char* file, int line) {
    ++counter;
    if (!msg)
        msg = "";
    xout(consoleLine, msg);
    char buf[2048];
    if (vq::sprintf(buf, sizeof buf, record, file ? file : "", line, msg) >= 0 && sum)
        sum->info(buf);
}

} // namespace

void logFail(SJobStat& stat, const char* msg, const char* file, int line) {
    report(stat.fail, "Fail : %s\n", "<error file=\"%s\" line=\"%i\" msg=\"%s\"/>", msg, file, line);
}

void logWarn(SJobStat& stat, const char* msg, const char* file, int line) {
    report(stat.warn, "Warn : %s\n", "<warning file=\"%s\" line=\"%i\" msg=\"%s\"/>", msg, file,
           line);
}

void logCrash(SJobStat& stat, const char* msg, const char* file, int line) {
    report(stat.crash, "Crash : %s\n", "<crash file=\"%s\" line=\"%i\" msg=\"%s\"/>", msg, file,
           line);
}

void logTimeout(SJobStat& stat, const char* msg, const char* file, int line) {
    report(stat.timeout, "Timeout : %s\n", "<timeout file=\"%s\" line=\"%i\" msg=\"%s\"/>", msg,
           file, line);
}

} // namespace vq
