#include "vqk/platform/current_dir.h"

#include <cerrno>
#include <unistd.h>
#include <vector>

namespace vq {
namespace platform {

bool changeDir(const char* dir) { return dir && *dir && chdir(dir) == 0; }

bool currentDir(CStr& dir) {
    dir.reset();
    std::vector<char> buf(1024);
    while (!getcwd(buf.data(), buf.size())) {
        if (errno != ERANGE || buf.size() > (1u << 20))
            return false;
        buf.resize(buf.size() * 2);
    }
    dir = buf.data();
    return true;
}

} // namespace platform
} // namespace vq
