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

TEST(CTStrAdd, BuildingOneCharacterAtATimeKeepsTheDefinedResult) {
    CStr s;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        char c = char('a' + i % 26);
        s.add() = c;
        expected += c;
        ASSERT_EQ(s.array().size(), expected.size() + 1);
    }
    EXPECT_EQ(s, expected.c_str());
    EXPECT_EQ(s.length(), 3000);

    // An unfilled slot (left zero) ends the text: the next add() reuses it.
    CWStr w(L"ab");
    w.add() = 0;
    EXPECT_EQ(w.array().size(), 4u);
    w.add() = L'c';
    EXPECT_EQ(w, L"abc");
    EXPECT_EQ(w.array().size(), 4u);
}

TEST(CTStrAdd, AddCountsAgainAfterOtherMembersChangedTheText) {
    // Each edit leaves the array's size as the last add() left it but moves the
    // first zero; add() must follow length(), not its memory of the last call.
    CStr s("abcd");
    s.add() = 'e';
    s[1] = 0;
    s.add() = 'x';
    EXPECT_EQ(s, "ax");
    EXPECT_EQ(s.array().size(), 3u);

    s = "abcd";
    s.add() = 'e';
    s.replace('c', 0);
    s.add() = 'x';
    EXPECT_EQ(s, "abx");

    s = "abcd";
    s.add() = 'e';
    s.deleteSubStr(2, -1);
    s.add() = 'x';
    EXPECT_EQ(s, "abx");

    s = "abcd";
    s.add() = 'e';
    s.reset("q\0rstu", vq::uint64(5)); // same size, a zero inside
    s.add() = 'x';
    EXPECT_EQ(s, "qx");

    s = "abcd";
    s.add() = 'e';
    s.getBuffer(6)[0] = 0;
    s.add() = 'x';
    EXPECT_EQ(s, "x");

    s = "abcd";
    s.add() = 'e';
    s.array()[2] = 0;
    s.add() = 'x';
    EXPECT_EQ(s, "abx");

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

TEST(CTStrFormat, FormatAndArgumentsMayBeTheStringsOwnText) {
    // Growing replaces the block the argument points into: it must still be readable
    // while printing (the sanitizer build reports a read of a freed block).
    CStr s("abc");
    s.cformat("%s-%s-%s-%s", s.str(), s.str(), s.str(), s.str());
    EXPECT_EQ(s, "abc-abc-abc-abc");
    std::string big(3000, 'z');
    s = big.c_str();
    s.cformat("<%s>", s.str());
    EXPECT_EQ(s, ("<" + big + ">").c_str());

    // The block is big enough: the new text must not be printed over the argument
    // it is still reading.
    s.reserve(100);
    s = "dir";
    s.cformat("%s/%s", s.str(), "name");
    EXPECT_EQ(s, "dir/name");
    s.cformat("<%s|%s>", s.str(), s.str());
    EXPECT_EQ(s, "<dir/name|dir/name>");

    // The format itself taken from the string.
    s = "n=%i;%s";
    s.cformat(s.str(), 5, "end");
    EXPECT_EQ(s, "n=5;end");
    CWStr w(L"%ls|%ls");
    w.cformat(w.str(), L"left", L"a longer right side than the format");
    EXPECT_EQ(w, L"left|a longer right side than the format");
}

TEST(CTStrFormat, PiecesMayBeTheStringsOwnText) {
    CStr s("abc");
    s.format(vq::CFormat("x"), vq::CFormat(s));
    EXPECT_EQ(s, "xabc");
    s.format(vq::CFormat(s), vq::CFormat("-"), vq::CFormat(s));
    EXPECT_EQ(s, "xabc-xabc");
    // Appending: the earlier pieces grow the block the later piece points into.
    s = "tail";
    std::string pad(200, 'p');
    vq::sprintf_s(s, vq::CFormat(pad.c_str()), vq::CFormat(s), true);
    EXPECT_EQ(s, ("tail" + pad + "tail").c_str());
    CWStr w(L"w");
    w.format(vq::CFormat(7, 2), vq::CFormat(w));
    EXPECT_EQ(w, L"07w");
}

TEST(CTStrEdit, AnArrayFilledWithoutATerminatorIsEditedSafely) {
    // The block holds exactly the three characters: nothing may be read or written
    // past it.
    char block[3];
    CStr s;
    s.array().borrow(block, 3);
    std::memcpy(s.getBuffer(3), "ab ", 3);
    EXPECT_EQ(s.length(), 3);
    s.trimEndSpaces();
    EXPECT_EQ(s, "ab");

    s.array().borrow(block, 3);
    std::memcpy(s.getBuffer(3), "  a", 3);
    s.trimEndSpaces(false);
    EXPECT_EQ(s, "a");

    s.array().borrow(block, 3);
    std::memcpy(s.getBuffer(3), "abc", 3);
    s.deleteSubStr(0, 0);
    EXPECT_EQ(s, "bc");

    s.array().borrow(block, 3);
    std::memcpy(s.getBuffer(3), "a-c", 3);
    vq::TAc<char> dash;
    dash.push_back('x');
    s.deleteChars(dash);
    EXPECT_EQ(s, "a-c");

    s.array().borrow(block, 3);
    std::memcpy(s.getBuffer(3), "abc", 3);
    EXPECT_EQ(s.uppercase(), "ABC");
    EXPECT_EQ(s.lowercase(), "abc");
    EXPECT_EQ(s.insertStr(1, "-"), 1);
    EXPECT_EQ(s, "a-bc");
}
