// The local time as text, through each system's conversion (localTimeOf).
#include "vqk/platform/log_clock.h"
#include "vqk/platform/bounded.h"

#include <ctime>

namespace vq {
namespace platform {

bool localTimeText(char* buf, size_t size, const char* format) {
    if (!buf || size == 0)
        return false;
    buf[0] = 0;
    std::time_t now = std::time(nullptr);
    std::tm parts{};
    if (now == std::time_t(-1) || !localTimeOf(now, parts) || !format)
        return false;
    if (std::strftime(buf, size, format, &parts) > 0)
        return true;
    buf[0] = 0;
    return false;
}

} // namespace platform
} // namespace vq
