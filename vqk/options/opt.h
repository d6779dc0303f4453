// vqk/options/opt.h
//
// SOpt is one named setting of a job: its XML name, its label and description (a
// string-table text "label\ndescription"), its kind, unit, limits and whether it is
// read-only. A record is bound to a variable of the caller and reads and writes it in
// place; the Imp variants (opt_kinds.h) hold their own value. Option sets
// (options_set.h) own records and store them as "opt" elements:
//
//   <opt name="Tolerance" val="0.05" type="d1" deg="1" label="Tolerance" description="..."/>
//
//   double tol = 0.01;
//   vq::SOptD1 rec("Tolerance", tol, vq::SOpt::eLength);
//   rec.write_base(out);       // the element above
//   rec.read_base(in);         // on an "opt" element in hand: tol takes "val"
//
// Reading never fails loudly: a missing or malformed attribute leaves the bound
// variable as it was, so a record keeps its default when the file lacks it or holds
// rubbish.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/string_table.h"
#include "vqk/text/tuples.h"
#include "vqk/text/vector.h"

#include <climits>

namespace vq {

class CXmlIn;
class CXmlOut;
class CStringSt;

struct VQK_API SOpt {
    // The unit of a numeric record; 0 to 3 are the power of the length unit the value
    // carries, which valScaled applies.
    enum EUnitType : int { eNone = 0, eLength = 1, eArea = 2, eVolume = 3, eAngle = 4, ePercent = 5 };
    typedef void (*FChanged)(void* context, SOpt* changed);

    explicit SOpt(const char* name, SStrId label = SStrId(), bool readOnly = false);
    virtual ~SOpt();

    virtual SOpt* createCopy() const = 0;
    virtual int type() const { return 0; }
    virtual EUnitType unit() { return eNone; }
    virtual bool isEqual(const SOpt& o) const { return type() == o.type(); }
    virtual bool isReference() const { return true; }
    // The value as report text: a name prefix, then the value (times `scale` for
    // lengths) and, when `tol` is not 0, the tolerance after " +/- ". False when the
    // kind has no report text.
    virtual bool getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const;
    virtual void read(CXmlIn& in) = 0;
    virtual void write(CXmlOut& out) const = 0;

    const char* name() const { return m_name.str(); }
    // The label text's first line, and the rest; without a line break both are the
    // whole text. An unset label (id below 1) gives empty texts.
    CTStr<char> label() const;
    CTStr<char> desc() const;
    int iLabel() const { return m_label.id; }
    const SStrId& labelId() const { return m_label; }
    void enable(bool on) { m_enabled = on; }
    bool isEnabled() const { return m_enabled; }
    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool on) { m_readOnly = on; }
    // A record flagged not to be saved is skipped by a set whose writeAll is off.
    bool isSaved() const { return m_saved; }
    void setSaved(bool on) { m_saved = on; }
    const T2<double>& rangeD() const { return m_range; }
    void setRange(const T2<double>& r) { m_range = r; }

    // Change notifications: each callback is called with its context when a setter
    // changes the value.
    void addDependent(void* context, FChanged onChanged);
    void notifyChanged();

    void write_base(CXmlOut& out) const;
    void read_base(CXmlIn& in);

protected:
    SOpt(const SOpt&) = default;
    SOpt& operator=(const SOpt&) = default;
    virtual void writeBody(CXmlOut&) const {}
    virtual void readBody(CXmlIn&) {}

    CTStr<char> m_name;
    T2<double> m_range{double(INT_MIN), double(INT_MAX)};
    SStrId m_label;
    bool m_readOnly = false;
    TVector<void*> m_contexts;
    TVector<FChanged> m_callbacks;
    bool m_enabled = true;
    bool m_saved = true;
};

// The XML "type" name of a record code: "bool" for 1, ..., "vectort" for 20; empty for
// 0 and for codes without a name.
VQK_API const char* optTypeName(int code);

// Report text helpers. Numbers are written "%.16G", or with the precision a tolerance
// asks for ("%.*G", enough digits to show the tolerance's first significant digit).
VQK_API void getI3Str(CStringSt& out, const char* name, const T3<int>& v, double scale,
                      SOpt::EUnitType unit, double tol);
VQK_API void addDblStr(CTStr<char>& out, const char* name, const double* values, int count,
                       double scale, SOpt::EUnitType unit, double tol);
// The number of decimals that shows `value` to the first significant digit of `tol`,
// at least `minDigits`.
VQK_API int tolerance(int minDigits, double value, double tol);

} // namespace vq
