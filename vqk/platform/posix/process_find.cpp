// Finding a running process by its executable's file name, through /proc.
#include "vqk/platform/process.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace vq {
namespace platform {

namespace {

bool sameNameIgnoringCase(const char* a, const char* b) {
    for (; *a && *b; ++a, ++b)
        if (std::tolower((unsigned char)*a) != std::tolower((unsigned char)*b))
            return false;
    return *a == *b;
}

// The executable's file name: from the exe link where it may be read, else from the
// first command-line argument (processes of other users hide their link).
std::string executableName(const char* pidText) {
    std::string dir = std::string("/proc/") + pidText;
    char target[4096];
    ssize_t n = ::readlink((dir + "/exe").c_str(), target, sizeof target - 1);
    std::string path;
    if (n > 0) {
        path.assign(target, (size_t)n);
        const char* deleted = " (deleted)";
        size_t d = std::strlen(deleted);
        if (path.size() > d && path.compare(path.size() - d, d, deleted) == 0)
            path.resize(path.size() - d);
    } else {
        FILE* f = std::fopen((dir + "/cmdline").c_str(), "r");
        if (!f)
            return std::string();
        size_t got = std::fread(target, 1, sizeof target - 1, f);
        std::fclose(f);
        target[got] = 0;
        path = target;
    }
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

void* processFind(const char* exeName) {
    if (!exeName || !*exeName)
        return nullptr;
    DIR* proc = ::opendir("/proc");
    if (!proc)
        return nullptr;
    // /proc lists processes in ascending id order: the first match is the oldest id.
    void* found = nullptr;
    while (struct dirent* e = ::readdir(proc)) {
        if (!std::isdigit((unsigned char)e->d_name[0]))
            continue;
        if (!sameNameIgnoringCase(executableName(e->d_name).c_str(), exeName))
            continue;
        long fd = ::syscall(SYS_pidfd_open, (pid_t)std::atoi(e->d_name), 0);
        found = fd >= 0 ? (void*)(intptr_t)fd : nullptr;
        break;
    }
    ::closedir(proc);
    return found;
}

} // namespace platform
} // namespace vq
