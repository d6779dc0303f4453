// vqk/xml/xml_in.h
//
// CXmlIn is the library's pull reader for XML files. It opens a file, hands out one
// tag at a time through the tokenizer it derives from, checks that tags come in the
// order the caller expects, converts attributes to typed values with defaults and
// reads the text between tags. CXmlElemIn reads one element as a scoped object, and
// readElemBeg/findElem search forward for an element.
//
//   vq::CXmlIn in("job.xml");                 // throws "File is not open"
//   in.readHeader();                          // the "<?xml ...?>" line, when there is one
//   vq::CXmlElemIn job(in, "job");            // <job name="convert" n="3">
//   int n = in.attrInt("n", 0);
//   const char* name = in.attrStr("name", "");
//   while (!in.isNextTag("job")) {            // the end tag of job comes back as "job"
//       vq::CXmlElemIn step(&job, &in, "step");
//       vq::CStr text;
//       in.getText(text, true);
//   }                                         // ~CXmlElemIn consumes </step>, </job>
//
// Failures: every reading operation throws its message as a `const char*`: the
// tokenizer's four "XML error: ..." texts, "Unexpected tag", "Missed required
// attribute" or "File is not open" (the pointers below). Callers catch around a whole
// document; after a throw the reader is safe to close, reopen or destroy. read2, open
// and the attribute reads without `required` report by their results instead.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/xml/xin.h"

#include <array>
#include <cstdio>

namespace vq {

// The reader's own messages; the pointers thrown are these very texts.
VQK_API extern const char* const xmlInErrUnexpectedTag; // "Unexpected tag"
VQK_API extern const char* const xmlInErrMissedAttr;    // "Missed required attribute"
VQK_API extern const char* const xmlInErrNotOpen;       // "File is not open"

class VQK_API CXmlIn : public ApXin {
public:
    // Room for the stored path, terminator included.
    enum { ePathSize = 260 };

    CXmlIn();
    // Open `path` (narrow paths are UTF-8); throw "File is not open" when it can't be.
    explicit CXmlIn(const char* path);
    explicit CXmlIn(const wchar_t* path);
    ~CXmlIn();

    // Close any open stream, reset the tokenizer and open `path` for reading in text
    // mode. Returns whether the stream is open; nothing is thrown. A path of 260
    // characters or more is opened all the same, but is not stored (fileName() empty).
    bool open(const char* path);
    bool open(const wchar_t* path);
    void close();
    bool isOpen() const { return m_file != nullptr; }
    // The stored path: UTF-8 text, or wide; empty when no file is open.
    CTStr<char> fileName() const;
    const wchar_t* filePath() const { return m_path; }

    // -- Tags. Each reading operation throws the tokenizer's message on a tokenizer
    // error and "File is not open" without a stream.

    // The next tag; a null `name` accepts any tag, another name throws "Unexpected tag".
    void read(const char* name = nullptr);
    // The same without exceptions: false on an error or another name (that tag is then
    // consumed, not pushed back).
    bool read2(const char* name = nullptr);
    // One construct read in header mode: true when its name is exactly "?xml" (the
    // declaration). Otherwise false, and the construct is pushed back for the next read
    // to deliver. That holds for a leading comment, document type or processing
    // instruction as well: it then comes back as a tag called "!--", "!DOCTYPE" or
    // "?name" (an empty element), or, when its text does not split into attributes,
    // readHeader throws "XML error: invalid tag attributes". Documents that may start
    // that way are read with read() alone, which passes over such constructs.
    bool readHeader();
    // The end tag of `name` (any end tag when null); see ApXin::_readEnd.
    void readEnd(const char* name);
    // Skips the rest of the element whose start tag is in hand.
    void skip();
    // Looks at the next tag without consuming it.
    bool isNextTag(const char* name);
    void getNextTag(CTStr<char>& name);
    // Reads the next tag; a tag with another name than `name` is pushed back and gives
    // false. Otherwise the tag is consumed, the element it starts is skipped, and true
    // is returned. With a null `name` (or the same name) that includes an end tag: it
    // is consumed and stays the tag in hand, so readEnd still finds it there.
    bool skipElem(const char* name = nullptr);
    // skipElem, then every directly following element called `name` (any when null);
    // the first tag that is an end tag or has another name is pushed back. Returns
    // whether the first skipElem succeeded.
    bool skipElems(const char* name = nullptr);

    // -- The tag in hand.
    bool isTag(const char* name) const { return name && ApXin::isTag(name); }
    const char* tagStr() const { return m_tag; }
    // Copies the tag name; false (and an empty buffer) when it does not fit.
    bool getTag(char* buffer, int size) const;
    void getTag(CTStr<char>& name) const;
    EXmlTagType end() const { return m_type; }
    // Pushes the tag in hand back: the next read delivers it again.
    void setReady() { m_hold = true; }
    int nAttr() const { return int(m_attrs.size()); }
    // Name and decoded value of attribute `i`; "" when there is no such attribute.
    const char* attrName(int i) const;
    const char* attrVal(int i) const;
    void getAttrName(CTStr<char>& out, int i) const { out = attrName(i); }
    void getAttrValue(CTStr<char>& out, int i) const { out = attrVal(i); }
    bool hasAttr(const char* name) const { return name && findAttr(name) != nullptr; }

    // -- Attributes of the tag in hand.

    // With a null `format` the value pointer (into the tag buffer, valid until the next
    // tag) is stored into *(const char**)target. Otherwise the value is converted with
    // sscanf(value, format, target), and any scanner result other than 0 counts as
    // success, so an empty value "converts" with nothing stored. A missing attribute,
    // or a value where nothing converts, throws "Missed required attribute" when
    // `required`, else gives false.
    bool attr(const char* name, const char* format, void* target, bool required = false) const;
    // atoi of the first of the names that is present; `def` when none is.
    int attrInt(const char* name, int def) const;
    int attrInt(const char* name, const char* alternative, int def) const;
    int attrInt(const char* name, const char* alternative1, const char* alternative2,
                int def) const;
    // "true" and "false" exactly; any other value is atoi(value) != 0.
    bool attrBool(const char* name, bool def) const;
    unsigned attrUint(const char* name, unsigned def) const; // strtoul, wrapped
    double attrDec(const char* name, double def) const;      // atof
    float attrFloat(const char* name, float def) const;      // atof
    const char* attrStr(const char* name, const char* def) const;
    uint64 attrID1(const char* name, uint64 def) const;

    // Pairs and tuples: `out` receives all components, or the default `def` (which may
    // be `out` itself; null leaves `out` alone) unless the attribute is present and
    // every component converts. Returns whether the attribute supplied the values.
    bool attrI2(const char* name, int* out, const int* def) const;   // "%i %i"
    bool attrB2(const char* name, bool* out, const bool* def) const; // "%i %i", != 0
    bool attrI3(const char* name, int* out, const int* def) const;   // "%i %i %i"
    bool attrD2(const char* name, double* out, const double* def) const;
    bool attrD3(const char* name, double* out, const double* def) const;
    bool attrD4(const char* name, double* out, const double* def) const;
    std::array<double, 2> attrT(const char* name, const std::array<double, 2>& def) const;
    std::array<double, 3> attrT(const char* name, const std::array<double, 3>& def) const;

    // -- Text after the tag in hand, straight from the stream.

    // Empties `text`, then takes every byte up to the next '<' (left in the stream) or
    // the end of the file, as it stands: entities are not decoded. With `trim`, blanks
    // at both ends are dropped. A text of a gigabyte or more throws std::bad_alloc.
    void getText(CTStr<char>& text, bool trim = false);
    // One line, as fgets reads it; false at the end of the file or without a stream.
    bool gets(char* buffer, int size);
    // One value read with "%i" / "%lf"; `def` unless exactly one converted.
    int getI1(int def);
    double getD1(double def);
    // The tag in hand as one line: <name a="v" .../> with decoded values, whatever its
    // type; values are not escaped again.
    void getTagAsLine(CTStr<char>& line) const;

private:
    // Throws "File is not open" when there is no stream.
    void requireStream() const;
    // Reads the next tag and throws the tokenizer's message.
    void readAny();
    // Reads the next tag and pushes it back.
    void peek();
    template <int N, class T> bool scanTuple(const char* name, const char* format, T* out) const;

    wchar_t m_path[ePathSize];
};

// A scoped reader of one element. The constructor reads the element's tag (another
// tag throws "Unexpected tag"); the destructor consumes the element's end tag when the
// start tag had content, dropping any error. When the tag read is already an end tag
// (the enclosing element was empty), the scope and its parent are marked closed (-1),
// so the parent does not look for its end tag again and a further child only compares
// the tag in hand.
//
//   vq::CXmlElemIn list(in, "list");
//   while (in.isNextTag("item")) {
//       vq::CXmlElemIn item(&list, &in, "item");
//       sum += in.attrInt("v", 0);
//   }
//
// A copy takes over the duty of closing the element: the source then closes nothing.
class VQK_API CXmlElemIn {
public:
    CXmlElemIn(CXmlIn& in, const char* name);
    // With a parent, the parent's reader is used and `in` is not looked at (it may be
    // null); without one, `in` is the reader, and null throws "File is not open".
    CXmlElemIn(CXmlElemIn* parent, CXmlIn* in, const char* name);
    CXmlElemIn(const CXmlElemIn& other);
    ~CXmlElemIn();

    CXmlIn& in() const { return *m_in; }
    CXmlElemIn* parent() const { return m_parent; }
    // The tag type read (0 start, 1 end, 2 empty element), -1 when closed already.
    int32_t state() const { return m_state; }
    const char* name() const { return m_name.str(); }

private:
    CXmlElemIn& operator=(const CXmlElemIn&);
    void begin(const char* name);

    CXmlIn* m_in = nullptr;
    CXmlElemIn* m_parent = nullptr;
    mutable int32_t m_state = -1;
    CTStr<char> m_name;
};

// Searches forward for the start of an element: true at the first tag that is not an
// end tag and is called `name` (any when null). Elements called `skipName` are
// skipped whole (an error there is thrown); a tag called `stopName` is pushed back and
// gives false; every other tag, end tags included, is passed over without skipping
// its content. False on a tokenizer error.
VQK_API bool readElemBeg(CXmlIn& in, const char* name, const char* skipName = nullptr,
                         const char* stopName = nullptr);
// The same search, but it stops only at a start tag called `name` (any when null)
// whose attribute `attrName` is present and equal to `attrValue` (any value when null).
VQK_API bool findElem(CXmlIn& in, const char* name, const char* attrName, const char* attrValue,
                      const char* skipName = nullptr);

} // namespace vq
