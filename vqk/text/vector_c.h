// vqk/text/vector_c.h
//
// TVectorC<T> is the growable array for elements that need construction and
// destruction (strings, records that own memory). It grows on TVector's rule (the
// request plus a quarter of the old capacity above 2047 elements, a half above 4, else
// 4), moves its elements into the new block and never shrinks; clear() destroys the
// elements but keeps the block.
//
//   vq::TVectorC<vq::CStr> names;
//   names.push_back("a");
//   names.add() = "b";              // a new default element, filled in place
//   names.erase(0);                 // names == {"b"}
//
// An element passed in may live inside the array itself: it is copied into the new
// block before the old one is released. A failed allocation throws std::bad_alloc and
// leaves the array as it was.
#pragma once

#include "vqk/text/vector.h"

#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace vq {

template <class T> class TVectorC {
public:
    TVectorC() = default;
    TVectorC(const TVectorC& o) {
        reserve(o.m_size);
        for (const T& v : o)
            emplace_back(v);
    }
    TVectorC(TVectorC&& o) noexcept { swap(o); }
    TVectorC& operator=(const TVectorC& o) {
        if (this != &o) {
            TVectorC copy(o);
            swap(copy);
        }
        return *this;
    }
    TVectorC& operator=(TVectorC&& o) noexcept {
        TVectorC gone(std::move(o));
        swap(gone);
        return *this;
    }
    ~TVectorC() {
        clear();
        ::operator delete(m_data);
    }

    uint32_t size() const { return m_size; }
    uint32_t capacity() const { return m_capacity; }
    bool empty() const { return m_size == 0; }
    T* data() { return m_data; }
    const T* data() const { return m_data; }
    T& operator[](int64_t i) { return m_data[i]; }
    const T& operator[](int64_t i) const { return m_data[i]; }
    T* begin() { return m_data; }
    T* end() { return m_data + m_size; }
    const T* begin() const { return m_data; }
    const T* end() const { return m_data + m_size; }
    T& back() { return m_data[m_size - 1]; }
    const T& back() const { return m_data[m_size - 1]; }

    template <class... A> T& emplace_back(A&&... args) {
        if (m_size < m_capacity)
            return *::new (static_cast<void*>(m_data + m_size++)) T(std::forward<A>(args)...);
        // The new element is made first, in the new block: args may refer to elements of
        // the old one.
        uint32_t cap = grownCapacity(m_capacity, m_size + 1);
        T* block = static_cast<T*>(::operator new(size_t(cap) * sizeof(T)));
        try {
            ::new (static_cast<void*>(block + m_size)) T(std::forward<A>(args)...);
        } catch (...) {
            ::operator delete(block);
            throw;
        }
        try {
            std::uninitialized_move(m_data, m_data + m_size, block);
        } catch (...) {
            block[m_size].~T();
            ::operator delete(block);
            throw;
        }
        replaceBlock(block, cap);
        return m_data[m_size++];
    }
    // Appends a default element and returns it for the caller to fill.
    T& add() { return emplace_back(); }
    void push_back(const T& v) { emplace_back(v); }
    void push_back(T&& v) { emplace_back(std::move(v)); }
    void pop_back() { m_data[--m_size].~T(); }
    // Removes element i; the later elements move down by one.
    void erase(uint32_t i) {
        for (uint32_t j = i; j + 1 < m_size; ++j)
            m_data[j] = std::move(m_data[j + 1]);
        pop_back();
    }
    void clear() {
        while (m_size)
            pop_back();
    }
    void reserve(uint32_t n) {
        if (n <= m_capacity)
            return;
        uint32_t cap = grownCapacity(m_capacity, n);
        T* block = static_cast<T*>(::operator new(size_t(cap) * sizeof(T)));
        try {
            std::uninitialized_move(m_data, m_data + m_size, block);
        } catch (...) {
            ::operator delete(block);
            throw;
        }
        replaceBlock(block, cap);
    }
    // Default-constructs new elements or destroys the ones beyond n.
    void resize(uint32_t n) {
        while (m_size > n)
            pop_back();
        reserve(n);
        while (m_size < n)
            emplace_back();
    }
    void swap(TVectorC& o) noexcept {
        std::swap(m_data, o.m_data);
        std::swap(m_size, o.m_size);
        std::swap(m_capacity, o.m_capacity);
    }

    bool operator==(const TVectorC& o) const {
        if (m_size != o.m_size)
            return false;
        for (uint32_t i = 0; i < m_size; ++i)
            if (!(m_data[i] == o.m_data[i]))
                return false;
        return true;
    }
    bool operator!=(const TVectorC& o) const { return !(*this == o); }

private:
    // Takes a block the elements were just moved into; the moved-from ones are destroyed.
    void replaceBlock(T* block, uint32_t cap) {
        for (uint32_t i = 0; i < m_size; ++i)
            m_data[i].~T();
        ::operator delete(m_data);
        m_data = block;
        m_capacity = cap;
    }

    T* m_data = nullptr;
    uint32_t m_size = 0;
    uint32_t m_capacity = 0;
};

} // namespace vq
