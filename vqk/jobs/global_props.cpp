#include "vqk/jobs/global_props.h"

namespace vq {

namespace {

CGlobalProps* g_current = nullptr;
bool g_buildingFallback = false;

class CNoProps final : public CGlobalProps {
public:
    const char* productName() const override { return ""; }
    const char* productVersion() const override { return ""; }
    bool getProp(const char*, CStr&) const override { return false; }
    bool setProp(const char*, const char*) override { return false; }
};

} // namespace

// Instances stack up: a later one hides an earlier one until it is destroyed. The
// built-in fallback stays outside the stack, so it never hides an application's.
CGlobalProps::CGlobalProps() : m_previous(g_current) {
    if (!g_buildingFallback)
        g_current = this;
}

CGlobalProps::~CGlobalProps() {
    if (g_current == this) {
        g_current = m_previous;
        return;
    }
    // Destroyed out of order: unlink it from the middle of the stack.
    for (CGlobalProps* p = g_current; p; p = p->m_previous)
        if (p->m_previous == this) {
            p->m_previous = m_previous;
            break;
        }
}

CGlobalProps& globalProps() {
    if (g_current)
        return *g_current;
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
