// list {folder} {mask}: the files of a folder whose names match a wildcard mask, in
// name order. A folder that cannot be read is a failure; no match is a warning.
#include "run_tool.h"

namespace vqk_run {
namespace {

bool listJob(int argc, char* const* argv, vq::SJobStat& stat) {
    const char* folder = argc > 1 ? argv[1] : ".";
    const char* mask = argc > 2 ? argv[2] : "*";
    vq::TVectorC<vq::CStr> names;
    if (!vq::platform::listFiles(folder, mask, names)) {
        reportf(vq::logFail, stat, __LINE__, "can't read folder %s", folder);
        return false;
    }
    vq::CXmlOutElem list(vq::xout, "files");
    vq::xout.attrStr("folder", folder);
    vq::xout.attrStr("mask", mask);
    vq::xout.attrInt("count", int(names.size()));
    for (const vq::CStr& n : names) {
        vq::CXmlOutElem file(vq::xout, "file");
        vq::xout.attrStr("name", n.str());
    }
    if (names.empty()) {
        reportf(vq::logWarn, stat, __LINE__, "no file of %s matches %s", folder, mask);
    }
    return stat.isOk();
}

const int regList = vq::registerJob("list", listJob);

} // namespace
} // namespace vqk_run
