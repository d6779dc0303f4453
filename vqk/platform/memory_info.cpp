// The process's memory counters: the system's (systemMemoryInfo), or a test's stand-in.
#include "vqk/platform/memory_info.h"

namespace vq {
namespace platform {
namespace {

FMemoryInfoQuery g_query = nullptr;

} // namespace

bool queryMemoryInfo(SMemoryInfo& info) {
    info = SMemoryInfo();
    bool ok = g_query ? g_query(info) : systemMemoryInfo(info);
    if (!ok)
        info = SMemoryInfo();
    return ok;
}

void setMemoryInfoQuery(FMemoryInfoQuery query) { g_query = query; }

} // namespace platform
} // namespace vq
