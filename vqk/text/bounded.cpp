#include "vqk/text/bounded.h"

#include "vqk/platform/bounded.h"
#include "vqk/text/convert.h"

namespace vq {

int strcpy(char* dst, size_t size, const char* src) { return platform::strcpy_s(dst, size, src); }
int wcscpy(wchar_t* dst, size_t size, const wchar_t* src) {
    return platform::wcscpy_s(dst, size, src);
}
int strncpy(char* dst, size_t size, const char* src, size_t count) {
    return platform::strncpy_s(dst, size, src, count);
}
int strncpy(wchar_t* dst, size_t size, const wchar_t* src, size_t count) {
    return platform::wcsncpy_s(dst, size, src, count);
}
int strcat(char* dst, size_t size, const char* src) { return platform::strcat_s(dst, size, src); }
int wcscat(wchar_t* dst, size_t size, const wchar_t* src) {
    return platform::wcscat_s(dst, size, src);
}

int strlwr(char* s, size_t size) { return platform::_strlwr_s(s, size); }
int strlwr(wchar_t* s, size_t size) { return platform::_wcslwr_s(s, size); }
int strup(char* s, size_t size) { return platform::_strupr_s(s, size); }
int strup(wchar_t* s, size_t size) { return platform::_wcsupr_s(s, size); }

int strupr(char* s, int size) {
    if (!s || size <= 0)
        return platform::_strupr_s(s, 0);
    CTStr<wchar_t> wide;
    strtowstr(wide, s, true);
    int n = wide.length();
    if (n) {
        int rc = platform::_wcsupr_s(&wide[0], size_t(n) + 1);
        if (rc)
            return rc;
    }
    CTStr<char> upper;
    wstrtoutf8(upper, wide.str());
    return platform::strcpy_s(s, size_t(size), upper.str());
}

int stricmp(const char* a, const char* b) { return platform::_stricmp(a, b); }
int stricmp(const wchar_t* a, const wchar_t* b) { return platform::_wcsicmp(a, b); }
int strnicmp(const char* a, const char* b, size_t n) { return platform::_strnicmp(a, b, n); }
int strnicmp(const wchar_t* a, const wchar_t* b, size_t n) {
    return platform::_wcsnicmp(a, b, n);
}

char* strtok(char* s, const char* delimiters, char** context) {
    return platform::strtok_s(s, delimiters, context);
}
wchar_t* strtok(wchar_t* s, const wchar_t* delimiters, wchar_t** context) {
    return platform::wcstok_s(s, delimiters, context);
}

int itoa(int value, char* buf, size_t size, int radix) {
    return platform::_itoa_s(value, buf, size, radix);
}
int mbstowcs(size_t* converted, wchar_t* dst, size_t size, const char* src, size_t count) {
    return platform::mbstowcs_s(converted, dst, size, src, count);
}

int sprintf(char* buf, size_t size, const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = platform::vsprintf_s(buf, size, fmt, args);
    va_end(args);
    return n;
}
int sprintf(wchar_t* buf, size_t size, const wchar_t* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = platform::vswprintf_s(buf, size, fmt, args);
    va_end(args);
    return n;
}
int vsprintf(char* buf, size_t size, const char* fmt, va_list args) {
    return platform::vsprintf_s(buf, size, fmt, args);
}
int vsprintf(wchar_t* buf, size_t size, const wchar_t* fmt, va_list args) {
    return platform::vswprintf_s(buf, size, fmt, args);
}
int scprintf(const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = platform::_vscprintf(fmt, args);
    va_end(args);
    return n;
}
int scwprintf(const wchar_t* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = platform::_vscwprintf(fmt, args);
    va_end(args);
    return n;
}
int vscprintf(const char* fmt, va_list args) { return platform::_vscprintf(fmt, args); }
int vscprintf(const wchar_t* fmt, va_list args) { return platform::_vscwprintf(fmt, args); }

int _localtime(std::tm* out, const int64* t) { return platform::_localtime64_s(out, t); }

} // namespace vq
