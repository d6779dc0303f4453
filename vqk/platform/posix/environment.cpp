#include "vqk/platform/environment.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace vq {
namespace platform {

bool getEnv(const char* name, std::string& value) {
    const char* v = name ? std::getenv(name) : nullptr;
    if (!v) {
        value.clear();
        return false;
    }
    value = v;
    return true;
}

bool setEnv(const char* name, const char* value) {
    if (!name || !*name || std::strchr(name, '='))
        return false;
    return (value ? ::setenv(name, value, 1) : ::unsetenv(name)) == 0;
}

int processId() { return int(::getpid()); }

std::string executablePath() {
    // The link names the file even when argv[0] was relative or a bare name.
    std::vector<char> buf(256);
    for (;;) {
        ssize_t n = ::readlink("/proc/self/exe", buf.data(), buf.size());
        if (n < 0)
            return std::string();
        if (size_t(n) < buf.size())
            return std::string(buf.data(), size_t(n));
        if (buf.size() >= 65536)
            return std::string();
        buf.resize(buf.size() * 2);
    }
}

std::string tempFolder() {
    std::string dir;
    for (const char* name : {"TEMP", "TMP", "TMPDIR"})
        if (getEnv(name, dir) && !dir.empty())
            break;
    if (dir.empty())
        dir = "/tmp";
    if (dir.back() != '/')
        dir += '/';
    return dir;
}

} // namespace platform
} // namespace vq
