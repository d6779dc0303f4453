// vqk/platform/environment.h
//
// The running process as the library sees it: its environment variables (which child
// processes inherit), its id, the executable it runs and the temporary folder.
//
//   std::string v;
//   if (vq::platform::getEnv("_ORV_LOGINDENT", v)) { ... }
//   vq::platform::setEnv("_ORV_LOGINDENT", "2");   // children started from now on see "2"
//   std::string exe = vq::platform::executablePath();
//
// Failure: getEnv reports an unset variable by returning false, setEnv a name the system
// refuses (empty or containing '=') the same way; executablePath is empty when the
// system cannot name the executable. Nothing here throws.
#pragma once

#include "vqk/config.h"

#include <string>

namespace vq {
namespace platform {

// The value of the variable; false (value emptied) when it is not set.
VQK_API bool getEnv(const char* name, std::string& value);
// Sets the variable for this process and the children it starts; a null value removes it.
VQK_API bool setEnv(const char* name, const char* value);

VQK_API int processId();

// The executable's full path; empty when unknown.
VQK_API std::string executablePath();

// The folder for temporary files, with a trailing separator: the first set one of the
// variables TEMP, TMP and TMPDIR, else the system's default ("/tmp/" on POSIX).
VQK_API std::string tempFolder();

} // namespace platform
} // namespace vq
