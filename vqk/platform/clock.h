// vqk/platform/clock.h
//
// A millisecond clock for timing jobs and bounding waits. It counts wall time on a
// monotonic scale from an arbitrary origin, so only differences between two readings
// mean anything; it never goes backwards when the system time is changed.
//
//   vq::uint64 t0 = vq::platform::clockMs();
//   ...
//   double seconds = (vq::platform::clockMs() - t0) / 1000.0;
//
// It cannot fail.
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

VQK_API uint64 clockMs();
// The same clock in microseconds, for timing short jobs.
VQK_API uint64 clockUs();

} // namespace platform
} // namespace vq
