// vqk/spreadsheet/excel_cell.h
//
// SCell is one cell of a spreadsheet row: empty, a number, a text, a formula or a link
// (a formula that refers to another cell). Cells live by value in their row's array,
// so a number cell costs no allocation of its own and a text is owned once, by its
// cell; a reference to a cell stays valid until more cells are added to its row.
//
//   vq_excel::SRow& r = sheet.addRow();
//   r.addCell().resetString("Diameter", head);          // text with style `head`
//   r.addCell().resetNumber(12.0049, 3, num);            // written 12.005
//   r.addCell().resetLink(r[1]);                         // =RC[-1]
//
// The trailing int arguments of the setters are, in order: the style index (-1: none),
// for texts the font index of a font of its own (-1: the style's font), and the
// number of cells merged to the right (0: none). Decimals below 0 write the number
// in the general form ("%g"); above 30 they are taken as 30.
//
// Nothing here fails; a null text is an empty text.
#pragma once

#include "vqk/config.h"
#include "vqk/text/tuples.h"
#include "vqk/text/str.h"

#include <cstdint>

namespace vq_excel {

class SRow;

class VQK_API SCell {
public:
    enum EKind : uint8_t { eEmpty, eNumber, eText, eFormula, eLink };

    SCell(SRow* row, int id) : m_row(row), m_id(id) { m_content.number = 0; }
    SCell(const SCell& o);
    SCell(SCell&& o) noexcept;
    SCell& operator=(const SCell& o);
    SCell& operator=(SCell&& o) noexcept;
    ~SCell();

    void resetNumber(double value, int decimals = -1, int style = -1, int mergeAcross = 0);
    // As resetNumber, but a value of 0 leaves the cell empty (style and merge still set).
    void resetNumberNotZero(double value, int decimals = -1, int style = -1, int mergeAcross = 0);
    void resetString(const char* text, int style = -1, int font = -1, int mergeAcross = 0);
    // Appends to the cell's text (a cell holding no text starts from empty); the
    // arguments that are not negative replace the cell's.
    void addString(const char* text, int style = -1, int font = -1, int mergeAcross = -1);
    // The formula text as the reading program takes it, R1C1 references ("=R[-1]C*2").
    void resetFormula(const char* formula, int style = -1, int mergeAcross = 0);
    // A formula that shows the value of `target` (see genLink).
    void resetLink(const SCell& target, int style = -1, int mergeAcross = 0);
    // Empty, with no style and no merge.
    void clear();

    // The reference from the cell `from` to the cell `to` as a formula: relative R1C1
    // on one sheet ("=R[2]C[-1]", "=RC[3]", "=R[-1]C"), the sheet's quoted name and an
    // absolute reference across sheets ("='Parts'!R4C2").
    static vq::CStr genLink(const SCell& from, const SCell& to);

    EKind kind() const { return EKind(m_kind); }
    double number() const { return m_kind == eNumber ? m_content.number : 0.0; }
    // The text, formula or link formula; "" for the other kinds.
    const char* text() const;
    int decimals() const { return m_decimals; }
    int style() const { return m_style; }
    void setStyle(int style) { m_style = style < 0 ? -1 : style; }
    int font() const { return m_font; }
    int mergeAcross() const { return m_merge; }
    void setMergeAcross(int n) { m_merge = n < 0 ? 0 : n; }

    int id() const { return m_id; }
    SRow& row() const { return *m_row; }
    // The cell to the right; null for the last cell of the row.
    SCell* next() const;

private:
    friend class SRow;
    void setText(const char* text, EKind kind);
    void dropText();
    void place(int style, int font, int mergeAcross);

    SRow* m_row;
    union {
        double number;
        char* text;
    } m_content;
    int m_id;
    int m_style = -1;
    int m_merge = 0;
    int m_font = -1;
    int8_t m_decimals = -1;
    uint8_t m_kind = eEmpty;
};

} // namespace vq_excel
