// fuzz/fuzz_xin.cpp
//
// Feeds arbitrary bytes to the XML tokenizer through a stream and walks the document
// with every operation: tag reads in both modes, pushed-back tags, skips, end tags,
// typed attribute reads, reads from the stream and the array readers. The first four
// bytes are the walk's program (one operation per byte, repeated), the rest is the
// document. Nothing may crash, leak or touch memory outside its buffers; the walk ends
// at the end of the stream or after a number of steps bounded by the document's size.
#include "vqk/xml/xin.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

void readAttributes(ApXin& x) {
    for (int i = 0; i < x.nAttrs(); ++i) {
        const char* name = x.m_attrs[i].name;
        volatile long long sink = 0;
        sink += ApXin_int(x, name, 1);
        sink += ApXin_bool(x, name, false);
        sink += ApXin_dec(x, name, 0.5) > 0;
        sink += ApXin_ID1(x, name, 3) & 1;
        sink += (long long)std::strlen(ApXin_str(x, name, ""));
        int v[3] = {0, 0, 0};
        ApXin_attrI3(x, name, v, v);
        double d = 0;
        sink += ApXin_attr(x, name, "%lf", &d);
        sink += x.isAttrName(i, name);
        (void)sink;
    }
    (void)x.findAttr("n");
    (void)x.findAttr("");
}

const char* step(ApXin& x, uint8_t op) {
    switch (op % 12) {
    case 0: return x._readBeg();
    case 1: return x._readBegHeader(1);
    case 2: return x._skip();
    case 3: return x._readEnd(x.tag());
    case 4: return x._readEnd(nullptr);
    case 5: {
        int i[3];
        double d[3];
        vq::uint64 u[2];
        ApXin_I1(x, i, (op / 12) % 4);
        ApXin_D1(x, d, 3);
        ApXin_ID1Ar(x, u, 2);
        return nullptr;
    }
    case 6: {
        vq::TVector<int> v;
        return apXmlReadI1Ex(x, "a", v);
    }
    case 7: {
        vq::TVector<std::array<int, 3>> v;
        return apXmlReadI3Ex(x, nullptr, v);
    }
    case 8: {
        vq::TVector<std::array<double, 3>> v;
        return apXmlReadD3Ex(x, x.tag(), v);
    }
    case 9: x.m_hold = true; return x._readBeg();
    case 10: x.setSmallFirstLetterAttrName(!x.m_smallFirstLetter); return x._readBeg();
    default: {
        char word[16];
        int n = 0;
        x.scanf("%15s %d", word, &n);
        return x._readBeg();
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    uint8_t program[4] = {0, 2, 0, 3};
    if (size >= 4) {
        std::memcpy(program, data, 4);
        data += 4;
        size -= 4;
    }
    // The stream gets its own copy; an empty document is one blank, since a stream
    // over no bytes cannot be opened.
    std::vector<char> document(data, data + size);
    if (document.empty())
        document.push_back(' ');
    FILE* f = fmemopen(document.data(), document.size(), "r");
    if (!f)
        return 0;
    ApXin x(f);
    const size_t bound = 8 * document.size() + 64;
    for (size_t i = 0; i < bound; ++i) {
        const char* err = step(x, program[i % 4]);
        if (err == apXinErrEof)
            break;
        readAttributes(x);
        (void)x.isTag("a");
        (void)std::strlen(x.tag());
    }
    std::fclose(f);
    return 0;
}
