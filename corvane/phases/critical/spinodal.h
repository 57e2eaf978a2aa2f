// Temperatures at which a fluid of given density reaches its limit of stability. Internal.
#pragma once

#include <corvane/phases/critical/critical_conditions.h>

#include <vector>

namespace corvane::inline detail {

/// A state with λ = 0 (to 1e-3 in ln T), where C and u were determined.
struct SpinodalState {
    CriticalConditions::Variables y{};
    double C = 0.0;
    std::vector<double> u;
};

/// Between 0.2 of the lowest and twice the highest critical temperature of the components, seen in
/// steps of 12 %. Densities of a search: 31, from 0.3 to 4.4 times the mean critical one.
class Spinodal {
  public:
    static constexpr int kDensities = 31;
    /// @throws ThException 5 a component without Tcrit and vcrit
    Spinodal(FluidModel const& fluid, CriticalConditions& conditions);

    /// ln of the mole-fraction average of the critical volumes, negative: a density.
    double mean(std::vector<double> const& x) const;
    /// ln rho of search density k.
    double density(std::vector<double> const& x, int k) const;
    /// Sets y[1] to the hottest one of the density and composition of y, to 1e-2 in ln T. False if
    /// there is none.
    bool hottest(CriticalConditions::Variables& y, int m);
    /// From there to where C along rising density should vanish: its slope in ln rho is about 2.5
    /// in most mixtures, and ln T of the spinodal falls as a parabola.
    void nearer(CriticalConditions::Variables& y);
    /// All of them, the hottest first, C oriented as the state of the same rank in `before`.
    void column(CriticalConditions::Variables y, int m, std::vector<SpinodalState> const& before,
                std::vector<SpinodalState>& states);

  private:
    bool lambda(CriticalConditions::Variables const& y, int m, double& value);
    double root(CriticalConditions::Variables y, int m, double a, double b, double accuracy);

    FluidModel const& fluid_;
    CriticalConditions& conditions_;
    double hot_ = 0.0, cold_ = 0.0;  // ln T
};

/// Where C vanishes between two states, by the secant.
CriticalConditions::Variables between(SpinodalState const& a, SpinodalState const& b);

}  // namespace corvane::inline detail
