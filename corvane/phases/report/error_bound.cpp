#include <corvane/mixture/modeln.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/plugin/small_array.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr double kUnits = 128 * kEps;
constexpr double kDifferences = 1e-9;  // of potentials from differences of Ar
}  // namespace

double detail::rounding_of_m(FluidModel const& fluid, PhaseState const& s, int i) {
    const int n = s.size();
    double size = 1.0 + std::fabs(s.m[i]);
    for (int j = 0; j < n; ++j) size += std::fabs(s.rho_i[j] * s.H[i * n + j]);
    return kUnits * size + (fluid.exact() ? 0.0 : kDifferences);
}

double detail::rounding_of_P(FluidModel const& fluid, PhaseState const& s) {
    double size = s.rho;
    for (int j = 0; j < s.size(); ++j) size += std::fabs(s.rho_i[j] * s.P[j]);
    return kUnits * size + (fluid.exact() ? 0.0 : kDifferences * s.rho);
}

double ErrorBound::operator()(double const* row) const {
    double sum = 0.0;
    for (std::size_t k = 0; k < e_.size(); ++k) sum += std::fabs(row[k]) * e_[k];
    return kMargin * sum;
}

void ErrorBound::phase(PhaseState const& s, double const* rows, double& x, double& rho) const {
    const int m = static_cast<int>(e_.size());
    SmallArray<double> mean(m), row(m);
    std::fill_n(&mean[0], m, 0.0);
    for (int i = 0; i < s.size(); ++i)
        for (int k = 0; k < m; ++k) mean[k] += s.x[i] * rows[i * m + k];
    rho = std::max(rho, (*this)(&mean[0]) + 2.0 * kEps);
    for (int i = 0; i < s.size(); ++i) {
        for (int k = 0; k < m; ++k) row[k] = s.x[i] * (rows[i * m + k] - mean[k]);
        x = std::max(x, (*this)(&row[0]) + 2.0 * kEps * s.x[i]);
    }
}

double ErrorBound::apart(std::vector<double> const& ln, double const* rows) const {
    double off = 0.0, distance = 0.0;
    for (std::size_t i = 0; i < ln.size(); ++i) {
        off = std::max(off, (*this)(rows + i * e_.size()));
        distance = std::max(distance, std::fabs(ln[i]));
    }
    return off / distance;
}

}  // namespace corvane
