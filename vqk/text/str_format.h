// vqk/text/str_format.h
//
// Two fixed-start text buffers that avoid the heap for the common short case.
//
// CStrFormat formats printf-style into a 1024-character inline buffer and moves to a
// heap block only for longer texts, doubling from 2048 up to 524288 characters; a text
// that needs more than ten such sizes is replaced by an empty text. The result stays
// valid until the next format or the object's end; the object's own text may be an
// argument of the next format (f("%s/x", f.str())).
//
//   vq::CStrFormat f("%s_%03i.xml", "part", 7);
//   std::fputs(f, out);                         // "part_007.xml"
//   const char* again = f("%i items", 3);
//
// CStrBuf collects characters one by one in an 80-character inline block borrowed by
// its array, moving to the heap only when the text outgrows 79 characters.
//
//   vq::CStrBuf token;
//   for (const char* p = "name"; *p; ++p) token.add(*p);
//   token.isEqual("name");                      // true
//
// Neither reports errors: a null or unusable format gives the empty text.
#pragma once

#include "vqk/config.h"
#include "vqk/text/vector.h"

#include <cstdarg>

namespace vq {

class VQK_API CStrFormat {
public:
    enum : int { kInline = 1024, kAttempts = 10 };

    CStrFormat();
    explicit CStrFormat(const char* fmt, ...);
    CStrFormat(const CStrFormat& o);
    CStrFormat& operator=(const CStrFormat& o);
    ~CStrFormat();

    const char* format(const char* fmt, ...);
    const char* vformat(const char* fmt, va_list args);
    const char* operator()(const char* fmt, ...);

    const char* str() const { return m_text; }
    operator const char*() const { return m_text; }
    // Size of the block holding the text: 1024 while inline, else the heap block's.
    int capacity() const { return m_heap ? m_heapSize : int(kInline); }

private:
    char* block(int size, char*& retired);

    char m_inline[kInline];
    char* m_heap = nullptr;
    int m_heapSize = 0;
    const char* m_text;
};

class VQK_API CStrBuf {
public:
    enum : int { kInline = 80 };

    // Room for n characters and the terminator (-1: just the terminator); the text is
    // empty.
    explicit CStrBuf(int n = -1);
    CStrBuf(const CStrBuf& o);
    CStrBuf& operator=(const CStrBuf& o);

    // Empty text, size 1; the block is kept.
    void reset();
    // Appends c (over the terminator) and terminates again.
    void add(char c);
    const char* str() const { return m_a.data(); }
    // Elements in use, the terminator included.
    int size() const { return int(m_a.size()); }
    // True when p holds the same size() bytes, terminator included; false for null.
    bool isEqual(const char* p) const;

    const TVector<char>& array() const { return m_a; }

private:
    char m_inline[kInline];
    TVector<char> m_a;
};

} // namespace vq
