// bench/bench_substring.cpp
//
// Times vq::findSubStr and vq::numSubStr against std::string::find on texts of 40,000,
// 160,000 and 1,000,000 characters, once without any match and once with a match near
// the end, and prints each time and vqk's ratio to the peer. The kept matcher reports a
// later occurrence before an earlier overlapping one, so the results are compared only
// where both searches must agree (a single occurrence).
//
//   cmake --workflow --preset bench          (or: build/bench/bin/bench_substring [max chars])
#include "vqk/text/str.h"
#include "vqk/text/substring.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

template <class F> double secondsOf(F f, int& result) {
    auto start = std::chrono::steady_clock::now();
    result = f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Text of a few letters, so that partial matches of the pattern are frequent.
std::string text(size_t n) {
    std::string t(n, 'a');
    unsigned seed = 7;
    for (char& c : t) {
        seed = seed * 1103515245u + 12345u;
        c = "aab"[(seed >> 16) % 3];
    }
    return t;
}

} // namespace

int main(int argc, char** argv) {
    const size_t maxChars = argc > 1 ? size_t(std::strtoul(argv[1], nullptr, 10)) : 1000000u;
    const std::string pattern = "aabab";
    const char* const kinds[] = {"no match", "match near the end"};
    std::printf("%-22s %9s %12s %12s %12s %8s\n", "case", "chars", "findSubStr", "numSubStr", "string::find",
                "ratio");
    bool ok = true;
    for (size_t n : {40000u, 160000u, 1000000u}) {
        if (n > maxChars)
            break;
        for (int kind = 0; kind < 2; ++kind) {
            std::string t = text(n);
            for (size_t i = 0; i + pattern.size() <= t.size(); ++i) // no occurrence left
                if (t.compare(i, pattern.size(), pattern) == 0)
                    t[i + 4] = 'a';
            if (kind)
                t.replace(n - 100, pattern.size(), pattern);
            int found, count, peer;
            double tFind = secondsOf([&] { return vq::findSubStr(t.c_str(), pattern.c_str()); }, found);
            double tCount = secondsOf([&] { return vq::numSubStr(t.c_str(), pattern.c_str()); }, count);
            double tPeer = secondsOf([&] { return int(t.find(pattern)); }, peer);
            ok = ok && found == peer && count == kind;
            std::printf("%-22s %9zu %11.6fs %11.6fs %11.6fs %8.2f\n", kinds[kind], n, tFind, tCount, tPeer,
                        tFind / (tPeer > 0 ? tPeer : 1e-9));
        }
    }
    if (!ok)
        std::printf("results differ from the peer\n");
    return ok ? 0 : 1;
}
