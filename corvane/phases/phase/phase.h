// One phase of a mixture: chemical potentials at (p, T, x) or at partial densities, with their
// derivatives. What the equilibrium solvers are built on.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

#include <vector>

class Model1;
class ModelN;

namespace corvane {

struct IsothermN;

/// Which density root a phase at (p, T) takes.
enum class Root {
    stable,  ///< the one of lower Gibbs energy
    dense,
    dilute
};

/// What evaluate computes beside the potentials; add them up.
enum PhaseOrder : int { phase_T = 1, phase_H = 2, phase_p = 4, phase_all = 7 };

/// A phase and its potentials, all n-vectors over the *present* components. m_i = μ_i^r/(RT) +
/// ln rho_i, so that ln(f_i/MPa) = m_i + ln(RT).
struct CORVANE_API PhaseState {
    double T = 0.0, rho = 0.0;  ///< K, mol/cm³
    double p = 0.0;             ///< MPa, from the equation at rho (phase_p)
    double p_T = 0.0;       ///< T·∂(p/RT)/∂T at constant rho_i, mol/cm³ (phase_p and phase_T)
    std::vector<double> x;  ///< mole fractions
    std::vector<double> rho_i;  ///< mol/cm³
    std::vector<double> m;      ///< see above
    std::vector<double> m_T;    ///< T·∂m_i/∂T at constant rho_i (phase_T)
    std::vector<double> H;      ///< ∂m_i/∂rho_j, n×n, cm³/mol (phase_H)
    std::vector<double> P;      ///< Σ_i rho_i·H_ij = ∂(p/RT)/∂rho_j (phase_H)
    double S = 0.0;             ///< Σ rho_j·P_j = rho·∂(p/RT)/∂rho, mol/cm³ (phase_H)

    int size() const { return static_cast<int>(x.size()); }
    /// Partial molar volume, cm³/mol (phase_H).
    double v(int i) const { return P[i] / S; }
    /// ∂m_i/∂n_j at constant T, p and Σn = 1 before the change (phase_H).
    double m_n(int i, int j) const { return rho * (H[i * size() + j] - P[i] * P[j] / S); }
    /// What rounding of the densities may move p/RT by, mol/cm³ (phase_H).
    double P_rounding() const;
    /// ∂m_i/∂p at constant T and x, 1/MPa (phase_H).
    double m_p(int i) const;
    /// ∂m_i/∂T at constant p and x, 1/K (phase_all); of m, that is of ln f_i − ln(RT).
    double m_T_at_p(int i) const;

    void resize(int n);
};

/// A mixture restricted to the components that are present. Holds the model by reference, and
/// counts evaluations; use one per thread, and a new one when a parameter of the model changes.
///
/// Models with IsothermN keep what depends on T alone from one state to the next of the same T.
/// Derivatives come from the model's DerivN. Without one: potentials from myr, H from PsiH, and the
/// slopes in T by central differences; the solvers then converge as far as these numerical forms
/// allow, and a result that misses the tolerances is refused as any other.
class CORVANE_API FluidModel {
  public:
    /// @throws MthException 2 z of a wrong length; ThException 5 a mole fraction that is negative
    ///     or not finite, or a sum that differs from 1 by more than 1e-6. z is normalised.
    FluidModel(ModelN const& model, Vector<double> const& z);
    /// As constructed anew, in the memory that it has. @throws as the constructor
    void assign(ModelN const& model, Vector<double> const& z);

    ModelN const& model() const { return *model_; }
    /// Derivatives to rounding; otherwise by differences.
    bool exact() const;
    int size() const { return static_cast<int>(present_.size()); }
    std::vector<double> const& z() const { return z_; }
    int index(int k) const { return present_[k]; }  ///< of present component k in the model
    Model1 const& pure(int k) const;
    /// All components again: zeros for those that are absent.
    Vector<double> expand(std::vector<double> const& x) const;
    /// ln of Wilson's K-factor times p (Wilson, Tech. Conf. API 1968).
    double wilson(int k, double T) const;
    /// −d wilson/d(1/T), K: enthalpy of vaporisation over R.
    double wilson_slope(int k) const;

    /// Potentials at s.rho_i and T. False if they are not finite.
    bool evaluate(PhaseState& s, double T, int order) const;
    /// Density root at (p, T, x), then evaluate; s.p = p unless order has phase_p. False without a
    /// root.
    bool evaluate_at(PhaseState& s, double p, double T, std::vector<double> const& x, Root root,
                     int order) const;

    /// All stable density roots at (p, T, x), the densest first; returns their number, 0 to 2. With
    /// g also Ar + Z − 1 + ln rho of each, which is Σ x_i·(m_i − ln x_i).
    int densities(double p, double T, std::vector<double> const& x, double* rho,
                  double* g = nullptr) const;
    /// What tells the denser phase: molar masses, g/mol, or, if one is not known, the critical volumes
    /// of all, cm³/mol.
    double weight(int k) const { return weights_[static_cast<std::size_t>(k)]; }
    double mass_density(PhaseState const& s) const;  ///< g/cm³, from s.rho_i and the weights

    mutable long evaluations = 0;  ///< calls of evaluate and density searches

  private:
    void fill(std::vector<double> const& x) const;
    void potentials(PhaseState& s, double T, int order) const;
    void slots(PhaseState& s, double T, int order) const;
    double const* isotherm(double T, bool slopes) const;
    double gibbs(double p, double T, std::vector<double> const& x, double rho) const;

    ModelN const* model_ = nullptr;
    IsothermN const* isotherm_ = nullptr;  // null without the extension
    std::vector<int> present_;
    std::vector<double> z_, weights_;
    mutable Vector<double> full_;  // partial densities or mole fractions of all components
    mutable std::vector<double> mu_, mu_T_, mu_rho_;
    mutable std::vector<double> work_;  // of isotherm_ at work_T_, with slopes or without
    mutable double work_T_ = 0.0;
    mutable bool work_slopes_ = false;
};

}  // namespace corvane
