#include "vqk/platform/file_ops.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vq {
namespace platform {

bool makeFolders(const char* folder) {
    if (!folder || !*folder)
        return false;
    std::string path(folder);
    for (size_t i = 1; i <= path.size(); ++i) {
        if (i < path.size() && path[i] != '/')
            continue;
        const std::string part = path.substr(0, i);
        if (::mkdir(part.c_str(), 0777) != 0 && errno != EEXIST)
            return false;
    }
    struct stat st;
    return ::stat(folder, &st) == 0 && S_ISDIR(st.st_mode);
}

bool replaceFile(const char* from, const char* to) { return ::rename(from, to) == 0; }

intptr_t lockFile(const char* path) {
    const int fd = ::open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0)
        return -1;
    while (::flock(fd, LOCK_EX) != 0) {
        if (errno != EINTR) {
            ::close(fd);
            return -1;
        }
    }
    return fd;
}

void unlockFile(intptr_t lock) {
    if (lock >= 0) {
        ::flock(int(lock), LOCK_UN);
        ::close(int(lock));
    }
}

std::string userSettingsFolder() {
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && *xdg == '/')
        return xdg;
    const char* home = std::getenv("HOME");
    return home && *home ? std::string(home) + "/.config" : std::string();
}

} // namespace platform
} // namespace vq
