// Jobs on Linux: the direct children die with this process through their parent-death
// signal, however it ends; the groups also take the children's own children with them
// when this process exits normally.
#include "vqk/platform/posix/process_job.h"
#include "vqk/platform/process.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace vq {
namespace platform {
namespace jobs {

namespace {

std::vector<SJobGroup>& registry() {
    // Never destroyed: the exit handler reads it after static destructors may have run.
    static auto* groups = new std::vector<SJobGroup>();
    return *groups;
}

void killAllJobs() {
    std::lock_guard<std::mutex> hold(lock());
    for (const SJobGroup& g : registry())
        ::killpg(g.group, SIGKILL);
}

// The process id behind a pidfd, from /proc/self/fdinfo.
pid_t pidOfHandle(void* process) {
    char path[64];
    std::snprintf(path, sizeof path, "/proc/self/fdinfo/%d", (int)(intptr_t)process);
    FILE* f = std::fopen(path, "r");
    if (!f)
        return 0;
    char line[128];
    int pid = 0;
    while (std::fgets(line, sizeof line, f))
        if (std::sscanf(line, "Pid: %d", &pid) == 1)
            break;
    std::fclose(f);
    return pid > 0 ? pid : 0;
}

} // namespace

std::mutex& lock() {
    static auto* m = new std::mutex();
    return *m;
}

pid_t groupOf(const char* name) {
    for (const SJobGroup& g : registry())
        if (g.name == name)
            return g.group;
    return 0;
}

void remember(const char* name, pid_t group) {
    static bool exitHandlerSet = false;
    if (!exitHandlerSet)
        exitHandlerSet = std::atexit(killAllJobs) == 0;
    for (SJobGroup& g : registry())
        if (g.name == name) {
            g.group = group;
            return;
        }
    registry().push_back(SJobGroup{name, group});
}

void snapshot(std::vector<const char*>& names, std::vector<pid_t>& groups) {
    names.clear();
    groups.clear();
    for (const SJobGroup& g : registry()) {
        names.push_back(g.name.c_str());
        groups.push_back(g.group);
    }
}

} // namespace jobs

bool processJoinJob(void* process, const char* jobName) {
    if (!jobName)
        return false;
    pid_t pid = jobs::pidOfHandle(process);
    if (!pid)
        return false;
    std::lock_guard<std::mutex> hold(jobs::lock());
    pid_t group = ::getpgid(pid);
    if (group < 0)
        return false;
    pid_t known = jobs::groupOf(jobName);
    if (known && group == known)
        return true;
    if (known && ::setpgid(pid, known) == 0)
        return true;
    // A child made for this job leads its own group when the job is new, or when the
    // job's old group has no member left to join.
    if (group == pid && group != ::getpgrp()) {
        jobs::remember(jobName, group);
        return true;
    }
    // Only a child that has not started its program yet can still be moved.
    if (!known && ::setpgid(pid, pid) == 0) {
        jobs::remember(jobName, pid);
        return true;
    }
    return false;
}

} // namespace platform
} // namespace vq
