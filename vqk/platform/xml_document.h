// vqk/platform/xml_document.h
//
// The XML document service the options file is merged through: load a whole document,
// find elements by an attribute, replace or add a top-level element, save. libxml2's
// tree on POSIX, the system's COM XML document object on Windows.
//
//   auto doc = vq::platform::CXmlDocument::create();
//   if (doc->load("options.xml")) {
//       doc->setAttr("opt", "name", "SaveReport", "val", "true");
//       doc->save("options.xml");
//   }
//
// load() returns false for a missing file and for a document that is not well-formed;
// the document is then empty. Texts are UTF-8.
#pragma once

#include "vqk/config.h"

#include <memory>
#include <string>
#include <vector>

namespace vq {
namespace platform {

class VQK_API CXmlDocument {
public:
    static std::unique_ptr<CXmlDocument> create();
    virtual ~CXmlDocument() = default;

    virtual bool load(const char* path) = 0;
    // An empty document with a root element called `root`.
    virtual void reset(const char* root) = 0;
    virtual bool isEmpty() const = 0;
    virtual bool save(const char* path) const = 0;

    // The first element `elem` (anywhere) whose attribute `key` equals `value`: its
    // attribute `attr` into `out`; false when there is none or it lacks the attribute.
    virtual bool getAttr(const char* elem, const char* key, const char* value, const char* attr,
                         std::string& out) const = 0;
    // Sets that attribute on the first such element; false when there is none.
    virtual bool setAttr(const char* elem, const char* key, const char* value, const char* attr,
                         const char* text) = 0;
    // The attribute `attr` of every element `elem`, in document order.
    virtual void listAttr(const char* elem, const char* attr, std::vector<std::string>& out) const = 0;
    // Replaces the root's child `elem` whose `key` equals `value` with a copy of the same
    // element of `from` (appended when this document has none; removed when `from` has
    // none). False when `from` is another kind of document or this one is empty.
    virtual bool replaceTopElement(const CXmlDocument& from, const char* elem, const char* key,
                                   const char* value) = 0;
};

} // namespace platform
} // namespace vq
