#include "vqk/jobs/event.h"

namespace vq {
namespace event {

int CEventVoid::index(const CHandleBase& handle) const {
    for (uint32_t i = 0; i < m_handles.size(); ++i)
        if (m_handles[i] == &handle)
            return int(i);
    return -1;
}

bool CEventVoid::invoke(void* a, void* b) {
    // Handlers may change the connections: call those connected now, and each only
    // while it still is.
    CHandleBase* inline_[16];
    TVector<CHandleBase*> round(inline_, 16);
    round.assign(m_handles.data(), m_handles.size());
    const int n = int(round.size());
    bool handled = false;
    for (int k = 0; k < n; ++k) {
        CHandleBase* h = round[m_order == eReverse ? n - 1 - k : k];
        if (index(*h) < 0)
            continue;
        if (h->onEvent(a, b)) {
            handled = true;
            if (m_type == eFirst)
                break;
        }
    }
    return handled;
}

void CEventVoid::clear() {
    for (CHandleBase* h : m_handles)
        h->m_event = nullptr;
    m_handles.clear();
}

void CHandleBase::connect(CEventVoid& event) {
    disconnect();
    event.m_handles.push_back(this);
    m_event = &event;
}

void CHandleBase::disconnect() {
    if (!m_event)
        return;
    TVector<CHandleBase*>& v = m_event->m_handles;
    const int i = m_event->index(*this);
    for (uint32_t k = uint32_t(i) + 1; i >= 0 && k < v.size(); ++k)
        v[k - 1] = v[k];
    if (i >= 0)
        v.resize(v.size() - 1);
    m_event = nullptr;
}

} // namespace event
} // namespace vq
