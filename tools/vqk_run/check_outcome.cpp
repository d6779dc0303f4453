#include "check_one.h"
#include "run_tool.h"

#include <cstring>

namespace vqk_run {

void writeCheckOutcome(const char* path, const SCheckOutcome& out) {
    const SDocSummary& s = out.summary;
    vq::CXmlOutElem check(vq::xout, "check");
    vq::xout.attrStr("file", path);
    vq::xout.attrInt("validated", out.validated);
    vq::xout.attrInt("valid", out.valid);
    vq::xout.attrInt("read", out.readOk);
    vq::xout.attrInt("qif", s.qif);
    vq::xout.attrInt("elements", s.elements);
    vq::xout.attrInt("depth", s.maxDepth);
    vq::xout.attrInt("features", s.features);
    vq::xout.attrInt("characteristics", s.characteristics);
    vq::xout.attrInt("measured", s.measured);
    vq::xout.attrInt("passed", s.passed);
    vq::xout.attrInt("failed", s.failed);
}

bool readCheckOutcome(const char* jobLog, SCheckOutcome& out) {
    out = SCheckOutcome();
    bool found = false;
    vq::CXmlIn in;
    if (!in.open(jobLog))
        return false;
    try {
        while (in.read2(nullptr)) {
            if (in.isTag("check") && !in.isTagEnd()) {
                SDocSummary& s = out.summary;
                out.validated = in.attrBool("validated", false);
                out.valid = in.attrBool("valid", false);
                out.readOk = in.attrBool("read", false);
                s.qif = in.attrBool("qif", false);
                s.elements = in.attrInt("elements", 0);
                s.maxDepth = in.attrInt("depth", 0);
                s.features = in.attrInt("features", 0);
                s.characteristics = in.attrInt("characteristics", 0);
                s.measured = in.attrInt("measured", 0);
                s.passed = in.attrInt("passed", 0);
                s.failed = in.attrInt("failed", 0);
                found = true;
            } else if (found && in.isTag("error") && out.message.empty()) {
                out.message = in.attrStr("msg", "");
            } else if (in.isTag("job_log") && in.isTagEnd()) {
                break;
            }
        }
    } catch (const char*) {
        // A log cut short by a crash: what was read before the cut stands.
    }
    return found;
}

} // namespace vqk_run

namespace vqk_run {

bool validateDocument(const char* path, const vq::TVectorC<vq::CStr>& schemas) {
    const char* list[16];
    int n = 0;
    for (const vq::CStr& s : schemas)
        if (n < 16)
            list[n++] = s.str();
    return vq::xmlValidate(path, list, n, false);
}

} // namespace vqk_run
