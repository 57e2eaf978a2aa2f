// A cubic equation of state with van der Waals one-fluid mixing as a mixture model.
//
// a_ij = √(a_i·a_j)·(1 − k_ij − k_T,ij/T),  b_ij = (b_i + b_j)/2·(1 − l_ij).
#pragma once

#include <corvane/mixture/isotherm.h>
#include <corvane/plugin/exact_slots.h>
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/small_array.h>
#include <plugins/common/cubic_isotherm.h>

#include <cmath>

namespace corvane {

template <class Form>
class CubicMixture final : public PairTableMixture, public IsothermN {
  public:
    CubicMixture() : PairTableMixture(Form::name, "vdW1", 3) {}

    // ---- binary parameters: 0 = k_ij, 1 = l_ij, 2 = k_T,ij [K]

    void par_in(FILE* f, int i, int j) override {
        SectionReader section(f);
        pair_is_swapped(section, mdl1[i]->name(), mdl1[j]->name());  // both are symmetric
        const double k_ij = section.number("kij"), l_ij = section.number("lij", 0.0),
                     k_T = section.number("kijT", 0.0);
        double* pair = pairs_.at(i, j);
        pair[0] = k_ij;
        pair[1] = l_ij;
        pair[2] = k_T;
    }
    void par_out(FILE* f, int i, int j) const override {
        SectionWriter section(f);
        section.word("of", mdl1[i]->name());
        section.number("kij", pairs_.at(i, j)[0]);
        section.number("lij", pairs_.at(i, j)[1]);
        if (pairs_.at(i, j)[2] != 0.0) section.number("kijT", pairs_.at(i, j)[2]);
    }
    /// a [MPa·(cm³/mol)²] at 298.15 K, b and c [cm³/mol] of the mixture.
    Vector<double> mixpar(Vector<double> const& x) const override {
        const CubicFluid<Form> m = fluid(298.15, x, 0);
        Vector<double> p(3);
        p[0] = m.a.q * m.b * R * 298.15;
        p[1] = m.b;
        p[2] = m.c;
        return p;
    }

    // ---- the mixture as one fluid

    double Ar(double rho, double T, Vector<double> const& x) const override {
        return fluid(T, x, 0).ar(rho);
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        return fluid(T, x, 0).Z(rho);
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        if (!(T > 0.0)) return 0;
        return fluid(T, x, 0).density(p, T, mode, rho_a, rho_b);
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        return fluid(T, x, nT).deriv(rho, nrho, nT, d);
    }

    // ---- composition derivatives

    double myr(Vector<double> const& rho_i, double T, int i) const override {
        const Parameters p(*this, T, false);
        const double mu = rho_i.sum() == 0.0 ? 0.0 : State(p.isotherm, rho_i.data).mu(i);
        return std::isfinite(mu) ? mu : ModelN::myr(rho_i, T, i);
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override {
        const Parameters p(*this, T, mu_T != nullptr);
        const State s(p.isotherm, rho_i.data);
        const bool empty = rho_i.sum() == 0.0;
        for (int i = 0; i < rho_i.size(); ++i) mu[i] = empty ? 0.0 : s.mu(i);
        if (mu_T) s.slopes(mu_T, nullptr);
        if (mu_rho) s.slopes(mu_rho);
    }

    // ---- many states at one temperature

    int isotherm_size(int n) const override { return 1 + Isotherm::size(n); }
    void isotherm(double T, int const* present, int n, bool slopes, double* work) const override {
        work[0] = T;
        parameters(T, present, n, slopes, work + 1);
    }
    int densities(double const* work, int n, double const* x, double p,
                  double* rho) const override {
        double dilute = 0.0;
        rho[0] = 0.0;
        const int found = Isotherm(work + 1, n).fluid(x).density(p, work[0], 1, rho[0], dilute);
        return stable_roots(found, rho, dilute);
    }
    double gibbs(double const* work, int n, double const* x, double p, double rho) const override {
        return Isotherm(work + 1, n).fluid(x).gibbs(p / (R * work[0]), rho);
    }
    void potentials(double const* work, int n, double const* rho_i, double* mu, double* mu_T,
                    double* mu_rho, double* P, double* P_T) const override {
        const Isotherm isotherm(work + 1, n);
        const State s(isotherm, rho_i);
        for (int i = 0; i < n; ++i) mu[i] = s.mu(i);
        if (mu_T) s.slopes(mu_T, P_T);
        if (mu_rho) s.slopes(mu_rho);
        if (P) *P = s.P();
    }

  private:
    using Isotherm = CubicIsotherm<Form>;
    using State = typename Isotherm::State;

    /// Of a pair: b_ij and a_ij/(R·T) [cm³/mol], with T and T² times the derivatives of the latter
    /// in T as far as `order` goes.
    struct Pair {
        double b, a, Ta, TTa;
    };
    /// Calls component(i, c_i) and pair(i, j, Pair) for j <= i, for the components `present`, or
    /// for all (null).
    template <class OfComponent, class OfPair>
    void combine(double T, int const* present, int n, int order, OfComponent component,
                 OfPair pair) const {
        struct Part {
            double b, root, Troot, TTroot;  // root = √(a/(R·T)) with T and T² times its derivatives
        };
        SmallArray<Part> part(n);
        for (int i = 0; i < n; ++i) {
            const int I = present ? present[i] : i;
            Model1 const& m = *mdl1[I];
            double copy[cubic_parameters];
            double const* par = m.ppar(0);
            if (m.ppar(cubic_parameters - 1) != par + (cubic_parameters - 1)) {  // not in one block
                for (int k = 0; k < cubic_parameters; ++k) copy[k] = *m.ppar(k);
                par = copy;
            }
            const Attraction alpha = attraction<Form>(par, T);
            Part& p = part[i];
            p = {par[cubic_vs], std::sqrt(alpha.q * par[cubic_vs]), 0.0, 0.0};
            if (order > 0 && p.root > 0.0) {
                p.Troot = 0.5 * alpha.Tq * p.b / p.root;
                p.TTroot = 0.5 * alpha.TTq * p.b / p.root - p.Troot * p.Troot / p.root;
            }
            component(i, par[cubic_c]);
            for (int j = 0; j < i; ++j) {
                Part const& q = part[j];
                double const* given = pairs_.at(I, present ? present[j] : j);
                const double kT = given[2] / T, k = 1.0 - given[0] - kT, root = p.root * q.root;
                Pair v{0.5 * (p.b + q.b) * (1.0 - given[1]), root * k, 0.0, 0.0};
                if (order > 0) {  // T·∂k/∂T = kT, T²·∂²k/∂T² = −2·kT
                    const double Troot = p.Troot * q.root + p.root * q.Troot;
                    v.Ta = k * Troot + kT * root;
                    v.TTa = k * (p.TTroot * q.root + 2.0 * p.Troot * q.Troot + p.root * q.TTroot) +
                            2.0 * kT * (Troot - root);
                }
                pair(i, j, v);
            }
            pair(i, i,
                 Pair{p.b, p.root * p.root, 2.0 * p.root * p.Troot,
                      2.0 * (p.root * p.TTroot + p.Troot * p.Troot)});
        }
    }

    /// The one fluid at composition x.
    CubicFluid<Form> fluid(double T, Vector<double> const& x, int order) const {
        CubicFluid<Form> f{0.0, 0.0, {0.0, 0.0, 0.0}};
        combine(
            T, nullptr, x.size(), order, [&](int i, double c) { f.c += x[i] * c; },
            [&](int i, int j, Pair const& v) {
                const double weight = (i == j ? 1.0 : 2.0) * x[i] * x[j];
                f.b += weight * v.b;
                f.a.q += weight * v.a;
                if (order == 0) return;
                f.a.Tq += weight * v.Ta;
                f.a.TTq += weight * v.TTa;
            });
        // x may miss the sum of 1 by rounding; then b·rho is still n·b of the amounts rho·x.
        for (double* v : {&f.a.q, &f.a.Tq, &f.a.TTq}) *v /= f.b;
        return f;
    }

    /// In the form that Isotherm reads.
    void parameters(double T, int const* present, int n, bool slopes, double* values) const {
        double *c = values, *b = c + n, *a = b + n * n, *Ta = a + n * n;
        combine(
            T, present, n, slopes ? 1 : 0, [&](int i, double ci) { c[i] = ci; },
            [&](int i, int j, Pair const& v) {
                const int at = i * n + j, mirror = j * n + i;
                b[at] = b[mirror] = v.b;
                a[at] = a[mirror] = v.a;
                Ta[at] = Ta[mirror] = v.Ta;
            });
    }
    /// All components for one call.
    struct Parameters {
        Parameters(CubicMixture const& m, double T, bool slopes)
            : values(Isotherm::size(m.mdl1.size())), isotherm(&values[0], m.mdl1.size()) {
            m.parameters(T, nullptr, m.mdl1.size(), slopes, &values[0]);
        }
        SmallArray<double, 128> values;
        Isotherm isotherm;
    };
};

}  // namespace corvane
