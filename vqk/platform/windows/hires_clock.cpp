// Windows ticks: the performance counter.
#include "vqk/platform/hires_clock.h"

#include <windows.h>

namespace vq {
namespace platform {

int64 hiresTicks() {
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return int64(t.QuadPart);
}

int64 hiresFrequency() {
    static const int64 frequency = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return int64(f.QuadPart);
    }();
    return frequency;
}

} // namespace platform
} // namespace vq
