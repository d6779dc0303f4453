// POSIX console: termios raw mode and poll(2) on standard input.
#include "vqk/platform/console.h"

#include <cerrno>
#include <poll.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

namespace vq {
namespace platform {

struct CRawConsole::SState {
    termios saved;
};

bool stdinIsTerminal() { return isatty(STDIN_FILENO) == 1; }

CRawConsole::CRawConsole() {
    if (!stdinIsTerminal())
        return;
    termios saved;
    if (tcgetattr(STDIN_FILENO, &saved) != 0)
        return;
    termios raw = saved;
    // Without ISIG, Ctrl-C arrives as the key 3 instead of killing the process while the
    // terminal is still raw, which would leave the user's shell without echo.
    raw.c_lflag &= ~tcflag_t(ICANON | ECHO | ISIG);
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    if (tcsetattr(STDIN_FILENO, TCSANOW, &raw) != 0)
        return;
    m_state = new SState{saved};
}

CRawConsole::~CRawConsole() {
    if (!m_state)
        return;
    tcsetattr(STDIN_FILENO, TCSANOW, &m_state->saved);
    delete m_state;
}

int CRawConsole::pollKey(int timeoutMs) {
    if (timeoutMs < 0)
        timeoutMs = 0;
    if (!m_state) {
        // No terminal: honour the time-out so that callers looping on it do not spin.
        timespec ts{timeoutMs / 1000, long(timeoutMs % 1000) * 1000000L};
        while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
        }
        return -1;
    }
    pollfd p{STDIN_FILENO, POLLIN, 0};
    int r = poll(&p, 1, timeoutMs);
    if (r <= 0 || !(p.revents & POLLIN))
        return -1;
    unsigned char c = 0;
    if (read(STDIN_FILENO, &c, 1) != 1)
        return -1;
    return c;
}

} // namespace platform
} // namespace vq
