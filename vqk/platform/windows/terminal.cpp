// Windows terminal queries: the runtime's _isatty and the console screen buffer.
#include "vqk/platform/terminal.h"

#include <io.h>
#include <stdio.h>
#include <windows.h>

namespace vq {
namespace platform {

bool stderrIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

int stderrColumns() {
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info))
        return 80;
    int width = info.srWindow.Right - info.srWindow.Left + 1;
    return width > 0 ? width : 80;
}

} // namespace platform
} // namespace vq
