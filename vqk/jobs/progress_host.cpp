#include "vqk/jobs/progress_host.h"

#include <cmath>
#include <omp.h>

namespace vq {

namespace {
CProgressHost* g_host = nullptr;
} // namespace

void setProgressHost(CProgressHost* host) { g_host = host; }
CProgressHost* progressHost() { return g_host; }

bool isMasterThread() {
    for (int level = omp_get_level(); level > 0; --level)
        if (omp_get_ancestor_thread_num(level) != 0)
            return false;
    return true;
}

CProgressHost::CProgressHost() = default;

CProgressHost::~CProgressHost() {
    for (CProgressBase* p : m_stack)
        p->m_host = nullptr;
    if (g_host == this)
        g_host = nullptr;
}

void CProgressHost::push(CProgressBase& progress, bool showText) {
    if (m_stack.empty()) {
        // A new run: its percents start again from 0.
        resetPos();
        m_shownPercent = -1;
        showWindow(true);
    }
    m_stack.push_back(&progress);
    if (showText && m_enabled)
        updateText();
    else
        composeText();
}

void CProgressHost::pop(const CProgressBase* progress) {
    for (uint32_t i = m_stack.size(); i-- > 0;) {
        if (m_stack[i] != progress)
            continue;
        for (uint32_t k = i + 1; k < m_stack.size(); ++k)
            m_stack[k - 1] = m_stack[k];
        m_stack.resize(m_stack.size() - 1);
        composeText();
        if (m_stack.empty())
            showWindow(false);
        return;
    }
}

void CProgressHost::report(double pos, int percent) {
    // A position a rounding error below a whole percent is that percent.
    if (std::fabs(m_lastPercent - pos) <= 1e-8)
        return;
    m_lastPercent = percent;
    if (percent <= m_highestPercent)
        return;
    // Recorded while disabled too, so that re-enabling never shows an older percent.
    m_highestPercent = percent;
    if (!m_enabled)
        return;
    m_shownPercent = percent;
    show(percent, m_text.str());
}

void CProgressHost::progressText() {
    composeText();
    const int shown = m_shownPercent;
    const int highest = m_highestPercent;
    progress();
    // The new text goes out with the new percent, or on its own when none came.
    if (m_highestPercent == highest && m_shownPercent == shown)
        updateText();
}

void CProgressHost::set(double local) {
    if (CProgressBase* p = innermost())
        p->m_local = local;
    progress();
}

std::pair<double, double> CProgressHost::frame() const {
    if (m_stack.empty())
        return {0.0, 100.0};
    const CProgressBase* p = m_stack[m_stack.size() - 1];
    const double pos = p->pos();
    return {pos, pos + p->step()};
}

void CProgressHost::composeText() {
    m_text.reset();
    for (const CProgressBase* p : m_stack) {
        if (p->m_text.empty())
            continue;
        if (!m_text.empty())
            m_text += " > ";
        m_text += p->m_text;
    }
}

bool CProgressHost::updateText() {
    composeText();
    if (!m_enabled || m_highestPercent <= 0)
        return false;
    m_shownPercent = m_highestPercent;
    show(m_highestPercent, m_text.str());
    return true;
}

void CProgressHost::hide() { showWindow(false); }

void CProgressHost::onActivate() {
    if (m_stack.empty())
        return;
    showWindow(true);
    if (m_enabled && m_shownPercent > 0)
        show(m_shownPercent, m_text.str());
}

CProgressMode::CProgressMode(bool enable) {
    if (!isMasterThread() || !(m_host = progressHost()))
        return;
    m_saved = m_host->isEnabled();
    if (!enable)
        m_host->enable(false);
}

CProgressMode::~CProgressMode() {
    // The host may have been uninstalled meanwhile; only the installed one is touched.
    if (m_host && m_host == progressHost())
        m_host->enable(m_saved);
}

} // namespace vq
