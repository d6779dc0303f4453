#include "vqk/text/format.h"
#include "vqk/text/number_text.h"
#include "vqk/text/scan.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

std::string dec(double v, int decimals, bool* ok = nullptr) {
    char buf[64];
    bool r = vq::sprintDec(buf, sizeof buf, v, decimals);
    if (ok)
        *ok = r;
    return buf;
}

std::string dbl(double v, const char* realFmt = "%.6f", const char* intFmt = "%i",
                int* len = nullptr) {
    char buf[64];
    int n = vq::writeDoubleToString(buf, sizeof buf, v, realFmt, intFmt);
    if (len)
        *len = n;
    return buf;
}

} // namespace

TEST(NumberText, SprintDecStripsTrailingZerosAndPoint) {
    EXPECT_EQ(dec(2.5, 3), "2.5");
    EXPECT_EQ(dec(2.0, 3), "2");
    EXPECT_EQ(dec(-0.125, 2), "-0.12"); // rounding is printf's
    EXPECT_EQ(dec(10.0, 1), "10");
    EXPECT_EQ(dec(0.0, 4), "0");
    // Kept as it stands: with no decimals the integer's own zeros go too.
    EXPECT_EQ(dec(100.0, 0), "1");
    bool ok = true;
    char tiny[3];
    EXPECT_FALSE(vq::sprintDec(tiny, sizeof tiny, 123.25, 2));
    EXPECT_STREQ(tiny, "#I"); // cut to the room it has
    char room[8];
    EXPECT_FALSE(vq::sprintDec(room, sizeof room, 1e10, 2));
    EXPECT_STREQ(room, "#INF");
    dec(1.5, 1, &ok);
    EXPECT_TRUE(ok);
}

TEST(NumberText, WriteDoubleChoosesIntegerOrRealText) {
    int len = 0;
    EXPECT_EQ(dbl(3.0, "%.6f", "%i", &len), "3");
    EXPECT_EQ(len, 1);
    EXPECT_EQ(dbl(-42.0), "-42");
    EXPECT_EQ(dbl(3.0, "%.6f", "%05i"), "00003");
    EXPECT_EQ(dbl(2147483647.0), "2147483647");
    EXPECT_EQ(dbl(3e20, "%.6f", "%i", &len), "300000000000000000000.");
    EXPECT_EQ(len, 22);
    EXPECT_EQ(dbl(-3e20), "-300000000000000000000.");
    EXPECT_EQ(dbl(-1e31), "999999999999999999999999."); // no sign on purpose
    EXPECT_EQ(dbl(std::numeric_limits<double>::infinity()), "999999999999999999999999.");
    EXPECT_EQ(dbl(1.25, "%.6f", "%i", &len), "1.25");
    EXPECT_EQ(len, 4);
    EXPECT_EQ(dbl(1.5, "%.3E"), "1.5E+00");
    EXPECT_EQ(dbl(1.5e10 + 0.5, "%.4E"), "1.5E+10");
    EXPECT_EQ(dbl(0.5, "%.1f"), "0.5");
    EXPECT_EQ(dbl(-0.25, "%.6f"), "-0.25");
    EXPECT_EQ(dbl(10.5, "%.6f"), "10.5"); // zeros before the point stay
    // A text that does not fit leaves the buffer empty.
    char small[4];
    EXPECT_EQ(vq::writeDoubleToString(small, sizeof small, 1.0 / 3, "%.6f", "%i"), 0);
    EXPECT_STREQ(small, "");
}

TEST(NumberText, WriteDoubleBoundariesAreInclusive) {
    // A fraction of exactly the double epsilon still counts as integral; twice it not.
    EXPECT_EQ(dbl(1.0 + DBL_EPSILON, "%.17g"), "1");
    EXPECT_NE(dbl(1.0 + 2 * DBL_EPSILON, "%.17g"), "1");
    // The int range ends at 2147483647 in magnitude, for both signs.
    EXPECT_EQ(dbl(-2147483647.0), "-2147483647");
    EXPECT_EQ(dbl(2147483648.0), "2147483648.");
    EXPECT_EQ(dbl(-2147483648.0), "-2147483648.");
    // 1e30 itself is still printed; the next double is the fixed text.
    EXPECT_EQ(dbl(1e30), "1000000000000000019884624838656.");
    EXPECT_EQ(dbl(std::nextafter(1e30, 2e30)), "999999999999999999999999.");
    EXPECT_EQ(dbl(-1e30), "-1000000000000000019884624838656.");
    // Only an upper-case E ends the mantissa: a lower-case exponent is left whole.
    EXPECT_EQ(dbl(1e-5, "%.6e"), "1.000000e-05");
    EXPECT_EQ(dbl(1e-5, "%.6E"), "1.E-05"); // the point stays
}

TEST(NumberText, IsStringNumberAcceptsDigitsAndOptionalSeparators) {
    EXPECT_TRUE(vq::isStringNumber(vq::CStr("0123"), false));
    EXPECT_FALSE(vq::isStringNumber(vq::CStr(""), false));
    EXPECT_FALSE(vq::isStringNumber(vq::CStr(), true));
    EXPECT_FALSE(vq::isStringNumber(vq::CStr("1.5"), false));
    EXPECT_TRUE(vq::isStringNumber(vq::CStr("1.5"), true));
    EXPECT_TRUE(vq::isStringNumber(vq::CStr("1,5"), true));
    EXPECT_FALSE(vq::isStringNumber(vq::CStr("-1"), true));
    EXPECT_FALSE(vq::isStringNumber(vq::CStr("1e5"), true));
    EXPECT_FALSE(vq::isStringNumber(vq::CStr("1 "), true));
}

TEST(Scan, NextFmtSplitsAtPercentSigns) {
    const char* p = "x=%i, y=%*.*f%s";
    bool isText = true, hasStar = true;
    std::vector<std::string> pieces;
    std::vector<bool> texts, stars;
    while (const char* piece = vq::nextFmt(p, isText, hasStar)) {
        pieces.push_back(piece);
        texts.push_back(isText);
        stars.push_back(hasStar);
    }
    ASSERT_EQ(pieces.size(), 4u);
    EXPECT_EQ(pieces[0], "x=");
    EXPECT_EQ(pieces[1], "%i, y=");
    EXPECT_EQ(pieces[2], "%*.*f");
    EXPECT_EQ(pieces[3], "%s");
    EXPECT_FALSE(texts[0]);
    EXPECT_FALSE(texts[1]);
    EXPECT_TRUE(stars[2]);
    EXPECT_FALSE(stars[3]);
    EXPECT_TRUE(texts[3]);
    EXPECT_EQ(*p, '\0');
    const char* nul = nullptr;
    EXPECT_EQ(vq::nextFmt(nul, isText, hasStar), nullptr);
    // Literal letters count as text too: the flag looks at every character.
    const char* lit = "%d items";
    vq::nextFmt(lit, isText, hasStar);
    EXPECT_TRUE(isText);
    // A piece that starts with '%' keeps a following "%%" apart.
    const char* pct = "%%d";
    EXPECT_STREQ(vq::nextFmt(pct, isText, hasStar), "%");
    EXPECT_STREQ(vq::nextFmt(pct, isText, hasStar), "%d");
}

TEST(Scan, IdentifiersAndDoubles) {
    EXPECT_EQ(vq::strToID1("18446744073709551615"), 18446744073709551615ull);
    EXPECT_EQ(vq::strToID1("  42 tail"), 42ull);
    EXPECT_EQ(vq::strToID1("abc"), 0ull);
    EXPECT_EQ(vq::strToID1(""), 0ull);
    EXPECT_EQ(vq::strToID1(nullptr), 0ull);
    // The identifier's text form reads back what it prints.
    char buf[32];
    std::snprintf(buf, sizeof buf, vq::formatPrintfID1(), 9007199254740993ull);
    EXPECT_EQ(vq::strToID1(buf), 9007199254740993ull);
    EXPECT_DOUBLE_EQ(vq::strToD1(L"2.5"), 2.5);
    EXPECT_DOUBLE_EQ(vq::strToD1(L" -1e-3"), -1e-3);
    EXPECT_EQ(vq::strToD1(L"x"), 0.0);
    EXPECT_EQ(vq::strToD1(nullptr), 0.0);
}

TEST(Scan, BoundedScanTakesTheRoomOfEveryTextField) {
    int a = 0, b = 0;
    EXPECT_EQ(vq::sScanf("3 4", "%i %i", &a, &b), 2);
    EXPECT_EQ(a + b, 7);
    char word[6] = "?????";
    char c = 0;
    double d = 0;
    EXPECT_EQ(vq::sScanf("name=abcde; 2.5 z", "name=%[^;]; %lf %c", word, 6u, &d, &c, 1u), 3);
    EXPECT_STREQ(word, "abcde");
    EXPECT_EQ(d, 2.5);
    EXPECT_EQ(c, 'z');
    // A field one character too long empties the buffer and ends the scan.
    char small[4] = "xx";
    a = -1;
    EXPECT_EQ(vq::sScanf("abcd 5", "%s %i", small, 4u, &a), 0);
    EXPECT_STREQ(small, "");
    EXPECT_EQ(a, -1);
    // A width below the room reads a part of the field.
    EXPECT_EQ(vq::sScanf("abcdef", "%2s%s", small, 4u, word, 6u), 2);
    EXPECT_STREQ(small, "ab");
    EXPECT_STREQ(word, "cdef");
    // Suppressed fields, %n and %% take no room argument.
    int used = 0;
    EXPECT_EQ(vq::sScanf("skip 100% 7", "%*s %i%% %n%i", &a, &used, &b), 2);
    EXPECT_EQ(a, 100);
    EXPECT_EQ(used, 10);
    EXPECT_EQ(b, 7);
    EXPECT_EQ(vq::sScanf("", "%i", &a), -1);
    EXPECT_EQ(vq::sScanf("   ", "%i", &a), -1);
    EXPECT_EQ(vq::sScanf("x", "%i", &a), 0);
    EXPECT_EQ(vq::sScanf(nullptr, "%i", &a), -1);
    EXPECT_EQ(vq::sScanf("1", nullptr), -1);
    char none[1];
    EXPECT_EQ(vq::sScanf("a", "%s", none, 0u), 0); // no room at all: nothing written
}
