#include "vqk/platform/bounded.h"
#include "vqk/text/bounded.h"
#include "expect_text.h"

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
    EXPECT_GIVES(vq::strcpy(d, sizeof d, "hello"), 0, d, "hello");
    EXPECT_GIVES(vq::strcpy(d, sizeof d, "hello!"), ERANGE, d, "");
    std::strcpy(d, "abc");
    EXPECT_GIVES(vq::strcpy(d, sizeof d, nullptr), EINVAL, d, "");
    std::strcpy(d, "abc");
    EXPECT_GIVES(vq::strcpy(d, 0, "x"), EINVAL, d, "abc"); // zero size: untouched
    EXPECT_EQ(vq::strcpy(static_cast<char*>(nullptr), 4, "x"), EINVAL);
    EXPECT_EQ(vq::strcpy(d, "arr"), 0);
    EXPECT_GIVES(vq::strcat(d, sizeof d, "12"), 0, d, "arr12");
    EXPECT_GIVES(vq::strcat(d, sizeof d, "3"), ERANGE, d, "");
    char unterminated[3] = {'a', 'b', 'c'};
    EXPECT_EQ(vq::strcat(unterminated, sizeof unterminated, ""), EINVAL);
    EXPECT_EQ(unterminated[0], 0);
    wchar_t w[4];
    EXPECT_EQ(vq::wcscpy(w, 4, L"abc"), 0);
    EXPECT_EQ(vq::wcscat(w, 4, L"d"), ERANGE);
    EXPECT_EQ(w[0], 0);
    EXPECT_EQ(vq::wcscpy(w, L"x"), 0);
    EXPECT_GIVES(vq::wcscat(w, L"yz"), 0, w, L"xyz");
}

TEST(Bounded, StrncpyCountsAndTruncates) {
    struct Case { const char* src; size_t count; int rc; const char* out; };
    const Case cases[] = {{"abcdef", 3, 0, "abc"},          {"abcdef", 5, ERANGE, ""},
                          {"ab", 10, 0, "ab"},              {"abcdef", pf::kTruncate, pf::kStruncate, "abcd"},
                          {"abcd", pf::kTruncate, 0, "abcd"}, {"xyz", 0, 0, ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.src << " count " << c.count);
        char d[5];
        EXPECT_GIVES(vq::strncpy(d, sizeof d, c.src, c.count), c.rc, d, c.out);
    }
    char d[5];
    EXPECT_EQ(vq::strncpy(static_cast<char*>(nullptr), 0, nullptr, 0), 0);
    EXPECT_EQ(vq::strncpy(d, sizeof d, nullptr, 2), EINVAL);
    wchar_t w[3];
    EXPECT_GIVES(vq::strncpy(w, 3, L"wide", pf::kTruncate), pf::kStruncate, w, L"wi");
}

TEST(Bounded, CaseMappingAndComparison) {
    char s[8] = "MiXeD";
    EXPECT_GIVES(vq::strlwr(s, sizeof s), 0, s, "mixed");
    EXPECT_GIVES(vq::strup(s, sizeof s), 0, s, "MIXED");
    EXPECT_GIVES(vq::strup(s, 3), EINVAL, s, ""); // not terminated within the size given
    EXPECT_EQ(vq::strlwr(static_cast<char*>(nullptr), 4), EINVAL);
    wchar_t w[8] = L"\u00c9Ab";
    EXPECT_EQ(vq::strlwr(w, 8), 0);
    EXPECT_EQ(w[1], L'a');
    // The "C" locale maps ASCII letters only, a Unicode one every letter through wide text.
    char u[16] = "caf\xC3\xA9 \xD0\xB6";
    EXPECT_GIVES(vq::strupr(u, sizeof u), 0, u, "CAF\xC3\xA9 \xD0\xB6");
    std::string old = std::setlocale(LC_CTYPE, nullptr);
    if (std::setlocale(LC_CTYPE, "C.UTF-8")) {
        EXPECT_GIVES(vq::strupr(u, sizeof u), 0, u, "CAF\xC3\x89 \xD0\x96");
        char bytes[8] = "\xC3\xA9x";
        EXPECT_GIVES(vq::strup(bytes, sizeof bytes), 0, bytes, "\xC3\xA9X"); // byte-wise: sequences untouched
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
    EXPECT_STREQ(vq::strtok(text, ",", &ctx), "a");
    EXPECT_STREQ(vq::strtok(nullptr, ",", &ctx), "bc");
    EXPECT_EQ(vq::strtok(nullptr, ",", &ctx), nullptr);
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
    struct Case { int value; size_t size; int radix; int rc; const char* out; };
    const Case cases[] = {{-123, 40, 10, 0, "-123"}, {255, 40, 16, 0, "ff"},
                          {-1, 40, 16, 0, "ffffffff"}, // the bits, no sign
                          {INT_MIN, 40, 10, 0, "-2147483648"}, {5, 40, 2, 0, "101"},
                          {35, 40, 36, 0, "z"},        {5, 40, 1, EINVAL, ""},
                          {-12, 3, 10, ERANGE, ""},    {-12, 4, 10, 0, "-12"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.value << " radix " << c.radix << " size " << c.size);
        char b[40];
        EXPECT_GIVES(vq::itoa(c.value, b, c.size, c.radix), c.rc, b, c.out);
    }
    EXPECT_EQ(vq::itoa(1, nullptr, 4, 10), EINVAL);
}

TEST(Bounded, MultibyteToWide) {
    size_t n = 99;
    wchar_t w[4];
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, "abc", pf::kTruncate), 0);
    EXPECT_GIVES(n, 4u, w, L"abc");
    EXPECT_EQ(vq::mbstowcs(&n, nullptr, 0, "abcdef", pf::kTruncate), 0);
    EXPECT_EQ(n, 7u); // the size needed, terminator included
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, "abcdef", 10), ERANGE);
    EXPECT_EQ(w[0], 0);
    EXPECT_GIVES(vq::mbstowcs(&n, w, 4, "abcdef", pf::kTruncate), pf::kStruncate, w, L"abc");
    EXPECT_GIVES(vq::mbstowcs(&n, w, 4, "abcdef", 2), 0, w, L"ab");
    EXPECT_EQ(n, 3u);
    EXPECT_EQ(vq::mbstowcs(&n, w, 4, nullptr, 2), EINVAL);
    EXPECT_EQ(vq::mbstowcs(&n, nullptr, 4, "a", 2), EINVAL);
    EXPECT_EQ(vq::mbstowcs(&n, w, 0, "a", 2), EINVAL);
}

TEST(Bounded, PrintingFailsInsteadOfCutting) {
    char b[6];
    EXPECT_GIVES(vq::sprintf(b, sizeof b, "%i-%s", 12, "ab"), 5, b, "12-ab");
    EXPECT_GIVES(vq::sprintf(b, sizeof b, "%i-%s", 123, "ab"), -1, b, "");
    EXPECT_EQ(vq::sprintf(b, "%s", "arr"), 3);
    EXPECT_EQ(vq::sprintf(b, 0, "x"), -1);
    EXPECT_EQ(vq::sprintf(b, sizeof b, nullptr), -1);
    wchar_t w[4];
    EXPECT_EQ(vq::sprintf(w, 4, L"%d", 123), 3);
    EXPECT_EQ(vq::sprintf(w, 4, L"%d", 1234), -1);
    EXPECT_EQ(w[0], 0);
    EXPECT_EQ(vq::sprintf(w, L"%ls", L"ok"), 2);

    EXPECT_EQ(vq::scprintf("%s-%i", "part", 7), 6);
    EXPECT_EQ(vq::scprintf(nullptr), -1);
    EXPECT_EQ(vq::scwprintf(L"%ls!", L"\u00e9\u00e9"), 3);
    EXPECT_EQ(vq::scwprintf(L"%ls", std::wstring(1000, L'x').c_str()), 1000);
    // Narrow text the "C" locale cannot decode fails at once instead of retrying. (The
    // Windows runtime's "C" locale decodes every byte, so there is nothing to provoke.)
    if (!VQK_TARGET_WINDOWS) {
        EXPECT_EQ(vq::scwprintf(L"%S", "\xC3\xA9"), -1);
    }
    EXPECT_EQ(vq::scwprintf(L"%hs", "plain"), 5);
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
    fixed.tm_mday = 2;
    fixed.tm_hour = 2;
    fixed.tm_min = 3;
    fixed.tm_sec = 55;
    fixed.tm_wday = 3;
    char buf[26];
    EXPECT_GIVES(pf::asctime_s(buf, sizeof buf, &fixed), 0, buf, "Wed Jan 02 02:03:55 1980\n");
    EXPECT_GIVES(pf::asctime_s(buf, 25, &fixed), EINVAL, buf, "");
    EXPECT_EQ(pf::asctime_s(buf, sizeof buf, nullptr), EINVAL);
    // Every field's last valid value is printed (a leap second included); one past it is refused.
    const std::pair<int std::tm::*, int> last[] = {{&std::tm::tm_wday, 6},  {&std::tm::tm_mon, 11},
                                                   {&std::tm::tm_mday, 31}, {&std::tm::tm_hour, 23},
                                                   {&std::tm::tm_min, 59},  {&std::tm::tm_sec, 60},
                                                   {&std::tm::tm_year, 8099}};
    for (const auto& f : last) {
        std::tm t = fixed;
        t.*f.first = f.second;
        EXPECT_EQ(pf::asctime_s(buf, sizeof buf, &t), 0) << f.second;
        t.*f.first = f.second + 1;
        EXPECT_EQ(pf::asctime_s(buf, sizeof buf, &t), EINVAL) << f.second + 1;
    }
}
