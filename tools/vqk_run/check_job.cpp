// check {folder} [mask] [name=value]...: checks every document of a folder that matches
// the mask (default "*.xml;*.qif") and reports on them. Each document is checked by a
// child process of this tool (check_one) under a time limit, in a job object, so that a
// check that hangs or crashes is counted as a time-out or a crash and the run goes on.
// Checks run side by side; the report lists the documents in name order whatever
// finished first. The run writes one `document` element per document into the
// job_log, a spreadsheet report, and a summary line.
#include "check_one.h"
#include "check_report.h"
#include "check_settings.h"
#include "run_tool.h"
#include "vqk/platform/environment.h"

#include <chrono>
#include <cstring>
#include <omp.h>

namespace vqk_run {
namespace {

const unsigned long kNoWindow = 0x8000000;

// Arguments are quoted by the rules the library splits command lines with.
void addQuoted(vq::CStr& cmd, const char* arg) {
    cmd += " \"";
    cmd += arg;
    cmd += "\"";
}

bool isQif(const char* path) {
    const char* dot = std::strrchr(path, '.');
    return dot && vq::stricmp(dot, ".qif") == 0;
}

vq::CStr childCommand(const std::string& self, const char* doc, const CCheckSettings& settings,
                      const vq::CStr& log) {
    vq::CStr cmd;
    cmd.cformat("\"%s\" check_one", self.c_str());
    addQuoted(cmd, doc);
    const char* schemas = isQif(doc) ? settings.qifSchema.first() : settings.schema.first();
    vq::TVectorC<vq::CStr> parts;
    vq::splitStrByToken(parts, schemas, ";", true);
    for (const vq::CStr& s : parts)
        if (!s.empty())
            addQuoted(cmd, s.str());
    cmd += " //b //o";
    addQuoted(cmd, log.str());
    vq::CStr err(log);
    err += ".err";
    cmd += " //e";
    addQuoted(cmd, err.str());
    return cmd;
}

// Every check, side by side; results land by index, so their order is the documents'.
void runChecks(const vq::TVectorC<vq::CStr>& docs, const CCheckSettings& settings,
               const vq::CStr& logPrefix, vq::TVectorC<SDocResult>& results) {
    const std::string self = vq::platform::executablePath();
    const int n = int(docs.size());
    const int threads = settings.parallel > 0 ? settings.parallel : omp_get_num_procs();
    vq::CProgressParallel progress(n, "Checking documents", true);
#pragma omp parallel for schedule(dynamic, 1) num_threads(threads)
    for (int i = 0; i < n; ++i) {
        SDocResult& r = results[i];
        r.log.cformat("%s%04d.xml", logPrefix.str(), i + 1);
        const vq::CStr cmd = childCommand(self, docs[i].str(), settings, r.log);
        const auto start = std::chrono::steady_clock::now();
        r.exitCode = vq::startProcess(cmd.str(), true, settings.timeLimit, true, kNoWindow);
        r.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        progress.progress(docs[i].str());
    }
}

} // namespace

bool checkJob(int argc, char* const* argv, vq::SJobStat& stat) {
    CCheckSettings settings;
    // The settings stay in the user's options file; a first run puts them there, so that
    // they can be edited. Overrides below hold for this run only.
    const char* optionsFile = vq::optionsFilePath();
    const int read = settings.read(optionsFile);
    if ((read == 0 || read == -1) && *optionsFile)
        settings.write(optionsFile);
    const char* folder = nullptr;
    const char* mask = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strchr(argv[i], '=')) {
            if (!settings.override(argv[i])) {
                reportf(vq::logFail, stat, __LINE__, "check: unknown setting %s", argv[i]);
                return false;
            }
        } else if (!folder) {
            folder = argv[i];
        } else if (!mask) {
            mask = argv[i];
        }
    }
    if (!folder) {
        vq::logFail(stat, "check needs a folder of documents", kSource, __LINE__);
        return false;
    }
    vq::TVectorC<vq::CStr> docs;
    if (!collectDocuments(folder, mask ? mask : "*.xml;*.qif", docs)) {
        reportf(vq::logFail, stat, __LINE__, "can't read folder %s", folder);
        return false;
    }
    // Library code in this run and in its checks records its failed expectations in the
    // assertion log (the temporary folder's asserts.log unless _ORV_ASSERTS names one).
    if (vq::CAssert::getMode() == vq::eAssertOff)
        vq::CAssert::setMode(vq::eAssertLog);
    if (*settings.catalog.first())
        vq::platform::setEnv("XML_CATALOG_FILES", settings.catalog.first()); // the children's validator stays offline
    const auto start = std::chrono::steady_clock::now();
    vq::TVectorC<SDocResult> results;
    results.resize(docs.size());
    runChecks(docs, settings, childLogPrefix(), results);

    SCheckTotals totals;
    for (size_t i = 0; i < docs.size(); ++i)
        judgeResult(docs[i].str(), results[i], totals, stat);
    for (const SDocResult& r : results)
        removeChildLog(r);
    totals.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    writeDocumentRecords(docs, results);
    if (!writeCheckReport(settings.report.first(), docs, results, totals))
        reportf(vq::logFail, stat, __LINE__, "can't write the report %s", settings.report.first());
    printSummary(totals, settings.report.first());
    return stat.isOk();
}

const int regCheck = vq::registerJob("check", checkJob);

} // namespace vqk_run
