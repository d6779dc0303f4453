// vqk/text/small_tuple.h
//
// T2<T> is the library's pair of two values of one type: a cell position (row,
// column), a range (low, high), a pair of flags. It is a plain record, trivially
// copyable, so arrays of pairs live in TVector.
//
//   vq::T2<int> at(3, 1);        // row 3, column 1
//   at[1] += 2;                   // column 3
#pragma once

namespace vq {

template <class T> struct T2 {
    T v[2];

    constexpr T2() : v{T(), T()} {}
    constexpr T2(T a, T b) : v{a, b} {}

    T& operator[](int i) { return v[i]; }
    constexpr const T& operator[](int i) const { return v[i]; }
    bool operator==(const T2& o) const { return v[0] == o.v[0] && v[1] == o.v[1]; }
    bool operator!=(const T2& o) const { return !(*this == o); }
};

} // namespace vq
