#include "vqk/spreadsheet/excel_sheet.h"

#include "vqk/spreadsheet/excel_doc.h"

#include <algorithm>
#include <stdexcept>

namespace vq_excel {

SRow& SWorksheet::addRow() {
    if (nRow() >= kMaxRows)
        throw std::out_of_range("spreadsheet row out of range");
    m_rows.push_back(std::make_unique<SRow>(this, nRow()));
    return *m_rows.back();
}

SRow& SWorksheet::addRows(int n) {
    if (n > kMaxRows - nRow())
        throw std::out_of_range("spreadsheet row out of range");
    if (n < 1 && m_rows.empty())
        throw std::out_of_range("spreadsheet sheet has no row");
    m_rows.reserve(m_rows.size() + size_t(std::max(n, 0)));
    for (int i = 0; i < n; ++i)
        addRow();
    return back();
}

SCell& SWorksheet::addCell() { return (m_rows.empty() ? addRow() : back()).addCell(); }

SCell& SWorksheet::addCells(int n) { return (m_rows.empty() ? addRow() : back()).addCells(n); }

SCell& SWorksheet::addCells(int n, const char* text, int style) {
    return (m_rows.empty() ? addRow() : back()).addCells(n, text, style);
}

SRow& SWorksheet::operator[](int row) {
    if (row < 0 || row >= kMaxRows)
        throw std::out_of_range("spreadsheet row out of range");
    while (nRow() <= row)
        addRow();
    return *m_rows[size_t(row)];
}

void SWorksheet::setSides(int row, int column, int sides, int weight) {
    if (sides)
        m_doc->setCellBorder((*this)[row][column], sides, weight);
}

void SWorksheet::border(const vq::T2<int>& from, const vq::T2<int>& to, int weight) {
    int r0 = std::min(from[0], to[0]), r1 = std::max(from[0], to[0]);
    int c0 = std::min(from[1], to[1]), c1 = std::max(from[1], to[1]);
    for (int r = r0; r <= r1; ++r) {
        bool edgeRow = r == r0 || r == r1;
        for (int c = c0; c <= c1; c = (edgeRow || c == c1) ? c + 1 : c1) {
            int sides = (r == r0 ? SBorder::eTop : 0) | (r == r1 ? SBorder::eBottom : 0) |
                        (c == c0 ? SBorder::eLeft : 0) | (c == c1 ? SBorder::eRight : 0);
            setSides(r, c, sides, weight);
        }
    }
}

void SWorksheet::lineV(int column, int first, int last, int weight) {
    for (int r = std::min(first, last); r <= std::max(first, last); ++r)
        setSides(r, column, SBorder::eLeft, weight);
}

void SWorksheet::lineH(int row, int first, int last, int weight) {
    for (int c = std::min(first, last); c <= std::max(first, last); ++c)
        setSides(row, c, SBorder::eTop, weight);
}

void SWorksheet::mergeCellsStyle(int row0, int col0, int row1, int col1, int style) {
    if (row0 > row1)
        std::swap(row0, row1);
    if (col0 > col1)
        std::swap(col0, col1);
    for (int r = row0; r <= row1; ++r) {
        SRow& row = (*this)[r];
        if (style >= 0)
            for (int c = col0; c <= col1; ++c)
                m_doc->mergeCellStyle(row[c], style);
        row.mergeCells(col0, col1 - col0 + 1);
    }
}

vq::T2<int> SWorksheet::cellIndex(const SCell& cell) const { return vq::T2<int>(cell.row().id(), cell.id()); }

void SWorksheet::setPrintArea(const vq::T2<int>* corners) {
    if (!corners || corners[0][0] < 0 || corners[0][1] < 0 || corners[1][0] < 0 || corners[1][1] < 0) {
        m_printArea[0] = m_printArea[1] = vq::T2<int>(-1, -1);
        return;
    }
    m_printArea[0] = vq::T2<int>(std::min(corners[0][0], corners[1][0]), std::min(corners[0][1], corners[1][1]));
    m_printArea[1] = vq::T2<int>(std::max(corners[0][0], corners[1][0]), std::max(corners[0][1], corners[1][1]));
}

void SWorksheet::setPrintTitles(const vq::T2<int>& rows) {
    if (rows[0] < 0 || rows[1] < 0)
        m_printTitles = vq::T2<int>(-1, -1);
    else
        m_printTitles = vq::T2<int>(std::min(rows[0], rows[1]), std::max(rows[0], rows[1]));
}

void SWorksheet::insertRowBreaks(double pageHeight, bool titlesOnEachPage) {
    m_rowBreaks.clear();
    auto heightOf = [this](int r) {
        double h = r < nRow() ? m_rows[size_t(r)]->height() : -1.0;
        return h < 0 ? kDefaultRowHeight : h;
    };
    double titles = 0;
    if (titlesOnEachPage && hasPrintTitles())
        for (int r = m_printTitles[0]; r <= m_printTitles[1]; ++r)
            titles += heightOf(r);
    if (!(pageHeight > 0) || !(pageHeight - titles > 0))
        return;
    double used = 0, room = pageHeight;
    for (int r = 0; r < nRow(); ++r) {
        double h = heightOf(r);
        if (used > 0 && used + h > room) {
            m_rowBreaks.push_back(r);
            used = 0;
            room = pageHeight - titles;
        }
        used += h;
    }
}

double& SWorksheet::colWidth(int column) {
    if (column < 0 || column >= SRow::kMaxColumns)
        throw std::out_of_range("spreadsheet column out of range");
    if (column >= nColWidth())
        m_colWidths.resize(size_t(column) + 1, -1.0);
    return m_colWidths[size_t(column)];
}

void SWorksheet::reset(const char* name) {
    m_name = name;
    m_rows.clear();
    m_colWidths.clear();
    m_rowBreaks.clear();
    m_printArea[0] = m_printArea[1] = m_printTitles = vq::T2<int>(-1, -1);
    m_scale = m_zoom = 100.0;
    m_orientation = ePortrait;
}

} // namespace vq_excel
