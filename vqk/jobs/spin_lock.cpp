#include "vqk/jobs/spin_lock.h"

namespace vq {

void CSpinLock::lock() const {
    std::uint16_t* flag = ptrAlign16();
    for (;;) {
        std::uint16_t free = 1;
        if (__atomic_compare_exchange_n(flag, &free, std::uint16_t(0), false, __ATOMIC_ACQUIRE, __ATOMIC_RELAXED))
            return;
        // Spin on a plain read until the lock looks free, so waiting threads do not
        // keep stealing the cache line from the holder.
        while (__atomic_load_n(flag, __ATOMIC_RELAXED) == 0) {
        }
    }
}

void CSpinLock::unlock() const { __atomic_exchange_n(ptrAlign16(), std::uint16_t(1), __ATOMIC_RELEASE); }

} // namespace vq
