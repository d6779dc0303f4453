// POSIX side of the module seam: the dynamic loader names the object that holds one of
// the library's own functions.
#include "vqk/platform/module.h"

#include <dlfcn.h>

namespace vq {
namespace platform {

std::string libraryFolder() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&libraryFolder), &info) || !info.dli_fname)
        return std::string();
    std::string path(info.dli_fname);
    size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return std::string("./");
    return path.substr(0, slash + 1);
}

} // namespace platform
} // namespace vq
