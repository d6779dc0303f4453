#include "vqk/xml/xml_escape.h"

#include "vqk/xml/xml_escape_run.h"

#include <cstring>

namespace vq {

namespace {

enum : unsigned char { eCopy = 0, eDrop = 1, eQuot = 2, eAmp, eApos, eLt, eGt };

struct SEntity {
    char text[8]; // padded, so that one fixed-size copy moves any entity
    unsigned char length;
};

// Indexed by class minus eQuot.
const SEntity kEntities[] = {{"&quot;", 6}, {"&amp;", 5}, {"&apos;", 6}, {"&lt;", 4}, {"&gt;", 4}};

SXmlEscapeTable makeTable(bool apostrophe) {
    SXmlEscapeTable t{};
    for (int c = 0; c < 0x20; ++c)
        t.cls[c] = (c == '\t' || c == '\n' || c == '\r') ? eCopy : eDrop;
    t.cls[unsigned('"')] = eQuot;
    t.cls[unsigned('&')] = eAmp;
    t.cls[unsigned('<')] = eLt;
    t.cls[unsigned('>')] = eGt;
    if (apostrophe)
        t.cls[unsigned('\'')] = eApos;
    return t;
}

} // namespace

const SXmlEscapeTable& xmlAttrEscapes() {
    static const SXmlEscapeTable t = makeTable(false);
    return t;
}

const SXmlEscapeTable& xmlTextEscapes() {
    static const SXmlEscapeTable t = makeTable(true);
    return t;
}

void appendXmlEscaped(TVector<char>& out, const char* s, size_t n, const SXmlEscapeTable& table) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(s);
    const unsigned char* end = p + n;
    while (p < end) {
        const unsigned char* run = p;
        while (p < end && table.cls[*p] == eCopy)
            ++p;
        if (p > run)
            out.append(reinterpret_cast<const char*>(run), uint32_t(p - run));
        if (p == end)
            break;
        unsigned char c = table.cls[*p++];
        if (c != eDrop)
            out.append(kEntities[c - eQuot].text, kEntities[c - eQuot].length);
    }
}

char* escapeXmlInto(char* out, const char* s, size_t n, const SXmlEscapeTable& table) {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(s);
    const unsigned char* end = p + n;
    while (p < end) {
        const unsigned char* run = p;
        while (p < end && table.cls[*p] == eCopy)
            ++p;
        if (p > run) {
            std::memcpy(out, run, size_t(p - run));
            out += p - run;
        }
        if (p == end)
            break;
        unsigned char c = table.cls[*p++];
        if (c != eDrop) {
            const SEntity& e = kEntities[c - eQuot];
            std::memcpy(out, e.text, sizeof e.text);
            out += e.length;
        }
    }
    return out;
}

void escapeXmlStr(CTStr<char>& out, const char* in) {
    TVector<char>& a = out.array();
    a.clear();
    size_t n = in ? std::strlen(in) : 0;
    if (!n)
        return;
    a.reserve(uint32_t(n) + 1);
    appendXmlEscaped(a, in, n, xmlTextEscapes());
    a.push_back('\0');
}

void unescapeXmlStr(CTStr<char>& out, const char* in) {
    static const struct {
        const char* name;
        size_t length;
        char c;
    } kNamed[] = {{"&amp;", 5, '&'}, {"&quot;", 6, '"'}, {"&apos;", 6, '\''}, {"&gt;", 4, '>'}, {"&lt;", 4, '<'}};
    TVector<char>& a = out.array();
    a.clear();
    if (!in || !*in)
        return;
    const char* p = in;
    for (;;) {
        const char* amp = std::strchr(p, '&');
        if (!amp) {
            a.append(p, uint32_t(std::strlen(p)));
            break;
        }
        a.append(p, uint32_t(amp - p));
        p = amp + 1;
        char c = '&';
        for (const auto& e : kNamed) {
            if (std::strncmp(amp, e.name, e.length) == 0) {
                c = e.c;
                p = amp + e.length;
                break;
            }
        }
        a.push_back(c);
    }
    a.push_back('\0');
}

} // namespace vq
