// vqk/platform/console.h
//
// Key polling on the process's console, for the job host's pause. While a CRawConsole
// is alive a terminal standard input is in raw mode (no echo, no line buffering, Ctrl-C
// read as the key 3 rather than sent as a signal), so a single key press can be seen at
// once; its destructor restores the terminal.
//
//   vq::platform::CRawConsole console;
//   int key = console.pollKey(100);     // -1 when no key came within 100 ms
//
// Without a terminal on standard input no key ever arrives: pollKey sleeps for its
// time-out and returns -1, and nothing is read from a pipe or a file.
#pragma once

#include "vqk/config.h"

namespace vq {
namespace platform {

// True when standard input is an interactive terminal.
VQK_API bool stdinIsTerminal();

class VQK_API CRawConsole {
public:
    CRawConsole();
    ~CRawConsole();
    CRawConsole(const CRawConsole&) = delete;
    CRawConsole& operator=(const CRawConsole&) = delete;

    // True when standard input is a terminal that was switched to raw mode.
    bool active() const { return m_state != nullptr; }
    // Waits up to timeoutMs (at least 0) for a key; returns its code (0..255) without
    // echo, or -1 when none arrived.
    int pollKey(int timeoutMs);

private:
    struct SState;
    SState* m_state = nullptr;
};

} // namespace platform
} // namespace vq
