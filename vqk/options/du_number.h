// vqk/options/du_number.h
//
// Number units: du::T1<int> and du::T1<double> hold one number with a range, and
// du::CUnitType a double with a units text ("12.5 (mm)").
//
//   du::T1<double> d(vq::SStrId{70001, 0}, 1.0, true, 0, 0.0, 100.0);
//   d.setK(25.4);
//   du::CBase::setTruncTrailZero(true);
//   d.string();                        // "25.4"
//   d.setValueByString("50.8");        // d.val() == 2.0
//
// Text shows value * k; parsed text is divided by k. A double unit reads one double, an
// int unit one int and divides it by k truncated to an int with integer division, so
// an integer unit must only ever be given integral factors of at least 1 (a factor
// that truncates to 0 divides by zero). Text that does not start with a number returns
// false and keeps the value and the changed flag. The range is reported, never
// enforced.
#pragma once

#include "vqk/options/du_base.h"

namespace du {

template <class T> class VQK_API T1 : public CBase, public CRange {
public:
    T1(const vq::SStrId& id, const T& value, bool editable, int dim, double lower, double upper);

    vq::CTStr<char> string() override;
    bool setValueByString(const char* text) override;
    double getLowerLimit() const override;
    double getHigherLimit() const override;
    bool isFloat() const override;

    const T& val() const { return m_value; }
    // Stores without marking the unit changed.
    void setVal(const T& v) { m_value = v; }
    operator const T&() const { return m_value; }

protected:
    T m_value;
};

extern template class T1<int>;
extern template class T1<double>;

// A number with a units text, shown as "number (units)".
class VQK_API CUnitType : public T1<double> {
public:
    CUnitType(const vq::SStrId& id, double value, const char* units, bool editable);

    vq::CTStr<char> string() override;
    // The number alone.
    vq::CTStr<char> value() override;
    const char* units() const override;

protected:
    vq::CTStr<char> m_units;
};

// New units with dim 0, no parent and the full range; release them with
// CBase::destroy.
VQK_API CBase* createI1(const vq::SStrId& id, const int& value, bool editable);
VQK_API CBase* createD1(const vq::SStrId& id, const double& value, bool editable);

} // namespace du
