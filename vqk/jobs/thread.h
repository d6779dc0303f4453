// vqk/jobs/thread.h
//
// CThread: a worker thread object that deletes itself when its work is done. Derive,
// put the work in run(), allocate with new and call begin():
//
//   class CIndexer : public vq::CThread {
//       void run() override { ...; setSuccess(true); }
//       void onComplete() override { doneFlag = true; }   // last moment `this` is valid
//   };
//   (new CIndexer)->begin();
//
// The thread clears the completion flag, calls run(), sets the flag, calls
// onComplete() and then deletes the object through its virtual destructor. Nobody
// joins it: callers learn of the end through onComplete or their own flags, and must
// not touch the object after onComplete has returned. isComplete() and isSuccess()
// are for code that runs while the object is known to be alive (onComplete itself,
// or a caller synchronised with it).
//
// begin() returns false when the system refuses a thread; the object is then not
// deleted and still belongs to the caller.
#pragma once

#include "vqk/config.h"

#include <atomic>

namespace vq {

class VQK_API CThread {
public:
    CThread() = default;
    virtual ~CThread();
    CThread(const CThread&) = delete;
    CThread& operator=(const CThread&) = delete;

    bool begin();
    bool isComplete() const { return m_complete.load(std::memory_order_acquire); }
    // True when run() completed and recorded success with setSuccess(true).
    bool isSuccess() const { return isComplete() && m_success.load(std::memory_order_acquire); }

protected:
    virtual void run() = 0;
    void setSuccess(bool success) { m_success.store(success, std::memory_order_release); }

private:
    virtual void onComplete() {}
    static void thread(void* self);

    std::atomic<bool> m_complete{false};
    std::atomic<bool> m_success{false};
};

} // namespace vq
