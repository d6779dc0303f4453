#include "vqk/text/runtime_critical.h"

namespace vq {

void runInRuntimeCritical(void (*fn)(void*), void* context) {
    if (!fn)
        return;
    VQK_RUNTIME_CRITICAL
    fn(context);
}

} // namespace vq
