// vqk/text/scratch_block.h
//
// ScratchBlock<T> is a block to print into beside a text whose own characters may be
// an argument of the print (a string formatted from itself): room inside the object
// for short texts, the thread's reused block for longer ones and a block of its own for
// very long ones, so that printing a string from itself allocates nothing in the usual
// case. Internal to the library.
//
//   vq::ScratchBlock<char> scratch(size_t(n) + 1);
//   std::snprintf(scratch.data(), size_t(n) + 1, "%s/%s", own, name);
//   std::memcpy(own, scratch.data(), size_t(n) + 1);
//
// Allocation failure throws std::bad_alloc; nothing else fails.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace vq {

template <class T> class ScratchBlock {
public:
    // Room for n elements (none asked for when n is 0).
    explicit ScratchBlock(size_t n) {
        if (n <= kLocal) {
            m_data = m_local;
            return;
        }
        if (n > kKeep) {
            m_own.reset(new T[n]);
            m_data = m_own.get();
            return;
        }
        thread_local std::vector<T> reused;
        if (reused.size() < n)
            reused.resize(n);
        m_data = reused.data();
    }
    ScratchBlock(const ScratchBlock&) = delete;
    ScratchBlock& operator=(const ScratchBlock&) = delete;
    T* data() { return m_data; }

private:
    static constexpr size_t kLocal = 512;
    static constexpr size_t kKeep = 65536;
    T m_local[kLocal];
    std::unique_ptr<T[]> m_own;
    T* m_data = nullptr;
};

} // namespace vq
