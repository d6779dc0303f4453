#include "vqk/platform/debugger.h"

#include <csignal>

namespace vq {
namespace platform {

void trapToDebugger() { std::raise(SIGTRAP); }

} // namespace platform
} // namespace vq
