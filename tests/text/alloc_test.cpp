// Counts heap allocations made while a flag is set on the current thread; with the flag
// off the replacement operators behave like the default ones.
#include "vqk/text/format.h"
#include "vqk/text/str.h"
#include "vqk/text/str_format.h"
#include "vqk/text/substring.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

// clang's ThreadSanitizer runtime brings its own operator new. A replacement in this
// program does not reach a Windows DLL, whose allocations bind to the runtime's own.
#if VQK_TARGET_WINDOWS
#define VQK_NO_NEW_REPLACEMENT 1
#endif
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define VQK_NO_NEW_REPLACEMENT 1
#endif
#endif

namespace {

thread_local bool t_counting = false;
thread_local long t_allocations = 0;

void* allocate(std::size_t n) {
    t_allocations += t_counting;
    if (void* p = std::malloc(n ? n : 1))
        return p;
    throw std::bad_alloc();
}

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
void* operator new(std::size_t n, const std::nothrow_t&) noexcept { try { return allocate(n); } catch (...) { return nullptr; } }
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept { try { return allocate(n); } catch (...) { return nullptr; } }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
#define VQK_NEED_COUNTING() (void)0
#else
#define VQK_NEED_COUNTING() GTEST_SKIP() << "allocation counting needs the replaceable operator new"
#endif

TEST(Allocation, GrowthAndInlineBlocksAllocateOnlyWhenOutgrown) {
    VQK_NEED_COUNTING();
    vq::CStr s;
    EXPECT_EQ(allocationsOf([&] { s = "first"; }), 1); // the counter does count
    EXPECT_EQ(allocationsOf([&] { s = "fits"; }), 0);
    vq::CStr g;
    EXPECT_EQ(allocationsOf([&] { g.reset(uint64_t(63), 'x'); }), 1);
    EXPECT_EQ(g.array().capacity(), 64u + 4u);
    EXPECT_EQ(allocationsOf([&] { g += "yyyy"; }), 0);
    EXPECT_EQ(allocationsOf([&] { g += "z"; }), 1);
    EXPECT_EQ(g.array().capacity(), 69u + 34u); // the request plus half of 68

    vq::CStrFormat f;
    EXPECT_EQ(allocationsOf([&] { f("%s %i %.3f", "short", 42, 1.5); }), 0);
    vq::CStrBuf b;
    EXPECT_EQ(allocationsOf([&] { for (int i = 0; i < 79; ++i) b.add('q'); }), 0);
    EXPECT_EQ(allocationsOf([&] { b.add('!'); }), 1);
    s = "reserve some room for the pieces that follow";
    EXPECT_EQ(allocationsOf([&] { vq::sprintf_s(s, vq::CFormat(123456, 8), vq::CFormat(2.25), false); }), 0);
    EXPECT_EQ(s, "001234562.25");
}

TEST(Allocation, AStringReusedInALoopAllocatesOnlyWhenItOutgrowsItself) {
    VQK_NEED_COUNTING();
    std::vector<std::string> texts;
    std::vector<std::wstring> wide;
    unsigned seed = 12345;
    for (int i = 0; i < 300; ++i) {
        seed = seed * 1103515245u + 12345u;
        texts.emplace_back((seed >> 16) % 200, char('a' + i % 26));
        wide.emplace_back((seed >> 16) % 200 / 2, L'\u00e9');
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
        if (s.array().capacity() == sBefore && w.array().capacity() == wBefore) {
            EXPECT_EQ(n, 0) << "round " << i;
        }
    }
    EXPECT_EQ(allocationsOf([&] { for (int i = 0; i < 300; ++i) round(i); }), 0);
}
