// Character-by-character building, a string formatted from its own text, and an array
// that a getBuffer caller filled without a terminator.
#include "vqk/text/format.h"
#include "vqk/text/str.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

using vq::CStr;
using vq::CWStr;

TEST(CTStrAdd, AddFollowsTheTextAfterEveryOtherEdit) {
    CStr s;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        s.add() = char('a' + i % 26);
        expected += char('a' + i % 26);
        ASSERT_EQ(s.array().size(), expected.size() + 1);
    }
    EXPECT_EQ(s, expected.c_str());
    CWStr w(L"ab");
    w.add() = 0; // an unfilled slot ends the text: the next add() reuses it
    w.add() = L'c';
    EXPECT_EQ(w, L"abc");
    EXPECT_EQ(w.array().size(), 4u);

    // Each edit moves the first zero after an add(): add() must follow length(). The fuzz
    // target runs the edits it can model (fuzz/fuzz_text.cpp); these are the others.
    using Edit = void (*)(CStr&);
    const std::pair<Edit, const char*> edits[] = {
        {[](CStr& t) { t.reset("q\0rstu", vq::uint64(5)); }, "qx"}, // same size, a zero inside
        {[](CStr& t) { t.getBuffer(6)[0] = 0; }, "x"},
        {[](CStr& t) { t.array()[2] = 0; }, "abx"}};
    for (auto& e : edits) {
        SCOPED_TRACE(e.second);
        s = "abcd";
        s.add() = 'e';
        e.first(s);
        s.add() = 'x';
        EXPECT_EQ(s, e.second);
    }
    // Moving hands the text over; both strings go on adding where their text ends.
    CStr a;
    a.add() = 'x';
    a.add() = 'y';
    CStr b(std::move(a));
    a.add() = 'z';
    b.add() = '!';
    EXPECT_EQ(a, "z");
    EXPECT_EQ(b, "xy!");
    a = std::move(b);
    a.add() = '?';
    EXPECT_EQ(a, "xy!?");
}

TEST(CTStrFormat, FormatArgumentsAndPiecesMayBeTheStringsOwnText) {
    // Growing replaces the block an argument points into (the sanitizer build reports a
    // read of a freed block); a block big enough must not be printed over an argument.
    CStr s("abc");
    s.cformat("%s-%s-%s-%s", s.str(), s.str(), s.str(), s.str());
    EXPECT_EQ(s, "abc-abc-abc-abc");
    std::string big(3000, 'z');
    s = big.c_str();
    s.cformat("<%s>", s.str());
    EXPECT_EQ(s, ("<" + big + ">").c_str());
    s.reserve(100);
    s = "dir";
    s.cformat("%s/%s", s.str(), "name");
    EXPECT_EQ(s, "dir/name");
    s.cformat("<%s|%s>", s.str(), s.str());
    EXPECT_EQ(s, "<dir/name|dir/name>");
    s = "n=%i;%s";
    s.cformat(s.str(), 5, "end"); // the format itself
    EXPECT_EQ(s, "n=5;end");
    CWStr w(L"%ls|%ls");
    w.cformat(w.str(), L"left", L"a longer right side than the format");
    EXPECT_EQ(w, L"left|a longer right side than the format");

    s = "abc";
    s.format(vq::CFormat("x"), vq::CFormat(s));
    s.format(vq::CFormat(s), vq::CFormat("-"), vq::CFormat(s));
    EXPECT_EQ(s, "xabc-xabc");
    s = "tail"; // appending: earlier pieces grow the block a later piece points into
    std::string pad(200, 'p');
    vq::sprintf_s(s, vq::CFormat(pad.c_str()), vq::CFormat(s), true);
    EXPECT_EQ(s, ("tail" + pad + "tail").c_str());
    w = L"w";
    w.format(vq::CFormat(7, 2), vq::CFormat(w));
    EXPECT_EQ(w, L"07w");
}

TEST(CTStrReset, ACopyOfTheWholeOwnBlockSurvivesGrowth) {
    // The copy needs one element more than the block holds: growth must not free the
    // block before it is read (the sanitizer build reports a read of a freed block).
    using Reset = void (*)(CStr&, int);
    const std::pair<Reset, const char*> resets[] = {
        {[](CStr& s, int cap) { s.reset(s.str(), vq::uint64(cap)); }, "reset(p, n)"},
        {[](CStr& s, int cap) { s.reset(s.str(), 0, cap); }, "reset(p, from, to)"}};
    for (auto& r : resets) {
        SCOPED_TRACE(r.second);
        CStr s("abcdefg");
        int cap = int(s.array().capacity());
        std::memset(s.array().data() + 8, 'x', size_t(cap - 8));
        std::string block(s.array().data(), size_t(cap));
        r.first(s, cap);
        ASSERT_EQ(s.array().size(), unsigned(cap) + 1);
        EXPECT_EQ(std::string(s.array().data(), size_t(cap) + 1), block + '\0');
    }
}

TEST(CTStrEdit, AnArrayFilledWithoutATerminatorIsEditedSafely) {
    // The block holds exactly the three characters: nothing may be read or written past it.
    char block[3];
    CStr s;
    auto fill = [&](const char* three) {
        s.array().borrow(block, 3);
        std::memcpy(s.getBuffer(3), three, 3);
    };
    fill("ab ");
    EXPECT_EQ(s.length(), 3);
    s.trimEndSpaces();
    EXPECT_EQ(s, "ab");
    fill("  a");
    s.trimEndSpaces(false);
    EXPECT_EQ(s, "a");
    fill("abc");
    s.deleteSubStr(0, 0);
    EXPECT_EQ(s, "bc");
    fill("a-c");
    vq::TAc<char> x;
    x.push_back('x');
    s.deleteChars(x);
    EXPECT_EQ(s, "a-c");
    fill("abc");
    EXPECT_EQ(s.uppercase(), "ABC");
    EXPECT_EQ(s.lowercase(), "abc");
    EXPECT_EQ(s.insertStr(1, "-"), 1);
    EXPECT_EQ(s, "a-bc");
}
