#include "vqk/options/opt_kinds.h"

#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vq {

namespace {

// "val" when present and not empty; null otherwise (the value then stays as it was).
const char* valueText(const CXmlIn& in) {
    const char* v = in.hasAttr("val") ? in.attrStr("val", "") : nullptr;
    return v && *v ? v : nullptr;
}

void addPrefix(CTStr<char>& out, const char* prefix) {
    if (prefix && *prefix) {
        out += prefix;
        out += " = ";
    }
}

const char* unitType(SOpt::EUnitType unit, const char* plain, const char* angle, const char* percent) {
    return unit == SOpt::eAngle ? angle : unit == SOpt::ePercent ? percent : plain;
}

} // namespace

// -- bool

bool SOptBool::getValue(CTStr<char>& out, double, double, const char* prefix) const {
    addPrefix(out, prefix);
    out += *m_val ? "true" : "false";
    return true;
}

void SOptBool::read(CXmlIn& in) {
    if (const char* v = valueText(in)) {
        if (std::strcmp(v, "true") == 0)
            setVal(true);
        else if (std::strcmp(v, "false") == 0)
            setVal(false);
    }
}

void SOptBool::write(CXmlOut& out) const { out.attrStr("val", *m_val ? "true" : "false"); }

// -- int, with an optional value table

SOptI1::SOptI1(const char* name, int& value, SStrId label, bool readOnly, const int* table, int tableCount)
    : TOptValue(name, value, label, readOnly), m_table(table), m_tableCount(table ? tableCount : 0) {}

int SOptI1::storedValue(int value) const {
    if (!m_table)
        return value;
    for (int i = 0; i < m_tableCount; ++i)
        if (m_table[i] == value)
            return i;
    return -1;
}

bool SOptI1::getValue(CTStr<char>& out, double, double, const char* prefix) const {
    addPrefix(out, prefix);
    CTStr<char> n;
    n.cformat("%i", *m_val);
    out += n.str();
    return true;
}

void SOptI1::read(CXmlIn& in) {
    const char* v = valueText(in);
    if (!v)
        return;
    const int n = std::atoi(v);
    if (!m_table)
        setVal(n);
    else if (n >= 0 && n <= m_tableCount - 1)
        setVal(m_table[n]);
}

void SOptI1::write(CXmlOut& out) const { out.attr("val", "%i", storedValue(*m_val)); }

// -- enum

SOptEnum::SOptEnum(const char* name, int& value, SStrId label, bool readOnly, const int* table,
                   int tableCount, int mask)
    : SOptI1(name, value, label, readOnly, table, tableCount), m_mask(mask) {}

void SOptEnum::setLabels(const char* const* labels, int count) {
    m_labels.clear();
    for (int i = 0; i < count; ++i)
        m_labels.emplace_back(labels[i]);
}

void SOptEnum::setLabels(const SStrId* labels, int count) {
    m_labels.clear();
    for (int i = 0; i < count; ++i)
        m_labels.emplace_back(stringTableText(labels[i]));
}

int SOptEnum::valByLabel(const char* text) const {
    int i = 0;
    while (i < nLabel() && !(text && m_labels[i] == text))
        ++i;
    return m_table && i < m_tableCount ? m_table[i] : i;
}

bool SOptEnum::getLabelByVal(int v, CTStr<char>& out) const {
    const int i = m_table ? storedValue(v) : v;
    out = "";
    if (i < 0 || i >= nLabel())
        return false;
    out = m_labels[i];
    return true;
}

bool SOptEnum::getValue(CTStr<char>& out, double, double, const char* prefix) const {
    CTStr<char> label;
    if (!getLabelByVal(*m_val, label))
        return SOptI1::getValue(out, 0, 0, prefix);
    addPrefix(out, prefix);
    out += label.str();
    return true;
}

void SOptEnum::write(CXmlOut& out) const {
    // The variable is masked while it is written and restored afterwards.
    const int kept = *m_val;
    if (m_mask)
        *m_val &= m_mask;
    SOptI1::write(out);
    *m_val = kept;
    CTStr<char> values;
    for (int i = 0; i < nLabel(); ++i) {
        if (i)
            values += "|";
        values += m_labels[i].str();
    }
    out.attrStr("values", values.str());
}

// -- pairs and triples of ints

void SOptI2::read(CXmlIn& in) {
    T2<int> v;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%i %i", &v.x, &v.y) == 2)
            setVal(v);
}

void SOptI2::write(CXmlOut& out) const { out.attr("val", "%i %i", m_val->x, m_val->y); }

bool SOptI3::getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const {
    CStringSt st;
    getI3Str(st, prefix, *m_val, scale, eNone, tol);
    out += st.first();
    return true;
}

void SOptI3::read(CXmlIn& in) {
    T3<int> v;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%i %i %i", &v.x, &v.y, &v.z) == 3)
            setVal(v);
}

void SOptI3::write(CXmlOut& out) const { out.attr("val", "%i %i %i", m_val->x, m_val->y, m_val->z); }

// -- doubles with a unit

double SOptD1::valScaled(double s) const {
    switch (m_unit) {
    case eLength: return *m_val * s;
    case eArea: return *m_val * s * s;
    case eVolume: return *m_val * s * s * s;
    default: return *m_val;
    }
}

bool SOptD1::getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const {
    addDblStr(out, prefix, m_val, 1, scale, m_unit, tol);
    return true;
}

void SOptD1::read(CXmlIn& in) {
    double v;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%lf", &v) == 1)
            setVal(v);
}

void SOptD1::write(CXmlOut& out) const {
    out.attr("val", "%.8g", *m_val);
    out.attrStr("type", unitType(m_unit, "d1", "angle", "percent"));
    if (m_unit <= eVolume)
        out.attr("deg", "%i", int(m_unit));
}

void SOptF1::read(CXmlIn& in) {
    double v;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%lf", &v) == 1)
            setVal(float(v));
}

void SOptF1::write(CXmlOut& out) const {
    out.attr("val", "%.8g", double(*m_val));
    out.attrStr("type", unitType(m_unit, "f1", "fAngle", "fPercent"));
}

bool SOptD2::getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const {
    const double v[2] = {m_val->x, m_val->y};
    addDblStr(out, prefix, v, 2, scale, m_unit, tol);
    return true;
}

void SOptD2::read(CXmlIn& in) {
    // The second number is read as an integer on purpose: files written by earlier
    // versions are read the way those versions read them.
    double x;
    int y;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%lf %ilf", &x, &y) == 2)
            setVal(T2<double>{x, double(y)});
}

void SOptD2::write(CXmlOut& out) const { out.attr("val", "%.15g %.15g", m_val->x, m_val->y); }

bool SOptD3::getValue(CTStr<char>& out, double scale, double tol, const char* prefix) const {
    const double v[3] = {m_val->x, m_val->y, m_val->z};
    addDblStr(out, prefix, v, 3, scale, m_unit, tol);
    return true;
}

void SOptD3::read(CXmlIn& in) {
    T3<double> v;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%lf %lf %lf", &v.x, &v.y, &v.z) == 3)
            setVal(v);
}

void SOptD3::write(CXmlOut& out) const {
    out.attr("val", "%.15g %.15g %.15g", m_val->x, m_val->y, m_val->z);
}

// -- colour, font, text

void SOptColor::read(CXmlIn& in) {
    int r, g, b;
    if (const char* s = valueText(in))
        if (std::sscanf(s, "%i %i %i", &r, &g, &b) == 3)
            setVal(CColor{(unsigned char)r, (unsigned char)g, (unsigned char)b});
}

void SOptColor::write(CXmlOut& out) const { out.attr("val", "%i %i %i", m_val->r, m_val->g, m_val->b); }

void SOptFont::read(CXmlIn& in) {
    CFont f;
    if (const char* s = valueText(in))
        if (f.parse(s))
            setVal(f);
}

void SOptFont::write(CXmlOut& out) const { out.attrStr("val", m_val->text().str()); }

bool SOptString::getValue(CTStr<char>& out, double, double, const char* prefix) const {
    addPrefix(out, prefix);
    out += text();
    return true;
}

void SOptString::setText(const char* text) {
    if (std::strcmp(this->text(), text ? text : "") == 0)
        return;
    if (m_val->empty())
        m_val->add(text);
    else
        (*m_val)[0] = text;
    notifyChanged();
}

void SOptString::read(CXmlIn& in) {
    if (const char* s = valueText(in))
        setText(s);
}

void SOptString::write(CXmlOut& out) const {
    out.attrStr("val", text());
    out.attrStr("type", "string");
}

// -- bits

SOptBitset::SOptBitset(const char* name, unsigned& bits, int count, SStrId label, bool readOnly)
    : SOpt(name, label, readOnly), m_bits(&bits), m_count(count < 0 ? 0 : count > 32 ? 32 : count) {}

bool SOptBitset::isEqual(const SOpt& o) const {
    if (!SOpt::isEqual(o))
        return false;
    const SOptBitset& b = static_cast<const SOptBitset&>(o);
    const unsigned mask = m_count == 32 ? ~0u : (1u << m_count) - 1;
    return m_count == b.m_count && (*m_bits & mask) == (*b.m_bits & mask);
}

void SOptBitset::read(CXmlIn& in) {
    const char* s = valueText(in);
    if (!s || int(std::strlen(s)) != m_count || std::strspn(s, "01") != size_t(m_count))
        return;
    unsigned bits = *m_bits;
    for (int i = 0; i < m_count; ++i)
        bits = s[i] == '1' ? bits | 1u << i : bits & ~(1u << i);
    if (bits != *m_bits) {
        *m_bits = bits;
        notifyChanged();
    }
}

void SOptBitset::write(CXmlOut& out) const {
    char text[33];
    for (int i = 0; i < m_count; ++i)
        text[i] = *m_bits >> i & 1u ? '1' : '0';
    text[m_count] = 0;
    out.attrStr("val", text);
}

} // namespace vq
