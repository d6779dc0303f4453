#include "vqk/text/format.h"

#include "vqk/platform/printf.h"
#include "vqk/text/convert.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <functional>
#include <memory>

namespace vq {
namespace {

// The built formats of kinds 2 and 5, shared by every CFormat.
char s_builtFormat[128];
wchar_t s_builtFormatW[128];

// "%0<width>i" or "%.<precision>f" into the shared buffer, as "%%0%ii" and "%%.%if"
// would print them; built by hand because it happens for every such piece.
const char* buildFormat(const char* head, int n, char conv) {
    char digits[12];
    int k = 0;
    unsigned v = unsigned(n);
    do {
        digits[k++] = char('0' + v % 10);
        v /= 10;
    } while (v);
    char* p = s_builtFormat;
    while (*head)
        *p++ = *head++;
    while (k)
        *p++ = digits[--k];
    *p++ = conv;
    *p = 0;
    return s_builtFormat;
}

} // namespace

const char* formatPrintfID1() { return platform::kUint64Conversion; }
const char* formatScanfID1() { return platform::kUint64Conversion; }

CFormat::CFormat(const char* s) : m_kind(eText) { m_value.p = s; }
CFormat::CFormat(const CTStr<char>& s) : m_kind(eText) { m_value.p = s.str(); }
CFormat::CFormat(const wchar_t* s) : m_kind(eWideText) { m_value.p = s; }
CFormat::CFormat(const CTStr<wchar_t>& s) : m_kind(eWideText) { m_value.p = s.str(); }
CFormat::CFormat(const SStrId& id) : m_kind(eText) { m_value.p = stringTableText(id); }
CFormat::CFormat(int value, int width) : m_kind(eInt), m_width(width) { m_value.i = value; }
CFormat::CFormat(unsigned int value) : m_kind(eUint) { m_value.u = value; }
CFormat::CFormat(uint64 value) : m_kind(eUint64) { m_value.u = value; }
CFormat::CFormat(unsigned long value) : m_kind(eUint64) { m_value.u = value; }
CFormat::CFormat(double value, int precision) : m_kind(eDouble), m_precision(precision) {
    m_value.d = value;
}

const char* CFormat::format() const {
    switch (m_kind) {
    case eText:
    case eWideText:
        return "%s";
    case eInt:
        if (m_width < 1)
            return "%i";
        return buildFormat("%0", m_width, 'i');
    case eUint:
        return "%u";
    case eUint64:
        return formatPrintfID1();
    case eDouble:
        if (m_precision < 0)
            return "%.15g";
        return buildFormat("%.", m_precision, 'f');
    default:
        return "";
    }
}

const wchar_t* CFormat::formatw() const {
    const char* f = format();
    size_t i = 0;
    for (; f[i] && i + 1 < sizeof s_builtFormatW / sizeof *s_builtFormatW; ++i)
        s_builtFormatW[i] = wchar_t((unsigned char)f[i]);
    s_builtFormatW[i] = 0;
    return s_builtFormatW;
}

const char* CFormat::narrowText(CTStr<char>& scratch) const {
    if (m_kind == eText)
        return m_value.p ? static_cast<const char*>(m_value.p) : "";
    wstrtoutf8(scratch, static_cast<const wchar_t*>(m_value.p));
    return scratch.str();
}

// snprintf semantics: the characters the whole piece needs; at most size-1 written.
int CFormat::render(char* buf, int size) const {
    size_t n = size_t(size < 0 ? 0 : size);
    switch (m_kind) {
    case eText:
    case eWideText: {
        CTStr<char> scratch;
        const char* t = narrowText(scratch);
        size_t len = std::strlen(t);
        if (n) {
            size_t k = len < n - 1 ? len : n - 1;
            std::memcpy(buf, t, k);
            buf[k] = 0;
        }
        return int(len);
    }
    case eInt:
        return std::snprintf(buf, n, format(), int(m_value.i));
    case eUint:
        return std::snprintf(buf, n, "%u", unsigned(m_value.u));
    case eUint64:
        return std::snprintf(buf, n, formatPrintfID1(), m_value.u);
    case eDouble:
        return std::snprintf(buf, n, format(), m_value.d);
    default:
        if (n)
            buf[0] = 0;
        return 0;
    }
}

int CFormat::sizeBuf() const { return render(nullptr, 0); }

int CFormat::sizeBufW() const {
    if (m_kind == eWideText)
        return textLength(static_cast<const wchar_t*>(m_value.p));
    if (m_kind == eText) {
        CTStr<wchar_t> w(static_cast<const char*>(m_value.p));
        return w.length();
    }
    return sizeBuf(); // numbers are ASCII
}

int CFormat::sprint(char* buf, int size) const {
    if (!buf || size < 1)
        return -1;
    int n = render(buf, size);
    if (n < 0 || n >= size) {
        buf[0] = 0;
        return -1;
    }
    return n;
}

int CFormat::swprint(wchar_t* buf, int size) const {
    if (!buf || size < 1)
        return -1;
    CTStr<wchar_t> w;
    if (m_kind == eWideText) {
        w = static_cast<const wchar_t*>(m_value.p);
    } else {
        CTStr<char> narrow;
        sprintf_s(narrow, *this, false);
        w.reset(narrow.str());
    }
    int n = w.length();
    if (n >= size) {
        buf[0] = 0;
        return -1;
    }
    std::wmemcpy(buf, w.str(), size_t(n) + 1);
    return n;
}

void CFormat::print() const { printf_s(*this); }

void CFormat::appendText(CTStr<char>& out) const {
    if (m_kind == eText)
        out.append(static_cast<const char*>(m_value.p));
    else
        out.append(static_cast<const wchar_t*>(m_value.p));
}

void CFormat::appendText(CTStr<wchar_t>& out) const {
    if (m_kind == eText)
        out.append(static_cast<const char*>(m_value.p));
    else
        out.append(static_cast<const wchar_t*>(m_value.p));
}

namespace {

// Measure the piece, print it into a scratch block (inline for short pieces) and
// append it.
// True when a text piece is the string's own text, which emptying the string, or growth
// while appending earlier pieces, would overwrite or free before the piece is read.
template <class T> bool readsOwnText(const CTStr<T>& out, const CFormat* const* pieces, int n) {
    const T* block = out.array().data();
    if (!block)
        return false;
    std::less_equal<const void*> le;
    std::less<const void*> lt;
    for (int i = 0; i < n; ++i) {
        const void* t = pieces[i]->text();
        if (t && le(block, t) && lt(t, block + out.array().capacity()))
            return true;
    }
    return false;
}

template <class T> void appendPieces(CTStr<T>& out, const CFormat* const* pieces, int n, bool append) {
    if (readsOwnText(out, pieces, n)) {
        CTStr<T> fresh;
        if (append)
            fresh = out;
        appendPieces(fresh, pieces, n, true);
        out = fresh;
        return;
    }
    if (!append)
        out.reset();
    for (int i = 0; i < n; ++i) {
        const CFormat& f = *pieces[i];
        if (f.kind() == CFormat::eText || f.kind() == CFormat::eWideText) {
            // Text needs no printing: append it as it is (converted when the widths differ).
            f.appendText(out);
            continue;
        }
        // Printing into the inline room measures at the same time; only a piece longer
        // than 50 characters is printed a second time, into a heap block of its size.
        char local[51];
        int size = f.sprint(local, int(sizeof local));
        if (size >= 0) {
            out.append(local);
            continue;
        }
        size = f.sizeBuf();
        if (size <= 0)
            continue;
        std::unique_ptr<char[]> heap(new char[size_t(size) + 1]);
        if (f.sprint(heap.get(), size + 1) >= 0)
            out.append(heap.get());
    }
}

} // namespace

#define VQK_PIECES(...)                                                                            \
    const CFormat* pieces[] = {__VA_ARGS__};                                                       \
    appendPieces(out, pieces, int(sizeof pieces / sizeof *pieces), append)

void sprintf_s(CTStr<char>& out, const CFormat& a1, bool append) { VQK_PIECES(&a1); }
void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, bool append) {
    VQK_PIECES(&a1, &a2);
}
void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               bool append) {
    VQK_PIECES(&a1, &a2, &a3);
}
void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4);
}
void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, const CFormat& a5, bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4, &a5);
}
void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, const CFormat& a5, const CFormat& a6, bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4, &a5, &a6);
}
void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, const CFormat& a5, const CFormat& a6, const CFormat& a7,
               bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4, &a5, &a6, &a7);
}
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, bool append) { VQK_PIECES(&a1); }
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, bool append) {
    VQK_PIECES(&a1, &a2);
}
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               bool append) {
    VQK_PIECES(&a1, &a2, &a3);
}
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4);
}
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, const CFormat& a5, bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4, &a5);
}
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, const CFormat& a5, const CFormat& a6, bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4, &a5, &a6);
}
void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
               const CFormat& a4, const CFormat& a5, const CFormat& a6, const CFormat& a7,
               bool append) {
    VQK_PIECES(&a1, &a2, &a3, &a4, &a5, &a6, &a7);
}
#undef VQK_PIECES

namespace {
void printPieces(const CFormat* const* pieces, int n) {
    CTStr<char> text;
    for (int i = 0; i < n; ++i)
        sprintf_s(text, *pieces[i], true);
    std::fputs(text.str(), stdout);
}
} // namespace

#define VQK_PRINT(...)                                                                             \
    const CFormat* pieces[] = {__VA_ARGS__};                                                       \
    printPieces(pieces, int(sizeof pieces / sizeof *pieces))

void printf_s(const CFormat& a1) { VQK_PRINT(&a1); }
void printf_s(const CFormat& a1, const CFormat& a2) { VQK_PRINT(&a1, &a2); }
void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3) { VQK_PRINT(&a1, &a2, &a3); }
void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4) {
    VQK_PRINT(&a1, &a2, &a3, &a4);
}
void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
              const CFormat& a5) {
    VQK_PRINT(&a1, &a2, &a3, &a4, &a5);
}
void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
              const CFormat& a5, const CFormat& a6) {
    VQK_PRINT(&a1, &a2, &a3, &a4, &a5, &a6);
}
void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
              const CFormat& a5, const CFormat& a6, const CFormat& a7) {
    VQK_PRINT(&a1, &a2, &a3, &a4, &a5, &a6, &a7);
}
#undef VQK_PRINT

} // namespace vq
