// vqk/options/du_base.h
//
// du::CBase is the root of the self-describing data units: a value together with its
// name, editability, change state, display factor and limits, that renders itself to
// text and is set back from text. A property sheet or a unit list (du_list.h) holds
// units as CBase* and asks their kind through typeStr() or the is-queries.
//
//   du::CBase* u = du::createD1(vq::SStrId{70001, 0}, 2.0, true);
//   u->setK(25.4);                     // shown in display units
//   u->setValueByString("50.8");       // stores 2.0, marks changed
//   vq::CStr shown = u->string();      // "50.8"
//   u->typeStr();                      // "D1"
//   du::CBase::destroy(u);
//
// Setting from text never throws: a unit that cannot read the text returns false and
// keeps its value (the kinds that differ say so in their headers). Copy construction
// and assignment copy texts and arrays deeply. Units are not locked: one unit belongs
// to one thread.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"
#include "vqk/text/string_list.h"
#include "vqk/text/string_table.h"

#include <limits>

namespace du {

// The limits of a number unit without a range: minus and plus the largest double.
constexpr double kNoLimit = std::numeric_limits<double>::max();

// The lower and upper limit of a number unit. They are reported to the editor through
// getLowerLimit/getHigherLimit, never enforced when a value is set.
class CRange {
public:
    CRange() = default;
    CRange(double lower, double upper) : m_lower(lower), m_upper(upper) {}
    void getRange(double& lower, double& upper) const {
        lower = m_lower;
        upper = m_upper;
    }
    void setRange(double lower, double upper) {
        m_lower = lower;
        m_upper = upper;
    }

protected:
    double m_lower = -kNoLimit;
    double m_upper = kNoLimit;
};

class VQK_API CBase {
public:
    CBase(const vq::SStrId& id, bool editable, int dim);
    CBase(const CBase&) = default;
    CBase& operator=(const CBase&) = default;

    virtual ~CBase();
    // Deletes the unit: units made by the factories are released this way.
    virtual void destroy();
    virtual vq::CTStr<char> string();
    // The value as an integer; -1 for kinds without one.
    virtual int valInt() const;
    virtual bool setValueByString(const char* text);
    virtual bool setValueByInt(int v);
    // The value alone, without the units a kind may show beside it.
    virtual vq::CTStr<char> value();
    virtual const char* units() const;
    // "C" colour, "B" bool, "F" font, "D1" number, "E" enumeration, "D3" point, and
    // "S" for everything an editor treats as text.
    virtual const char* typeStr() const;
    virtual double getLowerLimit() const;
    virtual double getHigherLimit() const;
    virtual bool isSlider() const;
    virtual bool isColor() const;
    virtual bool isBool() const;
    virtual bool isEnum() const;
    virtual bool isFont() const;
    virtual bool isArray() const;
    virtual bool isFloat() const;
    virtual bool isPath() const;
    virtual int size() const;

    // Releases a unit; a null unit is ignored.
    static void destroy(CBase* unit);

    int name() const { return m_id.id; }
    int iTable() const { return m_id.table; }
    void setName(const vq::SStrId& id) { m_id = id; }
    void setName(const char* text) { m_nameText = text; }
    // The name text when set, else the first line of the name id's table text.
    vq::CTStr<char> nameStr() const;
    // The name text when set, else what follows the first line break of the name id's
    // table text (all of it when it has none).
    vq::CTStr<char> descrStr() const;

    void setIdParent(int id) { m_idParent = id; }
    int idParent() const { return m_idParent; }
    bool isEditable() const { return m_editable; }
    void setEditable(bool e) { m_editable = e; }
    bool isDisabled() const { return m_disabled; }
    void disable() {
        m_disabled = true;
        m_editable = false;
    }
    void enable(bool e) {
        m_editable = e;
        m_disabled = !e;
    }
    bool isChanged() const { return m_changed; }
    void setChanged(bool c) { m_changed = c; }
    bool isUndefined() const { return m_undefined; }
    void setUndefined(bool u) { m_undefined = u; }
    // A code the caller gives the value (dimension, display precision); kept as is.
    int dim() const { return m_dim; }
    void setDim(int d) { m_dim = d; }
    // The display factor: text shows value * k, and parsed text is divided by k. It is
    // a display attribute, so even a const unit may be shown in other units.
    double k() const { return m_k; }
    void setK(double k) const { m_k = k; }

    bool setValueByStringSt(const vq::CStringSt& st) { return setValueByString(st.first()); }

    // Numbers print with "%.8g" when on, through a default stream when off (the start).
    // A process-wide switch, meant to be set once at start-up.
    static void setTruncTrailZero(bool on);
    static bool truncTrailZero();

protected:
    // What every successful set records.
    void markSet() {
        m_changed = true;
        m_undefined = false;
    }

    vq::CTStr<char> m_nameText;
    vq::SStrId m_id;
    bool m_editable;
    bool m_changed = false;
    bool m_disabled = false;
    bool m_undefined = false;
    int m_idParent = 0;
    int m_dim;
    mutable double m_k = 1.0;
};

} // namespace du
