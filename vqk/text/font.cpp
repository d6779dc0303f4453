#include "vqk/text/font.h"

#include "vqk/text/bounded.h"

#include <cctype>
#include <cstring>

namespace vq {
namespace {

CFont& processDefault() {
    static CFont font{"Arial", 10, false, false};
    return font;
}

bool isBlank(char c) { return std::isspace((unsigned char)c) != 0; }

// The last blank-separated word of text[0, end): its start is returned, end moves
// back to the end of the text before it.
const char* lastWord(const char* text, const char*& end) {
    while (end > text && isBlank(end[-1]))
        --end;
    const char* start = end;
    while (start > text && !isBlank(start[-1]))
        --start;
    return start;
}

bool wordIs(const char* word, const char* end, const char* name) {
    size_t n = std::strlen(name);
    return size_t(end - word) == n && strnicmp(word, name, n) == 0;
}

// A size from 1 to kFontSizeMax written as plain digits.
bool readSize(const char* word, const char* end, int& size) {
    if (word == end || end - word > 3)
        return false;
    int n = 0;
    for (const char* p = word; p < end; ++p) {
        if (!std::isdigit((unsigned char)*p))
            return false;
        n = n * 10 + (*p - '0');
    }
    if (n < 1)
        return false;
    size = n;
    return true;
}

} // namespace

CTStr<char> CFont::text() const {
    CTStr<char> s;
    s.cformat("%s %i%s%s", face.str(), size, bold ? " bold" : "", italic ? " italic" : "");
    return s;
}

bool CFont::parse(const char* text) {
    if (!text)
        return false;
    const char* end = text + std::strlen(text);
    bool isBold = false, isItalic = false;
    const char* word;
    for (;;) {
        word = lastWord(text, end);
        bool* flag = wordIs(word, end, "bold") ? &isBold : wordIs(word, end, "italic") ? &isItalic : nullptr;
        if (!flag)
            break;
        if (*flag)
            return false;
        *flag = true;
        end = word;
    }
    int n;
    if (!readSize(word, end, n))
        return false;
    const char* faceEnd = word;
    lastWord(text, faceEnd); // trims the blanks before the size
    const char* faceStart = text;
    while (faceStart < faceEnd && isBlank(*faceStart))
        ++faceStart;
    if (faceStart == faceEnd)
        return false;
    face.reset(faceStart, 0, int(faceEnd - faceStart));
    size = n;
    bold = isBold;
    italic = isItalic;
    return true;
}

const CFont& defaultFont() { return processDefault(); }

void setDefaultFont(const CFont& font) { processDefault() = font; }

} // namespace vq
