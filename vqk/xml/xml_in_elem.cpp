// CXmlElemIn and the forward searches readElemBeg and findElem.
#include "vqk/xml/xml_in.h"

#include <cstring>

namespace vq {

CXmlElemIn::CXmlElemIn(CXmlIn& in, const char* name) : m_in(&in) { begin(name); }

CXmlElemIn::CXmlElemIn(CXmlElemIn* parent, CXmlIn* in, const char* name)
    : m_in(parent ? parent->m_in : in), m_parent(parent) {
    if (!m_in)
        throw xmlInErrNotOpen;
    begin(name);
}

CXmlElemIn::CXmlElemIn(const CXmlElemIn& other)
    : m_in(other.m_in), m_parent(other.m_parent), m_state(other.m_state), m_name(other.m_name) {
    // Only one of the two may consume the end tag: the copy does, the source no longer.
    if (other.m_state == eXmlTagStart)
        other.m_state = eXmlTagEmpty;
}

void CXmlElemIn::begin(const char* name) {
    m_name = name;
    if (m_parent && m_parent->m_state == -1) {
        // The enclosing element is closed already: its end tag is in hand, and this
        // element can only be that same tag.
        if (name && !m_in->isTag(name))
            throw m_in->failAt(xmlInErrUnexpectedTag, m_in->m_length + 2);
    } else {
        m_in->read(name);
    }
    m_state = m_in->tagType();
    if (m_state == eXmlTagEnd) {
        m_state = -1;
        if (m_parent)
            m_parent->m_state = -1;
    }
}

CXmlElemIn::~CXmlElemIn() {
    // A destructor throws nothing; a broken document has been reported by whatever
    // threw while this scope was open.
    if (m_state == eXmlTagStart && m_in->isOpen())
        m_in->_readEnd(m_name.str());
}

bool readElemBeg(CXmlIn& in, const char* name, const char* skipName, const char* stopName) {
    while (in.read2()) {
        if (!in.isTagEnd() && (!name || in.isTag(name)))
            return true;
        if (in.isTag(skipName)) {
            in.skip();
        } else if (in.isTag(stopName)) {
            in.setReady();
            return false;
        }
    }
    return false;
}

bool findElem(CXmlIn& in, const char* name, const char* attrName, const char* attrValue,
              const char* skipName) {
    while (in.read2()) {
        if (!in.isTagEnd() && (!name || in.isTag(name))) {
            if (!attrName)
                return true;
            const char* v = in.attrStr(attrName, nullptr);
            if (v && (!attrValue || std::strcmp(v, attrValue) == 0))
                return true;
        } else if (in.isTag(skipName)) {
            in.skip();
        }
    }
    return false;
}

} // namespace vq
