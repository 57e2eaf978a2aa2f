// A mixture plug-in from an equation: everything that ModelN, DerivN and IsothermN ask for, derived
// from its residual Helmholtz energy and its tables of parameters.
//
// Composition derivatives (amounts.h) are carried through the formula by Gradient and Curvature, in
// blocks of at most four components.
#pragma once

#include <corvane/core/file_error.h>
#include <corvane/mixture/isotherm.h>
#include <corvane/mixture/theory_parameters.h>
#include <corvane/plugin/amounts.h>
#include <corvane/plugin/exact_slots.h>
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/stages.h>
#include <corvane/plugin/sums.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <vector>

namespace corvane {

namespace mixture_detail {
/// What a mixing theory knows of each component by itself.
template <class Eq, int Count = theory_parameter_count<Eq>>
class Theory : public TheoryParameters {
    using Values = ParameterValues<static_cast<std::size_t>(Count)>;

  public:
    void theory_in(FILE* f, int i) override {
        SectionReader section(f);
        values_[static_cast<std::size_t>(i)] = read_parameters(section, Eq::theory_parameters);
    }
    void theory_out(FILE* f, int i) const override {
        SectionWriter section(f);
        write_parameters(section, Eq::theory_parameters, of(i));
    }
    void check_pair(int i, int j) const override {
        if constexpr (requires(double const* p) { Eq::refusal(p, p); })
            if (const std::string why = Eq::refusal(of(i), of(j)); !why.empty())
                throw FileError(th_cannot_open, "", why);
    }

  protected:
    void resize(int n) {
        values_.assign(static_cast<std::size_t>(n), default_values(Eq::theory_parameters));
    }
    double const* of(int i) const { return values_[static_cast<std::size_t>(i)].data(); }

  private:
    std::vector<Values> values_;
};
template <class Eq>
class Theory<Eq, 0> {};
}  // namespace mixture_detail

template <class Eq>
class MixtureEquation final : public PairTableMixture,
                              public IsothermN,
                              public mixture_detail::Theory<Eq> {
    static constexpr int kCount = parameter_count<Eq>, kPair = pair_parameter_count<Eq>;
    static constexpr int kTheory = theory_parameter_count<Eq>;
    template <class T>
    using At = AtTemperature<Eq, T>;
    using Slope = Jet<1>;  // in T

  public:
    MixtureEquation() : PairTableMixture(Eq::name, Eq::mixing, kPair) {}

    // ---- binary parameters

    void par_alloc() override {
        PairTableMixture::par_alloc();
        if constexpr (kTheory > 0) mixture_detail::Theory<Eq>::resize(mdl1.size());
        if constexpr (kPair > 0)
            for (int j = 0; j < mdl1.size(); ++j)
                for (int i = 0; i < j; ++i) {
                    const auto values = default_values(Eq::pair_parameters);
                    std::copy(values.begin(), values.end(), pairs_.at(i, j));
                }
    }
    void par_in(FILE* f, int i, int j) override {
        SectionReader section(f);
        const bool swapped = pair_is_swapped(section, mdl1[i]->name(), mdl1[j]->name());
        if constexpr (kPair > 0) {
            const auto read = read_parameters(section, Eq::pair_parameters);
            for (int k = 0; k < kPair; ++k) {
                const int other = Eq::pair_parameters[k].mirror;
                pairs_.at(i, j)[k] = read[swapped == (i < j) && other >= 0 ? other : k];
            }
        }
    }
    void par_out(FILE* f, int i, int j) const override {
        SectionWriter section(f);
        section.word("of", mdl1[std::min(i, j)]->name());
        if constexpr (kPair > 0) write_parameters(section, Eq::pair_parameters, pairs_.at(i, j));
    }
    /// The parameters of the components, averaged with the mole fractions.
    Vector<double> mixpar(Vector<double> const& x) const override {
        Vector<double> p(kCount);
        for (int k = 0; k < kCount; ++k) {
            p[k] = 0.0;
            for (int i = 0; i < x.size(); ++i) p[k] += x[i] * *mdl1[i]->ppar(k);
        }
        return p;
    }

    // ---- at one composition

    double Ar(double rho, double T, Vector<double> const& x) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        const Store<double> s(*this, T);
        return residual<Eq>(mixed<Eq>(s.at, composition(x)), rho);
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        const Store<double> s(*this, T);
        return compressibility<Eq>(mixed<Eq>(s.at, composition(x)), rho);
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        if (!(T > 0.0) || !std::isfinite(T)) return 0;
        const Store<double> s(*this, T);
        return densities_at(s.at, x.data, p, mode, rho_a, rho_b);
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        return residual_derivatives<Eq>(
            [&](auto const& temperature, auto const& use) {
                const Store<std::decay_t<decltype(temperature)>> s(*this, temperature);
                use(mixed<Eq>(s.at, composition(x)));
            },
            rho, T, nrho, nT, d);
    }

    // ---- composition derivatives

    double myr(Vector<double> const& rho_i, double T, int i) const override {
        if (rho_i.sum() == 0.0) return 0.0;
        const Store<double> s(*this, T);
        const Amounts n(rho_i.data, rho_i.size());
        const auto a = Along<double>{s.at, n}(Gradient<1>(), {i});
        const double mu = a.v + a.g[0];
        return T > 0.0 && std::isfinite(mu) ? mu : ModelN::myr(rho_i, T, i);
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override {
        const double at = T > 0.0 ? T : std::numeric_limits<double>::quiet_NaN();
        const Store<double> s(*this, at);
        if (mu_T) {
            const Store<Slope> slopes(*this, Slope::along_h(at));
            all_potentials(s.at, &slopes.at, rho_i.data, mu, mu_T, mu_rho, nullptr, nullptr);
        } else {
            all_potentials(s.at, nullptr, rho_i.data, mu, mu_T, mu_rho, nullptr, nullptr);
        }
    }

    // ---- many states at one temperature

    int isotherm_size(int n) const override {
        return 1 + (bytes<double>(n) + bytes<Slope>(n)) / static_cast<int>(sizeof(double));
    }
    void isotherm(double T, int const* present, int n, bool slopes, double* work) const override {
        work[0] = T;
        fill(T, present, n, reinterpret_cast<std::byte*>(work + 1));
        if (slopes)
            fill(Slope::along_h(T), present, n,
                 reinterpret_cast<std::byte*>(work + 1) + bytes<double>(n));
    }
    int densities(double const* work, int n, double const* x, double p,
                  double* rho) const override {
        double dilute = 0.0;
        rho[0] = 0.0;
        const int found = densities_at(stored(work, n), x, p, 1, rho[0], dilute);
        return stable_roots(found, rho, dilute);
    }
    double gibbs(double const* work, int n, double const* x, double p, double rho) const override {
        const auto fluid = mixed<Eq>(stored(work, n), Fractions<double>(x, n));
        return residual<Eq>(fluid, rho) + p / (R * work[0] * rho) - 1.0 + std::log(rho);
    }
    void potentials(double const* work, int n, double const* rho_i, double* mu, double* mu_T,
                    double* mu_rho, double* P, double* P_T) const override {
        const At<double> at = stored(work, n);
        if (mu_T || P_T) {
            const At<Slope> slopes =
                view(Slope::along_h(work[0]), n,
                     reinterpret_cast<std::byte const*>(work + 1) + bytes<double>(n));
            all_potentials(at, &slopes, rho_i, mu, mu_T, mu_rho, P, P_T);
        } else {
            all_potentials(at, nullptr, rho_i, mu, mu_T, mu_rho, P, P_T);
        }
    }

  private:
    // ---- what depends on temperature alone

    static constexpr int pairs_of(int n) { return n * (n + 1) / 2; }
    template <class T>
    static constexpr int bytes(int n) {
        constexpr int word = sizeof(double), c = sizeof(ComponentAt<Eq, T>),
                      p = sizeof(PairAt<Eq, T>);
        return (n * c + word - 1) / word * word + (pairs_of(n) * p + word - 1) / word * word;
    }
    template <class T>
    static At<T> view(T const& temperature, int n, std::byte const* memory) {
        constexpr int word = sizeof(double), c = sizeof(ComponentAt<Eq, T>);
        auto const* pairs = memory + (n * c + word - 1) / word * word;
        return {temperature, n, std::launder(reinterpret_cast<ComponentAt<Eq, T> const*>(memory)),
                std::launder(reinterpret_cast<PairAt<Eq, T> const*>(pairs))};
    }
    static At<double> stored(double const* work, int n) {
        return view(work[0], n, reinterpret_cast<std::byte const*>(work + 1));
    }
    /// Writes the components `present`, or all (null), and their pairs.
    template <class T>
    void fill(T const& temperature, int const* present, int n, std::byte* memory) const {
        static_assert(alignof(ComponentAt<Eq, T>) <= alignof(double) &&
                      alignof(PairAt<Eq, T>) <= alignof(double));
        const At<T> at = view(temperature, n, memory);
        auto* components = const_cast<ComponentAt<Eq, T>*>(at.components);
        auto* pairs = const_cast<PairAt<Eq, T>*>(at.pairs);
        constexpr std::array<double, kPair + 1> none{};
        for (int i = 0; i < n; ++i) {
            const int I = present ? present[i] : i;
            Model1 const& m = *mdl1[I];
            std::array<double, kCount + kTheory> copy;
            double const* par = m.ppar(0);
            if (kTheory > 0 || m.ppar(kCount - 1) != par + (kCount - 1)) {  // not in one block
                for (int k = 0; k < kCount; ++k) copy[k] = *m.ppar(k);
                if constexpr (kTheory > 0)
                    std::copy_n(mixture_detail::Theory<Eq>::of(I), kTheory, copy.begin() + kCount);
                par = copy.data();
            }
            new (components + i) ComponentAt<Eq, T>(stages_detail::component<Eq>(temperature, par));
            for (int j = 0; j <= i; ++j) {
                const int J = present ? present[j] : j;
                double const* given = i == j || kPair == 0 ? none.data() : pairs_.at(I, J);
                new (pairs + i * (i + 1) / 2 + j) PairAt<Eq, T>(
                    stages_detail::pair<Eq>(temperature, components[i], components[j], given));
            }
        }
    }
    /// The components of the model at T, for one call.
    template <class T>
    struct Store {
        Store(MixtureEquation const& m, T const& temperature)
            : memory(bytes<T>(m.mdl1.size()) / static_cast<int>(sizeof(double))),
              at(view(temperature, m.mdl1.size(), reinterpret_cast<std::byte*>(&memory[0]))) {
            m.fill(temperature, nullptr, at.n, reinterpret_cast<std::byte*>(&memory[0]));
        }
        SmallArray<double, 192> memory;
        At<T> at;
    };

    // ---- states

    static Fractions<double> composition(Vector<double> const& x) { return {x.data, x.size()}; }

    static int densities_at(At<double> const& at, double const* x, double p, int mode,
                            double& rho_a, double& rho_b) {
        const auto fluid = mixed<Eq>(at, Fractions<double>(x, at.n));
        return fluid_densities<Eq>(fluid, p / (R * at.temperature), mode, rho_a, rho_b);
    }

    /// α with its derivatives in the amounts of some components, over the total amount.
    template <class T>
    struct Along {
        At<T> const& at;
        Amounts const& n;
        template <class V>
        V operator()(V const& /*type*/, std::array<int, V::variables> const& direction) const {
            V density(n.total);
            density.g.fill(n.total);
            return residual<Eq>(mixed<Eq>(at, Fractions<V>(&n.x[0], at.n, direction)), density);
        }
    };
    /// One more than the sums that the equation says it takes, or 0.
    static constexpr int kSums = [] {
        if constexpr (requires { Eq::sums; }) return Eq::sums + 1;
        return 0;
    }();
    /// All derivatives by way of the sums over the composition; false if it takes more than it
    /// says.
    template <class V, class T>
    static bool by_sums(At<T> const& at, Amounts const& n, typename V::Base& alpha,
                        typename V::Base* by, double* by_two) {
        Sums<V> sums(at.n, n.total);
        const Fractions<V> x(&n.x[0], at.n, &sums);
        const V a = residual<Eq>(mixed<Eq>(at, x), sums.density());
        alpha = a.v;
        sums.chain(a, by, by_two);
        return !sums.overflow();
    }

    /// α, and its derivatives in all amounts over the total one.
    template <class B, class T>
    static B gradient(At<T> const& at, Amounts const& n, B* by) {
        B alpha = 0.0;
        if constexpr (kSums > 0) {
            using V = Gradient<kSums, B, Variables::sums>;
            if (at.n > 2 && by_sums<V>(at, n, alpha, by, nullptr)) return alpha;
        }
        return gradient_in_blocks(at.n, Along<T>{at, n}, by);
    }
    /// The same with the second derivatives of pairs (i, j <= i), by blocks of two.
    static double curvature(At<double> const& at, Amounts const& n, double* by, double* by_two) {
        double alpha = 0.0;
        if constexpr (kSums > 0) {
            using V = Curvature<kSums, Variables::sums>;
            if (at.n > 2 && by_sums<V>(at, n, alpha, by, by_two)) return alpha;
        }
        return curvature_in_blocks(at.n, Along<double>{at, n}, by, by_two);
    }

    static void all_potentials(At<double> const& at, At<Slope> const* slopes, double const* n_i,
                               double* mu, double* mu_T, double* mu_rho, double* P, double* P_T) {
        const Amounts n(n_i, at.n);
        write_potentials(
            n, slopes != nullptr, [&](double* by) { return gradient(at, n, by); },
            [&](Slope* by) { return gradient(*slopes, n, by); },
            [&](double* by, double* by_two) { return curvature(at, n, by, by_two); }, mu, mu_T,
            mu_rho, P, P_T);
    }
};

}  // namespace corvane
