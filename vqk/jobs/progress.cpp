#include "vqk/jobs/progress.h"

#include "vqk/text/string_table.h"

#include <algorithm>

namespace vq {

// ---- CProgressBase

CProgressBase::~CProgressBase() { pop(); }

void CProgressBase::resize(double max) { m_max = max; }

void CProgressBase::push(double max, const char* text, bool enable) {
    pop(); // a range started again leaves its old place first
    m_text = text;
    m_local = 0;
    CProgressHost* host = progressHost();
    std::pair<double, double> f = host ? host->frame() : std::pair<double, double>(0.0, 100.0);
    m_start = f.first;
    m_end = f.second;
    resize(max);
    if (host && enable) {
        m_host = host;
        host->push(*this, true);
    }
}

void CProgressBase::progress(const char* text, double amount) {
    m_local += amount;
    m_text = text;
    if (m_host)
        m_host->progressText();
}

void CProgressBase::set(double local) {
    m_local = local;
    if (m_host)
        m_host->progress();
}

void CProgressBase::resetText(const char* text) {
    m_text = text;
    if (m_host && m_host->isEnabled())
        m_host->updateText();
}

void CProgressBase::enable(bool enabled) {
    if (!enabled) {
        pop();
        return;
    }
    CProgressHost* host = progressHost();
    if (m_host || !host)
        return;
    std::pair<double, double> f = host->frame();
    m_start = f.first;
    m_end = f.second;
    resize(m_max);
    m_host = host;
    host->push(*this, true);
}

bool CProgressBase::isTerminated() const {
    // A disabled range still hears the user's request to stop.
    CProgressHost* host = m_host ? m_host : progressHost();
    return host && host->isTerminated();
}

void CProgressBase::pop() {
    if (!m_host)
        return;
    CProgressHost* host = m_host;
    m_host = nullptr;
    host->pop(this);
}

void CProgressBase::hide() {
    if (m_host)
        m_host->hide();
}

// ---- CProgress

CProgress::CProgress(double max, const char* text, bool enable) { push(max, text, enable); }
CProgress::CProgress(double max, int textId, bool enable) { push(max, stringTableText(textId), enable); }

void CProgress::resize(double max) {
    m_max = max;
    // An empty range stays at its start, and so do its children.
    m_value = max > 0 ? (m_end - m_start) / max : 0.0;
}

// ---- CProgressMid

CProgressMid::CProgressMid(double mid, const char* text, bool enable) { push(mid, text, enable); }
CProgressMid::CProgressMid(double mid, int textId, bool enable) { push(mid, stringTableText(textId), enable); }

void CProgressMid::resize(double mid) {
    m_value = std::min(2.0, std::max(0.0, mid));
    m_max = 2;
}

double CProgressMid::posAt(double x) const {
    x = std::min(2.0, std::max(0.0, x));
    const double m = m_value;
    const double f = x <= 1 ? m * x / 2 : (m + (2 - m) * (x - 1)) / 2;
    return m_start + (m_end - m_start) * f;
}

// ---- CProgressScale

CProgressScale::CProgressScale(const double* weights, int count, const char* text, bool enable) {
    setWeights(weights, count);
    push(count > 0 ? count : 0, text, enable);
}

CProgressScale::CProgressScale(const double* weights, int count, int textId, bool enable) {
    setWeights(weights, count);
    push(count > 0 ? count : 0, stringTableText(textId), enable);
}

void CProgressScale::setWeights(const double* weights, int count) {
    m_cumulative.clear();
    m_cumulative.push_back(0.0);
    double total = 0;
    for (int i = 0; weights && i < count; ++i)
        total += std::max(0.0, weights[i]);
    const bool even = !(total > 0);
    double c = 0;
    for (int i = 0; weights && i < count; ++i) {
        c += even ? 1.0 : std::max(0.0, weights[i]);
        m_cumulative.push_back(c);
    }
    m_total = c;
}

double CProgressScale::posAt(double x) const {
    const int n = int(m_cumulative.size());
    const double ix = x < 0 ? 0 : x;
    if (ix >= n - 1)
        return m_end;
    const int i = int(ix);
    const double* c = m_cumulative.data();
    return m_start + (m_end - m_start) * (c[i] + (c[i + 1] - c[i]) * (ix - i)) / m_total;
}

// ---- CProgressAp

namespace {
// The living CProgressAp objects, innermost first; main thread only.
CProgressAp* g_innermostAp = nullptr;
} // namespace

CProgressAp::CProgressAp(double max, const char* text, bool enable) : CProgress(max, text, enable) {
    m_outer = g_innermostAp;
    g_innermostAp = this;
}

CProgressAp::~CProgressAp() {
    for (CProgressAp** p = &g_innermostAp; *p; p = &(*p)->m_outer)
        if (*p == this) {
            *p = m_outer;
            break;
        }
}

int CProgressAp::callBack(double amount) {
    if (!g_innermostAp)
        return 0;
    return g_innermostAp->progressIsTerminated(amount) ? 1 : 0;
}

} // namespace vq
