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

// Every conversion replaces what its target held, and null input means empty text.
TEST(Conversion, EveryConversionReplacesItsTargetAndAcceptsNull) {
    using Conv = void (*)(CStr&);
    const std::pair<Conv, const char*> cases[] = {
        {[](CStr& o) { vq::wstrtostr(o, nullptr, true); }, ""},
        {[](CStr& o) { vq::wstrtostr(o, L"new", false); }, "new"},
        {[](CStr& o) { vq::wstrtoutf8(o, nullptr); }, ""},
        {[](CStr& o) { vq::ansitoutf8(o, nullptr); }, ""},
        {[](CStr& o) { vq::utf8top21(o, nullptr); }, ""},
        {[](CStr& o) { vq::p21toutf8(o, nullptr); }, ""},
        {[](CStr& o) { vq::p21toutf8(o, "q"); }, "q"},
        {[](CStr& o) { CStr empty; vq::translit(o, empty); }, ""}};
    for (const auto& c : cases) {
        CStr out("stale");
        c.first(out);
        EXPECT_EQ(out, c.second);
    }
    CWStr wout(L"stale");
    vq::strtowstr(wout, nullptr, false);
    EXPECT_TRUE(wout.empty());
}

TEST(Conversion, Utf8RoundTripsEveryPlaneAndJoinsSurrogatePairs) {
    const wchar_t* text = L"A\u00e9\u0416\u20ac\uFFFD\U00010348\U0001F600z";
    CStr n, u;
    vq::wstrtostr(n, text, true);
    EXPECT_EQ(n, "A\xC3\xA9\xD0\x96\xE2\x82\xAC\xEF\xBF\xBD\xF0\x90\x8D\x88\xF0\x9F\x98\x80z");
    CWStr w;
    vq::strtowstr(w, n.str(), true);
    EXPECT_EQ(w, text);
    vq::wstrtoutf8(u, text);
    EXPECT_EQ(u, n);
    // Wide text from UTF-16 units keeps the pair; a lone half becomes U+FFFD.
    const wchar_t pair[] = {L'x', wchar_t(0xD83D), wchar_t(0xDE00), L'y', 0};
    vq::wstrtoutf8(n, pair);
    EXPECT_EQ(n, "x\xF0\x9F\x98\x80y");
    const wchar_t lone[] = {wchar_t(0xD83D), L'y', 0};
    vq::wstrtoutf8(n, lone);
    EXPECT_EQ(n, "\xEF\xBF\xBDy");
    // A lone continuation byte, a truncated sequence, an overlong form and an encoded
    // surrogate each decode to U+FFFD; the text around them survives.
    vq::strtowstr(w, "a\x80" "b\xE2\x82" "c\xC0\xAF" "d\xED\xA0\x80" "e", true);
    std::wstring got(w.str()), letters;
    for (wchar_t c : got) {
        EXPECT_TRUE(c < 128 || c == 0xFFFD) << int(c);
        if (c < 128)
            letters += c;
    }
    EXPECT_EQ(letters, L"abcde");
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
    vq::p21toutf8(n, "caf\xE9 \x81!"); // a byte the code page leaves undefined keeps its value
    EXPECT_EQ(n, "caf\xC3\xA9 \xC2\x81!");
}

TEST(Conversion, P21EscapesBothWays) {
    const char* toP21[][2] = {{"A\xC3\xA9" "B", "A\\X2\\00E9\\X0\\B"},
                              {"x\xC3\xA9\xD0\x96", "x\\X2\\00E90416\\X0\\"},
                              {"it's a \\ path", "it's a \\ path"}, // quoting is the caller's
                              {"\xF0\x9F\x98\x80!", "\\X2\\D83DDE00\\X0\\!"}};
    CStr out, back;
    for (auto& c : toP21) {
        SCOPED_TRACE(c[0]);
        vq::utf8top21(out, c[0]);
        EXPECT_EQ(out, c[1]);
        EXPECT_EQ(out.length(), int(std::strlen(c[1])));
        vq::p21toutf8(back, out.str());
        EXPECT_EQ(back, c[0]);
    }
    const char* fromP21[][2] = {{"a\\X2\\00E90416", "a\xC3\xA9\xD0\x96"}, // unterminated: to the end
                                {"\\S\\A \\X\\E9 \\P1\\", "\\S\\A \\X\\E9 \\P1\\"}, // passed through
                                {"\\X2\\0", ""}, // a short run never reads past the end
                                {"\\X2\\zzzz00E9\\X0\\ok", "\xC3\xA9ok"}};
    for (auto& c : fromP21) {
        SCOPED_TRACE(c[0]);
        vq::p21toutf8(out, c[0]);
        EXPECT_EQ(out, c[1]);
    }
}

TEST(Conversion, TranslitSpellsCyrillicInLatin) {
    const char* cases[][2] = {{"\xCF\xF0\xE8\xE2\xE5\xF2 ok", "Privet ok"}, // Windows-1251
                              {"\xC6\xE8\xE7\xED\xFC\xDA", "Zhizn\"'"},
                              // Kh, Ts, Ch, Sh, hard sign, Y, soft sign, E with a mark, Ye.
                              {"\xD5\xD6\xD7\xD8\xDA\xDB\xDC\xDD\xDF|\xF5\xF6\xF7\xF8\xFA\xFB\xFC\xFD\xFF",
                               "KhTsChSh''I\"'EYe|khtschsh''i\"'eye"}};
    CStr out;
    for (auto& c : cases) {
        CStr in(c[0]);
        vq::translit(out, in);
        EXPECT_EQ(out, c[1]);
    }
    CStr in("\xC4\xE0");
    vq::translit(in, in); // the target may be the source itself
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
    // Each pass restarts past the previous token plus one, so a doubled separator
    // swallows the following token: "d" and "w" are lost.
    struct Case { const char* text; const char* sep; std::vector<std::string> tokens; };
    const Case cases[] = {{"a,,bc,d", ",", {"a", "bc"}},
                          {"x  yz w", " ", {"x", "yz"}},
                          {"one;two;three", ";", {"one", "two", "three"}},
                          {",,,", ",", {}}};
    vq::TVector<char*> tokens;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::string text = c.text;
        EXPECT_EQ(vq::getStringToken(tokens, &text[0], c.sep), !c.tokens.empty());
        ASSERT_EQ(tokens.size(), c.tokens.size());
        for (size_t i = 0; i < c.tokens.size(); ++i)
            EXPECT_EQ(tokens[i], c.tokens[i]);
        if (!c.tokens.empty()) {
            EXPECT_EQ(tokens[0], &text[0]); // pointers into the caller's text
        }
    }
    EXPECT_FALSE(vq::getStringToken(tokens, nullptr, ","));
    char some[] = "a";
    EXPECT_FALSE(vq::getStringToken(tokens, some, nullptr));
}

// The code page is read once per process: other code pages are checked in a child run.
TEST(Conversion, EnvironmentChoosesTheAnsiCodePage) {
    if (const char* expect = std::getenv("VQK_TEXT_ACP_EXPECT")) {
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
        std::string cmd = std::string("VQK_ACP=") + acp + " VQK_TEXT_ACP_EXPECT=" + mode + " '" + self +
                          "' --gtest_filter=Conversion.EnvironmentChoosesTheAnsiCodePage > /dev/null 2>&1";
        return std::system(cmd.c_str());
    };
    EXPECT_EQ(run("WINDOWS-1251", "1251"), 0);
    EXPECT_EQ(run("NO-SUCH-CODE-PAGE", "1252"), 0);
}
