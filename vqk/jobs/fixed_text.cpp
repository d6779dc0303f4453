#include "vqk/jobs/fixed_text.h"

#include <cstdio>
#include <cstring>

namespace vq {
namespace jobs {

int formatFixed(char* buf, size_t size, const char* format, ...) {
    if (!buf || size == 0)
        return -1;
    va_list args;
    va_start(args, format);
    int n = std::vsnprintf(buf, size, format ? format : "", args);
    va_end(args);
    if (n < 0 || size_t(n) >= size) {
        buf[0] = 0;
        return -1;
    }
    return n;
}

bool appendFixed(char* buf, size_t size, const char* text) {
    if (!buf || size == 0)
        return false;
    size_t have = strnlen(buf, size);
    size_t add = text ? std::strlen(text) : 0;
    if (have == size || have + add >= size) {
        buf[0] = 0;
        return false;
    }
    std::memcpy(buf + have, text, add);
    buf[have + add] = 0;
    return true;
}

void vformatCut(char* buf, size_t size, const char* format, va_list args) {
    if (!buf || size == 0)
        return;
    if (std::vsnprintf(buf, size, format ? format : "", args) < 0)
        buf[0] = 0;
}

void copyCut(char* buf, size_t size, const char* text) {
    if (!buf || size == 0)
        return;
    size_t n = text ? strnlen(text, size - 1) : 0;
    std::memcpy(buf, text ? text : "", n);
    buf[n] = 0;
}

} // namespace jobs
} // namespace vq
