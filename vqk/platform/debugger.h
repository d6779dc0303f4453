// vqk/platform/debugger.h
//
// Stopping at a debugger: the assertion facility's break mode calls this so that a
// developer lands on the failed expression.
//
//   vq::platform::trapToDebugger();
//
// Without a debugger attached the system's default applies: the process ends (SIGTRAP
// on POSIX, an unhandled breakpoint exception on Windows).
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

VQK_API void trapToDebugger();

} // namespace platform
} // namespace vq
