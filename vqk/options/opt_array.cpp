#include "vqk/options/opt_array.h"

#include "vqk/text/substring.h"
#include "vqk/xml/xml_escape.h"
#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"
#include "vqk/xml/xml_out_elem.h"

#include <cstdio>
#include <cstring>

namespace vq {

namespace {

// Parses exactly `n` numbers and nothing after them but blanks.
template <class T> bool parseAll(const char* text, const char* format, T* v, int n) {
    int used = 0;
    char f[64];
    std::snprintf(f, sizeof f, "%s%%n", format);
    if (n == 1 && std::sscanf(text, f, &v[0], &used) != 1)
        return false;
    if (n == 2 && std::sscanf(text, f, &v[0], &v[1], &used) != 2)
        return false;
    if (n == 3 && std::sscanf(text, f, &v[0], &v[1], &v[2], &used) != 3)
        return false;
    return text[used + std::strspn(text + used, " \t\r\n")] == 0;
}

bool parseBool(const char* text, bool& v) {
    if (std::strcmp(text, "true") == 0)
        v = true;
    else if (std::strcmp(text, "false") == 0)
        v = false;
    else
        return false;
    return true;
}

} // namespace

void optItemText(CTStr<char>& out, int v) { out.cformat("%i", v); }
void optItemText(CTStr<char>& out, double v) { out.cformat("%.17g", v); }
void optItemText(CTStr<char>& out, bool v) { out = v ? "true" : "false"; }
void optItemText(CTStr<char>& out, const T2<int>& v) { out.cformat("%i %i", v.x, v.y); }
void optItemText(CTStr<char>& out, const T2<double>& v) { out.cformat("%.17g %.17g", v.x, v.y); }
void optItemText(CTStr<char>& out, const T3<double>& v) {
    out.cformat("%.17g %.17g %.17g", v.x, v.y, v.z);
}
void optItemText(CTStr<char>& out, const T2<bool>& v) {
    out.cformat("%s %s", v.x ? "true" : "false", v.y ? "true" : "false");
}
void optItemText(CTStr<char>& out, const CTStr<char>& v) { out = v; }

bool optItemParse(const char* text, int& v) { return parseAll(text, " %i", &v, 1); }
bool optItemParse(const char* text, double& v) { return parseAll(text, " %lf", &v, 1); }
bool optItemParse(const char* text, bool& v) {
    char word[8];
    int used = 0;
    return std::sscanf(text, " %7s%n", word, &used) == 1 &&
           text[used + std::strspn(text + used, " \t\r\n")] == 0 && parseBool(word, v);
}
bool optItemParse(const char* text, T2<int>& v) {
    int a[2];
    if (!parseAll(text, " %i %i", a, 2))
        return false;
    v = T2<int>{a[0], a[1]};
    return true;
}
bool optItemParse(const char* text, T2<double>& v) {
    double a[2];
    if (!parseAll(text, " %lf %lf", a, 2))
        return false;
    v = T2<double>{a[0], a[1]};
    return true;
}
bool optItemParse(const char* text, T3<double>& v) {
    double a[3];
    if (!parseAll(text, " %lf %lf %lf", a, 3))
        return false;
    v = T3<double>{a[0], a[1], a[2]};
    return true;
}
bool optItemParse(const char* text, T2<bool>& v) {
    TVectorC<CTStr<char>> parts;
    splitStrByToken(parts, text, " ", true);
    return parts.size() == 2 && parseBool(parts[0].str(), v.x) && parseBool(parts[1].str(), v.y);
}
bool optItemParse(const char* text, CTStr<char>& v) {
    v = text;
    return true;
}

void writeOptItem(CXmlOut& out, const CTStr<char>& text) {
    // Carriage returns would be folded into line feeds by any XML reader: keep them as
    // a character reference.
    CTStr<char> escaped;
    escapeXmlStr(escaped, text.str());
    replaceSubStr(escaped, "\r", "&#13;");
    CXmlOutElem item(out, "item");
    out.write(escaped.str(), escaped.length());
}

bool readOptItems(CXmlIn& in, bool (*add)(void* target, const char* text), void* target) {
    if (!in.isTagStart())
        return true; // <opt .../>: an empty vector
    bool ok = true;
    CTStr<char> raw, text;
    for (;;) {
        in.read(nullptr);
        if (in.isTagEnd()) {
            if (in.isTag("opt"))
                return ok;
            continue;
        }
        if (!in.isTag("item")) {
            if (in.isTagStart())
                in.skip();
            continue;
        }
        raw = "";
        if (in.isTagStart())
            in.getText(raw, false);
        replaceSubStr(raw, "&#13;", "\r");
        unescapeXmlStr(text, raw.str());
        ok = ok && add(target, text.str());
    }
}

void writeOptArrType(CXmlOut& out, int code) {
    if (code == 8)
        return; // write_base names the ints' kind
    out.attrStr("type", code <= 20 ? optTypeName(code) : optTypeName(20));
}

} // namespace vq
