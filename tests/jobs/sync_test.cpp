#include "vqk/jobs/spin_lock.h"
#include "vqk/jobs/thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define VQK_UNDER_TSAN 1
#endif
#endif

TEST(SpinLock, TwoThreadsCountingUnderOneLockLoseNothing) {
#ifdef VQK_UNDER_TSAN
    const int n = 100000; // the sanitizer makes every spin slow
#else
    const int n = 1000000;
#endif
    const vq::CSpinLock lock;
    long long counter = 0;
#pragma omp parallel num_threads(2)
    for (int i = 0; i < n; ++i) {
        vq::CLocker hold(lock);
        ++counter;
    }
    EXPECT_EQ(counter, 2LL * n);
}

TEST(SpinLock, ACopyIsANewFreeLockAndAssignmentKeepsTheState) {
    vq::CSpinLock held;
    held.lock();
    vq::CSpinLock copy(held);
    EXPECT_EQ(*copy.ptrAlign16(), 1);
    copy.lock();
    vq::CSpinLock free;
    held = free;
    EXPECT_EQ(*held.ptrAlign16(), 0);
    free = copy;
    EXPECT_EQ(*free.ptrAlign16(), 1);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(held.ptrAlign16()) % 2, 0u);
    held.unlock();
    copy.unlock();
}

namespace {

struct SOutcome {
    std::atomic<int> finished{0};
    std::atomic<int> deleted{0};
    std::atomic<bool> success{false};
};

class CWorker : public vq::CThread {
public:
    CWorker(SOutcome& o, bool succeed) : m_outcome(o), m_succeed(succeed) {}
    ~CWorker() override { m_outcome.deleted.fetch_add(1); }

private:
    void run() override { setSuccess(m_succeed); }
    void onComplete() override {
        m_outcome.success = isComplete() && isSuccess();
        m_outcome.finished.fetch_add(1);
    }
    SOutcome& m_outcome;
    bool m_succeed;
};

void waitForDeletion(const SOutcome& o) {
    for (int i = 0; i < 1000 && o.deleted.load() == 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

} // namespace

TEST(Thread, RunsCompletesAndDeletesItself) {
    for (bool succeed : {true, false}) {
        SOutcome o;
        ASSERT_TRUE((new CWorker(o, succeed))->begin());
        waitForDeletion(o);
        EXPECT_EQ(o.finished.load(), 1);
        EXPECT_EQ(o.deleted.load(), 1);
        EXPECT_EQ(o.success.load(), succeed);
    }
}
