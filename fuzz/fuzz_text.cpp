// fuzz/fuzz_text.cpp
//
// Arbitrary bytes through every text parser of the string layer: the string-table CSV
// reader, the UTF-8 and ISO 10303-21 decoders (and their round trips), the path-free
// number readers, the token splitters and the substring search. None may crash, leak or
// read outside the input; where a round trip is lossless by construction it is checked.
// The input also drives a script of string edits that is checked against a plain model.
#include "vqk/text/convert.h"
#include "vqk/text/scan.h"
#include "vqk/text/string_csv.h"
#include "vqk/text/substring.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_map>

namespace {

// Each byte pair is one edit of a string whose text must stay what the model says:
// add() is defined by length(), so zeros written by other members must be seen.
void editScript(const uint8_t* data, size_t size) {
    vq::CStr s;
    std::string model;
    for (size_t i = 0; i + 1 < size && i < 4096; i += 2) {
        char arg = char(data[i + 1]);
        size_t at = model.empty() ? 0 : (unsigned char)arg % (model.size() + 1);
        switch (data[i] % 7) {
        case 0:
        case 1:
            s.add() = arg;
            if (arg)
                model += arg;
            break;
        case 2:
            if (at < model.size()) {
                s[int(at)] = 0;
                model.resize(at);
            }
            break;
        case 3:
            if (at < model.size()) {
                s.deleteSubStr(int(at), -1);
                model.resize(at);
            }
            break;
        case 4: {
            const char piece[3] = {'[', arg ? arg : '_', 0};
            s.insertStr(int(at), piece);
            model.insert(std::min(at, model.size()), piece);
            break;
        }
        case 5:
            s.cformat("%s<%c>", s.str(), arg ? arg : '_');
            model += '<';
            model += arg ? arg : '_';
            model += '>';
            break;
        default:
            s.replace(arg, 0);
            if (arg && model.find(arg) != std::string::npos)
                model.resize(model.find(arg));
            break;
        }
        if (s != model.c_str() || size_t(s.length()) != model.size())
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    editScript(data, size);

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
