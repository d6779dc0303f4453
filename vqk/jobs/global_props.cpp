#include "vqk/jobs/global_props.h"

#include "vqk/text/vector.h"

namespace vq {

namespace {

// The living instances, oldest first; the last one is the process's.
TVector<CGlobalProps*>& instances() {
    static TVector<CGlobalProps*>* list = new TVector<CGlobalProps*>; // outlives static destructors
    return *list;
}

bool g_buildingFallback = false;

class CNoProps final : public CGlobalProps {
public:
    const char* productName() const override { return ""; }
    const char* productVersion() const override { return ""; }
    bool getProp(const char*, CStr&) const override { return false; }
    bool setProp(const char*, const char*) override { return false; }
};

} // namespace

// The built-in fallback stays out of the list, so it never hides an application's.
CGlobalProps::CGlobalProps() {
    if (!g_buildingFallback)
        instances().push_back(this);
}

CGlobalProps::~CGlobalProps() {
    TVector<CGlobalProps*>& list = instances();
    for (uint32_t i = list.size(); i-- > 0;)
        if (list[i] == this) {
            for (uint32_t k = i; k + 1 < list.size(); ++k)
                list[k] = list[k + 1];
            list.resize(list.size() - 1);
            break;
        }
}

CGlobalProps& globalProps() {
    TVector<CGlobalProps*>& list = instances();
    if (!list.empty())
        return *list.back();
    // Never destroyed, so that it stays usable from other static destructors.
    static CNoProps* fallback = [] {
        g_buildingFallback = true;
        CNoProps* p = new CNoProps;
        g_buildingFallback = false;
        return p;
    }();
    return *fallback;
}

} // namespace vq
