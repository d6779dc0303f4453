#include "vqk/platform/debugger.h"

#include <windows.h>

namespace vq {
namespace platform {

void trapToDebugger() { DebugBreak(); }

} // namespace platform
} // namespace vq
