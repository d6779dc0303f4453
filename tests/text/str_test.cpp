#include "vqk/text/format.h"
#include "vqk/text/str.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using vq::CStr;
using vq::CWStr;

TEST(CTStr, EmptyStringIsNeverNull) {
    CStr s;
    ASSERT_NE(s.str(), nullptr);
    EXPECT_STREQ(s.str(), "");
    EXPECT_EQ(s.length(), 0);
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(s.array().data(), nullptr);
    EXPECT_EQ(s.array().signedCapacity(), 0);
    CWStr w;
    ASSERT_NE(w.str(), nullptr);
    EXPECT_EQ(w.str()[0], L'\0');
    // Copies of a never-filled string stay unallocated.
    CStr copy(s);
    EXPECT_EQ(copy.array().data(), nullptr);
}

TEST(CTStr, NullPointersMeanEmptyText) {
    const char* nul = nullptr;
    const wchar_t* wnul = nullptr;
    CStr a(nul), b(wnul);
    EXPECT_TRUE(a.empty());
    EXPECT_TRUE(b.empty());
    CStr s("x");
    s = nul;
    EXPECT_TRUE(s.empty());
    s = "x";
    s.append(nul);
    s.append(wnul);
    s += nul;
    EXPECT_EQ(s, "x");
    s.reset(nul, 0, 3);
    EXPECT_TRUE(s.empty());
    s.reset(nul, uint64_t(3));
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(s.insertStr(0, nul), 0);
    EXPECT_EQ(s.findSubStr(nul), -1);
    EXPECT_TRUE(s == nul);
    EXPECT_FALSE(s != nul);
    EXPECT_STREQ(s.cformat(nul), "");
    CWStr w(nul);
    EXPECT_TRUE(w.empty());
    EXPECT_EQ(vq::findSubStr(nul, "a"), -1);
    EXPECT_EQ(vq::findSubStr("a", nul), -1);
}

TEST(CTStr, RangeResetCopiesOrLeavesTheStringAlone) {
    const char* p = "abcdef";
    CStr s("keep");
    s.reset(p, 4, 2);
    EXPECT_EQ(s, "keep");
    s.reset(p, 2, 4);
    EXPECT_EQ(s, "cd");
    s.reset(p, 3, 3);
    EXPECT_EQ(s, "");
    EXPECT_EQ(CStr(p, 1, 3), "bc");
    EXPECT_TRUE(CStr(p, 3, 1).empty());
}

TEST(CTStr, CountedResetKeepsZerosAndLengthStopsAtTheFirst) {
    CStr s;
    s.reset("ab\0cd", uint64_t(5));
    EXPECT_EQ(s.array().size(), 6u);
    EXPECT_EQ(s.length(), 2);
    EXPECT_EQ(std::memcmp(s.str(), "ab\0cd", 6), 0);
    s.reset(uint64_t(3), 'z');
    EXPECT_EQ(s, "zzz");
    EXPECT_EQ(s.array().size(), 4u);
    EXPECT_EQ(CStr(2, 'q'), "qq");
    EXPECT_EQ(CWStr(3, L'w'), L"www");
}

TEST(CTStr, WidthsConvertAsUtf8) {
    CStr n(L"\u00e9\u20ac\U0001F600");
    EXPECT_EQ(n, "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    CWStr w(n);
    EXPECT_EQ(w, L"\u00e9\u20ac\U0001F600");
    CStr back(w);
    EXPECT_EQ(back, n);
    // A converted string may be sized one larger than its text; length() is exact.
    EXPECT_EQ(n.length(), 9);
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
    char* p = s.getBuffer(4);
    ASSERT_NE(p, nullptr);
    std::memcpy(p, "abc", 4);
    EXPECT_EQ(s, "abc");
    s.add() = 'd';
    EXPECT_EQ(s, "abcd");
    EXPECT_EQ(s.array().size(), 5u);
    CStr e;
    e.add() = 'x';
    EXPECT_EQ(e, "x");
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
    EXPECT_EQ(vq::findSubStr("aaabaab", "aab"), 4);
    EXPECT_EQ(CStr("aaabaab").findSubStr("aab"), 4);
    EXPECT_EQ(vq::findSubStr(L"aaabaab", L"aab"), 4);
    EXPECT_EQ(vq::findSubStr("aaab", "aab"), 1); // found from start 1 when 0 finds none
    EXPECT_EQ(vq::findSubStr("hello world", "world"), 6);
    EXPECT_EQ(vq::findSubStr("hello", "hello!"), -1);
    EXPECT_EQ(vq::findSubStr("abc", ""), -1);
    EXPECT_EQ(vq::findSubStr("", "a"), -1);
    EXPECT_EQ(CStr().findSubStr("a"), -1);
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

    s = "ace";
    EXPECT_EQ(s.insertStr(1, "b"), 1);
    EXPECT_EQ(s, "abce");
    EXPECT_EQ(s.insertStr(-5, "_"), 1);
    EXPECT_EQ(s, "_abce");
    EXPECT_EQ(s.insertStr(99, "!!"), 2);
    EXPECT_EQ(s, "_abce!!");
    EXPECT_EQ(s.insertStr(3, ""), 0);
    EXPECT_EQ(e.insertStr(4, "new"), 3);
    EXPECT_EQ(e, "new");
    // Inserting a piece of the string itself.
    s = "xy";
    s.insertStr(1, s.str());
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
    u.uppercase(); // bytes of UTF-8 sequences are not touched
    EXPECT_EQ(u, "CAF\xC3\xA9");

    CStr t(" \t\r\nx y \n");
    t.trimEndSpaces();
    EXPECT_EQ(t, "x y");
    t = "  x  ";
    t.trimEndSpaces(true);
    EXPECT_EQ(t, "  x");
    t.trimEndSpaces(false);
    EXPECT_EQ(t, "x");
    t = " \t\n ";
    t.trimEndSpaces(false);
    EXPECT_TRUE(t.empty());
    t = "\vx\f"; // vertical tab and form feed are not white space here
    t.trimEndSpaces();
    EXPECT_EQ(t, "\vx\f");
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
    CWStr w1(L"\u00e9"), w2(L"\U0001F600");
    EXPECT_TRUE(w1 < w2);
}

TEST(CTStr, CformatMeasuresAndPrintsIntoAnExactBlock) {
    CStr s;
    EXPECT_STREQ(s.cformat("%s-%03i-%.2f", "x", 7, 1.5), "x-007-1.50");
    EXPECT_EQ(s.array().size(), 11u);
    EXPECT_STREQ(s.cformat("%s", ""), ""); // a count of 0 leaves the string empty
    EXPECT_EQ(s.array().size(), 0u);
    std::string big(5000, 'q');
    s.cformat("[%s]", big.c_str());
    EXPECT_EQ(s.length(), 5002);
    CWStr w;
    EXPECT_TRUE(w.cformat(L"%ls=%d", L"n", 42) == std::wstring(L"n=42"));
    std::wstring wbig(3000, L'w');
    w.cformat(L"%ls!", wbig.c_str());
    EXPECT_EQ(w.length(), 3001);
}

TEST(CTStr, FormatPiecesAndStreaming) {
    CStr s("old");
    EXPECT_STREQ(s.format(vq::CFormat("a"), vq::CFormat(1), vq::CFormat(L"\u00e9"),
                          vq::CFormat(2u), vq::CFormat(uint64_t(3)), vq::CFormat(0.25),
                          vq::CFormat(7, 2)),
                 "a1\xC3\xA9" "230.2507");
    s << vq::CFormat("+") << vq::CFormat(5, 3);
    EXPECT_EQ(s, "a1\xC3\xA9" "230.2507+005");
    s << CStr::EStreamCmd(1);
    EXPECT_FALSE(s.empty());
    s << CStr::eClear;
    EXPECT_TRUE(s.empty());
    CWStr w;
    w.format(vq::CFormat("n="), vq::CFormat(-4));
    EXPECT_EQ(w, L"n=-4");
    w << vq::CFormat(L"\U0001F600");
    EXPECT_EQ(w, L"n=-4\U0001F600");
}

#if defined(__GNUC__) && !defined(_WIN32)
// Applications built against the library call these through the virtual table, so
// their order is part of the binary interface. With the Itanium C++ ABI a pointer to a
// virtual member holds 1 + the slot's byte offset; the destructor takes slots 0 and 1.
namespace {
template <class F> long slotOf(F f) {
    struct {
        std::uintptr_t ptr;
        std::ptrdiff_t adj;
    } raw;
    static_assert(sizeof raw == sizeof f, "Itanium member pointer");
    std::memcpy(&raw, &f, sizeof raw);
    return long((raw.ptr - 1) / sizeof(void*));
}

template <class T> void checkSlots() {
    using S = vq::CTStr<T>;
    EXPECT_EQ(slotOf(static_cast<void (S::*)(const T*, int, int)>(&S::reset)), 2);
    EXPECT_EQ(slotOf(static_cast<void (S::*)(vq::uint64, T)>(&S::reset)), 3);
    EXPECT_EQ(slotOf(static_cast<void (S::*)(const T*, vq::uint64)>(&S::reset)), 4);
    EXPECT_EQ(slotOf(static_cast<void (S::*)(const wchar_t*)>(&S::reset)), 5);
    EXPECT_EQ(slotOf(static_cast<void (S::*)(const char*)>(&S::reset)), 6);
    EXPECT_EQ(slotOf(static_cast<void (S::*)(const wchar_t*)>(&S::append)), 7);
    EXPECT_EQ(slotOf(static_cast<void (S::*)(const char*)>(&S::append)), 8);
}
} // namespace

TEST(CTStr, VirtualSlotOrderIsFixed) {
    checkSlots<char>();
    checkSlots<wchar_t>();
}
#endif
