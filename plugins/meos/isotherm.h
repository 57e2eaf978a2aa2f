// Evaluation of a multiparameter equation along an isotherm.
#pragma once

#include <plugins/meos/equation.h>

namespace corvane::meos {

/// α^r and what is asked of δ^i τ^j ∂^(i+j)α^r/∂δ^i∂τ^j at one state.
struct Value {
    double a = 0.0;
    double d1 = 0.0, d2 = 0.0, d3 = 0.0;  // i = 1, 2, 3
    double t1 = 0.0, t2 = 0.0;            // j = 1, 2
    double dt = 0.0;                      // i = j = 1

    double Z() const { return 1.0 + d1; }
    /// (∂p/∂rho)/(RT) and rho·(∂²p/∂rho²)/(RT).
    double slope() const { return 1.0 + 2.0 * d1 + d2; }
    double curvature() const { return 2.0 * d1 + 4.0 * d2 + d3; }
};

/// The equation at one temperature: every function of τ is worked out once, and a density then
/// costs one exponential per different δ^l and per shaped term. A short-lived object: it refers to
/// the equation and holds numbers that depend on its parameters.
///
/// With Tau, the derivatives in τ come too.
template <bool Tau>
class Isotherm {
  public:
    Isotherm(Equation const& equation, double T);

    /// @tparam order  highest derivative in δ that is wanted: 0, 1, 2 or 3 (with Tau: 2)
    template <int order>
    Value at(double rho) const;

    double T() const { return T_; }
    /// Sums of the factors over the slots.
    double const* slots() const { return slot_; }
    int evaluations() const { return evaluations_; }  ///< calls of `at` so far

  private:
    template <int order>
    void add_powers(double const* powers, double const* damping, Value& v) const;
    template <int order>
    void add_shaped(double delta, double const* powers, double const* exponentials, Value& v) const;
    template <int order>
    void add_level(double delta, double const* powers, Value& v) const;

    static constexpr int kTau = Tau ? kFactored : 1;

    Equation const& equation_;
    double T_, tau_, vs_;
    mutable int evaluations_ = 0;
    double c_[kFactored];         // n·(function of τ) of the factored terms
    double w1_[kTau], w2_[kTau];  // its τ·∂/∂τ and τ²·∂²/∂τ², over the function
    double slot_[kMaxTerms];      // sums of c over the slots
    double slot1_[kTau], slot2_[kTau];
};

extern template class Isotherm<false>;
extern template class Isotherm<true>;

}  // namespace corvane::meos
