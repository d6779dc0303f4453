#include "vqk/text/convert.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

using vq::CStr;
using vq::CWStr;

namespace {

// The ANSI code page is WINDOWS-1252 unless the environment names another.
bool defaultAnsi() {
    const char* acp = std::getenv("VQK_ACP");
    return !acp || !*acp || std::strcmp(acp, "WINDOWS-1252") == 0;
}

} // namespace

TEST(Conversion, EveryFunctionEmptiesItsTargetAndAcceptsNull) {
    CStr out("stale");
    CWStr wout(L"stale");
    vq::wstrtostr(out, nullptr, true);
    EXPECT_TRUE(out.empty());
    out = "stale";
    vq::wstrtostr(out, L"", false);
    EXPECT_TRUE(out.empty());
    vq::strtowstr(wout, nullptr, false);
    EXPECT_TRUE(wout.empty());
    out = "stale";
    vq::wstrtoutf8(out, nullptr);
    EXPECT_TRUE(out.empty());
    out = "stale";
    vq::ansitoutf8(out, nullptr);
    EXPECT_TRUE(out.empty());
    out = "stale";
    vq::utf8top21(out, nullptr);
    EXPECT_TRUE(out.empty());
    out = "stale";
    vq::p21toutf8(out, nullptr);
    EXPECT_TRUE(out.empty());
    CStr empty;
    out = "stale";
    vq::translit(out, empty);
    EXPECT_TRUE(out.empty());
}

namespace {
// A string class built on CStr that counts how often it is emptied through the
// virtual reset with an empty text.
struct WatchedStr : vq::CStr {
    using vq::CStr::reset;
    void reset(const char* s) override {
        if (s && !*s)
            ++emptied;
        vq::CStr::reset(s);
    }
    int emptied = 0;
};
} // namespace

TEST(Conversion, EveryConversionFirstEmptiesItsTargetThroughTheVirtualReset) {
    WatchedStr w;
    w.CStr::reset("old");
    vq::wstrtostr(w, nullptr, true);
    EXPECT_EQ(w.emptied, 1);
    EXPECT_TRUE(w.empty());
    vq::wstrtostr(w, L"new", false);
    EXPECT_EQ(w.emptied, 2);
    EXPECT_EQ(w, "new");
    vq::wstrtoutf8(w, L"x");
    vq::ansitoutf8(w, "y");
    vq::utf8top21(w, "z");
    vq::p21toutf8(w, "q");
    vq::translit(w, w);
    EXPECT_EQ(w.emptied, 7);
    EXPECT_EQ(w, "q");
    vq::ansitoutf8(w, nullptr);
    vq::utf8top21(w, nullptr);
    vq::p21toutf8(w, nullptr);
    EXPECT_EQ(w.emptied, 10);
    EXPECT_TRUE(w.empty());
}

TEST(Conversion, Utf8RoundTripsEveryPlane) {
    const wchar_t* text = L"A\u00e9\u0416\u20ac\uFFFD\U00010348\U0001F600z";
    CStr n;
    vq::wstrtostr(n, text, true);
    EXPECT_EQ(n, "A\xC3\xA9\xD0\x96\xE2\x82\xAC\xEF\xBF\xBD\xF0\x90\x8D\x88\xF0\x9F\x98\x80z");
    CWStr w;
    vq::strtowstr(w, n.str(), true);
    EXPECT_EQ(w, text);
    CStr u;
    vq::wstrtoutf8(u, text);
    EXPECT_EQ(u, n);
}

TEST(Conversion, MalformedUtf8BecomesReplacementCharacters) {
    CWStr w;
    // A lone continuation byte, a truncated sequence, an overlong form and an encoded
    // surrogate each decode to U+FFFD; the text around them survives.
    vq::strtowstr(w, "a\x80" "b\xE2\x82" "c\xC0\xAF" "d\xED\xA0\x80" "e", true);
    std::wstring got(w.str());
    EXPECT_EQ(got.front(), L'a');
    EXPECT_EQ(got.back(), L'e');
    EXPECT_NE(got.find(L'b'), std::wstring::npos);
    EXPECT_NE(got.find(L'c'), std::wstring::npos);
    EXPECT_NE(got.find(L'd'), std::wstring::npos);
    for (wchar_t c : got)
        EXPECT_TRUE(c < 128 || c == 0xFFFD) << int(c);
}

TEST(Conversion, SurrogatePairsInWideTextAreJoined) {
    // Wide text that came from UTF-16 units keeps the pair; UTF-8 gets one character.
    const wchar_t pair[] = {L'x', wchar_t(0xD83D), wchar_t(0xDE00), L'y', 0};
    CStr n;
    vq::wstrtoutf8(n, pair);
    EXPECT_EQ(n, "x\xF0\x9F\x98\x80y");
    const wchar_t lone[] = {wchar_t(0xD83D), L'y', 0};
    vq::wstrtoutf8(n, lone);
    EXPECT_EQ(n, "\xEF\xBF\xBDy");
}

TEST(Conversion, AnsiCodePageIsWindows1252ByDefault) {
    if (!defaultAnsi())
        GTEST_SKIP() << "VQK_ACP names another code page";
    CWStr w;
    vq::strtowstr(w, "\x80\xE9\x9F" "A", false); // euro sign, e acute, Y diaeresis
    EXPECT_EQ(w, L"\u20ac\u00e9\u0178A");
    CStr n;
    vq::wstrtostr(n, L"\u20ac\u00e9\u0178A", false);
    EXPECT_EQ(n, "\x80\xE9\x9F" "A");
    // Characters the code page lacks become '?', a surrogate pair as one character.
    vq::wstrtostr(n, L"\u0416\U0001F600!", false);
    EXPECT_EQ(n, "?" "?!");
    const wchar_t pair[] = {wchar_t(0xD83D), wchar_t(0xDE00), 0};
    vq::wstrtostr(n, pair, false);
    EXPECT_EQ(n, "?");
    vq::ansitoutf8(n, "caf\xE9 \x80");
    EXPECT_EQ(n, "caf\xC3\xA9 \xE2\x82\xAC");
}

TEST(Conversion, Utf8ToP21EscapesRunsOfUnits) {
    CStr out;
    vq::utf8top21(out, "A\xC3\xA9" "B");
    EXPECT_EQ(out, "A\\X2\\00E9\\X0\\B");
    EXPECT_EQ(out.length(), 14);
    vq::utf8top21(out, "x\xC3\xA9\xD0\x96");
    EXPECT_EQ(out, "x\\X2\\00E90416\\X0\\");
    vq::utf8top21(out, "it's a \\ path");
    EXPECT_EQ(out, "it's a \\ path"); // quoting is the caller's business
    // Beyond U+FFFF: two surrogate units.
    vq::utf8top21(out, "\xF0\x9F\x98\x80!");
    EXPECT_EQ(out, "\\X2\\D83DDE00\\X0\\!");
}

TEST(Conversion, P21ToUtf8DecodesEscapesAndJoinsPairs) {
    CStr out;
    vq::p21toutf8(out, "\\X2\\00E9\\X0\\");
    EXPECT_EQ(out, "\xC3\xA9");
    vq::p21toutf8(out, "a\\X2\\00E90416"); // an unterminated escape runs to the end
    EXPECT_EQ(out, "a\xC3\xA9\xD0\x96");
    vq::p21toutf8(out, "\\X2\\D83DDE00\\X0\\!");
    EXPECT_EQ(out, "\xF0\x9F\x98\x80!");
    vq::p21toutf8(out, "\\S\\A \\X\\E9 \\P1\\");
    EXPECT_EQ(out, "\\S\\A \\X\\E9 \\P1\\"); // other escapes pass through
    if (defaultAnsi()) {
        vq::p21toutf8(out, "caf\xE9");
        EXPECT_EQ(out, "caf\xC3\xA9");
    }
    // Round trip through both directions.
    const char* text = "\xE2\x82\xAC 5 \xF0\x90\x8D\x88 ok";
    CStr p21;
    vq::utf8top21(p21, text);
    vq::p21toutf8(out, p21.str());
    EXPECT_EQ(out, text);
    // A short or broken hex run never reads past the end, and cannot cut the text.
    vq::p21toutf8(out, "\\X2\\0");
    EXPECT_EQ(out, "");
    vq::p21toutf8(out, "\\X2\\zzzz00E9\\X0\\ok");
    EXPECT_EQ(out, "\xC3\xA9ok");
}

TEST(Conversion, TranslitSpellsCyrillicInLatin) {
    CStr in("\xCF\xF0\xE8\xE2\xE5\xF2 ok"), out; // "Privet" in Windows-1251
    vq::translit(out, in);
    EXPECT_EQ(out, "Privet ok");
    in = "\xC6\xE8\xE7\xED\xFC\xDA"; // the soft and the hard sign take their own marks
    vq::translit(out, in);
    EXPECT_EQ(out, "Zhizn\"'");
    // The spellings of several letters and the marks, both cases, in one text:
    // Kh, Ts, Ch, Sh, the hard sign, Y, the soft sign, E with a mark, Ye.
    in = "\xD5\xD6\xD7\xD8\xDA\xDB\xDC\xDD\xDF|\xF5\xF6\xF7\xF8\xFA\xFB\xFC\xFD\xFF";
    vq::translit(out, in);
    EXPECT_EQ(out, "KhTsChSh''I\"'EYe|khtschsh''i\"'eye");
    // Every code from 192 to 255 gives a non-empty pure-ASCII spelling.
    // The target may be the source itself.
    in = "\xC4\xE0";
    vq::translit(in, in);
    EXPECT_EQ(in, "Da");
    for (int c = 192; c < 256; ++c) {
        CStr one(1, char(c));
        vq::translit(out, one);
        ASSERT_FALSE(out.empty()) << c;
        for (const char* p = out.str(); *p; ++p)
            ASSERT_LT((unsigned char)*p, 128) << c;
    }
}

TEST(Conversion, GetStringTokenKeepsItsRestartRule) {
    char text[] = "a,,bc,d";
    vq::TVector<char*> tokens;
    EXPECT_TRUE(vq::getStringToken(tokens, text, ","));
    // The second pass restarts one past "a" (at the second comma) and finds "bc"; the
    // third restarts at "bc" + 3 = the end, so "d" is lost.
    ASSERT_EQ(tokens.size(), 2u);
    EXPECT_STREQ(tokens[0], "a");
    EXPECT_STREQ(tokens[1], "bc");

    char plain[] = "x  yz w";
    EXPECT_TRUE(vq::getStringToken(tokens, plain, " "));
    ASSERT_EQ(tokens.size(), 2u); // the doubled blank loses "w" the same way
    EXPECT_STREQ(tokens[1], "yz");

    char simple[] = "one;two;three";
    EXPECT_TRUE(vq::getStringToken(tokens, simple, ";"));
    ASSERT_EQ(tokens.size(), 3u);
    EXPECT_STREQ(tokens[2], "three");
    EXPECT_EQ(tokens[0], simple); // pointers into the caller's text

    char none[] = ",,,";
    EXPECT_FALSE(vq::getStringToken(tokens, none, ","));
    EXPECT_EQ(tokens.size(), 0u);
    EXPECT_FALSE(vq::getStringToken(tokens, nullptr, ","));
    char some[] = "a";
    EXPECT_FALSE(vq::getStringToken(tokens, some, nullptr));
}

// The code page is read from the environment once per process, so other code pages are
// checked in a child run of this same test program.
TEST(Conversion, EnvironmentChoosesTheAnsiCodePage) {
    const char* expect = std::getenv("VQK_TEXT_ACP_EXPECT");
    if (expect) { // the child
        CWStr w;
        vq::strtowstr(w, "\xC4\x80", false);
        if (std::strcmp(expect, "1251") == 0) {
            EXPECT_EQ(w, L"\u0414\u0402"); // Cyrillic De, Dje
            CStr n;
            vq::wstrtostr(n, L"\u0414\u00e9", false);
            EXPECT_EQ(n, "\xC4?");
        } else {
            EXPECT_EQ(w, L"\u00c4\u20ac"); // unknown name: WINDOWS-1252
        }
        return;
    }
    std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    auto run = [&](const char* acp, const char* mode) {
        std::string cmd = std::string("VQK_ACP=") + acp + " VQK_TEXT_ACP_EXPECT=" + mode + " '" +
                          self +
                          "' --gtest_filter=Conversion.EnvironmentChoosesTheAnsiCodePage"
                          " > /dev/null 2>&1";
        return std::system(cmd.c_str());
    };
    EXPECT_EQ(run("WINDOWS-1251", "1251"), 0);
    EXPECT_EQ(run("NO-SUCH-CODE-PAGE", "1252"), 0);
}
