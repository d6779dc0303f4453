#include "vqk/spreadsheet/excel_row.h"

#include <algorithm>
#include <stdexcept>

namespace vq_excel {

void SRow::grow(int n) {
    if (n < 0 || n > kMaxColumns)
        throw std::out_of_range("spreadsheet column out of range");
    // A row given its width at once gets exactly that; one grown cell by cell doubles.
    size_t room = m_cells.capacity();
    if (size_t(n) > room)
        m_cells.reserve(size_t(n) == m_cells.size() + 1 ? std::max<size_t>(4, 2 * room) : size_t(n));
    while (int(m_cells.size()) < n)
        m_cells.emplace_back(this, int(m_cells.size()));
}

SCell& SRow::addCell() {
    grow(nCell() + 1);
    return m_cells.back();
}

SCell& SRow::addCells(int n) {
    int first = nCell();
    if (n < 1) {
        if (!first)
            throw std::out_of_range("spreadsheet row has no cell");
        return m_cells.back();
    }
    grow(n > kMaxColumns ? -1 : first + n);
    return m_cells[size_t(first)];
}

SCell& SRow::addCells(int n, const char* text, int style) {
    int first = nCell();
    SCell& c = addCells(n);
    for (int i = first; i < nCell(); ++i)
        m_cells[size_t(i)].resetString(text, style);
    return n < 1 ? c : m_cells[size_t(first)];
}

SCell& SRow::operator[](int column) {
    if (column < 0 || column >= kMaxColumns)
        throw std::out_of_range("spreadsheet column out of range");
    if (column >= nCell())
        grow(column + 1);
    return m_cells[size_t(column)];
}

SCell& SRow::mergeCells(int first, int count) {
    (*this)[first];
    if (count < 1)
        count = 1;
    (*this)[count > kMaxColumns ? -1 : first + count - 1];
    SCell& c = m_cells[size_t(first)];
    c.setMergeAcross(count - 1);
    return c;
}

} // namespace vq_excel
