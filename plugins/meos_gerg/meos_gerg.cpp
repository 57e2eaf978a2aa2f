// The plug-in MEOS+GERG: mixtures of multiparameter equations, Kunz & Wagner, J. Chem. Eng. Data 57
// (2012) 3032.
//
//     a = Σ x_i·α_i(δ, τ) + Σ_{i<j} x_i·x_j·F_ij·α_ij(δ, τ),  δ = rho·v_r(x),  τ = T_r(x)/T
//
// A component is reached through Model1 alone: α_i(δ, τ) is its Ar at rho·v_r/vs_i and T·Ts_i/T_r.
// Since these are proportional to rho and T, the scaled derivatives rho^i·T^j·∂^(i+j)/∂rho^i∂T^j of
// the mixture are the same sums of those of the components.
#include <corvane/mixture/isotherm.h>
#include <corvane/plugin/exact_slots.h>
#include <corvane/plugin/pair_table.h>
#include <corvane/plugin/plugin.h>
#include <plugins/meos_gerg/density.h>
#include <plugins/meos_gerg/departure.h>
#include <plugins/meos_gerg/reducing.h>
#include <plugins/meos_gerg/shared_terms.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace {

using namespace corvane::gerg;
using corvane::SmallArray;

class MeosGerg final : public corvane::ExactMixture,
                       public corvane::PairParameters,
                       public corvane::IsothermN {
  public:
    MeosGerg() : ExactMixture("MEOS", "GERG") {}

    // ---- binary parameters: see Pair

    int pair_parameters() const override { return kPairParameters; }
    double* ppar(int k, int i, int j) override { return pairs_.at(k, i, j); }
    void par_alloc() override {
        const int n = mdl1.size();
        pairs_.resize(n);
        departures_.clear();
        functions_.clear();
        forget();
    }
    void par_in(FILE* f, int i, int j) override {
        corvane::SectionReader section(f);
        const bool swapped =
            corvane::pair_is_swapped(section, mdl1[i]->name(), mdl1[j]->name()) != (i > j);
        Pair p;
        if (section.at("xi")) {
            p.linear = true;
            p.value[5] = section.number("xi");
            p.value[6] = section.number("zeta");
        } else {
            for (int k = 0; k < 4; ++k)  // the betas may be asked for their reciprocals
                p.value[k] = k % 2 == 0 ? section.positive(kLabels[k]) : section.number(kLabels[k]);
            if (swapped) invert(p);
        }
        p.value[4] = section.number("F");
        Departure function;
        function.read(section);
        pairs_.pair(i, j, p);
        std::erase_if(departures_, [&](OfPair const& d) {
            return d.i == std::min(i, j) && d.j == std::max(i, j);
        });
        if (!function.empty())
            departures_.push_back({std::min(i, j), std::max(i, j), number(function)});
        forget();
    }
    void par_out(FILE* f, int i, int j) const override {
        Pair p = pairs_.pair(i, j);
        corvane::SectionWriter section(f);
        section.word("of", mdl1[i]->name());
        if (p.linear) {
            section.number("xi", p.value[5]);
            section.number("zeta", p.value[6]);
        } else {
            if (i > j) invert(p);
            for (int k = 0; k < 4; ++k) section.number(kLabels[k], p.value[k]);
        }
        section.number("F", p.value[4]);
        for (OfPair const& d : departures_)
            if (d.i == std::min(i, j) && d.j == std::max(i, j))
                functions_[static_cast<unsigned>(d.function)].write(f);
    }
    /// T_r [K] and rho_r [mol/cm³].
    Vector<double> mixpar(Vector<double> const& x) const override {
        const State s(*this, x);
        Vector<double> p(2);
        p[0] = s.Tr;
        p[1] = 1.0 / s.vr;
        return p;
    }

    // ---- the mixture at constant composition

    double Ar(double rho, double T, Vector<double> const& x) const override {
        return State(*this, x).second(rho, T).d[0];
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        return 1.0 + State(*this, x).second(rho, T).d[3];
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        if (nrho < 0 || nT < 0 || nT > 2 || nrho > (nT == 0 ? 3 : 2)) return 0;
        const State s(*this, x);
        const Sums sums = nrho == 3 ? Isotherm(s, T).at(rho, nrho) : s.second(rho, T);
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT; ++j)
                if (i == 3 || i + j <= 2)
                    d[i * (nT + 1) + j] = i == 3 ? sums.third : sums.d[3 * i + j];
        return 1;
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override;

    // ---- composition derivatives

    double myr(Vector<double> const& rho_i, double T, int i) const override {
        SmallArray<double> mu(rho_i.size());
        potentials(rho_i, T, &mu[0], nullptr, nullptr);
        return std::isfinite(mu[i]) ? mu[i] : ModelN::myr(rho_i, T, i);
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override;

    // ---- many states at one temperature: T, the components that are present, and what Given has

    int isotherm_size(int n) const override { return 1 + n + Given::size(*this, shared()); }
    void isotherm(double T, int const* present, int n, bool, double* work) const override {
        work[0] = T;
        std::copy_n(present, n, work + 1);
        Given::read(*this, shared(), work + 1 + n);
    }
    int densities(double const* work, int n, double const* x, double p, double* rho) const override;
    double gibbs(double const* work, int n, double const* x, double p, double rho) const override;
    void potentials(double const* work, int n, double const* rho_i, double* mu, double* mu_T,
                    double* mu_rho, double* P, double* P_T) const override;

  private:
    static constexpr char const* kLabels[4] = {"betaT", "gammaT", "betav", "gammav"};

    static void invert(Pair& p) {
        p.value[0] = 1.0 / p.value[0];
        p.value[2] = 1.0 / p.value[2];
    }
    /// Equal functions are kept, and evaluated, once.
    int number(Departure const& function) {
        for (unsigned k = 0; k < functions_.size(); ++k)
            if (functions_[k] == function) return static_cast<int>(k);
        functions_.push_back(function);
        return static_cast<int>(functions_.size()) - 1;
    }

    /// The terms of components and departure functions, arranged anew where components have
    /// changed.
    SharedTerms const& shared() const {
        SharedTerms const* const now = shared_.load(std::memory_order_acquire);
        return now && now->matches(mdl1) ? *now : arranged();
    }
    /// Parameters are not read while others calculate. So nobody uses what was arranged before the
    /// last change, and what is replaced now, others may still compare.
    SharedTerms const& arranged() const {
        const std::lock_guard<std::mutex> lock(arranging_);
        SharedTerms const* const now = shared_.load(std::memory_order_acquire);
        if (now && now->matches(mdl1)) return *now;
        replaced_ = std::exchange(current_, std::make_unique<SharedTerms const>(mdl1, functions_));
        shared_.store(current_.get(), std::memory_order_release);
        return *current_;
    }
    void forget() { shared_.store(nullptr, std::memory_order_release); }

    /// A pair with a departure function, i < j.
    struct OfPair {
        int i, j, function;
    };
    double factor(OfPair const& p) const { return pairs_.at(4, p.i, p.j); }

    /// Of all components: the values that scale T and rho, their roots, and the factors of their
    /// terms.
    struct Given {
        static int size(MeosGerg const& m, SharedTerms const& shared) {
            return 4 * m.mdl1.size() + shared.factors() + 1;
        }
        static void read(MeosGerg const& m, SharedTerms const& shared, double* to) {
            const int n = m.mdl1.size();
            for (int i = 0; i < n; ++i) {
                to[i] = *m.mdl1[i]->ppar(1), to[n + i] = *m.mdl1[i]->ppar(2);
                to[2 * n + i] = Reducing::root(Reducing::Of::temperature, to[i]);
                to[3 * n + i] = Reducing::root(Reducing::Of::volume, to[n + i]);
            }
            shared.read(to + 4 * n);
        }
        explicit Given(double const* from, int n)
            : Ts(from),
              vs(from + n),
              root_T(from + 2 * n),
              root_v(from + 3 * n),
              factors(from + 4 * n) {}
        double const *Ts, *vs, *root_T, *root_v, *factors;
    };
    /// What depends on the composition alone, to which it refers.
    struct State {
        /// order: of the derivatives of the reducing functions
        State(MeosGerg const& model, Vector<double> const& composition, int order = 0)
            : State(model, model.shared(), nullptr, composition.data, order) {}
        /// kept: what Given reads; or null
        State(MeosGerg const& model, SharedTerms const& terms, double const* kept,
              double const* composition, int order)
            : m(model),
              shared(terms),
              n(model.mdl1.size()),
              x(composition),
              own(kept ? 0 : Given::size(model, terms)),
              given(kept ? kept : read_own(), n),
              temperature(Reducing::Of::temperature, given.Ts, given.root_T, x, n, m.pairs_, order),
              volume(Reducing::Of::volume, given.vs, given.root_v, x, n, m.pairs_, order),
              Tr(temperature.value()),
              vr(volume.value()),
              w(static_cast<int>(m.functions_.size()) + 1),
              c(shared.weights() + 1) {
            for (unsigned k = 0; k < m.functions_.size(); ++k) w[static_cast<int>(k)] = 0.0;
            for (OfPair const& p : m.departures_) w[p.function] += x[p.i] * x[p.j] * m.factor(p);
            shared.weigh(x, &w[0], given.factors, &c[0]);
        }
        double const* read_own() {
            Given::read(m, shared, &own[0]);
            return &own[0];
        }
        double delta(double rho) const { return rho * vr; }
        /// Is component i present, and not among the shared terms?
        bool alone(int i) const { return x[i] != 0.0 && !shared.has(i); }
        /// Component i at the reduced state of the mixture; without a derivative extension (which
        /// MEOS has) not-a-number. The scale factors come first, so that a pure fluid is itself.
        void component(int i, double rho, double T, int nrho, int nT, double* d) const {
            corvane::Deriv1 const* exact = m.mdl1[i]->derivatives();
            if (exact &&
                exact->deriv(rho * (vr / given.vs[i]), T * (given.Ts[i] / Tr), nrho, nT, d))
                return;
            for (int k = 0; k < (nrho + 1) * (nT + 1); ++k)
                d[k] = std::numeric_limits<double>::quiet_NaN();
        }
        std::unique_ptr<corvane::Isotherm1> isotherm(int i, double T) const {
            corvane::Deriv1 const* exact = m.mdl1[i]->derivatives();
            return exact ? exact->isotherm(T * (given.Ts[i] / Tr)) : nullptr;
        }
        /// The mixture to second order in rho and T.
        Sums second(double rho, double T) const {
            Sums sums = shared.second(&c[0], delta(rho), Tr / T);
            for (int i = 0; i < n; ++i) {
                if (!alone(i)) continue;
                Sums s;
                component(i, rho, T, 2, 2, s.d);
                sums.add(x[i], s);
            }
            return sums;
        }

        MeosGerg const& m;
        SharedTerms const& shared;
        int n;
        double const* x;
        SmallArray<double, 640> own;  // where nothing was kept
        Given given;
        Reducing temperature, volume;
        double Tr, vr;
        SmallArray<double> w;                // Σ x_i·x_j·F_ij of each departure function
        SmallArray<double, 400> c;           // weights of the shared terms
    };

    struct All;
    /// A function α and its first derivatives by L = ln δ and U = ln τ.
    struct Slopes {
        double a = 0.0, L = 0.0, U = 0.0;
        void add(double w, Slopes const& f) {
            if (w == 0.0) return;  // a component that is absent may be beyond its own range
            a += w * f.a;
            L += w * f.L;
            U += w * f.U;
        }
    };

    /// What potentials are made of, see there.
    struct Parts {
        Parts(State const& s, double rho, double T);

        SmallArray<Slopes> G, f;  // of every component; α of every departure function
        Slopes shared;            // Σ_f w_f·α_f
        double L, U, LL, LU, UU;  // of a
    };
    int roots(State const& s, double p, double T, int mode, double& rho_a, double& rho_b) const;
    /// Potentials as DerivN and IsothermN have them, of all components.
    void potentials(State const& s, double rho, double T, double* mu, double* mu_T, double* mu_rho,
                    double* P, double* P_T) const;
    void by_amounts(State const& s, Parts const& parts, double rho, double const* d,
                    double const* t, double* mu_rho) const;

    /// The mixture at one temperature.
    class Isotherm {
      public:
        Isotherm(State const& state, double T)
            : s_(state), T_(T), terms_(s_.shared, &s_.c[0], s_.Tr / T) {}
        /// For many densities: what depends on T alone is kept.
        Isotherm& keep() {
            for (int i = 0; i < s_.n; ++i) {
                if (!s_.alone(i)) continue;
                components_.resize(static_cast<unsigned>(s_.n));
                components_[static_cast<unsigned>(i)] = s_.isotherm(i, T_);
            }
            return *this;
        }
        Sums at(double rho, int order) const {
            return order == 0   ? at<0>(rho)
                   : order == 1 ? at<1>(rho)
                   : order == 2 ? at<2>(rho)
                                : at<3>(rho);
        }
        corvane::IsothermPoint operator()(double rho) const {
            const Sums s = at(rho, 2);
            return {rho * (1.0 + s.d[3]), 1.0 + 2.0 * s.d[3] + s.d[6]};
        }
        /// ∂P/∂rho and rho·∂²P/∂rho².
        Slope slope(double rho) const {
            const Sums s = at(rho, 3);
            return {1.0 + 2.0 * s.d[3] + s.d[6], 2.0 * s.d[3] + 4.0 * s.d[6] + s.third};
        }
        /// Ar + Z − 1 + ln(rho).
        double gibbs(double rho) const {
            const Sums s = at(rho, 1);
            return s.d[0] + s.d[3] + std::log(rho);
        }

      private:
        template <int order>
        Sums at(double rho) const {
            Sums sums;
            for (int i = 0; i < s_.n; ++i) {
                if (!s_.alone(i)) continue;
                corvane::Isotherm1 const* const kept =
                    components_.empty() ? nullptr : components_[static_cast<unsigned>(i)].get();
                double d[4];
                if (kept)
                    kept->at(rho * (s_.vr / s_.given.vs[i]), order, d);
                else
                    s_.component(i, rho, T_, order, 0, d);
                for (int k = 0; k <= order; ++k)
                    (k == 3 ? sums.third : sums.d[3 * k]) += s_.x[i] * d[k];
            }
            terms_.add<order>(s_.delta(rho), sums);
            return sums;
        }

        State const& s_;
        double T_;
        SharedTerms::Isotherm terms_;
        std::vector<std::unique_ptr<corvane::Isotherm1>> components_;  // null: not kept
    };

    Pairs pairs_;
    std::vector<OfPair> departures_;
    std::vector<Departure> functions_;
    mutable std::atomic<SharedTerms const*> shared_{nullptr};
    mutable std::mutex arranging_;
    mutable std::unique_ptr<SharedTerms const> current_, replaced_;
};

int MeosGerg::vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
                    double& rho_b) const {
    if (!(T > 0.0) || !std::isfinite(T)) return 0;
    return roots(State(*this, x), p, T, mode, rho_a, rho_b);
}
int MeosGerg::roots(State const& s, double p, double T, int mode, double& rho_a,
                    double& rho_b) const {
    const double P = p / (R * T);
    if (!std::isfinite(P)) return 0;
    return density(Isotherm(s, T).keep(), P, T / s.Tr, 1.0 / s.vr, mode, rho_a, rho_b);
}

MeosGerg::Parts::Parts(State const& s, double rho, double T)
    : G(s.n), f(static_cast<int>(s.m.functions_.size()) + 1) {
    const int n = s.n, nf = static_cast<int>(s.m.functions_.size());
    SmallArray<std::array<double, 3>> of(n), function(nf + 1);
    Sums sums =
        s.shared.each(&s.c[0], s.given.factors, s.delta(rho), s.Tr / T, &of[0], &function[0]);
    for (int i = 0; i < n; ++i) {
        if (s.shared.has(i)) {
            G[i] = {of[i][0], of[i][1], of[i][2]};
            continue;
        }
        Sums own;
        s.component(i, rho, T, 2, 2, own.d);
        G[i] = {own.d[0], own.d[3], -own.d[1]};
        if (s.x[i] != 0.0) sums.add(s.x[i], own);
    }
    for (int k = 0; k < nf; ++k) f[k] = {function[k][0], function[k][1], function[k][2]};
    double const* const d = sums.d;
    L = d[3], U = -d[1], LL = d[6] + d[3], LU = -d[4], UU = d[2] + d[1];
    // G_i = α_i + Σ_f (w_fi − w_f)·α_f with w_fi = Σ_j x_j·F_ij.
    for (int k = 0; k < nf; ++k) shared.add(s.w[k], f[k]);
    for (int i = 0; i < n; ++i) G[i].add(-1.0, shared);
    for (OfPair const& p : s.m.departures_) {
        G[p.i].add(s.x[p.j] * s.m.factor(p), f[p.function]);
        G[p.j].add(s.x[p.i] * s.m.factor(p), f[p.function]);
    }
}

/// With V = 1 and the amounts n_i = rho_i, F = n·a is a function of the amounts, of L = ln δ and U
/// = ln τ. With G_i = ∂F/∂n_i at constant L and U,
///
///     μ_i = G_i + a_L·d_i + a_U·t_i,                   d_i = n·∂L/∂n_i, t_i = n·∂U/∂n_i,
///     n·∂μ_i/∂n_j = K_ij + G_iL·d_j + G_jL·d_i + G_iU·t_j + G_jU·t_i + a_L·d_ij + a_U·t_ij
///                 + a_LL·d_i·d_j + a_LU·(d_i·t_j + d_j·t_i) + a_UU·t_i·t_j,
///
/// where n²·d_ij and n²·t_ij are the second derivatives of L and U. The reducing functions enter as
/// homogeneous functions of second degree in the amounts, n²·T_r and n²·v_r.
void MeosGerg::potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                          double* mu_rho) const {
    const int n = rho_i.size();
    const double rho = rho_i.sum();
    if (rho == 0.0) {  // the slopes depend on the composition: of equal traces
        Vector<double> traces(n);
        for (int i = 0; i < n; ++i) traces[i] = 1e-30;
        if (mu_rho) potentials(traces, T, mu, nullptr, mu_rho);
        for (int i = 0; i < n; ++i) mu[i] = 0.0;
        for (int i = 0; mu_T && i < n; ++i) mu_T[i] = 0.0;
        return;
    }
    Vector<double> x(n);
    for (int i = 0; i < n; ++i) x[i] = rho_i[i] / rho;
    potentials(State(*this, x, mu_rho ? 2 : 1), rho, T, mu, mu_T, mu_rho, nullptr, nullptr);
}
void MeosGerg::potentials(State const& s, double rho, double T, double* mu, double* mu_T,
                          double* mu_rho, double* P, double* P_T) const {
    const int n = s.n;
    const Parts parts(s, rho, T);
    if (P) *P = rho * (1.0 + parts.L);
    if (P_T) *P_T = -rho * parts.LU;
    SmallArray<double> d(n), t(n);
    for (int i = 0; i < n; ++i) {
        t[i] = s.temperature.gradient(i) / s.Tr - 2.0;
        d[i] = s.volume.gradient(i) / s.vr - 1.0;
        mu[i] = parts.G[i].a + parts.L * d[i] + parts.U * t[i];
        if (mu_T) mu_T[i] = -(parts.G[i].U + parts.LU * d[i] + parts.UU * t[i]);
    }
    if (mu_rho) by_amounts(s, parts, rho, &d[0], &t[0], mu_rho);
}

/// What of the components that are present is at hand, of all components; the others are 0.
struct MeosGerg::All {
    All(MeosGerg const& model, double const* kept, int count, double const* of, double over)
        : m(model), work(kept), n(count), x(model.mdl1.size()) {
        for (int i = 0; n < m.mdl1.size() && i < m.mdl1.size(); ++i) x[i] = 0.0;
        for (int k = 0; k < n; ++k) x[at(k)] = of[k] / over;
    }
    int at(int k) const { return static_cast<int>(work[1 + k]); }
    double T() const { return work[0]; }
    /// Parameters have not changed since the work space was filled, nor have the terms.
    State state(int order) const {
        SharedTerms const* const now = m.shared_.load(std::memory_order_acquire);
        return State(m, now ? *now : m.arranged(), work + 1 + n, &x[0], order);
    }
    MeosGerg const& m;
    double const* work;
    int n;
    SmallArray<double> x;
};

int MeosGerg::densities(double const* work, int n, double const* x, double p, double* rho) const {
    const All all(*this, work, n, x, 1.0);
    double dilute = 0.0;
    rho[0] = 0.0;
    const int found = roots(all.state(0), p, all.T(), 1, rho[0], dilute);
    return stable_roots(found, rho, dilute);
}
double MeosGerg::gibbs(double const* work, int n, double const* x, double p, double rho) const {
    const All all(*this, work, n, x, 1.0);
    return all.state(0).second(rho, all.T()).d[0] + p / (R * all.T() * rho) - 1.0 + std::log(rho);
}
void MeosGerg::potentials(double const* work, int n, double const* rho_i, double* mu, double* mu_T,
                          double* mu_rho, double* P, double* P_T) const {
    double rho = 0.0;
    for (int k = 0; k < n; ++k) rho += rho_i[k];
    const All all(*this, work, n, rho_i, rho);
    const State s = all.state(mu_rho ? 2 : 1);
    if (n == s.n) return potentials(s, rho, all.T(), mu, mu_T, mu_rho, P, P_T);
    SmallArray<double> of(s.n), of_T(s.n);
    SmallArray<double, 576> of_rho(mu_rho ? s.n * s.n : 0);
    potentials(s, rho, all.T(), &of[0], mu_T ? &of_T[0] : nullptr, mu_rho ? &of_rho[0] : nullptr, P,
               P_T);
    for (int k = 0; k < n; ++k) {
        mu[k] = of[all.at(k)];
        if (mu_T) mu_T[k] = of_T[all.at(k)];
        for (int l = 0; mu_rho && l < n; ++l)
            mu_rho[k * n + l] = of_rho[all.at(k) * s.n + all.at(l)];
    }
}

/// ∂μ_i/∂rho_j from d_i and t_i.
void MeosGerg::by_amounts(State const& s, Parts const& parts, double rho, double const* d,
                          double const* t, double* mu_rho) const {
    const int n = s.n;
    auto const &G = parts.G, &f = parts.f;
    // K_ij = Σ_f (F_ij − w_fi − w_fj + 2·w_f)·α_f, of which G_i holds α_i + Σ_f (w_fi − w_f)·α_f.
    SmallArray<double> own(n), by_d(n), by_t(n);
    for (int i = 0; i < n; ++i) {
        own[i] = 0.0;
        by_d[i] = G[i].L + parts.LL * d[i] + parts.LU * t[i];
        by_t[i] = G[i].U + parts.UU * t[i] + parts.LU * d[i];
    }
    for (OfPair const& p : departures_) {
        const double a = factor(p) * f[p.function].a;
        own[p.i] += s.x[p.j] * a;
        own[p.j] += s.x[p.i] * a;
    }
    for (int i = 0; i < n; ++i) {
        double const *const Ti = s.temperature.hessian(i), *const vi = s.volume.hessian(i);
        for (int j = 0; j <= i; ++j) {
            const double t_ij = Ti[j] / s.Tr - (t[i] + 2.0) * (t[j] + 2.0) + 2.0;
            const double d_ij = vi[j] / s.vr - (d[i] + 1.0) * (d[j] + 1.0) + 1.0;
            const double K = 2.0 * parts.shared.a - own[i] - own[j];
            const double sum = K + d[i] * by_d[j] + t[i] * by_t[j] + G[i].L * d[j] + G[i].U * t[j] +
                               parts.L * d_ij + parts.U * t_ij;
            mu_rho[i * n + j] = mu_rho[j * n + i] = sum / rho;
        }
    }
    for (OfPair const& p : departures_) {
        const double a = factor(p) * f[p.function].a / rho;
        mu_rho[p.i * n + p.j] += a;
        mu_rho[p.j * n + p.i] += a;
    }
}

}  // namespace

CORVANE_PLUGINN(MeosGerg)
