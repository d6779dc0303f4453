// CXmlIn: the file it owns, the tag operations and the text between tags.
#include "vqk/xml/xml_in.h"

#include "vqk/platform/file_open_read.h"
#include "vqk/platform/stream_byte.h"
#include "vqk/text/convert.h"

#include <cctype>
#include <cstring>
#include <cwchar>
#include <new>

namespace vq {

const char* const xmlInErrUnexpectedTag = "Unexpected tag";
const char* const xmlInErrMissedAttr = "Missed required attribute";
const char* const xmlInErrNotOpen = "File is not open";

namespace {

// The largest text getText takes: the string's array counts in signed 32 bits.
const uint32_t kMaxText = 0x3FFFFFFF;

// Tokenizer results become exceptions here, so every caller sees the same texts.
void throwIf(const char* error) {
    if (error)
        throw error;
}

} // namespace

CXmlIn::CXmlIn() { m_path[0] = 0; }

CXmlIn::CXmlIn(const char* path) : CXmlIn() {
    if (!open(path))
        throw xmlInErrNotOpen;
}

CXmlIn::CXmlIn(const wchar_t* path) : CXmlIn() {
    if (!open(path))
        throw xmlInErrNotOpen;
}

CXmlIn::~CXmlIn() { close(); }

bool CXmlIn::open(const char* path) {
    CTStr<wchar_t> wide;
    strtowstr(wide, path, true);
    return open(wide.str());
}

bool CXmlIn::open(const wchar_t* path) {
    close();
    FILE* f = platform::openForReading(path);
    if (!f)
        return false;
    init(f);
    // A path that does not fit is not cut short: a truncated name would point at
    // another file, an empty one points at none.
    size_t n = std::wcslen(path);
    if (n < size_t(ePathSize))
        std::wmemcpy(m_path, path, n + 1);
    return true;
}

void CXmlIn::close() {
    if (m_file)
        std::fclose(m_file);
    init(nullptr);
    m_path[0] = 0;
}

CTStr<char> CXmlIn::fileName() const {
    CTStr<char> s;
    wstrtostr(s, m_path, true);
    return s;
}

void CXmlIn::requireStream() const {
    if (!m_file)
        throw xmlInErrNotOpen;
}

void CXmlIn::readAny() {
    requireStream();
    throwIf(_readBegHeader(0));
}

void CXmlIn::peek() {
    readAny();
    m_hold = true;
}

void CXmlIn::read(const char* name) {
    readAny();
    if (name && !ApXin::isTag(name))
        throw failAt(xmlInErrUnexpectedTag, m_length + 2);
}

bool CXmlIn::read2(const char* name) {
    if (!m_file || _readBegHeader(0))
        return false;
    return !name || ApXin::isTag(name);
}

bool CXmlIn::readHeader() {
    requireStream();
    throwIf(_readBegHeader(1));
    if (std::strcmp(m_tag, "?xml") == 0)
        return true;
    // Whatever came first goes back: an element for the next read, and equally a
    // comment or processing instruction, which then arrives as a tag of its own.
    m_hold = true;
    return false;
}

void CXmlIn::readEnd(const char* name) {
    requireStream();
    throwIf(_readEnd(name));
}

void CXmlIn::skip() {
    requireStream();
    throwIf(_skip());
}

bool CXmlIn::isNextTag(const char* name) {
    peek();
    return isTag(name);
}

void CXmlIn::getNextTag(CTStr<char>& name) {
    peek();
    name = m_tag;
}

bool CXmlIn::skipElem(const char* name) {
    readAny();
    if (name && !ApXin::isTag(name)) {
        m_hold = true;
        return false;
    }
    // An empty element or an end tag has nothing more to skip. A consumed end tag stays
    // the tag in hand, where readEnd and the element scopes still find it.
    skip();
    return true;
}

bool CXmlIn::skipElems(const char* name) {
    if (!skipElem(name))
        return false;
    for (;;) {
        readAny();
        // An end tag begins no element, whatever its name: it closes the enclosing one,
        // so the run of elements ends there.
        if (isTagEnd() || (name && !ApXin::isTag(name))) {
            m_hold = true;
            return true;
        }
        skip();
    }
}

bool CXmlIn::getTag(char* buffer, int size) const {
    if (!buffer || size < 1)
        return false;
    size_t n = std::strlen(m_tag);
    if (n >= size_t(size)) {
        buffer[0] = 0;
        return false;
    }
    std::memcpy(buffer, m_tag, n + 1);
    return true;
}

void CXmlIn::getTag(CTStr<char>& name) const { name = m_tag; }

const char* CXmlIn::attrName(int i) const {
    return i >= 0 && uint32_t(i) < m_attrs.size() ? m_attrs[i].name : "";
}

const char* CXmlIn::attrVal(int i) const {
    return i >= 0 && uint32_t(i) < m_attrs.size() ? m_attrs[i].value : "";
}

void CXmlIn::getText(CTStr<char>& text, bool trim) {
    TVector<char>& a = text.array();
    a.clear();
    if (m_file) {
        int c = platform::readByteUnlocked(m_file);
        if (trim)
            while (c != EOF && c != '<' && std::isspace(c))
                c = platform::readByteUnlocked(m_file);
        // Bytes go through a small block, so the text grows by whole blocks.
        char block[4096];
        int n = 0;
        for (; c != EOF && c != '<'; c = platform::readByteUnlocked(m_file)) {
            block[n++] = char(c);
            if (n == int(sizeof block)) {
                // Long texts (whole point lists on one line) grow the string by
                // doubling rather than by the array's own quarter steps.
                if (a.size() + uint32_t(n) > a.capacity()) {
                    if (a.size() >= kMaxText)
                        throw std::bad_alloc();
                    a.reserve(a.size() * 2 + uint32_t(n));
                }
                a.append(block, uint32_t(n));
                n = 0;
            }
        }
        a.append(block, uint32_t(n));
        if (c == '<')
            std::ungetc(c, m_file);
        if (trim)
            while (!a.empty() && std::isspace(static_cast<unsigned char>(a.back())))
                a.resize(a.size() - 1);
    }
    a.push_back(0);
}

bool CXmlIn::gets(char* buffer, int size) {
    if (!m_file || !buffer || size < 1)
        return false;
    return std::fgets(buffer, size, m_file) != nullptr;
}

int CXmlIn::getI1(int def) {
    int v = 0;
    return m_file && scanf("%i", &v) == 1 ? v : def;
}

double CXmlIn::getD1(double def) {
    double v = 0;
    return m_file && scanf("%lf", &v) == 1 ? v : def;
}

void CXmlIn::getTagAsLine(CTStr<char>& line) const {
    line = "<";
    line += m_tag;
    for (const SAttr& a : m_attrs) {
        line += " ";
        line += a.name;
        line += "=\"";
        line += a.value;
        line += "\"";
    }
    line += "/>";
}

} // namespace vq
