// The Windows side of vqk/platform/file_open_read.h: the runtime's sharing open, denying
// writers for as long as the stream is open.
#include "vqk/platform/file_open_read.h"

#include <cerrno>
#include <share.h>
#include <stdio.h>
#include <sys/stat.h>

namespace vq {
namespace platform {

FILE* openForReading(const wchar_t* path) {
    if (!path || !*path) {
        errno = ENOENT;
        return nullptr;
    }
    // A folder cannot be opened as a stream; say so as POSIX does.
    struct _stat64 st;
    if (_wstat64(path, &st) == 0 && (st.st_mode & _S_IFDIR)) {
        errno = EISDIR;
        return nullptr;
    }
    return _wfsopen(path, L"r", _SH_DENYWR);
}

} // namespace platform
} // namespace vq
