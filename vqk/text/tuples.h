// vqk/text/tuples.h
//
// T2<T> and T3<T>: plain pairs and triples (a 2-D or 3-D point, a range, three
// components), compared member by member.
//
//   vq::T3<double> p{1.0, 2.0, 0.5};
//   vq::T2<int> range{0, 10};
#pragma once

namespace vq {

template <class T> struct T2 {
    T x;
    T y;
    bool operator==(const T2& o) const { return x == o.x && y == o.y; }
    bool operator!=(const T2& o) const { return !(*this == o); }
};

template <class T> struct T3 {
    T x;
    T y;
    T z;
    bool operator==(const T3& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const T3& o) const { return !(*this == o); }
};

} // namespace vq
