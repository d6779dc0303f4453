#include "vqk/options/opt.h"

#include "vqk/text/string_list.h"
#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"
#include "vqk/xml/xml_out_elem.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

namespace vq {

namespace {

const char* const kTypeNames[] = {"",       "bool",     "i1",       "i2",       "i3",
                                  "d1",     "angle",    "d3",       "vectori1", "color",
                                  "font",   "string",   "enum",     "bitset",   "f1",
                                  "d2",     "vectord2", "vectord3", "vectord1", "vectori2",
                                  "vectort"};

// The kinds whose "type" write_base writes; the others write their own or none.
bool baseWritesType(int code) {
    switch (code) {
    case 1: case 2: case 3: case 4: case 6: case 7: case 8: case 9: case 10: case 12: case 13:
        return true;
    default:
        return false;
    }
}

// The label text split at its first line break; without one, both halves are it all.
void splitLabel(const SStrId& id, CTStr<char>* label, CTStr<char>* desc) {
    if (id.id < 1)
        return;
    const char* text = stringTableText(id);
    const char* br = std::strchr(text, '\n');
    if (!br) {
        if (label)
            *label = text;
        if (desc)
            *desc = text;
        return;
    }
    if (label)
        label->reset(text, int(br - text));
    if (desc)
        *desc = br + 1;
}

} // namespace

const char* optTypeName(int code) {
    return code >= 0 && code < int(sizeof kTypeNames / sizeof kTypeNames[0]) ? kTypeNames[code] : "";
}

SOpt::SOpt(const char* name, SStrId label, bool readOnly)
    : m_name(name), m_label(label), m_readOnly(readOnly) {}

SOpt::~SOpt() = default;

bool SOpt::getValue(CTStr<char>&, double, double, const char*) const { return false; }

CTStr<char> SOpt::label() const {
    CTStr<char> s;
    splitLabel(m_label, &s, nullptr);
    return s;
}

CTStr<char> SOpt::desc() const {
    CTStr<char> s;
    splitLabel(m_label, nullptr, &s);
    return s;
}

void SOpt::addDependent(void* context, FChanged onChanged) {
    m_contexts.push_back(context);
    m_callbacks.push_back(onChanged);
}

void SOpt::notifyChanged() {
    for (uint32_t i = 0; i < m_callbacks.size(); ++i)
        if (m_callbacks[i])
            m_callbacks[i](m_contexts[i], this);
}

void SOpt::write_base(CXmlOut& out) const {
    CXmlOutElem opt(out, "opt");
    out.attrStr("name", m_name.str());
    write(out);
    if (m_label.id >= 1) {
        CTStr<char> label, desc;
        splitLabel(m_label, &label, &desc);
        out.attrStr("label", label.str());
        out.attrStr("description", desc.str());
    }
    if (m_readOnly)
        out.attr("readOnly", "%i", 1);
    if (baseWritesType(type()))
        out.attr("type", "%s", optTypeName(type()));
    writeBody(out);
}

void SOpt::read_base(CXmlIn& in) {
    const bool hasBody = in.isTagStart();
    read(in);
    if (const char* ro = in.hasAttr("readOnly") ? in.attrStr("readOnly", "") : nullptr) {
        if (std::strcmp(ro, "true") == 0)
            m_readOnly = true;
        else if (std::strcmp(ro, "false") == 0)
            m_readOnly = false;
        else
            m_readOnly = std::atoi(ro) != 0;
    }
    readBody(in);
    // A body the kind did not read is passed over, so the set's reader stays in step.
    if (hasBody && !(in.isTagEnd() && in.isTag("opt")))
        in.skip();
}

// -- report text

int tolerance(int minDigits, double value, double tol) {
    int digits = minDigits;
    tol = std::fabs(tol);
    if (tol > 0 && std::isfinite(tol)) {
        const int needed = int(std::ceil(-std::log10(tol)));
        if (needed > digits)
            digits = needed;
    }
    (void)value;
    return digits < 0 ? 0 : digits > 15 ? 15 : digits;
}

namespace {

double unitScale(double scale, SOpt::EUnitType unit) {
    return unit == SOpt::eLength ? scale : unit == SOpt::eArea ? scale * scale
                                       : unit == SOpt::eVolume ? scale * scale * scale
                                                               : 1.0;
}

void addNumber(CTStr<char>& out, double v, double tol) {
    CTStr<char> n;
    if (tol == 0)
        n.cformat("%.16G", v);
    else
        n.cformat("%.*G", tolerance(1, v, tol) + 1 + (std::fabs(v) >= 1 ? int(std::log10(std::fabs(v))) : 0), v);
    out += n.str();
}

} // namespace

void addDblStr(CTStr<char>& out, const char* name, const double* values, int count, double scale,
               SOpt::EUnitType unit, double tol) {
    if (name && *name) {
        out += name;
        out += " = ";
    }
    const double k = unitScale(scale, unit);
    for (int i = 0; i < count; ++i) {
        if (i)
            out += " ";
        addNumber(out, values[i] * k, tol);
    }
    if (tol != 0) {
        out += " +/- ";
        addNumber(out, std::fabs(tol) * k, tol);
    }
}

void getI3Str(CStringSt& out, const char* name, const T3<int>& v, double scale, SOpt::EUnitType unit,
              double tol) {
    const double d[3] = {double(v.x), double(v.y), double(v.z)};
    CTStr<char> s;
    addDblStr(s, name, d, 3, scale, unit, tol);
    out.add(s.str());
}

} // namespace vq
