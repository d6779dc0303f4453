// The document service on libxml2's tree.
#include "vqk/platform/xml_document.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstring>

namespace vq {
namespace platform {
namespace {

const xmlChar* X(const char* s) { return reinterpret_cast<const xmlChar*>(s); }

bool hasName(xmlNodePtr n, const char* name) {
    return n->type == XML_ELEMENT_NODE && xmlStrcmp(n->name, X(name)) == 0;
}

bool attrEquals(xmlNodePtr n, const char* key, const char* value) {
    xmlChar* v = xmlGetProp(n, X(key));
    const bool eq = v && xmlStrcmp(v, X(value)) == 0;
    xmlFree(v);
    return eq;
}

// Depth-first, document order.
template <class F> xmlNodePtr walk(xmlNodePtr n, F&& visit) {
    for (; n; n = n->next) {
        if (n->type != XML_ELEMENT_NODE)
            continue;
        if (visit(n))
            return n;
        if (xmlNodePtr hit = walk(n->children, visit))
            return hit;
    }
    return nullptr;
}

class CLibXmlDocument final : public CXmlDocument {
public:
    ~CLibXmlDocument() override { drop(); }

    bool load(const char* path) override {
        drop();
        m_doc = xmlReadFile(path, nullptr, XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
        return m_doc && xmlDocGetRootElement(m_doc);
    }
    void reset(const char* root) override {
        drop();
        m_doc = xmlNewDoc(X("1.0"));
        xmlDocSetRootElement(m_doc, xmlNewDocNode(m_doc, nullptr, X(root), nullptr));
    }
    bool isEmpty() const override { return !m_doc || !xmlDocGetRootElement(m_doc); }
    bool save(const char* path) const override {
        return m_doc && xmlSaveFormatFileEnc(path, m_doc, "utf-8", 1) >= 0;
    }

    bool getAttr(const char* elem, const char* key, const char* value, const char* attr,
                 std::string& out) const override {
        xmlNodePtr n = find(elem, key, value);
        xmlChar* v = n ? xmlGetProp(n, X(attr)) : nullptr;
        if (!v)
            return false;
        out = reinterpret_cast<const char*>(v);
        xmlFree(v);
        return true;
    }
    bool setAttr(const char* elem, const char* key, const char* value, const char* attr,
                 const char* text) override {
        xmlNodePtr n = find(elem, key, value);
        return n && xmlSetProp(n, X(attr), X(text ? text : ""));
    }
    void listAttr(const char* elem, const char* attr, std::vector<std::string>& out) const override {
        out.clear();
        if (isEmpty())
            return;
        walk(xmlDocGetRootElement(m_doc), [&](xmlNodePtr n) {
            if (hasName(n, elem)) {
                xmlChar* v = xmlGetProp(n, X(attr));
                if (v)
                    out.emplace_back(reinterpret_cast<const char*>(v));
                xmlFree(v);
            }
            return false;
        });
    }
    bool replaceTopElement(const CXmlDocument& fromDoc, const char* elem, const char* key,
                           const char* value) override {
        const auto* from = dynamic_cast<const CLibXmlDocument*>(&fromDoc);
        if (!from || isEmpty() || from->isEmpty())
            return false;
        xmlNodePtr root = xmlDocGetRootElement(m_doc);
        xmlNodePtr mine = topChild(root, elem, key, value);
        xmlNodePtr theirs = hasName(xmlDocGetRootElement(from->m_doc), elem) &&
                                    attrEquals(xmlDocGetRootElement(from->m_doc), key, value)
                                ? xmlDocGetRootElement(from->m_doc)
                                : topChild(xmlDocGetRootElement(from->m_doc), elem, key, value);
        if (!theirs) {
            if (mine) {
                xmlUnlinkNode(mine);
                xmlFreeNode(mine);
            }
            return true;
        }
        xmlNodePtr copy = xmlDocCopyNode(theirs, m_doc, 1);
        if (!copy)
            return false;
        if (mine) {
            xmlReplaceNode(mine, copy);
            xmlFreeNode(mine);
        } else {
            xmlAddChild(root, copy);
        }
        return true;
    }

private:
    void drop() {
        if (m_doc)
            xmlFreeDoc(m_doc);
        m_doc = nullptr;
    }
    xmlNodePtr find(const char* elem, const char* key, const char* value) const {
        if (isEmpty())
            return nullptr;
        return walk(xmlDocGetRootElement(m_doc),
                    [&](xmlNodePtr n) { return hasName(n, elem) && attrEquals(n, key, value); });
    }
    static xmlNodePtr topChild(xmlNodePtr root, const char* elem, const char* key, const char* value) {
        for (xmlNodePtr n = root->children; n; n = n->next)
            if (hasName(n, elem) && attrEquals(n, key, value))
                return n;
        return nullptr;
    }
    xmlDocPtr m_doc = nullptr;
};

} // namespace

std::unique_ptr<CXmlDocument> CXmlDocument::create() {
    return std::unique_ptr<CXmlDocument>(new CLibXmlDocument);
}

} // namespace platform
} // namespace vq
