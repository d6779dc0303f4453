// vqk/text/font.h
//
// CFont: a font description, face name, size in points and the two style flags. Its
// text form is the face, the size and the style words, as a person writes it in an
// options file:
//
//   vq::CFont f;
//   f.parse("Courier New 9 bold");   // face "Courier New", size 9, bold
//   f.text();                         // "Courier New 9 bold"
//   f.parse("Arial 10 italic BOLD");  // style words in any order and case
//
// The size is the last number before the style words, so a face whose name ends in a
// number still reads back ("Code 128 12"). The process default font (defaultFont(),
// "Arial 10" until an application sets its own at start-up) is what a font value falls
// back to when it is given bad text.
//
// Failure: parse() returns false and leaves the font unchanged when the text has no
// face, no size from 1 to 999, or a style word twice.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

struct VQK_API CFont {
    CTStr<char> face;
    int size = 0;
    bool bold = false;
    bool italic = false;

    CTStr<char> text() const;
    bool parse(const char* text);

    bool operator==(const CFont& o) const {
        return face == o.face && size == o.size && bold == o.bold && italic == o.italic;
    }
    bool operator!=(const CFont& o) const { return !(*this == o); }
};

enum : int { kFontSizeMax = 999 };

VQK_API const CFont& defaultFont();
// Meant for start-up, before fonts are read: the default is not locked.
VQK_API void setDefaultFont(const CFont& font);

} // namespace vq
