// xsl_transform: applies an XSL stylesheet to an XML file with libxslt.
//
//   xsl_transform input.xml stylesheet.xsl output
//
// Exit code 0: the output was written; 1: the transformation failed (libxslt's messages on
// standard error), and no output is left behind; 2: wrong usage, or an input or stylesheet
// that cannot be read. Never touches the network, neither for documents the stylesheet
// reads nor for writing; XML catalogs (XML_CATALOG_FILES) are honoured.
#include <libxml/parser.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include "../xml_tool_offline.h"

#include <cstdio>

namespace {

constexpr int kDone = 0, kFailed = 1, kUsageOrFile = 2;

int transform(const char* inPath, const char* xslPath, const char* outPath) {
    xsltStylesheetPtr style = xsltParseStylesheetFile(reinterpret_cast<const xmlChar*>(xslPath));
    if (!style) {
        std::fprintf(stderr, "xsl_transform: stylesheet %s cannot be used\n", xslPath);
        return kUsageOrFile;
    }
    int result = kFailed;
    xmlDocPtr doc = xmlReadFile(inPath, nullptr, XML_PARSE_NONET);
    if (!doc) {
        std::fprintf(stderr, "xsl_transform: %s is not well-formed\n", inPath);
    } else {
        xmlDocPtr out = xsltApplyStylesheet(style, doc, nullptr);
        if (!out) {
            std::fprintf(stderr, "xsl_transform: the transformation of %s failed\n", inPath);
        } else {
            if (xsltSaveResultToFilename(outPath, out, style, 0) >= 0) {
                result = kDone;
            } else {
                std::fprintf(stderr, "xsl_transform: cannot write %s\n", outPath);
                std::remove(outPath);
            }
            xmlFreeDoc(out);
        }
        xmlFreeDoc(doc);
    }
    xsltFreeStylesheet(style);
    return result;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: xsl_transform input.xml stylesheet.xsl output\n");
        return kUsageOrFile;
    }
    for (int i = 1; i <= 2; ++i)
        if (!readableFile(argv[i])) {
            std::fprintf(stderr, "xsl_transform: cannot read %s\n", argv[i]);
            return kUsageOrFile;
        }
    startLibxmlOffline();
    xsltSecurityPrefsPtr prefs = xsltNewSecurityPrefs();
    xsltSetSecurityPrefs(prefs, XSLT_SECPREF_READ_NETWORK, xsltSecurityForbid);
    xsltSetSecurityPrefs(prefs, XSLT_SECPREF_WRITE_NETWORK, xsltSecurityForbid);
    xsltSetDefaultSecurityPrefs(prefs);
    int result = transform(argv[1], argv[2], argv[3]);
    xsltFreeSecurityPrefs(prefs);
    xsltCleanupGlobals();
    xmlCleanupParser();
    return result;
}
