// Attribute forms of CXmlOut. Every value is produced and escaped inside one named
// critical section shared by all writers; the typed forms format numbers with
// std::to_chars, whose output the C++ standard defines as printf's for the same
// conversion, so only the general form pays for printf.
#include "vqk/xml/xml_out.h"

#include "vqk/xml/xml_escape_run.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

namespace vq {

namespace {

// A component this small is noise from the arithmetic that produced it: write 0.
double flushToZero(double v) { return std::fabs(v) < DBL_EPSILON ? 0.0 : v; }

// "%.15g"
char* putG15(char* p, char* end, double v) {
    return std::to_chars(p, end, v, std::chars_format::general, 15).ptr;
}

template <class I> char* putInt(char* p, char* end, I v) { return std::to_chars(p, end, v).ptr; }

// "%.*f" with 15 decimals into 30 characters, then trailing zeros and a trailing
// point removed; "#INF" when the fixed form does not fit.
char* putTrimmedFixed(char* p, double v) {
    char buf[30];
    int n = std::snprintf(buf, sizeof buf, "%.*f", 15, v);
    if (n < 0 || n >= int(sizeof buf)) {
        std::memcpy(p, "#INF", 4);
        return p + 4;
    }
    if (std::memchr(buf, '.', size_t(n))) {
        while (n > 0 && buf[n - 1] == '0')
            --n;
        if (n > 0 && buf[n - 1] == '.')
            --n;
    }
    std::memcpy(p, buf, size_t(n));
    return p + n;
}

} // namespace

void CXmlOut::beginAttr() {
    if (m_current && m_current->m_state == CXmlOutElem::eNothing)
        m_current->head(CXmlOutElem::eHead);
}

template <class Fill> void CXmlOut::attrWith(const char* name, Fill fill) {
    if (!m_stream)
        return;
    beginAttr();
#pragma omp critical(vqk_xml_attr_value)
    {
        // Nothing may leave a critical section by an exception: a failed allocation
        // drops this attribute instead.
        try {
            put(' ');
            putAttrName(name);
            put("=\"", 2);
            fill();
            put('"');
            flushPending();
        } catch (...) {
            m_escaped.clear();
        }
    }
}

void CXmlOut::vattr(const char* name, const char* format, va_list args) {
    if (!format) {
        if (!m_stream)
            return;
        beginAttr();
        put(' ');
        put(name);
        flushPending();
        return;
    }
    attrWith(name, [&] {
        va_list copy;
        va_copy(copy, args);
        int n = std::vsnprintf(m_value, sizeof m_value, format, copy);
        va_end(copy);
        if (n <= 0)
            return; // nothing, or text the C library cannot convert
        const char* value = m_value;
        std::unique_ptr<char[]> large;
        if (n + 1 >= kValueBufferSize) {
            large.reset(new (std::nothrow) char[size_t(n) + 1]);
            if (!large)
                return;
            std::vsnprintf(large.get(), size_t(n) + 1, format, args);
            value = large.get();
        }
        appendXmlEscaped(m_escaped, value, size_t(n), xmlAttrEscapes());
    });
}

void CXmlOut::attr(const char* name, const char* format, ...) {
    va_list args;
    va_start(args, format);
    vattr(name, format, args);
    va_end(args);
}

void CXmlOut::attrBool(const char* name, bool value) { attrInt(name, value ? 1 : 0); }

void CXmlOut::attrInt(const char* name, int value) {
    attrWith(name, [&] { put(m_value, size_t(putInt(m_value, m_value + 16, value) - m_value)); });
}

void CXmlOut::attrUint(const char* name, unsigned int value) {
    attrWith(name, [&] { put(m_value, size_t(putInt(m_value, m_value + 16, value) - m_value)); });
}

void CXmlOut::attrID1(const char* name, uint64 value) {
    attrWith(name, [&] { put(m_value, size_t(putInt(m_value, m_value + 24, value) - m_value)); });
}

void CXmlOut::attrD1(const char* name, double value) {
    attrWith(name, [&] { put(m_value, size_t(putG15(m_value, m_value + 32, value) - m_value)); });
}

void CXmlOut::attrInts(const char* name, const int* v, int n) {
    attrWith(name, [&] {
        char* p = m_value;
        for (int i = 0; i < n; ++i) {
            if (i)
                *p++ = ' ';
            p = putInt(p, p + 16, v[i]);
        }
        put(m_value, size_t(p - m_value));
    });
}

void CXmlOut::attrDoubles(const char* name, const double* v, int n) {
    attrWith(name, [&] {
        char* p = m_value;
        for (int i = 0; i < n; ++i) {
            if (i)
                *p++ = ' ';
            p = putG15(p, p + 32, flushToZero(v[i]));
        }
        put(m_value, size_t(p - m_value));
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
    attrWith(name, [&] {
        char* p = m_value;
        p = putTrimmedFixed(p, flushToZero(a));
        *p++ = ' ';
        p = putTrimmedFixed(p, flushToZero(b));
        *p++ = ' ';
        p = putTrimmedFixed(p, flushToZero(c));
        put(m_value, size_t(p - m_value));
    });
}

void CXmlOut::attrStr(const char* name, const char* value) {
    attrWith(name, [&] {
        if (value)
            appendXmlEscaped(m_escaped, value, std::strlen(value), xmlAttrEscapes());
    });
}

void CXmlOut::attrStr(const char* name, const CTStr<char>& value) {
    attrWith(name, [&] {
        appendXmlEscaped(m_escaped, value.str(), size_t(value.length()), xmlAttrEscapes());
    });
}

void CXmlOut::attrStr(const char* name, const wchar_t* value) { attr(name, "%ls", value ? value : L""); }

void CXmlOut::attrStr(const char* name, const CTStr<wchar_t>& value) { attr(name, "%ls", value.str()); }

} // namespace vq
