// PC-SAFT of a pure fluid: the contributions put together.
//
// With y = vs·rho, θ = Ts/T and the diameter d = σ·δ(T) of the segments, eta = m·δ³·y is the
// packing fraction, and
//     a^r = m·a_hs − (m − 1)·ln g − 12·m²·θ·y·I1 − 6·m³·θ²·y·C1·I2 + a_assoc + a_polar
// (Gross & Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244; 41 (2002) 5510). The density appears as a
// factor, never in a difference of logarithms, so that a^r is relatively accurate as rho → 0.
#pragma once

#include <plugins/common/pcsaft/association.h>
#include <plugins/common/pcsaft/diameter.h>
#include <plugins/common/pcsaft/dispersion.h>
#include <plugins/common/pcsaft/hard_chain.h>
#include <plugins/common/pcsaft/polar.h>

#include <array>
#include <optional>

namespace corvane::pcsaft {

/// Parameters of a pure fluid, in the order of their numbers.
struct Parameters {
    double M = 0;          // molar mass, g/mol
    double Ts = 0;         // depth ε/k of the potential of a segment, K
    double vs = 0;         // π/6·NA·σ³, cm³/mol, σ the diameter of a segment
    double m = 1;          // number of segments
    double kappa = 0;      // volume of a bond κ
    double epsilon = 0;    // energy of a bond ε/k, K
    double donors = 0;     // sites of the one kind
    double acceptors = 0;  // sites of the other
    double dipole = 0;     // D
    double quadrupole = 0;  // D·Å
};

/// The fluid at one temperature, ready to be evaluated at any density. T is double, or a type that
/// carries temperature derivatives.
template <class T>
class Isotherm {
  public:
    Isotherm(Parameters const& par, T const& temperature)
        : m_(par.m), donors_(par.donors), acceptors_(par.acceptors), dispersion_(par.m) {
        const T theta = par.Ts / temperature, delta = diameter(theta);
        packing_ = par.m * (delta * delta * delta);
        first_ = (-12.0 * par.m * par.m) * theta / packing_;
        second_ = (-6.0 * par.m * par.m * par.m) * (theta * theta) / packing_;
        associates_ = par.donors * par.acceptors * par.kappa != 0.0;
        if (associates_)  // NA·σ³ = 6/π·vs
            bond_ = (6.0 / M_PI) * bond_strength(par.kappa, par.epsilon / temperature) / packing_;
        if (par.dipole == 0.0 && par.quadrupole == 0.0) return;
        const Moments moments(par.vs, par.Ts, par.m, par.dipole, par.quadrupole);
        polar_.emplace(
            &moments, 1, std::array{1.0}, [](int, int) { return Likeness{}; }, temperature,
            T(par.vs * packing_));
    }

    /// eta/y: packing fraction per reduced density vs·rho.
    T const& packing() const { return packing_; }

    /// A^r/(RT) at the packing fraction eta.
    template <class S>
    S ar(S const& eta) const {
        S a = m_ * hard_sphere(eta) - (m_ - 1.0) * ln_contact(eta);
        a += eta *
             (first_ * dispersion_.i1(eta) + second_ * (dispersion_.c1(eta) * dispersion_.i2(eta)));
        if (associates_) a += association(donors_, acceptors_, S(bond_ * eta * contact(eta)));
        if (polar_) a += polar_->ar(eta);
        return a;
    }

    /// ∂(A^r/RT)/∂eta at constant temperature, from the closed forms: Z = 1 + eta·slope.
    template <class S>
    S slope(S const& eta) const {
        const S ln_g = ln_contact_slope(eta);
        S a = m_ * hard_sphere_slope(eta) - (m_ - 1.0) * ln_g;
        a += first_ * dispersion_.i1_slope(eta) + second_ * dispersion_.c1i2_slope(eta);
        if (associates_) {
            const S strength = bond_ * contact(eta);  // D = eta·strength
            a -= strength * bonds_over_strength(donors_, acceptors_, S(eta * strength)) *
                 (1.0 + eta * ln_g);
        }
        if (polar_) a += polar_->slope(eta);
        return a;
    }

  private:
    double m_, donors_, acceptors_;
    bool associates_;
    T packing_;         // m·δ³
    T first_, second_;  // factors of the two perturbation terms
    T bond_{};          // D/(eta·g)
    Dispersion<double> dispersion_;
    std::optional<PolarLines<T>> polar_;
};

}  // namespace corvane::pcsaft
