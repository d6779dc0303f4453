// Saved documents: the exact bytes of a workbook that uses every feature, numbers in
// their forms, a referee parser's verdict on well-formedness, and a file that cannot be
// created.
#include "vqk/diagnostics/assert.h"
#include "vqk/spreadsheet/excel_doc.h"

#include "../xml/xml_test_support.h"
#include "support/xml_referee.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using namespace vq_excel;
using vq::T2;
using xml_test::tempDir;

// The saved text as a text-mode reader sees it: lines end in CR LF on Windows.
std::string readFile(const std::string& path) { return xml_test::lfOnly(xml_test::readFile(path)); }

void buildEveryFeature(SDoc& doc) {
    doc.setDefaultFont("Arial", 9, false, false);
    int mono = doc.addFont("Courier", 8, true, true);
    int head = doc.addStyle("C0C0C0", "", SBorder(SBorder::eTop | SBorder::eBottom, 2), SStyle::eHaCenter,
                            SStyle::eVaCenter);
    SStyle fixed("", "0.000", SBorder(), SStyle::eHaRight, SStyle::eVaNone);
    fixed.font = mono;
    int num = doc.addStyle(fixed);
    SStyle own;
    own.ownFont = SFont("Times", 12, false, false);
    int serif = doc.addStyle(own);
    EXPECT_EQ(doc.addStyle(fixed), num);

    SWorksheet& s = doc.addSheet("Parts & <Plans>");
    s.colWidth(1) = 80.5;
    s.setOrientation(SWorksheet::eLandscape);
    s.setScale(85);
    s.setZoom(120);
    const T2<int> area[2] = {T2<int>(2, 3), T2<int>(0, 0)};
    s.setPrintArea(area);
    s.setPrintTitles(T2<int>(0, 0));
    SRow& r0 = s.addRow();
    r0.setHeight(20);
    r0.addCell().resetString("Part \"A\" <1> & 'B'", head, -1, 2);
    r0.addCells(2);
    r0.addCell().resetString("mono", serif, mono);
    SRow& r1 = s.addRow();
    r1.addCell().resetNumber(3.14159, 2, num);
    r1.addCell().resetNumber(3.14159, -1);
    r1.addCell().resetFormula("=RC[-2]*2");
    r1.addCell().resetLink(r0[0]);
    s.addRow().addCell();
    s.rowBreaks().push_back(2);
    doc.addSheet("Notes").addRow().addCell().resetString("ok");
}

const char kEveryFeature[] = R"(<?xml version="1.0"?>
<?mso-application progid="Excel.Sheet"?>
<Workbook xmlns="urn:schemas-microsoft-com:office:spreadsheet" xmlns:o="urn:schemas-microsoft-com:office:office" xmlns:x="urn:schemas-microsoft-com:office:excel" xmlns:ss="urn:schemas-microsoft-com:office:spreadsheet" xmlns:html="http://www.w3.org/TR/REC-html40">
<Styles>
<Style ss:ID="Default" ss:Name="Normal">
<Alignment ss:Vertical="Bottom"/>
<Font ss:FontName="Arial" ss:Size="9" ss:Underline="None"/>
</Style>
<Style ss:ID="0">
<Interior ss:Color="#C0C0C0" ss:Pattern="Solid"/>
<Alignment ss:Horizontal="Center" ss:Vertical="Center"/>
<Borders>
<Border ss:Position="Top" ss:LineStyle="Continuous" ss:Weight="2"/>
<Border ss:Position="Bottom" ss:LineStyle="Continuous" ss:Weight="2"/>
</Borders>
</Style>
<Style ss:ID="1"><NumberFormat ss:Format="0.000"/><Alignment ss:Horizontal="Right"/>
<Font ss:FontName="Courier" ss:Size="8" ss:Bold="1" ss:Underline="Single"/>
</Style>
<Style ss:ID="2">
<Font ss:FontName="Times" ss:Size="12" ss:Underline="None"/>
</Style>
</Styles>
<Worksheet ss:Name="Parts &amp; &lt;Plans&gt;">
<Names>
<NamedRange ss:Name="Print_Area" ss:RefersTo="R1C1:R3C4"/>
<NamedRange ss:Name="Print_Titles" ss:RefersTo="R1:R1"/>
</Names>
<Table>
<Column ss:AutoFitWidth="1"/>
<Column ss:AutoFitWidth="0" ss:Width="80.50"/>
<Column ss:AutoFitWidth="1"/>
<Column ss:AutoFitWidth="1"/>
<Row ss:AutoFitHeight="0" ss:Height="20">
<Cell ss:MergeAcross="2" ss:StyleID="0">
<Data ss:Type="String">Part &quot;A&quot; &lt;1&gt; &amp; &apos;B&apos;</Data>
</Cell>
<Cell ss:StyleID="2">
<ss:Data ss:Type="String" xmlns="http://www.w3.org/TR/REC-html40"><Font html:Face="Courier">mono</Font></ss:Data>
</Cell>
</Row>
<Row ss:AutoFitHeight="1">
<Cell ss:StyleID="1">
<Data ss:Type="Number">3.14</Data>
</Cell>
<Cell>
<Data ss:Type="Number">3.14159</Data>
</Cell>
<Cell ss:Formula="=RC[-2]*2"/>
<Cell ss:Formula="=R[-1]C[-3]"/>
</Row>
<Row ss:AutoFitHeight="1">
<Cell/>
</Row>
</Table>
<WorksheetOptions xmlns="urn:schemas-microsoft-com:office:excel">
<PageSetup>
<Layout x:Orientation="Landscape"/>
<PageMargins x:Bottom="0.30" x::Left="0.10" x:Right="0.10" x:Top="0.90"/>
</PageSetup>
<Print>
<Scale><![CDATA[85]]></Scale>
</Print>
<Zoom><![CDATA[120]]></Zoom>
<ShowPageBreakZoom/>
<PageBreakZoom><![CDATA[120]]></PageBreakZoom>
</WorksheetOptions>
<PageBreaks xmlns="urn:schemas-microsoft-com:office:excel">
<RowBreaks>
<RowBreak>
<Row><![CDATA[2]]></Row>
</RowBreak>
</RowBreaks>
</PageBreaks>
</Worksheet>
<Worksheet ss:Name="Notes">
<Table>
<Column ss:AutoFitWidth="1"/>
<Row ss:AutoFitHeight="1">
<Cell>
<Data ss:Type="String">ok</Data>
</Cell>
</Row>
</Table>
<WorksheetOptions xmlns="urn:schemas-microsoft-com:office:excel">
<PageSetup>
<Layout x:Orientation="Portrait"/>
<PageMargins x:Bottom="0.30" x::Left="0.10" x:Right="0.10" x:Top="0.90"/>
</PageSetup>
<Print>
<Scale><![CDATA[100]]></Scale>
</Print>
<Zoom><![CDATA[100]]></Zoom>
<ShowPageBreakZoom/>
<PageBreakZoom><![CDATA[100]]></PageBreakZoom>
</WorksheetOptions>
</Worksheet>
</Workbook>
)";

TEST(ExcelSave, EveryFeatureInExactBytes) {
    std::string dir = tempDir("excel");
    SDoc doc((dir + "/all.xml").c_str(), 0);
    buildEveryFeature(doc);
    ASSERT_TRUE(doc.save(nullptr));
    EXPECT_EQ(readFile(dir + "/all.xml"), kEveryFeature);
}

// Saves a one-cell workbook and returns the cell's element as written.
std::string savedCell(void (*fill)(SCell&)) {
    std::string path = tempDir("excel") + "/cell.xml";
    SDoc doc(path.c_str(), 0);
    fill(doc.addCell());
    EXPECT_TRUE(doc.save(nullptr));
    std::string all = readFile(path);
    size_t from = all.find("<Cell"), to = all.find("</Row>");
    return from < to && to != std::string::npos ? all.substr(from, to - from) : all;
}

TEST(ExcelSave, CellsInTheirForms) {
    struct {
        void (*fill)(SCell&);
        const char* xml;
    } cases[] = {
        {[](SCell& c) { c.resetNumber(3.14159, 2); }, "<Cell>\n<Data ss:Type=\"Number\">3.14</Data>\n</Cell>\n"},
        {[](SCell& c) { c.resetNumber(3.14159, -1); }, "<Cell>\n<Data ss:Type=\"Number\">3.14159</Data>\n</Cell>\n"},
        {[](SCell& c) { c.resetNumber(-2.5e-7, -1, 0); },
         "<Cell ss:StyleID=\"0\">\n<Data ss:Type=\"Number\">-2.5e-07</Data>\n</Cell>\n"},
        {[](SCell& c) { c.resetNumber(NAN, 3); }, "<Cell>\n<Data ss:Type=\"Error\">#NUM!</Data>\n</Cell>\n"},
        {[](SCell& c) { c.resetNumberNotZero(0.0, 2); }, "<Cell/>\n"},
        {[](SCell& c) { c.resetString("a\x01" "b", -1, -1, 0); }, "<Cell>\n<Data ss:Type=\"String\">ab</Data>\n</Cell>\n"},
        {[](SCell& c) { c.resetFormula("=IF(RC[1]<>\"\",1,0)"); },
         "<Cell ss:Formula=\"=IF(RC[1]&lt;&gt;&quot;&quot;,1,0)\"/>\n"},
    };
    for (const auto& k : cases)
        EXPECT_EQ(savedCell(k.fill), k.xml);
}

#if !VQK_TARGET_WINDOWS
// libxml2's two verdicts: well-formed XML, and well-formed with namespaces.
std::pair<bool, bool> libxml2Verdict(const std::string& path) {
    xmlParserCtxtPtr ctxt = xmlNewParserCtxt();
    xmlDocPtr d = xmlCtxtReadFile(ctxt, path.c_str(), nullptr, XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    std::pair<bool, bool> verdict(d && ctxt->wellFormed, d && ctxt->nsWellFormed);
    xmlFreeDoc(d);
    xmlFreeParserCtxt(ctxt);
    return verdict;
}
#endif

TEST(ExcelSave, WellFormedWithTheDoubledColonAndNamespaceCorrectWithout) {
    std::string dir = tempDir("excel");
    SDoc doc((dir + "/plain.xml").c_str(), 0);
    buildEveryFeature(doc);
    ASSERT_TRUE(doc.save(nullptr));
    doc.setOptions(SDoc::eNamespaceCorrect);
    ASSERT_TRUE(doc.save((dir + "/ns.xml").c_str()));
    // "x::Left" is an XML name but no qualified name. Only libxml2 tells the two kinds of
    // well-formedness apart; the Windows referee (MSXML, as Wine has it) is asked only
    // about the namespace-correct form.
#if VQK_TARGET_WINDOWS
    EXPECT_TRUE(parseXml(readFile(dir + "/ns.xml")));
#else
    EXPECT_EQ(libxml2Verdict(dir + "/plain.xml"), std::make_pair(true, false));
    EXPECT_EQ(libxml2Verdict(dir + "/ns.xml"), std::make_pair(true, true));
#endif
    std::string ns = readFile(dir + "/ns.xml");
    EXPECT_EQ(ns.find("x::Left"), std::string::npos);
    EXPECT_NE(ns.find(" x:Left=\"0.10\" "), std::string::npos);
}

TEST(ExcelSave, AFileThatCannotBeCreatedIsReportedAndTheDocumentKept) {
    std::string dir = tempDir("excel");
    vq::CAssert::setLogName((dir + "/asserts.log").c_str());
    vq::CAssert::setMode(vq::eAssertLog);
    SDoc doc((dir + "/missing/folder/a.xml").c_str(), 0);
    doc.addCell().resetString("kept");
    EXPECT_FALSE(doc.save(nullptr));
    EXPECT_FALSE(doc.save(""));
    vq::CAssert::setMode(vq::eAssertOff);
    std::string log = readFile(dir + "/asserts.log");
    EXPECT_NE(log.find("msg=\"Can't open file\""), std::string::npos) << log;
    EXPECT_FALSE(std::filesystem::exists(dir + "/missing"));
    EXPECT_TRUE(doc.save((dir + "/a.xml").c_str()));
    EXPECT_NE(readFile(dir + "/a.xml").find(">kept</Data>"), std::string::npos);
}

} // namespace
