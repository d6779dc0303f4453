// The referee on libxml2: the document parsed with xmlReadMemory, queried with its
// XPath engine.
#pragma once

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

class CXmlReferee {
public:
    explicit CXmlReferee(const std::string& text) {
        m_doc = xmlReadMemory(text.data(), int(text.size()), "referee.xml", nullptr,
                              XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
        if (m_doc)
            m_ctx = xmlXPathNewContext(m_doc);
    }
    ~CXmlReferee() {
        if (m_ctx)
            xmlXPathFreeContext(m_ctx);
        if (m_doc)
            xmlFreeDoc(m_doc);
    }
    CXmlReferee(const CXmlReferee&) = delete;
    CXmlReferee& operator=(const CXmlReferee&) = delete;

    bool wellFormed() const { return m_doc != nullptr; }

    // The number of nodes the expression selects.
    int count(const char* xpath) const {
        int n = 0;
        eval(xpath, [&](xmlXPathObjectPtr r) { n = r->nodesetval ? r->nodesetval->nodeNr : 0; });
        return n;
    }
    // The string value of the expression ("" when it selects nothing).
    std::string str(const char* xpath) const {
        std::string s;
        eval(xpath, [&](xmlXPathObjectPtr r) {
            xmlChar* v = xmlXPathCastToString(r);
            if (v)
                s = reinterpret_cast<const char*>(v);
            xmlFree(v);
        });
        return s;
    }
    // The integer value of the expression; INT_MIN when it selects nothing or no number.
    int num(const char* xpath) const {
        std::string s = str(xpath);
        char* end = nullptr;
        long v = std::strtol(s.c_str(), &end, 10);
        return s.empty() || *end ? INT_MIN : int(v);
    }
    // The string values of every selected node, in document order.
    std::vector<std::string> strs(const char* xpath) const {
        std::vector<std::string> out;
        eval(xpath, [&](xmlXPathObjectPtr r) {
            if (!r->nodesetval)
                return;
            for (int i = 0; i < r->nodesetval->nodeNr; ++i) {
                xmlChar* v = xmlNodeGetContent(r->nodesetval->nodeTab[i]);
                out.push_back(v ? reinterpret_cast<const char*>(v) : "");
                xmlFree(v);
            }
        });
        return out;
    }

private:
    template <class F> void eval(const char* xpath, F f) const {
        if (!m_ctx)
            return;
        xmlXPathObjectPtr r = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(xpath), m_ctx);
        if (r)
            f(r);
        xmlXPathFreeObject(r);
    }

    xmlDocPtr m_doc = nullptr;
    xmlXPathContextPtr m_ctx = nullptr;
};
