// vqk/platform/current_dir.h
//
// The process's current folder: read it and change it. Job files may name the folder
// their job runs in; the job host changes into it with changeDir.
//
//   vq::CStr here;
//   if (vq::platform::currentDir(here) && vq::platform::changeDir("examples"))
//       ...;
//
// Both return false on failure (no such folder, no permission, a null path); a failed
// change leaves the current folder as it was, a failed read leaves `dir` empty.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {
namespace platform {

VQK_API bool changeDir(const char* dir);
VQK_API bool currentDir(CStr& dir);

} // namespace platform
} // namespace vq
