// Random and damaged input through every parser of the text layer: nothing may crash or
// read out of bounds (the sanitizer build checks that), and the round trips that are
// defined must hold.
#include "vqk/text/clean.h"
#include "vqk/text/convert.h"
#include "vqk/text/string_csv.h"
#include "vqk/text/substring.h"
#include "vqk/text/utf8.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>

namespace {

// Bytes drawn mostly from the characters the parsers care about.
std::string randomBytes(std::mt19937& rng, size_t maxLen) {
    static const char interesting[] = "\\X20;,\"\n\r#aE9\xC3\xA9\xF0\x9F\x98\x80\x80\xFF ";
    std::uniform_int_distribution<size_t> len(0, maxLen);
    std::uniform_int_distribution<int> pick(0, 3);
    std::uniform_int_distribution<size_t> from(0, sizeof interesting - 2);
    std::uniform_int_distribution<int> any(1, 255);
    std::string s(len(rng), ' ');
    for (char& c : s)
        c = pick(rng) ? interesting[from(rng)] : char(any(rng));
    return s;
}

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

TEST(Robustness, RandomBytesThroughEveryParser) {
    std::mt19937 rng(20261122);
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = randomBytes(rng, 64);
        // An exactly sized heap copy for the length-taking parser.
        std::unique_ptr<char[]> exact(new char[bytes.size() + 1]);
        std::memcpy(exact.get(), bytes.data(), bytes.size());
        std::unordered_map<int, std::string> table;
        vq::parseStringCsv(exact.get(), bytes.size(), table);

        const char* s = bytes.c_str(); // stops at an embedded zero, as callers' text does
        vq::CStr out, in(s);
        vq::CWStr wide;
        vq::p21toutf8(out, s);
        vq::utf8top21(out, s);
        vq::strtowstr(wide, s, true);
        vq::wstrtostr(out, wide.str(), false);
        vq::ansitoutf8(out, s);
        vq::translit(out, in);
        vq::numSubStr(s, "\\X");
        vq::replaceSubStr(in, "\\", "\\\\");
        vq::TVectorC<vq::CStr> parts;
        vq::splitStrByToken(parts, s, ";", round % 2 == 0);
        std::string copy = bytes; // pointers must stay in the caller's text
        vq::TVector<char*> tokens;
        vq::getStringToken(tokens, &copy[0], ",;");
        for (char* t : tokens)
            ASSERT_TRUE(t >= &copy[0] && t < &copy[0] + copy.size());
        vq::correctLabel(in, true);
        vq::correctFileName(&copy[0]);
        vq::correctToASCII(&copy[0]);
        for (char c : std::string(copy.c_str()))
            ASSERT_LT((unsigned char)c, 128);
    }
}

TEST(Robustness, ValidTextSurvivesEveryRoundTrip) {
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
