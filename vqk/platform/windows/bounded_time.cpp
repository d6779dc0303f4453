// The runtime's own local-time conversion, reached only with arguments it accepts, so
// that its invalid-parameter handler never runs.
#include "vqk/platform/bounded.h"

#include <cerrno>
#include <time.h>

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
    if (!t || *t < 0 || *t > kLastTime) {
        invalidate(out);
        return EINVAL;
    }
    __time64_t tt = __time64_t(*t);
    if (::_localtime64_s(out, &tt) != 0) {
        invalidate(out);
        return EINVAL;
    }
    return 0;
}

} // namespace platform
} // namespace vq
