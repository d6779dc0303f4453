#include "vqk/text/str.h"
#include "vqk/text/str_format.h"
#include "vqk/text/vector.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

// The capacity an owned block of capacity c reaches when n elements are needed.
int grown(int c, int n) { return n + (c > 2047 ? c / 4 : (c > 4 ? c / 2 : 4)); }

} // namespace

TEST(TVectorGrowth, OwnedBlocksAddAQuarterAHalfOrFour) {
    vq::TVector<int> v;
    EXPECT_EQ(v.signedCapacity(), 0);
    v.push_back(1);
    EXPECT_EQ(v.signedCapacity(), -5); // 1 + 4
    v.resize(5);
    EXPECT_EQ(v.signedCapacity(), -5); // fits: no growth
    v.resize(6);
    EXPECT_EQ(v.signedCapacity(), -(6 + 2)); // c = 5 > 4: half
    v.resize(9);
    EXPECT_EQ(v.signedCapacity(), -(9 + 4));

    // Walk across the 2047 boundary one request at a time and check every step.
    vq::TVector<char> w;
    int expected = 0;
    for (int n = 1; n < 20000; n += 97) {
        int c = int(w.capacity());
        w.resize(uint32_t(n));
        if (n > c)
            expected = grown(c, n);
        ASSERT_EQ(w.signedCapacity(), -expected) << "n=" << n;
    }
    // Never shrinks.
    w.resize(1);
    w.clear();
    EXPECT_EQ(w.signedCapacity(), -expected);
}

TEST(TVectorGrowth, ElementsSurviveGrowth) {
    vq::TVector<int> v;
    for (int i = 0; i < 5000; ++i)
        v.push_back(i);
    ASSERT_EQ(v.size(), 5000u);
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(v[i], i);
    // Appending a slice of itself while growing reads the old block safely.
    v.append(v.data(), v.size());
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(v[5000 + i], i);
}

TEST(TVectorGrowth, BorrowedBlockIsNeitherFreedNorWrittenPast) {
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
        // The heap block then follows the owned rule.
        v.resize(40);
        EXPECT_EQ(v.signedCapacity(), -grown(33, 40));
    } // destruction frees the heap block only (the sanitizer checks the rest)
    for (char g : mem.guard)
        ASSERT_EQ(g, 0x5A);
    EXPECT_EQ(std::memcmp(mem.block, "abcdefghijklmnop", 16), 0);
}

TEST(TVectorGrowth, GrowingKeepingTheOldBlockFollowsTheSameRule) {
    vq::TVector<int> v;
    v.resize(10);
    for (int i = 0; i < 10; ++i)
        v[i] = i;
    int c = int(v.capacity());
    int* before = v.data();
    EXPECT_EQ(v.growKeepingOld(uint32_t(c)), nullptr); // fits: nothing moves
    int* old = v.growKeepingOld(uint32_t(c) + 1);
    ASSERT_EQ(old, before);
    EXPECT_EQ(v.signedCapacity(), -grown(c, c + 1));
    for (int i = 0; i < 10; ++i)
        ASSERT_EQ(old[i], i); // still readable until the caller frees it
    EXPECT_EQ(std::memcmp(v.data(), old, 10 * sizeof(int)), 0);
    vq::TVector<int>::releaseBlock(old);

    // A borrowed block is never handed back for freeing, not even one borrowed with no
    // room at all.
    int block[4];
    vq::TVector<int> b(block, 4);
    EXPECT_EQ(b.growKeepingOld(5), nullptr);
    EXPECT_EQ(b.signedCapacity(), -(4 + 5));
    vq::TVector<int> none;
    none.borrow(block, 0);
    none.push_back(7); // the sanitizer build reports a freed stack block
    EXPECT_NE(none.data(), block);
}

TEST(TVectorGrowth, CopiesAndMovesOfBorrowedArraysNeverShareTheBlock) {
    char block[8];
    vq::TVector<char> v(block, 8);
    v.append("abc", 3);
    vq::TVector<char> moved(std::move(v));
    EXPECT_NE(moved.data(), block); // a borrowed block stays with its owner
    EXPECT_TRUE(moved.owned());
    EXPECT_EQ(std::memcmp(moved.data(), "abc", 3), 0);
    vq::TVector<char> copy;
    copy = moved;
    EXPECT_NE(copy.data(), moved.data());
    EXPECT_EQ(copy.size(), 3u);
}

TEST(TVectorGrowth, StringPointedAtACallersBufferFillsItFirst) {
    char buf[8];
    vq::CStr s;
    s.array().borrow(buf, 8);
    s = "1234567";
    EXPECT_EQ(s.str(), buf);
    s += "8";
    EXPECT_NE(s.str(), buf);
    EXPECT_EQ(s, "12345678");
    EXPECT_EQ(s.array().signedCapacity(), -(8 + 9));
}

TEST(CStrBuf, StartsInlineAndMovesToTheHeapAfter79Characters) {
    vq::CStrBuf b;
    EXPECT_EQ(b.size(), 1);
    EXPECT_STREQ(b.str(), "");
    const char* inlineBlock = b.str();
    std::string expect;
    for (int i = 0; i < 79; ++i) {
        b.add(char('a' + i % 26));
        expect += char('a' + i % 26);
    }
    EXPECT_EQ(b.str(), inlineBlock);
    EXPECT_EQ(b.size(), 80);
    EXPECT_EQ(b.array().signedCapacity(), 80);
    b.add('#');
    expect += '#';
    EXPECT_NE(b.str(), inlineBlock);
    EXPECT_EQ(b.array().signedCapacity(), -(80 + 81));
    EXPECT_EQ(b.str(), expect);
    EXPECT_TRUE(b.isEqual(expect.c_str()));
    EXPECT_FALSE(b.isEqual((expect + "x").c_str())); // the terminator is compared too
    EXPECT_FALSE(b.isEqual(nullptr));

    b.reset();
    EXPECT_EQ(b.size(), 1);
    EXPECT_TRUE(b.isEqual(""));
    vq::CStrBuf copy(b);
    copy.add('z');
    EXPECT_STREQ(copy.str(), "z");
    EXPECT_STREQ(b.str(), "");
}

TEST(CStrBuf, SizedConstructionHoldsAnEmptyText) {
    vq::CStrBuf b(200);
    EXPECT_EQ(b.size(), 201);
    EXPECT_STREQ(b.str(), "");
    EXPECT_TRUE(b.array().owned());
    vq::CStrBuf small(10);
    EXPECT_EQ(small.size(), 11);
    EXPECT_FALSE(small.array().owned());
}
