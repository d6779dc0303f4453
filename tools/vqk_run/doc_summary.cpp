#include "doc_summary.h"

#include "vqk/xml/xml_in.h"

#include <cstring>

namespace vqk_run {
namespace {

// The local name of a tag: QIF documents may carry a namespace prefix.
const char* localName(const char* tag) {
    const char* colon = std::strrchr(tag, ':');
    return colon ? colon + 1 : tag;
}

bool endsWith(const char* text, const char* tail) {
    const size_t n = std::strlen(text), m = std::strlen(tail);
    return n >= m && std::memcmp(text + n - m, tail, m) == 0;
}

void countQifTag(const char* name, SDocSummary& s, vq::CXmlIn& in) {
    if (endsWith(name, "FeatureItem"))
        ++s.features;
    else if (endsWith(name, "CharacteristicItem"))
        ++s.characteristics;
    else if (endsWith(name, "CharacteristicMeasurement"))
        ++s.measured;
    else if (std::strcmp(name, "CharacteristicStatusEnum") == 0 && in.isTagStart()) {
        vq::CStr status;
        in.getText(status, true);
        if (std::strcmp(status.str(), "PASS") == 0)
            ++s.passed;
        else if (std::strcmp(status.str(), "FAIL") == 0)
            ++s.failed;
    }
}

} // namespace

bool readDocSummary(const char* path, SDocSummary& s, vq::CStr& error) {
    s = SDocSummary();
    vq::CXmlIn in;
    if (!in.open(path)) {
        error.cformat("%s: can't open the file", path);
        return false;
    }
    try {
        int depth = 0;
        do {
            in.read(nullptr);
            if (in.isTagEnd()) {
                --depth;
                continue;
            }
            const char* name = localName(in.tagStr());
            if (s.elements == 0)
                s.qif = std::strcmp(name, "QIFDocument") == 0;
            ++s.elements;
            if (depth + 1 > s.maxDepth)
                s.maxDepth = depth + 1;
            if (s.qif)
                countQifTag(name, s, in);
            if (in.isTagStart())
                ++depth;
        } while (depth > 0);
    } catch (const char* message) {
        vq::SXmlPos at;
        if (in.errorPos(at))
            error.cformat("%s:%d:%d: %s", path, at.line, at.column, message);
        else
            error.cformat("%s: %s", path, message);
        return false;
    }
    return true;
}

} // namespace vqk_run
