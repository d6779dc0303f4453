// vqk/options/du_string_id.h
//
// Integer units shown through the default string table: du::CStrId holds one text id
// and shows its text; du::CState holds a set of state bits and shows the word of each
// set bit from bit 3 to bit 14, each after a blank (" Hidden Error" for bits 3 and 14).
// Bits 0 to 2 and above 14 show nothing.
//
//   du::CStrId label(vq::SStrId{70001, 0}, 62407);
//   label.string();                    // "True"
//   label.setValueByInt(62408);        // now "False"; the changed flag is untouched
#pragma once

#include "vqk/options/du_number.h"

namespace du {

class VQK_API CStrId : public T1<int> {
public:
    // Not editable, dim 0, full range.
    CStrId(const vq::SStrId& id, const int& stringId);

    vq::CTStr<char> string() override;
    int valInt() const override;
    // Stores the id; the changed flag is left as it is.
    bool setValueByInt(int id) override;
};

class VQK_API CState : public T1<int> {
public:
    // Not editable, dim 0, full range.
    CState(const vq::SStrId& id, int bits);

    vq::CTStr<char> string() override;
};

} // namespace du
