// vqk/text/tuples.h
//
// T2<T> and T3<T>: plain pairs and triples (a 2-D or 3-D point, a range, a cell's row
// and column, three components), zero when default-made, compared member by member and
// indexed as well as named.
//
//   vq::T3<double> p{1.0, 2.0, 0.5};
//   vq::T2<int> at(3, 1);          // row 3, column 1
//   at[1] += 2;                    // column 3
#pragma once

namespace vq {

template <class T> struct T2 {
    T x;
    T y;
    constexpr T2() : x(), y() {}
    constexpr T2(T x_, T y_) : x(x_), y(y_) {}
    T& operator[](int i) { return i ? y : x; }
    constexpr const T& operator[](int i) const { return i ? y : x; }
    bool operator==(const T2& o) const { return x == o.x && y == o.y; }
    bool operator!=(const T2& o) const { return !(*this == o); }
};

template <class T> struct T3 {
    T x;
    T y;
    T z;
    constexpr T3() : x(), y(), z() {}
    constexpr T3(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}
    T& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }
    constexpr const T& operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }
    bool operator==(const T3& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const T3& o) const { return !(*this == o); }
};

} // namespace vq
