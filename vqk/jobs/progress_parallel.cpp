#include "vqk/jobs/progress_parallel.h"

#include "vqk/text/runtime_critical.h"
#include "vqk/text/string_table.h"

namespace vq {

CProgressParallel::CProgressParallel(int count, const char* text, bool enable)
    : m_range(count, text, enable) {}

CProgressParallel::CProgressParallel(int count, int textId, bool enable)
    : m_range(count, stringTableText(textId), enable) {}

CProgressParallel::~CProgressParallel() {
    if (isMasterThread())
        report(nullptr);
}

void CProgressParallel::report(const char* text) {
    const int done = m_done.load(std::memory_order_relaxed);
    const int added = done - m_reported;
    m_reported = done;
    CProgressHost* host = m_range.host();
    if (!host)
        return;
    if (added > 0)
        host->set(host->innermost()->posLocal() + added);
    if (text && host->isEnabled())
        host->innermost()->resetText(text);
}

void CProgressParallel::setResult(int result) {
    if (result == 0)
        return;
    VQK_RUNTIME_CRITICAL
    m_result.store(result, std::memory_order_release);
}

bool CProgressParallel::isTerminated() {
    if (result() != 0)
        return true;
    if (!isMasterThread())
        return false;
    CProgressHost* host = m_range.host() ? m_range.host() : progressHost();
    if (!host || !host->isTerminated())
        return false;
    VQK_RUNTIME_CRITICAL
    {
        // A result another thread set first is the one that tells why.
        if (m_result.load(std::memory_order_relaxed) == 0)
            m_result.store(1, std::memory_order_release);
    }
    return true;
}

} // namespace vq
