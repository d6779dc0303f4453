// The tool's jobs as the usage text lists them.
#include "run_tool.h"

#include <cstring>

namespace vqk_run {
namespace {

const struct {
    const char* name;
    const char* takes;
} kJobs[] = {
    {"check", "{folder} [masks] [name=value]...: checks every document (masks \"*.xml;*.qif\"), "
              "each in a child process with a time limit, and writes a spreadsheet report; "
              "settings: schema, qifSchema, catalog, timeLimit, parallel, report"},
    {"check_one", "{file} [schema]...: validates and reads one document (run by check)"},
    {"xml_summary", "{file}...: element counts, depth and attributes of XML files"},
    {"list", "{folder} {mask}: the files of a folder that match a mask"},
    {"{file}.xml", "a job file, a jobs list, or an XML job such as expect_counts"},
};

} // namespace

void jobList(vq::CStr& out) {
    out = "\n  Jobs:\n";
    for (const auto& j : kJobs) {
        out += "  ";
        out += j.name;
        out += " ";
        out += j.takes;
        out += "\n";
    }
}

bool isToolJob(const char* name) {
    for (const auto& j : kJobs)
        if (std::strcmp(j.name, name) == 0)
            return true;
    return false;
}

} // namespace vqk_run
