// vqk/diagnostics/err.h
//
// Error output and error texts.
//
//   vq::xerr().msg("cannot read %s", path);        // one line on standard error, at once
//   FILE* f = std::fopen(path, "r");
//   if (!f) {
//       vq::CStr why;
//       vq::getLastError(why);   // "No such file or directory (error code = 2)"
//       const char* text = vq::stringTableText(vq::errMsgId(errno));   // "The file does not exist."
//   }
//
// CErr is an output for error messages: every message goes out with its line end and
// is flushed at once, so that what a failing program said is not left in a buffer. xerr()
// is the process's error output on standard error; attach() or open() send it elsewhere.
//
// errMsgId maps the runtime's file-error codes (errno values: ENOENT, EACCES, EEXIST,
// EISDIR, ENOTDIR, EMFILE, ENFILE, ENOSPC, EROFS, EBUSY, ENAMETOOLONG, EINVAL) to texts of
// the default string table; any other code gets a general text, 0 the empty text (id 0).
// getLastError reads the system's code of the last failed call (GetLastError on
// Windows, errno elsewhere) before anything can change it, writes the system's text
// followed by " (error code = <n>)" and returns the code.
#pragma once

#include "vqk/config.h"
#include "vqk/files/out_file.h"
#include "vqk/text/str.h"
#include "vqk/text/string_table.h"

#include <cstdio>

namespace vq {

class VQK_API CErr : public COutFile {
public:
    // On standard error, which is never closed here.
    CErr();
    explicit CErr(FILE* stream) : COutFile(stream) {}

    // Writes the formatted message and a line end, then flushes; returns the bytes.
    int msg(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
};

VQK_API CErr& xerr();

VQK_API SStrId errMsgId(int fileError);

VQK_API int getLastError(CStr& text);

} // namespace vq
