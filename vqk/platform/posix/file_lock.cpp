#include "vqk/platform/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vq {
namespace platform {

FILE* openFileDenyWriters(const char* path, bool append) {
    if (!path || !*path) {
        errno = ENOENT;
        return nullptr;
    }
    // No O_TRUNC: emptying must wait until the lock says nobody else is writing.
    int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (append ? O_APPEND : 0);
    int fd = ::open(path, flags, 0666);
    if (fd < 0)
        return nullptr;
    // Devices and pipes (/dev/null, a FIFO) have nothing to empty.
    struct stat st;
    bool regular = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode);
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0 || (!append && regular && ::ftruncate(fd, 0) != 0)) {
        int err = errno;
        ::close(fd);
        errno = err;
        return nullptr;
    }
    FILE* f = ::fdopen(fd, append ? "a" : "w");
    if (!f) {
        int err = errno;
        ::close(fd);
        errno = err;
    }
    return f;
}

} // namespace platform
} // namespace vq
