#include <plugins/meos_gerg/reducing.h>

#include <cmath>

namespace corvane::gerg {

Reducing::Reducing(Of of, double const* own, int n, Pair const* pairs)
    : of_(of), own_(own), n_(n), pairs_(pairs), root_(n) {
    for (int i = 0; i < n; ++i) root_[i] = of == Of::volume ? std::cbrt(own[i]) : std::sqrt(own[i]);
}

Reducing::Coefficients Reducing::pair(int i, int j) const {  // i < j
    Pair const& p = pairs_[(j - 1) * j / 2 + i];
    const bool volume = of_ == Of::volume;
    if (p.linear) return {own_[i] + own_[j] + p.value[volume ? 6 : 5], 1.0};
    const double beta = p.value[volume ? 2 : 0], gamma = p.value[volume ? 3 : 1];
    const double sum = root_[i] + root_[j];
    const double mean = volume ? 0.125 * sum * sum * sum : root_[i] * root_[j];
    return {2.0 * beta * gamma * mean, beta * beta};
}

double Reducing::value(double const* x) const {
    double Y = 0.0;
    for (int j = 0; j < n_; ++j) {
        if (x[j] == 0.0) continue;
        Y += x[j] * x[j] * own_[j];
        for (int i = 0; i < j; ++i) {
            if (x[i] == 0.0) continue;
            const auto [k, B] = pair(i, j);
            Y += x[i] * x[j] * k * (x[i] + x[j]) / (B * x[i] + x[j]);
        }
    }
    return Y;
}

void Reducing::gradient(double const* x, double* Yi) const {
    for (int i = 0; i < n_; ++i) Yi[i] = 2.0 * x[i] * own_[i];
    for (int j = 0; j < n_; ++j)
        for (int i = 0; i < j; ++i) {
            const double a = x[i], b = x[j];
            if (a == 0.0 && b == 0.0) continue;
            const auto [k, B] = pair(i, j);
            const double D = B * a + b, N = a * b * (a + b) / D;
            Yi[i] += k * (2.0 * a * b + b * b - N * B) / D;
            Yi[j] += k * (2.0 * a * b + a * a - N) / D;
        }
}

void Reducing::hessian(double const* x, double* Yij) const {
    for (int i = 0; i < n_; ++i) Yij[i * n_ + i] = 2.0 * own_[i];
    for (int j = 0; j < n_; ++j)
        for (int i = 0; i < j; ++i) {
            double a = x[i], b = x[j];
            const bool absent = a == 0.0 && b == 0.0;
            if (absent) a = b = 1.0;
            const auto [k, B] = pair(i, j);
            const double D = B * a + b, N = a * b * (a + b) / D;
            const double Na = 2.0 * a * b + b * b, Nb = 2.0 * a * b + a * a;
            Yij[i * n_ + j] = Yij[j * n_ + i] =
                k * (2.0 * (a + b) - (Na + Nb * B - 2.0 * N * B) / D) / D;
            if (absent) continue;
            Yij[i * n_ + i] += k * 2.0 * (b - (Na - N * B) * B / D) / D;
            Yij[j * n_ + j] += k * 2.0 * (a - (Nb - N) / D) / D;
        }
}

}  // namespace corvane::gerg
