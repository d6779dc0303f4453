// fuzz/fuzz_text.cpp
//
// Arbitrary bytes through every text parser of the string layer: the string-table CSV
// reader, the UTF-8 and ISO 10303-21 decoders (and their round trips), the path-free
// number readers, the token splitters and the substring search. None may crash, leak or
// read outside the input; where a round trip is lossless by construction it is checked.
#include "vqk/text/convert.h"
#include "vqk/text/scan.h"
#include "vqk/text/string_csv.h"
#include "vqk/text/substring.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_map>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);

    std::unordered_map<int, std::string> table;
    vq::parseStringCsv(bytes, size, table);

    std::string text(bytes, size); // zero-terminated copy; may hold earlier zeros
    const char* s = text.c_str();

    vq::CStr p21, back;
    vq::utf8top21(p21, s);
    vq::p21toutf8(back, p21.str());
    // Plain ASCII without backslashes survives the round trip unchanged.
    bool ascii = true;
    for (const char* p = s; *p; ++p)
        if ((unsigned char)*p >= 128 || *p == '\\')
            ascii = false;
    if (ascii && back != s)
        std::abort();
    vq::p21toutf8(back, s);

    vq::CWStr wide(s);
    vq::CStr narrow(wide);
    vq::CStr ansi;
    vq::wstrtostr(ansi, wide.str(), false);
    vq::ansitoutf8(narrow, ansi.str());

    vq::CStr copy(s);
    vq::CStr lat;
    vq::translit(lat, copy);

    vq::strToID1(s);
    vq::strToD1(wide.str());
    const char* fmt = s;
    bool isText = false, hasStar = false;
    int pieces = 0;
    while (vq::nextFmt(fmt, isText, hasStar) && ++pieces < 100000) {
    }

    // Split the text at its first byte as a delimiter set and as a token string.
    if (size > 1) {
        char delim[2] = {text[0] ? text[0] : ',', 0};
        vq::TVector<char*> tokens;
        std::string work(text.c_str() + 1);
        vq::getStringToken(tokens, &work[0], delim);
        vq::TVectorC<vq::CStr> parts;
        vq::splitStrByToken(parts, text.c_str() + 1, delim, size & 1);
        vq::numSubStr(text.c_str() + 1, delim);
        vq::CStr r(text.c_str() + 1);
        vq::replaceSubStr(r, delim, "<>");
        r.findSubStr(delim);
    }
    return 0;
}
