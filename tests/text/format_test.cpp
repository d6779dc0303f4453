#include "vqk/files/out_file.h"
#include "vqk/text/format.h"
#include "vqk/text/str_format.h"
#include "expect_text.h"

#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
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

// COutFile::print is checked by the compiler against the C library's conventions.
void printTo(vq::COutFile& out, const char* format, ...) {
    va_list args;
    va_start(args, format);
    out.vprint(format, args);
    va_end(args);
}

} // namespace

TEST(CFormat, RendersEachKindWithItsFormat) {
    CStr s("str");
    CWStr w(L"wstr");
    struct Case { CFormat f; const char* text; const char* format; };
    const Case cases[] = {
        {CFormat(7, 3), "007", "%03i"},
        {CFormat(7, 0), "7", "%i"},
        {CFormat(-7, 4), "-007", "%04i"},
        {CFormat(0.5, -1), "0.5", nullptr},
        {CFormat(0.5, 3), "0.500", "%.3f"},
        {CFormat(0.1 + 0.2), "0.3", "%.15g"},
        {CFormat(1e20), "1e+20", "%.15g"},
        {CFormat(4294967295u), "4294967295", "%u"},
        {CFormat(vq::uint64(18446744073709551615ull)), "18446744073709551615", vq::formatPrintfID1()},
        {CFormat("text %s"), "text %s", "%s"}, // text is never a format
        {CFormat(L"\u00e9"), "\xC3\xA9", nullptr},
        {CFormat(static_cast<const char*>(nullptr)), "", nullptr},
        {CFormat(static_cast<const wchar_t*>(nullptr)), "", nullptr},
        {CFormat(s), "str", nullptr},
        {CFormat(w), "wstr", nullptr}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(rendered(c.f), c.text);
        if (c.format) {
            EXPECT_STREQ(c.f.format(), c.format);
        }
    }
    EXPECT_TRUE(std::wstring(CFormat(1.0, 2).formatw()) == L"%.2f");
    // The built formats share one buffer: the latest one wins.
    const char* first = CFormat(1, 3).format();
    CFormat(1.0, 4).format();
    EXPECT_STREQ(first, "%.4f");
}

TEST(CFormat, SizesAndBoundedPrinting) {
    EXPECT_EQ(CFormat(123, 6).sizeBuf(), 6);
    EXPECT_EQ(CFormat("\xC3\xA9").sizeBuf(), 2);
    EXPECT_EQ(CFormat("\xC3\xA9").sizeBufW(), 1);
    EXPECT_EQ(CFormat(L"\u00e9").sizeBuf(), 2);
    char buf[4];
    EXPECT_GIVES(CFormat(123).sprint(buf, 4), 3, buf, "123");
    EXPECT_GIVES(CFormat(1234).sprint(buf, 4), -1, buf, "");
    EXPECT_EQ(CFormat("abcd").sprint(buf, 4), -1);
    EXPECT_EQ(CFormat(1).sprint(nullptr, 4), -1);
    wchar_t wbuf[4];
    EXPECT_EQ(CFormat(12).swprint(wbuf, 4), 2);
    EXPECT_TRUE(std::wstring(wbuf) == L"12");
    EXPECT_EQ(CFormat(L"abcd").swprint(wbuf, 4), -1);
}

TEST(CFormat, SprintfAndPrintfJoinThePieces) {
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

    testing::internal::CaptureStdout();
    vq::printf_s(CFormat("n="), CFormat(3, 2), CFormat(" "), CFormat(1.5, 2));
    CFormat(L"!").print();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "n=03 1.50!");
}

TEST(CFormat, FormatsFollowTheRuntimesConventionsOnEverySystem) {
    // Wide formats take wide text for %s and %c; %I64 is a 64-bit size, not a width.
    CStr s;
    CWStr w;
    EXPECT_STREQ(w.cformat(L"%s|%S|%hs|%ls|%ws|%c%C|%-4s|%.2s|%*S|%I64u", L"abc", "nar", "h", L"l", L"w",
                           L'x', 'y', L"ab", L"xyz", 3, "n", vq::uint64(1) << 40),
                 L"abc|nar|h|l|w|xy|ab  |xy|  n|1099511627776");
    EXPECT_STREQ(s.cformat("%s|%S|%hs|%ls|%ws|%c%C|%I64u|%I64d|%5I64x|%I32d|%Iu|%%I64u", "abc", L"wid", "h",
                           L"l", L"w", 'x', L'y', vq::uint64(18446744073709551615ull), -(1ll << 40),
                           vq::uint64(255), 7, size_t(9)),
                 "abc|wid|h|l|w|xy|18446744073709551615|-1099511627776|   ff|7|9|%I64u");
    EXPECT_STREQ(vq::CStrFormat("%S=%I64u", L"n", vq::uint64(5)).str(), "n=5");
    FILE* f = std::tmpfile();
    ASSERT_NE(f, nullptr);
    {
        vq::COutFile out(f);
        printTo(out, "%S %I64u", L"wide", vq::uint64(1) << 33);
        out.flush();
    }
    EXPECT_EQ(test_files::readAndClose(f), "wide 8589934592");
}

TEST(CStrFormat, InlineBlockThenDoublingUpToTenAttempts) {
    vq::CStrFormat f("%s_%03i", "part", 7);
    EXPECT_STREQ(f.str(), "part_007");
    const char* inlineBlock = f.str();
    EXPECT_STREQ(f("%i items", 3), "3 items");
    EXPECT_EQ(f.str(), inlineBlock);
    EXPECT_STREQ(f.format(nullptr), "");
    EXPECT_STREQ(static_cast<const char*>(f), "");
    // {characters printed, capacity after}: 1023 and the terminator fill the block; the
    // tenth attempt holds 1024 << 9 characters with the terminator.
    const std::pair<size_t, int> steps[] = {{1023, 1024}, {1024, 2048}, {5000, 8192}, {524287, 524288}};
    for (auto& step : steps) {
        std::string t(step.first, 'x');
        EXPECT_EQ(std::string(f.format("%s", t.c_str())), t);
        EXPECT_EQ(f.capacity(), step.second);
    }
    EXPECT_STREQ(f.format("%s", std::string(524288, 'w').c_str()), "");

    vq::CStrFormat a("%s", std::string(3000, 'a').c_str());
    vq::CStrFormat b(a);
    EXPECT_NE(b.str(), a.str());
    EXPECT_EQ(std::string(b.str()), std::string(3000, 'a'));
    const vq::CStrFormat small("tiny");
    b = small;
    EXPECT_STREQ(b.str(), "tiny");
}

TEST(CStrFormat, ItsOwnTextMayBeAnArgument) {
    vq::CStrFormat f("dir");
    EXPECT_STREQ(f("x/%s", f.str()), "x/dir"); // the inline block is printed over
    EXPECT_STREQ(f("%s|%s", f.str(), f.str()), "x/dir|x/dir");
    for (size_t n : {3000, 70000}) { // a heap block; beyond the thread's reused scratch
        std::string big(n, 'b');
        f.format("%s", big.c_str());
        EXPECT_EQ(std::string(f("<%s>", f.str())), "<" + big + ">");
    }
    std::string before(f.str());
    EXPECT_EQ(std::string(f("%s%s", f.str(), f.str())), before + before); // the heap block is replaced
}
