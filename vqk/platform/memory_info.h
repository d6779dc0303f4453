// vqk/platform/memory_info.h
//
// The process's memory counters, as reported by the system: the peak resident set
// (the most physical memory the process has held at once) and its private bytes (the
// memory that belongs to it alone, resident or not).
//
//   vq::platform::SMemoryInfo m;
//   if (vq::platform::queryMemoryInfo(m))
//       printf("%llu MB peak\n", m.peakResidentBytes >> 20);
//
// queryMemoryInfo returns false, with both counters 0, when the system cannot tell.
// Tests replace the query with setMemoryInfoQuery to provoke that case; passing null
// restores the system's.
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

struct SMemoryInfo {
    uint64 peakResidentBytes = 0;
    uint64 privateBytes = 0;
};

using FMemoryInfoQuery = bool (*)(SMemoryInfo& info);

VQK_API bool queryMemoryInfo(SMemoryInfo& info);
VQK_API void setMemoryInfoQuery(FMemoryInfoQuery query);

// Each system's own counters, behind queryMemoryInfo. Not exported.
bool systemMemoryInfo(SMemoryInfo& info);

} // namespace platform
} // namespace vq
