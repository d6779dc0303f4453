// vqk/options/du_time.h
//
// du::CTime: a moment as seconds since 1970, shown in local time in the C runtime's
// "%c" form ("Sun Nov 22 07:45:12 2026" in the "C" locale), or "-" when the moment has
// no local time. It is shown only; setting it from text is refused.
#pragma once

#include "vqk/options/du_base.h"

namespace du {

class VQK_API CTime : public CBase {
public:
    // Not editable, dim 0.
    CTime(const vq::SStrId& id, const vq::int64& time);

    vq::CTStr<char> string() override;

    const vq::int64& val() const { return m_value; }
    void setVal(const vq::int64& v) { m_value = v; }

protected:
    vq::int64 m_value;
};

} // namespace du
