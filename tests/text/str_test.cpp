#include "vqk/text/format.h"
#include "vqk/text/str.h"
#include "vqk/text/substring.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using vq::CStr;
using vq::CWStr;

TEST(CTStr, EmptyAndNullMeanEmptyTextNeverANullPointer) {
    CStr s;
    ASSERT_NE(s.str(), nullptr);
    EXPECT_STREQ(s.str(), "");
    EXPECT_EQ(s.length(), 0);
    EXPECT_EQ(s.array().data(), nullptr);
    EXPECT_EQ(s.array().signedCapacity(), 0);
    EXPECT_EQ(CStr(s).array().data(), nullptr); // copies of a never-filled string stay unallocated
    CWStr w;
    ASSERT_NE(w.str(), nullptr);
    EXPECT_EQ(w.str()[0], L'\0');

    const char* nul = nullptr;
    const wchar_t* wnul = nullptr;
    EXPECT_TRUE(CStr(wnul).empty());
    EXPECT_TRUE(CWStr(nul).empty());
    s = "x";
    s.append(nul);
    s.append(wnul);
    EXPECT_EQ(s, "x");
    s.reset(nul, 0, 3);
    EXPECT_TRUE(s.empty());
    s = "x";
    s.reset(nul, uint64_t(3));
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(s.insertStr(0, nul), 0);
    EXPECT_EQ(s.findSubStr(nul), -1);
    EXPECT_TRUE(s == nul);
    EXPECT_FALSE(s != nul);
    EXPECT_STREQ(s.cformat(nul), "");
    EXPECT_EQ(vq::findSubStr(nul, "a"), -1);
    EXPECT_EQ(vq::findSubStr("a", nul), -1);
}

TEST(CTStr, RangedAndCountedResets) {
    const char* p = "abcdef";
    CStr s("keep");
    s.reset(p, 4, 2); // a reversed range leaves the string alone
    EXPECT_EQ(s, "keep");
    s.reset(p, 2, 4);
    EXPECT_EQ(s, "cd");
    s.reset(p, 3, 3);
    EXPECT_EQ(s, "");
    EXPECT_EQ(CStr(p, 1, 3), "bc");
    EXPECT_TRUE(CStr(p, 3, 1).empty());
    // A counted reset keeps zeros; length() stops at the first.
    s.reset("ab\0cd", uint64_t(5));
    EXPECT_EQ(s.array().size(), 6u);
    EXPECT_EQ(s.length(), 2);
    EXPECT_EQ(std::memcmp(s.str(), "ab\0cd", 6), 0);
    s.reset(uint64_t(3), 'z');
    EXPECT_EQ(s, "zzz");
    EXPECT_EQ(s.array().size(), 4u);
    EXPECT_EQ(CWStr(3, L'w'), L"www");
}

TEST(CTStr, WidthsConvertAsUtf8) {
    CStr n(L"\u00e9\u20ac\U0001F600");
    EXPECT_EQ(n, "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(n.length(), 9); // the block may be one larger; length() is exact
    CWStr w(n);
    EXPECT_EQ(w, L"\u00e9\u20ac\U0001F600");
    EXPECT_EQ(CStr(w), n);
    w.reset("ab");
    w.append("\xC3\xA9");
    EXPECT_EQ(w, L"ab\u00e9");
    n.reset(L"x");
    n.append(L"\u00e9");
    EXPECT_EQ(n, "x\xC3\xA9");
}

TEST(CTStr, GetBufferAddAndReserve) {
    CStr s;
    EXPECT_EQ(s.getBuffer(0), nullptr);
    std::memcpy(s.getBuffer(4), "abc", 4);
    EXPECT_EQ(s, "abc");
    s.add() = 'd';
    EXPECT_EQ(s, "abcd");
    EXPECT_EQ(s.array().size(), 5u);
    s.reserve(100);
    EXPECT_GE(s.array().capacity(), 100u);
    EXPECT_EQ(s, "abcd");
    s.reset();
    EXPECT_TRUE(s.empty());
    EXPECT_GE(s.array().capacity(), 100u); // emptying keeps the block
}

TEST(CTStr, FindSubStrReportsTheFirstMatchMetByItsScan) {
    // From start 0 the matcher drops "aa" at the third 'a' without retrying it, so the
    // occurrence at 4 is met before the one at 1.
    struct Case { const char* text; const char* sub; int at; };
    const Case cases[] = {{"aaabaab", "aab", 4}, {"aaab", "aab", 1}, {"hello world", "world", 6},
                          {"hello", "hello!", -1}, {"abc", "", -1}, {"", "a", -1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text << " / " << c.sub);
        EXPECT_EQ(vq::findSubStr(c.text, c.sub), c.at);
        EXPECT_EQ(CStr(c.text).findSubStr(c.sub), c.at);
    }
    EXPECT_EQ(vq::findSubStr(L"aaabaab", L"aab"), 4);

    // The search skips the scans that cannot succeed: it must still give the plain
    // matcher's answer, for every text and pattern over two letters.
    auto plain = [](const std::string& t, const std::string& p) {
        for (size_t s = 0; s + p.size() <= t.size(); ++s)
            for (size_t i = s, k = 0; i < t.size(); ++i)
                if (t[i] != p[k])
                    k = 0;
                else if (++k == p.size())
                    return int(i + 1 - k);
        return -1;
    };
    auto word = [](unsigned bits, unsigned n) {
        std::string w;
        for (unsigned i = 0; i < n; ++i)
            w += "ab"[(bits >> i) & 1];
        return w;
    };
    for (unsigned n = 1; n <= 11; ++n)
        for (unsigned t = 0; t < (1u << n); ++t)
            for (unsigned m = 1; m <= 4; ++m)
                for (unsigned p = 0; p < (1u << m); ++p) {
                    const std::string text = word(t, n), pat = word(p, m);
                    int expected = plain(text, pat), count = 0;
                    for (size_t at = 0; expected >= 0; expected = plain(text.substr(at), pat))
                        ++count, at += size_t(expected) + m;
                    ASSERT_EQ(vq::findSubStr(text.c_str(), pat.c_str()), plain(text, pat)) << text << " / " << pat;
                    ASSERT_EQ(vq::numSubStr(text.c_str(), pat.c_str()), count) << text << " / " << pat;
                }
}

TEST(CTStr, DeleteAndInsert) {
    CStr s("abcdef");
    s.deleteSubStr(1, 2);
    EXPECT_EQ(s, "adef");
    s.deleteSubStr(2, 1); // reversed: unchanged
    EXPECT_EQ(s, "adef");
    uint32_t size = s.array().size();
    s.deleteSubStr(2, -1); // cut at 2, size kept
    EXPECT_EQ(s, "ad");
    EXPECT_EQ(s.array().size(), size);
    CStr e;
    e.deleteSubStr(0, 3);
    EXPECT_TRUE(e.empty());
    EXPECT_EQ(e.insertStr(4, "new"), 3);
    EXPECT_EQ(e, "new");

    struct Case { int at; const char* piece; int added; const char* out; };
    const Case cases[] = {{1, "b", 1, "abce"}, {-5, "_", 1, "_abce"}, {99, "!!", 2, "_abce!!"}, {3, "", 0, "_abce!!"}};
    s = "ace";
    for (const Case& c : cases) {
        EXPECT_EQ(s.insertStr(c.at, c.piece), c.added);
        EXPECT_EQ(s, c.out);
    }
    s = "xy";
    s.insertStr(1, s.str()); // a piece of the string itself
    EXPECT_EQ(s, "xxyy");
}

TEST(CTStr, CharacterEditsAndTrimming) {
    CStr s("a-b_c-d");
    vq::TAc<char> set;
    set.push_back('-');
    set.push_back('_');
    s.deleteChars(set);
    EXPECT_EQ(s, "abcd");
    s.replace('b', 'B');
    EXPECT_EQ(s, "aBcd");
    EXPECT_EQ(s.uppercase(), "ABCD");
    EXPECT_EQ(s.lowercase(), "abcd");
    CStr u("caf\xC3\xA9");
    EXPECT_EQ(u.uppercase(), "CAF\xC3\xA9"); // bytes of UTF-8 sequences are not touched

    struct Case { const char* in; int atEnd; const char* out; }; // atEnd -1: no argument
    const Case cases[] = {{" \t\r\nx y \n", -1, "x y"}, {"  x  ", 1, "  x"}, {"  x", 0, "x"},
                          {" \t\n ", 0, ""},
                          {"\vx\f", -1, "\vx\f"}}; // vertical tab and form feed are not white space
    for (const Case& c : cases) {
        CStr t(c.in);
        c.atEnd < 0 ? t.trimEndSpaces() : t.trimEndSpaces(c.atEnd != 0);
        EXPECT_EQ(t, c.out) << c.in;
    }
    CWStr w(L"  wide  ");
    w.trimEndSpaces();
    EXPECT_EQ(w, L"wide");
}

TEST(CTStr, ComparisonIsOnUnsignedValues) {
    CStr empty, a("a"), high("\xC3\xA9");
    EXPECT_TRUE(empty < a);
    EXPECT_FALSE(a < empty);
    EXPECT_FALSE(empty < empty);
    EXPECT_TRUE(empty == "");
    EXPECT_TRUE(a < high); // 0xC3 is above 'a' when unsigned
    EXPECT_FALSE(high < a);
    EXPECT_TRUE(CStr("ab") < CStr("abc"));
    EXPECT_TRUE("a" == a);
    EXPECT_TRUE("b" != a);
    EXPECT_TRUE(CWStr(L"\u00e9") < CWStr(L"\U0001F600"));
}

TEST(CTStr, CformatFormatAndStreaming) {
    CStr s;
    EXPECT_STREQ(s.cformat("%s-%03i-%.2f", "x", 7, 1.5), "x-007-1.50");
    EXPECT_EQ(s.array().size(), 11u); // an exact block
    EXPECT_STREQ(s.cformat("%s", ""), ""); // a count of 0 leaves the string empty
    EXPECT_EQ(s.array().size(), 0u);
    s.cformat("[%s]", std::string(5000, 'q').c_str());
    EXPECT_EQ(s.length(), 5002);
    CWStr w;
    EXPECT_TRUE(w.cformat(L"%ls=%d", L"n", 42) == std::wstring(L"n=42"));
    w.cformat(L"%ls!", std::wstring(3000, L'w').c_str());
    EXPECT_EQ(w.length(), 3001);

    s = "old";
    EXPECT_STREQ(s.format(vq::CFormat("a"), vq::CFormat(1), vq::CFormat(L"\u00e9"), vq::CFormat(2u),
                          vq::CFormat(uint64_t(3)), vq::CFormat(0.25), vq::CFormat(7, 2)),
                 "a1\xC3\xA9" "230.2507");
    s << vq::CFormat("+") << vq::CFormat(5, 3);
    EXPECT_EQ(s, "a1\xC3\xA9" "230.2507+005");
    s << CStr::EStreamCmd(1);
    EXPECT_FALSE(s.empty());
    s << CStr::eClear;
    EXPECT_TRUE(s.empty());
    w.format(vq::CFormat("n="), vq::CFormat(-4));
    w << vq::CFormat(L"\U0001F600");
    EXPECT_EQ(w, L"n=-4\U0001F600");
}
