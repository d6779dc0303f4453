// check_one {file} [schema]...: the check of one document, run by the `check` job in a
// child process of this tool so that a document that hangs or crashes its check costs
// only that check. It validates the document against the schemas (through the
// library's validation tool) and reads it with the pull reader; the outcome is one
// `check` element in this run's job_log, which the parent reads back.
#include "check_one.h"
#include "doc_summary.h"
#include "run_tool.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

namespace vqk_run {
namespace {

// The examples carry documents whose checks hang or crash on purpose, marked by a
// processing instruction near the top, so that the run shows what a time limit and a
// crash record do. Real documents never carry it.
const char* simulatedFault(const char* path) {
    char head[512] = {};
    if (FILE* f = std::fopen(path, "rb")) {
        const size_t n = std::fread(head, 1, sizeof head - 1, f);
        head[n] = 0;
        std::fclose(f);
    }
    if (std::strstr(head, "<?vqk-check hang?>"))
        return "hang";
    if (std::strstr(head, "<?vqk-check crash?>"))
        return "crash";
    return nullptr;
}

void actOut(const char* fault) {
    if (!fault)
        return;
    if (std::strcmp(fault, "hang") == 0)
        for (;;)
            std::this_thread::sleep_for(std::chrono::seconds(1));
    std::fflush(nullptr);
    volatile int* nowhere = nullptr;
    *nowhere = 1; // a real access violation, so the crash handler records it

}

bool checkOneJob(int argc, char* const* argv, vq::SJobStat& stat) {
    if (argc < 2) {
        vq::logFail(stat, "check_one needs a document", kSource, __LINE__);
        return false;
    }
    const char* path = argv[1];
    actOut(simulatedFault(path));

    SCheckOutcome out;
    out.validated = argc > 2;
    if (out.validated) {
        vq::TVectorC<vq::CStr> schemas;
        for (int i = 2; i < argc; ++i)
            schemas.push_back(vq::CStr(argv[i]));
        out.valid = validateDocument(path, schemas);
    }
    vq::CStr error;
    out.readOk = readDocSummary(path, out.summary, error);
    writeCheckOutcome(path, out);
    if (!out.readOk)
        reportf(vq::logFail, stat, __LINE__, "%s", error.str());
    if (out.validated && !out.valid)
        reportf(vq::logFail, stat, __LINE__, "%s is not valid against its schema", path);
    return stat.isOk();
}

const int regCheckOne = vq::registerJob("check_one", checkOneJob);

} // namespace
} // namespace vqk_run
