// The POSIX side of vqk/platform/file_open_read.h: the wide path goes to fopen as UTF-8,
// and the file is held with a shared lock until the stream is closed.
#include "vqk/platform/file_open_read.h"

#include "vqk/text/utf8.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

namespace vq {
namespace platform {

namespace {

// The file opened by its UTF-8 name; null for a folder, which opens on POSIX but not on
// Windows, so that callers fail alike on both.
FILE* openFile(const wchar_t* path, const char* mode) {
    if (!path || !*path) {
        errno = ENOENT;
        return nullptr;
    }
    int n = wideToUtf8(path, -1, nullptr, 0);
    if (n <= 0) {
        errno = EINVAL;
        return nullptr;
    }
    std::vector<char> narrow(size_t(n) + 1, 0);
    if (wideToUtf8(path, -1, narrow.data(), n) <= 0) {
        errno = EINVAL;
        return nullptr;
    }
    FILE* f = std::fopen(narrow.data(), mode);
    struct stat st;
    if (f && fstat(fileno(f), &st) == 0 && S_ISDIR(st.st_mode)) {
        std::fclose(f);
        errno = EISDIR;
        return nullptr;
    }
    return f;
}

} // namespace

FILE* openSharedBinary(const wchar_t* path) { return openFile(path, "rb"); }

FILE* openForReading(const wchar_t* path) {
    FILE* f = openFile(path, "r");
    if (!f)
        return nullptr;
    // The shared side of the writers' lock: a writer of the library is refused while the
    // file is read, and a file a writer holds is not read half-written.
    if (::flock(fileno(f), LOCK_SH | LOCK_NB) != 0) {
        int err = errno;
        std::fclose(f);
        errno = err;
        return nullptr;
    }
    return f;
}

} // namespace platform
} // namespace vq
