// vqk/platform/hires_clock.h
//
// The system's high-resolution tick counter, for timers that measure short sections.
// Ticks count wall time on a monotonic scale from an arbitrary origin; divide a
// difference by hiresFrequency() to get seconds.
//
//   vq::int64 t0 = vq::platform::hiresTicks();
//   ...
//   double seconds = double(vq::platform::hiresTicks() - t0) / vq::platform::hiresFrequency();
//
// Neither call fails.
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

VQK_API int64 hiresTicks();
// Ticks per second, fixed for the life of the process.
VQK_API int64 hiresFrequency();

} // namespace platform
} // namespace vq
