#include "vqk/jobs/thread.h"

#include "vqk/platform/thread.h"

namespace vq {

CThread::~CThread() = default;

bool CThread::begin() { return platform::startThread(&CThread::thread, this); }

void CThread::thread(void* self) {
    CThread* t = static_cast<CThread*>(self);
    t->m_complete.store(false, std::memory_order_release);
    t->run();
    t->m_complete.store(true, std::memory_order_release);
    t->onComplete();
    delete t;
}

} // namespace vq
