#include "vqk/options/du_look.h"

#include <sstream>

namespace du {

CFont::CFont(const vq::SStrId& id, const vq::CFont& value, bool editable)
    : CBase(id, editable, 0), m_value(value) {}

vq::CTStr<char> CFont::string() { return m_value.text(); }

bool CFont::setValueByString(const char* text) {
    if (m_value.parse(text)) {
        markSet();
        return true;
    }
    m_value = vq::defaultFont();
    m_changed = true;
    return false;
}

bool CFont::isFont() const { return true; }

CColor::CColor(const vq::SStrId& id, const vq::CColor& value, bool editable)
    : CBase(id, editable, 0), m_value(value) {}

vq::CTStr<char> CColor::string() { return m_value.text(); }

bool CColor::setValueByString(const char* text) {
    std::istringstream is(text ? text : "");
    int c[3] = {0, 0, 0};
    bool ok = bool(is >> c[0] >> c[1] >> c[2]);
    for (int v : c)
        ok = ok && v >= 0 && v <= 255;
    if (ok)
        m_value = vq::CColor{(unsigned char)c[0], (unsigned char)c[1], (unsigned char)c[2]};
    markSet();
    return ok;
}

bool CColor::isColor() const { return true; }

} // namespace du
