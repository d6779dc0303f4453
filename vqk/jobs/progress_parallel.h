// vqk/jobs/progress_parallel.h
//
// Progress of a parallel loop. Made on the master thread before the loop with the
// number of iterations; every iteration, on whatever thread, calls progress():
//
//   vq::CProgressParallel prog(n, "Meshing");
//   #pragma omp parallel for
//   for (int i = 0; i < n; ++i) {
//       if (prog.isTerminated())
//           continue;                  // an OpenMP loop cannot break
//       work(i);
//       prog.progress();
//   }
//   if (prog.result()) ...             // stopped, and why
//
// Worker threads only add 1 to an atomic counter and read the result; the master
// thread (thread number 0) then adds the iterations done since its last report to the
// innermost range and reports through the host. Iterations not yet reported when the
// object is destroyed on the master thread are reported then. The range it opens
// (a CProgress over the iterations) is the innermost one while the loop runs.
//
// The result (setResult, or 1 when the host said stop) is written under the runtime's
// named critical section (vqk/text/runtime_critical.h) and read without a lock.
#pragma once

#include "vqk/config.h"
#include "vqk/jobs/progress.h"

#include <atomic>

namespace vq {

class VQK_API CProgressParallel {
public:
    CProgressParallel(int count, const char* text = nullptr, bool enable = true);
    CProgressParallel(int count, int textId, bool enable = true);
    ~CProgressParallel();
    CProgressParallel(const CProgressParallel&) = delete;
    CProgressParallel& operator=(const CProgressParallel&) = delete;

    // One iteration done. On the master thread, also reports, and replaces the
    // innermost level's text with `text` when given and the host is enabled.
    void progress(const char* text = nullptr) {
        m_done.fetch_add(1, std::memory_order_relaxed);
        if (isMasterThread())
            report(text);
    }
    // Stores a non-zero result (0 is ignored).
    void setResult(int result);
    int result() const { return m_result.load(std::memory_order_acquire); }
    // True when a result is set. On the master thread, also asks the host, and stores
    // the result 1 when it says stop; workers see that at their next call.
    bool isTerminated();
    // Iterations counted so far, on every thread.
    int done() const { return m_done.load(std::memory_order_relaxed); }

private:
    void report(const char* text);

    CProgress m_range;
    std::atomic<int> m_done{0};
    std::atomic<int> m_result{0};
    int m_reported = 0; // master thread only
};

} // namespace vq
