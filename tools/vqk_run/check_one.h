// The outcome of checking one document, as the child writes it into its job_log and
// the parent reads it back.
#pragma once

#include "doc_summary.h"
#include "vqk/text/vector.h"

namespace vqk_run {

struct SCheckOutcome {
    bool validated = false; // a schema was given
    bool valid = false;
    bool readOk = false;
    SDocSummary summary;
    vq::CStr message; // the first failure, as the child reported it
};

// Validates `path` against every schema with the library's validation tool.
bool validateDocument(const char* path, const vq::TVectorC<vq::CStr>& schemas);

// Writes the outcome as one `check` element on vq::xout.
void writeCheckOutcome(const char* path, const SCheckOutcome& out);

// Finds the `check` element in a child's job_log; false when the child ended before
// writing it (it crashed, or was killed).
bool readCheckOutcome(const char* jobLog, SCheckOutcome& out);

} // namespace vqk_run
