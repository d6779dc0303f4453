// vqk/platform/module.h
//
// Where the library itself was loaded from, so that files shipped beside it (the
// default string table) can be found without configuration.
//
//   std::string dir = vq::platform::libraryFolder();   // "/usr/lib/x86_64-linux-gnu/"
//
// On failure (the loader cannot name the module) the result is an empty string.
#pragma once

#include "vqk/config.h"

#include <string>

namespace vq {
namespace platform {

// The folder holding the vqk library, with a trailing separator; empty when unknown.
VQK_API std::string libraryFolder();

} // namespace platform
} // namespace vq
