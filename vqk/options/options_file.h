// vqk/options/options_file.h
//
// Where the per-user options file lives. Each option set is one "OptionsSet" element
// of it (COptionsSet::read and write); COptions (options_doc.h) edits it by name.
//
//   const char* path = vq::optionsFilePath();   // "~/.config/vqk/options.xml"
//
// The folder is the user's settings folder (%APPDATA% on Windows, $XDG_CONFIG_HOME or
// ~/.config elsewhere) and the product name, "vqk" unless the application sets its own
// before the first call; it is created when missing. An empty path comes back when no
// settings folder can be found or made.
#pragma once

#include "vqk/config.h"

namespace vq {

VQK_API const char* optionsFilePath();
// The repair-critical settings shipped beside the library: "healing_env_default.xml"
// in the library's own folder.
VQK_API const char* optionsRepairCritical();
VQK_API void setProductName(const char* name);
VQK_API const char* productName();

} // namespace vq
