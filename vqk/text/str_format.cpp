#include "vqk/text/str_format.h"

#include "vqk/text/bounded.h"
#include "vqk/text/scratch_block.h"

#include <cstring>

namespace vq {
namespace {
const char kEmpty[1] = {0};
} // namespace

CStrFormat::CStrFormat() : m_text(kEmpty) { m_inline[0] = 0; }

CStrFormat::CStrFormat(const char* fmt, ...) : m_text(kEmpty) {
    m_inline[0] = 0;
    va_list args;
    va_start(args, fmt);
    vformat(fmt, args);
    va_end(args);
}

CStrFormat::CStrFormat(const CStrFormat& o) : m_text(kEmpty) {
    m_inline[0] = 0;
    *this = o;
}

CStrFormat& CStrFormat::operator=(const CStrFormat& o) {
    if (this == &o)
        return *this;
    size_t n = std::strlen(o.m_text);
    char* retired;
    char* p = block(int(n) + 1, retired);
    std::memcpy(p, o.m_text, n + 1);
    delete[] retired;
    m_text = p;
    return *this;
}

CStrFormat::~CStrFormat() { delete[] m_heap; }

// A block of at least `size` characters: the inline buffer, else a heap block from the
// doubling sequence; null beyond the last size. A replaced heap block is handed back in
// `retired` for the caller to free once the new text is printed, since the arguments
// may still point into it.
char* CStrFormat::block(int size, char*& retired) {
    retired = nullptr;
    if (size <= kInline)
        return m_inline;
    int room = kInline;
    for (int attempt = 1; attempt < kAttempts; ++attempt) {
        room *= 2;
        if (size <= room) {
            if (m_heap && m_heapSize == room)
                return m_heap;
            retired = m_heap;
            m_heap = new char[size_t(room)];
            m_heapSize = room;
            return m_heap;
        }
    }
    return nullptr;
}

const char* CStrFormat::vformat(const char* fmt, va_list args) {
    const char* prior = m_text; // an argument may be the object's own text
    m_text = kEmpty;
    if (!fmt)
        return m_text;
    // Measuring first picks the same block the doubling retries would end in, and
    // prints once. The bounded printer fails instead of aborting on a short block, so
    // no invalid-parameter handler is needed here.
    int n = vscprintf(fmt, args);
    if (n < 0)
        return m_text;
    char* retired;
    char* p = block(n + 1, retired);
    if (!p)
        return m_text;
    int size = p == m_inline ? int(kInline) : m_heapSize;
    // Printing over the previous text while reading it would garble it: print beside it
    // and copy in.
    bool overlaps = p == prior;
    ScratchBlock<char> scratch(overlaps ? size_t(n) + 1 : 0);
    char* target = overlaps ? scratch.data() : p;
    if (vsprintf(target, overlaps ? size_t(n) + 1 : size_t(size), fmt, args) >= 0) {
        if (overlaps)
            std::memcpy(p, target, size_t(n) + 1);
        m_text = p;
    }
    delete[] retired;
    return m_text;
}

const char* CStrFormat::format(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    vformat(fmt, args);
    va_end(args);
    return m_text;
}

const char* CStrFormat::operator()(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    vformat(fmt, args);
    va_end(args);
    return m_text;
}

CStrBuf::CStrBuf(int n) : m_a(m_inline, kInline) {
    uint32_t size = n < 0 ? 1u : uint32_t(n) + 1;
    m_a.resize(size);
    std::memset(m_a.data(), 0, size);
}

CStrBuf::CStrBuf(const CStrBuf& o) : m_a(m_inline, kInline) { m_a.assign(o.m_a.data(), o.m_a.size()); }

CStrBuf& CStrBuf::operator=(const CStrBuf& o) {
    if (this != &o)
        m_a.assign(o.m_a.data(), o.m_a.size());
    return *this;
}

void CStrBuf::reset() {
    m_a.resize(1);
    m_a[0] = 0;
}

void CStrBuf::add(char c) {
    if (m_a.size() == 0)
        m_a.push_back(0);
    m_a.back() = c;
    m_a.push_back(0);
}

bool CStrBuf::isEqual(const char* p) const {
    if (!p)
        return false;
    const char* a = m_a.data();
    for (uint32_t i = 0; i < m_a.size(); ++i) {
        if (a[i] != p[i])
            return false;
    }
    return true;
}

} // namespace vq
