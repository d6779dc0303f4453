// vqk/text/color.h
//
// CColor: a colour as three bytes, red, green and blue. Its text form is the three
// numbers separated by blanks, which a person can read and edit in an options file.
//
//   vq::CColor c{255, 128, 0};
//   c.text();                        // "255 128 0"
//   c.parse("0 0 255");              // true, c is blue
//   c.toInt();                       // 0xff0000: red in the low byte
//
// Failure: parse() returns false and leaves the colour unchanged unless the text is
// exactly three integers from 0 to 255, separated and optionally surrounded by white
// space.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

struct VQK_API CColor {
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;

    CTStr<char> text() const;
    bool parse(const char* text);
    // Packed as red | green << 8 | blue << 16, the layout colour values take in the
    // drawing interfaces the applications call.
    int toInt() const { return r | g << 8 | b << 16; }
    static CColor fromInt(int rgb) {
        return CColor{(unsigned char)(rgb & 0xff), (unsigned char)(rgb >> 8 & 0xff),
                      (unsigned char)(rgb >> 16 & 0xff)};
    }

    bool operator==(const CColor& o) const { return r == o.r && g == o.g && b == o.b; }
    bool operator!=(const CColor& o) const { return !(*this == o); }
};

} // namespace vq
