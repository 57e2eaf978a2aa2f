// Numbers two and four at a time, exponentials of an array and logarithms, in the compiler's
// portable vector types. Lane by lane it is plain IEEE arithmetic without contraction, so every
// machine, and every vector width, gives the same bits.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>

namespace corvane::inline detail::lanes {

using V2 [[gnu::vector_size(16)]] = double;
using I2 [[gnu::vector_size(16)]] = std::uint64_t;
/// Passed by reference alone, as not every machine has such registers. What works on them is
/// inlined into a function for every machine and into one for those with AVX2.
using V4 [[gnu::vector_size(32)]] = double;
using I4 [[gnu::vector_size(32)]] = std::uint64_t;

inline V2 load(double const* x) {
    V2 v;
    std::memcpy(&v, x, sizeof v);
    return v;
}
inline void store(double* x, V2 v) {
    std::memcpy(x, &v, sizeof v);
}
inline double sum(V2 v) {
    return v[0] + v[1];
}

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

/// Array lengths are rounded up to whole vectors of four.
constexpr int padded(int count) {
    return (count + 3) & ~3;
}

/// x = k·ln 2 + r, |r| <= ln(2)/2, with ln 2 split in two so that k·ln2_hi is exact (Cody & Waite,
/// Software Manual for the Elementary Functions, 1980); exp(r) = 1 + (r + r²·q(r)), q the Chebyshev
/// approximation of degree 10 to (exp(r) − 1 − r)/r², which makes a relative error of 4e-19 in exp.
template <class V, class I>
[[gnu::always_inline]] inline void exp_lanes(double* x, int count) {
    constexpr int lanes = sizeof(V) / sizeof(double);
    constexpr double to_integer = 6755399441055744.0;  // 1.5·2^52: adding it rounds to an integer
    for (int i = 0; i < count; i += lanes) {
        V v;
        std::memcpy(&v, x + i, sizeof v);
        const V shifted = v * 1.4426950408889634 + to_integer;
        const V k = shifted - to_integer;
        const V r = (v - k * 0.6931471803691238) - k * 1.9082149292705877e-10;
        const V r2 = r * r, r4 = r2 * r2;
        const V q0 =
            (0.5 + 0.1666666666666667 * r) + (0.04166666666666667 + 0.008333333333326136 * r) * r2;
        const V q1 = (0.0013888888888883748 + 0.00019841269874820627 * r) +
                     (2.4801587325547743e-05 + 2.7557255400206422e-06 * r) * r2;
        const V q2 =
            (2.75572736431103e-07 + 2.5105217004720745e-08 * r) + 2.0914686968086876e-09 * r2;
        const V y = 1.0 + (r + r2 * (q0 + (q1 + q2 * r4) * r4));
        I exponent, bits;
        std::memcpy(&exponent, &shifted, sizeof exponent);  // k in the low bits
        std::memcpy(&bits, &y, sizeof bits);
        bits += exponent << 52;
        V result;
        std::memcpy(&result, &bits, sizeof result);
        const V zero = {}, infinity = zero + std::numeric_limits<double>::infinity();
        result = v < -708.0 ? zero : result;
        result = v > 709.0 ? infinity : result;
        // NOLINTNEXTLINE(misc-redundant-expression): not-a-number differs from itself
        result = v == v ? result : v;
        std::memcpy(x + i, &result, sizeof result);
    }
}

/// log(1 + x), and log(x) if `plain`, within 1 ulp (tested); not-a-number below its range, −∞ at
/// its end. 1 + x = 2^k·(1 + f) with 1 + f between √½ and √2, log(1 + f) = 2·artanh(s), s = f/(2 +
/// f), by the minimax polynomial of fdlibm (Sun Microsystems 1993); what rounding takes from 1 + x
/// comes back as its quotient. Subnormal arguments of log(x) are none of its own.
template <bool plain>
[[gnu::always_inline]] inline void log_lanes(V4& x) {
    constexpr std::uint64_t one_bits = 0x3ff0000000000000, root_half = 0x3fe6a09e00000000;
    const V4 zero{}, one = zero + 1.0;
    const V4 u = plain ? x : 1.0 + x;
    I4 bits;
    std::memcpy(&bits, &u, sizeof bits);
    bits += one_bits - root_half;
    I4 k_bits = (bits >> 52) + 0x4330000000000000;  // 2^52 + k + 1023
    bits = (bits & 0x000fffffffffffff) + root_half;
    V4 k, m;
    std::memcpy(&k, &k_bits, sizeof k);
    std::memcpy(&m, &bits, sizeof m);
    k -= 0x1p52 + 1023.0;
    const V4 f = m - 1.0, half = 0.5 * f * f, s = f / (2.0 + f), z = s * s, w = z * z;
    const V4 odd =
        z * (0.6666666666666735130 +
             w * (0.2857142874366239149 + w * (0.1818357216161805012 + w * 0.1479819860511658591)));
    const V4 even =
        w * (0.3999999999940941908 + w * (0.2222219843214978396 + w * 0.1531383769920937332));
    V4 lost = zero;
    if constexpr (!plain) {
        const V4 back = u - 1.0;
        lost = ((one - (u - back)) + (x - back)) / u;
    }
    V4 y = s * (half + odd + even) + (k * 1.90821492927058770002e-10 + lost) - half + f +
           k * 0.693147180369123816490;
    const V4 infinity = zero + std::numeric_limits<double>::infinity();
    y = u > 0.0 ? y : u == 0.0 ? -infinity : zero + std::numeric_limits<double>::quiet_NaN();
    y = u == infinity ? infinity : y;
    if constexpr (!plain) y = x == 0.0 ? x : y;
    x = y;
}

inline void exp_narrow(double* x, int count) {
    exp_lanes<V2, I2>(x, count);
}

#if defined(__x86_64__)
/// Code that is inlined into both a function for every machine and one for those with AVX2.
inline const bool wide = __builtin_cpu_supports("avx2");

[[gnu::target("avx2")]] inline void exp_wide(double* x, int count) {
    exp_lanes<V4, I4>(x, count);
}

/// x[i] = exp(x[i]) for padded(count) elements, within 1 ulp (tested). Below −708 the result is 0,
/// above 709 infinite; not-a-number stays.
inline void (*const exp_in_place)(double* x, int count) = wide ? exp_wide : exp_narrow;
#else
inline constexpr auto exp_in_place = exp_narrow;
#endif

}  // namespace corvane::inline detail::lanes
