// vqk/text/bounded.h
//
// The library's bounded string functions: every caller copies, joins, prints and
// tokenizes text through these, never through the unbounded C functions. Each forwards
// to the runtime's bounded function (vqk/platform/bounded.h) and returns its result
// unchanged: 0 on success, else an error code (EINVAL for a null pointer or zero size,
// ERANGE when the result does not fit); on failure a valid destination is left empty.
//
//   char name[16];
//   if (vq::strcpy(name, "model") == 0)       // size taken from the array
//       vq::strcat(name, sizeof name, ".xml");
//   vq::sprintf(name, "%i", 42);
//   int need = vq::scprintf("%s-%i", "part", 7);   // 6
//
// strlen, strcmp, strncmp and strchr forward without any null test, as the C
// functions do.
#pragma once

#include "vqk/config.h"

#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <cwchar>

namespace vq {

VQK_API int strcpy(char* dst, size_t size, const char* src);
VQK_API int wcscpy(wchar_t* dst, size_t size, const wchar_t* src);
// Copies at most count characters; count (size_t)-1 copies as much as fits and returns
// 80 when the text was cut.
VQK_API int strncpy(char* dst, size_t size, const char* src, size_t count);
VQK_API int strncpy(wchar_t* dst, size_t size, const wchar_t* src, size_t count);
VQK_API int strcat(char* dst, size_t size, const char* src);
VQK_API int wcscat(wchar_t* dst, size_t size, const wchar_t* src);

// Case mapping in place through the runtime's locale (bytes of UTF-8 sequences are
// left alone); s must be terminated within size.
VQK_API int strlwr(char* s, size_t size);
VQK_API int strlwr(wchar_t* s, size_t size);
VQK_API int strup(char* s, size_t size);
VQK_API int strup(wchar_t* s, size_t size);
// Upper-cases UTF-8 text, letters beyond ASCII included, through wide text.
VQK_API int strupr(char* s, int size);

// Case-insensitive comparison; 2147483647 for a null argument.
VQK_API int stricmp(const char* a, const char* b);
VQK_API int stricmp(const wchar_t* a, const wchar_t* b);
VQK_API int strnicmp(const char* a, const char* b, size_t n);
VQK_API int strnicmp(const wchar_t* a, const wchar_t* b, size_t n);

// Re-entrant tokenizer: first call with the text, later calls with null.
VQK_API char* strtok(char* s, const char* delimiters, char** context);
VQK_API wchar_t* strtok(wchar_t* s, const wchar_t* delimiters, wchar_t** context);

VQK_API int itoa(int value, char* buf, size_t size, int radix);
VQK_API int mbstowcs(size_t* converted, wchar_t* dst, size_t size, const char* src,
                     size_t count);

// Printing: characters written, -1 when the text does not fit (buf emptied).
VQK_API int sprintf(char* buf, size_t size, const char* fmt, ...);
VQK_API int sprintf(wchar_t* buf, size_t size, const wchar_t* fmt, ...);
VQK_API int vsprintf(char* buf, size_t size, const char* fmt, va_list args);
VQK_API int vsprintf(wchar_t* buf, size_t size, const wchar_t* fmt, va_list args);
// Characters a formatted text needs, without the terminator.
VQK_API int scprintf(const char* fmt, ...);
VQK_API int scwprintf(const wchar_t* fmt, ...);
VQK_API int vscprintf(const char* fmt, va_list args);
VQK_API int vscprintf(const wchar_t* fmt, va_list args);

// Local time of *t (seconds since 1970); every field -1 on failure.
VQK_API int _localtime(std::tm* out, const int64* t);

inline size_t strlen(const char* s) { return std::strlen(s); }
inline size_t strlen(const wchar_t* s) { return std::wcslen(s); }
inline int strcmp(const char* a, const char* b) { return std::strcmp(a, b); }
inline int strcmp(const wchar_t* a, const wchar_t* b) { return std::wcscmp(a, b); }
inline int strncmp(const char* a, const char* b, size_t n) { return std::strncmp(a, b, n); }
inline int strncmp(const wchar_t* a, const wchar_t* b, size_t n) { return std::wcsncmp(a, b, n); }
inline const char* strchr(const char* s, int c) { return std::strchr(s, c); }
inline char* strchr(char* s, int c) { return std::strchr(s, c); }
inline const wchar_t* strchr(const wchar_t* s, wchar_t c) { return std::wcschr(s, c); }
inline wchar_t* strchr(wchar_t* s, wchar_t c) { return std::wcschr(s, c); }

// The same with the size taken from a destination array.
template <size_t N> int strcpy(char (&dst)[N], const char* src) { return strcpy(dst, N, src); }
template <size_t N> int wcscpy(wchar_t (&dst)[N], const wchar_t* src) {
    return wcscpy(dst, N, src);
}
template <size_t N> int strcat(char (&dst)[N], const char* src) { return strcat(dst, N, src); }
template <size_t N> int wcscat(wchar_t (&dst)[N], const wchar_t* src) {
    return wcscat(dst, N, src);
}
template <size_t N> int sprintf(char (&buf)[N], const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = vsprintf(buf, N, fmt, args);
    va_end(args);
    return n;
}
template <size_t N> int sprintf(wchar_t (&buf)[N], const wchar_t* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    int n = vsprintf(buf, N, fmt, args);
    va_end(args);
    return n;
}

} // namespace vq
