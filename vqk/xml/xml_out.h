// vqk/xml/xml_out.h
//
// CXmlOut is the library's one streaming XML writer: every XML file the library
// produces is written through it, element by element, straight to a FILE* stream with
// no document tree in memory. Elements are scoped CXmlOutElem objects (see
// xml_out_elem.h); attributes, text and raw output apply to the current element, the
// innermost one alive.
//
//   vq::CXmlOut out;
//   if (out.open("report.xml", false, false)) {     // writes the XML declaration
//       out.setIndent("  ");
//       vq::CXmlOutElem root(out, "report");
//       out.attrStr("tool", "check");
//       out.text("count", "%i", 3);                 //   <count>3</count>
//       vq::CXmlOutElem item(out, "item");
//       out.attrD3("at", 1.0, 2.5, 1e-20);           //   <item at="1 2.5 0"/>
//   }
//
// The output form: the declaration line, one element per line, attribute values in
// double quotes with '&', '<', '>' and '"' as entities (control bytes XML cannot hold
// are dropped), numbers as "%.15g". Text given to text(), operator() and write() is
// written raw: escape it first (escapeXmlStr) when it may hold markup characters.
//
// The fixed pieces of one operation (tags, indentation, an attribute) are gathered and
// handed to the stream in one block write before the operation returns, so the
// stream holds everything written so far: code may use stream() directly between
// operations.
//
// The writer reports no errors: on a closed writer every operation does nothing, and
// open() and insertXml() return false when they fail. Attribute values are formatted
// inside one process-wide critical section, so writers on several threads of a
// parallel loop may write attributes at the same time; a writer and its elements
// otherwise belong to one thread at a time.
#pragma once

#include "vqk/config.h"
#include "vqk/files/out_file.h"
#include "vqk/text/str.h"
#include "vqk/text/vector.h"
#include "vqk/xml/xml_out_elem.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>

#if defined(__GNUC__)
#define VQK_PRINTF_LIKE(f, a) __attribute__((format(printf, f, a)))
#else
#define VQK_PRINTF_LIKE(f, a)
#endif

namespace vq {

class VQK_API CXmlOut : public COutFile {
public:
    // The size of the value buffer inside the writer: values whose formatted length
    // plus terminator stays below it are formatted without allocating.
    static constexpr int kValueBufferSize = 1024;

    // A closed writer.
    CXmlOut();
    // Opens `path` for writing, without the XML declaration; a null path opens nothing.
    explicit CXmlOut(const char* path);
    explicit CXmlOut(const wchar_t* path);
    // Writes to the caller's stream (never closed here) through `print` as the
    // printf-style operation (null: the runtime's). No declaration is written.
    CXmlOut(FILE* stream, int (*print)(FILE*, const char*, ...));

    // Raw formatted text into the current element's body, which is opened for text
    // first; with no current element the text goes out as it is (processing
    // instructions before the root, for instance).
    virtual void operator()(const char* format, ...) VQK_PRINTF_LIKE(2, 3);
    virtual ~CXmlOut();
    // Opens the file in text mode ("a" when appending, "w" otherwise), denying other
    // writers; `unbuffered` switches the stream's buffering off. Unless appending, writes
    // the XML declaration line. False, writing nothing, when the file cannot be opened.
    virtual bool open(const wchar_t* path, bool append = false, bool unbuffered = false);
    // Converts the path to wide text and calls the wide open.
    virtual bool open(const char* path, bool append = false, bool unbuffered = false);
    // Forgets the current element (closing nothing), closes an owned stream and drops
    // the stream. Elements still alive write nothing afterwards.
    virtual void close();

    CXmlOut(const CXmlOut&) = delete;
    CXmlOut& operator=(const CXmlOut&) = delete;

    // -- attributes of the current element
    // The value is `format` applied to the arguments, printf-style; a null format
    // writes the bare name.
    void attr(const char* name, const char* format, ...) VQK_PRINTF_LIKE(3, 4);
    void vattr(const char* name, const char* format, va_list args);
    void attrBool(const char* name, bool value);                    // 1 or 0
    void attrInt(const char* name, int value);                      // "%i"
    void attrI1(const char* name, int value) { attrInt(name, value); }
    void attrUint(const char* name, unsigned int value);            // "%u"
    void attrID1(const char* name, uint64 value);                   // decimal
    void attrD1(const char* name, double value);                    // "%.15g"
    void attrDec(const char* name, double value) { attrD1(name, value); }
    void attrI2(const char* name, int a, int b);                    // "%i %i"
    void attrB2(const char* name, bool a, bool b);                  // "%i %i"
    void attrI3(const char* name, int a, int b, int c);             // "%i %i %i"
    // "%.15g" joined by blanks, components below the double epsilon in magnitude as 0.
    // Doubles are printf's bytes, so they take the decimal point of the program's
    // numeric locale ('.' unless the program chose another).
    void attrD2(const char* name, double a, double b);
    void attrD3(const char* name, double a, double b, double c);
    void attrD4(const char* name, double a, double b, double c, double d);
    void attrT(const char* name, const double (&v)[2]) { attrD2(name, v[0], v[1]); }
    void attrT(const char* name, const double (&v)[3]) { attrD3(name, v[0], v[1], v[2]); }
    // Each component fixed with 15 decimals, trailing zeros and a trailing point
    // removed (2.0 gives "2"); a component longer than 29 characters gives "#INF".
    void attrDec3(const char* name, double a, double b, double c);
    // Null or empty text writes an empty value. Wide text is converted with the C
    // library's conversion of the current locale; text it cannot convert gives an
    // empty value.
    void attrStr(const char* name, const char* value);
    void attrStr(const char* name, const CTStr<char>& value);
    void attrStr(const char* name, const wchar_t* value);
    void attrStr(const char* name, const CTStr<wchar_t>& value);

    // -- content
    // A whole child element with text content on one line: "<name>text</name>".
    // The text is written raw.
    void text(const char* name, const char* format, ...) VQK_PRINTF_LIKE(3, 4);
    CXmlOut& operator<<(const char* s); // "%s"
    CXmlOut& operator<<(int value);     // "%i"
    CXmlOut& operator<<(double value);  // "%.15g"
    // Opens the current element's body for text, then writes `length` bytes unchanged.
    void write(const char* data, int length);
    // "<!-- text -->" and a line feed, indented to the current element's depth.
    void comment(const char* text);
    // Opens the current element's body for text, then the indent string n times when
    // n > 0, else (current depth - n) times.
    void indent(int n);
    // Copies another XML file's content, from its first element start on, into the
    // current element's body (CR LF turned into LF). False when the file cannot be
    // opened or read or holds no element start. The content is handed to operator()
    // as its format without arguments: "%%" in the file gives one '%', any other '%'
    // stands for itself (it is doubled in that format).
    bool insertXml(const char* path);
    bool insertXml(const wchar_t* path);

    // -- settings
    // The indentation unit printed once per level; not copied, and read each time it
    // is printed. It goes out as the formatted print writes it with no arguments: "%%"
    // gives one '%' (a lone '%' is written as it is). Null (the default) turns
    // indentation off.
    void setIndent(const char* indent);
    const char* indentString() const { return m_indent; }
    // 1, 2, 3, ... from a new writer.
    int newId() {
        m_id = int(unsigned(m_id) + 1u); // wraps instead of overflowing
        return m_id;
    }
    void setStop(int stop) { m_stop = stop; }
    int stop() const { return m_stop; }
    // No line break after any tag.
    bool isRawTags() const { return m_rawTags; }
    void setRawTags(bool raw) { m_rawTags = raw; }
    // Attribute names written with their first letter in lower case.
    void setSmallFirstLetterAttrName(bool small) { m_smallFirstLetter = small; }
    bool isSmallFirstLetterAttrName() const { return m_smallFirstLetter; }
    // Stored for the value writers of callers; the writer itself never scales.
    void setUseScaling(bool use) { m_useScaling = use; }
    bool isUseScaling() const { return m_useScaling; }
    void setScaleCoef(double coef) { m_scaleCoef = coef; }
    double scaleCoef() const { return m_scaleCoef; }

    // The innermost open element, null when none.
    CXmlOutElem* current() const { return m_current; }

private:
    friend class CXmlOutElem;

    // Prints the indent string n times, or current-depth times when n < 0.
    void shift(int n);
    bool insert(FILE* in);
    void vraw(const char* format, va_list args);
    // Writes the start tag of a current element that has none yet.
    void beginAttr();
    // Writes ` name="`, then the value that `fill` puts at the pointer it is given
    // (with room for `valueRoom` bytes; it returns the value's end), then '"'.
    template <class Fill> void attrWith(const char* name, size_t valueRoom, Fill fill);
    // Escapes a value at p, growing the block when the reserved room is too small.
    char* putEscaped(char* p, const char* value, size_t n);
    // Formats with the C library into the value buffer (or, for a value of 1024 bytes
    // or more, a buffer of its own) and escapes the result at p.
    char* putFormatted(char* p, const char* format, va_list args);
    char* putFormatted(char* p, const char* format, ...);
    void attrInts(const char* name, const int* v, int n);
    void attrDoubles(const char* name, const double* v, int n);

    // Fixed pieces gather in the escaped-value buffer and go out with one block write
    // at the end of each operation (endOp). A piece too long to be worth copying goes
    // straight to the stream after what was gathered.
    void put(const char* s, size_t n) {
        if (!n)
            return;
        if (n > kDirectBytes) {
            putDirect(s, n);
            return;
        }
        uint32_t size = m_escaped.size();
        makeRoom(n);
        std::memcpy(m_escaped.data() + size, s, n);
        m_escaped.resize(size + uint32_t(n));
    }
    void put(const char* s) {
        if (s)
            put(s, std::strlen(s));
    }
    void put(char c) { m_escaped.push_back(c); }
    void putDirect(const char* s, size_t n);
    // Room for n more bytes; the common case, room enough, costs one comparison.
    // Throws std::bad_alloc when the block cannot grow that far.
    void makeRoom(size_t n) {
        if (m_escaped.size() + n > m_escaped.capacity())
            growRoom(n);
    }
    void growRoom(size_t n);
    // The indent string `times` times, as the formatted print writes it.
    void putIndent(long long times);
    // Room for an attribute with a value of up to `valueRoom` bytes; returns where the
    // value goes, after ` name="`.
    char* openAttr(const char* name, size_t valueRoom);
    // Ends the value at `end` with the closing quote.
    void closeAttr(char* end);
    // Ends one operation: hands the gathered bytes to the stream.
    void endOp() { writePending(); }
    static constexpr size_t kDirectBytes = 16384;

    CXmlOutElem* m_current = nullptr;
    int m_id = 0;
    int m_stop = 0;
    const char* m_indent = nullptr;
    char m_value[kValueBufferSize];
    TVector<char> m_escaped;
    bool m_rawTags = false;
    bool m_smallFirstLetter = false;
    bool m_useScaling = false;
    double m_scaleCoef = 1.0;
    // Changes whenever the stream is opened or closed, so elements of an earlier
    // stream stay silent.
    unsigned m_generation = 1;
};

// The process-wide writer on standard output, used by the job host and the reporting
// family.
extern VQK_API CXmlOut xout;

} // namespace vq
