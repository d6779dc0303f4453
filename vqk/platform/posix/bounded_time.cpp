// The C library's re-entrant local time.
#include "vqk/platform/bounded.h"

namespace vq {
namespace platform {

bool localTimeOf(long long t, std::tm& out) {
    std::time_t tt = std::time_t(t);
    return localtime_r(&tt, &out) != nullptr;
}

} // namespace platform
} // namespace vq
