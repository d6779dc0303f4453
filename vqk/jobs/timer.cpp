#include "vqk/jobs/timer.h"

#include "vqk/platform/hires_clock.h"

namespace vq {

namespace {
double ticksToSeconds(int64 ticks) { return double(ticks) / double(platform::hiresFrequency()); }
} // namespace

CTimer::CTimer() : m_start(platform::hiresTicks()) {}
CTimer::CTimer(double& accumulator) : m_start(platform::hiresTicks()), m_accumulator(&accumulator) {}

CTimer::~CTimer() {
    if (m_accumulator)
        *m_accumulator += time();
}

double CTimer::time() const { return ticksToSeconds(platform::hiresTicks() - m_start); }
void CTimer::reset() { m_start = platform::hiresTicks(); }

void CTimerIntervals::start() { m_start = platform::hiresTicks(); }

void CTimerIntervals::stop() {
    if (m_start == -1)
        return;
    m_total += platform::hiresTicks() - m_start;
    m_start = -1;
}

double CTimerIntervals::time() const { return ticksToSeconds(m_total); }

} // namespace vq
