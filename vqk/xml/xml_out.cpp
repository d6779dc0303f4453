#include "vqk/xml/xml_out.h"

#include "vqk/text/convert.h"

#include <cstdint>
#include <cstring>
#include <new>

namespace vq {

CXmlOut xout(stdout, nullptr);

namespace {

const char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

} // namespace

CXmlOut::CXmlOut() { setPending(&m_escaped); }

CXmlOut::CXmlOut(const char* path) : COutFile(path) { setPending(&m_escaped); }

CXmlOut::CXmlOut(const wchar_t* path) : COutFile(path) { setPending(&m_escaped); }

CXmlOut::CXmlOut(FILE* stream, int (*print)(FILE*, const char*, ...))
    : COutFile(stream, print == &std::fprintf ? nullptr : print) {
    setPending(&m_escaped);
}

CXmlOut::~CXmlOut() {
    // The buffers die before the file output closes the stream: empty them first.
    writePending();
    setPending(nullptr);
    m_current = nullptr;
}

bool CXmlOut::open(const wchar_t* path, bool append, bool unbuffered) {
    close();
    if (!COutFile::open(path, append, unbuffered))
        return false;
    if (!append) {
        put(kDeclaration, sizeof kDeclaration - 1);
        endOp();
    }
    return true;
}

bool CXmlOut::open(const char* path, bool append, bool unbuffered) {
    CTStr<wchar_t> wide;
    strtowstr(wide, path, true);
    return open(wide.str(), append, unbuffered);
}

void CXmlOut::close() {
    m_current = nullptr;
    COutFile::close();
    m_escaped.clear();
    if (++m_generation == 0)
        m_generation = 1;
}

void CXmlOut::setIndent(const char* indent) { m_indent = indent; }

void CXmlOut::putDirect(const char* s, size_t n) {
    writePending();
    writeBlock(s, n);
}

void CXmlOut::growRoom(size_t n) {
    uint64_t need = uint64_t(m_escaped.size()) + n;
    if (need > uint64_t(INT32_MAX))
        throw std::bad_alloc();
    m_escaped.reserve(uint32_t(need));
}

void CXmlOut::putIndent(long long times) {
    if (times <= 0 || !m_indent || !*m_indent)
        return;
    const char* unit = m_indent;
    size_t n = std::strlen(unit);
    // The caller may change the string between calls, so it is looked at every time.
    // Printed as a format without arguments, "%%" is one '%'; any other conversion
    // would read an argument that is not there, so its '%' is written as it is.
    TVector<char> printed;
    if (std::memchr(unit, '%', n)) {
        for (size_t i = 0; i < n; ++i) {
            printed.push_back(unit[i]);
            if (unit[i] == '%' && unit[i + 1] == '%')
                ++i;
        }
        n = printed.size();
        unit = printed.data();
    }
    for (long long i = 0; i < times; ++i) {
        put(unit, n);
        // An absurd count must not gather gigabytes first.
        if (m_escaped.size() >= kDirectBytes)
            writePending();
    }
}

void CXmlOut::shift(int n) {
    if (!m_stream || !m_indent)
        return;
    putIndent(n >= 0 ? n : (m_current ? m_current->m_depth : 0));
    endOp();
}

void CXmlOut::vraw(const char* format, va_list args) {
    if (!m_stream)
        return;
    if (m_current)
        m_current->body(CXmlOutElem::eBodyText);
    if (format)
        vprint(format, args); // after the gathered bytes
    else
        endOp();
}

void CXmlOut::operator()(const char* format, ...) {
    va_list args;
    va_start(args, format);
    vraw(format, args);
    va_end(args);
}

void CXmlOut::text(const char* name, const char* format, ...) {
    if (!m_stream)
        return;
    CXmlOutElem e(*this, name);
    e.body(CXmlOutElem::eBodyText);
    if (format) {
        va_list args;
        va_start(args, format);
        vprint(format, args);
        va_end(args);
    }
}

CXmlOut& CXmlOut::operator<<(const char* s) {
    (*this)("%s", s ? s : "");
    return *this;
}

CXmlOut& CXmlOut::operator<<(int value) {
    (*this)("%i", value);
    return *this;
}

CXmlOut& CXmlOut::operator<<(double value) {
    (*this)("%.15g", value);
    return *this;
}

void CXmlOut::write(const char* data, int length) {
    if (!m_stream)
        return;
    if (m_current)
        m_current->body(CXmlOutElem::eBodyText);
    if (data && length > 0)
        writeBlock(data, size_t(length));
    else
        endOp();
}

void CXmlOut::comment(const char* text) {
    if (!m_stream)
        return;
    shift(-1); // the depth of the element holding the comment, not one more
    (*this)("<!-- %s -->\n", text ? text : "");
}

void CXmlOut::indent(int n) {
    if (!m_stream || !m_indent)
        return;
    if (m_current)
        m_current->body(CXmlOutElem::eBodyText);
    long long depth = m_current ? m_current->m_depth : 0;
    putIndent(n > 0 ? n : depth - n);
    endOp();
}

} // namespace vq
