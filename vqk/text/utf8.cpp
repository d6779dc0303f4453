#include "vqk/text/utf8.h"

#include <cstring>
#include <cwchar>

namespace vq {
namespace {

constexpr unsigned kReplacement = 0xFFFD;
constexpr bool kWide16 = sizeof(wchar_t) == 2;

// Decodes one character at s[i] (i < n); advances i past it.
unsigned decodeOne(const unsigned char* s, int n, int& i) {
    unsigned c = s[i++];
    if (c < 0x80)
        return c;
    int extra;
    unsigned min;
    if (c >= 0xC2 && c <= 0xDF) {
        extra = 1;
        c &= 0x1F;
        min = 0x80;
    } else if (c >= 0xE0 && c <= 0xEF) {
        extra = 2;
        c &= 0x0F;
        min = 0x800;
    } else if (c >= 0xF0 && c <= 0xF4) {
        extra = 3;
        c &= 0x07;
        min = 0x10000;
    } else {
        return kReplacement;
    }
    int start = i;
    for (int k = 0; k < extra; ++k) {
        if (i >= n || (s[i] & 0xC0) != 0x80) {
            // A broken sequence consumes only its valid prefix.
            return kReplacement;
        }
        c = (c << 6) | (s[i++] & 0x3F);
    }
    (void)start;
    if (c < min || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return kReplacement;
    return c;
}

int encodeOne(unsigned c, char* out) {
    if (c < 0x80) {
        out[0] = char(c);
        return 1;
    }
    if (c < 0x800) {
        out[0] = char(0xC0 | (c >> 6));
        out[1] = char(0x80 | (c & 0x3F));
        return 2;
    }
    if (c < 0x10000) {
        out[0] = char(0xE0 | (c >> 12));
        out[1] = char(0x80 | ((c >> 6) & 0x3F));
        out[2] = char(0x80 | (c & 0x3F));
        return 3;
    }
    out[0] = char(0xF0 | (c >> 18));
    out[1] = char(0x80 | ((c >> 12) & 0x3F));
    out[2] = char(0x80 | ((c >> 6) & 0x3F));
    out[3] = char(0x80 | (c & 0x3F));
    return 4;
}

} // namespace

int utf8ToWide(const char* src, int len, wchar_t* out, int outSize) {
    if (!src || outSize < 0)
        return 0;
    const unsigned char* s = reinterpret_cast<const unsigned char*>(src);
    int n = len < 0 ? int(std::strlen(src)) + 1 : len;
    int written = 0;
    int i = 0;
    while (i < n) {
        unsigned c = decodeOne(s, n, i);
        int units = (kWide16 && c >= 0x10000) ? 2 : 1;
        if (outSize) {
            if (written + units > outSize)
                return 0;
            if (units == 2) {
                c -= 0x10000;
                out[written] = wchar_t(0xD800 + (c >> 10));
                out[written + 1] = wchar_t(0xDC00 + (c & 0x3FF));
            } else {
                out[written] = wchar_t(c);
            }
        }
        written += units;
    }
    return written;
}

int wideToUtf8(const wchar_t* s, int len, char* out, int outSize) {
    if (!s || outSize < 0)
        return 0;
    int n = len < 0 ? int(std::wcslen(s)) + 1 : len;
    int written = 0;
    char buf[4];
    for (int i = 0; i < n; ++i) {
        unsigned c = unsigned(s[i]);
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < n && unsigned(s[i + 1]) >= 0xDC00 &&
            unsigned(s[i + 1]) <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (unsigned(s[i + 1]) - 0xDC00);
            ++i;
        } else if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) {
            c = kReplacement;
        }
        int k = encodeOne(c, buf);
        if (outSize) {
            if (written + k > outSize)
                return 0;
            std::memcpy(out + written, buf, size_t(k));
        }
        written += k;
    }
    return written;
}

} // namespace vq
