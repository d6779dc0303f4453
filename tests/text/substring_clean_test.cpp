#include "vqk/text/clean.h"
#include "vqk/text/date_text.h"
#include "vqk/text/substring.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <string>

using vq::CStr;
using vq::CWStr;

TEST(Substring, IsSpaceIsExactlyTabLineFeedReturnAndBlank) {
    for (int c = 0; c < 256; ++c)
        EXPECT_EQ(vq::isSpace(char(c)), c == '\t' || c == '\n' || c == '\r' || c == ' ') << c;
    EXPECT_TRUE(vq::isSpace(L' '));
    EXPECT_FALSE(vq::isSpace(wchar_t(0x3000))); // ideographic space is not one
}

TEST(Substring, CountAndReplaceNonOverlappingMatches) {
    struct Case { const char* text; const char* sub; int count; };
    const Case counts[] = {{"a-b-c", "-", 2}, {"aaaa", "aa", 2}, {"abc", "d", 0}, {"", "a", 0}, {"abc", "", 0},
                           {nullptr, "a", 0}, {"a", nullptr, 0},
                           {"aaabaab", "aab", 1}}; // the search meets 4 first, never the one at 1
    for (const Case& c : counts)
        EXPECT_EQ(vq::numSubStr(c.text, c.sub), c.count) << (c.text ? c.text : "null");
    EXPECT_EQ(vq::numSubStr(L"x\u00e9x\u00e9", L"\u00e9"), 2);

    struct Edit { const char* before; const char* from; const char* to; int n; const char* after; };
    const Edit edits[] = {{"a-b-c", "-", "::", 2, "a::b::c"}, {"a::b::c", "::", nullptr, 2, "abc"},
                          {"aaa", "aa", "b", 1, "ba"},        {"ba", "", "x", 0, "ba"},
                          {"ba", nullptr, "x", 0, "ba"},      {"ba", "zzz", "x", 0, "ba"},
                          {"", "a", "b", 0, ""},              {"x", "x", "xx", 1, "xx"}}; // does not loop
    for (const Edit& e : edits) {
        SCOPED_TRACE(e.before);
        CStr s(e.before);
        EXPECT_EQ(vq::replaceSubStr(s, e.from, e.to), e.n);
        EXPECT_EQ(s, e.after);
    }
    CStr s("ab");
    EXPECT_EQ(vq::replaceSubStr(s, "a", s.str()), 1); // the replacement from the string itself
    EXPECT_EQ(s, "abb");
    CWStr w(L"1\u00e92\u00e9");
    EXPECT_EQ(vq::replaceSubStr(w, L"\u00e9", L"e"), 2);
    EXPECT_EQ(w, L"1e2e");
}

TEST(Substring, SplitStrByTokenSplitsAtTheWholeToken) {
    struct Case { const char* text; const char* token; bool skipEmpty; std::vector<std::string> parts; };
    const Case cases[] = {{"a;;b", ";", false, {"a", "", "b"}},
                          {"a;;b;", ";", true, {"a", "b"}},
                          {"a;b;", ";", false, {"a", "b", ""}},
                          {"one<>two<three", "<>", false, {"one", "two<three"}}, // not a set of characters
                          {"whole", "", false, {"whole"}},
                          {"", ";", false, {}},
                          {nullptr, ";", false, {}}};
    vq::TVectorC<CStr> parts;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text ? c.text : "null");
        vq::splitStrByToken(parts, c.text, c.token, c.skipEmpty);
        ASSERT_EQ(parts.size(), c.parts.size());
        for (size_t i = 0; i < c.parts.size(); ++i)
            EXPECT_EQ(parts[i], c.parts[i].c_str());
    }
    // Splitting one of the pieces, at another of them, into the same array.
    vq::splitStrByToken(parts, "x,y;z;,", ";", false);
    vq::splitStrByToken(parts, parts[0].str(), parts[2].str(), false);
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0], "x");
    EXPECT_EQ(parts[1], "y");
    vq::TVectorC<CWStr> wparts;
    vq::splitStrByToken(wparts, L"x, y, z", L", ", true);
    ASSERT_EQ(wparts.size(), 3u);
    EXPECT_EQ(wparts[2], L"z");

    EXPECT_EQ(vq::wrapQuote(L"x \"y\""), L"\"x \"y\"\""); // escapes nothing
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
    std::time_t now = std::time(nullptr);
    std::tm t = *std::localtime(&now);
    char expect[32];
    std::strftime(expect, sizeof expect, "%d.%m.%Y", &t);
    CStr day("stale");
    ASSERT_TRUE(vq::getDateStr(day, false));
    if (day != expect) { // midnight passed between the two readings
        ASSERT_TRUE(vq::getDateStr(day, false));
    }
    ASSERT_EQ(day.length(), 10);
    EXPECT_EQ(std::string(day.str()).substr(6), std::string(expect).substr(6));
    ASSERT_TRUE(vq::getDateStr(day, true));
    EXPECT_EQ(std::string(day.str()).substr(0, 2), std::string(expect).substr(3, 2)); // month first

    char qif[32];
    ASSERT_TRUE(vq::getDateTimeQIF(qif, sizeof qif));
    EXPECT_EQ(std::strlen(qif), 19u);
    EXPECT_EQ(qif[10], 'T');
    char tiny[8] = "xxxxxxx";
    EXPECT_FALSE(vq::getDateTimeQIF(tiny, sizeof tiny));
    EXPECT_STREQ(tiny, "");
    EXPECT_FALSE(vq::getDateTimeQIF(nullptr, 32));
    char asc[32];
    ASSERT_TRUE(vq::_localtime(asc, sizeof asc));
    EXPECT_EQ(std::strlen(asc), 25u);
    EXPECT_EQ(asc[24], '\n');
    char shortBuf[25] = "x";
    EXPECT_FALSE(vq::_localtime(shortBuf, sizeof shortBuf));
    EXPECT_STREQ(shortBuf, "");
    EXPECT_FALSE(vq::_localtime(static_cast<char*>(nullptr), 32));
}
