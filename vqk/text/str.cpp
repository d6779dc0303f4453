#include "vqk/text/str.h"

#include "vqk/text/bounded.h"
#include "vqk/text/convert.h"
#include "vqk/text/format.h"
#include "vqk/text/scratch_block.h"
#include "vqk/text/string_table.h"
#include "vqk/text/sub_search.h"
#include "vqk/text/utf8.h"

#include <climits>
#include <functional>
#include <memory>
#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace vq {
namespace {

template <class T> const T* emptyText();
template <> const char* emptyText<char>() { return ""; }
template <> const wchar_t* emptyText<wchar_t>() { return L""; }

// The first zero among n elements (the library's vectorised search), null if none.
const char* findZero(const char* p, size_t n) { return static_cast<const char*>(std::memchr(p, 0, n)); }
const wchar_t* findZero(const wchar_t* p, size_t n) { return std::wmemchr(p, 0, n); }

template <class T> bool isWhite(T c) { return c == 9 || c == 10 || c == 13 || c == 32; }

uint32_t checkedSize(uint64 n) {
    if (n >= uint64(INT32_MAX))
        throw std::bad_alloc();
    return uint32_t(n);
}

int printCount(const char* fmt, va_list args) { return vscprintf(fmt, args); }
int printCount(const wchar_t* fmt, va_list args) { return vscprintf(fmt, args); }

void convertUtf8(CTStr<char>& out, const wchar_t* s) { wstrtostr(out, s, true); }
void convertUtf8(CTStr<wchar_t>& out, const char* s) { strtowstr(out, s, true); }

template <class T> int findSub(const T* text, int n, const T* pat) { return CSubSearch<T>(pat).in(text, n); }

} // namespace

int findSubStr(const char* text, const char* pattern) {
    return findSub(text, textLength(text), pattern);
}
int findSubStr(const wchar_t* text, const wchar_t* pattern) {
    return findSub(text, textLength(text), pattern);
}

template <class T> CTStr<T>::CTStr(const T* s) { reset(s); }
template <class T> CTStr<T>::CTStr(const other_t* s) { convertUtf8(*this, s); }
template <class T> CTStr<T>::CTStr(const CTStr<other_t>& s) {
    convertUtf8(*this, s.str());
}
template <class T> CTStr<T>::CTStr(const CTStr& s) {
    if (s.m_a.size()) // a copy of a never-filled string allocates nothing
        assignText(s.str(), uint32_t(s.length()));
}
template <class T> CTStr<T>::CTStr(CTStr&& s) noexcept : m_a(std::move(s.m_a)) { s.m_addEnd = 0; }
template <class T> CTStr<T>::CTStr(const T* s, int from, int to) { reset(s, from, to); }
template <class T> CTStr<T>::CTStr(int n, T c) { reset(uint64(n < 0 ? 0 : n), c); }
template <class T> CTStr<T>::CTStr(int id, bool full) {
    reset(stringTableText(id));
    if (!full)
        dropLabelLine();
}
template <class T> CTStr<T>::~CTStr() = default;

template <class T> CTStr<T>& CTStr<T>::operator=(const T* s) {
    reset(s);
    return *this;
}
template <class T> CTStr<T>& CTStr<T>::operator=(const CTStr& s) {
    m_addEnd = 0;
    if (this == &s)
        return *this;
    if (s.m_a.size())
        assignText(s.str(), uint32_t(s.length()));
    else
        m_a.clear();
    return *this;
}
template <class T> CTStr<T>& CTStr<T>::operator=(CTStr&& s) noexcept {
    m_addEnd = 0;
    if (this != &s) {
        m_a = std::move(s.m_a);
        s.m_addEnd = 0;
    }
    return *this;
}

template <class T> void CTStr<T>::assignText(const T* s, uint32_t n) {
    m_addEnd = 0;
    // s may point into this string's own block, and the copy may reach to its end:
    // the block a growth replaces is freed only once the text is copied out of it.
    T* old = m_a.growKeepingOld(n + 1);
    m_a.resize(n + 1);
    if (n)
        std::memmove(m_a.data(), s, n * sizeof(T));
    m_a[n] = 0;
    TVector<T>::releaseBlock(old);
}

template <class T> void CTStr<T>::reset(const T* s, int from, int to) {
    m_addEnd = 0;
    if (to < from)
        return;
    if (!s) {
        m_a.clear();
        return;
    }
    assignText(s + from, uint32_t(to - from));
}

template <class T> void CTStr<T>::reset(uint64 n, T c) {
    m_addEnd = 0;
    uint32_t k = checkedSize(n);
    m_a.resize(k + 1);
    for (uint32_t i = 0; i < k; ++i)
        m_a[i] = c;
    m_a[k] = 0;
}

template <class T> void CTStr<T>::reset(const T* s, uint64 n) {
    m_addEnd = 0;
    if (!s) {
        m_a.clear();
        return;
    }
    assignText(s, checkedSize(n));
}

template <class T> void CTStr<T>::reset(const char* s) {
    m_addEnd = 0;
    if constexpr (std::is_same<T, char>::value) {
        if (!s) {
            m_a.clear();
            return;
        }
        assignText(s, uint32_t(std::strlen(s)));
    } else {
        convertUtf8(*this, s);
    }
}

template <class T> void CTStr<T>::reset(const wchar_t* s) {
    m_addEnd = 0;
    if constexpr (std::is_same<T, wchar_t>::value) {
        if (!s) {
            m_a.clear();
            return;
        }
        assignText(s, uint32_t(std::wcslen(s)));
    } else {
        convertUtf8(*this, s);
    }
}

namespace {
template <class T> void appendSame(TVector<T>& a, int len, const T* s) {
    int n = textLength(s);
    if (!n)
        return;
    const T* begin = a.data();
    if (begin && s >= begin && s < begin + a.capacity()) {
        std::basic_string<T> copy(s, size_t(n)); // the block may move while growing
        appendSame(a, len, copy.c_str());
        return;
    }
    a.resize(uint32_t(len) + uint32_t(n) + 1);
    std::memcpy(a.data() + len, s, size_t(n) * sizeof(T));
    a[len + n] = 0;
}

// Text of the other width is converted straight into the tail of the array: measure,
// grow once, convert, with no temporary string.
void appendOther(TVector<wchar_t>& a, int len, const char* s) {
    int n = utf8ToWide(s, -1, nullptr, 0); // terminator included
    if (n <= 1)
        return;
    a.resize(uint32_t(len) + uint32_t(n));
    if (utf8ToWide(s, -1, a.data() + len, n) < 1)
        a[len] = 0;
}
void appendOther(TVector<char>& a, int len, const wchar_t* s) {
    int n = wideToUtf8(s, -1, nullptr, 0);
    if (n <= 1)
        return;
    a.resize(uint32_t(len) + uint32_t(n));
    if (wideToUtf8(s, -1, a.data() + len, n) < 1)
        a[len] = 0;
}
} // namespace

template <class T> void CTStr<T>::append(const char* s) {
    m_addEnd = 0;
    if constexpr (std::is_same<T, char>::value)
        appendSame(m_a, length(), s);
    else if (s && *s)
        appendOther(m_a, length(), s);
}

template <class T> void CTStr<T>::append(const wchar_t* s) {
    m_addEnd = 0;
    if constexpr (std::is_same<T, wchar_t>::value)
        appendSame(m_a, length(), s);
    else if (s && *s)
        appendOther(m_a, length(), s);
}

template <class T> void CTStr<T>::dropLabelLine() {
    // A text that starts with a line feed has no label line: it is kept whole.
    int n = length();
    for (int i = 0; i < n; ++i) {
        if (m_a[i] == T('\n')) {
            if (i > 0)
                deleteSubStr(0, i);
            return;
        }
    }
}

template <class T> CTStr<T>& CTStr<T>::load(int id) {
    reset(stringTableText(id));
    return *this;
}
template <class T> CTStr<T>& CTStr<T>::loadLabelOnly(int id) {
    load(id);
    dropLabelLine();
    return *this;
}

template <class T> const T* CTStr<T>::str() const {
    return m_a.size() && m_a.data() ? m_a.data() : emptyText<T>();
}

template <class T> T* CTStr<T>::getBuffer(int n) {
    m_addEnd = 0;
    m_a.resize(uint32_t(n < 0 ? 0 : n));
    return n > 0 ? m_a.data() : nullptr;
}

template <class T> void CTStr<T>::reserve(int n) {
    if (n > 0)
        m_a.reserve(uint32_t(n));
}

template <class T> int CTStr<T>::length() const {
    if (!m_a.size() || !m_a.data())
        return 0;
    const T* p = m_a.data();
    const T* zero = findZero(p, m_a.size());
    return zero ? int(zero - p) : int(m_a.size());
}

template <class T> T& CTStr<T>::add() {
    // While nothing but add() has touched the string, the text is known to be free of
    // zeros up to the slot the last add() handed out: when that slot was filled, the
    // length is the size less the terminator, without counting.
    uint32_t size = m_a.size();
    int n;
    if (m_addEnd >= 2 && size == m_addEnd && m_a[size - 2] != 0 && m_a[size - 1] == 0)
        n = int(size - 1);
    else
        n = length();
    m_a.resize(uint32_t(n) + 2);
    m_a[n + 1] = 0;
    m_addEnd = uint32_t(n) + 2;
    return m_a[n];
}

template <class T> int CTStr<T>::terminatedLength() {
    int n = length();
    if (n && uint32_t(n) == m_a.size()) {
        m_a.resize(uint32_t(n) + 1);
        m_a[n] = 0;
    }
    return n;
}

template <class T> bool CTStr<T>::inBlock(const T* p) const {
    const T* b = m_a.data();
    return p && b && std::less_equal<const T*>()(b, p) && std::less<const T*>()(p, b + m_a.capacity());
}

template <class T> int CTStr<T>::findSubStr(const T* s) const {
    return findSub(str(), length(), s);
}

template <class T> void CTStr<T>::deleteSubStr(int first, int last) {
    m_addEnd = 0;
    int n = terminatedLength();
    if (n == 0 || first < 0 || first >= n)
        return;
    if (last == -1) {
        m_a[first] = 0;
        return;
    }
    if (last < first)
        return;
    if (last >= n)
        last = n - 1;
    int removed = last - first + 1;
    std::memmove(m_a.data() + first, m_a.data() + last + 1, size_t(n - last) * sizeof(T));
    m_a.resize(uint32_t(n - removed + 1));
}

template <class T> int CTStr<T>::insertStr(int i, const T* s) {
    m_addEnd = 0;
    int k = textLength(s);
    if (k == 0)
        return 0;
    int n = terminatedLength();
    if (n == 0) {
        reset(s);
        return k;
    }
    if (inBlock(s)) {
        CTStr<T> copy(s); // a piece of this string: the block is about to change
        return insertStr(i, copy.str());
    }
    int pos = i < 0 ? 0 : (i > n ? n : i);
    m_a.resize(uint32_t(n + k + 1));
    T* p = m_a.data();
    std::memmove(p + pos + k, p + pos, size_t(n - pos) * sizeof(T));
    std::memcpy(p + pos, s, size_t(k) * sizeof(T));
    p[n + k] = 0;
    return k;
}

template <class T> void CTStr<T>::deleteChars(const TAc<T>& set) {
    m_addEnd = 0;
    int n = terminatedLength();
    if (!n || set.empty())
        return;
    // Removing from the end to the start keeps the order of the survivors, which is
    // what one compacting pass produces as well.
    T* p = m_a.data();
    int w = 0;
    for (int r = 0; r < n; ++r) {
        bool drop = false;
        for (uint32_t j = 0; j < set.size(); ++j) {
            if (set[j] == p[r] && set[j] != 0) {
                drop = true;
                break;
            }
        }
        if (!drop)
            p[w++] = p[r];
    }
    p[w] = 0;
    m_a.resize(uint32_t(w + 1));
}

template <class T> void CTStr<T>::replace(T from, T to) {
    m_addEnd = 0;
    int n = length();
    for (int i = 0; i < n; ++i)
        if (m_a[i] == from)
            m_a[i] = to;
}

template <class T> CTStr<T>& CTStr<T>::lowercase() {
    m_addEnd = 0;
    if (int n = terminatedLength())
        strlwr(m_a.data(), size_t(n) + 1);
    return *this;
}

template <class T> CTStr<T>& CTStr<T>::uppercase() {
    m_addEnd = 0;
    if (int n = terminatedLength())
        strup(m_a.data(), size_t(n) + 1);
    return *this;
}

template <class T> void CTStr<T>::trimEndSpaces() {
    trimEndSpaces(true);
    trimEndSpaces(false);
}

template <class T> void CTStr<T>::trimEndSpaces(bool atEnd) {
    m_addEnd = 0;
    int n = terminatedLength();
    if (!n)
        return;
    T* p = m_a.data();
    if (atEnd) {
        int e = n;
        while (e > 0 && isWhite(p[e - 1]))
            --e;
        p[e] = 0;
        m_a.resize(uint32_t(e + 1));
        return;
    }
    int b = 0;
    while (b < n && isWhite(p[b]))
        ++b;
    if (b) {
        std::memmove(p, p + b, size_t(n - b + 1) * sizeof(T));
        m_a.resize(uint32_t(n - b + 1));
    }
}

template <class T> int CTStr<T>::compare(const T* s) const {
    const T* a = str();
    const T* b = s ? s : emptyText<T>();
    using U = typename std::make_unsigned<T>::type;
    for (;; ++a, ++b) {
        U x = U(*a), y = U(*b);
        if (x != y)
            return x < y ? -1 : 1;
        if (!x)
            return 0;
    }
}

template <class T> const T* CTStr<T>::vcformat(const T* fmt, va_list args) {
    m_addEnd = 0;
    bool hadText = m_a.size() != 0;
    m_a.clear();
    if (!fmt)
        return str();
    // A format taken from this string's own text would be overwritten while printing.
    CTStr<T> ownFormat;
    if (inBlock(fmt)) {
        ownFormat.reset(fmt);
        fmt = ownFormat.str();
    }
    int n = printCount(fmt, args);
    if (n <= 0)
        return str();
    // An argument may be this string's old text ("%s/%s" of the string and a name).
    // When growth moves the text, the replaced block is freed only after printing; when
    // the block stays, the text is printed beside it and copied in.
    const T* before = m_a.data();
    T* old = m_a.growKeepingOld(uint32_t(n) + 1);
    m_a.resize(uint32_t(n) + 1);
    bool overlaps = hadText && m_a.data() == before;
    ScratchBlock<T> scratch(overlaps ? size_t(n) + 1 : 0);
    T* target = overlaps ? scratch.data() : m_a.data();
    va_list copy;
    va_copy(copy, args);
    int w = vsprintf(target, size_t(n) + 1, fmt, copy);
    va_end(copy);
    if (overlaps && w >= 0)
        std::memcpy(m_a.data(), target, (size_t(n) + 1) * sizeof(T));
    TVector<T>::releaseBlock(old);
    if (w < 0)
        m_a.clear();
    return str();
}

template <class T> const T* CTStr<T>::cformat(const T* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    vcformat(fmt, args);
    va_end(args);
    return str();
}

template <class T> const T* CTStr<T>::vcformat(int id, va_list args) {
    CTStr<T> fmt(stringTableText(id));
    return vcformat(fmt.empty() ? nullptr : fmt.str(), args);
}

template <class T> const T* CTStr<T>::cformat(int id, ...) {
    va_list args;
    va_start(args, id);
    vcformat(id, args);
    va_end(args);
    return str();
}

template <class T> const T* CTStr<T>::format(const CFormat& a1) {
    sprintf_s(*this, a1, false);
    return str();
}
template <class T> const T* CTStr<T>::format(const CFormat& a1, const CFormat& a2) {
    sprintf_s(*this, a1, a2, false);
    return str();
}
template <class T>
const T* CTStr<T>::format(const CFormat& a1, const CFormat& a2, const CFormat& a3) {
    sprintf_s(*this, a1, a2, a3, false);
    return str();
}
template <class T>
const T* CTStr<T>::format(const CFormat& a1, const CFormat& a2, const CFormat& a3,
                          const CFormat& a4) {
    sprintf_s(*this, a1, a2, a3, a4, false);
    return str();
}
template <class T>
const T* CTStr<T>::format(const CFormat& a1, const CFormat& a2, const CFormat& a3,
                          const CFormat& a4, const CFormat& a5) {
    sprintf_s(*this, a1, a2, a3, a4, a5, false);
    return str();
}
template <class T>
const T* CTStr<T>::format(const CFormat& a1, const CFormat& a2, const CFormat& a3,
                          const CFormat& a4, const CFormat& a5, const CFormat& a6) {
    sprintf_s(*this, a1, a2, a3, a4, a5, a6, false);
    return str();
}
template <class T>
const T* CTStr<T>::format(const CFormat& a1, const CFormat& a2, const CFormat& a3,
                          const CFormat& a4, const CFormat& a5, const CFormat& a6,
                          const CFormat& a7) {
    sprintf_s(*this, a1, a2, a3, a4, a5, a6, a7, false);
    return str();
}

template <class T> CTStr<T>& CTStr<T>::operator<<(const CFormat& f) {
    sprintf_s(*this, f, true);
    return *this;
}

template <class T> CTStr<T>& CTStr<T>::operator<<(EStreamCmd cmd) {
    m_addEnd = 0;
    if (cmd == eClear)
        m_a.clear();
    return *this;
}

template class CTStr<char>;
template class CTStr<wchar_t>;

} // namespace vq
