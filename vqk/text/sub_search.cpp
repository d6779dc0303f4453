#include "vqk/text/sub_search.h"

#include "vqk/text/str.h"

#include <vector>

namespace vq {

template <class T> CSubSearch<T>::CSubSearch(const T* pattern)
    : m_pattern(pattern), m_m(textLength(pattern)), m_border(m_inline, 32) {
    m_border.resize(uint32_t(m_m));
    if (!m_m)
        return;
    m_border[0] = 0;
    for (int i = 1, b = 0; i < m_m; ++i) {
        while (b > 0 && pattern[i] != pattern[b])
            b = m_border[b - 1];
        if (pattern[i] == pattern[b])
            ++b;
        m_border[i] = b;
    }
}

// The first true occurrence, in one pass over the text.
template <class T> int CSubSearch<T>::leftmost(const T* text, int n) const {
    for (int i = 0, q = 0; i < n; ++i) {
        while (q > 0 && text[i] != m_pattern[q])
            q = m_border[q - 1];
        if (text[i] == m_pattern[q] && ++q == m_m)
            return i - m_m + 1;
    }
    return -1;
}

// The kept matcher from one start. With `seen`, the positions where the count is 0 are
// marked, and a position already marked ends the scan: an earlier scan was there in the
// same state and failed, so this one fails too.
template <class T> int CSubSearch<T>::scan(const T* text, int n, int start, uint64_t* seen) const {
    for (int i = start, k = 0; i < n; ++i) {
        if (seen && k == 0) {
            uint64_t bit = uint64_t(1) << (i & 63);
            if (seen[i >> 6] & bit)
                return -1;
            seen[i >> 6] |= bit;
        }
        if (text[i] == m_pattern[k]) {
            if (++k == m_m)
                return i - m_m + 1;
        } else {
            k = 0;
        }
    }
    return -1;
}

template <class T> int CSubSearch<T>::in(const T* text, int n) const {
    if (n <= 0 || m_m == 0)
        return -1;
    // Every match the kept matcher reports is a true occurrence, and the scan from the
    // leftmost one finds it: no later start is ever tried.
    const int last = leftmost(text, n);
    if (last < 0)
        return -1;
    int at = scan(text, n, 0, nullptr);
    if (at >= 0 || last == 0)
        return at;
    std::vector<uint64_t> seen(size_t(n) / 64 + 1, 0);
    for (int s = 0; s <= last; ++s)
        if ((at = scan(text, n, s, seen.data())) >= 0)
            return at;
    return last;
}

template class CSubSearch<char>;
template class CSubSearch<wchar_t>;

} // namespace vq
