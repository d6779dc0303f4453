// vqk/text/fixed_text.h
//
// Text built in a fixed array, for code that must not allocate or call printf: crash
// handlers above all. Pieces that do not fit are cut; the text stays terminated.
//
//   vq::CFixedText<256> t;
//   t.add("signal ").dec(11).add(" at ").hex(0x10);   // "signal 11 at 0x0000000000000010"
//   write(fd, t.str(), t.size());
#pragma once

#include <cstddef>
#include <cstdint>

namespace vq {

template <size_t N> class CFixedText {
public:
    CFixedText& add(const char* s) {
        while (s && *s && m_n + 1 < N)
            m_buf[m_n++] = *s++;
        m_buf[m_n] = 0;
        return *this;
    }
    // At least `width` digits, zero-padded.
    CFixedText& dec(long long v, int width = 1) {
        char digits[24];
        int n = 0;
        unsigned long long u = v < 0 ? 0ull - static_cast<unsigned long long>(v)
                                     : static_cast<unsigned long long>(v);
        do
            digits[n++] = char('0' + u % 10);
        while ((u /= 10) != 0);
        while (n < width && n < int(sizeof digits))
            digits[n++] = '0';
        if (v < 0)
            add("-");
        while (n > 0 && m_n + 1 < N)
            m_buf[m_n++] = digits[--n];
        m_buf[m_n] = 0;
        return *this;
    }
    // "0x" and every hex digit of an address.
    CFixedText& hex(uintptr_t v) {
        add("0x");
        for (int i = int(2 * sizeof v) - 1; i >= 0 && m_n + 1 < N; --i)
            m_buf[m_n++] = "0123456789abcdef"[(v >> (4 * i)) & 15];
        m_buf[m_n] = 0;
        return *this;
    }
    void clear() {
        m_n = 0;
        m_buf[0] = 0;
    }
    const char* str() const { return m_buf; }
    size_t size() const { return m_n; }

private:
    char m_buf[N] = {};
    size_t m_n = 0;
};

} // namespace vq
