// What PC-SAFT takes from the components of a mixture, and the combining rules of unlike segments
// and sites.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/plugin/pair_table.h>
#include <corvane/plugin/small_array.h>
#include <corvane/pure/model1.h>
#include <plugins/common/pcsaft/polar.h>

#include <cmath>

namespace corvane::pcsaft {

/// Parameters of a component; lengths in units that make π/6·NA·σ³ = vs.
struct Component {
    double Ts, vs, m, kappa, epsilon, donors, acceptors;
    double dipole, quadrupole;  // D, D·Å
    double root, sigma;  // √Ts, ∛vs
    bool has_sites() const { return donors != 0.0 || acceptors != 0.0; }
    bool polar() const { return dipole != 0.0 || quadrupole != 0.0; }
    Moments moments() const { return {vs, Ts, m, dipole, quadrupole}; }
};

inline Component component(Model1 const& model) {
    double copy[10];
    double const* par = model.ppar(0);
    if (model.ppar(9) != par + 9) {  // not in one block
        for (int k = 0; k < 10; ++k) copy[k] = *model.ppar(k);
        par = copy;
    }
    return {par[1],           par[2], par[3], par[4], par[5],
            par[6],           par[7], par[8], par[9], std::sqrt(par[1]),
            std::cbrt(par[2])};
}

/// Attraction between the molecules of a pair, m_i·m_j·σ_ij³·ε_ij and m_i·m_j·σ_ij³·ε_ij²: polynomials
/// in 1/T, constants but where k_ij depends on temperature. Also sums of these.
struct PairEnergy {
    double first = 0.0, second = 0.0;
    double first_1 = 0.0, second_1 = 0.0, second_2 = 0.0;

    bool varies() const { return second_2 != 0.0; }  // sums of squares
    void add(PairEnergy const& e, double weight) {
        first += weight * e.first;
        second += weight * e.second;
        first_1 += weight * e.first_1;
        second_1 += weight * e.second_1;
        second_2 += weight * e.second_2;
    }
    /// What depends on temperature, of the first and of the second.
    template <class T>
    T first_more(T const& beta) const {
        return first_1 * beta;
    }
    template <class T>
    T second_more(T const& beta) const {
        return beta * (second_1 + second_2 * beta);
    }
};

/// All components of a mixture, read once per call.
class Components {
  public:
    Components(Vector<Model1*> const& models, PairTable const& pairs)
        : size(models.size()), c_(size), associates_(size), pairs_(pairs) {
        for (int i = 0; i < size; ++i) c_[i] = component(*models[i]);
        for (int i = 0; i < size; ++i) {
            polar_ = polar_ || c_[i].polar();
            associates_[i] = c_[i].has_sites() && c_[i].kappa != 0.0;
            for (int j = 0; c_[i].has_sites() && j < size; ++j)
                if (j != i && pairs_.at(i, j)[3] != 0.0) associates_[i] = true;
        }
    }
    Component const& operator[](int i) const { return c_[i]; }
    /// Has sites that bond, to its like or to what a pair's parameters say.
    bool associates(int i) const { return associates_[i] != 0; }
    bool polar() const { return polar_; }

    Likeness like(int i, int j) const {
        if (i == j) return {};
        double const* pair = pairs_.at(i, j);
        return {1.0 - pair[0], -pair[4]};
    }
    /// Lorentz-Berthelot: σ_ij = (σ_i + σ_j)/2·(1 − l_ij), ε_ij = √(ε_i·ε_j)·(1 − k_ij).
    PairEnergy energy(int i, int j) const {
        Component const &a = c_[i], &b = c_[j];
        double epsilon = a.Ts, volume = a.vs, more = 0.0;
        if (i != j) {
            double const* pair = pairs_.at(i, j);
            epsilon = a.root * b.root * (1.0 - pair[0]);
            more = a.root * b.root * -pair[4];
            const double sigma = 0.5 * (a.sigma + b.sigma) * (1.0 - pair[1]);
            volume = sigma * sigma * sigma;
        }
        const double room = a.m * b.m * volume, first = room * epsilon;
        if (more == 0.0) return {first, first * epsilon};
        return {first, first * epsilon, room * more, 2.0 * first * more, room * more * more};
    }
    /// Δ/g of a donor of i and an acceptor of j [cm³/mol]. Wolbach & Sandler, Ind. Eng. Chem. Res.
    /// 37 (1998) 2917: ε_ij = (ε_i + ε_j)/2 and κ_ij·σ_ij³ = √(κ_i·κ_j)·(σ_i·σ_j)^(3/2), with the
    /// arithmetic mean of the diameters on the left. A pair may have its own ε_ij and κ_ij.
    template <class T>
    T bond(int i, int j, T const& temperature) const {
        using std::expm1;
        Component const &a = c_[i], &b = c_[j];
        double volume =
            i == j ? a.kappa * a.vs : std::sqrt(a.kappa * a.vs) * std::sqrt(b.kappa * b.vs);
        double energy = 0.5 * (a.epsilon + b.epsilon);
        if (i != j) {
            double const* pair = pairs_.at(i, j);
            if (pair[2] != 0.0) energy = pair[2];
            if (pair[3] != 0.0) volume = pair[3] * std::sqrt(a.vs * b.vs);
        }
        return (6.0 / M_PI) * volume * expm1(energy / temperature);
    }

    const int size;

  private:
    SmallArray<Component> c_;
    SmallArray<char> associates_;
    bool polar_ = false;
    PairTable const& pairs_;
};

}  // namespace corvane::pcsaft
