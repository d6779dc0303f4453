// vqk/platform/std_redirect.h
//
// Points the process's standard output or standard error at a file, so that every
// later write through stdout/stderr (and by child processes that inherit them) lands
// there. The C streams stay the same objects: a FILE* taken from stdout before the
// redirection keeps working and now writes to the file.
//
//   if (!vq::platform::redirectStdout("run.xml"))
//       fprintf(stderr, "cannot write run.xml\n");
//
// The file is created or truncated. On failure (null path, a file that cannot be
// created) false is returned and the stream is left exactly as it was.
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

VQK_API bool redirectStdout(const char* path);
VQK_API bool redirectStderr(const char* path);

} // namespace platform
} // namespace vq
