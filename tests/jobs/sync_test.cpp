#include "vqk/jobs/spin_lock.h"
#include "vqk/jobs/thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

TEST(SpinLock, TwoThreadsCountingUnderOneLockLoseNothing) {
    const vq::CSpinLock lock;
    long long counter = 0;
#pragma omp parallel num_threads(2)
    for (int i = 0; i < 1000000; ++i) {
        vq::CLocker hold(lock);
        ++counter;
    }
    EXPECT_EQ(counter, 2000000);
}

TEST(SpinLock, ACopyIsANewFreeLockAndAssignmentKeepsTheState) {
    vq::CSpinLock held, free;
    held.lock();
    vq::CSpinLock copy(held);
    copy.lock(); // would spin forever had the copy taken the held state
    held = free;
    free = copy;
    EXPECT_EQ(*held.ptrAlign16(), 0);
    EXPECT_EQ(*free.ptrAlign16(), 1);
    held.unlock();
    copy.unlock();
}

namespace {

struct SOutcome {
    std::atomic<int> deleted{0};
    std::atomic<bool> success{false};
};

struct CWorker : vq::CThread {
    CWorker(SOutcome& o, bool succeed) : outcome(o), succeed(succeed) {}
    ~CWorker() override { outcome.deleted.fetch_add(1); }
    void run() override { setSuccess(succeed); }
    void onComplete() override { outcome.success = isComplete() && isSuccess(); }
    SOutcome& outcome;
    bool succeed;
};

} // namespace

TEST(Thread, RunsCompletesAndDeletesItself) {
    for (bool succeed : {true, false}) {
        SOutcome o;
        ASSERT_TRUE((new CWorker(o, succeed))->begin());
        for (int i = 0; i < 1000 && o.deleted.load() == 0; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_EQ(o.deleted.load(), 1);
        EXPECT_EQ(o.success.load(), succeed);
    }
}
