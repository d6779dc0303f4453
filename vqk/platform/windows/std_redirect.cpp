// Redirection by _dup2 onto the standard descriptors: unlike freopen, a failure leaves
// the stream open and untouched, and the runtime also points the process's standard
// handle at the file, so child processes inherit the redirection.
#include "vqk/platform/std_redirect.h"
#include "vqk/platform/windows/wide_text.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace vq {
namespace platform {
namespace {

bool redirect(FILE* stream, const char* path) {
    bool ok = false;
    std::wstring w = widen(path, &ok);
    if (!ok || w.empty())
        return false;
    int f = _wopen(w.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (f < 0)
        return false;
    std::fflush(stream);
    bool done = _dup2(f, _fileno(stream)) == 0;
    _close(f);
    return done;
}

} // namespace

bool redirectStdout(const char* path) { return redirect(stdout, path); }
bool redirectStderr(const char* path) { return redirect(stderr, path); }

} // namespace platform
} // namespace vq
