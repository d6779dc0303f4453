// Attribute forms of CXmlOut. Every value is produced and escaped under one lock
// shared by all writers. The typed forms format numbers with
// std::to_chars, whose output the C++ standard defines as printf's for the same
// conversion ("%i", "%u", "%llu", "%.15g") in the C locale, straight into the output
// block. printf's doubles follow the decimal point of the program's locale, so while
// that is not '.' the double forms go through printf like the general form.
#include "vqk/xml/xml_out.h"

#include "vqk/platform/printf.h"
#include "vqk/xml/xml_escape_run.h"

#include <cctype>
#include <cfloat>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <memory>
#include <new>

namespace vq {

namespace {

// Enough for any one number the typed forms write ("%.15g" needs at most 23).
constexpr size_t kNumberRoom = 32;

// Room to escape a value of n bytes in place.
size_t escapeRoom(size_t n) { return n * kXmlEscapeMaxGrowth + 8; }

// A component this small is noise from the arithmetic that produced it: write 0.
double flushToZero(double v) { return std::fabs(v) < DBL_EPSILON ? 0.0 : v; }

// "%.15g"
char* putG15(char* p, double v) {
    return std::to_chars(p, p + kNumberRoom, v, std::chars_format::general, 15).ptr;
}

template <class I> char* putInt(char* p, I v) { return std::to_chars(p, p + kNumberRoom, v).ptr; }

// True while the C library writes doubles with '.' as the decimal point.
bool plainDecimalPoint() {
    const char* point = std::localeconv()->decimal_point;
    return point[0] == '.' && point[1] == '\0';
}

// "%.*f" with 15 decimals into 30 characters, then trailing zeros and a trailing
// decimal point removed; "#INF" when the fixed form does not fit. Appends to `out`,
// which has room for 30 more characters.
char* putTrimmedFixed(char* out, double v) {
    char buf[30];
    int n = std::snprintf(buf, sizeof buf, "%.*f", 15, v);
    if (n < 0 || n >= int(sizeof buf)) {
        std::memcpy(out, "#INF", 4);
        return out + 4;
    }
    const char* point = std::localeconv()->decimal_point;
    size_t pointLength = std::strlen(point);
    const char* at = pointLength ? std::strstr(buf, point) : nullptr;
    if (at) {
        int digits = int(at - buf + pointLength); // the zeros stop here
        while (n > digits && buf[n - 1] == '0')
            --n;
        if (n == digits)
            n -= int(pointLength);
    }
    std::memcpy(out, buf, size_t(n));
    return out + n;
}

std::mutex& attrValueLock() {
    static std::mutex lock;
    return lock;
}

} // namespace

void CXmlOut::beginAttr() {
    if (m_current && m_current->m_state == CXmlOutElem::eNothing)
        m_current->head(CXmlOutElem::eHead);
}

char* CXmlOut::openAttr(const char* name, size_t valueRoom) {
    size_t nameLength = name ? std::strlen(name) : 0;
    makeRoom(nameLength + valueRoom + 4);
    char* p = m_escaped.data() + m_escaped.size();
    *p++ = ' ';
    if (nameLength) {
        std::memcpy(p, name, nameLength);
        if (m_smallFirstLetter)
            *p = char(std::tolower(static_cast<unsigned char>(*p)));
        p += nameLength;
    }
    *p++ = '=';
    *p++ = '"';
    return p;
}

void CXmlOut::closeAttr(char* end) {
    *end++ = '"';
    m_escaped.resize(uint32_t(end - m_escaped.data()));
    endOp();
}

template <class Fill> void CXmlOut::attrWith(const char* name, size_t valueRoom, Fill fill) {
    if (!m_stream)
        return;
    beginAttr();
    {
        // One lock for all writers. A mutex rather than an OpenMP critical section:
        // writers also run on threads no OpenMP runtime started, which clang's runtime
        // does not support under the thread sanitizer, and the sanitizer sees the mutex.
        // A failed allocation drops this attribute, and only this attribute.
        std::lock_guard<std::mutex> hold(attrValueLock());
        uint32_t mark = m_escaped.size();
        try {
            char* p = openAttr(name, valueRoom);
            closeAttr(fill(p));
        } catch (...) {
            m_escaped.resize(mark);
            endOp();
        }
    }
}

char* CXmlOut::putEscaped(char* p, const char* value, size_t n) {
    if (n > size_t(INT32_MAX))
        throw std::bad_alloc(); // no block of the writer can hold it: the value is dropped
    if (escapeRoom(n) <= m_escaped.capacity() - uint32_t(p - m_escaped.data()))
        return escapeXmlInto(p, value, n, xmlAttrEscapes());
    // Too long for the room reserved: let the block grow as the value needs.
    m_escaped.resize(uint32_t(p - m_escaped.data()));
    appendXmlEscaped(m_escaped, value, n, xmlAttrEscapes());
    makeRoom(1);
    return m_escaped.data() + m_escaped.size();
}

void CXmlOut::vattr(const char* name, const char* format, va_list args) {
    if (!format) {
        if (!m_stream)
            return;
        beginAttr();
        put(' ');
        put(name);
        endOp();
        return;
    }
    attrWith(name, escapeRoom(kValueBufferSize), [&](char* p) { return putFormatted(p, format, args); });
}

char* CXmlOut::putFormatted(char* p, const char* runtimeFormat, va_list args) {
    platform::CNativeFormat<char> native(runtimeFormat);
    const char* format = native.str();
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(m_value, sizeof m_value, format, copy);
    va_end(copy);
    if (n <= 0)
        return p; // nothing, or text the C library cannot convert
    if (n + 1 < kValueBufferSize)
        return putEscaped(p, m_value, size_t(n));
    std::unique_ptr<char[]> large(new (std::nothrow) char[size_t(n) + 1]);
    if (!large)
        return p;
    va_copy(copy, args);
    std::vsnprintf(large.get(), size_t(n) + 1, format, copy);
    va_end(copy);
    return putEscaped(p, large.get(), size_t(n));
}

char* CXmlOut::putFormatted(char* p, const char* format, ...) {
    va_list args;
    va_start(args, format);
    p = putFormatted(p, format, args);
    va_end(args);
    return p;
}

void CXmlOut::attr(const char* name, const char* format, ...) {
    va_list args;
    va_start(args, format);
    vattr(name, format, args);
    va_end(args);
}

void CXmlOut::attrBool(const char* name, bool value) { attrInt(name, value ? 1 : 0); }

void CXmlOut::attrInt(const char* name, int value) {
    attrWith(name, kNumberRoom, [&](char* p) { return putInt(p, value); });
}

void CXmlOut::attrUint(const char* name, unsigned int value) {
    attrWith(name, kNumberRoom, [&](char* p) { return putInt(p, value); });
}

void CXmlOut::attrID1(const char* name, uint64 value) {
    attrWith(name, kNumberRoom, [&](char* p) { return putInt(p, value); });
}

void CXmlOut::attrD1(const char* name, double value) {
    attrWith(name, kNumberRoom, [&](char* p) {
        return plainDecimalPoint() ? putG15(p, value) : putFormatted(p, "%.15g", value);
    });
}

void CXmlOut::attrInts(const char* name, const int* v, int n) {
    attrWith(name, size_t(n) * (kNumberRoom + 1), [&](char* p) {
        for (int i = 0; i < n; ++i) {
            if (i)
                *p++ = ' ';
            p = putInt(p, v[i]);
        }
        return p;
    });
}

void CXmlOut::attrDoubles(const char* name, const double* v, int n) {
    attrWith(name, size_t(n) * (kNumberRoom + 1), [&](char* p) {
        bool plain = plainDecimalPoint();
        for (int i = 0; i < n; ++i) {
            if (i)
                *p++ = ' ';
            p = plain ? putG15(p, flushToZero(v[i])) : putFormatted(p, "%.15g", flushToZero(v[i]));
        }
        return p;
    });
}

void CXmlOut::attrI2(const char* name, int a, int b) {
    const int v[] = {a, b};
    attrInts(name, v, 2);
}

void CXmlOut::attrB2(const char* name, bool a, bool b) {
    const int v[] = {a ? 1 : 0, b ? 1 : 0};
    attrInts(name, v, 2);
}

void CXmlOut::attrI3(const char* name, int a, int b, int c) {
    const int v[] = {a, b, c};
    attrInts(name, v, 3);
}

void CXmlOut::attrD2(const char* name, double a, double b) {
    const double v[] = {a, b};
    attrDoubles(name, v, 2);
}

void CXmlOut::attrD3(const char* name, double a, double b, double c) {
    const double v[] = {a, b, c};
    attrDoubles(name, v, 3);
}

void CXmlOut::attrD4(const char* name, double a, double b, double c, double d) {
    const double v[] = {a, b, c, d};
    attrDoubles(name, v, 4);
}

void CXmlOut::attrDec3(const char* name, double a, double b, double c) {
    attrWith(name, escapeRoom(3 * 30), [&](char* p) {
        char joined[3 * 30];
        char* end = putTrimmedFixed(joined, flushToZero(a));
        *end++ = ' ';
        end = putTrimmedFixed(end, flushToZero(b));
        *end++ = ' ';
        end = putTrimmedFixed(end, flushToZero(c));
        return putEscaped(p, joined, size_t(end - joined));
    });
}

void CXmlOut::attrStr(const char* name, const char* value) {
    size_t n = value ? std::strlen(value) : 0;
    attrWith(name, n < size_t(kValueBufferSize) ? escapeRoom(n) : 0,
             [&](char* p) { return n ? putEscaped(p, value, n) : p; });
}

void CXmlOut::attrStr(const char* name, const CTStr<char>& value) { attrStr(name, value.str()); }

void CXmlOut::attrStr(const char* name, const wchar_t* value) { attr(name, "%ls", value ? value : L""); }

void CXmlOut::attrStr(const char* name, const CTStr<wchar_t>& value) { attr(name, "%ls", value.str()); }

} // namespace vq
