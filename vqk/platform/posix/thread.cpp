// POSIX threads: pthread_create, then detach, with the entry and its argument carried
// in a small block the new thread frees.
#include "vqk/platform/thread.h"

#include <new>
#include <pthread.h>

namespace vq {
namespace platform {

namespace {

struct SStart {
    FThreadEntry entry;
    void* argument;
};

void* trampoline(void* p) {
    SStart start = *static_cast<SStart*>(p);
    delete static_cast<SStart*>(p);
    start.entry(start.argument);
    return nullptr;
}

} // namespace

bool startThread(FThreadEntry entry, void* argument) {
    if (!entry)
        return false;
    SStart* start = new (std::nothrow) SStart{entry, argument};
    if (!start)
        return false;
    pthread_t id;
    if (pthread_create(&id, nullptr, &trampoline, start) != 0) {
        delete start;
        return false;
    }
    pthread_detach(id);
    return true;
}

} // namespace platform
} // namespace vq
