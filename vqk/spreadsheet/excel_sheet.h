// vqk/spreadsheet/excel_sheet.h
//
// SWorksheet is one named sheet of a workbook: its rows, top to bottom, column widths,
// the print area and print titles, row breaks, print scale, zoom and orientation.
//
//   vq_excel::SWorksheet& s = doc.addSheet("Parts");
//   s.colWidth(0) = 120.0;                        // points
//   s.addRow().addCell().resetString("Part");
//   s.border(vq::T2<int>(0, 0), vq::T2<int>(9, 3), 2);   // box around rows 0-9, cols 0-3
//   s.setPrintTitles(vq::T2<int>(0, 0));          // row 0 repeats on every page
//   s.insertRowBreaks(500.0, true);
//
// Positions are (row, column), both from 0. Rows and cells named by index are made on
// demand; an index that is negative or beyond kMaxRows / SRow::kMaxColumns throws
// std::out_of_range. The styling operations (border, lines, merged styles) add
// styles to the document's table.
#pragma once

#include "vqk/config.h"
#include "vqk/spreadsheet/excel_row.h"
#include "vqk/text/tuples.h"
#include "vqk/text/str.h"

#include <memory>
#include <vector>

namespace vq_excel {

class SDoc;

class VQK_API SWorksheet {
public:
    enum EOrientation { ePortrait, eLandscape };
    static constexpr int kMaxRows = 1048576;
    // The height insertRowBreaks counts for a row whose height is not set.
    static constexpr double kDefaultRowHeight = 15.0;

    SWorksheet(SDoc* doc, const char* name) : m_doc(doc), m_name(name) {}
    SWorksheet(const SWorksheet&) = delete;
    SWorksheet& operator=(const SWorksheet&) = delete;

    SRow& addRow();
    // Adds n rows (n < 1: none) and returns the last one (the last row when none was
    // added, which then must exist).
    SRow& addRows(int n);
    // Cells of the last row, added with a first row when the sheet has none.
    SCell& addCell();
    SCell& addCells(int n);
    SCell& addCells(int n, const char* text, int style);
    SRow& operator[](int row);
    SCell& cell(const vq::T2<int>& at) { return (*this)[at[0]][at[1]]; }

    // A box of lines of `weight` around the cells from `from` to `to` (corners in any
    // order); inner cells keep their borders.
    void border(const vq::T2<int>& from, const vq::T2<int>& to, int weight);
    // A line on the left side of `column`'s cells from row `first` to `last`.
    void lineV(int column, int first, int last, int weight);
    // A line on the top side of `row`'s cells from column `first` to `last`.
    void lineH(int row, int first, int last, int weight);
    // In each row from `row0` to `row1`, merges columns `col0` to `col1` into one cell
    // and gives every cell of the block the style merged into its own.
    void mergeCellsStyle(int row0, int col0, int row1, int col1, int style);

    vq::T2<int> cellIndex(const SCell& cell) const;

    // Two corners (top left, bottom right); null clears the print area.
    void setPrintArea(const vq::T2<int>* corners);
    // The first and last row repeated on every printed page; a negative first row
    // clears them.
    void setPrintTitles(const vq::T2<int>& rows);
    // Puts a row break wherever the rows since the last break would pass `pageHeight`
    // points; with `titlesOnEachPage` the print-title rows count on every page after
    // the first. Breaks set before are replaced. A page height that cannot hold one
    // row gives no breaks.
    void insertRowBreaks(double pageHeight, bool titlesOnEachPage);
    // Width of a column in points, made on demand; below 0 (the default) lets the
    // reading program fit it.
    double& colWidth(int column);
    // Print scale and zoom in percent (100: actual size).
    void setScale(double percent) { m_scale = percent; }
    void setZoom(double percent) { m_zoom = percent; }
    void setOrientation(EOrientation o) { m_orientation = o; }
    // Empties the sheet (rows, widths, print settings, breaks) and renames it.
    void reset(const char* name);

    const char* name() const { return m_name.str(); }
    int nRow() const { return int(m_rows.size()); }
    SRow& row(int i) const { return *m_rows[size_t(i)]; }
    // The last row; the sheet must have one.
    SRow& back() const { return *m_rows.back(); }
    SDoc& doc() const { return *m_doc; }
    int nColWidth() const { return int(m_colWidths.size()); }
    double colWidthAt(int column) const { return m_colWidths[size_t(column)]; }
    // Rows that begin a new page, ascending.
    std::vector<int>& rowBreaks() { return m_rowBreaks; }
    const std::vector<int>& rowBreaks() const { return m_rowBreaks; }
    bool hasPrintArea() const { return m_printArea[0][0] >= 0; }
    const vq::T2<int>* printArea() const { return m_printArea; }
    bool hasPrintTitles() const { return m_printTitles[0] >= 0; }
    const vq::T2<int>& printTitles() const { return m_printTitles; }
    double scale() const { return m_scale; }
    double zoom() const { return m_zoom; }
    EOrientation orientation() const { return m_orientation; }

private:
    void setSides(int row, int column, int sides, int weight);

    SDoc* m_doc;
    vq::CStr m_name;
    std::vector<std::unique_ptr<SRow>> m_rows;
    std::vector<double> m_colWidths;
    std::vector<int> m_rowBreaks;
    vq::T2<int> m_printArea[2] = {vq::T2<int>(-1, -1), vq::T2<int>(-1, -1)};
    vq::T2<int> m_printTitles = vq::T2<int>(-1, -1);
    double m_scale = 100.0;
    double m_zoom = 100.0;
    EOrientation m_orientation = ePortrait;
};

} // namespace vq_excel
