// Truncated Taylor series in any number of variables, for equations that are written in Python.
#pragma once

#include <array>
#include <memory>
#include <vector>

namespace py {

/// The monomials of m variables up to a total order, and which two of them multiply to which.
struct Space {
    int m, order;
    std::vector<std::vector<int>> exponents;  // the constant first, then the variables in order
    std::vector<std::array<int, 3>> products;
    int index(std::vector<int> const& exponent) const;  // its place
    /// One for every pair (m, order), kept for good.
    static Space const& of(int m, int order);
};

/// Σ c_k·h^k. Seeded with v·(1 + h) or v + h, the coefficients of a result are its derivatives, over
/// factorials. Arithmetic on truncated series: Griewank & Walther, Evaluating Derivatives, 2nd ed.
/// (2008), chapter 13; functions by Horner's rule on their Taylor polynomials.
class Jet {
  public:
    static constexpr int kOrder = 4;  // the highest
    using Taylor = std::array<double, kOrder + 1>;

    Jet(Space const& space, double value);
    static Jet variable(Space const& space, double value, int which, double slope);

    double value() const { return c_[0]; }
    double operator()(std::vector<int> const& exponent) const { return c_[space_->index(exponent)]; }
    Jet compose(Taylor const& f) const;
    Jet pow(double exponent) const;
    Jet pow(Jet const& exponent) const;
    Jet exp() const;
    Jet log() const;
    Jet log1p() const;
    Jet expm1() const;
    Jet sqrt() const { return pow(0.5); }
    Jet sin() const;
    Jet cos() const;
    Jet tanh() const;
    Jet arctan() const;

    Jet operator+(Jet const& b) const;
    Jet operator*(Jet const& b) const;
    Jet operator+(double b) const;
    Jet operator*(double b) const;
    Jet operator-() const { return *this * -1.0; }

  private:
    Space const* space_;
    std::vector<double> c_;
};

}  // namespace py
