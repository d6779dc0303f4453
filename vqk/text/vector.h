// vqk/text/vector.h
//
// TVector<T> is the growable array behind the string class and every array of the
// library. It is meant for trivially copyable elements: growth moves them with memcpy.
//
// The capacity is kept signed so that one field tells both the room and who owns it:
// negative means an owned heap block, positive a borrowed block (an inline buffer or
// the caller's) that is never freed and never written past. Growth of an owned block
// adds a quarter of the old capacity above 2047 elements, a half above 4, else 4;
// a borrowed block is left in place and replaced by a heap block of old capacity plus
// the request. The array never shrinks.
//
//   char buf[64];
//   vq::TVector<char> v(buf, 64);   // fills buf until more than 64 are needed
//   v.push_back('x');
//
// Growth beyond what a signed 32-bit capacity can describe throws std::bad_alloc, as
// does a failed allocation; nothing else fails.
//
// TVectorC<T> (vector_c.h, included here) is the array of class objects on the same
// growth rule.
#pragma once

#include "vqk/config.h"

#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace vq {

// The capacity is a signed 32-bit count: a larger block cannot be described.
inline uint32_t checkedCapacity(uint64_t n) {
    if (n > uint64_t(INT32_MAX))
        throw std::bad_alloc();
    return uint32_t(n);
}

// The capacity an owned block of `capacity` elements grows to when `needed` elements
// must fit: a quarter of the old capacity more above 2047, a half above 4, else 4.
inline uint32_t grownCapacity(uint32_t capacity, uint32_t needed) {
    uint32_t extra = capacity > 2047 ? capacity / 4 : (capacity > 4 ? capacity / 2 : 4);
    return checkedCapacity(uint64_t(needed) + extra);
}

template <class T> class TVector {
    static_assert(std::is_trivially_copyable<T>::value, "TVector holds trivially copyable elements");

public:
    TVector() = default;
    // Borrows the caller's block of `capacity` elements; it is never freed.
    TVector(T* block, int capacity) : m_data(block), m_size(0), m_capacity(capacity) {}
    TVector(const TVector& o) { assign(o.m_data, o.m_size); }
    TVector(TVector&& o) noexcept { take(o); }
    TVector& operator=(const TVector& o) {
        if (this != &o) {
            m_size = 0;
            assign(o.m_data, o.m_size);
        }
        return *this;
    }
    TVector& operator=(TVector&& o) noexcept {
        if (this != &o) {
            release();
            take(o);
        }
        return *this;
    }
    virtual ~TVector() { release(); }

    // Makes room for at least n elements; the elements in use are kept.
    virtual void grow(uint32_t n) { releaseBlock(growKeepingOld(n)); }

    // Grows as grow() does, but hands back the owned block it replaced (null when
    // none) instead of freeing it, for a caller that still reads from the old text;
    // free it with releaseBlock once done.
    T* growKeepingOld(uint32_t n) {
        if (n <= capacity())
            return nullptr;
        if (m_capacity > 0) {
            moveTo(checkedCapacity(uint64_t(m_capacity) + n));
            return nullptr;
        }
        T* old = m_capacity < 0 ? m_data : nullptr;
        moveTo(grownCapacity(uint32_t(-int64_t(m_capacity)), n));
        return old;
    }
    static void releaseBlock(T* block) { ::operator delete(block); }

    // Points the array at a borrowed block, dropping an owned one.
    void borrow(T* block, int capacity) {
        release();
        m_data = block;
        m_size = 0;
        m_capacity = capacity;
    }

    T* data() { return m_data; }
    const T* data() const { return m_data; }
    uint32_t size() const { return m_size; }
    uint32_t capacity() const {
        return m_capacity < 0 ? uint32_t(-int64_t(m_capacity)) : uint32_t(m_capacity);
    }
    int32_t signedCapacity() const { return m_capacity; }
    bool owned() const { return m_capacity < 0; }
    bool empty() const { return m_size == 0; }

    T& operator[](int64_t i) { return m_data[i]; }
    const T& operator[](int64_t i) const { return m_data[i]; }
    T* begin() { return m_data; }
    T* end() { return m_data + m_size; }
    const T* begin() const { return m_data; }
    const T* end() const { return m_data + m_size; }
    T& back() { return m_data[m_size - 1]; }

    // Sets the number of elements in use, growing when needed; new elements are not
    // initialised.
    void resize(uint32_t n) {
        if (n > capacity())
            grow(n);
        m_size = n;
    }
    void reserve(uint32_t n) { grow(n); }
    void clear() { m_size = 0; }
    void push_back(const T& v) {
        if (m_size + 1 > capacity()) {
            T copy = v; // v may live inside the block being replaced
            grow(m_size + 1);
            m_data[m_size++] = copy;
            return;
        }
        m_data[m_size++] = v;
    }
    void append(const T* p, uint32_t n) {
        if (!n)
            return;
        // p may point into this array's own block: the block a growth replaces is
        // freed only after the copy.
        T* old = growKeepingOld(m_size + n);
        std::memmove(static_cast<void*>(m_data + m_size), p, n * sizeof(T));
        m_size += n;
        releaseBlock(old);
    }
    void assign(const T* p, uint32_t n) {
        m_size = 0;
        append(p, n);
    }

private:
    // Moves the elements in use to a new block of cap elements (cap always exceeds the
    // size; the bound only tells the compiler so). The old block is left to the caller.
    void moveTo(uint32_t cap) {
        T* p = allocate(cap);
        uint32_t keep = m_size < cap ? m_size : cap;
        if (keep)
            std::memcpy(static_cast<void*>(p), m_data, size_t(keep) * sizeof(T));
        m_data = p;
        m_capacity = -int32_t(cap);
    }
    static T* allocate(uint32_t n) { return static_cast<T*>(::operator new(size_t(n) * sizeof(T))); }
    void release() {
        if (m_capacity < 0)
            ::operator delete(m_data);
        m_data = nullptr;
        m_size = 0;
        m_capacity = 0;
    }
    void take(TVector& o) {
        if (o.m_capacity > 0) { // a borrowed block stays with its owner: copy
            m_data = nullptr;
            m_size = 0;
            m_capacity = 0;
            assign(o.m_data, o.m_size);
            return;
        }
        m_data = o.m_data;
        m_size = o.m_size;
        m_capacity = o.m_capacity;
        o.m_data = nullptr;
        o.m_size = 0;
        o.m_capacity = 0;
    }

    T* m_data = nullptr;
    uint32_t m_size = 0;
    int32_t m_capacity = 0;
};

// The character array given to CTStr::deleteChars.
template <class T> using TAc = TVector<T>;

} // namespace vq

#include "vqk/text/vector_c.h"
