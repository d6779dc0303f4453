// POSIX terminal queries: isatty and the TIOCGWINSZ window size.
#include "vqk/platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace vq {
namespace platform {

bool stderrIsTerminal() { return isatty(STDERR_FILENO) == 1; }

int stderrColumns() {
    winsize ws{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &ws) != 0 || ws.ws_col == 0)
        return 80;
    return ws.ws_col;
}

} // namespace platform
} // namespace vq
