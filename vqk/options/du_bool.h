// vqk/options/du_bool.h
//
// du::CBool: a yes/no value shown in the words of the default string table (ids 62407
// and 62408, read once when the first CBool is made), with an "update" flag kept for
// the caller.
//
//   du::CBool b(vq::SStrId{70001, 0}, false, true, false);
//   b.setValueByString("True");        // true: the localised word, or "True" exactly
//   b.setValueByString("yes");         // false, and the call still succeeds
//
// Setting never fails: any text other than the two true words makes the value false.
#pragma once

#include "vqk/options/du_base.h"

namespace du {

class VQK_API CBool : public CBase {
public:
    CBool(const vq::SStrId& id, const bool& value, bool editable, bool update);

    vq::CTStr<char> string() override;
    int valInt() const override;
    bool setValueByString(const char* text) override;
    bool setValueByInt(int v) override;
    bool isBool() const override;

    const bool& val() const { return m_value; }
    // Stores without marking the unit changed.
    void setVal(const bool& v) { m_value = v; }
    operator const bool&() const { return m_value; }
    void setUpdate(bool u) { m_update = u; }
    bool isUpdate() const { return m_update; }

protected:
    bool m_value;
    bool m_update;
};

VQK_API CBase* createBool(const vq::SStrId& id, const bool& value, bool editable);

} // namespace du
