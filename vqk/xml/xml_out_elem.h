// vqk/xml/xml_out_elem.h
//
// CXmlOutElem is one element of a CXmlOut document, opened by construction and closed
// by destruction; elements therefore nest as the scopes of the code that writes them.
// Nothing of an element is written when it is opened: the writer decides at the last
// possible moment whether it becomes "<e/>", "<e a="1"/>", a start tag with child
// lines and an indented end tag, or start tag, text and end tag on one line.
//
//   vq::CXmlOut out;
//   out.open("a.xml", false, false);
//   out.setIndent("  ");
//   {
//       vq::CXmlOutElem root(out, "root");
//       vq::CXmlOutElem item(out, "item");
//       out.attrInt("n", 1);                 // applies to the current element, item
//   }                                        // <root>\n  <item n="1"/>\n</root>\n
//
// CXmlOutElemKeeper opens an element only when it is given a writer, so code that may
// or may not write can scope an element unconditionally.
//
// Nothing here reports errors. An element opened on a closed writer, or that outlives
// the stream it was opened on (the writer closed or reopened meanwhile), writes nothing.
#pragma once

#include "vqk/config.h"

namespace vq {

class CXmlOut;

class VQK_API CXmlOutElem {
public:
    // What of the element has been written so far; the body counts as open with
    // eBodyElems or eBodyText (both may be set).
    enum EInfo {
        eNothing = 0,
        eHead = 1,      // "<name" written, attributes may follow
        eBodyElems = 2, // ">" and a line break written: child lines follow
        eBodyText = 4,  // ">" written, no line break: text follows
    };

    // Opens an element as the child of the writer's current element and makes it
    // current. `name` is not copied and must outlive the element. With a CDATA opener
    // the content becomes one CDATA section starting with that text.
    CXmlOutElem(CXmlOut& out, const char* name);
    CXmlOutElem(CXmlOut& out, const char* name, const char* cdataOpener);
    ~CXmlOutElem();

    CXmlOutElem(const CXmlOutElem&) = delete;

    const char* name() const { return m_name; }
    // 0 for a root; negative inside a CDATA section (nothing there is indented).
    int depth() const { return m_depth; }
    CXmlOutElem* parent() const { return m_parent; }
    const char* cdataOpener() const { return m_cdata; }
    int state() const { return m_state; }
    bool isBodyOpen() const { return (m_state & (eBodyElems | eBodyText)) != 0; }

private:
    friend class CXmlOut;
    CXmlOutElem& operator=(const CXmlOutElem&); // never defined

    // Writes the start tag and adds `bit` to the state.
    void head(int bit);
    // Opens the body (writing the start tag first when nothing was written yet).
    void body(int bit);
    bool isLive() const;

    const char* m_name;
    int m_depth = 0;
    CXmlOut& m_out;
    CXmlOutElem* m_parent = nullptr;
    const char* m_cdata;
    int m_state = eNothing;
    // The writer's stream generation this element belongs to; 0 for an element that
    // was opened on a closed writer.
    unsigned m_generation = 0;
};

class VQK_API CXmlOutElemKeeper {
public:
    // Opens CXmlOutElem(*out, name) when out is not null; holds nothing otherwise.
    CXmlOutElemKeeper(CXmlOut* out, const char* name);
    ~CXmlOutElemKeeper();

    CXmlOutElemKeeper(const CXmlOutElemKeeper&) = delete;
    CXmlOutElemKeeper& operator=(const CXmlOutElemKeeper&) = delete;

    CXmlOutElem* elem() const { return m_elem; }

private:
    CXmlOutElem* m_elem = nullptr;
};

} // namespace vq
