// All terms of a multi-fluid mixture: those that components share stand there, and are evaluated,
// once.
#pragma once

#include <corvane/core/containers.h>
#include <corvane/plugin/small_array.h>
#include <corvane/pure/derivatives.h>
#include <corvane/pure/power_series.h>
#include <plugins/meos_gerg/departure.h>

#include <array>
#include <vector>

class Model1;

namespace corvane::gerg {

/// A function of δ and τ and its derivatives d[i·3 + j] = δ^i·(T^j)·∂^(i+j)/∂δ^i∂T^j at constant
/// composition, as Deriv1 has them; third = δ³·∂³/∂δ³.
struct Sums {
    double d[9] = {};
    double third = 0.0;

    void add(double weight, Sums const& s) {
        for (int k = 0; k < 9; ++k) d[k] += weight * s.d[k];
        third += weight * s.third;
    }
};

/// powers[k] = δ^k, k = 0 … top; room for two at least.
inline void powers_of(double delta, int top, double* powers) {
    powers[0] = 1.0;
    powers[1] = delta;
    for (int k = 2; k <= top; ++k) powers[k] = powers[k / 2] * powers[k - k / 2];
}

/// The terms φ_k = δ^d·τ^t·exp(…) of the components that are sums of powers and of the departure
/// functions, in columns. Components with the same exponents, as most of GERG-2008, share them: the
/// mixture is Σ c_k·φ_k with weights c_k that depend on the composition, a component Σ n_k·φ_k over
/// its part. Parts are filled up to whole vectors with terms of no weight.
class SharedTerms {
  public:
    using Components = Vector<Model1*>;

    SharedTerms(Components const& components, std::vector<Departure> const& functions);
    /// Are these the components, with the exponents, that it was made from? Factors may differ.
    bool matches(Components const& components) const;
    /// Is component i among the terms?
    bool has(int i) const { return components_[static_cast<unsigned>(i)].size > 0; }

    int weights() const { return terms() + static_cast<int>(levels_.size()); }
    int factors() const { return factors_; }
    /// The factors n of the components, part after part, as they are now.
    void read(double* n) const;
    /// c_k of the mole fractions x and of the weights w of the departure functions.
    /// @param n  what `read` gave   @param c  weights()
    void weigh(double const* x, double const* w, double const* n, double* c) const;

    /// The mixture to second order at δ and τ.
    Sums second(double const* c, double delta, double tau) const;
    /// The same, and value, δ·∂/∂δ and τ·∂/∂τ of each component (those that it has) and function.
    Sums each(double const* c, double const* n, double delta, double tau,
              std::array<double, 3>* component, std::array<double, 3>* function) const;

    /// The mixture at one temperature.
    class Isotherm {
      public:
        Isotherm(SharedTerms const& terms, double const* c, double tau);
        /// Adds δ^i·∂^i/∂δ^i, i = 0 … order (at most 3), in d[0], [3], [6] and third.
        template <int order>
        void add(double delta, Sums& sums) const;

      private:
        friend class SharedTerms;
        enum Column { factor, power, eta, epsilon, beta, gamma, columns };
        template <int order>
        void add_in_lanes(double delta, Sums& sums) const;
        template <int order>
        void add_narrow(double delta, Sums& sums) const;
        template <int order>
        void add_wide(double delta, Sums& sums) const;
        template <int order>
        void powers_in_lanes(double const* powers, double const* decay, Sums& sums) const;
        template <int order>
        void shapes_in_lanes(double delta, double const* powers, double const* E, Sums& sums) const;
        double* column(int which) { return &shape_[which * room_]; }
        double const* column(int which) const { return &shape_[which * room_]; }

        SharedTerms const& s_;
        double const* c_;
        double tau_;
        int room_, shaped_ = 0;
        SmallArray<double, 96> slot_;    // factors of the powers of δ
        SmallArray<double, 640> shape_;  // columns of the shaped terms that have a weight
        SmallArray<int, 128> power_;
    };

  private:
    struct Part {
        int first = 0, size = 0;  // of the terms, filled up
        int at = 0, count = 0;    // of its factors
        Model1 const* model = nullptr;
        Deriv1 const* derivatives = nullptr;
        PowerSeries1 const* series = nullptr;
    };
    struct Function {
        int first = 0, size = 0, shaped_first = 0, shaped_size = 0;
    };
    struct Group {  // powers of δ from the first to `size`, a multiple of four, with one exp(−δ^l)
        int l, size, first;
    };
    struct Level {
        int function;
        Term term;
        void add(double weight, double delta, double tau, int order, Sums& sums) const;
    };
    struct Kept {  // values of the terms, and their δ·∂/∂δ and τ·∂/∂τ
        double *a, *L, *U;
    };

    int terms() const { return static_cast<int>(t_.size()); }
    void append(Term const& term, double factor);
    void fill_up();
    bool shares(Part const& part, PowerSeries1::Terms const& terms) const;
    void add_component(Model1 const* model);
    void make_groups();
    void weigh_in_lanes(double const* x, double const* w, double const* n, double* c) const;
    void weigh_narrow(double const* x, double const* w, double const* n, double* c) const;
    void weigh_wide(double const* x, double const* w, double const* n, double* c) const;
    Sums sum(double const* c, double delta, double tau, Kept* kept) const;
    template <bool Keep>
    Sums sum_in_lanes(double const* c, double delta, double tau, Kept* kept) const;
    template <bool Keep>
    Sums sum_narrow(double const* c, double delta, double tau, Kept* kept) const;
    template <bool Keep>
    Sums sum_wide(double const* c, double delta, double tau, Kept* kept) const;

    std::vector<Part> components_;
    std::vector<Function> functions_;
    std::vector<Level> levels_;  // terms without a power of δ
    int factors_ = 0;
    // Columns. Terms up to series_ are powers (t, d, l), the others have no l.
    int series_ = 0;
    std::vector<double> n_, t_, d_, l_, eta_, epsilon_, beta_, gamma_, b_, c_;
    std::vector<int> dpower_, lpower_;
    std::vector<PowerSeries1::Power> powers_;  // the same two
    std::vector<int> slot_of_;                 // of the powers, in the groups one after the other
    std::vector<Group> groups_;                // by l
    int slots_ = 0;
    int top_ = 1, top_l_ = 0;  // highest exponent of δ, and in exp(−δ^l)
    bool bells_in_tau_ = false;
};

}  // namespace corvane::gerg
