// Mixtures of a formula.
#include <corvane/mixture/isotherm.h>
#include <corvane/plugin/amounts.h>
#include <corvane/plugin/exact_slots.h>
#include <corvane/plugin/formula_models.h>
#include <corvane/plugin/parameters.h>
#include <corvane/plugin/plugin.h>

#include <algorithm>
#include <vector>

namespace corvane {
namespace {

class FormulaMixture final : public PairTableMixture, public IsothermN {
  public:
    explicit FormulaMixture(Formula const& formula)
        : PairTableMixture(formula.name, formula.mixing, formula.pair_count), formula_(formula) {}

    // ---- binary parameters

    void par_alloc() override {
        PairTableMixture::par_alloc();
        for (int j = 0; j < mdl1.size(); ++j)
            for (int i = 0; i < j; ++i)
                for (int k = 0; k < formula_.pair_count; ++k)
                    pairs_.at(i, j)[k] = formula_.pair_parameters[k].value;
    }
    void par_in(FILE* f, int i, int j) override {
        SectionReader section(f);
        const bool swapped = pair_is_swapped(section, mdl1[i]->name(), mdl1[j]->name());
        const int count = formula_.pair_count;
        std::vector<double> read(static_cast<std::size_t>(count) + 1);
        read_parameters(section, formula_.pair_parameters, count, read.data());
        for (int k = 0; k < count; ++k) {
            const int other = formula_.pair_parameters[k].mirror;
            pairs_.at(i, j)[k] =
                read[static_cast<std::size_t>(swapped == (i < j) && other >= 0 ? other : k)];
        }
    }
    void par_out(FILE* f, int i, int j) const override {
        SectionWriter section(f);
        section.word("of", mdl1[std::min(i, j)]->name());
        if (formula_.pair_count > 0)
            write_parameters(section, formula_.pair_parameters, formula_.pair_count,
                             pairs_.at(i, j));
    }
    /// The parameters of the components, averaged with the mole fractions.
    Vector<double> mixpar(Vector<double> const& x) const override {
        Vector<double> p(formula_.count);
        for (int k = 0; k < formula_.count; ++k) {
            p[k] = 0.0;
            for (int i = 0; i < x.size(); ++i) p[k] += x[i] * *mdl1[i]->ppar(k);
        }
        return p;
    }

    // ---- at one composition

    double Ar(double rho, double T, Vector<double> const& x) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        const Parameters all(*this);
        return formula_.value(all.state(T, x.data), rho);
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        const Parameters all(*this);
        return formula_Z(formula_, all.state(T, x.data), rho);
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        if (!(T > 0.0) || !std::isfinite(T)) return 0;
        const Parameters all(*this);
        return formula_densities(formula_, all.state(T, x.data), p / (R * T), mode, rho_a, rho_b);
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        const Parameters all(*this);
        return formula_derivatives(formula_, all.state(T, x.data), rho, nrho, nT, d);
    }

    // ---- composition derivatives

    double myr(Vector<double> const& rho_i, double T, int i) const override {
        if (rho_i.sum() == 0.0) return 0.0;
        const Parameters all(*this);
        const Amounts n(rho_i.data, rho_i.size());
        const auto a = formula_.gradient2(all.state(T, &n.x[0]), n.total, {i, i});
        const double mu = a.v + a.g[0];
        return T > 0.0 && std::isfinite(mu) ? mu : ModelN::myr(rho_i, T, i);
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override {
        const Parameters all(*this);
        const double at = T > 0.0 ? T : std::numeric_limits<double>::quiet_NaN();
        all_potentials(all.state(at, nullptr), rho_i.data, mu, mu_T, mu_rho, nullptr, nullptr);
    }

    // ---- many states at one temperature: the work space holds it and the parameters

    int isotherm_size(int n) const override { return 1 + parameters_of(n); }
    void isotherm(double T, int const* present, int n, bool /*slopes*/,
                  double* work) const override {
        work[0] = T;
        copy_parameters(present, n, work + 1);
    }
    int densities(double const* work, int n, double const* x, double p,
                  double* rho) const override {
        double dilute = 0.0;
        rho[0] = 0.0;
        const int found = formula_densities(formula_, state(work + 1, n, work[0], x),
                                            p / (R * work[0]), 1, rho[0], dilute);
        return stable_roots(found, rho, dilute);
    }
    double gibbs(double const* work, int n, double const* x, double p, double rho) const override {
        return formula_.value(state(work + 1, n, work[0], x), rho) + p / (R * work[0] * rho) - 1.0 +
               std::log(rho);
    }
    void potentials(double const* work, int n, double const* rho_i, double* mu, double* mu_T,
                    double* mu_rho, double* P, double* P_T) const override {
        all_potentials(state(work + 1, n, work[0], nullptr), rho_i, mu, mu_T, mu_rho, P, P_T);
    }

  private:
    // ---- parameters side by side, as RawParameters has them: of n components, of all pairs

    int parameters_of(int n) const {
        return n * formula_.count + n * (n + 1) / 2 * formula_.pair_count;
    }
    /// Of the components `present`, or all (null).
    void copy_parameters(int const* present, int n, double* to) const {
        auto at = [&](int i) { return present ? present[i] : i; };
        for (int i = 0; i < n; ++i)
            for (int k = 0; k < formula_.count; ++k) *to++ = *mdl1[at(i)]->ppar(k);
        const int count = formula_.pair_count;
        for (int i = 0; count > 0 && i < n; ++i)
            for (int j = 0; j <= i; ++j, to += count)
                if (i == j)
                    std::fill_n(to, count, 0.0);
                else
                    std::copy_n(pairs_.at(at(i), at(j)), count, to);
    }
    FormulaState state(double const* parameters, int n, double T, double const* x) const {
        const int count = formula_.count;
        return {T, x, n, {parameters, count, parameters + n * count, formula_.pair_count}};
    }
    /// All of the model, for one call.
    struct Parameters {
        explicit Parameters(FormulaMixture const& model)
            : of(model), n(model.mdl1.size()), memory(model.parameters_of(n)) {
            model.copy_parameters(nullptr, n, &memory[0]);
        }
        FormulaState state(double T, double const* x) const {
            return of.state(&memory[0], n, T, x);
        }
        FormulaMixture const& of;
        int n;
        SmallArray<double, 192> memory;
    };

    /// The function of the formula for each type of derivatives.
    struct Along {
        Formula const& f;
        FormulaState const& at;
        double total;
        auto operator()(Gradient<2> const&, std::array<int, 2> const& d) const {
            return f.gradient2(at, total, d);
        }
        auto operator()(Gradient<4> const&, std::array<int, 4> const& d) const {
            return f.gradient4(at, total, d);
        }
        auto operator()(Gradient<2, Jet<1>> const&, std::array<int, 2> const& d) const {
            return f.slopes2(at, total, d);
        }
        auto operator()(Gradient<4, Jet<1>> const&, std::array<int, 4> const& d) const {
            return f.slopes4(at, total, d);
        }
        auto operator()(Curvature<2> const&, std::array<int, 2> const& d) const {
            return f.curvature2(at, total, d);
        }
        auto operator()(Curvature<4> const&, std::array<int, 4> const& d) const {
            return f.curvature4(at, total, d);
        }
    };
    void all_potentials(FormulaState at, double const* n_i, double* mu, double* mu_T,
                        double* mu_rho, double* P, double* P_T) const {
        const Amounts n(n_i, at.n);
        at.x = &n.x[0];
        const Along along{formula_, at, n.total};
        write_potentials(
            n, mu_T || P_T, [&](double* by) { return gradient_in_blocks<double>(n.n, along, by); },
            [&](Jet<1>* by) { return gradient_in_blocks<Jet<1>>(n.n, along, by); },
            [&](double* by, double* two) { return curvature_in_blocks(n.n, along, by, two); }, mu,
            mu_T, mu_rho, P, P_T);
    }

    Formula const& formula_;
};

}  // namespace

ModelN* new_formulaN(Formula const& formula) {
    return formula.mixing ? new FormulaMixture(formula) : nullptr;
}
void delete_formula(ModelN* model) {
    delete static_cast<FormulaMixture*>(model);
}

}  // namespace corvane
