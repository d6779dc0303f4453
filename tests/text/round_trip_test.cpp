// Random valid text through the encodings: the round trips that are defined must hold.
// Damaged input is the fuzz target's (fuzz/fuzz_text.cpp).
#include "vqk/text/convert.h"
#include "vqk/text/utf8.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

namespace {

// Valid UTF-8 of characters from every plane, without backslashes.
std::string randomUtf8(std::mt19937& rng, size_t maxLen) {
    static const unsigned ranges[][2] = {{32, 126}, {0x80, 0x7FF}, {0x800, 0xD7FF}, {0x10000, 0x10FFFF}};
    std::wstring w(std::uniform_int_distribution<size_t>(0, maxLen)(rng), L' ');
    for (wchar_t& c : w) {
        const unsigned* r = ranges[std::uniform_int_distribution<int>(0, 3)(rng)];
        c = wchar_t(std::uniform_int_distribution<unsigned>(r[0], r[1])(rng));
        c = c == L'\\' ? L'/' : c;
    }
    vq::CStr out;
    vq::wstrtoutf8(out, w.c_str());
    return out.str();
}

} // namespace

TEST(RoundTrip, ValidTextSurvivesEveryEncoding) {
    std::mt19937 rng(7);
    for (int round = 0; round < 2000; ++round) {
        std::string text = randomUtf8(rng, 40);
        vq::CWStr wide;
        vq::strtowstr(wide, text.c_str(), true);
        vq::CStr back;
        vq::wstrtostr(back, wide.str(), true);
        ASSERT_EQ(std::string(back.str()), text);

        vq::CStr p21;
        vq::utf8top21(p21, text.c_str());
        for (const char* p = p21.str(); *p; ++p)
            ASSERT_LT((unsigned char)*p, 128); // the escaped form is pure ASCII
        vq::p21toutf8(back, p21.str());
        ASSERT_EQ(std::string(back.str()), text);

        // The codec's own length query agrees with what it writes.
        int need = vq::utf8ToWide(text.c_str(), -1, nullptr, 0);
        std::unique_ptr<wchar_t[]> buf(new wchar_t[size_t(need)]);
        ASSERT_EQ(vq::utf8ToWide(text.c_str(), -1, buf.get(), need), need);
        if (need > 1) { // one short fails (a size of 0 is the length query itself)
            ASSERT_EQ(vq::utf8ToWide(text.c_str(), -1, buf.get(), need - 1), 0);
        }
    }
}

// A counted wide text ends at its count, even between the halves of a surrogate pair;
// a half on its own, high or low, becomes U+FFFD.
TEST(RoundTrip, CountedWideTextStopsAtItsCount) {
    const wchar_t pair[] = {wchar_t(0xD83D), wchar_t(0xDE00), wchar_t(0xDFFF), 0};
    struct Case { int len; const char* utf8; };
    const Case cases[] = {{1, "\xEF\xBF\xBD"}, {2, "\xF0\x9F\x98\x80"}, {3, "\xF0\x9F\x98\x80\xEF\xBF\xBD"}};
    for (const Case& c : cases) {
        char out[16] = {};
        int n = vq::wideToUtf8(pair, c.len, out, sizeof out);
        EXPECT_EQ(std::string(out, size_t(n > 0 ? n : 0)), c.utf8) << c.len;
    }
}
