// xmlvalidate: validates one XML file against one or more XSD schemas with libxml2.
//
//   xmlvalidate document.xml schema.xsd [more.xsd ...]
//
// The document must be valid against every schema given. Exit code 0: valid; 1: not
// valid or not well-formed, with libxml2's messages (file and line) on standard error;
// 2: wrong usage, or a file or schema that cannot be read. Never touches the network:
// remote schema locations resolve only through the XML catalogs (XML_CATALOG_FILES),
// else they fail.
#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include "../xml_tool_offline.h"

#include <cstdio>

namespace {

constexpr int kValid = 0, kInvalid = 1, kUsageOrFile = 2;

// Validates the parsed document against one schema; kUsageOrFile when the schema is unusable.
int validate(xmlDocPtr doc, const char* docName, const char* schemaPath) {
    if (!readableFile(schemaPath)) {
        std::fprintf(stderr, "xmlvalidate: cannot read schema %s\n", schemaPath);
        return kUsageOrFile;
    }
    xmlSchemaParserCtxtPtr pctx = xmlSchemaNewParserCtxt(schemaPath);
    xmlSchemaPtr schema = pctx ? xmlSchemaParse(pctx) : nullptr;
    if (pctx)
        xmlSchemaFreeParserCtxt(pctx);
    if (!schema) {
        std::fprintf(stderr, "xmlvalidate: schema %s failed to compile\n", schemaPath);
        return kUsageOrFile;
    }
    xmlSchemaValidCtxtPtr vctx = xmlSchemaNewValidCtxt(schema);
    int r = vctx ? xmlSchemaValidateDoc(vctx, doc) : -1;
    if (vctx)
        xmlSchemaFreeValidCtxt(vctx);
    xmlSchemaFree(schema);
    if (r != 0)
        std::fprintf(stderr, "%s fails to validate against %s\n", docName, schemaPath);
    return r == 0 ? kValid : kInvalid;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: xmlvalidate document.xml schema.xsd [schema.xsd ...]\n");
        return kUsageOrFile;
    }
    startLibxmlOffline();
    const char* docName = argv[1];
    if (!readableFile(docName)) {
        std::fprintf(stderr, "xmlvalidate: cannot read %s\n", docName);
        return kUsageOrFile;
    }
    xmlDocPtr doc = xmlReadFile(docName, nullptr, XML_PARSE_NONET);
    if (!doc) {
        std::fprintf(stderr, "%s is not well-formed\n", docName);
        xmlCleanupParser();
        return kInvalid;
    }
    int result = kValid;
    for (int i = 2; i < argc && result != kUsageOrFile; ++i) {
        int r = validate(doc, docName, argv[i]);
        if (r != kValid)
            result = r;
    }
    xmlFreeDoc(doc);
    xmlCleanupParser();
    if (result == kValid)
        std::fprintf(stderr, "%s validates\n", docName);
    return result;
}
