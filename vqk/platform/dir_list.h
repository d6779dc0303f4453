// vqk/platform/dir_list.h
//
// The files of one folder whose names match a wildcard mask, sorted by name. The mask
// knows `*` (any run of characters) and `?` (one character) and ignores letter case,
// as the masks written into job files expect; a mask with a folder part ("data/*.xml")
// searches that folder under `dir`. Folders themselves are never listed.
//
//   vq::TVectorC<vq::CStr> names;
//   if (vq::platform::listFiles("examples/data", "*.xml", names))
//       for (const vq::CStr& n : names) puts(n.str());   // "a.xml", "b.xml", ...
//
// Returns false, with `names` empty, when the folder cannot be read. Names are plain
// file names (no folder) in byte order.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/vector.h"

namespace vq {
namespace platform {

// A null or empty `dir` means the current folder.
VQK_API bool listFiles(const char* dir, const char* mask, TVectorC<CStr>& names);

// The wildcard rule listFiles applies to one name.
VQK_API bool matchesMask(const char* name, const char* mask);

} // namespace platform
} // namespace vq
