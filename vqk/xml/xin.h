// vqk/xml/xin.h
//
// ApXin is the lowest layer of XML input: a tag-at-a-time tokenizer over a FILE*
// stream. It reads one construct between '<' and '>' at a time, cuts a start tag in
// place into its name and attributes (values decoded for &amp; &lt; &gt; &quot;), and
// lets the caller read the text after a tag straight from the stream with scanf-style
// conversions. It builds no tree and checks nothing beyond the tag syntax. The pull
// reader vq::CXmlIn derives from it.
//
//   FILE* f = fopen("points.xml", "r");
//   ApXin x(f);
//   if (const char* err = x._readBeg()) { ... }      // "<points n="2">"
//   int n = x.attrI1("n", 0);
//   double xyz[6];
//   ApXin_D1(x, xyz, 6);                             // the element's text
//   if (const char* err = x._readEnd("points")) { ... }
//
// Failures: every reading function returns null on success or one of the four
// message texts below, never throws. After an error the tag buffer and the attribute
// list hold whatever had been cut so far; the caller abandons the document, and
// errorPos() tells where it went wrong:
//
//   vq::SXmlPos at;
//   if (x.errorPos(at)) { ... at.line, at.column ... }
//
// The stream is not owned and not closed. It is read without taking its lock, so it
// belongs to this one tokenizer and to one thread at a time. Nothing is allocated per
// tag once the tag buffer and the attribute array have reached the largest tag's size.
#pragma once

#include "vqk/config.h"
#include "vqk/text/vector.h"

#include <array>
#include <cstdint>
#include <cstdio>

// The messages of the tokenizer; the pointers returned are these very texts.
VQK_API extern const char* const apXinErrEof;         // "XML error: unexpected end of file"
VQK_API extern const char* const apXinErrTag;         // "XML error: invalid tag"
VQK_API extern const char* const apXinErrAttributes;  // "XML error: invalid tag attributes"
VQK_API extern const char* const apXinErrTagEnd;      // "XML error: invalid tag end"

namespace vq {
// A place in a document: `offset` counts the bytes before it from the stream's start;
// `line` and `column` (in bytes) are 1-based.
struct SXmlPos {
    long long offset = 0;
    int line = 0;
    int column = 0;
};
} // namespace vq

// The kind of the tag in hand (32-bit).
enum EXmlTagType : int32_t {
    eXmlTagStart = 0, // <a ...>
    eXmlTagEnd = 1,   // </a>
    eXmlTagEmpty = 2, // <a .../>, or a header construct read in header mode
};

class VQK_API ApXin {
public:
    // One attribute of the tag in hand: both pointers lead into the tag buffer and are
    // valid until the next tag is read.
    struct SAttr {
        char* name;
        char* value;
    };

    // The state, in this order. It is public because the reader above pushes tags back
    // through the hold flag.
    const char* m_tag = "";            // name of the tag in hand (after the '/' of an end tag)
    EXmlTagType m_type = eXmlTagStart; // kind of the tag in hand
    bool m_hold = false;               // set: the next read delivers the tag in hand again
    FILE* m_file = nullptr;            // the stream, not owned
    vq::TVector<char> m_buf;           // text of the last construct, cut in place
    vq::TVector<SAttr> m_attrs;        // attributes of the tag in hand
    bool m_smallFirstLetter = false;   // attribute names compared with a lowered first letter
    uint32_t m_length = 0;             // bytes of the last construct between its '<' and '>'
    // The last error lies m_errorBack bytes before the stream position m_errorEnd (-1: no
    // error, or a stream that cannot tell its position). Only a failure sets them, also
    // one found by a lookup that changes nothing else.
    mutable long m_errorEnd = -1;
    mutable uint32_t m_errorBack = 0;

    ApXin();
    explicit ApXin(FILE* file);
    ApXin(const ApXin&) = delete;
    ApXin& operator=(const ApXin&) = delete;
    ~ApXin();

    // Binds the stream and resets the tag state; the buffers are kept.
    void init(FILE* file);

    // Reads the next tag, skipping comments, declarations and processing instructions.
    // With `header` not 0 the first such construct is delivered instead, as an empty
    // element (that is how "<?xml ...?>" is read). Null on success.
    const char* _readBeg() { return _readBegHeader(0); }
    const char* _readBegHeader(int header);
    // Consumes the end of the element `name`: the tag in hand when it is that element's
    // end tag or empty element, else the next tag, which must be its end tag (a null
    // `name` accepts any end tag there).
    const char* _readEnd(const char* name);
    // Skips the rest of the element whose start tag is in hand; afterwards the tag in
    // hand is its end tag. Nested elements of the same name are counted only when their
    // tags are bare ("<a>", "</a>"): a tag with attributes or blanks never counts.
    const char* _skip();

    const char* tag() const { return m_tag; }
    EXmlTagType tagType() const { return m_type; }
    bool isEmptyElem() const { return m_type == eXmlTagEmpty; }
    bool isTagStart() const { return m_type == eXmlTagStart; }
    bool isTagEnd() const { return m_type == eXmlTagEnd; }
    bool isTag(const char* name) const;

    // The first attribute called `name`, or null.
    SAttr* findAttr(const char* name);
    const SAttr* findAttr(const char* name) const;
    bool isAttrName(int index, const char* name) const;
    int nAttrs() const { return int(m_attrs.size()); }

    // Typed reads of one attribute; `def` when the attribute is missing.
    int attrI1(const char* name, int def) const;            // atoi
    bool attrB1(const char* name, bool def) const;          // atoi(value) != 0
    double attrD1(const char* name, double def) const;      // atof
    const char* attrS1(const char* name, const char* def) const; // the value in the tag buffer
    vq::uint64 attrID1(const char* name, vq::uint64 def) const;  // unsigned 64-bit; empty value gives 0
    // Three integers "%d %d %d" into `out`; `def` (which may be `out` itself, or null to
    // leave `out` alone) unless all three convert.
    void attrI3(const char* name, int* out, const int* def) const;
    // sscanf of the value with `format` into `target`: sscanf's result, 0 when missing.
    int attrScan(const char* name, const char* format, void* target) const;

    // Reads the text after the tag in hand from the stream, as fscanf does.
    int scanf(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(scanf, 2, 3)))
#endif
        ;
    // n values "%d", "%lf" or unsigned 64-bit each; nothing when n < 1. Every value is
    // attempted, one that does not convert keeps its old content; the reading stops
    // early only at the end of the stream or where the text no longer moves (a byte no
    // conversion takes). Returns the number of values that converted.
    int readI1(int* target, int n);
    int readD1(double* target, int n);
    int readID1(vq::uint64* target, int n);

    // Where the last error returned (or thrown by the reader above) lies: at the byte
    // where a tag stops making sense, at the '<' of a tag that is not the one expected
    // or never closes, or at the end of the stream. Nothing is counted while reading
    // succeeds: the stream is read again from its start when asked, then put back where
    // it was. False when there was no error since init() or the stream cannot be
    // repositioned (a pipe).
    bool errorPos(vq::SXmlPos& pos);
    // Notes the place of an error `back` bytes before the read position; returns `error`.
    const char* failAt(const char* error, uint32_t back) const;

    // Turning the flag on lowers at once the first letter of every attribute name of the
    // tag in hand; later tags are lowered as they are read.
    void setSmallFirstLetterAttrName(bool on);
    void makeSmallFirstLetterAttrName();
};

// The free forms; each forwards to the member of the same meaning.
VQK_API const char* ApXin_beg(ApXin& x);
VQK_API const char* ApXin_begHeader(ApXin& x, int header);
VQK_API const char* ApXin_end(ApXin& x, const char* name);
VQK_API const char* ApXin_skip(ApXin& x);
VQK_API bool ApXin_isTag(const ApXin& x, const char* name);
VQK_API int ApXin_attr(const ApXin& x, const char* name, const char* format, void* target);
VQK_API int ApXin_int(const ApXin& x, const char* name, int def);
VQK_API bool ApXin_bool(const ApXin& x, const char* name, bool def);
VQK_API double ApXin_dec(const ApXin& x, const char* name, double def);
VQK_API const char* ApXin_str(const ApXin& x, const char* name, const char* def);
VQK_API vq::uint64 ApXin_ID1(const ApXin& x, const char* name, vq::uint64 def);
VQK_API void ApXin_attrI3(const ApXin& x, const char* name, int* out, const int* def);
VQK_API int ApXin_I1(ApXin& x, int* target, int n);
VQK_API int ApXin_D1(ApXin& x, double* target, int n);
VQK_API int ApXin_ID1Ar(ApXin& x, vq::uint64* target, int n);

// Array elements such as <pts n="2">1 2 3 4 5 6</pts>: reads the start tag, takes the
// count from the attribute "n", else "N", else "Number" (0 when none), sizes the vector
// to it with zero items, reads that many items from the text and then the end tag
// `name`. An empty element keeps its items zero, and so does a text that runs short.
// A count above 65536 that the rest of the stream could not possibly hold (at least
// two bytes per number) is not believed: the vector then gets only the items that
// convert, so a broken count never forces a huge allocation.
VQK_API const char* apXmlReadI1Ex(ApXin& x, const char* name, vq::TVector<int>& v);
VQK_API const char* apXmlReadI3Ex(ApXin& x, const char* name, vq::TVector<std::array<int, 3>>& v);
VQK_API const char* apXmlReadD3Ex(ApXin& x, const char* name, vq::TVector<std::array<double, 3>>& v);
