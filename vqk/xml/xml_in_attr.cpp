// CXmlIn: typed reads of the attributes of the tag in hand.
#include "vqk/xml/xml_in.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vq {

bool CXmlIn::attr(const char* name, const char* format, void* target, bool required) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    if (a) {
        if (!target)
            return true;
        if (!format) {
            *static_cast<const char**>(target) = a->value;
            return true;
        }
        // The scanner's end-of-input result (an empty value) is not 0 and therefore
        // counts as success: readers of existing files rely on that.
        if (std::sscanf(a->value, format, target) != 0)
            return true;
    }
    if (required)
        throw failAt(xmlInErrMissedAttr, m_length + 2);
    return false;
}

int CXmlIn::attrInt(const char* name, int def) const { return attrInt(name, nullptr, nullptr, def); }

int CXmlIn::attrInt(const char* name, const char* alternative, int def) const {
    return attrInt(name, alternative, nullptr, def);
}

int CXmlIn::attrInt(const char* name, const char* alternative1, const char* alternative2,
                    int def) const {
    for (const char* n : {name, alternative1, alternative2})
        if (const SAttr* a = n ? findAttr(n) : nullptr)
            return std::atoi(a->value);
    return def;
}

bool CXmlIn::attrBool(const char* name, bool def) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    if (!a)
        return def;
    if (std::strcmp(a->value, "true") == 0)
        return true;
    if (std::strcmp(a->value, "false") == 0)
        return false;
    return std::atoi(a->value) != 0;
}

unsigned CXmlIn::attrUint(const char* name, unsigned def) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    return a ? unsigned(std::strtoul(a->value, nullptr, 10)) : def;
}

double CXmlIn::attrDec(const char* name, double def) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    return a ? std::atof(a->value) : def;
}

float CXmlIn::attrFloat(const char* name, float def) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    return a ? float(std::atof(a->value)) : def;
}

const char* CXmlIn::attrStr(const char* name, const char* def) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    return a ? a->value : def;
}

uint64 CXmlIn::attrID1(const char* name, uint64 def) const {
    return name ? ApXin::attrID1(name, def) : def;
}

// Scans N components into a scratch array first, so that a partial conversion never
// leaves `out` half overwritten.
template <int N, class T> bool CXmlIn::scanTuple(const char* name, const char* format, T* out) const {
    const SAttr* a = name ? findAttr(name) : nullptr;
    T v[4] = {};
    if (!a)
        return false;
    int got;
    if constexpr (N == 2)
        got = std::sscanf(a->value, format, &v[0], &v[1]);
    else if constexpr (N == 3)
        got = std::sscanf(a->value, format, &v[0], &v[1], &v[2]);
    else
        got = std::sscanf(a->value, format, &v[0], &v[1], &v[2], &v[3]);
    if (got != N)
        return false;
    std::memcpy(out, v, sizeof(T) * N);
    return true;
}

namespace {

template <class T> bool fallBack(T* out, const T* def, int n) {
    if (out && def && out != def)
        std::memmove(out, def, sizeof(T) * size_t(n));
    return false;
}

} // namespace

bool CXmlIn::attrI2(const char* name, int* out, const int* def) const {
    return (out && scanTuple<2>(name, "%i %i", out)) || fallBack(out, def, 2);
}

bool CXmlIn::attrB2(const char* name, bool* out, const bool* def) const {
    int v[2];
    if (out && scanTuple<2>(name, "%i %i", v)) {
        out[0] = v[0] != 0;
        out[1] = v[1] != 0;
        return true;
    }
    return fallBack(out, def, 2);
}

bool CXmlIn::attrI3(const char* name, int* out, const int* def) const {
    return (out && scanTuple<3>(name, "%i %i %i", out)) || fallBack(out, def, 3);
}

bool CXmlIn::attrD2(const char* name, double* out, const double* def) const {
    return (out && scanTuple<2>(name, "%lf %lf", out)) || fallBack(out, def, 2);
}

bool CXmlIn::attrD3(const char* name, double* out, const double* def) const {
    return (out && scanTuple<3>(name, "%lf %lf %lf", out)) || fallBack(out, def, 3);
}

bool CXmlIn::attrD4(const char* name, double* out, const double* def) const {
    return (out && scanTuple<4>(name, "%lf %lf %lf %lf", out)) || fallBack(out, def, 4);
}

std::array<double, 2> CXmlIn::attrT(const char* name, const std::array<double, 2>& def) const {
    std::array<double, 2> v = def;
    attrD2(name, v.data(), nullptr);
    return v;
}

std::array<double, 3> CXmlIn::attrT(const char* name, const std::array<double, 3>& def) const {
    std::array<double, 3> v = def;
    attrD3(name, v.data(), nullptr);
    return v;
}

} // namespace vq
