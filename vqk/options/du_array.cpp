#include "vqk/options/du_array.h"

#include "vqk/text/bounded.h"

namespace du {
namespace {

// Read once: the word does not change while the process runs.
const char* itemsWord() {
    static const struct SWord {
        char text[256];
        SWord() { vq::strncpy(text, sizeof text, vq::stringTableText(64031, 0), size_t(-1)); }
    } word;
    return word.text;
}

} // namespace

CBaseAr::CBaseAr(const vq::SStrId& id, int count, bool editable, int dim)
    : CBase(id, editable, dim), m_count(count) {}

vq::CTStr<char> CBaseAr::string() {
    vq::CTStr<char> s;
    s.cformat("%d    %s", m_count, itemsWord());
    return s;
}

int CBaseAr::size() const { return m_count; }
vq::CTStr<char> CBaseAr::string(int) { return {}; }
bool CBaseAr::setValueByString(int, const char*) { return false; }

} // namespace du
