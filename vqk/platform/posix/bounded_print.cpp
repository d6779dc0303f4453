// The runtime's bounded printing: a text that does not fit is an error, never a cut.
#include "vqk/platform/bounded.h"
#include "vqk/platform/printf.h"

#include <cerrno>
#include <cstdio>
#include <cwchar>

namespace vq {
namespace platform {

int vsprintf_s(char* buf, size_t size, const char* fmt, va_list args) {
    if (!buf || size == 0 || !fmt) {
        if (buf && size)
            buf[0] = 0;
        errno = EINVAL;
        return -1;
    }
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(buf, size, fmt, copy);
    va_end(copy);
    if (n < 0 || size_t(n) >= size) {
        buf[0] = 0;
        errno = n < 0 ? EINVAL : ERANGE;
        return -1;
    }
    return n;
}

int vswprintf_s(wchar_t* buf, size_t size, const wchar_t* fmt, va_list args) {
    if (!buf || size == 0 || !fmt) {
        if (buf && size)
            buf[0] = 0;
        errno = EINVAL;
        return -1;
    }
    va_list copy;
    va_copy(copy, args);
    int n = std::vswprintf(buf, size, fmt, copy);
    va_end(copy);
    if (n < 0) { // vswprintf cannot tell a short block from a bad format
        buf[0] = 0;
        errno = ERANGE;
        return -1;
    }
    return n;
}

int _vscprintf(const char* fmt, va_list args) {
    if (!fmt) {
        errno = EINVAL;
        return -1;
    }
    return vscprintf(fmt, args);
}

int _vscwprintf(const wchar_t* fmt, va_list args) {
    if (!fmt) {
        errno = EINVAL;
        return -1;
    }
    return vscwprintf(fmt, args);
}

} // namespace platform
} // namespace vq
