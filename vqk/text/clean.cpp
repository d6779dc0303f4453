#include "vqk/text/clean.h"

#include <cstring>

namespace vq {
namespace {

template <class T> bool labelForbidden(T c, bool dots) {
    if (c >= 1 && c <= 31)
        return true;
    switch (c) {
    case '"':
    case '&':
    case '\'':
    case '/':
    case '<':
    case '>':
    case '@':
    case '\\':
        return true;
    case '.':
        return dots;
    default:
        return false;
    }
}

template <class T> void cleanLabel(T* text, bool dots) {
    if (!text)
        return;
    for (; *text; ++text)
        if (labelForbidden(*text, dots))
            *text = T('_');
}

template <class T> void cleanLabel(CTStr<T>& s, bool dots) {
    int n = s.length();
    if (s.array().size() == 0)
        return;
    cleanLabel(s.getBuffer(n + 1), dots);
}

} // namespace

void correctLabel(char* text, bool dots) { cleanLabel(text, dots); }
void correctLabel(wchar_t* text, bool dots) { cleanLabel(text, dots); }
void correctLabel(CTStr<char>& text, bool dots) { cleanLabel(text, dots); }
void correctLabel(CTStr<wchar_t>& text, bool dots) { cleanLabel(text, dots); }

void correctFileName(char* text) {
    if (!text)
        return;
    for (; *text; ++text) {
        unsigned char c = (unsigned char)*text;
        if (c < 32 || std::strchr("\"'*:<>?|", c))
            *text = '_';
    }
}

void correctToASCII(char* text) {
    if (!text)
        return;
    for (; *text; ++text)
        if ((unsigned char)*text >= 128)
            *text = '_';
}

} // namespace vq
