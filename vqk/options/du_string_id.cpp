#include "vqk/options/du_string_id.h"

namespace du {
namespace {

// The word of each state bit from bit 3 on; the ids are not contiguous.
int stateWordId(int bit) {
    if (bit <= 10)
        return 61720 + bit - 3;
    if (bit <= 13)
        return 61846 + bit - 11;
    return 61919;
}

} // namespace

CStrId::CStrId(const vq::SStrId& id, const int& stringId) : T1<int>(id, stringId, false, 0, -kNoLimit, kNoLimit) {}

vq::CTStr<char> CStrId::string() { return vq::stringTableText(m_value, 0); }
int CStrId::valInt() const { return m_value; }

bool CStrId::setValueByInt(int id) {
    m_value = id;
    m_undefined = false;
    return true;
}

CState::CState(const vq::SStrId& id, int bits) : T1<int>(id, bits, false, 0, -kNoLimit, kNoLimit) {}

vq::CTStr<char> CState::string() {
    vq::CTStr<char> s;
    for (int bit = 3; bit <= 14; ++bit) {
        if (m_value & (1 << bit)) {
            s.append(" ");
            s.append(vq::stringTableText(stateWordId(bit), 0));
        }
    }
    return s;
}

} // namespace du
