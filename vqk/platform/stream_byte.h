// vqk/platform/stream_byte.h
//
// One byte from a stream that belongs to a single reader, read through the stream's
// buffer without taking its lock. Once a process has started a thread (the OpenMP
// runtime does) the locked read costs several times the work around it.
//
//   int c;
//   while ((c = vq::platform::readByteUnlocked(f)) != EOF && c != '<') { ... }
//
// As fgetc: the byte as an unsigned char converted to int, or EOF at the end of the
// stream or on a read error. The caller guarantees that no other thread uses `f`.
#pragma once

#include <cstdio>

namespace vq {
namespace platform {

inline int readByteUnlocked(FILE* f) {
#if defined(_WIN32)
    return _fgetc_nolock(f);
#else
    return getc_unlocked(f);
#endif
}

} // namespace platform
} // namespace vq
