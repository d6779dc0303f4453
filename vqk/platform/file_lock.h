// vqk/platform/file_lock.h
//
// Opening an output file so that no other writer can use it at the same time. The
// file is created when missing; it is emptied only after the lock is held, so a file
// that another writer still has open is never truncated under it. Plain readers are
// not held off, but a file the library's reader has open (file_open_read.h) is refused
// like one another writer holds.
//
//   FILE* f = vq::platform::openFileDenyWriters("report.xml", false);
//   if (!f) { /* missing folder, no permission, or another writer holds it */ }
//
// Returns null on any failure (errno tells why); nothing is created or emptied when
// the lock is refused. The lock lasts until the stream is closed.
#pragma once

#include "vqk/config.h"

#include <cstdio>

namespace vq {
namespace platform {

// `path` is UTF-8. Appending keeps the content and writes at the end; otherwise the
// file is emptied.
VQK_API FILE* openFileDenyWriters(const char* path, bool append);

} // namespace platform
} // namespace vq
