// vqk/platform/terminal.h
//
// What a console progress display needs to know about standard error: whether it is an
// interactive terminal (a log file, a pipe or CI is not), and how wide that terminal is.
//
//   if (vq::platform::stderrIsTerminal())
//       width = vq::platform::stderrColumns();
//
// stderrColumns returns 80 when the width cannot be told (not a terminal, or a terminal
// that reports none).
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

VQK_API bool stderrIsTerminal();
VQK_API int stderrColumns();

} // namespace platform
} // namespace vq
