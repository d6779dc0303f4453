// The referee on Windows: MSXML's DOM document through COM, with its XPath selection
// language. Texts are UTF-8 on this side and UTF-16 on MSXML's.
#pragma once

#include <windows.h>
#include <msxml2.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

class CXmlReferee {
public:
    explicit CXmlReferee(const std::string& text) {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        // Version 6.0 of the document, which selects with XPath by default; MinGW's
        // headers name neither it nor the interface's id, and no import library holds them.
        static const CLSID kDomDocument60 = {
            0x88d96a05, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};
        static const IID kDocument2 = {
            0x2933bf95, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};
        if (FAILED(CoCreateInstance(kDomDocument60, nullptr, CLSCTX_INPROC_SERVER, kDocument2,
                                    reinterpret_cast<void**>(&m_doc))))
            return;
        m_doc->put_async(VARIANT_FALSE);
        m_doc->put_validateOnParse(VARIANT_FALSE);
        m_doc->put_resolveExternals(VARIANT_FALSE);
        m_doc->put_preserveWhiteSpace(VARIANT_TRUE);
        setProperty(L"SelectionLanguage", L"XPath");
        BSTR xml = toBstr(text);
        VARIANT_BOOL ok = VARIANT_FALSE;
        m_parsed = SUCCEEDED(m_doc->loadXML(xml, &ok)) && ok == VARIANT_TRUE;
        SysFreeString(xml);
    }
    ~CXmlReferee() {
        if (m_doc)
            m_doc->Release();
    }
    CXmlReferee(const CXmlReferee&) = delete;
    CXmlReferee& operator=(const CXmlReferee&) = delete;

    bool wellFormed() const { return m_parsed; }

    // The number of nodes the expression selects.
    int count(const char* xpath) const {
        int n = 0;
        eachNode(xpath, [&](IXMLDOMNode*) { ++n; });
        return n;
    }
    // The string value of the expression ("" when it selects nothing). Of the number
    // functions only count() is known.
    std::string str(const char* xpath) const {
        std::string e = xpath;
        if (e.compare(0, 6, "count(") == 0 && e.back() == ')')
            return std::to_string(count(e.substr(6, e.size() - 7).c_str()));
        std::string s;
        bool first = true;
        eachNode(xpath, [&](IXMLDOMNode* node) {
            if (first)
                s = textOf(node);
            first = false;
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
        eachNode(xpath, [&](IXMLDOMNode* node) { out.push_back(textOf(node)); });
        return out;
    }

private:
    static BSTR toBstr(const std::string& s) {
        int n = MultiByteToWideChar(CP_UTF8, 0, s.data(), int(s.size()), nullptr, 0);
        BSTR b = SysAllocStringLen(nullptr, UINT(n));
        MultiByteToWideChar(CP_UTF8, 0, s.data(), int(s.size()), b, n);
        return b;
    }
    static std::string fromBstr(BSTR b) {
        int len = int(SysStringLen(b));
        int n = WideCharToMultiByte(CP_UTF8, 0, b, len, nullptr, 0, nullptr, nullptr);
        std::string s(size_t(n), '\0');
        WideCharToMultiByte(CP_UTF8, 0, b, len, &s[0], n, nullptr, nullptr);
        return s;
    }
    static std::string textOf(IXMLDOMNode* node) {
        BSTR b = nullptr;
        std::string s;
        if (SUCCEEDED(node->get_text(&b)) && b)
            s = fromBstr(b);
        SysFreeString(b);
        return s;
    }
    void setProperty(const wchar_t* name, const wchar_t* value) {
        BSTR n = SysAllocString(name);
        VARIANT v;
        VariantInit(&v);
        v.vt = VT_BSTR;
        v.bstrVal = SysAllocString(value);
        m_doc->setProperty(n, v);
        VariantClear(&v);
        SysFreeString(n);
    }
    template <class F> void eachNode(const char* xpath, F f) const {
        if (!m_parsed)
            return;
        BSTR query = toBstr(xpath);
        IXMLDOMNodeList* list = nullptr;
        if (SUCCEEDED(m_doc->selectNodes(query, &list)) && list) {
            long n = 0;
            list->get_length(&n);
            for (long i = 0; i < n; ++i) {
                IXMLDOMNode* node = nullptr;
                if (SUCCEEDED(list->get_item(i, &node)) && node) {
                    f(node);
                    node->Release();
                }
            }
            list->Release();
        }
        SysFreeString(query);
    }

    IXMLDOMDocument2* m_doc = nullptr;
    bool m_parsed = false;
};
