// vqk/platform/path.h
//
// The bounded path splitter and joiner and the absolute-path resolver of the C runtime
// the library was first written for, reproduced so that they behave the same on every
// system. Splitting is identical everywhere: an optional drive (a letter A-Z or a-z
// followed by a colon at the start), a folder running to the last slash or backslash, a file
// name, and an extension from the last point of the last component. Joining writes the
// separator of a path style: backslash for EPathStyle::windows, slash for
// EPathStyle::posix; the library's own callers pass nativePathStyle(), tests pass both.
//
//   char drive[3], dir[256], name[256], ext[256];
//   int rc = vq::platform::splitpath_s("C:\\a\\b.txt", drive, 3, dir, 256, name, 256, ext, 256);
//   // rc 0: drive "C:", dir "\a\", name "b", ext ".txt"
//   char out[260];
//   vq::platform::makepath_s(out, 260, "C:", "a", "b", "txt", vq::platform::EPathStyle::posix);
//   // out "C:a/b.txt"
//
// Failures return an errno code and never write outside the given sizes:
// EINVAL for a null path/destination, a null buffer with a non-zero size or a buffer
// with a zero size; ERANGE when a component or the joined path does not fit. On either
// failure every destination buffer that was given with a non-zero size is emptied.
#pragma once

#include "vqk/config.h"

#include <cstddef>

namespace vq {
namespace platform {

enum class EPathStyle { windows, posix };

constexpr EPathStyle nativePathStyle() {
#if defined(_WIN32)
    return EPathStyle::windows;
#else
    return EPathStyle::posix;
#endif
}

constexpr char pathSeparator(EPathStyle style) { return style == EPathStyle::windows ? '\\' : '/'; }

// Buffer sizes, terminator included, that always hold a split component.
constexpr size_t kMaxDrive = 3;
constexpr size_t kMaxDir = 256;
constexpr size_t kMaxFname = 256;
constexpr size_t kMaxExt = 256;
// The size the resolver allocates when it is given no buffer.
constexpr size_t kMaxPath = 4096;

// Splits path; a null buffer with size 0 skips that component. Returns 0, EINVAL or ERANGE.
VQK_API int splitpath_s(const char* path, char* drive, size_t driveSize, char* dir, size_t dirSize,
                        char* fname, size_t fnameSize, char* ext, size_t extSize);
VQK_API int splitpath_s(const wchar_t* path, wchar_t* drive, size_t driveSize, wchar_t* dir,
                        size_t dirSize, wchar_t* fname, size_t fnameSize, wchar_t* ext,
                        size_t extSize);

// Joins the parts into path (size elements, terminator included). A null or empty part is
// left out; the drive contributes its first character and a colon, a folder without a
// trailing slash or backslash gets the style's separator, an extension without a leading
// point gets one. Returns 0, EINVAL or ERANGE.
VQK_API int makepath_s(char* path, size_t size, const char* drive, const char* dir,
                       const char* fname, const char* ext,
                       EPathStyle style = nativePathStyle());
VQK_API int makepath_s(wchar_t* path, size_t size, const wchar_t* drive, const wchar_t* dir,
                       const wchar_t* fname, const wchar_t* ext,
                       EPathStyle style = nativePathStyle());

// The absolute form of relPath, resolved against the current folder without touching
// the file itself (it need not exist): "." and ".." are folded, repeated separators
// collapse, backslashes become the native separator. A null or empty relPath gives the
// current folder. With a null absPath a buffer of kMaxPath elements is allocated with
// malloc (the caller frees it) and maxLength is ignored. Returns absPath (or the new
// buffer), or null when the result needs more than maxLength elements with its
// terminator or the current folder cannot be read; errno then tells why.
VQK_API char* fullpath(char* absPath, const char* relPath, size_t maxLength);
VQK_API wchar_t* fullpath(wchar_t* absPath, const wchar_t* relPath, size_t maxLength);

} // namespace platform
} // namespace vq
