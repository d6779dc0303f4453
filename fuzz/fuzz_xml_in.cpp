// Random documents through the pull reader: tag reads, skips, element scopes, the
// forward searches, attribute conversions and text reads. The first byte chooses the
// way the document is walked, the rest is the document. Reader errors are exceptions
// of the reader's own kind and are expected; anything else (a crash, a sanitizer
// report, a hang, a leak) is a fault.
#include "vqk/xml/xml_in.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

using vq::CStr;
using vq::CXmlElemIn;
using vq::CXmlIn;

void touchTag(CXmlIn& in) {
    CStr s;
    in.getTagAsLine(s);
    in.attrInt("id", "n", "N", 0);
    in.attrBool("b", false);
    in.attrID1("id", 0);
    in.attrUint("u", 0);
    double d[4];
    in.attrD4("p", d, nullptr);
    int i[3] = {};
    in.attrI3("i", i, i);
    int v = 0;
    in.attr("v", "%d", &v);
    const char* p = nullptr;
    in.attr("s", nullptr, &p);
    for (int k = 0; k < in.nAttr(); ++k) {
        in.attrName(k);
        in.attrVal(k);
    }
}

void readAll(CXmlIn& in) {
    in.readHeader();
    for (;;) {
        in.read();
        touchTag(in);
        if (in.isTagStart() && in.isNextTag("skip"))
            in.skipElems("skip");
    }
}

void skipAll(CXmlIn& in) {
    for (;;) {
        in.read();
        CStr text;
        in.getText(text, true);
        in.skip();
    }
}

void scope(CXmlIn& in, CXmlElemIn& parent, int depth) {
    CStr name;
    for (;;) {
        in.getNextTag(name);
        if (in.isTagEnd() || depth > 200)
            return;
        CXmlElemIn e(&parent, &in, name.str());
        touchTag(in);
        if (e.state() == 0) {
            if (depth % 2)
                in.getI1(0);
            scope(in, e, depth + 1);
        }
    }
}

void scopeAll(CXmlIn& in) {
    CXmlElemIn root(in, nullptr);
    if (root.state() == 0)
        scope(in, root, 0);
}

void searchAll(CXmlIn& in) {
    while (vq::findElem(in, nullptr, "id", "1", "skip")) {
        touchTag(in);
    }
    in.readHeader();
    while (vq::readElemBeg(in, nullptr, "skip", "stop")) {
        CStr text;
        in.getText(text, false);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2)
        return 0;
    std::vector<char> doc(data + 1, data + size);
    FILE* f = fmemopen(doc.data(), doc.size(), "r");
    if (!f)
        return 0;
    CXmlIn in;
    in.init(f); // the reader owns the stream from here and closes it
    try {
        switch (data[0] % 4) {
        case 0:
            readAll(in);
            break;
        case 1:
            skipAll(in);
            break;
        case 2:
            scopeAll(in);
            break;
        default:
            searchAll(in);
        }
    } catch (const char*) {
    }
    return 0;
}
