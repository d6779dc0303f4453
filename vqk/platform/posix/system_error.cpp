#include "vqk/platform/system_error.h"

#include <cerrno>
#include <cstring>

namespace vq {
namespace platform {
namespace {

// strerror_r comes in two forms; each overload takes the result of one.
[[maybe_unused]] const char* messageOf(int rc, const char* buf) { return rc == 0 ? buf : ""; }
[[maybe_unused]] const char* messageOf(const char* text, const char*) { return text ? text : ""; }

} // namespace

int lastSystemError() { return errno; }

std::string systemErrorText(int code) {
    char buf[256] = {};
    std::string text = messageOf(strerror_r(code, buf, sizeof buf), buf);
    if (text.empty())
        text = "Unknown error " + std::to_string(code);
    return text;
}

} // namespace platform
} // namespace vq
