// GetProcessMemoryInfo: the peak working set and the private bytes (commit charge).
#include "vqk/platform/memory_info.h"

#include <windows.h>
#include <psapi.h>

namespace vq {
namespace platform {

bool systemMemoryInfo(SMemoryInfo& info) {
    PROCESS_MEMORY_COUNTERS_EX c{};
    c.cb = sizeof c;
    if (!GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&c),
                              sizeof c))
        return false;
    info.peakResidentBytes = uint64(c.PeakWorkingSetSize);
    info.privateBytes = uint64(c.PrivateUsage);
    return true;
}

} // namespace platform
} // namespace vq
