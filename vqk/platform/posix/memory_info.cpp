// Memory counters from /proc: VmHWM of /proc/self/status for the peak, the private
// lines of /proc/self/smaps_rollup for the private bytes.
#include "vqk/platform/memory_info.h"

#include <cstdio>
#include <cstring>

namespace vq {
namespace platform {

namespace {

// Sums the kB values of the lines of `path` that begin with any of the keys.
bool sumKbLines(const char* path, const char* const* keys, int nKeys, uint64& bytes) {
    FILE* f = std::fopen(path, "r");
    if (!f)
        return false;
    char line[256];
    bool found = false;
    uint64 kb = 0;
    while (std::fgets(line, sizeof line, f)) {
        for (int i = 0; i < nKeys; ++i) {
            size_t n = std::strlen(keys[i]);
            unsigned long long v = 0;
            if (std::strncmp(line, keys[i], n) == 0 && std::sscanf(line + n, "%llu", &v) == 1) {
                kb += v;
                found = true;
            }
        }
    }
    std::fclose(f);
    bytes = kb * 1024u;
    return found;
}

} // namespace

bool systemMemoryInfo(SMemoryInfo& info) {
    static const char* const peak[] = {"VmHWM:"};
    static const char* const priv[] = {"Private_Clean:", "Private_Dirty:", "Swap:"};
    if (!sumKbLines("/proc/self/status", peak, 1, info.peakResidentBytes))
        return false;
    // Kernels without smaps_rollup still give the peak; private bytes stay 0 then.
    sumKbLines("/proc/self/smaps_rollup", priv, 3, info.privateBytes);
    return true;
}

} // namespace platform
} // namespace vq
