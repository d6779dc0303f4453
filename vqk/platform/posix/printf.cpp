#include "vqk/platform/printf.h"

#include <cerrno>
#include <cstdio>
#include <cwchar>
#include <memory>

namespace vq {
namespace platform {

int vscprintf(const char* fmt, va_list args) {
    if (!fmt)
        return -1;
    CNativeFormat<char> native(fmt);
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(nullptr, 0, native.str(), copy);
    va_end(copy);
    return n;
}

int vscwprintf(const wchar_t* fmt, va_list args) {
    if (!fmt)
        return -1;
    // vswprintf cannot count: it fails when the block is too small, so print into a
    // growing scratch block until the text fits.
    CNativeFormat<wchar_t> native(fmt);
    wchar_t local[256];
    size_t size = 256;
    std::unique_ptr<wchar_t[]> heap;
    wchar_t* buf = local;
    for (;;) {
        va_list copy;
        va_copy(copy, args);
        errno = 0;
        int n = std::vswprintf(buf, size, native.str(), copy);
        int error = errno;
        va_end(copy);
        if (n >= 0)
            return n;
        // Text the locale cannot convert fails at any size; only a short block is worth
        // another try.
        if (error == EILSEQ || error == EINVAL || size >= (size_t(1) << 26))
            return -1;
        size *= 4;
        heap.reset(new wchar_t[size]);
        buf = heap.get();
    }
}

} // namespace platform
} // namespace vq
