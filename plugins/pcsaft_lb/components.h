// What PC-SAFT takes from the components of a mixture, and the combining rules of unlike segments
// and sites.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>
#include <corvane/plugin/pair_table.h>
#include <corvane/plugin/small_array.h>

#include <cmath>

namespace corvane::pcsaft {

/// Parameters of a component; lengths in units that make π/6·NA·σ³ = vs.
struct Component {
    double Ts, vs, m, kappa, epsilon, donors, acceptors;
    double root, sigma;  // √Ts, ∛vs
    bool associates() const { return kappa != 0.0 && (donors != 0.0 || acceptors != 0.0); }
};

inline Component component(Model1 const& model) {
    double copy[8];
    double const* par = model.ppar(0);
    if (model.ppar(7) != par + 7) {  // not in one block
        for (int k = 0; k < 8; ++k) copy[k] = *model.ppar(k);
        par = copy;
    }
    return {par[1],           par[2], par[3], par[4], par[5], par[6], par[7], std::sqrt(par[1]),
            std::cbrt(par[2])};
}

/// Attraction between the molecules of a pair: m_i·m_j·σ_ij³·ε_ij and m_i·m_j·σ_ij³·ε_ij².
struct PairEnergy {
    double first, second;
};

/// All components of a mixture, read once per call.
class Components {
  public:
    Components(Vector<Model1*> const& models, PairTable const& pairs)
        : size(models.size()), c_(size), pairs_(pairs) {
        for (int i = 0; i < size; ++i) c_[i] = component(*models[i]);
    }
    Component const& operator[](int i) const { return c_[i]; }

    /// Lorentz-Berthelot: σ_ij = (σ_i + σ_j)/2·(1 − l_ij), ε_ij = √(ε_i·ε_j)·(1 − k_ij).
    PairEnergy energy(int i, int j) const {
        Component const &a = c_[i], &b = c_[j];
        double epsilon = a.Ts, volume = a.vs;
        if (i != j) {
            double const* pair = pairs_.at(i, j);
            epsilon = a.root * b.root * (1.0 - pair[0]);
            const double sigma = 0.5 * (a.sigma + b.sigma) * (1.0 - pair[1]);
            volume = sigma * sigma * sigma;
        }
        const double first = a.m * b.m * volume * epsilon;
        return {first, first * epsilon};
    }
    /// Δ/g of a donor of i and an acceptor of j [cm³/mol]. Wolbach & Sandler, Ind. Eng. Chem. Res.
    /// 37 (1998) 2917: ε_ij = (ε_i + ε_j)/2 and κ_ij·σ_ij³ = √(κ_i·κ_j)·(σ_i·σ_j)^(3/2), with the
    /// arithmetic mean of the diameters on the left.
    template <class T>
    T bond(int i, int j, T const& temperature) const {
        using std::expm1;
        Component const &a = c_[i], &b = c_[j];
        const double volume =
            i == j ? a.kappa * a.vs : std::sqrt(a.kappa * a.vs) * std::sqrt(b.kappa * b.vs);
        return (6.0 / M_PI) * volume * expm1(0.5 * (a.epsilon + b.epsilon) / temperature);
    }

    const int size;

  private:
    SmallArray<Component> c_;
    PairTable const& pairs_;
};

}  // namespace corvane::pcsaft
