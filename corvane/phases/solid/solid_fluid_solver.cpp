#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/numerics/newton.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/phases/solid/solid_fluid_solver.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
constexpr double kPotential = 1e-10, kStep = 1e-6;
constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr double kSolid = 64 * kEps;  // rounding of a solid's Gibbs energy, of its terms
}  // namespace

bool SolidState::evaluate(Model1 const& component, AnchoredSolid const* anchored, double p,
                          double T, bool slope) {
    Solid const& data = component.solid;
    if (!anchored && (data.sg.size() < 1 || !(T > 0.0) || !(T <= data.Tmax()))) return false;
    try {
        if (anchored) {
            const AnchoredSolid::State s = anchored->at(p, T, slope);
            g = s.g;
            g_T = s.g_T;
            v = s.v;
            rho = s.rho;
            form = s.form;
        } else {
            g = data.Ge(p, T, form, rho);
            v = 1.0 / rho;
            if (slope) g_T = -data.He(p, T);
        }
    } catch (ThException const&) {
        return false;
    } catch (MthException const&) {
        return false;
    }
    return std::isfinite(g);
}

double SolidState::rounding(double p, double T) const {
    return kSolid * (1.0 + std::fabs(g) + std::fabs(g_T) + p * v / (R * T));
}

SolidFluidSolver::SolidFluidSolver(FluidModel const& fluid, AnchoredSolids const& anchored,
                                   Fixed held)
    : u(5), fluid_(fluid), anchored_(anchored), held_(held), jacobian_(25), r_(5) {
    a.resize(2);
    b.resize(2);
}

void SolidFluidSolver::start(std::vector<double> const& x, double rho, double variable) {
    two = false;
    u.resize(3);
    for (int i = 0; i < 2; ++i) u[i] = std::log(x[i] * rho);
    u[2] = std::log(variable);
}
void SolidFluidSolver::start_second(std::vector<double> const& x, double rho) {
    two = true;
    u.resize(5);
    u[4] = u[2];
    for (int i = 0; i < 2; ++i) u[2 + i] = std::log(x[i] * rho);
}

bool SolidFluidSolver::evaluate() {
    p = held_.p(std::exp(u.back()));
    T = held_.T(std::exp(u.back()));
    for (int i = 0; i < 2; ++i) {
        a.rho_i[i] = std::exp(u[i]);
        if (two) b.rho_i[i] = std::exp(u[2 + i]);
    }
    for (std::size_t k = 0; k < solids.size(); ++k)
        if (!solid[k].evaluate(fluid_.pure(solids[k]), anchored_[solids[k]], p, T, !held_.at_T))
            return false;
    return fluid_.evaluate(a, T, phase_all) && (!two || fluid_.evaluate(b, T, phase_all));
}

void SolidFluidSolver::assemble() {
    const int m = size(), v = m - 1;
    std::fill(jacobian_.begin(), jacobian_.end(), 0.0);
    int k = 0;
    const auto J = [&](int column) -> double& { return jacobian_[k * m + column]; };
    for (std::size_t j = 0; j < solids.size(); ++j, ++k) {
        const int c = solids[j];
        r_[k] = a.m[c] - solid[j].g;
        for (int i = 0; i < 2; ++i) J(i) = a.H[2 * c + i] * a.rho_i[i];
        J(v) = held_.at_T ? -p * solid[j].v / (R * T) : a.m_T[c] - solid[j].g_T;
    }
    for (PhaseState const* s : {&a, &b}) {
        if (s == &b && !two) break;
        const double RT = R * T;
        const int at = s == &a ? 0 : 2;
        r_[k] = (s->p - p) / (RT * s->rho);
        for (int i = 0; i < 2; ++i) J(at + i) = s->P[i] * s->rho_i[i] / s->rho;
        J(v) = held_.at_T ? -p / (RT * s->rho) : (s->p_T + p / RT) / s->rho;
        ++k;
    }
    for (int i = 0; two && i < 2; ++i, ++k) {
        r_[k] = b.m[i] - a.m[i];
        for (int j = 0; j < 2; ++j) {
            J(j) = -a.H[2 * i + j] * a.rho_i[j];
            J(2 + j) = b.H[2 * i + j] * b.rho_i[j];
        }
        J(v) = held_.at_T ? 0.0 : b.m_T[i] - a.m_T[i];
    }
    if (!row.empty()) {
        r_[k] = -value;
        for (int i = 0; i < m; ++i) {
            J(i) = row[i];
            r_[k] += row[i] * u[i];
        }
    }
}

bool SolidFluidSolver::solve(int limit) {
    const int m = size();
    const auto converged = [&](double step) {
        residual = 0.0;
        for (int i = 0; i < m; ++i) {
            double r = std::fabs(r_[i]);
            const int fluid = i - static_cast<int>(solids.size());
            if (fluid == 0 || (two && fluid == 1)) {  // a pressure
                PhaseState const& s = fluid == 0 ? a : b;
                const double part = p / (R * T * s.rho);
                r = std::max(0.0, r - s.P_rounding() / s.rho) / part;
            }
            residual = std::max(residual, r);
        }
        return residual < kPotential && step < kStep;
    };
    const auto advance = [&](double) {
        // Bounds: a factor of e in the partial densities, of e^3 in traces; 30 % in the density; 10
        // % in T, a factor of e in p.
        StepBound bound;
        for (int i = 0; i < m; ++i) {
            double most = held_.at_T ? 1.0 : 0.1;
            if (i < m - 1) {
                PhaseState const& s = i < 2 ? a : b;
                most = s.x[i % 2] < 1e-3 ? 3.0 : 1.0;
            }
            bound(r_[i], most);
        }
        for (PhaseState const* s : {&a, &b}) {
            if (s == &b && !two) break;
            const int at = s == &a ? 0 : 2;
            const double total = s->x[0] * r_[at] + s->x[1] * r_[at + 1];
            bound(total, 0.3);
        }
        for (int i = 0; i < m; ++i) u[i] += bound.part() * r_[i];
        return true;
    };
    return damped_newton(
        m, jacobian_.data(), r_.data(), limit, iterations,
        [&] { return evaluate() && (assemble(), true); }, converged,
        [&] { return std::isfinite(residual); }, advance);
}

bool SolidFluidSolver::bound(Certificate& c) {
    const int m = size(), fluids = two ? 2 : 1;
    assemble();
    std::vector<double> e(static_cast<std::size_t>(m), 8 * kEps);
    if (!row.empty()) r_[m - 1] = 0.0;  // it says which point of a line this is
    int k = 0;
    for (std::size_t j = 0; j < solids.size(); ++j, ++k)
        e[k] = rounding_of_m(fluid_, a, solids[j]) + solid[j].rounding(p, T);
    for (int f = 0; f < fluids; ++f, ++k) {
        PhaseState const& s = f ? b : a;
        e[k] = rounding_of_P(fluid_, s) / s.rho + 2 * kEps * p / (R * T * s.rho);
    }
    for (int i = 0; two && i < 2; ++i, ++k)
        e[k] = rounding_of_m(fluid_, a, i) + rounding_of_m(fluid_, b, i);
    for (std::size_t i = 0; i < row.size(); ++i) e[k] += 2 * kEps * std::fabs(row[i] * u[i]);
    for (int i = 0; i < m; ++i) e[i] += std::fabs(r_[i]);
    std::vector<double> inverse(jacobian_.size());
    if (!invert(m, jacobian_.data(), inverse.data())) return false;
    const ErrorBound off(e);
    const auto change = [&](int i) { return &inverse[static_cast<std::size_t>(i) * m]; };
    c.x_error = c.rho_error = c.apart_error = 0.0;
    for (int f = 0; f < fluids; ++f) off.phase(f ? b : a, change(2 * f), c.x_error, c.rho_error);
    if (two) {
        std::vector<double> rows(static_cast<std::size_t>(2 * m));
        for (int i = 0; i < 2; ++i)
            for (int j = 0; j < m; ++j) rows[i * m + j] = change(i)[j] - change(2 + i)[j];
        c.apart_error = off.apart({u[0] - u[2], u[1] - u[3]}, rows.data());
    }
    const bool given = m == 3 && !row.empty() && row[0] == 0.0 && row[1] == 0.0;  // p and T
    c.value_error = given ? 0.0 : off(change(m - 1)) + 2 * kEps;
    return std::isfinite(c.x_error + c.rho_error + c.apart_error + c.value_error);
}

bool SolidFluidSolver::tangent(std::vector<double>& t) {
    assemble();
    t.assign(static_cast<std::size_t>(size()), 0.0);
    t.back() = 1.0;
    return lu_solve(size(), jacobian_.data(), t.data());
}

}  // namespace corvane
