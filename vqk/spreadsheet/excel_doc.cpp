#include "vqk/spreadsheet/excel_doc.h"

namespace vq_excel {

SDoc::SDoc(const char* file, int options) : m_file(file), m_options(options) {}

SDoc::~SDoc() = default;

SWorksheet& SDoc::addSheet(const char* name) {
    m_sheets.push_back(std::make_unique<SWorksheet>(this, name));
    return *m_sheets.back();
}

SWorksheet& SDoc::lastSheet() { return m_sheets.empty() ? addSheet("Sheet1") : *m_sheets.back(); }

SRow& SDoc::addRow() { return lastSheet().addRow(); }

SCell& SDoc::addCell() { return lastSheet().addCell(); }

SCell& SDoc::addCells(int n) { return lastSheet().addCells(n); }

SCell& SDoc::addCells(int n, const char* text, int style) { return lastSheet().addCells(n, text, style); }

int SDoc::addStyle(const SStyle& style) {
    // The latest styles are the likeliest to be asked for again.
    for (int i = nStyle() - 1; i >= 0; --i)
        if (m_styles[size_t(i)] == style)
            return i;
    m_styles.push_back(style);
    return nStyle() - 1;
}

int SDoc::addStyle(const char* color, const char* numberFormat, const SBorder& border, SStyle::EHa ha,
                   SStyle::EVa va) {
    return addStyle(SStyle(color, numberFormat, border, ha, va));
}

int SDoc::addFont(const char* face, int size, bool bold, bool underline) {
    m_fonts.emplace_back(face, size, bold, underline);
    return nFont() - 1;
}

void SDoc::setDefaultFont(const char* face, int size, bool bold, bool underline) {
    m_fontDef = SFont(face, size, bold, underline);
}

void SDoc::border(const vq::T2<int>& from, const vq::T2<int>& to, int weight) {
    lastSheet().border(from, to, weight);
}

void SDoc::mergeCellStyle(SCell& cell, int style) {
    if (style < 0 || style >= nStyle())
        return;
    SStyle merged = cell.style() >= 0 && cell.style() < nStyle() ? m_styles[size_t(cell.style())] : SStyle();
    merged.merge(m_styles[size_t(style)]);
    cell.setStyle(addStyle(merged));
}

void SDoc::setCellBorder(SCell& cell, int sides, int weight) {
    SStyle merged = cell.style() >= 0 && cell.style() < nStyle() ? m_styles[size_t(cell.style())] : SStyle();
    merged.border.set(sides, weight, true);
    cell.setStyle(addStyle(merged));
}

bool SDoc::isStyleUsed(int style) const {
    for (const auto& sheet : m_sheets)
        for (int r = 0; r < sheet->nRow(); ++r)
            for (const SCell& c : sheet->row(r))
                if (c.style() == style)
                    return true;
    return false;
}

} // namespace vq_excel
