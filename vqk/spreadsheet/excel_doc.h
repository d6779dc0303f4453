// vqk/spreadsheet/excel_doc.h
//
// SDoc is a workbook built in memory and saved as one XML spreadsheet document
// (the 2003 XML format that spreadsheet programs open), written through CXmlOut
// straight to the file.
//
//   vq_excel::SDoc doc("report.xml", 0);
//   int head = doc.addStyle("DDDDDD", "", vq_excel::SBorder(vq_excel::SBorder::eAll, 1),
//                           vq_excel::SStyle::eHaCenter, vq_excel::SStyle::eVaNone);
//   int num = doc.addStyle("", "0.000", vq_excel::SBorder(), vq_excel::SStyle::eHaRight,
//                          vq_excel::SStyle::eVaNone);
//   doc.addSheet("Parts");
//   doc.addRow();
//   doc.addCell().resetString("Diameter", head);
//   doc.addCell().resetNumber(12.0049, 3, num);
//   if (!doc.save(nullptr)) { ... }            // to the name given at construction
//
// Styles are kept once: adding a style equal to one in the table returns that one's
// index. The add operations of SDoc work on the last sheet and its last row, adding
// a first sheet ("Sheet1") or row when there is none.
//
// Options (the constructor's int, a mask of EOption): the document's page margins
// carry the left margin under the attribute name "x::Left", which the format's own
// writers put there and which its readers expect; eNamespaceCorrect writes
// "x:Left" instead, for readers that insist on namespace-correct names.
//
// Failure: save() reports "Can't open file" through the assertion facility (a record
// in the assertion log when vq::CAssert logs) and returns false when the file cannot
// be created; the document is unchanged.
#pragma once

#include "vqk/config.h"
#include "vqk/spreadsheet/excel_sheet.h"
#include "vqk/spreadsheet/excel_style.h"
#include "vqk/text/tuples.h"
#include "vqk/text/str.h"

#include <memory>
#include <vector>

namespace vq_excel {

class VQK_API SDoc {
public:
    enum EOption { eNamespaceCorrect = 1 };

    explicit SDoc(const char* file = nullptr, int options = 0);
    SDoc(const SDoc&) = delete;
    SDoc& operator=(const SDoc&) = delete;
    ~SDoc();

    SWorksheet& addSheet(const char* name);
    SRow& addRow();
    SCell& addCell();
    SCell& addCells(int n);
    SCell& addCells(int n, const char* text, int style);

    int addStyle(const SStyle& style);
    int addStyle(const char* color, const char* numberFormat, const SBorder& border, SStyle::EHa ha,
                 SStyle::EVa va);
    // Adds a font to the font table (fonts are not merged) and returns its index.
    int addFont(const char* face, int size, bool bold, bool underline);
    void setDefaultFont(const char* face, int size, bool bold, bool underline);

    // On the last sheet: see SWorksheet::border.
    void border(const vq::T2<int>& from, const vq::T2<int>& to, int weight);
    // Gives `cell` its own style merged with table entry `style`.
    void mergeCellStyle(SCell& cell, int style);
    // Gives `cell` its own style with `sides` of `weight` added.
    void setCellBorder(SCell& cell, int sides, int weight);
    bool isStyleUsed(int style) const;

    // Writes the document to `file`, or to the name given at construction when `file`
    // is null or empty. False when the file cannot be created.
    bool save(const char* file) const;

    const char* file() const { return m_file.str(); }
    int options() const { return m_options; }
    void setOptions(int options) { m_options = options; }
    int nSheet() const { return int(m_sheets.size()); }
    SWorksheet& sheet(int i) const { return *m_sheets[size_t(i)]; }
    int nStyle() const { return int(m_styles.size()); }
    const SStyle& style(int i) const { return m_styles[size_t(i)]; }
    int nFont() const { return int(m_fonts.size()); }
    const SFont& font(int i) const { return m_fonts[size_t(i)]; }
    const SFont& fontDef() const { return m_fontDef; }

private:
    SWorksheet& lastSheet();

    vq::CStr m_file;
    int m_options;
    std::vector<std::unique_ptr<SWorksheet>> m_sheets;
    std::vector<SStyle> m_styles;
    std::vector<SFont> m_fonts;
    SFont m_fontDef = SFont("Arial", 10, false, false);
};

} // namespace vq_excel
