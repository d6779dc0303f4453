// vqk/text/scan.h
//
// Reading values out of text, and taking printf formats apart.
//
//   unsigned long long id = vq::strToID1("18446744073709551615");
//   double d = vq::strToD1(L"2.5");
//   int a, b;
//   vq::sScanf("3 4", "%i %i", &a, &b);          // 2
//   char word[8];
//   vq::sScanf("name", "%s", word, 8u);          // text fields take their room
//
//   const char* fmt = "x=%i, y=%s";
//   bool isText, hasStar;
//   while (const char* piece = vq::nextFmt(fmt, isText, hasStar)) { ... }
//   // "x=", then "%i, y=", then "%s"
//
// Failure: the parsers return 0 for a null pointer or text that is not a number;
// sScanf returns the count of fields it assigned, or -1 (EOF) when the input ends first.
#pragma once

#include "vqk/config.h"

namespace vq {

// Bounded scanf: every %s, %c and %[ argument is followed by its room (unsigned) in
// characters; a field that does not fit leaves its buffer empty and ends the scan.
VQK_API int sScanf(const char* s, const char* fmt, ...);
// A 64-bit identifier in its text form (formatScanfID1()); 0 for null or on failure.
VQK_API uint64 strToID1(const char* s);
// A double from wide text; 0 for null or on failure.
VQK_API double strToD1(const wchar_t* s);

// Splits a printf format into pieces: each call returns the next piece (its first
// character, then everything up to the next '%' or the end) and advances p; null at the
// end or for a null p. isText tells whether the piece holds any of C, S, c or s, and
// hasStar whether it holds an asterisk (both look at every character of the piece,
// literal text included). The piece lives in a per-thread buffer until the next call.
VQK_API const char* nextFmt(const char*& p, bool& isText, bool& hasStar);

} // namespace vq
