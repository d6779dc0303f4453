#include "vqk/options/du_number.h"

#include <cmath>
#include <cstdio>
#include <sstream>

namespace du {
namespace {

// An int unit shows its product as a whole number while it fits one.
void put(std::ostream& os, double shown, bool whole) {
    if (whole && std::fabs(shown) < 9.2e18)
        os << (long long)shown;
    else
        os << shown;
}

} // namespace

template <class T>
T1<T>::T1(const vq::SStrId& id, const T& value, bool editable, int dim, double lower, double upper)
    : CBase(id, editable, dim), CRange(lower, upper), m_value(value) {}

template <class T> vq::CTStr<char> T1<T>::string() {
    double shown = m_value * k();
    vq::CTStr<char> s;
    if (truncTrailZero()) {
        char buf[256];
        std::snprintf(buf, sizeof buf, "%.8g", shown);
        s = buf;
        return s;
    }
    std::ostringstream os;
    put(os, shown, std::is_integral<T>::value);
    s = os.str().c_str();
    return s;
}

template <class T> bool T1<T>::setValueByString(const char* text) {
    std::istringstream is(text ? text : "");
    T read;
    if (!(is >> read))
        return false;
    if constexpr (std::is_integral<T>::value)
        m_value = read / int(k());
    else
        m_value = read / k();
    markSet();
    return true;
}

template <class T> double T1<T>::getLowerLimit() const { return m_lower; }
template <class T> double T1<T>::getHigherLimit() const { return m_upper; }
template <class T> bool T1<T>::isFloat() const { return std::is_floating_point<T>::value; }

template class T1<int>;
template class T1<double>;

CUnitType::CUnitType(const vq::SStrId& id, double value, const char* units, bool editable)
    : T1<double>(id, value, editable, 0, -kNoLimit, kNoLimit), m_units(units) {}

vq::CTStr<char> CUnitType::string() {
    vq::CTStr<char> s = T1<double>::string();
    s.append(" (");
    s.append(m_units.str());
    s.append(")");
    return s;
}

vq::CTStr<char> CUnitType::value() { return T1<double>::string(); }
const char* CUnitType::units() const { return m_units.str(); }

CBase* createI1(const vq::SStrId& id, const int& value, bool editable) {
    return new T1<int>(id, value, editable, 0, -kNoLimit, kNoLimit);
}
CBase* createD1(const vq::SStrId& id, const double& value, bool editable) {
    return new T1<double>(id, value, editable, 0, -kNoLimit, kNoLimit);
}

} // namespace du
