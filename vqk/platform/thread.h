// vqk/platform/thread.h
//
// Starting a detached system thread: it runs entry(argument) and ends with it. Nobody
// joins it, so whatever it needs must outlive it or belong to it.
//
//   if (!vq::platform::startThread(&work, context))
//       ... the thread did not start; context is still the caller's
//
// startThread returns false when the system refuses a new thread; entry is then never
// called.
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

using FThreadEntry = void (*)(void* argument);

VQK_API bool startThread(FThreadEntry entry, void* argument);

} // namespace platform
} // namespace vq
