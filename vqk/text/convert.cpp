#include "vqk/text/convert.h"

#include "vqk/text/bounded.h"
#include "vqk/text/codepage.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace vq {
namespace {

// Empty the target, ask for the length, size the target one element larger than
// needed and convert into it (the text ends at its first zero).
// Emptying goes through the virtual reset with an empty text, so that a class built
// on the string sees it.
void empty(CTStr<char>& out) { out.reset(static_cast<const char*>("")); }
void empty(CTStr<wchar_t>& out) { out.reset(static_cast<const wchar_t*>(L"")); }

void toNarrow(CTStr<char>& out, const wchar_t* s, unsigned cp) {
    empty(out);
    if (!s)
        return;
    int n = wideToMultiByte(cp, s, -1, nullptr, 0);
    if (n < 1)
        return;
    char* p = out.getBuffer(n + 1);
    if (wideToMultiByte(cp, s, -1, p, n + 1) < 1) {
        empty(out);
        return;
    }
    p[n] = 0;
}

void toWide(CTStr<wchar_t>& out, const char* s, unsigned cp) {
    empty(out);
    if (!s)
        return;
    int n = multiByteToWide(cp, s, -1, nullptr, 0);
    if (n < 1)
        return;
    wchar_t* p = out.getBuffer(n + 1);
    if (multiByteToWide(cp, s, -1, p, n + 1) < 1) {
        empty(out);
        return;
    }
    p[n] = 0;
}

void appendHexUnit(std::string& out, unsigned unit) {
    static const char hex[] = "0123456789ABCDEF";
    out += hex[(unit >> 12) & 15];
    out += hex[(unit >> 8) & 15];
    out += hex[(unit >> 4) & 15];
    out += hex[unit & 15];
}

} // namespace

void wstrtostr(CTStr<char>& out, const wchar_t* s, bool utf8) {
    toNarrow(out, s, utf8 ? kCodePageUtf8 : kCodePageAnsi);
}

void strtowstr(CTStr<wchar_t>& out, const char* s, bool utf8) {
    toWide(out, s, utf8 ? kCodePageUtf8 : kCodePageAnsi);
}

void wstrtoutf8(CTStr<char>& out, const wchar_t* s) { toNarrow(out, s, kCodePageUtf8); }

void ansitoutf8(CTStr<char>& out, const char* s) {
    if (!s) {
        empty(out);
        return;
    }
    CTStr<wchar_t> wide;
    toWide(wide, s, kCodePageAnsi);
    toNarrow(out, wide.str(), kCodePageUtf8);
}

void utf8top21(CTStr<char>& out, const char* s) {
    if (!s) {
        empty(out);
        return;
    }
    CTStr<wchar_t> wide;
    toWide(wide, s, kCodePageUtf8);
    std::string r;
    r.reserve(size_t(wide.length()) * 2);
    bool escaped = false;
    auto unit = [&](unsigned u) {
        if (u >= 128) {
            if (!escaped) {
                r += "\\X2\\";
                escaped = true;
            }
            appendHexUnit(r, u);
        } else {
            if (escaped) {
                r += "\\X0\\";
                escaped = false;
            }
            r += char(u);
        }
    };
    for (const wchar_t* p = wide.str(); *p; ++p) {
        unsigned c = unsigned(*p);
        if (c >= 0x10000 && c <= 0x10FFFF) {
            c -= 0x10000;
            unit(0xD800 + (c >> 10));
            unit(0xDC00 + (c & 0x3FF));
        } else {
            unit(c);
        }
    }
    if (escaped)
        r += "\\X0\\";
    empty(out); // only now: the source may be out's own text
    out.reset(r.c_str(), uint64(r.size()));
}

void p21toutf8(CTStr<char>& out, const char* s) {
    if (!s) {
        empty(out);
        return;
    }
    std::wstring units;
    size_t n = std::strlen(s);
    bool escaped = false;
    size_t i = 0;
    while (i < n) {
        if (n - i >= 4 && std::strncmp(s + i, "\\X2\\", 4) == 0) {
            escaped = true;
            i += 4;
            continue;
        }
        if (n - i >= 4 && std::strncmp(s + i, "\\X0\\", 4) == 0) {
            escaped = false;
            i += 4;
            continue;
        }
        if (escaped) {
            // Four hex digits, high byte then low byte, read as "%2x%2x" reads them.
            char digits[5] = {0, 0, 0, 0, 0};
            size_t k = n - i < 4 ? n - i : 4;
            std::memcpy(digits, s + i, k);
            unsigned hi = 0, lo = 0;
            // A unit that does not scan would be a zero and end the text: drop it.
            if (std::sscanf(digits, "%2x%2x", &hi, &lo) == 2)
                units += wchar_t((hi & 0xFF) * 256 + (lo & 0xFF));
            i += k;
            continue;
        }
        unsigned char b = (unsigned char)s[i];
        if (b < 128) {
            units += wchar_t(b);
        } else {
            char one[2] = {char(b), 0};
            wchar_t w[2] = {0, 0};
            if (multiByteToWide(kCodePageAnsi, one, -1, w, 2) > 0)
                units += w[0];
        }
        ++i;
    }
    toNarrow(out, units.c_str(), kCodePageUtf8);
}

void translit(CTStr<char>& out, CTStr<char>& in) {
    // The 58 Latin spellings in their table order, upper then lower case, the last one
    // repeated to fill the 64 codes.
    static const char* const table[] = {
        "A",  "B",  "V",  "G",  "D",  "E",  "Ye", "Zh", "Z",  "I",  "K",  "L",  "M",  "N",  "O",
        "P",  "R",  "S",  "T",  "U",  "F",  "Kh", "Ts", "Ch", "Sh", "'",  "'I", "\"", "'E", "a",
        "b",  "v",  "g",  "d",  "e",  "ye", "zh", "z",  "i",  "k",  "l",  "m",  "n",  "o",  "p",
        "r",  "s",  "t",  "u",  "f",  "kh", "ts", "ch", "sh", "'",  "'i", "\"", "'e", "'e", "'e",
        "'e", "'e", "'e", "'e"};
    // Windows-1251 letters 192..223 (upper case) in code order, each given the table
    // entry of its sound. Letters with no entry of their own take the closest one:
    // short I as I, shcha as Sh, yu as U, ya as Ye.
    static const unsigned char upper[32] = {
        0,  1,  2,  3,  4,  5,  7,  8,  9,  9,  10, 11, 12, 13, 14, 15,
        16, 17, 18, 19, 20, 21, 22, 23, 24, 24, 25, 26, 27, 28, 19, 6};
    const char* s = in.str(); // read before out is emptied: they may be one string
    std::string r;
    r.reserve(std::strlen(s) * 2);
    for (; *s; ++s) {
        unsigned char b = (unsigned char)*s;
        if (b >= 192) {
            int code = b - 192;
            int entry = code < 32 ? upper[code] : upper[code - 32] + 29;
            r += table[entry];
        } else {
            r += char(b);
        }
    }
    empty(out); // only now: the source may be out's own text
    out.reset(r.c_str(), uint64(r.size()));
}

bool getStringToken(TVector<char*>& tokens, char* text, const char* delimiters) {
    tokens.clear();
    if (!text || !delimiters)
        return false;
    char* end = text + std::strlen(text);
    char* start = text;
    while (start < end) {
        char* context = nullptr;
        char* token = strtok(start, delimiters, &context);
        if (!token)
            break;
        tokens.push_back(token);
        start += std::strlen(token) + 1;
    }
    return !tokens.empty();
}

} // namespace vq
