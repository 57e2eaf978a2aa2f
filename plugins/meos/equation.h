// The terms of a multiparameter equation of state in reduced Helmholtz form: the section of the
// parameter file, the parameters, and the order in which evaluation walks them.
#pragma once

#include <cstdio>
#include <vector>

namespace corvane::meos {

inline constexpr int kMaxTerms = 240;             ///< terms that an equation may have
inline constexpr int kMaxPower = 32;              ///< largest integer exponent of the density
inline constexpr int kFactored = kMaxTerms + 16;  ///< capacity for all factored terms, padded

/// α^r(τ, δ) as a sum of terms, τ = Ts/T, δ = rho·vs; see README.md for the kinds of terms.
///
/// Every real number of the file is a parameter: evaluation reads it from the very address that
/// `parameter` gives, so that a caller may write it at any time. The form of the equation - the
/// kinds of the terms and their integer density exponents d and l - is structure, fixed by `read`.
///
/// "Factored" terms are a function of τ times a function of δ. They stand in one array, in three
/// runs, each padded to whole vectors with terms of n = 0:
///
///     power    n τ^t [exp(−τ^m)] · δ^d exp(−δ^l), sorted by l and d
///     shaped   n τ^t exp(−β(τ−γ)²) · δ^d exp(−η(δ−ε)² − g δ^l), and variants of the function of τ
///     level    a term without a power of δ (d = 0), counted from its value at δ = 0
class Equation {
  public:
    Equation();
    Equation(Equation const&) = delete;
    Equation& operator=(Equation const&) = delete;

    /// Reads the section, replacing everything. @throws ThException 1 for anything that is not a
    /// complete, finite equation; the equation is then what it was before
    void read(FILE* f);
    void write(FILE* f) const;

    int parameters() const { return static_cast<int>(address_.size()); }
    int terms() const { return terms_; }
    /// 0 M, 1 Ts, 2 vs, then the factor of every term (column n; a of an association term) in the
    /// order of the file, then the other real numbers of the terms in the order of the file.
    double* parameter(int i) { return address_[static_cast<unsigned>(i)]; }

    double M() const { return pool_[0]; }
    double Ts() const { return pool_[1]; }
    double vs() const { return pool_[2]; }
    double omega() const { return omega_; }
    /// All the numbers that evaluation reads, to be compared with an earlier copy.
    std::vector<double> const& pool() const { return pool_; }

    // ---- for evaluation

    /// Power terms first … last−1 have the same δ^d exp(−δ^l).
    struct Slot {
        int first, last, d;
    };
    /// Slots first … last−1 have the same exp(−δ^l).
    struct Group {
        int first, last, l;
    };
    /// A factored term with one more function of τ: exp(−a τ^k), or exp(1/(a + β(τ−γ)²)) in place
    /// of the bell when k is null. The factor a is 1 when null.
    struct Extra {
        int term;
        double const *a, *k;
    };
    struct NonAnalytic {
        double const *n, *a, *b, *beta, *A, *B, *C, *D;
    };
    struct Association {
        double const *a, *m, *epsilonbar, *kappabar, *vbarn;
    };

    int factored = 0;             // length of n and t
    int shaped0 = 0, level0 = 0;  // where those runs begin
    int levels = 0;               // level terms, without padding
    int highest = 1;              // highest integer power of δ in use
    bool damping = false;         // any shaped term with g δ^l
    double const *n = nullptr, *t = nullptr;
    // Of shaped and level terms, counted from shaped0.
    double const *eta = nullptr, *epsilon = nullptr, *beta = nullptr, *gamma = nullptr,
                 *g = nullptr;
    std::vector<double> sign;  // of η(δ−ε)²: −1, or +1 where the published η is negative
    std::vector<double> d, l;
    std::vector<int> dpower, lpower;
    std::vector<Slot> slots;
    std::vector<double> falling;  // of each slot 1, d, d(d − 1), d(d − 1)(d − 2)
    std::vector<Group> groups;
    std::vector<Extra> extras;
    std::vector<NonAnalytic> nonanalytic;
    std::vector<Association> association;

  private:
    class Builder;

    /// Terms of one kind as the file has them: where each number lives, row by row.
    struct Block {
        int kind = 0;
        std::vector<double*> cell;
    };

    std::vector<Block> blocks_;
    std::vector<double> pool_;       // parameters
    std::vector<double> structure_;  // integer exponents and absent factors, for writing
    std::vector<double*> address_;
    int terms_ = 0;
    double omega_ = 0.0, R_eos_ = 0.0;
};

}  // namespace corvane::meos
