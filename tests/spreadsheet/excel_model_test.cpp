// The workbook in memory: style sharing, merged styles, borders drawn over ranges,
// links between cells, row breaks, and indexes a sheet cannot hold.
#include "vqk/spreadsheet/excel_doc.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

namespace {

using namespace vq_excel;
using vq::T2;

TEST(ExcelStyles, EqualStylesShareOneEntryAndMergesCombine) {
    SDoc doc;
    int a = doc.addStyle("FF0000", "0.00", SBorder(SBorder::eTop, 1), SStyle::eHaLeft, SStyle::eVaNone);
    int b = doc.addStyle("", "", SBorder(SBorder::eBottom, 2), SStyle::eHaNone, SStyle::eVaTop);
    EXPECT_EQ(doc.addStyle("FF0000", "0.00", SBorder(SBorder::eTop, 1), SStyle::eHaLeft, SStyle::eVaNone), a);
    EXPECT_NE(doc.addStyle("FF0000", "0.00", SBorder(SBorder::eTop, 2), SStyle::eHaLeft, SStyle::eVaNone), a);
    // A side that is off does not compare its weight.
    SBorder off(SBorder::eLeft, 3);
    off.set(SBorder::eLeft, 0, false);
    EXPECT_EQ(off, SBorder());

    SCell& c = doc.addCell();
    c.resetString("x", a);
    doc.mergeCellStyle(c, b);
    const SStyle& m = doc.style(c.style());
    EXPECT_STREQ(m.color.str(), "FF0000");
    EXPECT_EQ(m.ha, SStyle::eHaLeft);
    EXPECT_EQ(m.va, SStyle::eVaTop);
    EXPECT_EQ(m.border.sides, SBorder::eTop | SBorder::eBottom);
    EXPECT_EQ(m.border.sideWeight(SBorder::eBottom), 2);
    EXPECT_TRUE(doc.isStyleUsed(c.style()));
    EXPECT_FALSE(doc.isStyleUsed(a));
}

TEST(ExcelSheet, BorderDrawsTheBoxAndLeavesTheInside) {
    SDoc doc;
    SWorksheet& s = doc.addSheet("S");
    s.border(T2<int>(3, 2), T2<int>(1, 0), 2); // corners in either order
    auto sides = [&](int r, int c) { return s[r][c].style() < 0 ? 0 : doc.style(s[r][c].style()).border.sides; };
    EXPECT_EQ(sides(1, 0), SBorder::eTop | SBorder::eLeft);
    EXPECT_EQ(sides(1, 1), SBorder::eTop);
    EXPECT_EQ(sides(2, 1), 0);
    EXPECT_EQ(sides(2, 2), SBorder::eRight);
    EXPECT_EQ(sides(3, 2), SBorder::eBottom | SBorder::eRight);
    EXPECT_EQ(sides(0, 0), 0);
    s.lineH(2, 0, 1, 1);
    EXPECT_EQ(sides(2, 0), SBorder::eLeft | SBorder::eTop);
}

TEST(ExcelCell, LinksAreRelativeOnOneSheetAndQuotedAcross) {
    SDoc doc;
    SWorksheet& s = doc.addSheet("It's");
    SWorksheet& t = doc.addSheet("T");
    struct {
        T2<int> from, to;
        const char* link;
    } cases[] = {
        {{2, 2}, {0, 3}, "=R[-2]C[1]"},
        {{2, 2}, {2, 0}, "=RC[-2]"},
        {{0, 1}, {4, 1}, "=R[4]C"},
    };
    for (const auto& k : cases)
        EXPECT_STREQ(SCell::genLink(s.cell(k.from), s.cell(k.to)).str(), k.link);
    t[0][0].resetLink(s[1][2]);
    EXPECT_STREQ(t[0][0].text(), "='It''s'!R2C3");
    EXPECT_EQ(t[0][0].kind(), SCell::eLink);
}

TEST(ExcelCell, SettersKeepContentAndTextOwnership) {
    SDoc doc;
    SRow& r = doc.addRow();
    SCell& c = r.addCells(3, "ab", 0);
    EXPECT_STREQ(r[2].text(), "ab");
    c.addString(c.text()); // its own text as the argument
    EXPECT_STREQ(c.text(), "abab");
    c.resetNumberNotZero(0.0, 2, 1);
    EXPECT_EQ(c.kind(), SCell::eEmpty);
    EXPECT_EQ(c.style(), 1);
    c.resetNumber(1.5, 99);
    EXPECT_EQ(c.decimals(), 30);
    SCell copy = r[1];
    r[1].resetString("changed");
    EXPECT_STREQ(copy.text(), "ab");
    EXPECT_EQ(c.next(), &r[1]);
    EXPECT_EQ(r[2].next(), nullptr);
    EXPECT_EQ(r.mergeCells(1, 4).mergeAcross(), 3);
    EXPECT_EQ(r.nCell(), 5);
}

TEST(ExcelSheet, RowBreaksFillPagesAndLeaveRoomForTitles) {
    SDoc doc;
    SWorksheet& s = doc.addSheet("S");
    s.addRows(8);
    s.insertRowBreaks(50.0, false); // three rows of 15 points a page
    EXPECT_EQ(s.rowBreaks(), (std::vector<int>{3, 6}));
    s.setPrintTitles(T2<int>(0, 0));
    s.insertRowBreaks(50.0, true); // later pages hold the title and two rows
    EXPECT_EQ(s.rowBreaks(), (std::vector<int>{3, 5, 7}));
    s.row(0).setHeight(60.0);
    s.insertRowBreaks(50.0, true); // titles taller than a page: no breaks
    EXPECT_TRUE(s.rowBreaks().empty());
}

TEST(ExcelSheet, IndexesASheetCannotHoldThrowAndChangeNothing) {
    SDoc doc;
    SWorksheet& s = doc.addSheet("S");
    SRow& r = s.addRow();
    EXPECT_THROW(s[-1], std::out_of_range);
    EXPECT_THROW(s[SWorksheet::kMaxRows], std::out_of_range);
    EXPECT_THROW(r[-1], std::out_of_range);
    EXPECT_THROW(r[SRow::kMaxColumns], std::out_of_range);
    EXPECT_THROW(r.addCells(1 << 30), std::out_of_range);
    EXPECT_THROW(r.mergeCells(-2, 4), std::out_of_range);
    EXPECT_THROW(s.colWidth(-1), std::out_of_range);
    EXPECT_THROW(s.addRows(1 << 30), std::out_of_range);
    EXPECT_THROW(r.addCells(0), std::out_of_range); // no cell to return
    EXPECT_EQ(s.nRow(), 1);
    EXPECT_EQ(r.nCell(), 0);
}

} // namespace
