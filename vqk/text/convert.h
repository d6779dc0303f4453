// vqk/text/convert.h
//
// Conversions between the two string widths, UTF-8, the ANSI code page and the
// ISO 10303-21 "\X2\...\X0\" escapes. Each function first empties its target; a null
// source leaves it empty, and so does a failed conversion.
//
//   vq::CStr p21;
//   vq::utf8top21(p21, "A\xC3\xA9" "B");   // "A\X2\00E9\X0\B"
//   vq::CStr back;
//   vq::p21toutf8(back, p21.str());         // "A\xC3\xA9" "B"
//
// Wide text is UTF-16 on Windows and UTF-32 elsewhere; where UTF-16 units are written
// (the \X2\ escapes) characters above U+FFFF go out as surrogate pairs, and pairs read
// back are joined into one character.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/vector.h"

namespace vq {

// Wide to narrow: UTF-8 when utf8 is true, else the ANSI code page.
VQK_API void wstrtostr(CTStr<char>& out, const wchar_t* s, bool utf8);
// Narrow to wide: from UTF-8 when utf8 is true, else from the ANSI code page.
VQK_API void strtowstr(CTStr<wchar_t>& out, const char* s, bool utf8);
VQK_API void wstrtoutf8(CTStr<char>& out, const wchar_t* s);
// ANSI code page to UTF-8.
VQK_API void ansitoutf8(CTStr<char>& out, const char* s);
// UTF-8 to ISO 10303-21 text: runs of characters from 128 up become \X2\hhhh...\X0\.
// Apostrophes and backslashes are not doubled.
VQK_API void utf8top21(CTStr<char>& out, const char* s);
// ISO 10303-21 text with \X2\ escapes to UTF-8; other bytes from 128 up are read as
// ANSI code page characters. Other escapes pass through as text.
VQK_API void p21toutf8(CTStr<char>& out, const char* s);
// Windows-1251 Cyrillic letters (192..255) to Latin letters; other bytes unchanged.
VQK_API void translit(CTStr<char>& out, CTStr<char>& in);

// Splits `text` in place at the delimiter characters; `tokens` receives pointers into
// it. Returns true when there is at least one token. Each pass restarts at the pass's
// scan start plus the token's length plus one, so after leading or doubled delimiters
// a later token can be lost ("a,,bc,d" gives "a" and "bc"); callers rely on that.
VQK_API bool getStringToken(TVector<char*>& tokens, char* text, const char* delimiters);

} // namespace vq
