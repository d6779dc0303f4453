// vqk/platform/log_clock.h
//
// The wall-clock time stamp of log records: the current local time as text.
//
//   char when[32];
//   vq::platform::localTimeText(when, sizeof when, "%Y.%m.%d %H:%M:%S");
//
// Failure: when the time cannot be read or converted, or the text does not fit, buf is
// emptied and false is returned.
#pragma once

#include "vqk/config.h"

#include <cstddef>

namespace vq {
namespace platform {

// strftime conversions over the current local time.
VQK_API bool localTimeText(char* buf, size_t size, const char* format);

} // namespace platform
} // namespace vq
