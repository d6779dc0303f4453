// The runtime's bounded asctime: the same text on every system, written here because the
// C library's own has no size and the Windows runtime's rejects through its
// invalid-parameter handler.
#include "vqk/platform/bounded.h"

#include <cerrno>
#include <cstdio>

namespace vq {
namespace platform {

int asctime_s(char* buf, size_t size, const std::tm* t) {
    static const char days[7][4] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char months[12][4] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    if (!buf || size == 0)
        return EINVAL;
    buf[0] = 0;
    if (size < 26 || !t)
        return EINVAL;
    if (t->tm_wday < 0 || t->tm_wday > 6 || t->tm_mon < 0 || t->tm_mon > 11 || t->tm_mday < 1 ||
        t->tm_mday > 31 || t->tm_hour < 0 || t->tm_hour > 23 || t->tm_min < 0 ||
        t->tm_min > 59 || t->tm_sec < 0 || t->tm_sec > 60 || t->tm_year < 0 ||
        t->tm_year > 8099)
        return EINVAL;
    std::snprintf(buf, size, "%s %s %02d %02d:%02d:%02d %04d\n", days[t->tm_wday],
                  months[t->tm_mon], t->tm_mday, t->tm_hour, t->tm_min, t->tm_sec,
                  t->tm_year + 1900);
    return 0;
}

} // namespace platform
} // namespace vq
