#include "vqk/text/clean.h"
#include "vqk/text/date_text.h"
#include "vqk/text/substring.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <string>

using vq::CStr;
using vq::CWStr;

TEST(Substring, IsSpaceIsExactlyFourCharacters) {
    int count = 0;
    for (int c = 0; c < 256; ++c)
        count += vq::isSpace(char(c)) ? 1 : 0;
    EXPECT_EQ(count, 4);
    EXPECT_TRUE(vq::isSpace('\t') && vq::isSpace('\n') && vq::isSpace('\r') && vq::isSpace(' '));
    EXPECT_FALSE(vq::isSpace('\v'));
    EXPECT_TRUE(vq::isSpace(L' '));
    EXPECT_FALSE(vq::isSpace(wchar_t(0x3000))); // ideographic space is not one
}

TEST(Substring, NumSubStrCountsNonOverlappingMatches) {
    EXPECT_EQ(vq::numSubStr("a-b-c", "-"), 2);
    EXPECT_EQ(vq::numSubStr("aaaa", "aa"), 2);
    EXPECT_EQ(vq::numSubStr("abc", "d"), 0);
    EXPECT_EQ(vq::numSubStr("", "a"), 0);
    EXPECT_EQ(vq::numSubStr("abc", ""), 0);
    EXPECT_EQ(vq::numSubStr(nullptr, "a"), 0);
    EXPECT_EQ(vq::numSubStr("a", nullptr), 0);
    EXPECT_EQ(vq::numSubStr(L"x\u00e9x\u00e9", L"\u00e9"), 2);
    // The search's own order: from start 0 the match at 4 is met first, so the earlier
    // overlapping one at 1 is never counted.
    EXPECT_EQ(vq::numSubStr("aaabaab", "aab"), 1);
}

TEST(Substring, ReplaceSubStrRebuildsLeftToRight) {
    CStr s("a-b-c");
    EXPECT_EQ(vq::replaceSubStr(s, "-", "::"), 2);
    EXPECT_EQ(s, "a::b::c");
    EXPECT_EQ(vq::replaceSubStr(s, "::", nullptr), 2);
    EXPECT_EQ(s, "abc");
    s = "aaa";
    EXPECT_EQ(vq::replaceSubStr(s, "aa", "b"), 1); // no overlap: "ba"
    EXPECT_EQ(s, "ba");
    EXPECT_EQ(vq::replaceSubStr(s, "", "x"), 0);
    EXPECT_EQ(vq::replaceSubStr(s, nullptr, "x"), 0);
    EXPECT_EQ(vq::replaceSubStr(s, "zzz", "x"), 0);
    EXPECT_EQ(s, "ba");
    CStr e;
    EXPECT_EQ(vq::replaceSubStr(e, "a", "b"), 0);
    // Replacing with a text that holds the pattern does not loop.
    s = "x";
    EXPECT_EQ(vq::replaceSubStr(s, "x", "xx"), 1);
    EXPECT_EQ(s, "xx");
    // The replacement may come from the string itself.
    s = "ab";
    EXPECT_EQ(vq::replaceSubStr(s, "a", s.str()), 1);
    EXPECT_EQ(s, "abb");
    CWStr w(L"1\u00e92\u00e9");
    EXPECT_EQ(vq::replaceSubStr(w, L"\u00e9", L"e"), 2);
    EXPECT_EQ(w, L"1e2e");
}

TEST(Substring, SplitStrByTokenSplitsAtTheWholeToken) {
    vq::TVectorC<CStr> parts;
    vq::splitStrByToken(parts, "a;;b", ";", false);
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0], "a");
    EXPECT_EQ(parts[1], "");
    EXPECT_EQ(parts[2], "b");
    vq::splitStrByToken(parts, "a;;b;", ";", true);
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[1], "b");
    vq::splitStrByToken(parts, "a;b;", ";", false);
    ASSERT_EQ(parts.size(), 3u); // the trailing empty piece
    EXPECT_EQ(parts[2], "");
    // Splitting one of the pieces, or at one of them, into the same array.
    vq::splitStrByToken(parts, "x,y;z;,", ";", false);
    vq::splitStrByToken(parts, parts[0].str(), parts[2].str(), false);
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0], "x");
    EXPECT_EQ(parts[1], "y");
    vq::splitStrByToken(parts, "one<>two<three", "<>", false);
    ASSERT_EQ(parts.size(), 2u); // a token string, not a set of characters
    EXPECT_EQ(parts[1], "two<three");
    vq::splitStrByToken(parts, "whole", "", false);
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0], "whole");
    vq::splitStrByToken(parts, "", ";", false);
    EXPECT_EQ(parts.size(), 0u);
    vq::splitStrByToken(parts, nullptr, ";", false);
    EXPECT_EQ(parts.size(), 0u);
    vq::TVectorC<CWStr> wparts;
    vq::splitStrByToken(wparts, L"x, y, z", L", ", true);
    ASSERT_EQ(wparts.size(), 3u);
    EXPECT_EQ(wparts[2], L"z");
}

TEST(Substring, WrapQuoteEscapesNothing) {
    EXPECT_EQ(vq::wrapQuote(L"x \"y\""), L"\"x \"y\"\"");
    EXPECT_EQ(vq::wrapQuote(L""), L"\"\"");
    EXPECT_EQ(vq::wrapQuote(nullptr), L"\"\"");
}

TEST(Cleaners, LabelsFileNamesAndAscii) {
    char label[] = "a.b<c>\"d&e'f/g@h\\i\x01j\xC3\xA9";
    vq::correctLabel(label, false);
    EXPECT_STREQ(label, "a.b_c__d_e_f_g_h_i_j\xC3\xA9");
    char dotted[] = "a.b";
    vq::correctLabel(dotted, true);
    EXPECT_STREQ(dotted, "a_b");
    wchar_t wide[] = L"x/y.z\u00e9";
    vq::correctLabel(wide, true);
    EXPECT_STREQ(wide, L"x_y_z\u00e9");
    vq::correctLabel(static_cast<char*>(nullptr), true);

    CStr s;
    s.reset("a<b\0c>", uint64_t(6)); // the size is cut to the text before cleaning
    vq::correctLabel(s, false);
    EXPECT_EQ(s, "a_b");
    EXPECT_EQ(s.array().size(), 4u);
    CStr empty;
    vq::correctLabel(empty, true);
    EXPECT_TRUE(empty.empty());
    CWStr ws(L"p@q");
    vq::correctLabel(ws, false);
    EXPECT_EQ(ws, L"p_q");

    char path[] = "dir/sub\\na?me*:\"x\"<|>'\t\xC3\xA9.txt";
    vq::correctFileName(path);
    EXPECT_STREQ(path, "dir/sub\\na_me___x______\xC3\xA9.txt");
    vq::correctFileName(nullptr);

    char ascii[] = "caf\xC3\xA9!";
    vq::correctToASCII(ascii);
    EXPECT_STREQ(ascii, "caf__!");
    vq::correctToASCII(nullptr);
}

TEST(DateText, StampsOfTheCurrentLocalTime) {
    std::time_t before = std::time(nullptr);
    std::tm t{};
    localtime_r(&before, &t);
    char expect[32];
    std::strftime(expect, sizeof expect, "%d.%m.%Y", &t);

    CStr day("stale");
    ASSERT_TRUE(vq::getDateStr(day, false));
    if (day != expect) { // midnight passed between the two readings
        ASSERT_TRUE(vq::getDateStr(day, false));
    }
    ASSERT_EQ(day.length(), 10);
    EXPECT_EQ(day[2], '.');
    EXPECT_EQ(std::string(day.str()).substr(6), std::string(expect).substr(6));
    ASSERT_TRUE(vq::getDateStr(day, true));
    EXPECT_EQ(std::string(day.str()).substr(0, 2), std::string(expect).substr(3, 2)); // month

    char qif[32];
    ASSERT_TRUE(vq::getDateTimeQIF(qif, sizeof qif));
    EXPECT_EQ(std::strlen(qif), 19u);
    EXPECT_EQ(qif[4], '-');
    EXPECT_EQ(qif[10], 'T');
    EXPECT_EQ(qif[13], ':');
    char tiny[8] = "xxxxxxx";
    EXPECT_FALSE(vq::getDateTimeQIF(tiny, sizeof tiny));
    EXPECT_STREQ(tiny, "");
    EXPECT_FALSE(vq::getDateTimeQIF(nullptr, 32));

    char asc[32];
    ASSERT_TRUE(vq::_localtime(asc, sizeof asc));
    EXPECT_EQ(std::strlen(asc), 25u);
    EXPECT_EQ(asc[24], '\n');
    EXPECT_EQ(asc[3], ' ');
    EXPECT_EQ(asc[13], ':');
    char shortBuf[25] = "x";
    EXPECT_FALSE(vq::_localtime(shortBuf, sizeof shortBuf));
    EXPECT_STREQ(shortBuf, "");
}
