#include "vqk/options/du_enum.h"

#include <cstring>

namespace du {

CEnum::CEnum(int nameId, const int* ids, int count, bool editable)
    : CBaseAr(vq::SStrId{nameId, 0}, count < 0 ? 0 : count, editable, 0) {
    if (ids)
        m_items.assign(ids, uint32_t(m_count));
    if (m_items.empty())
        m_items.push_back(0);
}

vq::CTStr<char> CEnum::string() { return string(0); }
int CEnum::valInt() const { return m_items[0]; }

vq::CTStr<char> CEnum::string(int i) {
    if (i < 0 || uint32_t(i) >= m_items.size())
        return {};
    return vq::stringTableText(m_items[i], 0);
}

bool CEnum::setValueByString(const char* text) {
    const char* t = text ? text : "";
    for (int i = int(m_items.size()) - 1; i >= 0; --i) {
        if (std::strcmp(vq::stringTableText(m_items[i], 0), t) == 0) {
            m_items[0] = m_items[i];
            markSet();
            return true;
        }
    }
    return false;
}

bool CEnum::setValueByInt(int n) {
    m_items[0] = n;
    m_undefined = false;
    return true;
}

bool CEnum::setValue(int id) {
    for (int i = int(m_items.size()) - 1; i >= 0; --i) {
        if (m_items[i] == id) {
            m_items[0] = id;
            markSet();
            return true;
        }
    }
    return false;
}

bool CEnum::isEnum() const { return true; }

CEnumStr::CEnumStr(int nameId, const vq::TVectorC<vq::CTStr<char>>& texts, bool editable)
    : CBaseAr(vq::SStrId{nameId, 0}, int(texts.size()), editable, 0), m_items(texts) {
    if (m_items.empty())
        m_items.add();
}

vq::CTStr<char> CEnumStr::string() { return string(0); }

vq::CTStr<char> CEnumStr::string(int i) {
    if (i < 0 || uint32_t(i) >= m_items.size())
        return {};
    return m_items[i];
}

bool CEnumStr::setValueByString(const char* text) {
    for (int i = int(m_items.size()) - 1; i >= 0; --i) {
        if (m_items[i] == text) {
            if (i)
                m_items[0] = m_items[i];
            markSet();
            return true;
        }
    }
    return false;
}

bool CEnumStr::isEnum() const { return true; }

} // namespace du
