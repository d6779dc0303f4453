// The Windows console: the runtime's _kbhit/_getch, with the console's processed input
// switched off so that Ctrl-C arrives as the key 3 instead of ending the process.
#include "vqk/platform/console.h"

#include <conio.h>
#include <windows.h>

namespace vq {
namespace platform {

struct CRawConsole::SState {
    HANDLE input;
    DWORD savedMode;
};

namespace {

bool consoleMode(HANDLE& input, DWORD& mode) {
    input = GetStdHandle(STD_INPUT_HANDLE);
    return input && input != INVALID_HANDLE_VALUE && GetConsoleMode(input, &mode);
}

} // namespace

bool stdinIsTerminal() {
    HANDLE input;
    DWORD mode;
    return consoleMode(input, mode);
}

CRawConsole::CRawConsole() {
    HANDLE input;
    DWORD saved;
    if (!consoleMode(input, saved))
        return;
    SetConsoleMode(input, saved & ~DWORD(ENABLE_PROCESSED_INPUT | ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT));
    m_state = new SState{input, saved};
}

CRawConsole::~CRawConsole() {
    if (!m_state)
        return;
    SetConsoleMode(m_state->input, m_state->savedMode);
    delete m_state;
}

int CRawConsole::pollKey(int timeoutMs) {
    if (timeoutMs < 0)
        timeoutMs = 0;
    if (!m_state) {
        // No console: honour the time-out so that callers looping on it do not spin.
        Sleep(DWORD(timeoutMs));
        return -1;
    }
    const ULONGLONG end = GetTickCount64() + ULONGLONG(timeoutMs);
    for (;;) {
        if (_kbhit())
            return _getch() & 0xFF;
        ULONGLONG now = GetTickCount64();
        if (now >= end)
            return -1;
        Sleep(DWORD(end - now < 10 ? end - now : 10));
    }
}

} // namespace platform
} // namespace vq
