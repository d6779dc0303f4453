// xml_summary {file}...: the shape of each XML file (element counts, depth,
// attributes, reading time). A file that cannot be read is a failure of the job; the
// other files are still summarised.
#include "run_tool.h"

namespace vqk_run {
namespace {

bool xmlSummaryJob(int argc, char* const* argv, vq::SJobStat& stat) {
    if (argc < 2) {
        vq::logFail(stat, "xml_summary needs at least one XML file", kSource, __LINE__);
        return false;
    }
    for (int i = 1; i < argc; ++i) {
        try {
            writeXmlShape(argv[i], readXmlShape(argv[i]));
        } catch (const std::exception& e) {
            reportf(vq::logFail, stat, __LINE__, "%s", e.what());
        }
    }
    return stat.isOk();
}

const int regSummary = vq::registerJob("xml_summary", xmlSummaryJob);

} // namespace
} // namespace vqk_run
