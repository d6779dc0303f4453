// POSIX ticks: the monotonic clock in nanoseconds.
#include "vqk/platform/hires_clock.h"

#include <time.h>

namespace vq {
namespace platform {

int64 hiresTicks() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return int64(ts.tv_sec) * 1000000000LL + int64(ts.tv_nsec);
}

int64 hiresFrequency() { return 1000000000LL; }

} // namespace platform
} // namespace vq
