// The document service on the system's COM XML document object (version 3.0).
#include "vqk/platform/xml_document.h"

#include <windows.h>
#include <msxml2.h>
#include <objbase.h>

#include <functional>

namespace vq {
namespace platform {
namespace {

const IID kIidDocument = {0x2933BF81, 0x7B36, 0x11d2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
const IID kIidElement = {0x2933BF86, 0x7B36, 0x11d2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

template <class T> struct TCom {
    T* p = nullptr;
    TCom() = default;
    TCom(const TCom&) = delete;
    ~TCom() { if (p) p->Release(); }
    T** out() { if (p) { p->Release(); p = nullptr; } return &p; }
    T* operator->() const { return p; }
    explicit operator bool() const { return p != nullptr; }
};

struct SBstr {
    BSTR b = nullptr;
    explicit SBstr(const char* utf8) {
        const int n = MultiByteToWideChar(CP_UTF8, 0, utf8 ? utf8 : "", -1, nullptr, 0);
        b = SysAllocStringLen(nullptr, n > 0 ? n - 1 : 0);
        if (b && n > 0)
            MultiByteToWideChar(CP_UTF8, 0, utf8 ? utf8 : "", -1, b, n);
    }
    SBstr(const SBstr&) = delete;
    ~SBstr() { SysFreeString(b); }
};

std::string utf8(const wchar_t* w) {
    if (!w)
        return std::string();
    const int n = WideCharToMultiByte(CP_UTF8, 0, w, -1, nullptr, 0, nullptr, nullptr);
    std::string s(n > 0 ? n - 1 : 0, '\0');
    if (n > 1)
        WideCharToMultiByte(CP_UTF8, 0, w, -1, &s[0], n, nullptr, nullptr);
    return s;
}

VARIANT pathVariant(BSTR path) {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BSTR;
    v.bstrVal = path;
    return v;
}

bool isElement(IXMLDOMNode* n, const char* name) {
    DOMNodeType t;
    if (FAILED(n->get_nodeType(&t)) || t != NODE_ELEMENT)
        return false;
    BSTR nodeName = nullptr;
    n->get_nodeName(&nodeName);
    const bool same = utf8(nodeName) == name;
    SysFreeString(nodeName);
    return same;
}

bool attribute(IXMLDOMNode* n, const char* name, std::string& out) {
    TCom<IXMLDOMElement> e;
    if (FAILED(n->QueryInterface(kIidElement, reinterpret_cast<void**>(e.out()))))
        return false;
    SBstr attr(name);
    VARIANT v;
    VariantInit(&v);
    if (e->getAttribute(attr.b, &v) != S_OK || v.vt != VT_BSTR) {
        VariantClear(&v);
        return false;
    }
    out = utf8(v.bstrVal);
    VariantClear(&v);
    return true;
}

bool attrEquals(IXMLDOMNode* n, const char* key, const char* value) {
    std::string v;
    return attribute(n, key, v) && v == value;
}

// Depth-first over the elements under `n` (n itself included); stops when visit says
// true and hands that node back (AddRef'ed) in `hit`.
bool walk(IXMLDOMNode* n, const std::function<bool(IXMLDOMNode*)>& visit, IXMLDOMNode** hit) {
    DOMNodeType t;
    if (FAILED(n->get_nodeType(&t)) || t != NODE_ELEMENT)
        return false;
    if (visit(n)) {
        if (hit) {
            n->AddRef();
            *hit = n;
        }
        return true;
    }
    TCom<IXMLDOMNode> child;
    n->get_firstChild(child.out());
    while (child) {
        if (walk(child.p, visit, hit))
            return true;
        TCom<IXMLDOMNode> next;
        child->get_nextSibling(next.out());
        std::swap(child.p, next.p);
    }
    return false;
}

class CComXmlDocument final : public CXmlDocument {
public:
    CComXmlDocument() {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        CLSID clsid;
        if (SUCCEEDED(CLSIDFromProgID(L"Msxml2.DOMDocument.3.0", &clsid)))
            CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, kIidDocument,
                             reinterpret_cast<void**>(m_doc.out()));
        if (m_doc) {
            m_doc->put_async(VARIANT_FALSE);
            m_doc->put_validateOnParse(VARIANT_FALSE);
            m_doc->put_resolveExternals(VARIANT_FALSE);
            m_doc->put_preserveWhiteSpace(VARIANT_TRUE);
        }
    }

    bool load(const char* path) override {
        if (!m_doc)
            return false;
        SBstr p(path);
        VARIANT_BOOL ok = VARIANT_FALSE;
        m_doc->load(pathVariant(p.b), &ok);
        return ok == VARIANT_TRUE && !isEmpty();
    }
    void reset(const char* root) override {
        if (!m_doc)
            return;
        VARIANT_BOOL ok;
        std::string text = std::string("<") + root + "/>";
        SBstr xml(text.c_str());
        m_doc->loadXML(xml.b, &ok);
    }
    bool isEmpty() const override {
        TCom<IXMLDOMElement> root;
        return !m_doc || m_doc->get_documentElement(root.out()) != S_OK || !root;
    }
    bool save(const char* path) const override {
        if (!m_doc)
            return false;
        SBstr p(path);
        return SUCCEEDED(m_doc->save(pathVariant(p.b)));
    }

    bool getAttr(const char* elem, const char* key, const char* value, const char* attr,
                 std::string& out) const override {
        TCom<IXMLDOMNode> n;
        return find(elem, key, value, n.out()) && attribute(n.p, attr, out);
    }
    bool setAttr(const char* elem, const char* key, const char* value, const char* attr,
                 const char* text) override {
        TCom<IXMLDOMNode> n;
        TCom<IXMLDOMElement> e;
        if (!find(elem, key, value, n.out()) ||
            FAILED(n->QueryInterface(kIidElement, reinterpret_cast<void**>(e.out()))))
            return false;
        SBstr a(attr), t(text);
        VARIANT v;
        VariantInit(&v);
        v.vt = VT_BSTR;
        v.bstrVal = t.b;
        return SUCCEEDED(e->setAttribute(a.b, v));
    }
    void listAttr(const char* elem, const char* attr, std::vector<std::string>& out) const override {
        out.clear();
        TCom<IXMLDOMElement> root;
        if (!m_doc || m_doc->get_documentElement(root.out()) != S_OK)
            return;
        walk(root.p, [&](IXMLDOMNode* n) {
            std::string v;
            if (isElement(n, elem) && attribute(n, attr, v))
                out.push_back(v);
            return false;
        }, nullptr);
    }
    bool replaceTopElement(const CXmlDocument& fromDoc, const char* elem, const char* key,
                           const char* value) override {
        const auto* from = dynamic_cast<const CComXmlDocument*>(&fromDoc);
        TCom<IXMLDOMElement> root, theirRoot;
        if (!from || !m_doc || !from->m_doc || m_doc->get_documentElement(root.out()) != S_OK ||
            from->m_doc->get_documentElement(theirRoot.out()) != S_OK)
            return false;
        TCom<IXMLDOMNode> mine, theirs;
        topChild(root.p, elem, key, value, mine.out());
        if (isElement(theirRoot.p, elem) && attrEquals(theirRoot.p, key, value)) {
            theirRoot->AddRef();
            *theirs.out() = theirRoot.p;
        } else {
            topChild(theirRoot.p, elem, key, value, theirs.out());
        }
        TCom<IXMLDOMNode> copy, done;
        if (!theirs) {
            return !mine || SUCCEEDED(root->removeChild(mine.p, done.out()));
        }
        if (FAILED(theirs->cloneNode(VARIANT_TRUE, copy.out())))
            return false;
        if (mine)
            return SUCCEEDED(root->replaceChild(copy.p, mine.p, done.out()));
        return SUCCEEDED(root->appendChild(copy.p, done.out()));
    }

private:
    bool find(const char* elem, const char* key, const char* value, IXMLDOMNode** hit) const {
        TCom<IXMLDOMElement> root;
        if (!m_doc || m_doc->get_documentElement(root.out()) != S_OK)
            return false;
        return walk(root.p, [&](IXMLDOMNode* n) { return isElement(n, elem) && attrEquals(n, key, value); },
                    hit);
    }
    static bool topChild(IXMLDOMNode* root, const char* elem, const char* key, const char* value,
                         IXMLDOMNode** hit) {
        TCom<IXMLDOMNode> child;
        root->get_firstChild(child.out());
        while (child) {
            if (isElement(child.p, elem) && attrEquals(child.p, key, value)) {
                child->AddRef();
                *hit = child.p;
                return true;
            }
            TCom<IXMLDOMNode> next;
            child->get_nextSibling(next.out());
            std::swap(child.p, next.p);
        }
        return false;
    }
    TCom<IXMLDOMDocument> m_doc;
};

} // namespace

std::unique_ptr<CXmlDocument> CXmlDocument::create() {
    return std::unique_ptr<CXmlDocument>(new CComXmlDocument);
}

} // namespace platform
} // namespace vq
