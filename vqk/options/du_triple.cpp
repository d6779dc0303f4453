#include "vqk/options/du_triple.h"

#include <sstream>

namespace du {

template <class T>
T3<T>::T3(const vq::SStrId& id, const vq::T3<T>& value, bool editable, int dim)
    : CBase(id, editable, dim), m_value(value) {}

// Three ints are held for the caller only: they show and take text as any unit does.
template <class T> vq::CTStr<char> T3<T>::string() {
    if constexpr (std::is_integral<T>::value)
        return CBase::string();
    vq::CTStr<char> s;
    double f = k();
    s.cformat("%.8g %.8g %.8g", double(m_value.x * f), double(m_value.y * f), double(m_value.z * f));
    return s;
}

template <class T> bool T3<T>::setValueByString(const char* text) {
    if constexpr (std::is_integral<T>::value)
        return CBase::setValueByString(text);
    std::istringstream is(text ? text : "");
    double x, y, z;
    if (!(is >> x >> y >> z))
        return false;
    double f = k();
    m_value = vq::T3<T>{T(x / f), T(y / f), T(z / f)};
    markSet();
    return true;
}

template class T3<double>;
template class T3<int>;

D3::D3(const vq::SStrId& id, const vq::T3<double>& value, bool editable, int dim)
    : T3<double>(id, value, editable, dim) {}

const char* D3::typeStr() const { return "D3"; }

} // namespace du
