// The tool's job runner and the helpers its jobs share.
#pragma once

#include "vqk/platform/dir_list.h"
#include "vqk/platform/std_redirect.h"
#include "vqk/vqk.h"
#include "vqk/xml/xml_escape.h"

#include <map>
#include <stdexcept>
#include <string>

namespace vqk_run {

// The tool's source name in the records its jobs file (logFail and its family).
constexpr const char* kSource = "vqk_run";

// What one XML file holds: its elements by name, their deepest nesting and the number
// of attributes, and how long reading it took.
struct SXmlShape {
    std::map<std::string, int> elements;
    int elementCount = 0;
    int attributeCount = 0;
    int maxDepth = 0;
    double seconds = 0;
};

using FReport = void (*)(vq::SJobStat& stat, const char* msg, const char* file, int line);

// Formats a message, escapes it for XML (it lands in the job_log as a console line and
// as a record attribute) and reports it with `report` (vq::logFail, vq::logWarn, ...).
void reportf(FReport report, vq::SJobStat& stat, int line, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 4, 5)))
#endif
    ;

// Reads `path` with the library's pull reader. Throws std::runtime_error when the file
// cannot be opened or is not well formed: "path:line:column: " and the reader's message
// (just "path: " where the place is unknown).
SXmlShape readXmlShape(const char* path);

// Writes the shape as an `xml_summary` element (its counters, then one `element`
// child per name) on vq::xout.
void writeXmlShape(const char* path, const SXmlShape& shape);

// The jobs this tool has, one line each with what it takes ("\n  Jobs:\n  check ...").
void jobList(vq::CStr& out);
bool isToolJob(const char* name);

} // namespace vqk_run
