// vqk/platform/call_stack.h
//
// The calling thread's stack as text: return addresses captured cheaply, then each
// described by the function's (demangled) name, the source file and line where debug
// information exists, and the module with the offset into it. Names come from the
// modules' own symbol tables and line tables, so the application's static functions are
// named too and it need not be linked in any special way.
//
//   void* frames[64];
//   int n = vq::platform::captureStack(frames, 64, 0);
//   char line[1024];
//   for (int i = 0; i < n; ++i) {
//       vq::platform::describeFrame(frames[i], i == 0, line, sizeof line);
//       puts(line);   // "vq::load(int) at /src/load.cpp:42 [libvqk.so.0+0x1d2f0]"
//   }
//
// Failure: a frame whose module has no symbols is described by module and offset only,
// an address outside every module by the address alone. Nothing here throws.
#pragma once

#include "vqk/config.h"

#include <cstddef>

namespace vq {
namespace platform {

// Stores up to maxFrames return addresses, innermost first, leaving out this function
// and the `skip` frames above it; returns how many were stored.
VQK_API int captureStack(void** frames, int maxFrames, int skip);

// Writes the frame's description into buf (always terminated, cut to size). `exact` says
// that the address is an instruction's own (a fault address) rather than a return
// address, which points after its call.
VQK_API void describeFrame(const void* address, bool exact, char* buf, size_t size);

} // namespace platform
} // namespace vq
