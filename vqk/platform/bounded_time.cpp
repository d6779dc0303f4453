// The runtime's bounded local-time conversion: arguments checked here, the conversion
// itself the system's (localTimeOf).
#include "vqk/platform/bounded.h"

#include <cerrno>

namespace vq {
namespace platform {
namespace {

// The largest time the runtime accepts: 3000-12-31 23:59:59 UTC.
constexpr long long kLastTime = 32535215999LL;

void invalidate(std::tm* t) {
    t->tm_sec = t->tm_min = t->tm_hour = t->tm_mday = t->tm_mon = t->tm_year = -1;
    t->tm_wday = t->tm_yday = t->tm_isdst = -1;
}

} // namespace

int _localtime64_s(std::tm* out, const long long* t) {
    if (!out)
        return EINVAL;
    if (!t || *t < 0 || *t > kLastTime || !localTimeOf(*t, *out)) {
        invalidate(out);
        return EINVAL;
    }
    return 0;
}

} // namespace platform
} // namespace vq
