// The jobs of this process on Linux: one process group per job name, remembered so that
// later children join the same group and every group is killed when this process exits.
#pragma once

#include <sys/types.h>

#include <mutex>
#include <string>
#include <vector>

namespace vq {
namespace platform {
namespace jobs {

struct SJobGroup {
    std::string name;
    pid_t group;
};

// The registry's lock; held across a child's creation so that the child can read the
// snapshot below without locking (it shares this process's memory until its exec).
std::mutex& lock();
// The group of a job, 0 when the name is new. The caller holds the lock.
pid_t groupOf(const char* name);
// Remembers (or moves) a job's group. The caller holds the lock.
void remember(const char* name, pid_t group);
// Plain arrays of the names and groups, for the child to search without allocating.
// The caller holds the lock and keeps the vectors alive until the child has started.
void snapshot(std::vector<const char*>& names, std::vector<pid_t>& groups);

} // namespace jobs
} // namespace platform
} // namespace vq
