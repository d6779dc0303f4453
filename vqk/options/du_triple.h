// vqk/options/du_triple.h
//
// Three-component units: du::T3<double> (and du::D3, a 3-D point or vector, typed "D3")
// show "%.8g %.8g %.8g" of the components times k and read three numbers divided by k;
// du::T3<int> holds three ints for the caller and has no text form of its own.
//
//   du::D3 p(vq::SStrId{70001, 0}, vq::T3<double>{1, 2, 3}, true, 0);
//   p.string();                         // "1 2 3"
//   p.setValueByString("4 5");          // false: all three or nothing
//
// Inside du the unit template shadows vq::T3, so the value type is spelt vq::T3 here.
#pragma once

#include "vqk/options/du_base.h"
#include "vqk/text/tuples.h"

namespace du {

template <class T> class VQK_API T3 : public CBase {
public:
    T3(const vq::SStrId& id, const vq::T3<T>& value, bool editable, int dim);

    vq::CTStr<char> string() override;
    bool setValueByString(const char* text) override;

    const vq::T3<T>& val() const { return m_value; }
    // Stores without marking the unit changed.
    void setVal(const vq::T3<T>& v) { m_value = v; }
    operator const vq::T3<T>&() const { return m_value; }

protected:
    vq::T3<T> m_value;
};

extern template class T3<double>;
extern template class T3<int>;

class VQK_API D3 : public T3<double> {
public:
    D3(const vq::SStrId& id, const vq::T3<double>& value, bool editable, int dim);

    const char* typeStr() const override;
};

} // namespace du
