#include "vqk/jobs/progress_parallel.h"

#include <gtest/gtest.h>
#include <omp.h>

#include <string>
#include <vector>

namespace {

// Records what the host is told; installed for its lifetime.
struct CRecordingHost : vq::CProgressHost {
    std::vector<int> percents, threads;
    std::vector<std::string> texts;
    std::vector<bool> windows;
    bool terminate = false;

    CRecordingHost() { vq::setProgressHost(this); }
    ~CRecordingHost() override { vq::setProgressHost(nullptr); }
    void showWindow(bool visible) override { windows.push_back(visible); }
    void show(int percent, const char* text) override {
        percents.push_back(percent);
        texts.push_back(text);
        threads.push_back(omp_get_thread_num());
    }
    bool isTerminated() override { return terminate; }
};

} // namespace

using Percents = std::vector<int>;

TEST(Progress, EvenRangeShowsEachNewWholePercentOnceAndNeverZero) {
    CRecordingHost host;
    {
        vq::CProgress p(4, "four");
        for (int i = 0; i < 4; ++i)
            p.progress(1);
    }
    EXPECT_EQ(host.percents, (Percents{25, 50, 75, 100}));
    EXPECT_EQ(host.windows, (std::vector<bool>{true, false}));

    host.percents.clear();
    {
        vq::CProgress p(100);
        for (int i = 0; i < 100000; ++i)
            p.progress(0.001);
    }
    ASSERT_EQ(host.percents.size(), 100u);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(host.percents[i], i + 1);
}

TEST(Progress, ShownPercentNeverGoesBackAndDisabledHostStillAdvancesIt) {
    CRecordingHost host;
    vq::CProgress p(10);
    p.set(5);
    p.set(2);
    p.set(4);
    p.set(6);
    {
        vq::CProgressMode quiet(false);
        p.set(8);
        EXPECT_FALSE(host.isEnabled());
    }
    EXPECT_TRUE(host.isEnabled());
    p.set(7);
    p.set(9);
    EXPECT_EQ(host.percents, (Percents{50, 60, 90}));
}

TEST(Progress, NestedRangesCoverOneUnitOfTheirParent) {
    CRecordingHost host;
    vq::CProgress outer(2, "outer");
    {
        vq::CProgress inner(4, "inner");
        EXPECT_DOUBLE_EQ(inner.frame().first, 0);
        EXPECT_DOUBLE_EQ(inner.frame().second, 50);
        for (int i = 0; i < 4; ++i)
            inner.progress(1);
        EXPECT_EQ(host.text(), std::string("outer > inner"));
    }
    EXPECT_EQ(host.text(), std::string("outer"));
    outer.progress(1);
    {
        vq::CProgress silent(2, nullptr, false); // not on the stack: outer stays innermost
        vq::CProgressMid mid(1.6, "mid");
        EXPECT_DOUBLE_EQ(mid.frame().first, 50);
        mid.progress(1);
        EXPECT_DOUBLE_EQ(mid.pos(), 90);
        EXPECT_DOUBLE_EQ(mid.step(), 10);
        mid.progress(1);
    }
    // The second 50 brings the new level's text.
    EXPECT_EQ(host.percents, (Percents{12, 25, 37, 50, 50, 90, 100}));
    EXPECT_EQ(host.texts[0], "outer > inner");
    EXPECT_EQ(host.texts[4], "outer > mid");
}

TEST(Progress, KindsPlaceTheirLocalPositionInTheFrame) {
    const double weights[] = {1, 3, 0, 4};
    const double negative[] = {-1, -2};
    vq::CProgressMid mid(1.6);
    vq::CProgressScale scale(weights, 4);
    vq::CProgressScale even(negative, 2);
    vq::CProgress empty(0);
    vq::CProgressBase* const kinds[] = {&mid, &scale, &even, &empty};
    struct SCase {
        int kind;
        double local;
        double expected;
    };
    const SCase cases[] = {
        {0, 0.5, 40}, {0, 1, 80}, {0, 1.5, 90}, {0, 2, 100}, {0, 3, 100},
        {1, 0.5, 6.25}, {1, 1, 12.5}, {1, 2.5, 50}, {1, 3.5, 75}, {1, 4, 100}, {1, 7, 100},
        {2, 1, 50}, {3, 3, 0},
    };
    for (const SCase& c : cases) {
        kinds[c.kind]->set(c.local);
        EXPECT_DOUBLE_EQ(kinds[c.kind]->pos(), c.expected) << "kind " << c.kind << " at " << c.local;
    }
}

TEST(Progress, WithoutHostEverythingIsHarmless) {
    ASSERT_EQ(vq::progressHost(), nullptr);
    vq::CProgress p(3, 12345);
    p.progress("text", 1);
    p.resetText("other");
    p.enable(true);
    p.hide();
    EXPECT_FALSE(p.progressIsTerminated(1));
    EXPECT_EQ(vq::CProgressAp::ap()(1), 0);
    vq::CProgressMode mode(false);
    vq::CProgressParallel par(10, "loop");
    par.progress("x");
    EXPECT_FALSE(par.isTerminated());
    EXPECT_DOUBLE_EQ(p.pos(), 200.0 / 3);

    // A host destroyed first leaves its ranges working silently.
    auto* host = new CRecordingHost;
    vq::CProgress q(2);
    delete host;
    EXPECT_EQ(q.host(), nullptr);
    EXPECT_EQ(vq::progressHost(), nullptr);
    q.progress(1);
}

TEST(Progress, TextChangesAndReactivationShowTheCurrentPercentAgain) {
    CRecordingHost host;
    vq::CProgress p(4, "a");
    p.resetText("b"); // nothing reached yet: nothing shown
    p.progress("c", 1);
    p.resetText("d");
    host.onActivate();
    host.hide();
    EXPECT_EQ(host.percents, (Percents{25, 25, 25}));
    EXPECT_EQ(host.texts, (std::vector<std::string>{"c", "d", "d"}));
    EXPECT_EQ(host.windows, (std::vector<bool>{true, true, false}));
}

TEST(Progress, CallbackAdvancesInnermostApAndReportsTermination) {
    CRecordingHost host;
    vq::CProgressAp outer(2);
    vq::CProgressAp::FCallBack cb = vq::CProgressAp::ap();
    {
        vq::CProgressAp inner(10);
        EXPECT_EQ(cb(5), 0);
        EXPECT_DOUBLE_EQ(inner.posLocal(), 5);
    }
    EXPECT_EQ(cb(1), 0);
    host.terminate = true;
    EXPECT_EQ(cb(1), 1);
    EXPECT_EQ(host.percents, (Percents{25, 50, 100}));
}

TEST(ProgressParallel, OnlyTheMasterThreadReportsAndEveryIterationCounts) {
    CRecordingHost host;
    const int n = 20000;
    {
        vq::CProgressParallel par(n, "loop");
#pragma omp parallel for num_threads(4) schedule(dynamic, 16)
        for (int i = 0; i < n; ++i)
            par.progress(i == 0 ? "first" : nullptr);
        EXPECT_EQ(par.done(), n);
    }
    ASSERT_FALSE(host.percents.empty());
    EXPECT_EQ(host.percents.back(), 100);
    // A text change shows the current percent again, so equal neighbours may occur.
    for (size_t i = 1; i < host.percents.size(); ++i)
        EXPECT_LE(host.percents[i - 1], host.percents[i]);
    for (int t : host.threads)
        EXPECT_EQ(t, 0);
}

TEST(ProgressParallel, TerminationReachesEveryThreadAndKeepsTheFirstResult) {
    CRecordingHost host;
    vq::CProgressParallel par(1000);
    int stopped = 0;
#pragma omp parallel for num_threads(4) reduction(+ : stopped)
    for (int i = 0; i < 1000; ++i) {
        if (i == 500)
            par.setResult(7);
        if (par.isTerminated())
            ++stopped;
        par.progress();
    }
    EXPECT_GT(stopped, 0);
    EXPECT_EQ(par.result(), 7);

    vq::CProgressParallel asked(10);
    host.terminate = true;
    EXPECT_TRUE(asked.isTerminated());
    asked.setResult(0);
    EXPECT_EQ(asked.result(), 1);
}
