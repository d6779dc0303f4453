// vqk/platform/bounded.h
//
// The runtime's bounded string, print, scan and time functions, with their documented
// results, for C libraries that lack them. The library's own wrappers (vq::strcpy,
// vq::sprintf, ... in vqk/text/bounded.h) call these; other code calls the wrappers.
//
// These are vqk's own on every system, Windows included: the Windows runtime's versions
// report a bad argument through its invalid-parameter handler, which ends the process
// unless the application installed a handler of its own, and a library must not change
// that process-wide setting. Only the local-time conversion is the runtime's own on
// Windows, after the arguments are checked here, since only the system knows the zone.
//
//   char name[8];
//   int rc = vq::platform::strcpy_s(name, sizeof name, "too long a name");
//   // rc == ERANGE, name == ""
//   vq::platform::strncpy_s(name, sizeof name, "too long", vq::platform::kTruncate);
//   // returns kStruncate, name == "too lon"
//
// Failure: no function aborts or writes past the size it is given. Error codes are the
// C library's EINVAL (null pointer, zero size, unterminated destination, bad radix),
// ERANGE (the result does not fit) and EILSEQ (a byte sequence the locale cannot
// decode); whenever a destination is valid but the call fails, its first element is set
// to zero so that no partial text survives.
#pragma once

#include "vqk/config.h"

#include <cstdarg>
#include <cstddef>
#include <ctime>

namespace vq {
namespace platform {

// The `count` of strncpy_s / mbstowcs_s meaning "as much as fits".
constexpr size_t kTruncate = size_t(-1);
// Returned when a kTruncate copy had to cut the text.
constexpr int kStruncate = 80;
// Returned by the case-insensitive comparisons for a null argument.
constexpr int kNlsCmpError = 2147483647;

// -- copy and concatenate
VQK_API int strcpy_s(char* dst, size_t size, const char* src);
VQK_API int wcscpy_s(wchar_t* dst, size_t size, const wchar_t* src);
// Copies at most `count` characters (kTruncate: as many as fit, then kStruncate when
// cut); the destination is always terminated.
VQK_API int strncpy_s(char* dst, size_t size, const char* src, size_t count);
VQK_API int wcsncpy_s(wchar_t* dst, size_t size, const wchar_t* src, size_t count);
VQK_API int strcat_s(char* dst, size_t size, const char* src);
VQK_API int wcscat_s(wchar_t* dst, size_t size, const wchar_t* src);

// -- case, in place through the current locale; s must be terminated within size
VQK_API int _strlwr_s(char* s, size_t size);
VQK_API int _wcslwr_s(wchar_t* s, size_t size);
VQK_API int _strupr_s(char* s, size_t size);
VQK_API int _wcsupr_s(wchar_t* s, size_t size);

// -- case-insensitive comparison: <0, 0, >0; kNlsCmpError for a null argument
VQK_API int _stricmp(const char* a, const char* b);
VQK_API int _wcsicmp(const wchar_t* a, const wchar_t* b);
VQK_API int _strnicmp(const char* a, const char* b, size_t n);
VQK_API int _wcsnicmp(const wchar_t* a, const wchar_t* b, size_t n);

// -- re-entrant tokenizer: the first call passes the text, later calls null; the
// position is kept in *context. Null for no more tokens or bad arguments.
VQK_API char* strtok_s(char* s, const char* delimiters, char** context);
VQK_API wchar_t* wcstok_s(wchar_t* s, const wchar_t* delimiters, wchar_t** context);

// -- numbers: radix 2 to 36; only radix 10 prints a minus sign, others print the
// two's-complement bits.
VQK_API int _itoa_s(int value, char* buf, size_t size, int radix);

// -- multibyte text of the current locale to wide text. With dst null and size 0 only
// the needed size (terminator included) is stored in *converted.
VQK_API int mbstowcs_s(size_t* converted, wchar_t* dst, size_t size, const char* src,
                       size_t count);

// -- printing: the number of characters written, -1 when the arguments are bad or the
// text does not fit (the buffer is then emptied).
VQK_API int vsprintf_s(char* buf, size_t size, const char* fmt, va_list args);
VQK_API int vswprintf_s(wchar_t* buf, size_t size, const wchar_t* fmt, va_list args);
// The characters the formatted text needs, without the terminator; -1 on bad input.
VQK_API int _vscprintf(const char* fmt, va_list args);
VQK_API int _vscwprintf(const wchar_t* fmt, va_list args);

// -- scanning: as vsscanf, except that every %s, %c and %[ argument is followed by an
// `unsigned` room in characters; a field that does not fit empties its buffer and ends
// the scan. Returns the number of fields assigned, or -1 (EOF) when the input ends
// before the first conversion or an argument is null.
VQK_API int vsscanf_s(const char* s, const char* fmt, va_list args);
VQK_API int vswscanf_s(const wchar_t* s, const wchar_t* fmt, va_list args);

// -- time: local time of *t (seconds since 1970, up to the year 3000). On failure every
// field of *out is -1.
VQK_API int _localtime64_s(std::tm* out, const long long* t);
// Each system's conversion of seconds since 1970 (UTC) to local time, for
// _localtime64_s, which checks the arguments first. Not exported.
bool localTimeOf(long long t, std::tm& out);
// The 26-character form "Wed Jan 02 02:03:55 1980\n"; size must be at least 26.
VQK_API int asctime_s(char* buf, size_t size, const std::tm* t);

} // namespace platform
} // namespace vq
