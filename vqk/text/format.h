// vqk/text/format.h
//
// CFormat is one tagged print argument: narrow or wide text, an int with an optional
// zero-padding width, an unsigned int, an unsigned 64-bit integer or a double with an
// optional fixed precision. It lets the library print pieces of either width without
// variadic type errors. A CFormat holds pointers it does not own: the text must
// outlive it.
//
//   vq::CStr s;
//   s.format(vq::CFormat("n="), vq::CFormat(7, 3));     // "n=007"
//   vq::sprintf_s(s, vq::CFormat(0.5), true);           // appends "0.5"
//
// Formats of kinds 2 and 5 are built into one static buffer shared by all CFormat
// objects: formatting with a width or a precision is not safe from several threads.
// Nothing here fails: null text prints as empty text, and a piece that does not fit a
// caller's buffer (sprint) empties the buffer and returns -1.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/string_table.h"

namespace vq {

class VQK_API CFormat {
public:
    enum EKind { eText = 0, eWideText = 1, eInt = 2, eUint = 3, eUint64 = 4, eDouble = 5 };

    CFormat(const char* s);
    CFormat(const CTStr<char>& s);
    CFormat(const wchar_t* s);
    CFormat(const CTStr<wchar_t>& s);
    CFormat(const SStrId& id);
    CFormat(int value, int width = -1);
    CFormat(unsigned int value);
    CFormat(uint64 value);
    CFormat(unsigned long value);
    CFormat(double value, int precision = -1);

    // The printf format of the piece ("%s", "%i", "%03i", "%u", the 64-bit form,
    // "%.15g", "%.3f"); formatw() gives the same text wide.
    const char* format() const;
    const wchar_t* formatw() const;

    // Characters the piece needs, without the terminator.
    int sizeBuf() const;
    int sizeBufW() const;
    // Prints the piece into buf (size elements, terminator included); returns the
    // characters written or -1 when it does not fit (buf is then emptied).
    int sprint(char* buf, int size) const;
    int swprint(wchar_t* buf, int size) const;
    // Prints the piece to standard output.
    void print() const;

    // Appends a text piece (kinds 0 and 1) to a string of either width.
    void appendText(CTStr<char>& out) const;
    void appendText(CTStr<wchar_t>& out) const;

    int kind() const { return m_kind; }
    // The text of a text piece (kinds 0 and 1), null for the other kinds.
    const void* text() const { return m_kind == eText || m_kind == eWideText ? m_value.p : nullptr; }
    int width() const { return m_width; }
    int precision() const { return m_precision; }

private:
    // The narrow text of a text piece (wide text converted to UTF-8 on demand).
    const char* narrowText(CTStr<char>& scratch) const;
    int render(char* buf, int size) const;

    int m_kind;
    union {
        const void* p;
        long long i;
        uint64 u;
        double d;
    } m_value;
    int m_width = -1;
    int m_precision = -1;
};

// Renders the pieces one after the other into out, with no separator; unless append
// is true out is emptied first. A piece may be out's own text.
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, bool append);
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, bool append);
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
                       bool append);
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
                       const CFormat& a4, bool append);
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
                       const CFormat& a4, const CFormat& a5, bool append);
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
                       const CFormat& a4, const CFormat& a5, const CFormat& a6, bool append);
VQK_API void sprintf_s(CTStr<char>& out, const CFormat& a1, const CFormat& a2, const CFormat& a3,
                       const CFormat& a4, const CFormat& a5, const CFormat& a6, const CFormat& a7,
                       bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2, bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2,
                       const CFormat& a3, bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2,
                       const CFormat& a3, const CFormat& a4, bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2,
                       const CFormat& a3, const CFormat& a4, const CFormat& a5, bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2,
                       const CFormat& a3, const CFormat& a4, const CFormat& a5, const CFormat& a6,
                       bool append);
VQK_API void sprintf_s(CTStr<wchar_t>& out, const CFormat& a1, const CFormat& a2,
                       const CFormat& a3, const CFormat& a4, const CFormat& a5, const CFormat& a6,
                       const CFormat& a7, bool append);

// Prints the pieces to standard output, one printf call with the joined formats.
VQK_API void printf_s(const CFormat& a1);
VQK_API void printf_s(const CFormat& a1, const CFormat& a2);
VQK_API void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3);
VQK_API void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4);
VQK_API void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
                      const CFormat& a5);
VQK_API void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
                      const CFormat& a5, const CFormat& a6);
VQK_API void printf_s(const CFormat& a1, const CFormat& a2, const CFormat& a3, const CFormat& a4,
                      const CFormat& a5, const CFormat& a6, const CFormat& a7);

// The printf and scanf conversion of a 64-bit unsigned identifier on this platform.
VQK_API const char* formatPrintfID1();
VQK_API const char* formatScanfID1();

} // namespace vq
