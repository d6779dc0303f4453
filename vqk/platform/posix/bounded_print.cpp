// The runtime's bounded printing: a text that does not fit is an error, never a cut.
#include "vqk/platform/bounded.h"
#include "vqk/platform/printf.h"

#include <cerrno>
#include <cstdio>
#include <cwchar>

namespace vq {
namespace platform {

namespace {

int printInto(char* buf, size_t size, const char* fmt, va_list args) {
    return std::vsnprintf(buf, size, fmt, args);
}
int printInto(wchar_t* buf, size_t size, const wchar_t* fmt, va_list args) {
    return std::vswprintf(buf, size, fmt, args);
}

// vsnprintf reports the length a short block would need, vswprintf only fails: either
// way the text did not fit and the block is emptied.
template <class T> int printBounded(T* buf, size_t size, const T* fmt, va_list args) {
    if (!buf || size == 0 || !fmt) {
        if (buf && size)
            buf[0] = 0;
        errno = EINVAL;
        return -1;
    }
    CNativeFormat<T> native(fmt);
    va_list copy;
    va_copy(copy, args);
    int n = printInto(buf, size, native.str(), copy);
    va_end(copy);
    if (n < 0 || size_t(n) >= size) {
        buf[0] = 0;
        errno = ERANGE;
        return -1;
    }
    return n;
}

} // namespace

int vsprintf_s(char* buf, size_t size, const char* fmt, va_list args) {
    return printBounded(buf, size, fmt, args);
}

int vswprintf_s(wchar_t* buf, size_t size, const wchar_t* fmt, va_list args) {
    return printBounded(buf, size, fmt, args);
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
