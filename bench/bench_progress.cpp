// Progress and lock costs, each beside its plain peer in one run:
//   - a progress() call that reaches no new whole percent, against an empty loop body;
//   - CProgressParallel::progress from every thread of a parallel loop, against a plain
//     atomic add in the same loop;
//   - CSpinLock against std::mutex, two threads incrementing one counter.
// Each pair runs alternately, best of five; the ratios are printed at the end. Times are
// the process's processor time (all threads), so a machine busy with other work slows
// the figures less than wall time would; spinning counts as the cost it is.
#include "vqk/jobs/progress_parallel.h"
#include "vqk/jobs/spin_lock.h"

#include <benchmark/benchmark.h>
#include <omp.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace {

struct CCountingHost : vq::CProgressHost {
    long shows = 0;
    void showWindow(bool) override {}
    void show(int, const char*) override { ++shows; }
    bool isTerminated() override { return false; }
};

template <class F> double seconds(F f) {
    const std::clock_t t0 = std::clock();
    f();
    return double(std::clock() - t0) / CLOCKS_PER_SEC;
}

template <class A, class B> void bestOfFive(double& a, double& b, A runA, B runB) {
    a = b = 1e30;
    for (int round = 0; round < 5; ++round) {
        a = std::min(a, seconds(runA));
        b = std::min(b, seconds(runB));
    }
}

const long kCalls = 50000000;
const int kLoop = 20000000;
const int kLocked = 2000000;

} // namespace

int main() {
    CCountingHost host;
    vq::setProgressHost(&host);

    double quiet = 0, empty = 0;
    bestOfFive(
        quiet, empty,
        [] {
            // 1e12 units of 1e-10 percent each: no call reaches a new whole percent.
            vq::CProgress p(1e12, "quiet");
            for (long i = 0; i < kCalls; ++i)
                p.progress(1);
            benchmark::DoNotOptimize(p.posLocal());
        },
        [] {
            double local = 0;
            for (long i = 0; i < kCalls; ++i) {
                local += 1;
                benchmark::DoNotOptimize(local);
            }
        });

    const long quietShows = host.shows; // 0 unless the quiet loop reached a percent
    const int threads = omp_get_max_threads();
    double parallel = 0, atomicAdd = 0;
    bestOfFive(
        parallel, atomicAdd,
        [] {
            vq::CProgressParallel par(kLoop, "parallel");
#pragma omp parallel for schedule(static)
            for (int i = 0; i < kLoop; ++i)
                par.progress();
        },
        [] {
            std::atomic<int> counter{0};
#pragma omp parallel for schedule(static)
            for (int i = 0; i < kLoop; ++i)
                counter.fetch_add(1, std::memory_order_relaxed);
            benchmark::DoNotOptimize(counter.load());
        });

    double spin = 0, mutex = 0;
    bestOfFive(
        spin, mutex,
        [] {
            vq::CSpinLock lock;
            long long counter = 0;
#pragma omp parallel num_threads(2)
            for (int i = 0; i < kLocked; ++i) {
                vq::CLocker hold(lock);
                ++counter;
            }
            if (counter != 2LL * kLocked)
                std::printf("spin lock lost increments: %lld\n", counter);
        },
        [] {
            std::mutex m;
            long long counter = 0;
#pragma omp parallel num_threads(2)
            for (int i = 0; i < kLocked; ++i) {
                std::lock_guard<std::mutex> hold(m);
                ++counter;
            }
            if (counter != 2LL * kLocked)
                std::printf("mutex lost increments: %lld\n", counter);
        });

    vq::setProgressHost(nullptr);
    const double ns = 1e9;
    std::printf("progress() with no new percent: %6.2f ns/call   empty loop: %6.2f ns/iter   ratio %.2f\n",
                quiet * ns / kCalls, empty * ns / kCalls, quiet / empty);
    std::printf("CProgressParallel::progress (%d threads): %6.2f ns/iter   atomic add: %6.2f ns/iter   ratio %.2f"
                "  (processor time of all threads per iteration)\n",
                threads, parallel * ns / kLoop, atomicAdd * ns / kLoop, parallel / atomicAdd);
    std::printf("CSpinLock, 2 threads: %6.2f ns/increment   std::mutex: %6.2f ns/increment   ratio %.2f\n",
                spin * ns / (2.0 * kLocked), mutex * ns / (2.0 * kLocked), spin / mutex);
    std::printf("(ratio: vqk's time over the peer's; percents shown by the quiet loops: %ld)\n", quietShows);
    return 0;
}
