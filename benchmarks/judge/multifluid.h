// The multi-fluid model of Kunz & Wagner, J. Chem. Eng. Data 57 (2012) 3032, in any number type.
// Its coefficients are read from the data again.
#pragma once

#include "energy.h"

#include <corvane/corvane.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace judge {

struct MultiFluid {
    static constexpr Precision kPrecision{};
    /// n·δ^d·τ^t·exp(−δ^l − η(δ−ε)² − β(δ−γ)); without δ^l where l = 0.
    struct Term {
        double n, t, eta, epsilon, beta, gamma;
        int d, l;
    };
    using Function = std::vector<Term>;

    int n = 0;
    Values<double> M{}, Ts{}, vs{};
    double betaT[kMax][kMax], gammaT[kMax][kMax], betav[kMax][kMax], gammav[kMax][kMax];  // i < j
    Function pure[kMax], pair[kMax][kMax];  ///< of pairs with F included

    explicit MultiFluid(ModelN const& model) : n(model.mdl1.size()) {
        if (n > kMax || std::string(model.mth) != "GERG") throw std::runtime_error("not MEOS+GERG");
        const std::string folder = "CorvaneS/parameters/MEOS/";
        for (int i = 0; i < n; ++i) {
            Model1 const& c = *model.mdl1[i];
            if (c.id() != 8) throw std::runtime_error("not the components of GERG-2008");
            M[i] = c.M(), Ts[i] = c.param(1), vs[i] = c.param(2);
            pure[i] = read(folder + c.name() + ";8");
            for (int j = 0; j < i; ++j) {
                const std::string a = model.mdl1[j]->name(), b = c.name();
                betaT[j][i] = model.param(0, j, i), gammaT[j][i] = model.param(1, j, i);
                betav[j][i] = model.param(2, j, i), gammav[j][i] = model.param(3, j, i);
                if (model.param(5, j, i) != 0 || model.param(6, j, i) != 0)
                    throw std::runtime_error("other reducing functions");
                pair[j][i] = read(folder + "GERG/" + a + "+" + b + ";1");
                if (pair[j][i].empty()) pair[j][i] = read(folder + "GERG/" + b + "+" + a + ";1");
                for (Term& t : pair[j][i]) t.n *= model.param(4, j, i);
            }
        }
    }

    template <class Real>
    class Psi {
      public:
        Psi(MultiFluid const& c, Real T) : c_(&c), T_(T) {}
        int size() const { return c_->n; }
        double limit(Real const* x) const {
            return 4 / static_cast<double>(reduced<Real>(x).second);
        }
        /// The isotherm may rise inside its loop, and once more beyond the liquid, at δ > 3: the
        /// vapour is on the first rising branch, the liquid the last root between
        /// δ = 1 + 0.4·√(1 − T/T_r) and 3, or the first one beyond.
        void select(Real const* x, std::vector<double>& roots, std::vector<int> const& on) const {
            const auto [Tr, vr] = reduced<Real>(x);
            const double t = static_cast<double>(T_ / Tr);
            const double from = t < 1 ? 1 + 0.4 * std::sqrt(1 - t) : 1;
            std::vector<double> kept;
            bool liquid = false;
            for (std::size_t k = 0; k < roots.size(); ++k) {
                const double delta = roots[k] * static_cast<double>(vr);
                const bool first = on[k] == 1 && kept.empty(), dense = delta > from;
                if (!first && (!dense || (liquid && delta > 3))) continue;
                if (liquid) kept.pop_back();
                kept.push_back(roots[k]);
                liquid = liquid || dense;
            }
            roots = kept;
        }
        auto pressure(Real const* x) const {
            Values<Real> w{};
            for (int i = 0; i < c_->n; ++i) w[i] = x[i];
            const auto [Tr, vr] = reduced<Real>(x);
            std::vector<Real> factor;
            const Real tau = Tr / T_;
            each(w.data(), [&](Function const& f, Real weight) {
                for (Term const& t : f) factor.push_back(weight * Real(t.n) * power(tau, t.t));
            });
            return [this, w, factor, v = vr](Real rho) {
                const Real delta = rho * v;
                const Powers powers(delta);
                Real sum = 0;
                auto at = factor.begin();
                each(w.data(), [&](Function const& f, Real) {
                    for (Term const& t : f) {
                        const auto [value, slope] = powers(t);
                        sum += *at++ * value * slope;
                    }
                });
                return rho * (1 + sum);
            };
        }
        template <class S>
        S energy(S const* rho) const {
            S total(0);
            std::array<S, kMax> x;
            for (int i = 0; i < c_->n; ++i) total += rho[i];
            for (int i = 0; i < c_->n; ++i) x[i] = rho[i] / total;
            const auto [Tr, vr] = reduced<S>(x.data());
            const S delta = total * vr, tau = Tr / T_;
            const Powers powers(delta.v);
            S sum(0);
            auto add = [&](Function const& f, S const& weight) {
                Real a = 0, by_delta = 0, by_tau = 0;
                for (Term const& t : f) {
                    const auto [value, slope] = powers(t);
                    const Real term = Real(t.n) * power(tau.v, t.t) * value;
                    a += term;
                    by_delta += term * slope;
                    by_tau += term * Real(t.t);
                }
                sum += weight * S::chain(delta, tau, a, by_delta / delta.v, by_tau / tau.v);
            };
            for (int i = 0; i < c_->n; ++i) {
                add(c_->pure[i], x[i]);
                for (int j = i + 1; j < c_->n; ++j)
                    if (!c_->pair[i][j].empty()) add(c_->pair[i][j], x[i] * x[j]);
            }
            return total * sum;
        }

      private:
        /// T_r and v_r at mole fractions, eqs. 16 and 17 of the paper.
        template <class S>
        std::pair<S, S> reduced(S const* x) const {
            using std::pow;
            using std::sqrt;
            S T(0), v(0);
            for (int i = 0; i < c_->n; ++i) {
                T = T + x[i] * x[i] * Real(c_->Ts[i]);
                v = v + x[i] * x[i] * Real(c_->vs[i]);
                for (int j = i + 1; j < c_->n; ++j) {
                    const Real third = Real(1) / 3;
                    const Real s = pow(Real(c_->vs[i]), third) + pow(Real(c_->vs[j]), third);
                    const Real Tij = sqrt(Real(c_->Ts[i]) * c_->Ts[j]), vij = s * s * s / 8;
                    const Real bT = c_->betaT[i][j], bv = c_->betav[i][j];
                    const S xx = Real(2) * x[i] * x[j], both = x[i] + x[j];
                    T = T + xx * both / (x[i] * (bT * bT) + x[j]) * (bT * c_->gammaT[i][j] * Tij);
                    v = v + xx * both / (x[i] * (bv * bv) + x[j]) * (bv * c_->gammav[i][j] * vij);
                }
            }
            return {T, v};
        }
        template <class F>
        void each(Real const* x, F const& f) const {
            for (int i = 0; i < c_->n; ++i) {
                f(c_->pure[i], x[i]);
                for (int j = i + 1; j < c_->n; ++j) f(c_->pair[i][j], x[i] * x[j]);
            }
        }
        static Real power(Real tau, double t) {
            using std::pow;
            return t == 0 ? Real(1) : Real(pow(tau, Real(t)));
        }
        /// What a term has of δ, and its logarithmic slope.
        struct Powers {
            Real delta, of[33], decay[33];
            explicit Powers(Real d) : delta(d) {
                using std::exp;
                of[0] = 1;
                for (int k = 1; k <= 16; ++k) of[k] = of[k - 1] * d;
                for (int k = 1; k <= 6; ++k) decay[k] = exp(-of[k]);
            }
            std::pair<Real, Real> operator()(Term const& t) const {
                using std::exp;
                Real value = of[t.d], slope = t.d;
                if (t.l > 0) {
                    value *= decay[t.l];
                    slope -= t.l * of[t.l];
                }
                if (t.eta != 0 || t.beta != 0) {
                    const Real e = delta - t.epsilon;
                    value *= exp(-t.eta * e * e - t.beta * (delta - t.gamma));
                    slope -= delta * (2 * t.eta * e + t.beta);
                }
                return {value, slope};
            }
        };
        MultiFluid const* c_;
        Real T_;
    };
    template <class Real>
    using At = EnergyAt<Psi, MultiFluid, Real, 9>;

  private:
    static Function read(std::string const& path) {
        Function f;
        std::ifstream file(path);
        std::string line, word;
        while (std::getline(file, line)) {
            std::istringstream head(line);
            int rows = 0;
            head >> word;
            const bool gerg = word == "gerg:";
            if (word != "power:" && !gerg) {
                if (word == "gaussian:" || word == "exponential:")
                    throw std::runtime_error("other terms");
                continue;
            }
            head >> rows;
            for (int k = 0; k < rows && std::getline(file, line); ++k) {
                std::istringstream row(line);
                Term t{};
                row >> t.n >> t.d >> t.t;
                if (gerg)
                    row >> t.eta >> t.epsilon >> t.beta >> t.gamma;
                else
                    row >> t.l;
                if (!row || t.d > 16 || t.l > 6) throw std::runtime_error("cannot read " + path);
                f.push_back(t);
            }
        }
        return f;
    }
};

}  // namespace judge
