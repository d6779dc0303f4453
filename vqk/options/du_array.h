// vqk/options/du_array.h
//
// du::CBaseAr is the root of the list units: it knows how many items it has and shows
// the count ("3    items", the word from the default string table); the kinds below
// it hold the items and show each through string(i).
//
// An item index outside the list gives an empty text.
#pragma once

#include "vqk/options/du_base.h"

namespace du {

class VQK_API CBaseAr : public CBase {
public:
    CBaseAr(const vq::SStrId& id, int count, bool editable, int dim);

    using CBase::setValueByString;
    using CBase::setValueByStringSt;
    using CBase::string;

    vq::CTStr<char> string() override;
    int size() const override;
    virtual vq::CTStr<char> string(int i);
    // The list kinds set their value, not single items: false here.
    virtual bool setValueByString(int i, const char* text);

    vq::CStringSt stringSt(int i) { return vq::CStringSt(string(i).str()); }
    bool setValueByStringSt(int i, const vq::CStringSt& st) { return setValueByString(i, st.first()); }

protected:
    int m_count;
};

} // namespace du
