// What the two XML tools share: the offline set-up of libxml2 and the check that an
// input can be read (so that a missing file is told from a bad one).
#pragma once

#include <libxml/catalog.h>
#include <libxml/parser.h>

#include <cstdio>

inline bool readableFile(const char* path) {
    FILE* f = std::fopen(path, "rb");
    if (!f)
        return false;
    std::fclose(f);
    return true;
}

// External entities and schemas resolve through the XML catalogs (XML_CATALOG_FILES)
// and never through the network.
inline void startLibxmlOffline() {
    xmlInitParser();
    xmlInitializeCatalog();
    xmlSetExternalEntityLoader(xmlNoNetExternalEntityLoader);
}
