// The runtime's own local-time conversion, reached only with arguments it accepts, so
// that its invalid-parameter handler never runs.
#include "vqk/platform/bounded.h"

#include <time.h>

namespace vq {
namespace platform {

bool localTimeOf(long long t, std::tm& out) {
    __time64_t tt = __time64_t(t);
    return ::_localtime64_s(&out, &tt) == 0;
}

} // namespace platform
} // namespace vq
