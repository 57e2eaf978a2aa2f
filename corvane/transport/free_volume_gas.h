// What joins dilute gas and dense liquid by free volume: Shan, Penoncello, Jacobsen, ASHRAE Transactions 106 (2000) 757.
#pragma once

#include <corvane/transport/figures.h>

#include <cmath>
#include <limits>

namespace corvane::inline detail {

/// ((ρL − ρ)/ρL)^C1·gas + (ρ/ρL)^C1·C2·ρL²/(ρL − ρ)·√T·exp(ρ/(ρL − ρ)·ΔG/(RT)) + d/(cosh(ρ − ρc)·cosh(T − Tc)); ρ in mol/dm³.
class FreeVolumeGas {
  public:
    explicit FreeVolumeGas(Figures const& f)
        : C1_(f.number("C1")), C2_(f.number("C2")), activation_(f.number("activation") / 8.31451),
          rho_L_(f.number("rho_L")), rho_c_(f.number("rho_c")), Tc_(f.number("Tc")), top_(f.number("top")) {}
    /// Not-a-number from ρL on.
    double operator()(double T, double rho, double gas) const {
        const double free = rho_L_ - rho;
        if (!(free > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        const double liquid = C2_ * rho_L_ * rho_L_ / free * std::sqrt(T) * std::exp(rho / free * activation_ / T);
        return std::pow(free / rho_L_, C1_) * gas + std::pow(rho / rho_L_, C1_) * liquid +
               top_ / (std::cosh(rho - rho_c_) * std::cosh(T - Tc_));
    }

  private:
    double C1_, C2_, activation_, rho_L_, rho_c_, Tc_, top_;
};

}  // namespace corvane::inline detail
