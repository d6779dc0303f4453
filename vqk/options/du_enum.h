// vqk/options/du_enum.h
//
// Choice units. Item 0 is the current value and the items after it are the choices:
// du::CEnum holds string-table ids (shown as their texts in the default table),
// du::CEnumStr plain texts.
//
//   const int ids[] = {61720, 61720, 61722, 61919};   // current "Hidden"
//   du::CEnum e(70001, ids, 4, true);
//   e.setValueByString("Error");        // true: item 0 becomes 61919
//   e.setValue(61722);                  // true: now "Locked"
//   e.setValue(4);                      // false: not a choice
//   e.setValueByInt(4);                 // true, unchecked: for callers that know better
//
// Text and ids are matched from the last item to the first, so of two equal texts the
// later choice wins. No match returns false and keeps the value. A list made with no
// items still has an item 0 (id 0 or the empty text) to show and set.
#pragma once

#include "vqk/options/du_array.h"
#include "vqk/text/vector.h"

namespace du {

class VQK_API CEnum : public CBaseAr {
public:
    // Copies count ids; the name is id nameId of the default table.
    CEnum(int nameId, const int* ids, int count, bool editable);

    using CBaseAr::setValueByString;
    using CBaseAr::string;

    vq::CTStr<char> string() override;
    int valInt() const override;
    bool setValueByString(const char* text) override;
    // Writes n into item 0 without checking it is a choice; the changed flag is left
    // as it is.
    bool setValueByInt(int n) override;
    bool isEnum() const override;
    vq::CTStr<char> string(int i) override;
    // Selects the choice with this id.
    virtual bool setValue(int id);

    operator const int&() const { return m_items[0]; }

protected:
    vq::TVector<int> m_items;
};

class VQK_API CEnumStr : public CBaseAr {
public:
    // Copies the texts; the name is id nameId of the default table.
    CEnumStr(int nameId, const vq::TVectorC<vq::CTStr<char>>& texts, bool editable);

    using CBaseAr::setValueByString;
    using CBaseAr::string;

    vq::CTStr<char> string() override;
    // Matches case-sensitively.
    bool setValueByString(const char* text) override;
    bool isEnum() const override;
    vq::CTStr<char> string(int i) override;

    operator const vq::CTStr<char>&() const { return m_items[0]; }

protected:
    vq::TVectorC<vq::CTStr<char>> m_items;
};

} // namespace du
