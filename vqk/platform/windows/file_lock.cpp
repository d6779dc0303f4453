// A share mode that denies other writers: the system refuses the open before it would
// truncate, so a file another writer holds is never emptied under it.
#include "vqk/platform/file_lock.h"
#include "vqk/platform/windows/wide_text.h"

#include <cerrno>
#include <share.h>

namespace vq {
namespace platform {

FILE* openFileDenyWriters(const char* path, bool append) {
    bool ok = false;
    std::wstring w = widen(path, &ok);
    if (!ok || w.empty()) {
        errno = ENOENT;
        return nullptr;
    }
    return _wfsopen(w.c_str(), append ? L"a" : L"w", _SH_DENYWR);
}

} // namespace platform
} // namespace vq
