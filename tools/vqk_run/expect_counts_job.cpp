// The XML job expect_counts: a job file whose root element is
//
//   <expect_counts file="data/bracket.xml">
//     <count element="hole" n="4"/>
//   </expect_counts>
//
// summarises the named file (relative to the job file's folder) and fails for every
// element whose count differs from the expected one.
#include "run_tool.h"

namespace vqk_run {
namespace {

struct SExpected {
    std::string element;
    int n;
};

bool expectCountsJob(vq::CXmlIn& in, const char* /*jobFile*/, vq::SJobStat& stat) {
    std::string file = in.attrStr("file", "");
    std::vector<SExpected> expected;
    if (!in.isEmptyElem()) {
        for (;;) {
            in.read(nullptr);
            if (in.isTag("expect_counts") && in.isTagEnd())
                break;
            if (in.isTag("count") && !in.isTagEnd())
                expected.push_back({in.attrStr("element", ""), in.attrInt("n", 0)});
            if (in.isTagStart())
                in.skip();
        }
    }
    if (file.empty()) {
        reportf(vq::logFail, stat, __LINE__, "expect_counts names no file");
        return false;
    }
    const SXmlShape shape = readXmlShape(file.c_str());
    writeXmlShape(file.c_str(), shape);
    for (const SExpected& e : expected) {
        auto it = shape.elements.find(e.element);
        const int found = it == shape.elements.end() ? 0 : it->second;
        vq::CXmlOutElem check(vq::xout, "expect");
        vq::xout.attrStr("element", e.element.c_str());
        vq::xout.attrInt("expected", e.n);
        vq::xout.attrInt("found", found);
        if (found != e.n)
            reportf(vq::logFail, stat, __LINE__, "element %s: expected %d, found %d",
                    e.element.c_str(), e.n, found);
    }
    return stat.isOk();
}

const int regExpect = vq::registerJobXml("expect_counts", expectCountsJob);

} // namespace
} // namespace vqk_run
