// Printing through the CUPS commands: lp prints, lpstat tells the default printer and
// whether a printer exists, lpoptions changes the default.
#include "vqk/platform/process_print.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace vq {
namespace platform {

namespace {

// Runs a command found on PATH, its standard output into `out` when given (else, like
// its standard error, to /dev/null); the exit code, -1 when it could not run.
int runCommand(const char* const* argv, std::string* out) {
    int pipeFds[2] = {-1, -1};
    if (::pipe2(pipeFds, O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (out)
        posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 1);
    else
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    int err = posix_spawnp(&pid, argv[0], &actions, nullptr, const_cast<char* const*>(argv), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[1]);
    if (err == 0 && out) {
        char buf[512];
        ssize_t n;
        while ((n = ::read(pipeFds[0], buf, sizeof buf)) > 0 || (n < 0 && errno == EINTR))
            if (n > 0)
                out->append(buf, (size_t)n);
    }
    ::close(pipeFds[0]);
    if (err != 0)
        return -1;
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0)
        if (errno != EINTR)
            return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

bool printHtmlCommand(const char* htmlFile, std::string& cmd) {
    // The command line is split by the Windows rules; a quote in the name cannot be kept.
    if (!htmlFile || !*htmlFile || std::strchr(htmlFile, '"'))
        return false;
    cmd = std::string("lp \"") + htmlFile + "\"";
    return true;
}

bool defaultPrinter(std::string& name) {
    const char* argv[] = {"lpstat", "-d", nullptr};
    std::string out;
    if (runCommand(argv, &out) != 0)
        return false;
    // "system default destination: NAME", or "no system default destination".
    size_t colon = out.find(": ");
    if (colon == std::string::npos)
        return false;
    name = out.substr(colon + 2);
    while (!name.empty() && (name.back() == '\n' || name.back() == '\r' || name.back() == ' '))
        name.pop_back();
    return !name.empty();
}

bool setDefaultPrinter(const char* name) {
    if (!name || !*name)
        return false;
    const char* argv[] = {"lpoptions", "-d", name, nullptr};
    return runCommand(argv, nullptr) == 0;
}

bool printerExists(const char* name) {
    if (!name || !*name)
        return false;
    const char* argv[] = {"lpstat", "-p", name, nullptr};
    return runCommand(argv, nullptr) == 0;
}

} // namespace platform
} // namespace vq
