// The runtime's bounded scanning. The C library's scanf knows nothing of the room that
// follows each %s, %c and %[ argument, so the format is scanned one directive at a
// time: each directive (with the literal text before it) is handed to the C library's
// scanner with a trailing %n that tells how far it read, and text fields are first read
// into a scratch block one larger than the caller's room so that an overlong field is
// detected instead of written past the end.
#include "vqk/platform/bounded.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>
#include <type_traits>
#include <vector>

namespace vq {
namespace platform {
namespace {

int scanOne(const char* s, const char* fmt, void* p, int* n) {
    return p ? std::sscanf(s, fmt, p, n) : std::sscanf(s, fmt, n);
}
int scanOne(const wchar_t* s, const wchar_t* fmt, void* p, int* n) {
    return p ? std::swscanf(s, fmt, p, n) : std::swscanf(s, fmt, n);
}

template <class E> size_t textLen(const E* p) {
    size_t n = 0;
    while (p[n])
        ++n;
    return n;
}

// One conversion directive, as parsed from the caller's format.
struct Directive {
    bool suppress = false;
    int width = 0; // 0: none given
    std::string modifier;
    char conv = 0;
    std::string scanset; // for '[': the text after '[' up to and including ']'
};

template <class T> class Scanner {
public:
    Scanner(const T* input, va_list args) : m_in(input) { va_copy(m_args, args); }
    ~Scanner() { va_end(m_args); }

    int run(const T* f) {
        std::basic_string<T> prefix;
        while (*f) {
            if (*f != '%') {
                prefix += *f++;
                continue;
            }
            if (f[1] == '%') {
                prefix += f[0];
                prefix += f[1];
                f += 2;
                continue;
            }
            Directive d;
            if (!parse(++f, d))
                break;
            if (!apply(prefix, d))
                break;
            prefix.clear();
        }
        return m_eof && !m_converted ? -1 : m_count;
    }

private:
    static bool parse(const T*& f, Directive& d) {
        if (*f == '*') {
            d.suppress = true;
            ++f;
        }
        while (*f >= '0' && *f <= '9')
            d.width = d.width * 10 + int(*f++ - '0');
        if (f[0] == 'I' && f[1] == '6' && f[2] == '4') {
            d.modifier = "ll";
            f += 3;
        } else if (f[0] == 'I' && f[1] == '3' && f[2] == '2') {
            f += 3;
        } else {
            while (*f == 'h' || *f == 'l' || *f == 'L' || *f == 'j' || *f == 'z' || *f == 't' ||
                   *f == 'q')
                d.modifier += char(*f++);
        }
        if (!*f)
            return false;
        d.conv = char(*f++);
        if (d.conv == '[') {
            // A ']' right after '[' or "[^" belongs to the set.
            if (*f == '^')
                d.scanset += char(*f++);
            if (*f == ']')
                d.scanset += char(*f++);
            while (*f && *f != ']')
                d.scanset += char(*f++);
            if (!*f)
                return false;
            d.scanset += char(*f++);
        }
        return true;
    }

    static bool isText(char c) { return c == 's' || c == 'c' || c == '[' || c == 'S' || c == 'C'; }

    // Text fields are stored in the width of the scanning function unless the format
    // says otherwise (S and C name the other width), as the runtime does; the C
    // library's own rule for wide scanning differs, so the stored width is spelled out.
    static bool storesWide(const Directive& d) {
        bool other = d.conv == 'S' || d.conv == 'C';
        bool wide = std::is_same<T, wchar_t>::value != other;
        if (d.modifier == "l" || d.modifier == "w")
            wide = true;
        if (d.modifier == "h")
            wide = false;
        return wide;
    }

    std::basic_string<T> build(const std::basic_string<T>& prefix, const Directive& d,
                               int width) const {
        std::string conversion = "%";
        if (d.suppress)
            conversion += '*';
        if (width > 0)
            conversion += std::to_string(width);
        if (isText(d.conv)) {
            if (storesWide(d))
                conversion += 'l';
            char c = d.conv == 'S' ? 's' : d.conv == 'C' ? 'c' : d.conv;
            conversion += c;
            conversion += d.scanset;
        } else {
            conversion += d.modifier;
            conversion += d.conv;
        }
        conversion += "%n";
        std::basic_string<T> out = prefix;
        for (char c : conversion)
            out += T((unsigned char)c);
        return out;
    }

    // Runs one piece; false when the scan must end.
    bool step(const std::basic_string<T>& piece, void* target) {
        int used = -1;
        int r = scanOne(m_in + m_pos, piece.c_str(), target, &used);
        if (used < 0) {
            if (r == -1)
                m_eof = true;
            return false;
        }
        m_pos += size_t(used);
        m_converted = true;
        return true;
    }

    bool apply(const std::basic_string<T>& prefix, const Directive& d) {
        if (d.conv == 'n') {
            std::basic_string<T> piece = prefix;
            piece += T('%');
            piece += T('n');
            int used = -1;
            scanOne(m_in + m_pos, piece.c_str(), nullptr, &used);
            if (used < 0)
                return false;
            m_pos += size_t(used);
            if (!d.suppress)
                storeCount(va_arg(m_args, void*), d.modifier);
            return true;
        }
        if (d.suppress)
            return step(build(prefix, d, d.width), nullptr);
        void* target = va_arg(m_args, void*);
        if (!isText(d.conv)) {
            if (!target || !step(build(prefix, d, d.width), target))
                return false;
            ++m_count;
            return true;
        }
        unsigned room = va_arg(m_args, unsigned);
        if (!target || room == 0)
            return false;
        return storesWide(d) ? scanText(prefix, d, static_cast<wchar_t*>(target), room)
                             : scanText(prefix, d, static_cast<char*>(target), room);
    }

    template <class E>
    bool scanText(const std::basic_string<T>& prefix, const Directive& d, E* dst, unsigned room) {
        bool chars = d.conv == 'c' || d.conv == 'C';
        if (chars) {
            unsigned want = d.width > 0 ? unsigned(d.width) : 1u;
            if (want > room) {
                dst[0] = 0;
                return false;
            }
            if (!step(build(prefix, d, int(want)), dst))
                return false;
            ++m_count;
            return true;
        }
        if (d.width > 0 && unsigned(d.width) < room) {
            if (!step(build(prefix, d, d.width), dst))
                return false;
            ++m_count;
            return true;
        }
        // Read one character more than fits: a field that long does not fit.
        std::vector<E> scratch(size_t(room) + 1, E(0));
        int width = d.width > 0 && unsigned(d.width) < room + 1 ? d.width : int(room);
        if (!step(build(prefix, d, width), scratch.data()))
            return false;
        size_t len = textLen(scratch.data());
        if (len >= room) {
            dst[0] = 0;
            return false;
        }
        std::memcpy(dst, scratch.data(), (len + 1) * sizeof(E));
        ++m_count;
        return true;
    }

    void storeCount(void* p, const std::string& modifier) {
        if (!p)
            return;
        long long v = (long long)m_pos;
        if (modifier == "hh")
            *static_cast<signed char*>(p) = (signed char)v;
        else if (modifier == "h")
            *static_cast<short*>(p) = short(v);
        else if (modifier == "l")
            *static_cast<long*>(p) = long(v);
        else if (modifier == "ll" || modifier == "q" || modifier == "j")
            *static_cast<long long*>(p) = v;
        else if (modifier == "z" || modifier == "t")
            *static_cast<size_t*>(p) = size_t(v);
        else
            *static_cast<int*>(p) = int(v);
    }

    const T* m_in;
    va_list m_args;
    size_t m_pos = 0;
    int m_count = 0;
    bool m_converted = false;
    bool m_eof = false;
};

template <class T> int scanBounded(const T* s, const T* fmt, va_list args) {
    if (!s || !fmt) {
        errno = EINVAL;
        return -1;
    }
    Scanner<T> scanner(s, args);
    return scanner.run(fmt);
}

} // namespace

int vsscanf_s(const char* s, const char* fmt, va_list args) { return scanBounded(s, fmt, args); }
int vswscanf_s(const wchar_t* s, const wchar_t* fmt, va_list args) {
    return scanBounded(s, fmt, args);
}

} // namespace platform
} // namespace vq
