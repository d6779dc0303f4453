// vqk/text/number_text.h
//
// Text forms of numbers as the library writes them, and a plain test for digit text.
//
//   char buf[64];
//   vq::sprintDec(buf, sizeof buf, 2.5, 3);                       // "2.5"
//   vq::writeDoubleToString(buf, sizeof buf, 3.0, "%.6f", "%i");  // "3", returns 1
//   vq::writeDoubleToString(buf, sizeof buf, 1.25, "%.6f", "%i"); // "1.25"
//   vq::isStringNumber(vq::CStr("1,5"), true);                    // true
//
// Failure: sprintDec writes "#INF" and returns false when the text does not fit;
// writeDoubleToString leaves buf empty and returns 0 when its text does not fit.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

// v with `decimals` fixed decimals, trailing zeros and then a bare trailing point
// removed. The zeros are stripped without looking for a point first, so with 0
// decimals an integer loses its trailing zeros too (100 gives "1"): pass at least one
// decimal.
VQK_API bool sprintDec(char* buf, int size, double v, int decimals);

// An integral v (fraction within the double epsilon) is printed with intFmt (an int
// conversion) up to 2147483647 in magnitude, with "%.0lf." up to 1e30, and as the fixed
// text "999999999999999999999999." beyond, without a sign. Any other v is printed with
// realFmt and the zeros ending its mantissa (before an 'E' exponent, if any) are
// removed; the point stays. Returns the length of the text.
VQK_API int writeDoubleToString(char* buf, int size, double v, const char* realFmt,
                                const char* intFmt);

// False for an empty string; true when every character is a digit or, with
// separators, a comma or a point. Signs and exponents are not numbers here.
VQK_API bool isStringNumber(const CTStr<char>& s, bool separators);

} // namespace vq
