#include "vqk/text/str.h"
#include "vqk/text/str_format.h"
#include "vqk/text/vector.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

// The capacity an owned block of capacity c reaches when n elements are needed.
int grown(int c, int n) { return n + (c > 2047 ? c / 4 : (c > 4 ? c / 2 : 4)); }

} // namespace

TEST(TVectorGrowth, OwnedBlocksAddAQuarterAHalfOrFourAndKeepTheirElements) {
    vq::TVector<int> v;
    const std::pair<uint32_t, int> steps[] = {{0, 0}, {1, -5}, {5, -5}, {6, -(6 + 2)}, {9, -(9 + 4)}};
    for (auto& s : steps) {
        v.resize(s.first);
        EXPECT_EQ(v.signedCapacity(), s.second) << s.first;
    }
    // Across the 2047 boundary one request at a time; never shrinks.
    vq::TVector<char> w;
    int expected = 0;
    for (int n = 1; n < 20000; n += 97) {
        int c = int(w.capacity());
        w.resize(uint32_t(n));
        expected = n > c ? grown(c, n) : expected;
        ASSERT_EQ(w.signedCapacity(), -expected) << "n=" << n;
    }
    w.clear();
    EXPECT_EQ(w.signedCapacity(), -expected);

    v.clear();
    for (int i = 0; i < 5000; ++i)
        v.push_back(i);
    v.append(v.data(), v.size()); // a slice of itself, read from the old block
    ASSERT_EQ(v.size(), 10000u);
    for (int i = 0; i < 10000; ++i)
        ASSERT_EQ(v[i], i % 5000);

    // Growing while keeping the old block for the caller follows the same rule.
    int c = int(v.capacity());
    int* before = v.data();
    EXPECT_EQ(v.growKeepingOld(uint32_t(c)), nullptr); // fits: nothing moves
    int* old = v.growKeepingOld(uint32_t(c) + 1);
    ASSERT_EQ(old, before);
    EXPECT_EQ(v.signedCapacity(), -grown(c, c + 1));
    EXPECT_EQ(std::memcmp(v.data(), old, 10000 * sizeof(int)), 0); // still readable
    vq::TVector<int>::releaseBlock(old);
}

TEST(TVectorGrowth, BorrowedBlocksAreNeitherFreedNorWrittenPastNorShared) {
    struct {
        char block[16];
        char guard[16];
    } mem;
    std::memset(mem.guard, 0x5A, sizeof mem.guard);
    {
        vq::TVector<char> v(mem.block, 16);
        EXPECT_EQ(v.signedCapacity(), 16);
        EXPECT_FALSE(v.owned());
        for (int i = 0; i < 16; ++i)
            v.push_back(char('a' + i));
        EXPECT_EQ(v.data(), mem.block); // still in place at exactly full
        v.push_back('!');
        EXPECT_NE(v.data(), mem.block);
        EXPECT_EQ(v.signedCapacity(), -(16 + 17)); // old capacity + request
        EXPECT_EQ(std::memcmp(v.data(), "abcdefghijklmnop!", 17), 0);
        v.resize(40); // the heap block then follows the owned rule
        EXPECT_EQ(v.signedCapacity(), -grown(33, 40));
    } // destruction frees the heap block only (the sanitizer checks the rest)
    for (char g : mem.guard)
        ASSERT_EQ(g, 0x5A);
    EXPECT_EQ(std::memcmp(mem.block, "abcdefghijklmnop", 16), 0);

    // Never handed back for freeing, not even a block borrowed with no room at all.
    int block[4];
    vq::TVector<int> b(block, 4);
    EXPECT_EQ(b.growKeepingOld(5), nullptr);
    EXPECT_EQ(b.signedCapacity(), -(4 + 5));
    vq::TVector<int> none;
    none.borrow(block, 0);
    none.push_back(7);
    EXPECT_NE(none.data(), block);

    char chars[8];
    vq::TVector<char> c(chars, 8);
    c.append("abc", 3);
    vq::TVector<char> moved(std::move(c));
    EXPECT_NE(moved.data(), chars); // a borrowed block stays with its owner
    EXPECT_TRUE(moved.owned());
    EXPECT_EQ(std::memcmp(moved.data(), "abc", 3), 0);
    vq::TVector<char> copy;
    copy = moved;
    EXPECT_NE(copy.data(), moved.data());
    EXPECT_EQ(copy.size(), 3u);

    vq::CStr s; // a string pointed at a caller's buffer fills it first
    s.array().borrow(chars, 8);
    s = "1234567";
    EXPECT_EQ(s.str(), chars);
    s += "8";
    EXPECT_EQ(s, "12345678");
    EXPECT_EQ(s.array().signedCapacity(), -(8 + 9));
}

TEST(CStrBuf, StartsInlineAndMovesToTheHeapAfter79Characters) {
    vq::CStrBuf b;
    EXPECT_EQ(b.size(), 1);
    const char* inlineBlock = b.str();
    std::string expect;
    for (int i = 0; i < 79; ++i) {
        b.add(char('a' + i % 26));
        expect += char('a' + i % 26);
    }
    EXPECT_EQ(b.str(), inlineBlock);
    EXPECT_EQ(b.array().signedCapacity(), 80);
    b.add('#');
    expect += '#';
    EXPECT_EQ(b.array().signedCapacity(), -(80 + 81));
    EXPECT_EQ(b.str(), expect);
    EXPECT_TRUE(b.isEqual(expect.c_str()));
    EXPECT_FALSE(b.isEqual((expect + "x").c_str())); // the terminator is compared too
    EXPECT_FALSE(b.isEqual(nullptr));
    b.reset();
    EXPECT_TRUE(b.isEqual(""));
    vq::CStrBuf copy(b);
    copy.add('z');
    EXPECT_STREQ(copy.str(), "z");
    EXPECT_STREQ(b.str(), "");

    for (int n : {200, 10}) { // sized: an empty text, on the heap only beyond the inline block
        vq::CStrBuf sized(n);
        EXPECT_EQ(sized.size(), n + 1);
        EXPECT_STREQ(sized.str(), "");
        EXPECT_EQ(sized.array().owned(), n > 79);
    }
}
