// Saved workbooks opened by a real spreadsheet program: LibreOffice Calc, headless,
// exports every sheet to CSV with the values as displayed. Its default import of this
// format stops at the "x::Left" margin name (leaving an empty sheet), so the document
// as written by default is opened through the "MS Excel 2003 XML" filter, and the
// namespace-correct option through the default import. Skipped when soffice is
// missing, unless VQK_REQUIRE_SOFFICE is set (CI sets it).
#include "vqk/spreadsheet/excel_doc.h"

#include "../xml/xml_test_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

using namespace vq_excel;
using xml_test::readFile;
using xml_test::tempDir;

void buildReport(SDoc& doc, bool crossSheetLink) {
    int head = doc.addStyle("C0C0C0", "", SBorder(SBorder::eAll, 1), SStyle::eHaCenter, SStyle::eVaNone);
    int fixed = doc.addStyle("", "0.000", SBorder(), SStyle::eHaRight, SStyle::eVaNone);
    int mono = doc.addFont("Courier", 10, false, false);
    SWorksheet& s = doc.addSheet("Parts");
    SRow& h = s.addRow();
    h.addCell().resetString("Part", head);
    h.addCell().resetString("Size <mm> & \"tol\"", head);
    h.addCell().resetString("it's", head, mono);
    for (int i = 0; i < 3; ++i) {
        SRow& r = s.addRow();
        r.addCell().resetString(i == 1 ? "plate" : "bracket");
        r.addCell().resetNumber(12.0049 + i, -1, fixed);
        r.addCell().resetNumber(0.5 * i, -1);
        r.addCell().resetFormula("=RC[-2]*2", fixed);
        r.addCell().resetLink(h[0]);
    }
    SRow& m = s.addRow();
    m.addCell().resetString("merged", head, -1, 2);
    m.addCells(2);
    m.addCell().resetNumber(7, 1);
    SWorksheet& t = doc.addSheet("Summary");
    t.addRow().addCell().resetString("total");
    t.back().addCell().resetNumber(1234.5678, 2);
    if (crossSheetLink)
        t.back().addCell().resetLink(s[2][1]);
}

const char kParts[] = "Part,\"Size <mm> & \"\"tol\"\"\",it's,,\n"
                      "bracket,12.005,0,24.010,Part\n"
                      "plate,13.005,0.5,26.010,Part\n"
                      "bracket,14.005,1,28.010,Part\n"
                      "merged,,,7,\n";

// Converts `file` to one CSV file per sheet in `dir`, with a user profile of its own
// under the build folder and a time limit; true when soffice ended well.
bool convertToCsv(const std::string& dir, const std::string& file, const char* infilter) {
    std::filesystem::path profile = std::filesystem::path(VQK_BINARY_DIR) / "soffice_profile" /
                                    ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::string cmd = "timeout -k 10 240 soffice -env:UserInstallation=file://" + profile.string() + " --headless";
    if (infilter)
        cmd += std::string(" --infilter=\"") + infilter + "\"";
    cmd += " --convert-to 'csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false,-1'"
           " --outdir '" + dir + "' '" + file + "' > '" + dir + "/soffice.log' 2>&1";
    return std::system(cmd.c_str()) == 0;
}

void openInCalc(int options, const char* infilter, bool crossSheetLink, const char* summary) {
    if (std::system("command -v soffice > /dev/null 2>&1") != 0) {
        if (std::getenv("VQK_REQUIRE_SOFFICE"))
            FAIL() << "soffice is required here but was not found";
        GTEST_SKIP() << "soffice (LibreOffice Calc) is not installed";
    }
    std::string dir = tempDir("calc");
    SDoc doc((dir + "/report.xml").c_str(), options);
    buildReport(doc, crossSheetLink);
    ASSERT_TRUE(doc.save(nullptr));
    ASSERT_TRUE(convertToCsv(dir, dir + "/report.xml", infilter)) << readFile(dir + "/soffice.log");
    EXPECT_EQ(readFile(dir + "/report-Parts.csv"), kParts) << readFile(dir + "/soffice.log");
    EXPECT_EQ(readFile(dir + "/report-Summary.csv"), summary);
}

TEST(ExcelInCalc, TheDocumentAsWrittenOpensThroughTheFormatsFilter) {
    // The filter shows a link to another sheet as an error; the default import reads it.
    openInCalc(0, "MS Excel 2003 XML", false, "total,1234.57\n");
}

TEST(ExcelInCalc, TheNamespaceCorrectDocumentOpensThroughTheDefaultImport) {
    openInCalc(SDoc::eNamespaceCorrect, nullptr, true, "total,1234.57,13.0049\n");
}

} // namespace
