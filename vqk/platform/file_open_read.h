// vqk/platform/file_open_read.h
//
// Opening a file named by a wide path for reading, as the XML reader does. The path is
// handed to the system in its own encoding (UTF-8 on POSIX, UTF-16 on Windows). On
// Windows other writers are denied while the stream is open; POSIX has no mandatory
// sharing modes, so there the file is simply opened.
//
//   FILE* f = vq::platform::openForReading(L"job.xml");
//   if (!f) { /* missing, unreadable or a null/empty path */ }
//
// Returns null when the file cannot be opened; errno tells why.
#pragma once

#include "vqk/config.h"

#include <cstdio>

namespace vq {
namespace platform {

// Text mode ("r"); the stream belongs to the caller, who closes it with fclose.
VQK_API FILE* openForReading(const wchar_t* path);

} // namespace platform
} // namespace vq
