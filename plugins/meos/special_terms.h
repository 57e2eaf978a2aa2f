// The two kinds of terms that are not a function of τ times a function of δ.
#pragma once

#include <plugins/meos/isotherm.h>

namespace corvane::meos {

/// Adds n Δ^b δ ψ, θ = (1−τ) + A x^(1/β), Δ = θ² + B x^(2a), ψ = exp(−C x² − D(τ−1)²) with
/// x = |δ−1| (Span & Wagner, J. Phys. Chem. Ref. Data 25 (1996) 1509; IAPWS R6-95, table 5).
///
/// At τ = δ = 1 the value and those derivatives that have a limit along the critical isotherm are
/// 0; ∂²/∂τ² diverges there. Farther away than exp(−80) nothing is added.
/// @param order highest derivative in δ   @param tau derivatives in τ as well
void add_non_analytic(Equation::NonAnalytic const& term, double delta, double tau, int order,
                      bool with_tau, Value& v);

/// Adds a·m·(ln X − X/2 + 1/2), X = 2/(1 + sqrt(1 + 4Δδ)), Δ = g κ (exp(ε τ) − 1),
/// g = (2−η)/(2(1−η)³), η = v δ (Piazza & Span, Fluid Phase Equilib. 303 (2011) 134).
void add_association(Equation::Association const& term, double delta, double tau, int order,
                     bool with_tau, Value& v);

}  // namespace corvane::meos
