#include "check_report.h"
#include "run_tool.h"
#include "vqk/platform/environment.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace vqk_run {
namespace {

const unsigned long kNotStarted = 4294967177ul;
const unsigned long kTimedOut = 4294967178ul;

// The first line a child's tools wrote to standard error (the validator's first
// message names the file, the line and what is wrong).
vq::CStr firstErrorLine(const vq::CStr& log) {
    vq::CStr path(log);
    path += ".err";
    vq::CStr line;
    if (FILE* f = std::fopen(path.str(), "r")) {
        char buf[1024];
        if (std::fgets(buf, sizeof buf, f)) {
            buf[std::strcspn(buf, "\r\n")] = 0;
            line = buf;
        }
        std::fclose(f);
    }
    return line;
}

} // namespace

const char* statusText(EDocStatus status) {
    switch (status) {
    case EDocStatus::passed: return "passed";
    case EDocStatus::invalid: return "invalid";
    case EDocStatus::unreadable: return "unreadable";
    case EDocStatus::timeout: return "time-out";
    case EDocStatus::crash: return "crash";
    case EDocStatus::notStarted: return "not started";
    }
    return "";
}

vq::CStr childLogPrefix() {
    vq::CStr prefix;
    prefix.cformat("%svqk_check_%d_", vq::platform::tempFolder().c_str(), vq::platform::processId());
    return prefix;
}

void removeChildLog(const SDocResult& r) {
    vq::CStr err(r.log);
    err += ".err";
    std::remove(r.log.str());
    std::remove(err.str());
}

bool collectDocuments(const char* folder, const char* masks, vq::TVectorC<vq::CStr>& docs) {
    vq::TVectorC<vq::CStr> parts, names;
    vq::splitStrByToken(parts, masks, ";", true);
    vq::CStr dir(folder);
    if (!dir.empty() && dir.str()[dir.length() - 1] != '/' && dir.str()[dir.length() - 1] != '\\')
        dir += vq::pathDelimiter();
    for (const vq::CStr& mask : parts) {
        if (!vq::platform::listFiles(folder, mask.str(), names))
            return false;
        for (const vq::CStr& n : names) {
            vq::CStr path(dir);
            path += n.str();
            docs.push_back(path);
        }
    }
    std::sort(docs.begin(), docs.end());
    // A document two masks match is checked once.
    for (uint32_t i = docs.size(); i > 1; --i)
        if (docs[i - 1] == docs[i - 2])
            docs.erase(i - 1);
    return true;
}

void judgeResult(const char* doc, SDocResult& r, SCheckTotals& t, vq::SJobStat& stat) {
    ++t.documents;
    const bool found = readCheckOutcome(r.log.str(), r.outcome);
    if (r.exitCode == kTimedOut) {
        r.status = EDocStatus::timeout;
        r.message.cformat("%s: the check took longer than its time limit", doc);
        reportf(vq::logTimeout, stat, __LINE__, "%s", r.message.str());
    } else if (r.exitCode == kNotStarted) {
        r.status = EDocStatus::notStarted;
        r.message.cformat("%s: the check could not be started", doc);
        reportf(vq::logFail, stat, __LINE__, "%s", r.message.str());
    } else if (!found) {
        r.status = EDocStatus::crash;
        r.message.cformat("%s: the check crashed (exit code %lu)", doc, r.exitCode);
        reportf(vq::logCrash, stat, __LINE__, "%s", r.message.str());
    } else if (!r.outcome.readOk && !(r.outcome.validated && r.outcome.valid)) {
        r.status = EDocStatus::unreadable;
        r.message = r.outcome.message;
        reportf(vq::logFail, stat, __LINE__, "%s", r.message.str());
    } else if (!r.outcome.readOk) {
        // Valid against its schema, but the library's reader, which ends every markup
        // construct at the first '>' (a comment holding one included), stopped early:
        // the document passes, its summary is incomplete.
        ++t.incomplete;
        r.message.cformat("summary incomplete: %s", r.outcome.message.str());
        reportf(vq::logWarn, stat, __LINE__, "%s", r.message.str());
    } else if (r.outcome.validated && !r.outcome.valid) {
        r.status = EDocStatus::invalid;
        const vq::CStr why = firstErrorLine(r.log);
        r.message.cformat("%s is not valid against its schema%s%s", doc, why.empty() ? "" : ": ",
                          why.str());
        reportf(vq::logFail, stat, __LINE__, "%s", r.message.str());
    }
    switch (r.status) {
    case EDocStatus::passed: ++t.passed; break;
    case EDocStatus::timeout: ++t.timeouts; break;
    case EDocStatus::crash: ++t.crashes; break;
    default: ++t.failed; break;
    }
    t.measured += r.outcome.summary.measured;
    t.measuredPassed += r.outcome.summary.passed;
    t.measuredFailed += r.outcome.summary.failed;
}

void writeDocumentRecords(const vq::TVectorC<vq::CStr>& docs, const vq::TVectorC<SDocResult>& results) {
    vq::CXmlOutElem list(vq::xout, "documents");
    for (size_t i = 0; i < docs.size(); ++i) {
        const SDocResult& r = results[i];
        const SDocSummary& s = r.outcome.summary;
        vq::CXmlOutElem d(vq::xout, "document");
        vq::xout.attrStr("file", docs[i].str());
        vq::xout.attrStr("status", statusText(r.status));
        vq::xout.attr("seconds", "%.3f", r.seconds);
        if (s.qif) {
            vq::xout.attrInt("features", s.features);
            vq::xout.attrInt("characteristics", s.characteristics);
            vq::xout.attrInt("measured", s.measured);
            vq::xout.attrInt("passed", s.passed);
            vq::xout.attrInt("failed", s.failed);
        } else if (s.elements > 0) {
            vq::xout.attrInt("elements", s.elements);
            vq::xout.attrInt("depth", s.maxDepth);
        }
    }
}

void printSummary(const SCheckTotals& t, const char* report) {
    vq::CStr text;
    text.cformat("\nChecked %d documents in %.1f s: %d passed, %d failed, %d timed out, "
                 "%d crashed\n",
                 t.documents, t.seconds, t.passed, t.failed, t.timeouts, t.crashes);
    vq::CStr more;
    if (t.incomplete)
        text += more.cformat("Passed with an incomplete summary: %d\n", t.incomplete);
    text += more.cformat("Measured characteristics: %d (%d passed, %d failed)\nReport: %s\n",
                         t.measured, t.measuredPassed, t.measuredFailed, report);
    vq::CStr escaped;
    vq::escapeXmlStr(escaped, text.str());
    vq::xout("%s", escaped.str());
}

} // namespace vqk_run
