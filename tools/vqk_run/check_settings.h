// The check job's settings: an option set named "Check" in the per-user options file,
// so that a user sets the schema and the limits once; `name=value` arguments on the
// command line override them for one run.
#pragma once

#include "vqk/vqk.h"

namespace vqk_run {

class CCheckSettings : public vq::COptionsSet {
public:
    CCheckSettings();

    vq::CStringSt schema;  // schemas for documents without a namespace, ';' between them
    vq::CStringSt qifSchema; // the schema for QIF documents (QIFDocument.xsd)
    vq::CStringSt catalog;   // an XML catalog that keeps validation offline
    vq::CStringSt report;    // the spreadsheet report's path
    int timeLimit = 30;      // seconds one check may take
    int parallel = 0;        // checks side by side; 0: one per core

    // Applies one `name=value` argument; false when the name is not a setting.
    bool override(const char* argument);

protected:
    void addOptions() override;
};

} // namespace vqk_run
