#include <corvane/classic/equilibria/ffeNcore.h>
#include <corvane/classic/equilibria/potentials.h>
#include <corvane/core/constants.h>
#include <corvane/core/numelo.h>
#include <corvane/core/records.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr double kPressure = 1e-4;   // of p, by which the thinner phase's may differ,
constexpr double kRounding = 1e-11;  // or this part of rho·RT: what cancels in a cold liquid
constexpr double kUnstable = -1e-8;  // ∂p/∂rho over RT below this is no rounding

/// One phase at T.
struct Phase {
    double F = 0.0;    // −p
    Vector<double> c;  // chemical potentials over RT, without a term common to both phases

    Phase(ModelN const& m, Vector<double> const& row, double rho, double T)
        : c(corvane::residual_potentials(m, row, T)) {
        F = m.Ar(row, T) * R * T * rho;
        for (int i = 0; i < row.size(); ++i)
            if (row[i] > 0) {  // nothing of an absent component is used
                F -= (c[i] + 1) * row[i] * R * T;
                c[i] += std::log(row[i]);
            }
    }
};

int present(Vector<double> const& x) {
    return static_cast<int>(
        std::count_if(x.data, x.data + x.size(), [](double v) { return v > 0; }));
}

/// What vleN_T and vleN_p share.
class Equilibrium {
  public:
    Equilibrium(pass_ffeN context, Vector<double> const& x, Vector<double> const& rho2)
        : context_(context), x_(x), M_(present(x)) {
        if (x.size() != context.m->mdl1.size() || rho2.size() != x.size())
            throw MthException(mth_dimensions);
        context_.xl = &x;
    }

    void solve(double* T, double& rho1, Vector<double>& rho2) {
        const int n = M_ + 1 + context_.mode;
        Vector<double> u(n);
        int k = 0;
        for (int i = 0; i < x_.size(); ++i)
            if (x_[i] > 0) u[k++] = rho2[i];
        u[k++] = rho1;
        if (context_.mode) u[k] = *T;
        const double F = fit_marquardt(objffeN, u, n, &context_, 50 * (x_.size() + 1), 0);
        if (!(F <= th_inc1)) throw ThException(th_generic);
        k = 0;
        for (int i = 0; i < x_.size(); ++i) rho2[i] = x_[i] > 0 ? u[k++] : 0.0;
        rho1 = u[k++];
        if (context_.mode) *T = u[k];
        const double tolerance = corvane::trivial_distance * std::max(rho1, rho2.sum());
        for (int i = 0; i < x_.size(); ++i)
            if (std::fabs(rho2[i] - x_[i] * rho1) > tolerance) return;
        throw ThException(th_trivial);
    }

    /// Pressure at T of the thinner phase, where it is no difference of terms that cancel.
    double thin_pressure(double T, double rho1, Vector<double> const& rho2) const {
        const Vector<double> given = x_ * rho1;
        Vector<double> const& thin = given.sum() < rho2.sum() ? given : rho2;
        return context_.m->Z(thin, T) * R * T * thin.sum();
    }

    /// The equations have solutions that are no equilibrium: under tension, or with a phase between
    /// its spinodals. And they hold to an absolute difference in pressure, which says nothing where
    /// p is small: there the pressure of the thinner phase decides.
    void require_equilibrium(double T, double p, double rounding, double rho1,
                             Vector<double> const& rho2) const {
        const double thin = thin_pressure(T, rho1, rho2);
        if (!(thin > 0) || !(std::fabs(thin - p) <= kPressure * thin + rounding))
            throw ThException(th_generic);
        const Vector<double> given = x_ * rho1;
        for (Vector<double> const* row : {&given, &rho2}) {
            const double rho = row->sum();
            if (!(context_.m->pV(rho, T, *row * (1 / rho)) > kUnstable))
                throw ThException(th_generic);
        }
    }

  private:
    pass_ffeN context_;
    Vector<double> const& x_;
    int M_;
};
}  // namespace

Vector<double> objffeN(Vector<double> const& u, void* ctx) {
    auto const& s = *static_cast<pass_ffeN const*>(ctx);
    Vector<double> const& x = *s.xl;
    const int M = present(x);
    const int n = M + (s.mode ? 2 : 1);
    if (u.size() != n || x.size() != s.m->mdl1.size()) throw MthException(mth_dimensions);
    const double T = s.mode ? u[M + 1] : s.T;
    if (!(T > 0)) throw ThException(th_out_of_range);
    Vector<double> row1 = x * u[M], row2(x.size());
    for (int i = 0, k = 0; i < x.size(); ++i) {
        if (x[i] > 0) {
            row2[i] = u[k++];
            if (!(row1[i] > 0) || !(row2[i] > 0)) throw ThException(th_out_of_range);
        } else if (row1[i] > 0) {
            throw ThException(th_out_of_range);
        }
    }
    const Phase given(*s.m, row1, u[M], T), second(*s.m, row2, row2.sum(), T);
    Vector<double> r(n);
    int k = 0;
    for (int i = 0; i < x.size(); ++i)
        if (x[i] > 0) r[k++] = second.c[i] - given.c[i];
    r[k++] = second.F - given.F;
    if (s.mode) r[k] = s.p + given.F;
    return r;
}

void vleN_T(ModelN const* model, double T, Vector<double> const& x, double& p, double& rho1,
            Vector<double>& rho2) {
    Equilibrium equilibrium({model, 0, 0.0, T, nullptr}, x, rho2);
    equilibrium.solve(nullptr, rho1, rho2);
    double found = model->Z(rho2, T) * R * T * rho2.sum();  // in the second phase
    const double rounding = kRounding * R * T * rho2.sum();
    equilibrium.require_equilibrium(T, found, rounding, rho1, rho2);
    // What a liquid leaves of a vapour's pressure is not even positive.
    const double thin = equilibrium.thin_pressure(T, rho1, rho2);
    p = std::fabs(thin - found) <= kPressure * thin ? found : thin;
}

void vleN_p(ModelN const* model, double p, Vector<double> const& x, double& T, double& rho1,
            Vector<double>& rho2) {
    Equilibrium equilibrium({model, 1, p, 0.0, nullptr}, x, rho2);
    equilibrium.solve(&T, rho1, rho2);
    equilibrium.require_equilibrium(T, p, 0.0, rho1, rho2);
}
