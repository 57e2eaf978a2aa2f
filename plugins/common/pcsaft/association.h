// Association of like molecules with two kinds of sites: Wertheim's theory in the form of Chapman,
// Gubbins, Jackson & Radosz, Ind. Eng. Chem. Res. 29 (1990) 1709.
//
// A molecule has nd donor and na acceptor sites; only a donor and an acceptor bond, all pairs with
// the same strength. The schemes of Huang & Radosz, Ind. Eng. Chem. Res. 29 (1990) 2284, are 2B = 1
// + 1, 3B = 2 + 1 or 1 + 2, 4C = 2 + 2. The fractions of sites that are not bonded,
//     X_D = 1/(1 + na·D·X_A),   X_A = 1/(1 + nd·D·X_D),   D = rho·Δ,
// follow from a quadratic equation.
#pragma once

#include <cmath>

namespace corvane::pcsaft {

/// Association strength over g·σ³ (Gross & Sadowski, Ind. Eng. Chem. Res. 41 (2002) 5510):
/// Δ = σ³·g·κ·[exp(ε/kT) − 1].
template <class S>
S bond_strength(double kappa, S const& epsilon_kT) {
    using std::expm1;
    return kappa * expm1(epsilon_kT);
}

/// Fractions of donor and acceptor sites without a bond.
template <class S>
struct FreeSites {
    S donors, acceptors;
};

/// D = rho·Δ. The root of the quadratic that goes to 1 as D → 0, without cancellation at any D >=
/// 0: it is solved for the kind with fewer sites, whose linear coefficient is positive.
template <class S>
FreeSites<S> free_sites(double nd, double na, S const& D) {
    using std::sqrt;
    const double few = nd < na ? nd : na, many = nd < na ? na : nd;
    const S linear = 1.0 + (many - few) * D;
    const S x_few = 2.0 / (linear + sqrt(linear * linear + 4.0 * few * D));
    const S x_many = 1.0 / (1.0 + few * D * x_few);
    return nd < na ? FreeSites<S>{x_few, x_many} : FreeSites<S>{x_many, x_few};
}

/// A^r/(NkT) of association, Σ over sites of ln X − X/2 + 1/2. With ln X = −ln(1 + n·D·X') and
/// 1 − X = n·D·X·X' it is relatively accurate as D → 0 and as X → 0.
template <class S>
S association(double nd, double na, S const& D) {
    using std::log1p;
    const FreeSites<S> x = free_sites(nd, na, D);
    const S donor = na * D * x.acceptors, acceptor = nd * D * x.donors;
    return (nd * na) * (D * (x.donors * x.acceptors)) - nd * log1p(donor) - na * log1p(acceptor);
}

/// Bonds per molecule over D: nd·na·X_D·X_A. Since the fractions make A^r stationary (Michelsen &
/// Hendriks, Fluid Phase Equilib. 180 (2001) 165), dA^r = −bonds·d ln D.
template <class S>
S bonds_over_strength(double nd, double na, S const& D) {
    const FreeSites<S> x = free_sites(nd, na, D);
    return (nd * na) * (x.donors * x.acceptors);
}

}  // namespace corvane::pcsaft
