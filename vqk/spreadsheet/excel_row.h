// vqk/spreadsheet/excel_row.h
//
// SRow is one row of a worksheet: its cells, left to right, in one array, and an
// optional height in points.
//
//   vq_excel::SRow& r = sheet.addRow();
//   r.addCells(3, "n/a", grey);        // three cells with the same text and style
//   r.mergeCells(0, 3);                // one cell spanning the three
//   r[5].resetNumber(2.5);             // cells 3 to 5 are made on demand
//
// Adding cells may move the row's array: references to cells of this row taken
// before stay valid only until the next cell is added. operator[] throws
// std::out_of_range for a negative index or one beyond the largest column a sheet
// can hold (kMaxColumns).
#pragma once

#include "vqk/config.h"
#include "vqk/spreadsheet/excel_cell.h"

#include <vector>

namespace vq_excel {

class SWorksheet;

class VQK_API SRow {
public:
    static constexpr int kMaxColumns = 16384;

    SRow(SWorksheet* sheet, int id) : m_sheet(sheet), m_id(id) {}
    SRow(const SRow&) = delete;
    SRow& operator=(const SRow&) = delete;

    SCell& addCell();
    // Adds n empty cells (n < 1: none) and returns the first (the last cell when none
    // was added, which then must exist).
    SCell& addCells(int n);
    // Adds n cells holding `text` with `style`; returns the first.
    SCell& addCells(int n, const char* text, int style);
    // The cell at `column`, added with the empty cells before it when missing.
    SCell& operator[](int column);
    // Merges `count` cells from `first` on into one (made on demand) and returns it.
    SCell& mergeCells(int first, int count);

    int nCell() const { return int(m_cells.size()); }
    // (row, column) of the cell at `column` of this row, or of `cell`.
    vq::T2<int> cellIndex(int column) const { return vq::T2<int>(m_id, column); }
    vq::T2<int> cellIndex(const SCell& cell) const { return vq::T2<int>(m_id, cell.id()); }

    int id() const { return m_id; }
    SWorksheet& sheet() const { return *m_sheet; }
    // Height in points; below 0 (the default) lets the reading program fit it.
    double height() const { return m_height; }
    void setHeight(double points) { m_height = points; }

    const SCell* begin() const { return m_cells.data(); }
    const SCell* end() const { return m_cells.data() + m_cells.size(); }

private:
    friend class SCell;
    void grow(int n);

    SWorksheet* m_sheet;
    int m_id;
    double m_height = -1.0;
    std::vector<SCell> m_cells;
};

} // namespace vq_excel
