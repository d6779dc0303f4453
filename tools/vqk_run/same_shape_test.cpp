// The regression test same_shape: a job file
//
//   <same_shape a="out/model.xml" b="expected/model.xml"/>
//
// passes when both files have the same elements with the same counts, the same
// nesting depth and the same number of attributes; every difference is a failure.
#include "run_tool.h"

#include <memory>

namespace vqk_run {
namespace {

class CSameShapeTest : public vq::CTest {
public:
    CSameShapeTest(vq::CXmlIn& in) : m_a(in.attrStr("a", "")), m_b(in.attrStr("b", "")) {}

    bool run() override {
        summary().newJob();
        if (m_a.empty() || m_b.empty()) {
            reportf(vq::logFail, summary(), __LINE__, "same_shape needs the files a and b");
            return false;
        }
        SXmlShape a, b;
        try {
            a = readXmlShape(m_a.c_str());
            b = readXmlShape(m_b.c_str());
        } catch (const std::exception& e) {
            reportf(vq::logFail, summary(), __LINE__, "same_shape: %s", e.what());
            return false;
        }
        vq::CXmlOutElem elem(vq::xout, "same_shape");
        vq::xout.attrStr("a", m_a.c_str());
        vq::xout.attrStr("b", m_b.c_str());
        if (a.maxDepth != b.maxDepth)
            reportf(vq::logFail, summary(), __LINE__, "depth %d against %d", a.maxDepth, b.maxDepth);
        if (a.attributeCount != b.attributeCount)
            reportf(vq::logFail, summary(), __LINE__, "%d attributes against %d", a.attributeCount,
                    b.attributeCount);
        std::map<std::string, int> all = a.elements;
        for (const auto& e : b.elements)
            all.emplace(e.first, 0);
        for (const auto& e : all) {
            auto ia = a.elements.find(e.first);
            auto ib = b.elements.find(e.first);
            int na = ia == a.elements.end() ? 0 : ia->second;
            int nb = ib == b.elements.end() ? 0 : ib->second;
            if (na != nb)
                reportf(vq::logFail, summary(), __LINE__, "element %s: %d against %d",
                        e.first.c_str(), na, nb);
        }
        vq::xout.text("same", "%d", summary().isOk() ? 1 : 0);
        return summary().isOk();
    }

private:
    std::string m_a;
    std::string m_b;
};

vq::CTest* makeSameShape(vq::CXmlIn& in, const char* /*file*/) { return new CSameShapeTest(in); }

const int regSameShape = vq::registerTest("same_shape", makeSameShape);

} // namespace
} // namespace vqk_run
