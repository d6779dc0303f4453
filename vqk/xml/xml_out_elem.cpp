#include "vqk/xml/xml_out_elem.h"

#include "vqk/xml/xml_out.h"

#include <climits>

namespace vq {

CXmlOutElem::CXmlOutElem(CXmlOut& out, const char* name) : CXmlOutElem(out, name, nullptr) {}

CXmlOutElem::CXmlOutElem(CXmlOut& out, const char* name, const char* cdataOpener)
    : m_name(name ? name : ""), m_out(out), m_cdata(cdataOpener) {
    if (!out.m_stream)
        return;
    m_parent = out.m_current;
    m_generation = out.m_generation;
    if (m_parent) {
        int d = m_parent->m_depth;
        // Inside a CDATA section depths go negative, which turns indentation off for
        // the whole subtree.
        if (d < 0)
            m_depth = d > INT_MIN ? d - 1 : d;
        else
            m_depth = m_parent->m_cdata ? ~d : d + 1;
        m_parent->body(eBodyElems);
        out.endOp();
    }
    out.m_current = this;
}

CXmlOutElem::~CXmlOutElem() {
    if (!isLive())
        return;
    CXmlOut& o = m_out;
    if (m_state & (eBodyElems | eBodyText)) {
        if (m_cdata)
            o.put("]]>", 3);
        else if (m_depth >= 1 && o.m_indent && !(m_state & eBodyText))
            o.putIndent(o.m_current ? o.m_current->m_depth : 0);
        o.put("</", 2);
        o.put(m_name);
        o.put('>');
    } else if (m_state == eHead) {
        o.put("/>", 2);
    } else {
        // Nothing written yet: the whole empty element, deliberately not indented.
        o.put('<');
        o.put(m_name);
        o.put("/>", 2);
    }
    if (!o.m_rawTags)
        o.put('\n');
    o.endOp();
    o.m_current = m_parent;
}

bool CXmlOutElem::isLive() const {
    return m_generation != 0 && m_generation == m_out.m_generation && m_out.m_stream;
}

void CXmlOutElem::head(int bit) {
    if (m_parent)
        m_parent->body(eBodyElems);
    CXmlOut& o = m_out;
    if (o.m_indent && o.m_stream && m_depth > 0)
        o.putIndent(m_depth);
    o.put('<');
    o.put(m_name);
    m_state |= bit;
}

void CXmlOutElem::body(int bit) {
    if (m_state & (eBodyElems | eBodyText)) {
        m_state |= bit;
        return;
    }
    if (m_state == eNothing)
        head(bit);
    else
        m_state |= bit;
    CXmlOut& o = m_out;
    o.put('>');
    if (m_cdata) {
        o.put("<![CDATA[", 9);
        o.put(m_cdata);
    } else if (bit == eBodyElems && !o.m_rawTags) {
        o.put('\n');
    }
}

CXmlOutElemKeeper::CXmlOutElemKeeper(CXmlOut* out, const char* name) {
    if (out)
        m_elem = new CXmlOutElem(*out, name);
}

CXmlOutElemKeeper::~CXmlOutElemKeeper() { delete m_elem; }

} // namespace vq
