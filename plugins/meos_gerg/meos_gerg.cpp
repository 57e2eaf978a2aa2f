// The plug-in MEOS+GERG: mixtures of multiparameter equations, Kunz & Wagner, J. Chem. Eng. Data 57
// (2012) 3032.
//
//     a = Σ x_i·α_i(δ, τ) + Σ_{i<j} x_i·x_j·F_ij·α_ij(δ, τ),  δ = rho·v_r(x),  τ = T_r(x)/T
//
// A component is reached through Model1 alone: α_i(δ, τ) is its Ar at rho·v_r/vs_i and T·Ts_i/T_r.
// Since these are proportional to rho and T, the scaled derivatives rho^i·T^j·∂^(i+j)/∂rho^i∂T^j of
// the mixture are the same sums of those of the components.
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/exact_slots.h>
#include <corvane/plugin/pair_table.h>
#include <plugins/common/vector_exp.h>
#include <plugins/meos_gerg/density.h>
#include <plugins/meos_gerg/departure.h>
#include <plugins/meos_gerg/powers.h>
#include <plugins/meos_gerg/reducing.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

using namespace corvane::gerg;
using corvane::SmallArray;

class MeosGerg final : public corvane::ExactMixture, public corvane::PairParameters {
  public:
    MeosGerg() : ExactMixture("MEOS", "GERG") {}

    // ---- binary parameters: see Pair

    int pair_parameters() const override { return kPairParameters; }
    double* ppar(int k, int i, int j) override { return pair(i, j).value + k; }
    void par_alloc() override {
        const int n = mdl1.size();
        pairs_.assign(static_cast<unsigned>(n > 1 ? n * (n - 1) / 2 : 0), Pair{});
        functions_.clear();
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
        if (!function.empty()) p.function = number(function);
        pair(i, j) = p;
    }
    void par_out(FILE* f, int i, int j) const override {
        Pair p = pair(i, j);
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
        if (p.function >= 0) functions_[static_cast<unsigned>(p.function)].write(f);
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
        return Isotherm(*this, State(*this, x), T).at(rho, 0).d[0];
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        return 1.0 + Isotherm(*this, State(*this, x), T).at(rho, 1).d[3];
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        if (nrho < 0 || nT < 0 || nT > 2 || nrho > (nT == 0 ? 3 : 2)) return 0;
        const State s(*this, x);
        const Sums sums = nT == 0 ? Isotherm(*this, s, T).at(rho, nrho) : s.second(rho, T);
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

  private:
    static constexpr char const* kLabels[4] = {"betaT", "gammaT", "betav", "gammav"};

    Pair& pair(int i, int j) {
        return pairs_[static_cast<unsigned>(i < j ? (j - 1) * j / 2 + i : (i - 1) * i / 2 + j)];
    }
    Pair const& pair(int i, int j) const { return const_cast<MeosGerg*>(this)->pair(i, j); }
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

    /// What depends on the composition alone.
    struct State {
        State(MeosGerg const& model, Vector<double> const& composition)
            : m(model),
              n(composition.size()),
              x(n),
              Ts(n),
              vs(n),
              w(static_cast<int>(m.functions_.size())) {
            for (int i = 0; i < n; ++i) {
                x[i] = composition[i];
                Ts[i] = *m.mdl1[i]->ppar(1);
                vs[i] = *m.mdl1[i]->ppar(2);
            }
            Tr = reducing(Reducing::Of::temperature).value(&x[0]);
            vr = reducing(Reducing::Of::volume).value(&x[0]);
            for (unsigned k = 0; k < m.functions_.size(); ++k) w[static_cast<int>(k)] = 0.0;
            m.each_departure(n, [&](int i, int j, Pair const& p) {
                w[p.function] += x[i] * x[j] * p.value[4];
            });
        }
        Reducing reducing(Reducing::Of of) const {
            return {of, of == Reducing::Of::temperature ? &Ts[0] : &vs[0], n, m.pairs_.data()};
        }
        double delta(double rho) const { return rho * vr; }
        /// Component i at the reduced state of the mixture; without a derivative extension (which
        /// MEOS has) not-a-number. The scale factors come first, so that a pure fluid is itself.
        void component(int i, double rho, double T, int nrho, int nT, double* d) const {
            corvane::Deriv1 const* exact = m.mdl1[i]->derivatives();
            if (exact && exact->deriv(rho * (vr / vs[i]), T * (Ts[i] / Tr), nrho, nT, d)) return;
            for (int k = 0; k < (nrho + 1) * (nT + 1); ++k)
                d[k] = std::numeric_limits<double>::quiet_NaN();
        }
        std::unique_ptr<corvane::Isotherm1> isotherm(int i, double T) const {
            corvane::Deriv1 const* exact = m.mdl1[i]->derivatives();
            return exact ? exact->isotherm(T * (Ts[i] / Tr)) : nullptr;
        }
        /// The mixture to second order in rho and T.
        Sums second(double rho, double T) const {
            Sums sums;
            for (int i = 0; i < n; ++i) {
                if (x[i] == 0.0) continue;
                Sums s;
                component(i, rho, T, 2, 2, s.d);
                sums.add(x[i], s);
            }
            const int nf = static_cast<int>(m.functions_.size());
            SmallArray<Sums> each(nf);
            departures(rho, T, false, &each[0]);
            for (int k = 0; k < nf; ++k)
                if (w[k] != 0.0) sums.add(w[k], each[k]);
            return sums;
        }
        int departure_size() const {
            int size = 0;
            for (Departure const& f : m.functions_) size += f.size();
            return size;
        }
        /// Every departure function to second order in rho and T; those without weight only if
        /// `all` are wanted.
        void departures(double rho, double T, bool all, Sums* each) const {
            const double d = delta(rho), tau = Tr / T;
            double powers[kMaxPower + 1];
            powers_of(d, powers);
            const int size = departure_size();
            SmallArray<double, 512> factors(2 * size);
            double *const shapes = &factors[0] + size, *f = &factors[0], *e = shapes;
            const auto wanted = [&](int k) { return all || w[k] != 0.0; };
            const int nf = static_cast<int>(m.functions_.size());
            for (int k = 0; k < nf; ++k) {
                Departure const& function = m.functions_[static_cast<unsigned>(k)];
                if (!wanted(k)) continue;
                function.temperature(tau, f);
                function.exponents(d, powers, e);
                f += function.size(), e += function.size();
            }
            const int used = static_cast<int>(e - shapes);
            corvane::lanes::exp_in_place(&factors[0], used);
            corvane::lanes::exp_in_place(shapes, used);
            f = &factors[0], e = shapes;
            for (int k = 0; k < nf; ++k) {
                Departure const& function = m.functions_[static_cast<unsigned>(k)];
                each[k] = Sums{};
                if (!wanted(k)) continue;
                function.add<2, true>(1.0, d, powers, tau, f, e, each[k]);
                f += function.size(), e += function.size();
            }
        }

        MeosGerg const& m;
        int n;
        SmallArray<double> x, Ts, vs, w;  // w: Σ x_i·x_j·F_ij of each departure function
        double Tr, vr;
    };

    /// A function α and its derivatives by L and U.
    struct Logarithmic {
        double a = 0.0, L = 0.0, U = 0.0, LL = 0.0, LU = 0.0, UU = 0.0;
        Logarithmic() = default;
        explicit Logarithmic(double const* d)
            : a(d[0]), L(d[3]), U(-d[1]), LL(d[6] + d[3]), LU(-d[4]), UU(d[2] + d[1]) {}
        void add(double w, Logarithmic const& f) {
            if (w == 0.0) return;  // a component that is absent may be beyond its own range
            a += w * f.a;
            L += w * f.L;
            U += w * f.U;
            LL += w * f.LL;
            LU += w * f.LU;
            UU += w * f.UU;
        }
    };

    /// What potentials are made of, see there.
    struct Parts {
        Parts(State const& s, double rho, double T);

        SmallArray<Logarithmic> G, f;  // of every component; α of every departure function
        Logarithmic all, shared;       // a; Σ_f w_f·α_f
    };
    void by_amounts(State const& s, Parts const& parts, double rho, double const* d, double const* t,
                    double* mu_rho) const;

    /// f(i, j, pair) of every pair i < j with a departure function.
    template <class F>
    void each_departure(int n, F const& f) const {
        Pair const* p = pairs_.data();
        for (int j = 1; j < n; ++j)
            for (int i = 0; i < j; ++i, ++p)
                if (p->function >= 0) f(i, j, *p);
    }

    /// The mixture at one temperature.
    class Isotherm {
      public:
        Isotherm(MeosGerg const& model, State const& state, double T)
            : m_(model), s_(state), T_(T), factors_(state.departure_size()), merged_(state.n) {
            for (int i = 0; i < s_.n; ++i) merged_[i] = 0;
            for_departures([&](Departure const& f, double, int at) {
                f.temperature(s_.Tr / T_, &factors_[at]);
                used_ = at + f.size();
            });
            corvane::lanes::exp_in_place(&factors_[0], used_);
        }
        /// For many densities: what depends on T alone is kept, and components that are sums of powers
        /// become one.
        Isotherm& keep() {
            for (int i = 0; i < s_.n; ++i) {
                if (s_.x[i] == 0.0) continue;
                merged_[i] = powers_.add(*m_.mdl1[i], T_ * (s_.Ts[i] / s_.Tr), s_.x[i]);
                if (merged_[i]) continue;
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
                if (s_.x[i] == 0.0 || merged_[i]) continue;
                corvane::Isotherm1 const* const kept =
                    components_.empty() ? nullptr : components_[static_cast<unsigned>(i)].get();
                double d[4];
                if (kept)
                    kept->at(rho * (s_.vr / s_.vs[i]), order, d);
                else
                    s_.component(i, rho, T_, order, 0, d);
                for (int k = 0; k <= order; ++k)
                    (k == 3 ? sums.third : sums.d[3 * k]) += s_.x[i] * d[k];
            }
            const int size = used_ + powers_.size();
            if (size == 0) return sums;
            const double delta = s_.delta(rho), tau = s_.Tr / T_;
            double powers[kMaxPower + 1];
            powers_of(delta, powers);
            SmallArray<double, 320> exponential(size);
            double* const damping = &exponential[0] + used_;
            for_departures([&](Departure const& f, double, int k) {
                f.exponents(delta, powers, &exponential[k]);
            });
            powers_.exponents(powers, damping);
            corvane::lanes::exp_in_place(&exponential[0], size);
            powers_.add_to<order>(powers, damping, sums);
            for_departures([&](Departure const& f, double w, int k) {
                f.add<order, false>(w, delta, powers, tau, &factors_[k], &exponential[k], sums);
            });
            return sums;
        }
        /// f(function, weight, place of its first factor) for the functions that have a weight.
        template <class F>
        void for_departures(F const& f) const {
            int place = 0;
            for (unsigned k = 0; k < m_.functions_.size(); ++k) {
                const double w = s_.w[static_cast<int>(k)];
                if (w == 0.0) continue;
                f(m_.functions_[k], w, place);
                place += m_.functions_[k].size();
            }
        }

        MeosGerg const& m_;
        State const& s_;
        double T_;
        SmallArray<double, 256> factors_;  // of the terms of the departure functions
        int used_ = 0;
        std::vector<std::unique_ptr<corvane::Isotherm1>> components_;  // null: not kept
        SmallArray<char> merged_;  // whether a component is in powers_
        Powers powers_;
    };

    std::vector<Pair> pairs_;
    std::vector<Departure> functions_;
};

int MeosGerg::vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
                    double& rho_b) const {
    const double P = p / (R * T);
    if (!(T > 0.0) || !std::isfinite(T) || !std::isfinite(P)) return 0;
    const State s(*this, x);
    return density(Isotherm(*this, s, T).keep(), P, T / s.Tr, 1.0 / s.vr, mode, rho_a, rho_b);
}

MeosGerg::Parts::Parts(State const& s, double rho, double T)
    : G(s.n), f(static_cast<int>(s.m.functions_.size())) {
    const int n = s.n, nf = static_cast<int>(s.m.functions_.size());
    for (int i = 0; i < n; ++i) {
        double d[9] = {};
        s.component(i, rho, T, 2, 2, d);
        G[i] = Logarithmic(d);
        all.add(s.x[i], G[i]);
    }
    SmallArray<Sums> departures(nf);
    s.departures(rho, T, true, &departures[0]);
    for (int k = 0; k < nf; ++k) {
        f[k] = Logarithmic(departures[k].d);
        all.add(s.w[k], f[k]);
    }
    // G_i = α_i + Σ_f (w_fi − w_f)·α_f with w_fi = Σ_j x_j·F_ij.
    for (int k = 0; k < nf; ++k) shared.add(s.w[k], f[k]);
    for (int i = 0; i < n; ++i) G[i].add(-1.0, shared);
    s.m.each_departure(n, [&](int i, int j, Pair const& p) {
        G[i].add(s.x[j] * p.value[4], f[p.function]);
        G[j].add(s.x[i] * p.value[4], f[p.function]);
    });
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
    if (rho == 0.0) {
        for (int i = 0; i < n; ++i) mu[i] = 0.0;
        for (int i = 0; mu_T && i < n; ++i) mu_T[i] = 0.0;
        for (int i = 0; mu_rho && i < n * n; ++i) mu_rho[i] = 0.0;
        return;
    }
    Vector<double> x(n);
    for (int i = 0; i < n; ++i) x[i] = rho_i[i] / rho;
    const State s(*this, x);
    const Parts parts(s, rho, T);
    SmallArray<double> d(n), t(n);
    s.reducing(Reducing::Of::temperature).gradient(&s.x[0], &t[0]);
    s.reducing(Reducing::Of::volume).gradient(&s.x[0], &d[0]);
    for (int i = 0; i < n; ++i) {
        t[i] = t[i] / s.Tr - 2.0;
        d[i] = d[i] / s.vr - 1.0;
        mu[i] = parts.G[i].a + parts.all.L * d[i] + parts.all.U * t[i];
        if (mu_T) mu_T[i] = -(parts.G[i].U + parts.all.LU * d[i] + parts.all.UU * t[i]);
    }
    if (mu_rho) by_amounts(s, parts, rho, &d[0], &t[0], mu_rho);
}

/// ∂μ_i/∂rho_j from d_i and t_i.
void MeosGerg::by_amounts(State const& s, Parts const& parts, double rho, double const* d,
                          double const* t, double* mu_rho) const {
    const int n = s.n;
    Logarithmic const& all = parts.all;
    auto const &G = parts.G, &f = parts.f;
    // K_ij = Σ_f (F_ij − w_fi − w_fj + 2·w_f)·α_f, of which G_i holds α_i + Σ_f (w_fi − w_f)·α_f.
    SmallArray<double> own(n);
    for (int i = 0; i < n; ++i) own[i] = 0.0;
    each_departure(n, [&](int i, int j, Pair const& p) {
        own[i] += s.x[j] * p.value[4] * f[p.function].a;
        own[j] += s.x[i] * p.value[4] * f[p.function].a;
    });
    SmallArray<double, 576> Tij(n * n), vij(n * n);
    s.reducing(Reducing::Of::temperature).hessian(&s.x[0], &Tij[0]);
    s.reducing(Reducing::Of::volume).hessian(&s.x[0], &vij[0]);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            const double t_ij = Tij[i * n + j] / s.Tr - (t[i] + 2.0) * (t[j] + 2.0) + 2.0;
            const double d_ij = vij[i * n + j] / s.vr - (d[i] + 1.0) * (d[j] + 1.0) + 1.0;
            double K = 2.0 * parts.shared.a - own[i] - own[j];
            if (i != j)
                if (Pair const& p = pair(i, j); p.function >= 0) K += p.value[4] * f[p.function].a;
            const double sum = K + G[i].L * d[j] + G[j].L * d[i] + G[i].U * t[j] + G[j].U * t[i] +
                               all.LL * d[i] * d[j] + all.LU * (d[i] * t[j] + d[j] * t[i]) +
                               all.UU * t[i] * t[j] + all.L * d_ij + all.U * t_ij;
            mu_rho[i * n + j] = mu_rho[j * n + i] = sum / rho;
        }
}

}  // namespace

CORVANE_PLUGINN(MeosGerg)
