// vqk/platform/file_open_read.h
//
// Opening a file named by a wide path for reading, as the XML reader does. The path is
// handed to the system in its own encoding (UTF-8 on POSIX, UTF-16 on Windows). While
// the stream is open, writers are denied: on Windows every writer, on POSIX (which has
// only advisory locks) the writers that lock, those of vqk/platform/file_lock.h among
// them. A file such a writer has open is not opened.
//
//   FILE* f = vq::platform::openForReading(L"job.xml");
//   if (!f) { /* missing, unreadable or a null/empty path */ }
//
// Returns null when the file cannot be opened or a writer holds it; errno tells why.
#pragma once

#include "vqk/config.h"

#include <cstdio>

namespace vq {
namespace platform {

// Text mode ("r"); the stream belongs to the caller, who closes it with fclose.
VQK_API FILE* openForReading(const wchar_t* path);

// Binary mode ("rb"), sharing the file with readers and writers alike (as the XML
// writer's insertXml copies a file): no lock is taken. Null for a folder.
VQK_API FILE* openSharedBinary(const wchar_t* path);

} // namespace platform
} // namespace vq
