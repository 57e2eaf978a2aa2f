// The plug-in MEOS: multiparameter reference equations, read entirely from the parameter file.
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/roots.h>
#include <corvane/pure/many_states.h>
#include <corvane/pure/power_series.h>
#include <plugins/meos/density_solver.h>
#include <plugins/meos/many_densities.h>
#include <plugins/meos/states.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

using namespace corvane::meos;

/// δ^i·∂^iα^r/∂δ^i, i = 0 … nrho.
void density_derivatives(Isotherm<false> const& isotherm, double rho, int nrho, double* d) {
    const Value v = nrho == 0   ? isotherm.at<0>(rho)
                    : nrho == 1 ? isotherm.at<1>(rho)
                    : nrho == 2 ? isotherm.at<2>(rho)
                                : isotherm.at<3>(rho);
    const double all[] = {v.a, v.d1, v.d2, v.d3};
    std::copy(all, all + nrho + 1, d);
}

struct KeptIsotherm final : corvane::Isotherm1 {
    KeptIsotherm(Equation const& equation, double T) : isotherm(equation, T) {}
    void at(double rho, int nrho, double* d) const override {
        density_derivatives(isotherm, rho, nrho, d);
    }
    const Isotherm<false> isotherm;
};

class Meos final : public Model1,
                   public corvane::Deriv1,
                   public corvane::PowerSeries1,
                   public corvane::ManyStates1,
                   public corvane::ManyDensities1 {
  public:
    Meos() {
        eos_ = "MEOS";
        mpar_ = madj_ = equation_.parameters();
    }
    using Model1::ppar;
    double* ppar(int i) override { return equation_.parameter(i); }

    void par_in(FILE* f, int /*mode*/) override {
        equation_.read(f);
        mpar_ = equation_.parameters();
        madj_ = 2 + equation_.terms();  // Ts, vs and the factors of the terms
        omega(equation_.omega());
        list_powers();
        tables_.fill(equation_, Tcrit(), 1.0 / vcrit(), Ttable_, dilute_, dense_);
    }
    void par_out(FILE* f) const override { equation_.write(f); }

    double Ar(double rho, double T) const override {
        return Isotherm<false>(equation_, T).at<0>(rho).a;
    }
    double Z(double rho, double T) const override {
        return Isotherm<false>(equation_, T).at<1>(rho).Z();
    }

    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        if (!(T > 0.0) || !std::isfinite(T) || !std::isfinite(p)) return 0;
        const Isotherm<false> isotherm(equation_, T);
        const double P = p / (R * T);
        const Roots roots = density_roots(equation_, tables_, isotherm, P);
        const auto below = [&](double start) { return start * isotherm.at<1>(start).Z() > P; };
        const auto gibbs = [&](double rho) {
            const Value v = isotherm.at<1>(rho);
            return v.a + v.d1 + std::log(rho);
        };
        return corvane::order_roots(roots.dilute, roots.dense, phase, below, gibbs, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override {
        return start_density(equation_, tables_, T, p / (R * T), phase);
    }

    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        if (nrho < 0 || nT < 0 || nT > 2) return 0;
        if (nT == 0 && nrho <= 3) {
            density_derivatives(Isotherm<false>(equation_, T), rho, nrho, d);
            return 1;
        }
        if (nrho > 2) return 0;
        // T·∂/∂T = −τ·∂/∂τ, T²·∂²/∂T² = τ²·∂²/∂τ² + 2τ·∂/∂τ.
        const Value v = Isotherm<true>(equation_, T).at<2>(rho);
        const double all[3][3] = {{v.a, -v.t1, v.t2 + 2.0 * v.t1}, {v.d1, -v.dt, 0.0}, {v.d2}};
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT && i + j <= 2; ++j) d[i * (nT + 1) + j] = all[i][j];
        return 1;
    }
    std::unique_ptr<corvane::Isotherm1> isotherm(double T) const override {
        return std::make_unique<KeptIsotherm>(equation_, T);
    }

    void second(int count, double const* rho, double const* T, double* const* d) const override {
        if (in_lanes(equation_)) return corvane::meos::second(equation_, count, rho, T, d);
        for (int i = 0; i < count; ++i) {
            double all[9];
            deriv(rho[i], T[i], 2, 2, all);
            d[0][i] = all[0], d[1][i] = all[1], d[2][i] = all[2];
            d[3][i] = all[3], d[4][i] = all[4], d[5][i] = all[6];
        }
    }

    void densities(int count, double const* p, double const* T, int phase,
                   double* rho) const override {
        std::fill_n(rho, count, 0.0);
        if (in_lanes(equation_) && tables_.matches(equation_))
            corvane::meos::densities(equation_, tables_, count, p, T, rho);
        for (int i = 0; i < count; ++i) {
            double first = 0.0, second = 0.0;
            if (rho[i] == 0.0)
                rho[i] = vcalc(p[i], T[i], phase, first, second) > 0
                             ? first
                             : std::numeric_limits<double>::quiet_NaN();
        }
    }

    Terms terms() const override {
        return {static_cast<int>(powers_.size()), powers_.data(), equation_.n, equation_.t};
    }

  private:
    void list_powers() {
        powers_.clear();
        Equation const& e = equation_;
        if (e.factored > e.shaped0 || !e.extras.empty() || !e.nonanalytic.empty() ||
            !e.association.empty())
            return;
        for (Equation::Group const& group : e.groups)
            for (int s = group.first; s < group.last; ++s) {
                Equation::Slot const& slot = e.slots[static_cast<unsigned>(s)];
                for (int k = slot.first; k < slot.last; ++k) powers_.push_back({group.l, slot.d});
            }
    }

    Equation equation_;
    StartTables tables_;
    std::vector<Power> powers_;
};

}  // namespace

CORVANE_PLUGIN1(Meos)
