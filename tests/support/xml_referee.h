// An XML parser independent of the library, to judge what the library writes: a
// document parsed whole, queried with XPath. libxml2 where it is installed; on Windows,
// which has no build of it here, the system's own XML document service (MSXML).
//
//   CXmlReferee doc(text);
//   doc.wellFormed();   doc.count("/r/e");   doc.str("/r/@v");   doc.strs("//e/@n");
#pragma once

#if VQK_TARGET_WINDOWS
#include "support/xml_referee_msxml.h"
#else
#include "support/xml_referee_libxml2.h"
#endif

#include <memory>
#include <string>

// The parsed document, or null when the text is not well-formed XML.
inline std::unique_ptr<CXmlReferee> parseXml(const std::string& text) {
    std::unique_ptr<CXmlReferee> doc(new CXmlReferee(text));
    if (!doc->wellFormed())
        doc.reset();
    return doc;
}
