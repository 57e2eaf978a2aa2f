#include <corvane/core/lanes.h>
#include <plugins/meos_gerg/reducing.h>

#include <algorithm>
#include <cmath>

namespace corvane::gerg {

using lanes::padded;
using lanes::V4;

void Pairs::resize(int n) {
    row_.clear();
    unsigned size = 0;
    for (int j = 0; j < n; ++j) {
        row_.push_back(size);
        size += static_cast<unsigned>(padded(j));
    }
    for (auto& column : value_) column.assign(size, 0.0);
    linear_.assign(size, 0.0);
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < j; ++i) pair(i, j, Pair{});
}
Pair Pairs::pair(int i, int j) const {
    Pair p;
    for (int k = 0; k < kPairParameters; ++k) p.value[k] = at(k, i, j);
    p.linear = linear_[place(i, j)] != 0.0;
    return p;
}
void Pairs::pair(int i, int j, Pair const& p) {
    for (int k = 0; k < kPairParameters; ++k) *at(k, i, j) = p.value[k];
    linear_[place(i, j)] = p.linear ? 1.0 : 0.0;
}

double Reducing::root(Of of, double own) {
    return of == Of::volume ? std::cbrt(own) : std::sqrt(own);
}
Reducing::Reducing(Of of, double const* own, double const* root, double const* x, int n,
                   Pairs const& pairs, int order)
    : n_(n),
      stride_(padded(n)),
      own_(stride_),
      root_(stride_),
      x_(stride_),
      gradient_(stride_),
      hessian_(order > 1 ? stride_ * stride_ : 0) {
    for (int i = 0; i < stride_; ++i) {
        own_[i] = i < n ? own[i] : 0.0;
        x_[i] = i < n ? x[i] : 0.0;
        root_[i] = i < n ? root[i] : 0.0;
    }
    order == 0 ? fill<0>(of, pairs) : order == 1 ? fill<1>(of, pairs) : fill<2>(of, pairs);
}

/// With N = x_i·x_j·(x_i + x_j)/D, D = B·x_i + x_j. Row j, four i at a time.
template <int order>
[[gnu::always_inline]] inline void Reducing::in_lanes(Of of, Pairs const& pairs) {
    const bool volume = of == Of::volume;
    SmallArray<double> diagonal(stride_);
    for (int i = 0; i < stride_; ++i)
        gradient_[i] = 2.0 * x_[i] * own_[i], diagonal[i] = 2.0 * own_[i];
    V4 sum{}, a{}, k{}, B{}, u{}, v{};
    const V4 zero{}, one = zero + 1.0;
    for (int j = 0; j < n_; ++j) {
        const double xj = x_[j];
        value_ += xj * xj * own_[j];
        double const *const beta = pairs.row(volume ? 2 : 0, j),
                            *const gamma = pairs.row(volume ? 3 : 1, j),
                            *const extra = pairs.row(volume ? 6 : 5, j),
                            *const linear = pairs.linear(j);
        V4 slope{}, curvature{};
        for (int i = 0; i < j; i += 4) {
            lanes::get(a, &root_[i]);
            u = a + root_[j];
            const V4 mean = volume ? 0.125 * u * u * u : a * root_[j];
            lanes::get(u, beta + i), lanes::get(v, gamma + i);
            k = 2.0 * u * v * mean, B = u * u;
            lanes::get(u, linear + i), lanes::get(v, extra + i), lanes::get(a, &own_[i]);
            k = u != 0.0 ? a + own_[j] + v : k, B = u != 0.0 ? one : B;
            lanes::get(a, &x_[i]);
            V4 b = zero + xj, D = B * a + b;
            D = D == 0.0 ? one : D;
            V4 N = a * b * (a + b) / D;
            sum += k * N;
            if constexpr (order >= 1) {
                V4 Na = 2.0 * a * b + b * b, Nb = 2.0 * a * b + a * a;
                lanes::get(u, &gradient_[i]);
                lanes::put(&gradient_[i], u + k * (Na - N * B) / D);
                slope += k * (Nb - N) / D;
                if constexpr (order >= 2) {
                    lanes::get(u, &diagonal[i]);  // 0 of two absent components
                    lanes::put(&diagonal[i], u + k * 2.0 * (b - (Na - N * B) * B / D) / D);
                    curvature += k * 2.0 * (a - (Nb - N) / D) / D;
                    if (xj == 0.0) {
                        const V4 absent = a == 0.0 ? one : zero;
                        a += absent, b += absent;
                        D = B * a + b, D = D == 0.0 ? one : D, N = a * b * (a + b) / D;
                        Na = 2.0 * a * b + b * b, Nb = 2.0 * a * b + a * a;
                    }
                    lanes::put(&hessian_[j * stride_ + i],
                               k * (2.0 * (a + b) - (Na + Nb * B - 2.0 * N * B) / D) / D);
                }
            }
        }
        gradient_[j] += lanes::total(slope), diagonal[j] += lanes::total(curvature);
    }
    value_ += lanes::total(sum);
    if constexpr (order >= 2)
        for (int i = 0; i < n_; ++i) hessian_[i * stride_ + i] = diagonal[i];
}
template <int order>
void Reducing::narrow(Of of, Pairs const& pairs) {
    in_lanes<order>(of, pairs);
}
#if defined(__x86_64__)
template <int order>
[[gnu::target("avx2")]] void Reducing::wide(Of of, Pairs const& pairs) {
    in_lanes<order>(of, pairs);
}
#endif
template <int order>
void Reducing::fill(Of of, Pairs const& pairs) {
#if defined(__x86_64__)
    if (lanes::wide) return wide<order>(of, pairs);
#endif
    narrow<order>(of, pairs);
}

}  // namespace corvane::gerg
