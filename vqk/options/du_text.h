// vqk/options/du_text.h
//
// Text units: du::CStr holds free text, du::CPath text that names a file (editors
// offer a file chooser for it).
//
//   du::CBase* s = du::CStr::create(vq::SStrId{70001, 0}, "part", true);
//   s->setValueByString("assembly");   // always succeeds; null sets the empty text
#pragma once

#include "vqk/options/du_base.h"

namespace du {

class VQK_API CStr : public CBase {
public:
    CStr(const vq::SStrId& id, const char* value, bool editable);
    // A new unit with dim 0 and no parent; release it with CBase::destroy.
    static CBase* create(const vq::SStrId& id, const char* value, bool editable);

    vq::CTStr<char> string() override;
    bool setValueByString(const char* text) override;

    const vq::CTStr<char>& val() const { return m_value; }
    // Stores without marking the unit changed.
    void setVal(const char* v) { m_value = v; }
    operator const vq::CTStr<char>&() const { return m_value; }

protected:
    vq::CTStr<char> m_value;
};

class VQK_API CPath : public CStr {
public:
    // An editable path.
    CPath(const vq::SStrId& id, const char* path);

    bool isPath() const override;
};

} // namespace du
