#include "vqk/platform/system_error.h"

#include <windows.h>

namespace vq {
namespace platform {

int lastSystemError() { return int(GetLastError()); }

std::string systemErrorText(int code) {
    char buf[1024] = {};
    DWORD n = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                             DWORD(code), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), buf,
                             sizeof buf, nullptr);
    std::string text(buf, n);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' '))
        text.pop_back();
    if (text.empty())
        text = "Unknown error " + std::to_string(code);
    return text;
}

} // namespace platform
} // namespace vq
