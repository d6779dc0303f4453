// Writing an SDoc as one XML spreadsheet document.
#include "vqk/spreadsheet/excel_doc.h"

#include "vqk/diagnostics/assert.h"
#include "vqk/text/bounded.h"
#include "vqk/xml/xml_escape.h"
#include "vqk/xml/xml_out.h"

#include <cmath>

namespace vq_excel {

namespace {

const char kSpreadsheetNs[] = "urn:schemas-microsoft-com:office:spreadsheet";
const char kOfficeNs[] = "urn:schemas-microsoft-com:office:office";
const char kExcelNs[] = "urn:schemas-microsoft-com:office:excel";
const char kHtmlNs[] = "http://www.w3.org/TR/REC-html40";

// Print scale and zoom as the whole percentages readers accept.
int percent(double v) {
    if (!(v >= 10.0))
        return v != v ? 100 : 10;
    return v > 400.0 ? 400 : int(std::lround(v));
}

bool isSet(double size) { return size >= 0 && std::isfinite(size); }

class CSaver {
public:
    CSaver(const SDoc& doc, vq::CXmlOut& out) : m_doc(doc), m_out(out) {}

    void write() {
        m_out("<?xml version=\"1.0\"?>\n");
        m_out("<?mso-application progid=\"Excel.Sheet\"?>\n");
        vq::CXmlOutElem workbook(m_out, "Workbook");
        m_out.attrStr("xmlns", kSpreadsheetNs);
        m_out.attrStr("xmlns:o", kOfficeNs);
        m_out.attrStr("xmlns:x", kExcelNs);
        m_out.attrStr("xmlns:ss", kSpreadsheetNs);
        m_out.attrStr("xmlns:html", kHtmlNs);
        writeStyles();
        for (int i = 0; i < m_doc.nSheet(); ++i)
            writeSheet(m_doc.sheet(i));
    }

private:
    void writeFont(const SFont& font) {
        vq::CXmlOutElem e(m_out, "Font");
        m_out.attrStr("ss:FontName", font.face);
        m_out.attrInt("ss:Size", font.size);
        if (font.bold)
            m_out.attrStr("ss:Bold", "1");
        m_out.attrStr("ss:Underline", font.underline ? "Single" : "None");
    }

    void writeStyles() {
        vq::CXmlOutElem styles(m_out, "Styles");
        {
            vq::CXmlOutElem e(m_out, "Style");
            m_out.attrStr("ss:ID", "Default");
            m_out.attrStr("ss:Name", "Normal");
            {
                vq::CXmlOutElem a(m_out, "Alignment");
                m_out.attrStr("ss:Vertical", "Bottom");
            }
            writeFont(m_doc.fontDef());
        }
        for (int i = 0; i < m_doc.nStyle(); ++i)
            writeStyle(i, m_doc.style(i));
    }

    void writeStyle(int id, const SStyle& s) {
        vq::CXmlOutElem e(m_out, "Style");
        m_out.attr("ss:ID", "%d", id);
        if (!s.color.empty()) {
            vq::CXmlOutElem i(m_out, "Interior");
            m_out.attr("ss:Color", "#%s", s.color.str());
            m_out.attrStr("ss:Pattern", "Solid");
        }
        if (!s.numberFormat.empty()) {
            // Written as raw text; escaped all the same, so that a format with quoted
            // units ("0.0\"mm\"") cannot break the document.
            vq::escapeXmlStr(m_text, s.numberFormat.str());
            m_out("<NumberFormat ss:Format=\"%s\"/>", m_text.str());
        }
        const char* ha = SStyle::haText(s.ha);
        const char* va = SStyle::vaText(s.va);
        if (ha || va) {
            vq::CXmlOutElem a(m_out, "Alignment");
            if (ha)
                m_out.attrStr("ss:Horizontal", ha);
            if (va)
                m_out.attrStr("ss:Vertical", va);
        }
        if (s.font >= 0 && s.font < m_doc.nFont())
            writeFont(m_doc.font(s.font));
        else if (s.font < 0 && !s.ownFont.face.empty())
            writeFont(s.ownFont);
        if (s.border.sides & SBorder::eAll)
            writeBorders(s.border);
    }

    void writeBorders(const SBorder& b) {
        static const struct {
            int side;
            const char* position;
        } sides[] = {{SBorder::eTop, "Top"}, {SBorder::eLeft, "Left"}, {SBorder::eRight, "Right"},
                     {SBorder::eBottom, "Bottom"}};
        vq::CXmlOutElem e(m_out, "Borders");
        for (const auto& s : sides) {
            if (!(b.sides & s.side))
                continue;
            vq::CXmlOutElem one(m_out, "Border");
            m_out.attrStr("ss:Position", s.position);
            m_out.attrStr("ss:LineStyle", "Continuous");
            m_out.attr("ss:Weight", "%i", b.sideWeight(s.side));
        }
    }

    void writeNames(const SWorksheet& sheet) {
        if (!sheet.hasPrintArea() && !sheet.hasPrintTitles())
            return;
        vq::CXmlOutElem names(m_out, "Names");
        if (sheet.hasPrintArea()) {
            const vq::T2<int>* a = sheet.printArea();
            vq::CXmlOutElem e(m_out, "NamedRange");
            m_out.attrStr("ss:Name", "Print_Area");
            m_out.attr("ss:RefersTo", "R%iC%i:R%iC%i", a[0][0] + 1, a[0][1] + 1, a[1][0] + 1, a[1][1] + 1);
        }
        if (sheet.hasPrintTitles()) {
            vq::CXmlOutElem e(m_out, "NamedRange");
            m_out.attrStr("ss:Name", "Print_Titles");
            m_out.attr("ss:RefersTo", "R%i:R%i", sheet.printTitles()[0] + 1, sheet.printTitles()[1] + 1);
        }
    }

    void writeSheet(const SWorksheet& sheet) {
        vq::CXmlOutElem ws(m_out, "Worksheet");
        m_out.attrStr("ss:Name", sheet.name());
        writeNames(sheet);
        {
            vq::CXmlOutElem table(m_out, "Table");
            int nCol = sheet.nColWidth();
            for (int r = 0; r < sheet.nRow(); ++r)
                if (sheet.row(r).nCell() > nCol)
                    nCol = sheet.row(r).nCell();
            for (int c = 0; c < nCol; ++c) {
                double w = c < sheet.nColWidth() ? sheet.colWidthAt(c) : -1.0;
                vq::CXmlOutElem e(m_out, "Column");
                m_out.attrStr("ss:AutoFitWidth", isSet(w) ? "0" : "1");
                if (isSet(w))
                    m_out.attr("ss:Width", "%.2lf", w);
            }
            for (int r = 0; r < sheet.nRow(); ++r)
                writeRow(sheet.row(r));
        }
        writeOptions(sheet);
        writeBreaks(sheet);
    }

    void writeRow(const SRow& row) {
        vq::CXmlOutElem e(m_out, "Row");
        bool height = isSet(row.height());
        m_out.attrStr("ss:AutoFitHeight", height ? "0" : "1");
        if (height)
            m_out.attrD1("ss:Height", row.height());
        for (const SCell* c = row.begin(); c < row.end(); ++c) {
            writeCell(*c);
            // Cells under a merge are not written: the reader places the next cell
            // after the merged span.
            c += c->mergeAcross() < row.end() - c ? c->mergeAcross() : row.end() - c;
        }
    }

    void writeCell(const SCell& c) {
        vq::CXmlOutElem e(m_out, "Cell");
        if (c.mergeAcross() > 0)
            m_out.attr("ss:MergeAcross", "%i", c.mergeAcross());
        if (c.style() >= 0)
            m_out.attr("ss:StyleID", "%d", c.style());
        switch (c.kind()) {
        case SCell::eEmpty:
            break;
        case SCell::eFormula:
        case SCell::eLink:
            m_out.attrStr("ss:Formula", c.text());
            break;
        case SCell::eNumber:
            writeNumber(c.number(), c.decimals());
            break;
        case SCell::eText:
            if (c.font() >= 0 && c.font() < m_doc.nFont())
                writeFontText(c.text(), m_doc.font(c.font()));
            else
                writeText("Data", "String", c.text());
            break;
        }
    }

    void writeNumber(double v, int decimals) {
        if (!std::isfinite(v)) {
            // No number form exists for these; the reader's own error value keeps the
            // document readable.
            vq::CXmlOutElem d(m_out, "Data");
            m_out.attrStr("ss:Type", "Error");
            m_out.write("#NUM!", 5);
            return;
        }
        char buf[400];
        int n = decimals < 0 ? vq::sprintf(buf, "%g", v) : vq::sprintf(buf, "%.*lf", decimals, v);
        vq::CXmlOutElem d(m_out, "Data");
        m_out.attrStr("ss:Type", "Number");
        m_out.write(buf, n);
    }

    void writeText(const char* element, const char* type, const char* text) {
        vq::CXmlOutElem d(m_out, element);
        m_out.attrStr("ss:Type", type);
        writeEscaped(text);
    }

    void writeEscaped(const char* text) {
        vq::escapeXmlStr(m_text, text);
        m_out.write(m_text.str(), m_text.length());
    }

    // The font goes inside the data as markup on the same line: a line break there
    // would become part of the text.
    void writeFontText(const char* text, const SFont& font) {
        vq::CXmlOutElem d(m_out, "ss:Data");
        m_out.attrStr("ss:Type", "String");
        m_out.attrStr("xmlns", kHtmlNs);
        vq::escapeXmlStr(m_text, font.face.str());
        m_out("<Font html:Face=\"%s\">", m_text.str());
        writeEscaped(text);
        m_out.write("</Font>", 7);
    }

    // An element holding a number as a character data section.
    void cdataNumber(const char* name, int value) {
        vq::CXmlOutElem e(m_out, name, "");
        m_out("%i", value);
    }

    void writeOptions(const SWorksheet& sheet) {
        vq::CXmlOutElem options(m_out, "WorksheetOptions");
        m_out.attrStr("xmlns", kExcelNs);
        {
            vq::CXmlOutElem setup(m_out, "PageSetup");
            {
                vq::CXmlOutElem layout(m_out, "Layout");
                m_out.attrStr("x:Orientation", sheet.orientation() == SWorksheet::eLandscape ? "Landscape" : "Portrait");
            }
            vq::CXmlOutElem margins(m_out, "PageMargins");
            m_out.attrStr("x:Bottom", "0.30");
            m_out.attrStr(m_doc.options() & SDoc::eNamespaceCorrect ? "x:Left" : "x::Left", "0.10");
            m_out.attrStr("x:Right", "0.10");
            m_out.attrStr("x:Top", "0.90");
        }
        {
            vq::CXmlOutElem print(m_out, "Print");
            cdataNumber("Scale", percent(sheet.scale()));
        }
        cdataNumber("Zoom", percent(sheet.zoom()));
        { vq::CXmlOutElem show(m_out, "ShowPageBreakZoom"); }
        cdataNumber("PageBreakZoom", percent(sheet.zoom()));
    }

    void writeBreaks(const SWorksheet& sheet) {
        if (sheet.rowBreaks().empty())
            return;
        vq::CXmlOutElem breaks(m_out, "PageBreaks");
        m_out.attrStr("xmlns", kExcelNs);
        vq::CXmlOutElem rows(m_out, "RowBreaks");
        for (int r : sheet.rowBreaks()) {
            vq::CXmlOutElem b(m_out, "RowBreak");
            cdataNumber("Row", r);
        }
    }

    const SDoc& m_doc;
    vq::CXmlOut& m_out;
    vq::CStr m_text;
};

} // namespace

bool SDoc::save(const char* file) const {
    const char* path = file && *file ? file : m_file.str();
    // The path constructor opens without the declaration the document writes itself.
    vq::CXmlOut out(*path ? path : nullptr);
    VQ_ASSERT_MSG(out.isOpen(), "Can't open file", 3);
    if (!out.isOpen())
        return false;
    CSaver(*this, out).write();
    return true;
}

} // namespace vq_excel
