// The Windows side of vqk/platform/file_open_read.h: the wide path goes to _wfsopen as
// UTF-16, denying other writers while the reader has the file.
#include "vqk/platform/file_open_read.h"

#include <cerrno>
#include <share.h>

namespace vq {
namespace platform {

FILE* openForReading(const wchar_t* path) {
    if (!path || !*path) {
        errno = ENOENT;
        return nullptr;
    }
    return _wfsopen(path, L"r", _SH_DENYWR);
}

} // namespace platform
} // namespace vq
