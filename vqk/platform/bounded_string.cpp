// The runtime's bounded copy, concatenation, case and tokenizer functions, written
// once for both character widths.
#include "vqk/platform/bounded.h"

#include <cctype>
#include <cerrno>
#include <cstring>
#include <cwchar>
#include <cwctype>

namespace vq {
namespace platform {
namespace {

template <class T> size_t boundedLength(const T* s, size_t max) {
    size_t n = 0;
    while (n < max && s[n])
        ++n;
    return n;
}

template <class T> int copyText(T* dst, size_t size, const T* src, size_t count) {
    if (!dst || size == 0)
        return EINVAL;
    if (!src) {
        dst[0] = 0;
        return EINVAL;
    }
    // Looking at no more than `size` characters is enough to know whether they fit.
    size_t len = boundedLength(src, count < size ? count : size);
    if (len < size) {
        for (size_t i = 0; i < len; ++i)
            dst[i] = src[i];
        dst[len] = 0;
        return 0;
    }
    if (count == kTruncate) {
        for (size_t i = 0; i + 1 < size; ++i)
            dst[i] = src[i];
        dst[size - 1] = 0;
        return kStruncate;
    }
    dst[0] = 0;
    return ERANGE;
}

// A count of 0 copies nothing and is no error, even with no source at all.
template <class T> int copyCounted(T* dst, size_t size, const T* src, size_t count) {
    if (count == 0 && !dst && size == 0)
        return 0;
    if (count == 0 && dst && size) {
        dst[0] = 0;
        return 0;
    }
    return copyText(dst, size, src, count);
}

template <class T> int appendText(T* dst, size_t size, const T* src) {
    if (!dst || size == 0)
        return EINVAL;
    if (!src) {
        dst[0] = 0;
        return EINVAL;
    }
    size_t used = boundedLength(dst, size);
    if (used == size) { // the destination is not terminated within its size
        dst[0] = 0;
        return EINVAL;
    }
    size_t add = boundedLength(src, size - used);
    if (used + add >= size) {
        dst[0] = 0;
        return ERANGE;
    }
    for (size_t i = 0; i < add; ++i)
        dst[used + i] = src[i];
    dst[used + add] = 0;
    return 0;
}

unsigned char lower(char c) { return (unsigned char)std::tolower((unsigned char)c); }
unsigned char upper(char c) { return (unsigned char)std::toupper((unsigned char)c); }
wint_t lower(wchar_t c) { return std::towlower(wint_t(c)); }
wint_t upper(wchar_t c) { return std::towupper(wint_t(c)); }

template <class T, class F> int mapCase(T* s, size_t size, F map) {
    if (!s || size == 0)
        return EINVAL;
    size_t n = boundedLength(s, size);
    if (n == size) {
        s[0] = 0;
        return EINVAL;
    }
    for (size_t i = 0; i < n; ++i)
        s[i] = T(map(s[i]));
    return 0;
}

template <class T> int compareNoCase(const T* a, const T* b, size_t n) {
    if (!a || !b) {
        errno = EINVAL;
        return kNlsCmpError;
    }
    for (size_t i = 0; i < n; ++i) {
        long x = long(lower(a[i])), y = long(lower(b[i]));
        if (x != y)
            return x < y ? -1 : 1;
        if (!x)
            return 0;
    }
    return 0;
}

template <class T> bool isDelimiter(T c, const T* delimiters) {
    for (const T* d = delimiters; *d; ++d)
        if (*d == c)
            return true;
    return false;
}

template <class T> T* nextToken(T* s, const T* delimiters, T** context) {
    if (!delimiters || !context || (!s && !*context)) {
        errno = EINVAL;
        return nullptr;
    }
    T* p = s ? s : *context;
    while (*p && isDelimiter(*p, delimiters))
        ++p;
    if (!*p) {
        *context = p;
        return nullptr;
    }
    T* token = p;
    while (*p && !isDelimiter(*p, delimiters))
        ++p;
    if (*p)
        *p++ = 0;
    *context = p;
    return token;
}

} // namespace

int strcpy_s(char* dst, size_t size, const char* src) { return copyText(dst, size, src, size_t(-1) - 1); }
int wcscpy_s(wchar_t* dst, size_t size, const wchar_t* src) {
    return copyText(dst, size, src, size_t(-1) - 1);
}
int strncpy_s(char* dst, size_t size, const char* src, size_t count) {
    return copyCounted(dst, size, src, count);
}
int wcsncpy_s(wchar_t* dst, size_t size, const wchar_t* src, size_t count) {
    return copyCounted(dst, size, src, count);
}
int strcat_s(char* dst, size_t size, const char* src) { return appendText(dst, size, src); }
int wcscat_s(wchar_t* dst, size_t size, const wchar_t* src) { return appendText(dst, size, src); }

int _strlwr_s(char* s, size_t size) { return mapCase(s, size, [](char c) { return lower(c); }); }
int _wcslwr_s(wchar_t* s, size_t size) {
    return mapCase(s, size, [](wchar_t c) { return lower(c); });
}
int _strupr_s(char* s, size_t size) { return mapCase(s, size, [](char c) { return upper(c); }); }
int _wcsupr_s(wchar_t* s, size_t size) {
    return mapCase(s, size, [](wchar_t c) { return upper(c); });
}

int _stricmp(const char* a, const char* b) { return compareNoCase(a, b, size_t(-1)); }
int _wcsicmp(const wchar_t* a, const wchar_t* b) { return compareNoCase(a, b, size_t(-1)); }
int _strnicmp(const char* a, const char* b, size_t n) {
    return n == 0 ? 0 : compareNoCase(a, b, n);
}
int _wcsnicmp(const wchar_t* a, const wchar_t* b, size_t n) {
    return n == 0 ? 0 : compareNoCase(a, b, n);
}

char* strtok_s(char* s, const char* delimiters, char** context) {
    return nextToken(s, delimiters, context);
}
wchar_t* wcstok_s(wchar_t* s, const wchar_t* delimiters, wchar_t** context) {
    return nextToken(s, delimiters, context);
}

int _itoa_s(int value, char* buf, size_t size, int radix) {
    if (!buf || size == 0)
        return EINVAL;
    if (radix < 2 || radix > 36) {
        buf[0] = 0;
        return EINVAL;
    }
    bool negative = radix == 10 && value < 0;
    unsigned long long v = negative ? 0ull - (unsigned long long)(long long)value
                                    : (unsigned long long)(unsigned)value;
    char digits[40];
    size_t n = 0;
    do {
        unsigned d = unsigned(v % unsigned(radix));
        digits[n++] = char(d < 10 ? '0' + d : 'a' + d - 10);
        v /= unsigned(radix);
    } while (v);
    size_t need = n + (negative ? 1 : 0) + 1;
    if (need > size) {
        buf[0] = 0;
        return ERANGE;
    }
    size_t w = 0;
    if (negative)
        buf[w++] = '-';
    while (n)
        buf[w++] = digits[--n];
    buf[w] = 0;
    return 0;
}

int mbstowcs_s(size_t* converted, wchar_t* dst, size_t size, const char* src, size_t count) {
    if (converted)
        *converted = 0;
    if ((!dst && size) || (dst && !size))
        return EINVAL;
    if (!src) {
        if (dst)
            dst[0] = 0;
        return EINVAL;
    }
    std::mbstate_t state{};
    const char* p = src;
    // `count` limits the wide characters stored, not the bytes read.
    const char* end = src + std::strlen(src);
    size_t n = 0;
    bool truncated = false;
    while (p < end && (count == kTruncate || n < count)) {
        wchar_t w = 0;
        size_t k = std::mbrtowc(&w, p, size_t(end - p), &state);
        if (k == size_t(-1) || k == size_t(-2)) {
            if (dst)
                dst[0] = 0;
            return EILSEQ;
        }
        if (k == 0)
            break;
        if (dst) {
            if (n + 1 >= size) { // no room for this character and the terminator
                if (count != kTruncate) {
                    dst[0] = 0;
                    return ERANGE;
                }
                truncated = true;
                break;
            }
            dst[n] = w;
        }
        ++n;
        p += k;
    }
    if (dst)
        dst[n] = 0;
    if (converted)
        *converted = n + 1;
    return truncated ? kStruncate : 0;
}

} // namespace platform
} // namespace vq
