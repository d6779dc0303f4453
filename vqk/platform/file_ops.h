// vqk/platform/file_ops.h
//
// The file-system operations a safe save needs: folders created on demand, a file
// renamed over another in one step, and a lock held by a process (released by the
// system when the process dies, so a killed writer never leaves it behind); and the
// per-user settings folder.
//
//   intptr_t lock = vq::platform::lockFile("options.xml.lock");   // waits
//   ... write "options.xml.new" ...
//   vq::platform::replaceFile("options.xml.new", "options.xml");
//   vq::platform::unlockFile(lock);
//
// Paths are UTF-8. Failures come back as false (or -1 from lockFile).
#pragma once

#include "vqk/config.h"

#include <cstdint>
#include <string>

namespace vq {
namespace platform {

// Creates `folder` and every missing folder above it; true when it exists afterwards.
VQK_API bool makeFolders(const char* folder);

// Renames `from` over `to`, replacing it atomically: a reader sees the old file or the
// new one, never a mix.
VQK_API bool replaceFile(const char* from, const char* to);

// Takes an exclusive lock on `path` (created when missing), waiting for other holders.
// Returns a handle for unlockFile, or -1 when the file cannot be opened.
VQK_API intptr_t lockFile(const char* path);
VQK_API void unlockFile(intptr_t lock);

// The user's settings folder without a trailing separator: %APPDATA% on Windows,
// $XDG_CONFIG_HOME or ~/.config on POSIX; empty when none can be found.
VQK_API std::string userSettingsFolder();

} // namespace platform
} // namespace vq
