// The performance counter: monotonic, and fine enough for microseconds.
#include "vqk/platform/clock.h"

#include <windows.h>

namespace vq {
namespace platform {
namespace {

uint64 ticksPerSecond() {
    static const uint64 f = [] {
        LARGE_INTEGER q;
        QueryPerformanceFrequency(&q);
        return uint64(q.QuadPart);
    }();
    return f;
}

// Split so that the multiplication cannot overflow in a long-running process.
uint64 scaled(uint64 unitsPerSecond) {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    uint64 t = uint64(now.QuadPart), f = ticksPerSecond();
    return t / f * unitsPerSecond + t % f * unitsPerSecond / f;
}

} // namespace

uint64 clockMs() { return scaled(1000u); }
uint64 clockUs() { return scaled(1000000u); }

} // namespace platform
} // namespace vq
