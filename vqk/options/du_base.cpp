#include "vqk/options/du_base.h"

#include <cstring>

namespace du {
namespace {

bool s_truncTrailZero = false;

// The table text of the id split at its first line break.
vq::CTStr<char> tablePart(const vq::SStrId& id, bool description) {
    const char* text = vq::stringTableText(id);
    const char* br = std::strchr(text, '\n');
    if (!br)
        return text;
    return description ? vq::CTStr<char>(br + 1) : vq::CTStr<char>(text, 0, int(br - text));
}

} // namespace

CBase::CBase(const vq::SStrId& id, bool editable, int dim) : m_id(id), m_editable(editable), m_dim(dim) {}

CBase::~CBase() = default;
void CBase::destroy() { delete this; }
vq::CTStr<char> CBase::string() { return {}; }
int CBase::valInt() const { return -1; }
bool CBase::setValueByString(const char*) { return false; }
bool CBase::setValueByInt(int) { return false; }
vq::CTStr<char> CBase::value() { return string(); }
const char* CBase::units() const { return nullptr; }

const char* CBase::typeStr() const {
    if (isColor())
        return "C";
    if (isBool())
        return "B";
    if (isFont())
        return "F";
    if (isFloat())
        return "D1";
    if (isEnum())
        return "E";
    return "S";
}

double CBase::getLowerLimit() const { return -kNoLimit; }
double CBase::getHigherLimit() const { return kNoLimit; }
bool CBase::isSlider() const { return false; }
bool CBase::isColor() const { return false; }
bool CBase::isBool() const { return false; }
bool CBase::isEnum() const { return false; }
bool CBase::isFont() const { return false; }
bool CBase::isArray() const { return false; }
bool CBase::isFloat() const { return false; }
bool CBase::isPath() const { return false; }
int CBase::size() const { return 1; }

void CBase::destroy(CBase* unit) {
    if (unit)
        unit->destroy();
}

vq::CTStr<char> CBase::nameStr() const { return m_nameText.empty() ? tablePart(m_id, false) : m_nameText; }
vq::CTStr<char> CBase::descrStr() const { return m_nameText.empty() ? tablePart(m_id, true) : m_nameText; }

void CBase::setTruncTrailZero(bool on) { s_truncTrailZero = on; }
bool CBase::truncTrailZero() { return s_truncTrailZero; }

} // namespace du
