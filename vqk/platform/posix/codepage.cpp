// POSIX side of the code-page seam: the single-byte code page is decoded once into a
// 256-entry table through iconv, and encoding looks characters up in its reverse.
#include "vqk/platform/codepage.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iconv.h>
#include <mutex>
#include <utility>
#include <vector>

namespace vq {
namespace platform {
namespace {

struct CodePage {
    wchar_t decode[256];
    std::vector<std::pair<unsigned, unsigned char>> encode; // sorted by character
};

bool buildTable(const char* name, CodePage& cp) {
    iconv_t cd = iconv_open("UTF-32LE", name);
    if (cd == iconv_t(-1))
        return false;
    for (int b = 0; b < 256; ++b) {
        char in = char(b);
        unsigned char out[4] = {0, 0, 0, 0};
        char* pin = &in;
        size_t nin = 1;
        char* pout = reinterpret_cast<char*>(out);
        size_t nout = 4;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        size_t r = iconv(cd, &pin, &nin, &pout, &nout);
        // Bytes the code page leaves undefined map to the same code point, as the
        // Windows converter does for its best-fit tables.
        unsigned c = (r == size_t(-1) || nout != 0)
                         ? unsigned(b)
                         : unsigned(out[0]) | unsigned(out[1]) << 8 | unsigned(out[2]) << 16 |
                               unsigned(out[3]) << 24;
        cp.decode[b] = wchar_t(c);
    }
    iconv_close(cd);
    for (int b = 255; b >= 0; --b)
        cp.encode.emplace_back(unsigned(cp.decode[b]), (unsigned char)b);
    std::stable_sort(cp.encode.begin(), cp.encode.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    return true;
}

const CodePage& codePage() {
    static CodePage cp;
    static std::once_flag once;
    std::call_once(once, [] {
        const char* name = std::getenv("VQK_ACP");
        if (!name || !*name || !buildTable(name, cp)) {
            cp.encode.clear();
            if (!buildTable("WINDOWS-1252", cp)) {
                for (int b = 0; b < 256; ++b)
                    cp.decode[b] = wchar_t(b);
                cp.encode.clear();
                for (int b = 0; b < 256; ++b)
                    cp.encode.emplace_back(unsigned(b), (unsigned char)b);
            }
        }
    });
    return cp;
}

unsigned char encodeChar(const CodePage& cp, unsigned c) {
    auto it = std::lower_bound(cp.encode.begin(), cp.encode.end(), c,
                               [](const auto& e, unsigned v) { return e.first < v; });
    if (it != cp.encode.end() && it->first == c)
        return it->second;
    return '?';
}

} // namespace

int ansiToWide(const char* s, int len, wchar_t* out, int outSize) {
    if (!s || outSize < 0)
        return 0;
    int n = len < 0 ? int(std::strlen(s)) + 1 : len;
    if (outSize == 0)
        return n;
    if (n > outSize)
        return 0;
    const CodePage& cp = codePage();
    for (int i = 0; i < n; ++i)
        out[i] = cp.decode[(unsigned char)s[i]];
    return n;
}

int wideToAnsi(const wchar_t* s, int len, char* out, int outSize) {
    if (!s || outSize < 0)
        return 0;
    int n = len < 0 ? int(std::wcslen(s)) + 1 : len;
    const CodePage& cp = codePage();
    int written = 0;
    for (int i = 0; i < n; ++i) {
        unsigned c = unsigned(s[i]);
        // A surrogate pair is one character, and no single-byte code page holds it.
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < n && unsigned(s[i + 1]) >= 0xDC00 &&
            unsigned(s[i + 1]) <= 0xDFFF)
            ++i;
        if (outSize) {
            if (written >= outSize)
                return 0;
            out[written] = char(c == 0 ? 0 : encodeChar(cp, c));
        }
        ++written;
    }
    return written;
}

} // namespace platform
} // namespace vq
