#include <corvane/check/isotherm_scan.h>
#include <corvane/check/mixture_copies.h>
#include <corvane/check/pair_checks.h>
#include <corvane/check/survey.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/isotherm.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <numeric>

namespace corvane {
namespace {
using State = Survey::State;

/// All that DerivN::potentials writes.
struct Potentials {
    std::vector<double> mu, mu_T, H;
    Potentials(ModelN const& m, Vector<double> const& rho_i, double T)
        : mu(static_cast<std::size_t>(rho_i.size())), mu_T(mu), H(mu.size() * mu.size()) {
        m.derivatives()->potentials(rho_i, T, mu.data(), mu_T.data(), H.data());
    }
};

class MixtureChecks {
  public:
    MixtureChecks(ModelN& model, CheckRange const& range) : m_(model), n_(model.mdl1.size()) {
        double Tc = 0.0, vc = 0.0;
        for (int i = 0; i < n_; ++i) {
            Tc += m_.mdl1[i]->Tcrit() / n_;
            vc += m_.mdl1[i]->vcrit() / n_;
        }
        low_ = range.T_low > 0.0 ? range.T_low : 0.5 * Tc;
        high_ = range.T_high > 0.0 ? range.T_high : 2.0 * Tc;
        top_ = range.top > 0.0 ? range.top : 2.6 / vc;
    }

    std::vector<Check> run() {
        for (std::vector<double> const& x : compositions())
            for (double t : {0.0, 0.3, 1.0}) {
                const double T = low_ + t * (high_ - low_);
                for (double r : {1e-6, 0.02, 0.3, 0.8, 1.0})
                    survey_.guarded("identities", [&] { at_density(x, T, r * top_); });
                survey_.guarded("densities", [&] { densities(x, T); });
            }
        survey_.guarded("absent components", [&] { absent(); });
        survey_.guarded("odd arguments", [&] { odd_arguments(); });
        survey_.guarded("pure limits", [&] { pure_limits(); });
        survey_.guarded("parameters", [&] { parameters(); });
        survey_.guarded("components in another order", [&] { reordered(); });
        return survey_.take();
    }

  private:
    /// Equal parts; and much of each component in turn.
    std::vector<std::vector<double>> compositions() const {
        const auto n = static_cast<std::size_t>(n_);
        std::vector<std::vector<double>> all{std::vector<double>(n, 1.0 / n_)};
        for (std::size_t i = 0; n_ > 1 && i < n; ++i) {
            all.emplace_back(n, 0.1 / (n_ - 1));
            all.back()[i] = 0.9;
        }
        return all;
    }
    static Vector<double> vector(std::vector<double> const& x, double factor = 1.0) {
        Vector<double> v(static_cast<int>(x.size()));
        for (std::size_t i = 0; i < x.size(); ++i) v[static_cast<int>(i)] = factor * x[i];
        return v;
    }

    void at_density(std::vector<double> const& fractions, double T, double rho) {
        const State at{.T = T, .rho = rho, .x = &fractions};
        const Vector<double> x = vector(fractions), rho_i = vector(fractions, rho);
        const double Ar = m_.Ar(rho, T, x), Z = m_.Z(rho, T, x);
        if (!std::isfinite(Ar) || !std::isfinite(Z) || !(m_.pV(rho, T, x) > 0.01)) return;
        const double size = std::abs(Ar) + std::abs(Z - 1.0);
        auto agree = [&](char const* name, double value, Difference d, double scale,
                         double more = 0.0) {
            survey_.same(
                name, at, value, scale * d.value,
                20.0 * scale * d.error + kDifferenced * (size + more + std::abs(value)) + 1e-300);
        };
        agree("Z is 1 + rho·∂Ar/∂rho", Z - 1.0,
              ridders([&](double r) { return m_.Ar(r, T, x); }, rho, 0.02 * rho), rho, 1e-3);
        agree("betaV is ∂(T·Z)/∂T", m_.betaV(rho, T, x),
              ridders([&](double t) { return t * m_.Z(rho, t, x); }, T, 0.01 * T), 1.0, 1.0);
        if (!m_.derivatives()) return;
        derivatives(at, x, size);
        const Potentials q(m_, rho_i, T);
        double sum = 0.0, largest = size, duhem = 0.0;
        for (int i = 0; i < n_; ++i) {
            sum += x[i] * q.mu[index(i)];
            largest = std::max(largest, std::abs(q.mu[index(i)]));
        }
        auto exactly = [&](char const* name, double a, double b, double scale) {
            survey_.same(name, at, a, b, 40 * kRounding * (scale + std::abs(a)) + kNearOne);
        };
        exactly("Euler: Σ x_i·mu_i is Ar + Z − 1", sum, Ar + Z - 1.0, largest);
        for (int i = 0; i < n_; ++i) {
            exactly("myr is a potential", m_.myr(rho_i, T, i), q.mu[index(i)], largest);
            for (int j = 0; j < n_; ++j) {
                duhem += rho_i[i] * q.H[index(i, j)] * x[j];
                exactly("Hessian is symmetric", q.H[index(i, j)], q.H[index(j, i)],
                        10 * largest / rho);
            }
        }
        exactly("Gibbs–Duhem: Σ Σ x_i·x_j·rho·∂mu_i/∂rho_j is ∂(rho·Z)/∂rho − 1", duhem,
                m_.pV(rho, T, x) - 1.0, 10 * largest + 1.0);
        Potentials less = q;
        m_.derivatives()->potentials(rho_i, T, less.mu.data(), nullptr, nullptr);
        for (int i = 0; i < n_; ++i)
            exactly("potentials: whatever is asked for with them", less.mu[index(i)],
                    q.mu[index(i)], largest);
        slopes(at, rho_i, q, largest);
        isotherm(at, rho_i, q, largest);
    }
    void derivatives(State const& at, Vector<double> const& x, double size) {
        DerivN const& exact = *m_.derivatives();
        orders_of_derivatives(survey_, at, [&](int nrho, int nT, double* e) {
            return exact.deriv(at.rho, at.T, x, nrho, nT, e);
        });
        double d[9], c[4];
        if (exact.deriv(at.rho, at.T, x, 2, 2, d) != 1 ||
            exact.deriv(at.rho, at.T, x, 3, 0, c) != 1)
            return;
        auto agree = [&](char const* name, double value, Difference f, double by,
                         double more = 0.0) {
            survey_.same(
                name, at, value, by * f.value,
                20.0 * by * f.error + kDifferenced * (size + more + std::abs(value)) + 1e-300);
        };
        auto element = [&](double r, double t, int k) {
            double e[9];
            exact.deriv(r, t, x, 2, 2, e);
            return e[k];
        };
        agree("exact derivatives: ∂²/∂rho²", d[6] + d[3],
              ridders([&](double r) { return m_.Z(r, at.T, x); }, at.rho, 0.02 * at.rho), at.rho,
              1.0);
        agree("exact derivatives: ∂³/∂rho³", c[3] + 2.0 * c[2],
              ridders([&](double r) { return element(r, at.T, 6); }, at.rho, 0.02 * at.rho),
              at.rho);
        agree("exact derivatives: ∂/∂T", d[1],
              ridders([&](double t) { return m_.Ar(at.rho, t, x); }, at.T, 0.01 * at.T), at.T);
        agree("exact derivatives: ∂²/∂T²", d[2] + d[1],
              ridders([&](double t) { return element(at.rho, t, 1); }, at.T, 0.01 * at.T), at.T);
        for (int i = 0; i < 3; ++i)
            survey_.same("exact derivatives: orders agree", at, c[i], d[3 * i],
                         20 * kRounding * (size + std::abs(c[i])) + 1e-300);
    }
    /// Potentials against differences of rho·Ar, and their slopes against differences of them.
    void slopes(State const& at, Vector<double> const& rho_i, Potentials const& q, double largest) {
        for (int i = 0; i < n_; ++i) {
            const double h = 0.02 * rho_i[i];
            auto with = [&](double r) {
                Vector<double> changed = rho_i;
                changed[i] = r;
                return changed;
            };
            auto agree = [&](char const* name, double value, Difference d, double scale) {
                survey_.same(name, at, value, d.value,
                             20.0 * d.error + 4 * kDifferenced * (scale + std::abs(value)));
            };
            const Difference F = ridders(
                [&](double r) {
                    const Vector<double> y = with(r);
                    return y.sum() * m_.Ar(y, at.T);
                },
                rho_i[i], h);
            agree("mu_i is ∂(rho·Ar)/∂rho_i", q.mu[index(i)], F, largest / rho_i[i] * at.rho);
            for (int j = 0; j < n_; ++j) {
                const Difference d =
                    ridders([&](double r) { return Potentials(m_, with(r), at.T).mu[index(j)]; },
                               rho_i[i], h);
                agree("Hessian: ∂mu_i/∂rho_j", q.H[index(j, i)], d, largest / rho_i[i]);
            }
            const Difference t =
                ridders([&](double T) { return at.T * Potentials(m_, rho_i, T).mu[index(i)]; },
                           at.T, 0.01 * at.T);
            agree("slope of mu_i in T", q.mu_T[index(i)], t, largest);
        }
    }
    /// The work space at one temperature gives what the model gives.
    void isotherm(State const& at, Vector<double> const& rho_i, Potentials const& q,
                  double largest) {
        auto const* iso = dynamic_cast<IsothermN const*>(&m_);
        if (!iso) return;
        std::vector<int> present(static_cast<std::size_t>(n_));
        std::iota(present.begin(), present.end(), 0);
        std::vector<double> work(static_cast<std::size_t>(iso->isotherm_size(n_)));
        iso->isotherm(at.T, present.data(), n_, true, work.data());
        Potentials o = q;
        double P = 0, P_T = 0;
        iso->potentials(work.data(), n_, rho_i.data, o.mu.data(), o.mu_T.data(), o.H.data(), &P,
                        &P_T);
        char const* name = "isotherm: the same potentials";
        auto same = [&](double a, double b, double size) {
            survey_.same(name, at, a, b, 40 * kRounding * (size + std::abs(b)) + 1e-300);
        };
        for (std::size_t k = 0; k < q.mu.size(); ++k) {
            same(o.mu[k], q.mu[k], largest);
            same(o.mu_T[k], q.mu_T[k], largest);
        }
        for (std::size_t k = 0; k < q.H.size(); ++k) same(o.H[k], q.H[k], 10 * largest / at.rho);
        const Vector<double> x = vector(*at.x);
        const double Z = m_.Z(at.rho, at.T, x), p = at.rho * R * at.T * Z;
        same(P, at.rho * Z, at.rho * (1 + 10 * largest));
        same(P_T, at.rho * (m_.betaV(at.rho, at.T, x) - Z), at.rho * (1 + 10 * largest));
        double rho[2], a = 0, b = 0;
        const int n = iso->densities(work.data(), n_, x.data, p, rho),
                  k = m_.vcalc(p, at.T, x, 1, a, b);
        survey_.holds("isotherm: the same densities", at,
                      n == (k == 3 ? 2 : k) && (n == 0 || std::abs(rho[0] - a) < 1e-9 * a),
                      "others");
        if (n > 0)
            same(iso->gibbs(work.data(), n_, x.data, p, rho[0]),
                 m_.Ar(rho[0], at.T, x) + m_.Z(rho[0], at.T, x) - 1 + std::log(rho[0]),
                 20 + 20 * largest);
    }

    /// Each component in turn without an amount: potentials are those of a trace of it, and the
    /// work space of the others gives what the model gives.
    void absent() {
        if (!m_.derivatives() || n_ < 2) return;
        auto const* iso = dynamic_cast<IsothermN const*>(&m_);
        const double T = 0.6 * low_ + 0.4 * high_;
        for (int out = 0; out < n_; ++out)
            for (double r : {0.02, 0.8}) {
                std::vector<double> x(index(n_), 1.0 / (n_ - 1));
                x[index(out)] = 0.0;
                const State at{.T = T, .rho = r * top_, .x = &x};
                if (!(m_.pV(at.rho, T, vector(x)) > 0.01)) continue;
                const Potentials q(m_, vector(x, at.rho), T);
                trace(at, out, q);
                if (iso) without(*iso, at, out, q);
            }
    }
    void trace(State const& at, int out, Potentials const& q) {
        std::vector<double> x = *at.x;
        constexpr double kTrace = 1e-11;
        x[index(out)] = kTrace;
        const Potentials t(m_, vector(x, at.rho), at.T);
        double size = 1.0;
        for (double h : q.H) size = std::max(size, at.rho * std::abs(h));
        for (int i = 0; i < n_; ++i)
            survey_.same("an absent component has the potential of a trace", at, q.mu[index(i)],
                         t.mu[index(i)], 100 * kTrace * size);
    }
    void without(IsothermN const& iso, State const& at, int out, Potentials const& q) {
        std::vector<int> present;
        std::vector<double> rho_i;
        for (int i = 0; i < n_; ++i)
            if (i != out) present.push_back(i), rho_i.push_back(at.rho * (*at.x)[index(i)]);
        const int n = n_ - 1;
        for (bool slopes : {false, true}) {
            std::vector<double> work(static_cast<std::size_t>(iso.isotherm_size(n)));
            iso.isotherm(at.T, present.data(), n, slopes, work.data());
            std::vector<double> mu(index(n)), mu_T(mu), H(index(n * n));
            iso.potentials(work.data(), n, rho_i.data(), mu.data(), slopes ? mu_T.data() : nullptr,
                           slopes ? H.data() : nullptr, nullptr, nullptr);
            double size = 1.0;
            for (double h : q.H) size = std::max(size, at.rho * std::abs(h));
            const auto same = [&](double a, double b, double unit) {
                survey_.same("isotherm: without an absent component", at, a, b,
                             40 * kRounding * (10 * size * unit + std::abs(b)));
            };
            for (int a = 0; a < n; ++a) {
                const int i = present[index(a)];
                same(mu[index(a)], q.mu[index(i)], 1.0);
                if (!slopes) continue;
                same(mu_T[index(a)], q.mu_T[index(i)], 1.0);
                for (int b = 0; b < n; ++b)
                    same(H[index(a * n + b)], q.H[index(i, present[index(b)])], 1.0 / at.rho);
            }
        }
    }

    /// Of this composition: the mean of all components may lie beyond the last density of a heavy
    /// one.
    double scan_top(std::vector<double> const& x) const {
        double vc = 0.0;
        for (int i = 0; i < n_; ++i) vc += x[index(i)] * m_.mdl1[i]->vcrit();
        return std::min(1.15 * top_, 3.0 / vc);
    }
    void densities(std::vector<double> const& fractions, double T) {
        const Vector<double> x = vector(fractions);
        auto isotherm = [&](double rho) { return rho * m_.Z(rho, T, x); };
        const IsothermScan scan(isotherm, scan_top(fractions));
        for (double p : {1e-9, 1e-3, 0.1, 1.0, 5.0, 20.0}) {
            const State at{.T = T, .p = p, .x = &fractions};
            check_roots(
                survey_, scan, isotherm, at, p / (R * T),
                [&](int phase, double& a, double& b) { return m_.vcalc(p, T, x, phase, a, b); },
                [&](double rho) { return m_.pV(rho, T, x); });
        }
    }
    void odd_arguments() {
        const std::vector<double> all = compositions()[0];
        const Vector<double> x = vector(all);
        for (double odd : {0.0, -300.0, std::nan(""), HUGE_VAL})
            for (int phase : {1, 3, -1}) {
                double a = 5.0, b = 6.0;
                survey_.holds("impossible states have no density", {.T = odd, .p = 1.0},
                              m_.vcalc(1.0, odd, x, phase, a, b) == 0 && a == 5.0 && b == 6.0, "T");
                if (!std::isfinite(odd))
                    survey_.holds("impossible states have no density", {.T = low_, .p = odd},
                                  m_.vcalc(odd, low_, x, phase, a, b) == 0, "p");
            }
        for (double T : {0.0, -1.0, 300.0, std::nan("")})
            for (double rho : {0.0, 1e3 * top_, 1e300, std::nan("")})
                m_.Ar(rho, T, x);  // must not throw
        for (double T : {0.7 * low_, low_, high_})
            for (double r : {1.5, 2.0, 5.0, 1e3}) {
                const double rho = r * top_;
                numbers_end_together(survey_, {.T = T, .rho = rho, .x = &all}, m_.Z(rho, T, x),
                                     [&] { return m_.betaV(rho, T, x); });
            }
        survey_.same("nothing at zero density", {.T = low_}, m_.Ar(0.0, low_, x), 0.0, 1e-300);
        survey_.same("nothing at zero density", {.T = low_}, m_.Z(0.0, low_, x), 1.0, 1e-15);
        if (m_.derivatives())
            for (double T : {low_, high_}) nothing(T);
    }
    /// Potentials without any molecules, and their slopes, which are those of equal traces: second
    /// virial coefficients.
    void nothing(double T) {
        const std::vector<double> all = compositions()[0];
        const Potentials none(m_, vector(all, 0.0), T), traces(m_, vector(all, 1e-14 * top_), T);
        const State at{.T = T, .rho = 0.0, .x = &all};
        double largest = 0.0;
        for (double h : traces.H) largest = std::max(largest, std::abs(h));
        for (std::size_t k = 0; k < none.mu.size(); ++k) {
            survey_.same("potentials at zero density", at, none.mu[k], 0.0, 1e-300);
            survey_.same("potentials at zero density", at, none.mu_T[k], 0.0, 1e-300);
        }
        for (std::size_t k = 0; k < none.H.size(); ++k)
            survey_.same("potentials at zero density: ∂myr/∂rho", at, none.H[k], traces.H[k],
                         1e-5 * largest);
    }
    void pure_limits() {
        for (int i = 0; i < n_; ++i) {
            std::vector<double> fractions(static_cast<std::size_t>(n_), 0.0);
            fractions[index(i)] = 1.0;
            const Vector<double> x = vector(fractions);
            Model1 const& pure = *m_.mdl1[i];
            for (double Tr : {0.7, 1.2})
                for (double r : {0.01, 0.5, 2.3}) {
                    const double T = Tr * pure.Tcrit(), rho = r / pure.vcrit(),
                                 Ar = pure.Ar(rho, T), Z = pure.Z(rho, T);
                    const State at{.T = T, .rho = rho, .x = &fractions};
                    const double allowed = 40 * kRounding * (1 + std::abs(Ar) + std::abs(Z));
                    survey_.same("a component alone is the pure fluid", at, m_.Ar(rho, T, x), Ar,
                                 allowed);
                    survey_.same("a component alone is the pure fluid", at, m_.Z(rho, T, x), Z,
                                 allowed);
                    survey_.same("a component alone is the pure fluid", at,
                                 m_.myr(vector(fractions, rho), T, i), Ar + Z - 1, 10 * allowed);
                }
        }
    }
    void parameters() {
        const std::vector<double> x = compositions().back();
        const DensityRange range{.T_low = low_, .T_high = high_, .top = top_};
        check_pairs(survey_, m_, x, range, [&] {
            for (double t : {0.1, 0.6})
                for (double r : {0.02, 0.3, 1.0})
                    survey_.guarded("identities",
                                    [&] { at_density(x, low_ + t * (high_ - low_), r * top_); });
        });
        DensityRange scanned = range;
        scanned.top = scan_top(x);
        rewritten_densities(survey_, m_, x, scanned);
    }

    /// Rules with pairs that are not symmetric may tell a component from its like (Michelsen &
    /// Kistenmacher, Fluid Phase Equilib. 58 (1990) 229): they are not asked to split one.
    void reordered() {
        std::vector<int> backwards(index(n_)), doubled(index(n_));
        std::iota(backwards.rbegin(), backwards.rend(), 0);
        std::iota(doubled.begin(), doubled.end(), 0);
        doubled.push_back(0);
        const Mixed read = reversed(m_), copied = made_of(m_, backwards),
                    twice = made_of(m_, doubled),
                    by_value = made_of(m_, backwards, Pairs::by_value);
        const auto over_all = [&](auto const& look) {
            for (std::vector<double> const& x : compositions())
                for (double r : {0.1, 0.9}) {
                    const State at{.T = 0.5 * (low_ + high_), .rho = r * top_, .x = &x};
                    const double Ar = m_.Ar(at.rho, at.T, vector(x));
                    if (std::isfinite(Ar)) look(at, Ar, 40 * kRounding * (1 + std::abs(Ar)));
                }
        };
        const auto turned = [](State const& at) { return vector({at.x->rbegin(), at.x->rend()}); };
        bool symmetric = true;  // of equal parts all are
        over_all([&](State const& at, double Ar, double allowed) {
            survey_.same("components in another order", at,
                         (read ? read : copied)->Ar(at.rho, at.T, turned(at)), Ar, allowed);
            symmetric =
                symmetric && std::abs(by_value->Ar(at.rho, at.T, turned(at)) - Ar) <= allowed;
        });
        if (!symmetric) return;
        over_all([&](State const& at, double Ar, double allowed) {
            std::vector<double> z = *at.x;
            z.push_back(0.4 * z[0]);
            z[0] *= 0.6;
            survey_.same("a component split into two alike", at, twice->Ar(at.rho, at.T, vector(z)),
                         Ar, allowed);
        });
    }

    static std::size_t index(int i) { return static_cast<std::size_t>(i); }
    std::size_t index(int i, int j) const { return static_cast<std::size_t>(i * n_ + j); }

    ModelN& m_;
    int n_;
    double low_, high_, top_;
    Survey survey_;
};
}  // namespace

std::vector<Check> check_mixture(ModelN& mixture, CheckRange const& range) {
    return MixtureChecks(mixture, range).run();
}

}  // namespace corvane
