// Windows threads: the runtime's _beginthread, which closes its own handle when the
// thread ends, so nothing is left to join.
#include "vqk/platform/thread.h"

#include <new>
#include <process.h>
#include <windows.h>

namespace vq {
namespace platform {

namespace {

struct SStart {
    FThreadEntry entry;
    void* argument;
};

void __cdecl trampoline(void* p) {
    SStart start = *static_cast<SStart*>(p);
    delete static_cast<SStart*>(p);
    start.entry(start.argument);
}

} // namespace

bool startThread(FThreadEntry entry, void* argument) {
    if (!entry)
        return false;
    SStart* start = new (std::nothrow) SStart{entry, argument};
    if (!start)
        return false;
    if (_beginthread(&trampoline, 0, start) == uintptr_t(-1)) {
        delete start;
        return false;
    }
    return true;
}

} // namespace platform
} // namespace vq
