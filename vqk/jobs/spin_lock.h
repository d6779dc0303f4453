// vqk/jobs/spin_lock.h
//
// CSpinLock: a lock for very short sections, one 16-bit flag (1 free, 0 held) that
// lock() takes with an atomic compare-and-exchange, spinning without yielding until
// it succeeds. Never hold it across a blocking call or a long computation: waiting
// threads burn their processor meanwhile. lock() and unlock() are const so that a
// mutable-state member of a const object can be guarded. A copy of a lock is a new,
// free lock: objects holding one stay copyable, and no copy shares a state.
//
//   mutable vq::CSpinLock m_lock;
//   int count() const { vq::CLocker hold(m_lock); return m_count; }
//
// Not recursive: locking twice on one thread waits forever.
#pragma once

#include "vqk/config.h"

#include <cstdint>

namespace vq {

class VQK_API CSpinLock {
public:
    CSpinLock() = default;
    CSpinLock(const CSpinLock&) {}
    CSpinLock& operator=(const CSpinLock&) { return *this; }

    void lock() const;
    void unlock() const;
    // The flag's 2-byte-aligned address inside the object.
    std::uint16_t* ptrAlign16() const { return &m_flag; }

private:
    alignas(2) mutable std::uint16_t m_flag = 1;
};

class VQK_API CLocker {
public:
    explicit CLocker(const CSpinLock& lock) : m_lock(&lock) { m_lock->lock(); }
    ~CLocker() { m_lock->unlock(); }
    CLocker(const CLocker&) = delete;
    CLocker& operator=(const CLocker&) = delete;

private:
    const CSpinLock* m_lock;
};

} // namespace vq
