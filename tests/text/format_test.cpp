#include "vqk/text/format.h"
#include "vqk/text/str_format.h"

#include <gtest/gtest.h>

#include <string>

using vq::CFormat;
using vq::CStr;
using vq::CWStr;

namespace {

std::string rendered(const CFormat& f) {
    CStr s;
    vq::sprintf_s(s, f, false);
    return s.str();
}

} // namespace

TEST(CFormat, RendersEachKind) {
    EXPECT_EQ(rendered(CFormat(7, 3)), "007");
    EXPECT_EQ(rendered(CFormat(7, 0)), "7");
    EXPECT_EQ(rendered(CFormat(-7, 4)), "-007");
    EXPECT_EQ(rendered(CFormat(0.5, -1)), "0.5");
    EXPECT_EQ(rendered(CFormat(0.5, 3)), "0.500");
    EXPECT_EQ(rendered(CFormat(0.1 + 0.2)), "0.3"); // 15 significant digits
    EXPECT_EQ(rendered(CFormat(1e20)), "1e+20");
    EXPECT_EQ(rendered(CFormat(4294967295u)), "4294967295");
    EXPECT_EQ(rendered(CFormat(vq::uint64(18446744073709551615ull))), "18446744073709551615");
    EXPECT_EQ(rendered(CFormat("text %s")), "text %s"); // text is never a format
    EXPECT_EQ(rendered(CFormat(L"\u00e9")), "\xC3\xA9");
    EXPECT_EQ(rendered(CFormat(static_cast<const char*>(nullptr))), "");
    EXPECT_EQ(rendered(CFormat(static_cast<const wchar_t*>(nullptr))), "");
    CStr s("str");
    CWStr w(L"wstr");
    EXPECT_EQ(rendered(CFormat(s)), "str");
    EXPECT_EQ(rendered(CFormat(w)), "wstr");
}

TEST(CFormat, FormatsAndSizes) {
    EXPECT_STREQ(CFormat("x").format(), "%s");
    EXPECT_STREQ(CFormat(1).format(), "%i");
    EXPECT_STREQ(CFormat(1, 5).format(), "%05i");
    EXPECT_STREQ(CFormat(1u).format(), "%u");
    EXPECT_STREQ(CFormat(vq::uint64(1)).format(), vq::formatPrintfID1());
    EXPECT_STREQ(CFormat(1.0).format(), "%.15g");
    EXPECT_STREQ(CFormat(1.0, 2).format(), "%.2f");
    EXPECT_TRUE(std::wstring(CFormat(1.0, 2).formatw()) == L"%.2f");
    // The built formats share one buffer: the latest one wins.
    const char* first = CFormat(1, 3).format();
    CFormat(1.0, 4).format();
    EXPECT_STREQ(first, "%.4f");

    EXPECT_EQ(CFormat(123, 6).sizeBuf(), 6);
    EXPECT_EQ(CFormat("\xC3\xA9").sizeBuf(), 2);
    EXPECT_EQ(CFormat("\xC3\xA9").sizeBufW(), 1);
    EXPECT_EQ(CFormat(L"\u00e9").sizeBuf(), 2);
    char buf[4];
    EXPECT_EQ(CFormat(123).sprint(buf, 4), 3);
    EXPECT_STREQ(buf, "123");
    EXPECT_EQ(CFormat(1234).sprint(buf, 4), -1);
    EXPECT_STREQ(buf, "");
    EXPECT_EQ(CFormat("abcd").sprint(buf, 4), -1);
    EXPECT_EQ(CFormat(1).sprint(nullptr, 4), -1);
    wchar_t wbuf[4];
    EXPECT_EQ(CFormat(12).swprint(wbuf, 4), 2);
    EXPECT_TRUE(std::wstring(wbuf) == L"12");
    EXPECT_EQ(CFormat(L"abcd").swprint(wbuf, 4), -1);
}

TEST(CFormat, SprintfAppendsOrReplacesInBothWidths) {
    CStr s("keep ");
    vq::sprintf_s(s, CFormat("a"), CFormat(1), true);
    EXPECT_EQ(s, "keep a1");
    vq::sprintf_s(s, CFormat("b"), CFormat(2), CFormat(3), CFormat(4), CFormat(5), CFormat(6),
                  CFormat(7), false);
    EXPECT_EQ(s, "b234567");
    std::string longNumber = rendered(CFormat(1e300, 2)); // beyond the inline scratch room
    EXPECT_EQ(longNumber.size(), 304u);
    EXPECT_EQ(longNumber.substr(0, 4), "1000");
    CWStr w(L"w:");
    vq::sprintf_s(w, CFormat("\xC3\xA9"), CFormat(L"\U0001F600"), CFormat(2.5, 1), true);
    EXPECT_EQ(w, L"w:\u00e9\U0001F6002.5");
}

TEST(CFormat, PrintfWritesThePiecesToStandardOutput) {
    testing::internal::CaptureStdout();
    vq::printf_s(CFormat("n="), CFormat(3, 2), CFormat(" "), CFormat(1.5, 2));
    CFormat(L"!").print();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "n=03 1.50!");
}

TEST(CStrFormat, ShortTextsStayInline) {
    vq::CStrFormat f("%s_%03i", "part", 7);
    EXPECT_STREQ(f.str(), "part_007");
    EXPECT_EQ(f.capacity(), 1024);
    const char* inlineBlock = f.str();
    EXPECT_STREQ(f("%i items", 3), "3 items");
    EXPECT_EQ(f.str(), inlineBlock);
    std::string exact(1023, 'x'); // 1023 characters and the terminator fill the block
    EXPECT_EQ(std::string(f.format("%s", exact.c_str())), exact);
    EXPECT_EQ(f.capacity(), 1024);
    EXPECT_STREQ(f.format(nullptr), "");
    const char* c = f;
    EXPECT_STREQ(c, "");
}

TEST(CStrFormat, LongTextsDoubleUpToTenAttemptsThenGiveEmptyText) {
    vq::CStrFormat f;
    std::string t(1024, 'y');
    EXPECT_EQ(std::string(f.format("%s", t.c_str())), t);
    EXPECT_EQ(f.capacity(), 2048);
    t.assign(5000, 'z');
    EXPECT_EQ(std::string(f.format("%s", t.c_str())), t);
    EXPECT_EQ(f.capacity(), 8192);
    // The tenth attempt holds 1024 << 9 = 524288 characters with the terminator.
    t.assign(524287, 'w');
    EXPECT_EQ(std::string(f.format("%s", t.c_str())).size(), t.size());
    EXPECT_EQ(f.capacity(), 524288);
    t += 'w';
    EXPECT_STREQ(f.format("%s", t.c_str()), "");

    vq::CStrFormat a("%s", std::string(3000, 'a').c_str());
    vq::CStrFormat b(a);
    EXPECT_NE(b.str(), a.str());
    EXPECT_EQ(std::string(b.str()), std::string(3000, 'a'));
    vq::CStrFormat small("tiny");
    b = small;
    EXPECT_STREQ(b.str(), "tiny");
}

TEST(CStrFormat, ItsOwnTextMayBeAnArgument) {
    vq::CStrFormat f("dir");
    EXPECT_STREQ(f("x/%s", f.str()), "x/dir"); // the inline block is printed over
    EXPECT_STREQ(f("%s|%s", f.str(), f.str()), "x/dir|x/dir");
    std::string big(3000, 'b');
    f.format("%s", big.c_str());
    EXPECT_EQ(std::string(f("<%s>", f.str())), "<" + big + ">"); // the heap block stays
    big.assign(70000, 'c'); // beyond the thread's reused scratch
    f.format("%s", big.c_str());
    EXPECT_EQ(std::string(f("=%s", f.str())), "=" + big);
    std::string twice(f.str());
    EXPECT_EQ(std::string(f("%s%s", f.str(), f.str())), twice + twice); // the heap block is replaced
}
