#include "vqk/options/du_list.h"

namespace du {

CUnitList& CUnitList::operator=(CUnitList&& o) noexcept {
    if (this != &o) {
        clear();
        m_units = std::move(o.m_units);
    }
    return *this;
}

CUnitList::~CUnitList() { clear(); }

CBase* CUnitList::add(CBase* unit) {
    if (!unit)
        return nullptr;
    try {
        m_units.push_back(unit);
    } catch (...) {
        unit->destroy(); // the list took it over, even when it could not keep it
        throw;
    }
    return unit;
}

CBase* CUnitList::find(const char* name) const { return (*this)[indexOf(name)]; }

CBase* CUnitList::find(int nameId) const {
    for (CBase* u : m_units)
        if (u->name() == nameId)
            return u;
    return nullptr;
}

int CUnitList::indexOf(const char* name) const {
    for (int i = 0; i < size(); ++i)
        if (m_units[i]->nameStr() == name)
            return i;
    return -1;
}

void CUnitList::clear() {
    for (CBase* u : m_units)
        u->destroy();
    m_units.clear();
}

} // namespace du
