// What a check reads out of one document: for QIF documents the counts that matter to
// a quality engineer (features, characteristics, measured results and how many of them
// passed or failed), for any other document its element count and depth.
#pragma once

#include "vqk/text/str.h"

namespace vqk_run {

struct SDocSummary {
    bool qif = false;
    int elements = 0;
    int maxDepth = 0;
    int features = 0;        // feature items (the instances on the part)
    int characteristics = 0; // characteristic items
    int measured = 0;        // characteristic measurements
    int passed = 0;          // measurements whose status is PASS
    int failed = 0;          // measurements whose status is FAIL
};

// Reads `path` with the library's pull reader. On a read error it returns false and
// puts "file:line:column: message" into `error`; the counts then hold what was read
// before the error.
bool readDocSummary(const char* path, SDocSummary& summary, vq::CStr& error);

} // namespace vqk_run
