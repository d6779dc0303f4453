#include "check_settings.h"

#include <cstdlib>
#include <cstring>

namespace vqk_run {

CCheckSettings::CCheckSettings() : vq::COptionsSet("Check") {
    report.add("check_report.xml");
}

void CCheckSettings::addOptions() {
    addOpt(schema, "schema", {});
    addOpt(qifSchema, "qifSchema", {});
    addOpt(catalog, "catalog", {});
    addOpt(report, "report", {});
    addOpt(timeLimit, "timeLimit", {}, false, 0, vq::T2<int>{0, 86400});
    addOpt(parallel, "parallel", {}, false, 0, vq::T2<int>{0, 256});
}

bool CCheckSettings::override(const char* argument) {
    const char* eq = std::strchr(argument, '=');
    if (!eq)
        return false;
    const vq::CStr name(argument, 0, int(eq - argument));
    vq::SOpt* rec = findOptByName(name.str());
    if (auto* text = dynamic_cast<vq::SOptString*>(rec)) {
        text->setText(eq + 1);
        return true;
    }
    if (auto* number = dynamic_cast<vq::SOptI1*>(rec)) {
        char* end = nullptr;
        const long v = std::strtol(eq + 1, &end, 10);
        if (end == eq + 1 || *end || v < number->range().x || v > number->range().y)
            return false;
        number->setVal(int(v));
        return true;
    }
    return false;
}

} // namespace vqk_run
