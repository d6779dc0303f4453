// Counts heap allocations made while a flag is set on the current thread. The
// replacement operators are the program's only ones and behave like the default ones
// whenever the flag is off, so the other tests of this program are unaffected.
#include "vqk/text/format.h"
#include "vqk/text/str.h"
#include "vqk/text/str_format.h"
#include "vqk/text/substring.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

// clang's ThreadSanitizer runtime brings its own operator new; there the counting
// replacement cannot be linked and the counts are not checked.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define VQK_NO_NEW_REPLACEMENT 1
#endif
#endif

namespace {

thread_local bool t_counting = false;
thread_local long t_allocations = 0;

void* allocate(std::size_t n) {
    if (t_counting)
        ++t_allocations;
    void* p = std::malloc(n ? n : 1);
    if (!p)
        throw std::bad_alloc();
    return p;
}

// Runs f and returns the number of allocations it made.
template <class F> long allocationsOf(F f) {
    t_allocations = 0;
    t_counting = true;
    f();
    t_counting = false;
    return t_allocations;
}

} // namespace

#ifndef VQK_NO_NEW_REPLACEMENT
void* operator new(std::size_t n) { return allocate(n); }
void* operator new[](std::size_t n) { return allocate(n); }
void* operator new(std::size_t n, const std::nothrow_t&) noexcept {
    try {
        return allocate(n);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept {
    try {
        return allocate(n);
    } catch (...) {
        return nullptr;
    }
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
#endif

// Skips a counting test where the replacement could not be linked.
#ifdef VQK_NO_NEW_REPLACEMENT
#define VQK_NEED_COUNTING() GTEST_SKIP() << "allocation counting needs the replaceable operator new"
#else
#define VQK_NEED_COUNTING() (void)0
#endif

TEST(Allocation, CountingSeesTheLibrarysAllocations) {
    VQK_NEED_COUNTING();
    // Without this the other checks could pass with a counter that never counts.
    vq::CStr s;
    EXPECT_EQ(allocationsOf([&] { s = "first"; }), 1);
    EXPECT_EQ(allocationsOf([&] { s = "fits"; }), 0);
}

TEST(Allocation, AStringReusedInALoopAllocatesOnlyWhenItOutgrowsItself) {
    VQK_NEED_COUNTING();
    // Texts of varying lengths, made before counting starts.
    std::vector<std::string> texts;
    std::vector<std::wstring> wide;
    unsigned seed = 12345;
    for (int i = 0; i < 300; ++i) {
        seed = seed * 1103515245u + 12345u;
        size_t n = (seed >> 16) % 200;
        texts.emplace_back(n, char('a' + i % 26));
        wide.emplace_back(n / 2, L'\u00e9');
    }
    vq::CStr s;
    vq::CWStr w;
    auto round = [&](int i) {
        const char* t = texts[size_t(i)].c_str();
        const wchar_t* wt = wide[size_t(i)].c_str();
        s = t;
        s += "-";
        s.append(wt);
        s << vq::CFormat(i, 4) << vq::CFormat(0.5, 2) << vq::CFormat(L"\u00e9");
        s.insertStr(1, "ins");
        s.trimEndSpaces();
        vq::replaceSubStr(s, "a", "bb");
        s.cformat("%s|%d|%s", t, i, "x");
        s.format(vq::CFormat(t), vq::CFormat(unsigned(i)), vq::CFormat(wt));
        w.reset(t);
        w.append(wt);
        w << vq::CFormat(i);
    };
    for (int i = 0; i < 300; ++i) {
        uint32_t sBefore = s.array().capacity(), wBefore = w.array().capacity();
        long n = allocationsOf([&] { round(i); });
        // A round that did not grow either string made no temporary allocation either.
        if (s.array().capacity() == sBefore && w.array().capacity() == wBefore) {
            EXPECT_EQ(n, 0) << "round " << i;
        }
    }
    // The same rounds again: every length has been seen, so nothing grows.
    long again = allocationsOf([&] {
        for (int i = 0; i < 300; ++i)
            round(i);
    });
    EXPECT_EQ(again, 0);
}

TEST(Allocation, GrowingPastTheBlockAllocatesOnceThenNotAgain) {
    VQK_NEED_COUNTING();
    vq::CStr s;
    EXPECT_EQ(allocationsOf([&] { s.reset(uint64_t(63), 'x'); }), 1);
    EXPECT_EQ(s.array().capacity(), 64u + 4u);
    EXPECT_EQ(allocationsOf([&] {
                  for (int i = 0; i < 4; ++i)
                      s += "y"; // up to 68 elements with the terminator
              }),
              0);
    EXPECT_EQ(allocationsOf([&] { s += "z"; }), 1);
    EXPECT_EQ(s.array().capacity(), 69u + 34u); // the request plus half of 68
    EXPECT_EQ(s.length(), 68);
}

TEST(Allocation, FormattersUseTheirInlineBlocks) {
    VQK_NEED_COUNTING();
    vq::CStrFormat f;
    EXPECT_EQ(allocationsOf([&] { f("%s %i %.3f", "short", 42, 1.5); }), 0);
    vq::CStrBuf b;
    EXPECT_EQ(allocationsOf([&] {
                  for (int i = 0; i < 79; ++i)
                      b.add('q');
              }),
              0);
    EXPECT_EQ(allocationsOf([&] { b.add('!'); }), 1);
    vq::CStr s("reserve some room for the pieces that follow");
    EXPECT_EQ(allocationsOf([&] {
                  vq::sprintf_s(s, vq::CFormat(123456, 8), vq::CFormat(2.25), false);
              }),
              0);
    EXPECT_EQ(s, "001234562.25");
}
