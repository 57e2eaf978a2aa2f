// An equation that is not written a second time: the model's own pressures and potentials.
#pragma once

#include "energy.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace judge {

/// What the court asks of an equation, from ModelN::Z and ModelN::myr at given densities, in double
/// whatever Real is. It judges what is built on the equation, not the equation; its figures are as good
/// as differences of doubles are, so that phases have to be 0.01 apart (ln rho).
struct OfModel {
    static constexpr Precision kPrecision{2e-13, 1e-5, 1e-6, false, 1e-3};
    static constexpr int kBranches = 6;  // SAFT-VR Mie has loops between gas and cold liquids

    explicit OfModel(ModelN const& model) : m(model), n(model.mdl1.size()) {
        for (int i = 0; i < n; ++i) {
            M[i] = model.mdl1[i]->M();
            closest[i] = limit_of(i);
        }
    }
    double pressure(double T, Vector<double> const& rho) const {  // over RT
        double total = 0;
        for (int i = 0; i < n; ++i) total += rho[i];
        return total * m.Z(rho, T);
    }

    template <class Real>
    class Psi {
      public:
        Psi(OfModel const& e, Real T) : e_(&e), T_(static_cast<double>(T)) {}
        int size() const { return e_->n; }
        double limit(Real const* x) const {
            double v = 0;
            for (int i = 0; i < e_->n; ++i) v += static_cast<double>(x[i]) / e_->closest[i];
            return 1 / v;
        }
        auto pressure(Real const* x) const {
            Vector<double> w(e_->n);
            for (int i = 0; i < e_->n; ++i) w[i] = static_cast<double>(x[i]);
            return [e = e_, T = T_, w](Real rho) {
                Vector<double> r = w;
                for (int i = 0; i < e->n; ++i) r[i] *= static_cast<double>(rho);
                return Real(e->pressure(T, r));
            };
        }
        void select(Real const*, std::vector<double>&, std::vector<int> const&) const {}

      private:
        OfModel const* e_;
        double T_;
    };
    template <class Real>
    class At : public EnergyAt<Psi, OfModel, Real, kBranches> {
      public:
        /// Slopes are differences of potentials in double: below, every halving finds other signs.
        static constexpr Long kFlat = kPrecision.noise;

        At(OfModel const& e, Real T)
            : EnergyAt<Psi, OfModel, Real, kBranches>(e, T), e_(&e), T_(static_cast<double>(T)) {}
        Real state(Real rho, Real const* x, Real* h) const {
            Vector<double> r(e_->n);
            for (int i = 0; i < e_->n; ++i) r[i] = static_cast<double>(rho * x[i]);
            for (int i = 0; i < e_->n; ++i) try {
                    h[i] = Real(std::log(static_cast<double>(rho))) + Real(e_->m.myr(r, T_, i));
                } catch (MthException const&) {  // no number there
                    h[i] = Real(std::nan(""));
                }
            return Real(e_->pressure(T_, r));
        }

      private:
        OfModel const* e_;
        double T_;
    };

    ModelN const& m;
    int n;
    double M[kMax] = {}, closest[kMax] = {};

  private:
    /// Where the pressure of component i is 1e5 MPa at 1000 K, or its pole.
    double limit_of(int i) const {
        Vector<double> rho(n);
        for (int j = 0; j < n; ++j) rho[j] = 0;
        double at = 1e-4, last = 0;
        for (double step = 0.02; step > 1e-7;) {
            rho[i] = at * (1 + step);
            const double p = pressure(1000, rho);
            if (!(std::isfinite(p) && p > last)) {
                step /= 2;
                continue;
            }
            at = rho[i];
            last = p;
            if (p * R * 1000 > 1e5) break;
        }
        return at;
    }
};

}  // namespace judge
