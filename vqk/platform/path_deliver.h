// How fullpath hands over its result on every system: into the caller's buffer when the
// text fits, else into a new buffer of kMaxPath elements when the caller gave none.
// Inside the platform seam only.
#pragma once

#include "vqk/platform/path.h"

#include <cerrno>
#include <cstdlib>

namespace vq {
namespace platform {

template <class T> T* deliverPath(T* absPath, size_t maxLength, const T* text, size_t n) {
    if (!absPath) {
        if (n + 1 > kMaxPath) {
            errno = ERANGE;
            return nullptr;
        }
        absPath = static_cast<T*>(std::malloc(kMaxPath * sizeof(T)));
        if (!absPath) {
            errno = ENOMEM;
            return nullptr;
        }
    } else if (n + 1 > maxLength) {
        errno = ERANGE;
        return nullptr;
    }
    for (size_t i = 0; i < n; ++i)
        absPath[i] = text[i];
    absPath[n] = 0;
    return absPath;
}

} // namespace platform
} // namespace vq
