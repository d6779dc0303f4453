// What the check job makes of its children's outcomes: a status per document, the
// records in the job_log, the spreadsheet report and the summary line.
#pragma once

#include "check_one.h"
#include "vqk/vqk.h"

namespace vqk_run {

enum class EDocStatus { passed, invalid, unreadable, timeout, crash, notStarted };

// The status's word in the job_log and the report: "passed", "invalid", ...
const char* statusText(EDocStatus status);

struct SDocResult {
    vq::CStr log;                 // the child's job_log
    unsigned long exitCode = 0;
    double seconds = 0;
    SCheckOutcome outcome;
    EDocStatus status = EDocStatus::passed;
    vq::CStr message;             // why it did not pass
};

struct SCheckTotals {
    int documents = 0, passed = 0, failed = 0, timeouts = 0, crashes = 0, incomplete = 0;
    int measured = 0, measuredPassed = 0, measuredFailed = 0;
    double seconds = 0;
};

// The documents of `folder` matching any of the ';'-separated masks, in name order,
// each with its folder.
bool collectDocuments(const char* folder, const char* masks, vq::TVectorC<vq::CStr>& docs);

// Where the children write their job_logs: the temporary folder, names unique to this
// run; removeChildLog deletes one child's files once they have been read.
vq::CStr childLogPrefix();
void removeChildLog(const SDocResult& r);

// Reads the child's outcome, decides the status, counts it and reports it on `stat`.
void judgeResult(const char* doc, SDocResult& r, SCheckTotals& totals, vq::SJobStat& stat);

void writeDocumentRecords(const vq::TVectorC<vq::CStr>& docs, const vq::TVectorC<SDocResult>& results);

// The spreadsheet: a summary sheet (one row per document, styled by status, totals,
// print setup) and a detail sheet of the failures' messages.
bool writeCheckReport(const char* path, const vq::TVectorC<vq::CStr>& docs,
                      const vq::TVectorC<SDocResult>& results, const SCheckTotals& totals);

void printSummary(const SCheckTotals& totals, const char* report);

} // namespace vqk_run
