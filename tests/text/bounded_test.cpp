#include "vqk/platform/bounded.h"
#include "vqk/text/bounded.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <clocale>
#include <cstring>
#include <ctime>
#include <string>

namespace pf = vq::platform;

TEST(Bounded, CopyAndConcatenateReportAndEmptyOnError) {
    char d[6] = "stale";
    EXPECT_EQ(vq::strcpy(d, sizeof d, "hello"), 0);
    EXPECT_STREQ(d, "hello");
    EXPECT_EQ(vq::strcpy(d, sizeof d, "hello!"), ERANGE);
    EXPECT_STREQ(d, "");
    std::strcpy(d, "abc");
    EXPECT_EQ(vq::strcpy(d, sizeof d, nullptr), EINVAL);
    EXPECT_STREQ(d, "");
    std::strcpy(d, "abc");
    EXPECT_EQ(vq::strcpy(d, 0, "x"), EINVAL);
    EXPECT_STREQ(d, "abc"); // zero size: untouched
    EXPECT_EQ(vq::strcpy(static_cast<char*>(nullptr), 4, "x"), EINVAL);
    EXPECT_EQ(vq::strcpy(d, "arr"), 0); // size from the array
    EXPECT_STREQ(d, "arr");

    EXPECT_EQ(vq::strcat(d, sizeof d, "12"), 0);
    EXPECT_STREQ(d, "arr12");
    EXPECT_EQ(vq::strcat(d, sizeof d, "3"), ERANGE);
    EXPECT_STREQ(d, "");
    char unterminated[3] = {'a', 'b', 'c'};
    EXPECT_EQ(vq::strcat(unterminated, sizeof unterminated, ""), EINVAL);
    EXPECT_EQ(unterminated[0], 0);

    wchar_t w[4];
    EXPECT_EQ(vq::wcscpy(w, 4, L"abc"), 0);
    EXPECT_EQ(vq::wcscat(w, 4, L"d"), ERANGE);
    EXPECT_EQ(w[0], 0);
    EXPECT_EQ(vq::wcscpy(w, L"x"), 0);
    EXPECT_EQ(vq::wcscat(w, L"yz"), 0);
    EXPECT_STREQ(w, L"xyz");
}

TEST(Bounded, StrncpyCountsAndTruncates) {
    char d[5];
    EXPECT_EQ(vq::strncpy(d, sizeof d, "abcdef", 3), 0);
    EXPECT_STREQ(d, "abc");
    EXPECT_EQ(vq::strncpy(d, sizeof d, "abcdef", 5), ERANGE);
    EXPECT_STREQ(d, "");
    EXPECT_EQ(vq::strncpy(d, sizeof d, "ab", 10), 0); // the text ends before count
    EXPECT_STREQ(d, "ab");
    EXPECT_EQ(vq::strncpy(d, sizeof d, "abcdef", pf::kTruncate), pf::kStruncate);
    EXPECT_STREQ(d, "abcd");
    EXPECT_EQ(vq::strncpy(d, sizeof d, "abcd", pf::kTruncate), 0);
    EXPECT_STREQ(d, "abcd");
    EXPECT_EQ(vq::strncpy(d, sizeof d, "xyz", 0), 0);
    EXPECT_STREQ(d, "");
    EXPECT_EQ(vq::strncpy(static_cast<char*>(nullptr), 0, nullptr, 0), 0);
    EXPECT_EQ(vq::strncpy(d, sizeof d, nullptr, 2), EINVAL);
    wchar_t w[3];
    EXPECT_EQ(vq::strncpy(w, 3, L"wide", pf::kTruncate), pf::kStruncate);
    EXPECT_STREQ(w, L"wi");
}

TEST(Bounded, CaseMappingAndComparison) {
    char s[8] = "MiXeD";
    EXPECT_EQ(vq::strlwr(s, sizeof s), 0);
    EXPECT_STREQ(s, "mixed");
    EXPECT_EQ(vq::strup(s, sizeof s), 0);
    EXPECT_STREQ(s, "MIXED");
    EXPECT_EQ(vq::strup(s, 3), EINVAL); // not terminated within the size given
    EXPECT_STREQ(s, "");
    EXPECT_EQ(vq::strlwr(static_cast<char*>(nullptr), 4), EINVAL);
    wchar_t w[8] = L"\u00c9Ab";
    EXPECT_EQ(vq::strlwr(w, 8), 0);
    EXPECT_EQ(w[1], L'a');
    // Case mapping follows the locale: the "C" locale maps ASCII letters only, a
    // Unicode one every letter, and strupr reaches them through wide text.
    char u[16] = "caf\xC3\xA9 \xD0\xB6";
    EXPECT_EQ(vq::strupr(u, sizeof u), 0);
    EXPECT_STREQ(u, "CAF\xC3\xA9 \xD0\xB6");
    std::string old = std::setlocale(LC_CTYPE, nullptr);
    if (std::setlocale(LC_CTYPE, "C.UTF-8")) {
        EXPECT_EQ(vq::strupr(u, sizeof u), 0);
        EXPECT_STREQ(u, "CAF\xC3\x89 \xD0\x96");
        char bytes[8] = "\xC3\xA9x";
        EXPECT_EQ(vq::strup(bytes, sizeof bytes), 0); // byte-wise: sequences untouched
        EXPECT_STREQ(bytes, "\xC3\xA9X");
        std::setlocale(LC_CTYPE, old.c_str());
    }
    char tight[6] = "ab";
    EXPECT_EQ(vq::strupr(tight, 2), ERANGE);

    EXPECT_EQ(vq::stricmp("abc", "ABC"), 0);
    EXPECT_LT(vq::stricmp("abc", "ABD"), 0);
    EXPECT_GT(vq::stricmp("b", "A"), 0);
    EXPECT_LT(vq::stricmp("ab", "abc"), 0);
    EXPECT_EQ(vq::stricmp(nullptr, "a"), pf::kNlsCmpError);
    EXPECT_EQ(vq::strnicmp("abcX", "ABCy", 3), 0);
    EXPECT_NE(vq::strnicmp("abcX", "ABCy", 4), 0);
    EXPECT_EQ(vq::strnicmp(static_cast<const char*>(nullptr), nullptr, 0), 0);
    EXPECT_EQ(vq::stricmp(L"Wide", L"wIDE"), 0);
}

TEST(Bounded, TokenizerKeepsItsPlaceInTheContext) {
    char text[] = ",a,,bc,";
    char* ctx = nullptr;
    char* t1 = vq::strtok(text, ",", &ctx);
    char* t2 = vq::strtok(nullptr, ",", &ctx);
    char* t3 = vq::strtok(nullptr, ",", &ctx);
    ASSERT_NE(t1, nullptr);
    ASSERT_NE(t2, nullptr);
    EXPECT_STREQ(t1, "a");
    EXPECT_STREQ(t2, "bc");
    EXPECT_EQ(t3, nullptr);
    EXPECT_EQ(vq::strtok(nullptr, ",", &ctx), nullptr);
    char* none = nullptr;
    EXPECT_EQ(vq::strtok(nullptr, ",", &none), nullptr);
    EXPECT_EQ(vq::strtok(text, nullptr, &ctx), nullptr);
    wchar_t wtext[] = L"x y";
    wchar_t* wctx = nullptr;
    EXPECT_STREQ(vq::strtok(wtext, L" ", &wctx), L"x");
    EXPECT_STREQ(vq::strtok(static_cast<wchar_t*>(nullptr), L" ", &wctx), L"y");
}

TEST(Bounded, IntegerToText) {
    char b[40];
    EXPECT_EQ(vq::itoa(-123, b, sizeof b, 10), 0);
    EXPECT_STREQ(b, "-123");
    EXPECT_EQ(vq::itoa(255, b, sizeof b, 16), 0);
    EXPECT_STREQ(b, "ff");
    EXPECT_EQ(vq::itoa(-1, b, sizeof b, 16), 0); // the bits, no sign
    EXPECT_STREQ(b, "ffffffff");
    EXPECT_EQ(vq::itoa(INT_MIN, b, sizeof b, 10), 0);
    EXPECT_STREQ(b, "-2147483648");
    EXPECT_EQ(vq::itoa(5, b, sizeof b, 2), 0);
    EXPECT_STREQ(b, "101");
    EXPECT_EQ(vq::itoa(35, b, sizeof b, 36), 0);
    EXPECT_STREQ(b, "z");
    EXPECT_EQ(vq::itoa(5, b, sizeof b, 1), EINVAL);
    EXPECT_STREQ(b, "");
    EXPECT_EQ(vq::itoa(-12, b, 3, 10), ERANGE); // "-12" needs 4
    EXPECT_STREQ(b, "");
    EXPECT_EQ(vq::itoa(-12, b, 4, 10), 0);
    EXPECT_EQ(vq::itoa(1, nullptr, 4, 10), EINVAL);
}

TEST(Bounded, MultibyteToWide) {
    size_t n = 99;
    wchar_t w[4];
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, "abc", pf::kTruncate), 0);
    EXPECT_EQ(n, 4u);
    EXPECT_STREQ(w, L"abc");
    EXPECT_EQ(vq::mbstowcs(&n, nullptr, 0, "abcdef", pf::kTruncate), 0);
    EXPECT_EQ(n, 7u); // the size needed, terminator included
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, "abcdef", 10), ERANGE);
    EXPECT_EQ(w[0], 0);
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, "abcdef", pf::kTruncate), pf::kStruncate);
    EXPECT_STREQ(w, L"abc");
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, "abcdef", 2), 0); // count limits characters
    EXPECT_STREQ(w, L"ab");
    EXPECT_EQ(n, 3u);
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, nullptr, 2), EINVAL);
    EXPECT_EQ(vq::mbstowcs(&n, nullptr, 4, "a", 2), EINVAL);
    EXPECT_EQ(vq::mbstowcs(&n, w, 0, "a", 2), EINVAL);
}

TEST(Bounded, PrintingFailsInsteadOfCutting) {
    char b[6];
    EXPECT_EQ(vq::sprintf(b, sizeof b, "%i-%s", 12, "ab"), 5);
    EXPECT_STREQ(b, "12-ab");
    EXPECT_EQ(vq::sprintf(b, sizeof b, "%i-%s", 123, "ab"), -1);
    EXPECT_STREQ(b, "");
    EXPECT_EQ(vq::sprintf(b, "%s", "arr"), 3);
    EXPECT_EQ(vq::sprintf(b, 0, "x"), -1);
    EXPECT_EQ(vq::sprintf(b, sizeof b, nullptr), -1);
    wchar_t w[4];
    EXPECT_EQ(vq::sprintf(w, 4, L"%d", 123), 3);
    EXPECT_EQ(vq::sprintf(w, 4, L"%d", 1234), -1);
    EXPECT_EQ(w[0], 0);
    EXPECT_EQ(vq::sprintf(w, L"%ls", L"ok"), 2);

    EXPECT_EQ(vq::scprintf("%s-%i", "part", 7), 6);
    EXPECT_EQ(vq::scwprintf(L"%ls!", L"\u00e9\u00e9"), 3);
    std::wstring longWide(1000, L'x');
    EXPECT_EQ(vq::scwprintf(L"%ls", longWide.c_str()), 1000);
    EXPECT_EQ(vq::scprintf(nullptr), -1);
}

TEST(Bounded, LocalTimeAndItsTextForm) {
    std::tm t{};
    vq::int64 when = 0;
    EXPECT_EQ(vq::_localtime(&t, &when), 0);
    EXPECT_TRUE(t.tm_year == 70 || t.tm_year == 69); // the epoch, in any time zone
    when = -1;
    EXPECT_EQ(vq::_localtime(&t, &when), EINVAL);
    EXPECT_EQ(t.tm_year, -1);
    EXPECT_EQ(t.tm_mday, -1);
    when = 32535215999LL + 1; // past the year 3000
    EXPECT_EQ(vq::_localtime(&t, &when), EINVAL);
    EXPECT_EQ(vq::_localtime(&t, nullptr), EINVAL);
    EXPECT_EQ(vq::_localtime(nullptr, &when), EINVAL);

    std::tm fixed{};
    fixed.tm_year = 80;
    fixed.tm_mon = 0;
    fixed.tm_mday = 2;
    fixed.tm_hour = 2;
    fixed.tm_min = 3;
    fixed.tm_sec = 55;
    fixed.tm_wday = 3;
    char buf[26];
    EXPECT_EQ(pf::asctime_s(buf, sizeof buf, &fixed), 0);
    EXPECT_STREQ(buf, "Wed Jan 02 02:03:55 1980\n");
    EXPECT_EQ(pf::asctime_s(buf, 25, &fixed), EINVAL);
    EXPECT_STREQ(buf, "");
    fixed.tm_mon = 12;
    EXPECT_EQ(pf::asctime_s(buf, sizeof buf, &fixed), EINVAL);
    EXPECT_EQ(pf::asctime_s(buf, sizeof buf, nullptr), EINVAL);
}

TEST(Bounded, WideCountingStopsAtTextTheLocaleCannotConvert) {
    // A narrow argument with a byte sequence the "C" locale cannot decode fails at once
    // instead of retrying with ever larger blocks.
    EXPECT_EQ(vq::scwprintf(L"%s", "\xC3\xA9"), -1);
    EXPECT_EQ(vq::scwprintf(L"%s", "plain"), 5);
}
