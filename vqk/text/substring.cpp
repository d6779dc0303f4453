#include "vqk/text/substring.h"

#include "vqk/text/sub_search.h"

#include <cstring>

namespace vq {
namespace {

template <class T> bool matchesAt(const T* s, const T* what, int n) {
    for (int i = 0; i < n; ++i)
        if (s[i] != what[i])
            return false;
    return true;
}

template <class T> int countSub(const T* text, const T* pattern) {
    CSubSearch<T> find(pattern);
    const int m = find.patternLength();
    int n = textLength(text);
    int count = 0;
    for (int at; m && (at = find.in(text, n)) >= 0;) {
        ++count;
        text += at + m;
        n -= at + m;
    }
    return count;
}

// Rebuilds s in its own block, so a string reused in a loop does not allocate.
template <class T> int replaceSub(CTStr<T>& s, const T* what, const T* with) {
    int m = textLength(what);
    int n = s.length();
    if (!m || n < m)
        return 0;
    const T* block = s.str();
    auto inside = [&](const T* p) { return p && p >= block && p < block + s.array().capacity(); };
    if (inside(what) || inside(with)) {
        CTStr<T> w(what), r(with); // pieces of s itself would change under the rewrite
        return replaceSub(s, w.str(), r.str());
    }
    int withLen = textLength(with);
    int count = 0;
    for (int i = 0; i + m <= n;) {
        if (matchesAt(block + i, what, m)) {
            ++count;
            i += m;
        } else {
            ++i;
        }
    }
    if (!count)
        return 0;
    // A longer result grows the block once and moves the text to its end; the write
    // position then never passes the read position.
    int total = n + count * (withLen - m);
    int shift = total > n ? total - n : 0;
    T* p = s.getBuffer((total > n ? total : n) + 1);
    if (shift)
        std::memmove(p + shift, p, size_t(n) * sizeof(T));
    int o = 0;
    for (int i = 0; i < n;) {
        const T* r = p + shift + i;
        if (i + m <= n && matchesAt(r, what, m)) {
            for (int k = 0; k < withLen; ++k)
                p[o++] = with[k];
            i += m;
        } else {
            p[o++] = *r;
            ++i;
        }
    }
    p[total] = 0;
    s.getBuffer(total + 1);
    return count;
}

template <class T>
void splitInto(TVectorC<CTStr<T>>& out, const T* text, const T* token, bool skipEmpty) {
    int n = textLength(text);
    if (!n)
        return;
    int m = textLength(token);
    if (!m) {
        out.add().reset(text, uint64(n));
        return;
    }
    int start = 0;
    for (int i = 0; i + m <= n;) {
        if (matchesAt(text + i, token, m)) {
            if (i > start || !skipEmpty)
                out.add().reset(text + start, uint64(i - start));
            i += m;
            start = i;
        } else {
            ++i;
        }
    }
    if (n > start || !skipEmpty)
        out.add().reset(text + start, uint64(n - start));
}

template <class T>
void splitBy(TVectorC<CTStr<T>>& out, const T* text, const T* token, bool skipEmpty) {
    // The pieces are collected apart: the text or the token may be one of out's strings.
    TVectorC<CTStr<T>> pieces;
    splitInto(pieces, text, token, skipEmpty);
    out.swap(pieces);
}

} // namespace

int numSubStr(const char* text, const char* pattern) { return countSub(text, pattern); }
int numSubStr(const wchar_t* text, const wchar_t* pattern) { return countSub(text, pattern); }

int replaceSubStr(CTStr<char>& s, const char* what, const char* with) {
    return replaceSub(s, what, with);
}
int replaceSubStr(CTStr<wchar_t>& s, const wchar_t* what, const wchar_t* with) {
    return replaceSub(s, what, with);
}

void splitStrByToken(TVectorC<CTStr<char>>& out, const char* text, const char* token,
                     bool skipEmpty) {
    splitBy(out, text, token, skipEmpty);
}
void splitStrByToken(TVectorC<CTStr<wchar_t>>& out, const wchar_t* text, const wchar_t* token,
                     bool skipEmpty) {
    splitBy(out, text, token, skipEmpty);
}

CTStr<wchar_t> wrapQuote(const wchar_t* s) {
    int n = textLength(s);
    CTStr<wchar_t> out;
    wchar_t* p = out.getBuffer(n + 3);
    p[0] = L'"';
    for (int i = 0; i < n; ++i)
        p[i + 1] = s[i];
    p[n + 1] = L'"';
    p[n + 2] = 0;
    return out;
}

} // namespace vq
