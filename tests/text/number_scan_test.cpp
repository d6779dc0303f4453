#include "vqk/text/format.h"
#include "vqk/text/number_text.h"
#include "vqk/text/scan.h"
#include "expect_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

TEST(NumberText, SprintDecStripsTrailingZerosAndPoint) {
    struct Case { double v; int decimals; const char* out; };
    const Case cases[] = {{2.5, 3, "2.5"}, {2.0, 3, "2"}, {-0.125, 2, "-0.12"}, {10.0, 1, "10"},
                          {0.0, 4, "0"},   {100.0, 0, "1"}}; // kept: with no decimals the integer's zeros go too
    for (const Case& c : cases) {
        SCOPED_TRACE(c.out);
        char buf[64];
        EXPECT_TRUE(vq::sprintDec(buf, sizeof buf, c.v, c.decimals));
        EXPECT_STREQ(buf, c.out);
    }
    char tiny[3];
    EXPECT_FALSE(vq::sprintDec(tiny, sizeof tiny, 123.25, 2));
    EXPECT_STREQ(tiny, "#I"); // cut to the room it has
    char room[8];
    EXPECT_FALSE(vq::sprintDec(room, sizeof room, 1e10, 2));
    EXPECT_STREQ(room, "#INF");
    EXPECT_FALSE(vq::sprintDec(nullptr, 8, 1.0, 2));
}

TEST(NumberText, WriteDoubleChoosesIntegerOrRealText) {
    const char* fixed = "999999999999999999999999."; // beyond 1e30, without a sign on purpose
    struct Case { double v; const char* realFmt; const char* intFmt; const char* out; };
    const Case cases[] = {
        {3.0, "%.6f", "%i", "3"},
        {-42.0, "%.6f", "%i", "-42"},
        {3.0, "%.6f", "%05i", "00003"},
        {2147483647.0, "%.6f", "%i", "2147483647"},
        {-2147483647.0, "%.6f", "%i", "-2147483647"}, // the int range is inclusive
        {2147483648.0, "%.6f", "%i", "2147483648."},
        {-2147483648.0, "%.6f", "%i", "-2147483648."},
        {3e20, "%.6f", "%i", "300000000000000000000."},
        {-3e20, "%.6f", "%i", "-300000000000000000000."},
        {1e30, "%.6f", "%i", "1000000000000000019884624838656."},
        {-1e30, "%.6f", "%i", "-1000000000000000019884624838656."},
        {std::nextafter(1e30, 2e30), "%.6f", "%i", fixed},
        {-1e31, "%.6f", "%i", fixed},
        {std::numeric_limits<double>::infinity(), "%.6f", "%i", fixed},
        {1.0 + DBL_EPSILON, "%.17g", "%i", "1"}, // a fraction of exactly epsilon is integral
        {1.25, "%.6f", "%i", "1.25"},
        {1.5, "%.3E", "%i", "1.5E+00"},
        {1.5e10 + 0.5, "%.4E", "%i", "1.5E+10"},
        {0.5, "%.1f", "%i", "0.5"},
        {-0.25, "%.6f", "%i", "-0.25"},
        {10.5, "%.6f", "%i", "10.5"},             // zeros before the point stay
        {1e-5, "%.6e", "%i", "1.000000e-05"},     // only an upper-case E ends the mantissa
        {1e-5, "%.6E", "%i", "1.E-05"}};          // the point stays
    for (const Case& c : cases) {
        SCOPED_TRACE(c.out);
        char buf[64];
        EXPECT_EQ(vq::writeDoubleToString(buf, sizeof buf, c.v, c.realFmt, c.intFmt), int(std::strlen(c.out)));
        EXPECT_STREQ(buf, c.out);
    }
    char buf[64];
    vq::writeDoubleToString(buf, sizeof buf, 1.0 + 2 * DBL_EPSILON, "%.17g", "%i");
    EXPECT_STRNE(buf, "1");
    char small[4]; // a text that does not fit leaves the buffer empty
    EXPECT_GIVES(vq::writeDoubleToString(small, sizeof small, 1.0 / 3, "%.6f", "%i"), 0, small, "");
}

TEST(NumberText, IsStringNumberAcceptsDigitsAndOptionalSeparators) {
    struct Case { const char* text; bool separators; bool number; };
    const Case cases[] = {{"0123", false, true}, {"", false, false},   {nullptr, true, false},
                          {"1.5", false, false}, {"1.5", true, true},  {"1,5", true, true},
                          {"-1", true, false},   {"1e5", true, false}, {"1 ", true, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text ? c.text : "(none)");
        EXPECT_EQ(vq::isStringNumber(c.text ? vq::CStr(c.text) : vq::CStr(), c.separators), c.number);
    }
}

TEST(Scan, NextFmtSplitsAtPercentSigns) {
    const char* p = "x=%i, y=%*.*f%s";
    bool isText = true, hasStar = true;
    struct Piece { std::string text; bool isText, hasStar; };
    std::vector<Piece> pieces;
    while (const char* piece = vq::nextFmt(p, isText, hasStar))
        pieces.push_back({piece, isText, hasStar});
    ASSERT_EQ(pieces.size(), 4u);
    const Piece expect[] = {{"x=", false, false}, {"%i, y=", false, false}, {"%*.*f", false, true}, {"%s", true, false}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pieces[i].text, expect[i].text);
        EXPECT_EQ(pieces[i].hasStar, expect[i].hasStar) << i;
        if (i != 2) {
            EXPECT_EQ(pieces[i].isText, expect[i].isText) << i;
        }
    }
    EXPECT_EQ(*p, '\0');
    const char* nul = nullptr;
    EXPECT_EQ(vq::nextFmt(nul, isText, hasStar), nullptr);
    const char* lit = "%d items"; // literal letters count as text too
    vq::nextFmt(lit, isText, hasStar);
    EXPECT_TRUE(isText);
    const char* pct = "%%d"; // a piece that starts with '%' keeps a following "%%" apart
    EXPECT_STREQ(vq::nextFmt(pct, isText, hasStar), "%");
    EXPECT_STREQ(vq::nextFmt(pct, isText, hasStar), "%d");
}

TEST(Scan, IdentifiersAndDoubles) {
    EXPECT_EQ(vq::strToID1("18446744073709551615"), 18446744073709551615ull);
    EXPECT_EQ(vq::strToID1("  42 tail"), 42ull);
    EXPECT_EQ(vq::strToID1("abc"), 0ull);
    EXPECT_EQ(vq::strToID1(""), 0ull);
    EXPECT_EQ(vq::strToID1(nullptr), 0ull);
    char buf[32]; // the identifier's text form reads back what it prints
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
    EXPECT_GIVES(vq::sScanf("name=abcde; 2.5 z", "name=%[^;]; %lf %c", word, 6u, &d, &c, 1u), 3, word, "abcde");
    EXPECT_EQ(d, 2.5);
    EXPECT_EQ(c, 'z');
    char small[4] = "xx"; // a field one character too long empties the buffer and ends the scan
    a = -1;
    EXPECT_GIVES(vq::sScanf("abcd 5", "%s %i", small, 4u, &a), 0, small, "");
    EXPECT_EQ(a, -1);
    EXPECT_GIVES(vq::sScanf("abcdef", "%2s%s", small, 4u, word, 6u), 2, small, "ab"); // a width below the room
    EXPECT_STREQ(word, "cdef");
    int used = 0; // suppressed fields, %n and %% take no room argument
    EXPECT_EQ(vq::sScanf("skip 100% 7", "%*s %i%% %n%i", &a, &used, &b), 2);
    EXPECT_EQ(a, 100);
    EXPECT_EQ(used, 10);
    EXPECT_EQ(b, 7);
    long long big = 0; // the size prefixes of the other platform's run-time library
    EXPECT_EQ(vq::sScanf("7 9000000000", "%I32d %I64d", &a, &big), 2);
    EXPECT_EQ(a, 7);
    EXPECT_EQ(big, 9000000000LL);
    for (const char* empty : {"", "   ", static_cast<const char*>(nullptr)})
        EXPECT_EQ(vq::sScanf(empty, "%i", &a), -1);
    EXPECT_EQ(vq::sScanf("x", "%i", &a), 0);
    EXPECT_EQ(vq::sScanf("1", nullptr), -1);
    char none[1];
    EXPECT_EQ(vq::sScanf("a", "%s", none, 0u), 0); // no room at all: nothing written
}
