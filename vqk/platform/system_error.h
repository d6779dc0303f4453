// vqk/platform/system_error.h
//
// The system's own code and text for the last failed call: errno and strerror on POSIX,
// GetLastError and FormatMessageA on Windows.
//
//   FILE* f = fopen(path, "r");
//   if (!f) {
//       int code = vq::platform::lastSystemError();
//       std::string why = vq::platform::systemErrorText(code);   // "No such file or directory"
//   }
//
// Read the code first: most calls, the library's included, may change it.
#pragma once

#include "vqk/config.h"

#include <string>

namespace vq {
namespace platform {

VQK_API int lastSystemError();
// The system's message for `code`, without a trailing line end; a text naming the number
// when the system has none.
VQK_API std::string systemErrorText(int code);

} // namespace platform
} // namespace vq
