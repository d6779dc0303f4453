// The Windows side of vqk/platform/file_open_read.h: the runtime's sharing open, denying
// writers for as long as the stream is open.
#include "vqk/platform/file_open_read.h"

#include <cerrno>
#include <share.h>
#include <stdio.h>
#include <sys/stat.h>

namespace vq {
namespace platform {

namespace {

FILE* openShared(const wchar_t* path, const wchar_t* mode, int share) {
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
    return _wfsopen(path, mode, share);
}

} // namespace

FILE* openForReading(const wchar_t* path) { return openShared(path, L"r", _SH_DENYWR); }

FILE* openSharedBinary(const wchar_t* path) { return openShared(path, L"rb", _SH_DENYNO); }

} // namespace platform
} // namespace vq
