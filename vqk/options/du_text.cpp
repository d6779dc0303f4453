#include "vqk/options/du_text.h"

namespace du {

CStr::CStr(const vq::SStrId& id, const char* value, bool editable) : CBase(id, editable, 0), m_value(value) {}

CBase* CStr::create(const vq::SStrId& id, const char* value, bool editable) {
    return new CStr(id, value, editable);
}

vq::CTStr<char> CStr::string() { return m_value; }

bool CStr::setValueByString(const char* text) {
    m_value = text;
    markSet();
    return true;
}

CPath::CPath(const vq::SStrId& id, const char* path) : CStr(id, path, true) {}

bool CPath::isPath() const { return true; }

} // namespace du
