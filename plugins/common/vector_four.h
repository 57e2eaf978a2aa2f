// Numbers four at a time: what is inlined into a function for every machine and into one for those
// with AVX2, with the same bits.
#pragma once

#include <plugins/common/vector_exp.h>

#include <cstring>

namespace corvane::lanes {

[[gnu::always_inline]] inline void get(V4& v, double const* x) {
    std::memcpy(&v, x, sizeof v);
}
[[gnu::always_inline]] inline void put(double* x, V4 const& v) {
    std::memcpy(x, &v, sizeof v);
}
[[gnu::always_inline]] inline void gather(V4& v, double const* table, int const* which) {
    v = V4{table[which[0]], table[which[1]], table[which[2]], table[which[3]]};
}
[[gnu::always_inline]] inline double total(V4 const& v) {
    return (v[0] + v[1]) + (v[2] + v[3]);
}

}  // namespace corvane::lanes
