#include "vqk/diagnostics/err.h"

#include "vqk/platform/system_error.h"

#include <cerrno>
#include <cstdarg>
#include <string>

namespace vq {
namespace {

// Ids of the default string table (orv_string.csv).
const int kFileErrorGeneral = 63120;

struct SFileError {
    int code;
    int id;
};

const SFileError kFileErrors[] = {
    {ENOENT, 63121}, {EACCES, 63122}, {EEXIST, 63123},       {EISDIR, 63124},
    {ENOTDIR, 63125}, {EMFILE, 63126}, {ENFILE, 63126},      {ENOSPC, 63127},
    {EROFS, 63128},  {EBUSY, 63129},  {ENAMETOOLONG, 63130}, {EINVAL, 63131},
};

} // namespace

CErr::CErr() : COutFile(stderr) {}

int CErr::msg(const char* format, ...) {
    va_list args;
    va_start(args, format);
    int n = vprint(format, args);
    va_end(args);
    n += int(writeBlock("\n", 1));
    flush();
    return n;
}

CErr& xerr() {
    // Never destroyed: errors may be reported from destructors of other statics.
    static CErr* err = new CErr;
    return *err;
}

SStrId errMsgId(int fileError) {
    SStrId s;
    if (fileError == 0)
        return s;
    s.id = kFileErrorGeneral;
    for (const SFileError& e : kFileErrors)
        if (e.code == fileError)
            s.id = e.id;
    return s;
}

int getLastError(CStr& text) {
    const int code = platform::lastSystemError();
    std::string t = platform::systemErrorText(code) + " (error code = " + std::to_string(code) + ")";
    text = t.c_str();
    return code;
}

} // namespace vq
