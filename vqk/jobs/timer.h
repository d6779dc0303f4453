// vqk/jobs/timer.h
//
// Timers on the system's high-resolution counter (vqk/platform/hires_clock.h).
//
// CTimer measures from its construction or last reset(); given an accumulator, its
// destructor adds the elapsed seconds to it, so a scope timed in a loop sums up:
//
//   double parseSeconds = 0;
//   for (...) { vq::CTimer t(parseSeconds); parse(); }
//
// CTimerIntervals sums the intervals between start() and stop(); stop() when stopped
// does nothing, and time() counts only finished intervals.
//
// Timers are for one thread; none can fail.
#pragma once

#include "vqk/config.h"

namespace vq {

class VQK_API CTimer {
public:
    CTimer();
    explicit CTimer(double& accumulator);
    ~CTimer();
    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;

    double time() const;
    void reset();

private:
    int64 m_start;
    double* m_accumulator = nullptr;
};

class VQK_API CTimerIntervals {
public:
    void start();
    void stop();
    void reset() {
        m_total = 0;
        m_start = -1;
    }
    double time() const;
    bool isRunning() const { return m_start != -1; }

private:
    int64 m_total = 0;
    int64 m_start = -1;
};

} // namespace vq
