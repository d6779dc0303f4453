// vqk/options/du_list.h
//
// du::CUnitList is the context record a property sheet shows: the units of one
// object, in order, found by index or by name. It owns its units and releases them
// when it is cleared or ends, so it cannot be copied; it can be moved.
//
//   du::CUnitList units;
//   units.add(du::createI1(vq::SStrId{70001, 0}, 3, true));
//   units.add(du::CStr::create(vq::SStrId{}, "part", true))->setName("file");
//   units.find("file")->setValueByString("assembly");
//   units[0]->string();                 // "3"
//
// A lookup that finds nothing, or an index outside the list, gives null.
#pragma once

#include "vqk/options/du_base.h"
#include "vqk/text/vector.h"

namespace du {

class VQK_API CUnitList {
public:
    CUnitList() = default;
    CUnitList(const CUnitList&) = delete;
    CUnitList& operator=(const CUnitList&) = delete;
    CUnitList(CUnitList&& o) noexcept = default;
    CUnitList& operator=(CUnitList&& o) noexcept;
    ~CUnitList();

    // Takes the unit over and returns it (null is not added).
    CBase* add(CBase* unit);
    int size() const { return int(m_units.size()); }
    CBase* operator[](int i) const { return i >= 0 && i < size() ? m_units[i] : nullptr; }
    // The first unit whose display name (nameStr) is this text.
    CBase* find(const char* name) const;
    // The first unit whose name id is this id.
    CBase* find(int nameId) const;
    // The index of find(name), -1 when there is none.
    int indexOf(const char* name) const;
    void clear();

private:
    vq::TVector<CBase*> m_units;
};

} // namespace du
