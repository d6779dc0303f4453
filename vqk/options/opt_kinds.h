// vqk/options/opt_kinds.h
//
// The option record kinds, each bound to a variable of the caller (or, as an Imp
// variant, to a value of its own), with the value attributes they write and read:
//
//   kind          value            "val" written            "type"
//   SOptBool      bool             true / false             bool
//   SOptI1        int              %i (a table index with a value table)   i1
//   SOptEnum      int + labels     as SOptI1, masked; "values" a|b|c       enum
//   SOptI2/I3     T2/T3<int>       %i %i [%i]               i2 / i3
//   SOptD1        double + unit    %.8g, "deg" = unit 0..3  d1 / angle / percent
//   SOptF1        float + unit     %.8g                     f1 / fAngle / fPercent
//   SOptD2        T2<double>       %.15g %.15g (read "%lf %ilf": the second as an int)
//   SOptD3        T3<double>       %.15g %.15g %.15g        d3
//   SOptColor     CColor           %i %i %i                 color
//   SOptFont      CFont            the font's text form, "Arial 10 bold"   font
//   SOptString    CStringSt        its first text (one line: an attribute value's line
//                                  breaks do not survive other XML tools)   string
//   SOptBitset    unsigned bits    one '0' or '1' per bit, bit 0 first: "1001"   bitset
//
// Equality compares values exactly, without tolerance. Setters notify the record's
// dependents when the value changes.
#pragma once

#include "vqk/options/opt.h"
#include "vqk/text/color.h"
#include "vqk/text/font.h"
#include "vqk/text/string_list.h"

namespace vq {

// A record over one value of type T; Code is its type() code.
template <class T, int Code> struct TOptValue : SOpt {
    TOptValue(const char* name, T& value, SStrId label = SStrId(), bool readOnly = false)
        : SOpt(name, label, readOnly), m_val(&value) {}
    const T& val() const { return *m_val; }
    void setVal(const T& v) {
        if (*m_val != v) {
            *m_val = v;
            notifyChanged();
        }
    }
    operator const T&() const { return *m_val; }
    int type() const override { return Code; }
    bool isEqual(const SOpt& o) const override {
        return SOpt::isEqual(o) && *m_val == *static_cast<const TOptValue&>(o).m_val;
    }

protected:
    TOptValue(const TOptValue&) = default;
    // Imp variants point the record at their own storage after copying.
    void rebind(T& value) { m_val = &value; }
    T* m_val;
};

// Numeric records carry a unit.
template <class T, int Code> struct TOptUnit : TOptValue<T, Code> {
    TOptUnit(const char* name, T& value, SOpt::EUnitType unit, SStrId label, bool readOnly)
        : TOptValue<T, Code>(name, value, label, readOnly), m_unit(unit) {}
    SOpt::EUnitType unit() override { return m_unit; }

protected:
    SOpt::EUnitType m_unit;
};

struct VQK_API SOptBool : TOptValue<bool, 1> {
    using TOptValue::TOptValue;
    SOpt* createCopy() const override { return new SOptBool(*this); }
    bool getValue(CTStr<char>& out, double, double, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptI1 : TOptValue<int, 2> {
    // `table` (not copied, must outlive the record) maps stored indexes to values.
    SOptI1(const char* name, int& value, SStrId label = SStrId(), bool readOnly = false,
           const int* table = nullptr, int tableCount = 0);
    SOpt* createCopy() const override { return new SOptI1(*this); }
    bool getValue(CTStr<char>& out, double, double, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
    const T2<int>& range() const { return m_intRange; }
    void setIntRange(const T2<int>& r) { m_intRange = r; }
    const int* table() const { return m_table; }
    int tableCount() const { return m_tableCount; }

protected:
    // The stored text for a value: the value, or its index in the table (-1 when the
    // table lacks it, which reading ignores).
    int storedValue(int value) const;
    const int* m_table;
    int m_tableCount;
    T2<int> m_intRange{INT_MIN, INT_MAX};
};

struct VQK_API SOptEnum : SOptI1 {
    SOptEnum(const char* name, int& value, SStrId label = SStrId(), bool readOnly = false,
             const int* table = nullptr, int tableCount = 0, int mask = 0);
    SOpt* createCopy() const override { return new SOptEnum(*this); }
    int type() const override { return 12; }
    bool getValue(CTStr<char>& out, double, double, const char* prefix) const override;
    void write(CXmlOut& out) const override;
    // Labels by position (value table order, or values 0, 1, ... without a table).
    void setLabels(const char* const* labels, int count);
    void setLabels(const SStrId* labels, int count);
    void resetLabels(const TVectorC<CTStr<char>>& labels) { m_labels = labels; }
    int nLabel() const { return int(m_labels.size()); }
    const CTStr<char>& labelText(int i) const { return m_labels[i]; }
    // The value of the first label equal to `text`; no match gives the position
    // nLabel() (with a value table, the table's value there).
    int valByLabel(const char* text) const;
    // The label of value `v`; false (and `out` empty) when no label has it.
    bool getLabelByVal(int v, CTStr<char>& out) const;
    int mask() const { return m_mask; }

private:
    TVectorC<CTStr<char>> m_labels;
    int m_mask;
};

struct VQK_API SOptI2 : TOptValue<T2<int>, 3> {
    using TOptValue::TOptValue;
    SOpt* createCopy() const override { return new SOptI2(*this); }
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptI3 : TOptValue<T3<int>, 4> {
    using TOptValue::TOptValue;
    SOpt* createCopy() const override { return new SOptI3(*this); }
    bool getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptD1 : TOptUnit<double, 5> {
    SOptD1(const char* name, double& value, EUnitType unit = eNone, SStrId label = SStrId(),
           bool readOnly = false)
        : TOptUnit(name, value, unit, label, readOnly) {}
    SOpt* createCopy() const override { return new SOptD1(*this); }
    bool getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
    // The value in a length unit `s` times the stored one: times s, s squared or s
    // cubed for lengths, areas and volumes; unchanged otherwise.
    double valScaled(double s) const;
};

struct VQK_API SOptF1 : TOptUnit<float, 14> {
    SOptF1(const char* name, float& value, EUnitType unit = eNone, SStrId label = SStrId(),
           bool readOnly = false)
        : TOptUnit(name, value, unit, label, readOnly) {}
    SOpt* createCopy() const override { return new SOptF1(*this); }
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptD2 : TOptUnit<T2<double>, 15> {
    SOptD2(const char* name, T2<double>& value, EUnitType unit = eNone, SStrId label = SStrId(),
           bool readOnly = false)
        : TOptUnit(name, value, unit, label, readOnly) {}
    SOpt* createCopy() const override { return new SOptD2(*this); }
    bool getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptD3 : TOptUnit<T3<double>, 7> {
    SOptD3(const char* name, T3<double>& value, EUnitType unit = eNone, SStrId label = SStrId(),
           bool readOnly = false)
        : TOptUnit(name, value, unit, label, readOnly) {}
    SOpt* createCopy() const override { return new SOptD3(*this); }
    bool getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptColor : TOptValue<CColor, 9> {
    using TOptValue::TOptValue;
    SOpt* createCopy() const override { return new SOptColor(*this); }
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptFont : TOptValue<CFont, 10> {
    using TOptValue::TOptValue;
    SOpt* createCopy() const override { return new SOptFont(*this); }
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
};

struct VQK_API SOptString : TOptValue<CStringSt, 11> {
    using TOptValue::TOptValue;
    SOpt* createCopy() const override { return new SOptString(*this); }
    bool getValue(CTStr<char>& out, double, double, const char* prefix) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
    const char* text() const { return m_val->first(); }
    void setText(const char* text);
};

struct VQK_API SOptBitset : SOpt {
    SOptBitset(const char* name, unsigned& bits, int count, SStrId label = SStrId(),
               bool readOnly = false);
    SOpt* createCopy() const override { return new SOptBitset(*this); }
    int type() const override { return 13; }
    bool isEqual(const SOpt& o) const override;
    void read(CXmlIn& in) override;
    void write(CXmlOut& out) const override;
    unsigned val() const { return *m_bits; }
    int count() const { return m_count; }

private:
    unsigned* m_bits;
    int m_count;
};

// The Imp variants hold their own value; copies hold a copy of it.
template <class Rec, class T> struct TOptImp : Rec {
    template <class... A>
    TOptImp(const char* name, const T& value, A... args) : Rec(name, m_own, args...), m_own(value) {}
    TOptImp(const TOptImp& o) : Rec(o), m_own(o.m_own) { this->rebind(m_own); }
    SOpt* createCopy() const override { return new TOptImp(*this); }
    bool isReference() const override { return false; }

private:
    T m_own;
};

using SOptBoolImp = TOptImp<SOptBool, bool>;
using SOptI1Imp = TOptImp<SOptI1, int>;
using SOptEnumImp = TOptImp<SOptEnum, int>;
using SOptI2Imp = TOptImp<SOptI2, T2<int>>;
using SOptD1Imp = TOptImp<SOptD1, double>;
using SOptD2Imp = TOptImp<SOptD2, T2<double>>;
using SOptD3Imp = TOptImp<SOptD3, T3<double>>;
using SOptColorImp = TOptImp<SOptColor, CColor>;
using SOptFontImp = TOptImp<SOptFont, CFont>;
using SOptStringImp = TOptImp<SOptString, CStringSt>;

} // namespace vq
