#include <corvane/core/constants.h>
#include <corvane/fit/equilibrium.h>
#include <corvane/phases/stability/stability.h>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
constexpr double kPressure = 0.1;  // MPa: scale of pressures where none is measured
// Of ln rho_i: nearer phases are one. More than the 1e-4 of CoexistenceSolver, since no certificate
// follows here: next to a critical point residuals vanish with the third power of the distance.
constexpr double kTrivial = 1e-3;

void fill(PhaseState& s, std::vector<double> const& rho_i) {
    s.resize(static_cast<int>(rho_i.size()));
    s.rho_i = rho_i;
    s.rho = total(rho_i);
    for (std::size_t i = 0; i < rho_i.size(); ++i) s.x[i] = rho_i[i] / s.rho;
}
}  // namespace

double total(std::vector<double> const& v) {
    double sum = 0.0;
    for (double each : v) sum += each;
    return sum;
}

std::size_t Phases::lightest() const {
    std::size_t least = 0;
    for (std::size_t k = 1; k < rho_i.size(); ++k)
        if (total(rho_i[k]) < total(rho_i[least])) least = k;
    return least;
}

bool Equilibrium::takes(PointKind kind) {
    return kind == PointKind::bubble || kind == PointKind::dew ||
           kind == PointKind::liquid_liquid || kind == PointKind::azeotrope ||
           kind == PointKind::three_phase;
}

bool Equilibrium::all_present(Numbers const& x) {
    return !x.empty() && std::all_of(x.begin(), x.end(), [](double each) { return each > 0.0; });
}

Vector<double> Equilibrium::vector(Numbers const& x) const {
    Vector<double> v(n_);
    for (int i = 0; i < n_; ++i) v[i] = x[static_cast<std::size_t>(i)];
    return v;
}

/// A composition in which every component is present that is in one of the measured ones.
Equilibrium::Numbers Equilibrium::middle(Point const& point) const {
    if (saturation(point)) return given(point);
    const auto n = static_cast<std::size_t>(n_);
    Numbers z(n, 0.0);
    double count = 0.0;
    for (Numbers const* x : {&point.x, &point.x2, &point.y})
        if (!x->empty()) {
            for (std::size_t i = 0; i < n; ++i) z[i] += (*x)[i];
            ++count;
        }
    for (double& each : z) each = count > 0.0 ? each / count : 1.0 / static_cast<double>(n_);
    return z;
}

/// Compositions of all phases where they are measured, with their density roots.
Equilibrium::Measured Equilibrium::measured(Point const& point) const {
    Measured result;
    switch (point.kind) {
        case PointKind::bubble:
            result = {{&point.x, Root::dense}, {&point.y, Root::dilute}};
            break;
        case PointKind::dew:
            result = {{&point.y, Root::dilute}, {&point.x, Root::dense}};
            break;
        case PointKind::azeotrope:
            result = {{&point.x, Root::dense}, {&point.x, Root::dilute}};
            break;
        case PointKind::liquid_liquid:
            result = {{&point.x, Root::dense}, {&point.x2, Root::dense}};
            break;
        default:
            result = {{&point.x, Root::dense}, {&point.x2, Root::dense}, {&point.y, Root::dilute}};
    }
    const bool all = std::all_of(result.begin(), result.end(),
                                 [](auto const& each) { return all_present(*each.first); });
    return all && point.p > 0.0 ? result : Measured{};
}

/// Wilson's K-factors where the composition was not measured (not normalised).
Equilibrium::Numbers Equilibrium::second_phase(FluidModel const& fluid, Point const& point,
                                               Numbers const& measured) const {
    if (all_present(measured)) return measured;
    Numbers w = given(point);
    for (int i = 0; i < n_; ++i) {
        const double K = std::exp(fluid.wilson(i, point.T)) / point.p;
        w[static_cast<std::size_t>(i)] *= dew(point) ? 1.0 / K : K;
    }
    return w;
}

/// Rows of F and, if asked for, of J = ∂F/∂(ln rho_i of all phases; share) and F_T = ∂F/∂ln T.
struct Equilibrium::Rows {
    States const& s;
    Eigen::VectorXd& F;
    Eigen::MatrixXd* J;
    Eigen::VectorXd* F_T;
    double scale;  // of pressures, MPa
    int n, row = 0;

    void pressure(int k, double sign) {
        PhaseState const& phase = s[static_cast<std::size_t>(k)];
        F[row] += sign * phase.p / scale;
        const double unit = scale / (R * phase.T);
        for (int j = 0; J && j < n; ++j)
            (*J)(row, k * n + j) += sign * phase.P[j] * phase.rho_i[j] / unit;
        if (F_T) (*F_T)[row] += sign * (phase.p / scale + phase.p_T / unit);
    }
    void at(double p) {
        pressure(0, 1.0);
        F[row++] -= p / scale;
    }
    /// Of the first phase and phase k.
    void equilibrium(int k) {
        PhaseState const &a = s[0], &b = s[static_cast<std::size_t>(k)];
        for (int i = 0; i < n; ++i, ++row) {
            F[row] = a.m[i] - b.m[i];
            if (F_T) (*F_T)[row] = a.m_T[i] - b.m_T[i];
            for (int j = 0; J && j < n; ++j) {
                (*J)(row, j) = a.H[i * n + j] * a.rho_i[j];
                (*J)(row, k * n + j) = -b.H[i * n + j] * b.rho_i[j];
            }
        }
        pressure(0, 1.0);
        pressure(k, -1.0);
        ++row;
    }
    /// Of two components there is one tie line, wherever the measured mean is.
    void half(double share) {
        F[row] = share - 0.5;
        if (J) (*J)(row, 2 * n) = 1.0;
        ++row;
    }
    /// z is a mixture of the first two phases.
    void lever(Numbers const& z, double share) {
        for (int i = 0; i + 1 < n; ++i, ++row) {
            F[row] = (1.0 - share) * s[0].x[i] + share * s[1].x[i] - z[static_cast<std::size_t>(i)];
            if (!J) continue;
            for (int j = 0; j < n; ++j) {
                const double own = i == j ? 1.0 : 0.0;
                (*J)(row, j) = (1.0 - share) * s[0].x[i] * (own - s[0].x[j]);
                (*J)(row, n + j) = share * s[1].x[i] * (own - s[1].x[j]);
            }
            (*J)(row, 2 * n) = s[1].x[i] - s[0].x[i];
        }
    }
    /// The first phase has the composition z, or (null) that of the second.
    void composition(Numbers const* z) {
        for (int i = 1; i < n; ++i, ++row) {
            const auto k = static_cast<std::size_t>(i);
            const double other = z ? (*z)[0] / (*z)[k] : s[1].rho_i[0] / s[1].rho_i[k];
            F[row] = std::log(s[0].rho_i[k] / s[0].rho_i[0] * other);
            if (!J) continue;
            (*J)(row, i) = 1.0;
            (*J)(row, 0) = -1.0;
            if (z) continue;
            (*J)(row, n + i) = -1.0;
            (*J)(row, n) = 1.0;
        }
    }
};

bool Equilibrium::system(Point const& point, Phases const& phases, States const& s,
                         Eigen::MatrixXd* J, Eigen::VectorXd& F, Eigen::VectorXd* F_T) const {
    const int count = static_cast<int>(s.size());
    const bool two_liquids = point.kind == PointKind::liquid_liquid;
    const int size = count * n_ + (two_liquids ? 1 : 0);
    F.setZero(size);
    if (J) J->setZero(size, size);
    if (F_T) F_T->setZero(size);
    Rows rows{s, F, J, F_T, point.p > 0.0 ? point.p : kPressure, n_};
    for (int k = 1; k < count; ++k) rows.equilibrium(k);
    if (two_liquids) {
        rows.at(point.p);
        if (n_ > 2)
            rows.lever(middle(point), phases.share);
        else
            rows.half(phases.share);
    } else if (count == 3) {
        if (n_ == 3) rows.at(point.p);
    } else {
        rows.composition(point.kind == PointKind::azeotrope ? nullptr : &given(point));
    }
    return F.allFinite() && (!J || J->allFinite());
}

bool Equilibrium::states(FluidModel const& fluid, Point const& point, Phases const& phases,
                         States& s, int order) const {
    s.resize(phases.rho_i.size());
    for (std::size_t k = 0; k < s.size(); ++k) {
        fill(s[k], phases.rho_i[k]);
        if (!fluid.evaluate(s[k], point.T, order)) return false;
    }
    return true;
}

bool Equilibrium::residuals(Point const& point, Phases const& phases, Eigen::MatrixXd* J,
                            Eigen::VectorXd& F, Eigen::VectorXd* F_T) const {
    const FluidModel fluid(model_, vector(middle(point)));  // anew: parameters have changed
    States s;
    const int order = phase_p | (J ? phase_H : 0) | (F_T ? phase_T : 0);
    return states(fluid, point, phases, s, order) && system(point, phases, s, J, F, F_T);
}

double Equilibrium::wilson_dew(Point const& point) const {
    const FluidModel fluid(model_, vector(given(point)));
    double sum = 0.0;
    for (int i = 0; i < n_; ++i)
        sum += given(point)[static_cast<std::size_t>(i)] / std::exp(fluid.wilson(i, point.T));
    return 1.0 / sum;
}

double Equilibrium::pressure(Point const& point, Numbers const& rho_i) const {
    Vector<double> const rho = vector(rho_i);
    return R * point.T * rho.sum() * model_.Z(rho, point.T);
}

double Equilibrium::slope_of(PhaseState const& s, double const* du) const {
    double slope = s.p / (R * s.T) + s.p_T;
    for (int j = 0; j < n_; ++j) slope += s.P[j] * s.rho_i[j] * du[j];
    return slope * R * s.T / s.p;
}

double Equilibrium::pressure_slope(Point const& point, Phases const& phases,
                                   Eigen::VectorXd const& du) const {
    const FluidModel fluid(model_, vector(middle(point)));
    const std::size_t k = phases.lightest();
    PhaseState s;
    fill(s, phases.rho_i[k]);
    if (!fluid.evaluate(s, point.T, phase_all)) return kUnknown;
    return slope_of(s, du.data() + static_cast<int>(k) * n_);
}

bool Equilibrium::linearise(Point const& point, Phases const& phases, Linear& linear) const {
    const FluidModel fluid(model_, vector(middle(point)));
    const bool by_T = saturation(point);
    States s;
    Eigen::MatrixXd J;
    Eigen::VectorXd F, F_T;
    if (!states(fluid, point, phases, s, by_T ? phase_all : phase_H | phase_p) ||
        !system(point, phases, s, &J, F, by_T ? &F_T : nullptr))
        return false;
    linear.J.compute(J);
    linear.slope = 0.0;
    if (by_T) {
        const Eigen::VectorXd du = linear.J.solve(-F_T);
        const std::size_t k = phases.lightest();
        linear.slope = slope_of(s[k], du.data() + static_cast<int>(k) * n_);
    }
    return true;
}

Phases Equilibrium::moved(Phases const& phases, Eigen::VectorXd const& du, double h) const {
    Phases next = phases;
    Eigen::Index at = 0;
    for (Numbers& rho_i : next.rho_i)
        for (double& each : rho_i) each *= std::exp(h * du[at++]);
    if (at < du.size()) next.share += h * du[at];
    return next;
}

/// Different phases, each mechanically stable, and of the kind that was measured.
bool Equilibrium::acceptable(Point const& point, Phases const& phases, States const& s) const {
    for (std::size_t k = 0; k < s.size(); ++k) {
        if (!(s[k].S > 0.0)) return false;
        for (std::size_t l = 0; l < k; ++l) {
            double apart = 0.0;
            for (std::size_t i = 0; i < s[k].rho_i.size(); ++i)
                apart = std::fmax(apart, std::fabs(std::log(s[k].rho_i[i] / s[l].rho_i[i])));
            if (apart < kTrivial) return false;
        }
    }
    switch (point.kind) {
        case PointKind::bubble:
        case PointKind::azeotrope:
            return phases.lightest() == 1;
        case PointKind::dew:
            return phases.lightest() == 0;
        default:
            return in_order(point, phases);
    }
}

/// Which liquid is which.
bool Equilibrium::in_order(Point const& point, Phases const& phases) const {
    if (point.x.empty() || point.x2.empty()) return true;
    auto const &a = phases.rho_i[0], &b = phases.rho_i[1];
    return (a[0] / total(a) > b[0] / total(b)) == (point.x[0] > point.x2[0]);
}

bool Equilibrium::stable(Point const& point, Phases const& phases) const {
    if (!whole(point)) return true;  // certified
    const FluidModel fluid(model_, vector(middle(point)));
    States s;
    if (!states(fluid, point, phases, s, phase_all)) return false;
    const double p = s[phases.lightest()].p;
    Stability test(fluid);
    return test.test(s[0], p, &s[1], true).stable;
}

bool Equilibrium::at_measured(Point const& point, States& s) const {
    const Measured known = measured(point);
    const FluidModel fluid(model_, vector(middle(point)));
    s.resize(known.size());
    for (std::size_t k = 0; k < s.size(); ++k) {
        s[k].resize(n_);
        if (!fluid.evaluate_at(s[k], point.p, point.T, *known[k].first, known[k].second, 0))
            return false;
    }
    return !s.empty();
}

double Equilibrium::distance(Point const& point) const {
    const bool saturation = Equilibrium::saturation(point);
    if (!whole(point)) return 0.0;
    const FluidModel fluid(model_, vector(middle(point)));
    Measured known = measured(point);
    Numbers w;
    if (saturation) {
        w = second_phase(fluid, point, dew(point) ? point.x : point.y);
        const double sum = total(w);
        for (double& each : w) each /= sum;
        known = {{&given(point), dew(point) ? Root::dilute : Root::dense},
                 {&w, dew(point) ? Root::dense : Root::dilute}};
    }
    States s(known.size());
    for (std::size_t k = 0; k < s.size(); ++k) {
        s[k].resize(n_);
        if (!fluid.evaluate_at(s[k], point.p, point.T, *known[k].first, known[k].second, 0))
            return 0.0;
    }
    double sum = 0.0;
    for (std::size_t k = 1; k < s.size(); ++k)
        for (int i = 0; i < n_; ++i) {
            const double d = s[0].m[i] - s[k].m[i];
            sum += saturation ? s[k].x[i] * std::exp(d) : d * d;
        }
    if (s.empty()) return 0.0;
    return saturation ? std::log(sum) : std::sqrt(sum / static_cast<double>((s.size() - 1) * n_));
}

}  // namespace corvane::fit
