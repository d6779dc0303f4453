// vqk/spreadsheet/excel_style.h
//
// The look of spreadsheet cells: SFont (face, size, bold, underline), SBorder (which
// sides of a cell carry a line, and how heavy each is) and SStyle (background, number
// format, border, alignment and font). A document keeps one table of distinct styles
// and one of fonts; cells refer to a style by its index in the table.
//
//   vq_excel::SStyle head;
//   head.color = "DDDDDD";                       // hex RGB, no '#'
//   head.border = vq_excel::SBorder(vq_excel::SBorder::eAll, 1);
//   head.ha = vq_excel::SStyle::eHaCenter;
//   int id = doc.addStyle(head);                 // the same index for an equal style
//
// Nothing here fails.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq_excel {

struct VQK_API SFont {
    vq::CStr face;
    int size = 10;
    bool bold = false;
    bool underline = false;

    SFont() = default;
    SFont(const char* face_, int size_, bool bold_, bool underline_)
        : face(face_), size(size_), bold(bold_), underline(underline_) {}
    bool operator==(const SFont& o) const;
    bool operator!=(const SFont& o) const { return !(*this == o); }
};

struct VQK_API SBorder {
    // Side bits, written in this order.
    enum ESide { eTop = 1, eLeft = 2, eRight = 4, eBottom = 8, eAll = 15 };

    int sides = 0;
    int weight[4] = {0, 0, 0, 0}; // per side, in the order of the bits

    SBorder() = default;
    SBorder(int sides_, int weight_) { set(sides_, weight_, true); }
    // Turns the given sides on with `weight`, or off (their weight forgotten).
    void set(int sides_, int weight_, bool on);
    // Weight of one side bit; 0 for a side that is off.
    int sideWeight(int side) const;
    // Only sides that are on, and their weights, take part.
    bool operator==(const SBorder& o) const;
    bool operator!=(const SBorder& o) const { return !(*this == o); }
};

struct VQK_API SStyle {
    // Horizontal alignment; eHaNone leaves it to the reading program.
    enum EHa { eHaNone, eHaLeft, eHaCenter, eHaRight, eHaFill, eHaJustify };
    // Vertical alignment; eVaNone leaves it to the reading program.
    enum EVa { eVaNone, eVaTop, eVaCenter, eVaBottom, eVaJustify };

    vq::CStr color;        // background as hex RGB ("FFCC00"); empty: none
    vq::CStr numberFormat; // the format's own code ("0.000"); empty: general
    SBorder border;
    EHa ha = eHaNone;
    EVa va = eVaNone;
    int font = -1;         // index into the document's font table; -1: see ownFont
    SFont ownFont;         // used when font is -1 and its face is set

    SStyle() = default;
    SStyle(const char* color_, const char* numberFormat_, const SBorder& border_, EHa ha_, EVa va_)
        : color(color_), numberFormat(numberFormat_), border(border_), ha(ha_), va(va_) {}

    bool operator==(const SStyle& o) const;
    bool operator!=(const SStyle& o) const { return !(*this == o); }
    // Takes over what `o` sets: its colour, number format, alignments and font when
    // given, and its border sides added to these.
    void merge(const SStyle& o);
    bool hasFont() const { return font >= 0 || !ownFont.face.empty(); }

    // The attribute texts of the alignments; null for none.
    static const char* haText(EHa ha);
    static const char* vaText(EVa va);
};

} // namespace vq_excel
