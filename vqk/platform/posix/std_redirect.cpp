// Redirection by dup2 onto the standard descriptors: unlike freopen, a failure leaves
// the stream open and untouched.
#include "vqk/platform/std_redirect.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace vq {
namespace platform {

namespace {

bool redirect(FILE* stream, int fd, const char* path) {
    if (!path || !*path)
        return false;
    int f = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (f < 0)
        return false;
    std::fflush(stream);
    bool ok = dup2(f, fd) >= 0;
    close(f);
    return ok;
}

} // namespace

bool redirectStdout(const char* path) { return redirect(stdout, STDOUT_FILENO, path); }
bool redirectStderr(const char* path) { return redirect(stderr, STDERR_FILENO, path); }

} // namespace platform
} // namespace vq
