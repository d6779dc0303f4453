// vqk/text/str.h
//
// CTStr<T> is the library's one string type, narrow (CTStr<char>, UTF-8 unless a
// function says otherwise) and wide (CTStr<wchar_t>). It owns one growable,
// zero-terminated array: deep copies, no sharing, no inline buffer. The block never
// shrinks, so a string reused in a loop allocates only when it outgrows its largest
// earlier content.
//
//   vq::CStr s("name");
//   s += ".xml";
//   s.cformat("%s=%i", "n", 3);        // measures once, prints once
//   s << vq::CFormat(7, 3);             // appends "007"
//   const char* p = s.str();            // never null
//
// Null text pointers mean empty text everywhere; index arguments are not range-tested.
// No member reports an error: a failed conversion gives an empty string.
#pragma once

#include "vqk/config.h"
#include "vqk/text/vector.h"

#include <cstdarg>
#include <cstring>
#include <cwchar>

namespace vq {

class CFormat;

template <class T> class VQK_API CTStr {
public:
    using other_t = typename std::conditional<std::is_same<T, char>::value, wchar_t, char>::type;

    // Commands for operator<<; the value 0 empties the string.
    enum EStreamCmd { eClear = 0 };

    CTStr() = default;
    CTStr(const T* s);
    CTStr(const other_t* s);
    CTStr(const CTStr<other_t>& s);
    CTStr(const CTStr& s);
    CTStr(CTStr&& s) noexcept;
    // Copies s[from] .. s[to-1]; a reversed range leaves the string empty.
    CTStr(const T* s, int from, int to);
    CTStr(int n, T c);
    // String-table text `id`; without `full` the label's first line is dropped.
    CTStr(int id, bool full);

    CTStr& operator=(const T* s);
    CTStr& operator=(const CTStr& s);
    CTStr& operator=(CTStr&& s) noexcept;

    virtual ~CTStr();
    // Copies s[from] .. s[to-1] then terminates; when to < from nothing changes.
    virtual void reset(const T* s, int from, int to);
    virtual void reset(uint64 n, T c);
    // Copies exactly n elements, zeros included, and terminates at index n.
    virtual void reset(const T* s, uint64 n);
    virtual void reset(const wchar_t* s);
    virtual void reset(const char* s);
    virtual void append(const wchar_t* s);
    virtual void append(const char* s);

    void reset() {
        m_addEnd = 0;
        m_a.clear();
    }
    void reset(const CTStr& s) { *this = s; }

    CTStr& load(int id);
    CTStr& loadLabelOnly(int id);

    const T* str() const;
    T* getBuffer(int n);
    void reserve(int n);
    bool empty() const { return m_a.size() == 0 || m_a[0] == 0; }
    int length() const;
    T& operator[](int i) {
        m_addEnd = 0; // the caller may write a zero into the text
        return m_a[i];
    }
    const T& operator[](int i) const { return m_a[i]; }
    // Appends one character slot and returns it for the caller to fill: size becomes
    // length() + 2 and a terminator follows the slot. Strings built one add() at a time
    // take constant time per character: add() remembers where it left the text and
    // only counts the length again after some other member changed the string. (A
    // zero written into the text through a pointer kept from before the last add(),
    // rather than through a member, is therefore not seen by the next add().)
    T& add();
    CTStr& operator+=(const T* s) {
        append(s);
        return *this;
    }
    CTStr& operator+=(const CTStr& s) {
        append(s.str());
        return *this;
    }

    int findSubStr(const T* s) const;
    void deleteSubStr(int first, int last);
    int insertStr(int i, const T* s);
    void deleteChars(const TAc<T>& set);
    void replace(T from, T to);
    CTStr& lowercase();
    CTStr& uppercase();
    void trimEndSpaces();
    void trimEndSpaces(bool atEnd);

    bool operator==(const CTStr& s) const { return compare(s.str()) == 0; }
    bool operator==(const T* s) const { return compare(s) == 0; }
    bool operator!=(const CTStr& s) const { return compare(s.str()) != 0; }
    bool operator!=(const T* s) const { return compare(s) != 0; }
    bool operator<(const CTStr& s) const { return compare(s.str()) < 0; }
    // Element-wise comparison on unsigned values; null and empty compare equal.
    int compare(const T* s) const;

    // Replaces the content by the printf text: measured first, then printed once into a
    // block of exactly that size. A null format or an empty text leaves the string
    // empty. The format may be the string's own text; so may an argument when the text
    // grows the block (the old block is freed after printing), but an argument that
    // points into the string while the text fits the block overlaps the output.
    const T* cformat(const T* fmt, ...);
    const T* vcformat(const T* fmt, va_list args);
    const T* cformat(int id, ...);
    const T* vcformat(int id, va_list args);

    const T* format(const CFormat& a1);
    const T* format(const CFormat& a1, const CFormat& a2);
    const T* format(const CFormat& a1, const CFormat& a2, const CFormat& a3);
    const T* format(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4);
    const T* format(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
                    const CFormat& a5);
    const T* format(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
                    const CFormat& a5, const CFormat& a6);
    const T* format(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
                    const CFormat& a5, const CFormat& a6, const CFormat& a7);

    CTStr& operator<<(const CFormat& f);
    CTStr& operator<<(EStreamCmd cmd);

    // The array itself, for code that fills the string through a borrowed block
    // (CTStr pointed at a caller's buffer) or inspects its growth.
    TVector<T>& array() {
        m_addEnd = 0;
        return m_a;
    }
    const TVector<T>& array() const { return m_a; }

private:
    void assignText(const T* s, uint32_t n);
    // length(), after giving a text that fills the whole array (a getBuffer caller
    // that wrote no terminator) the terminator the editing members rely on.
    int terminatedLength();
    // True when p points into the string's block.
    bool inBlock(const T* p) const;
    void dropLabelLine();

    TVector<T> m_a;
    // The size the last add() left, while no other member has changed the string since;
    // 0 when unknown.
    uint32_t m_addEnd = 0;
};

template <class T> inline bool operator==(const T* a, const CTStr<T>& b) { return b == a; }
template <class T> inline bool operator!=(const T* a, const CTStr<T>& b) { return b != a; }

extern template class CTStr<char>;
extern template class CTStr<wchar_t>;

using CStr = CTStr<char>;
using CWStr = CTStr<wchar_t>;

// The string search of CTStr::findSubStr on plain strings. For every start position the
// rest of the text is scanned with a matcher that, on a mismatch, restarts its count
// without looking at the mismatching character again; the first full match met wins,
// so a later occurrence can be reported before an earlier overlapping one
// ("aab" in "aaabaab" gives 4). Returns -1 when not found or either text is empty.
VQK_API int findSubStr(const char* text, const char* pattern);
VQK_API int findSubStr(const wchar_t* text, const wchar_t* pattern);

// Length up to the first zero; 0 for null.
inline int textLength(const char* s) { return s ? int(std::strlen(s)) : 0; }
inline int textLength(const wchar_t* s) { return s ? int(std::wcslen(s)) : 0; }

} // namespace vq
