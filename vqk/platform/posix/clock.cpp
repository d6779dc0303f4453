#include "vqk/platform/clock.h"

#include <time.h>

namespace vq {
namespace platform {

uint64 clockMs() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return uint64(ts.tv_sec) * 1000u + uint64(ts.tv_nsec) / 1000000u;
}

uint64 clockUs() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return uint64(ts.tv_sec) * 1000000u + uint64(ts.tv_nsec) / 1000u;
}

} // namespace platform
} // namespace vq
