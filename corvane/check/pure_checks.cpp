#include <corvane/catalogue/open.h>
#include <corvane/check/isotherm_scan.h>
#include <corvane/check/rewritten_densities.h>
#include <corvane/check/survey.h>
#include <corvane/core/errors.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/many_states.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <thread>

namespace corvane {
namespace {
using State = Survey::State;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kReducedT[] = {0.0, 0.1, 0.2, 0.35, 0.55, 0.8, 1.0};  // between the limits
// Not the critical density itself, where reference equations have terms that differences see badly.
/// What rounding may scatter values by, relative to their size; second derivatives lose four digits
/// more.
constexpr double kScatter = 1e-11;
constexpr double kReducedRho[] = {1e-8, 1e-4, 0.01, 0.2, 0.7, 1.1, 1.5, 2.2, 2.6, 2.9};

class PureChecks {
  public:
    PureChecks(Model1& model, CheckRange const& r)
        : m_(model),
          Tc_(model.Tcrit()),
          rho_c_(1.0 / model.vcrit()),
          low_(r.T_low > 0.0 ? r.T_low : 0.4 * Tc_),
          high_(r.T_high > 0.0 ? r.T_high : 3.0 * Tc_),
          top_(r.top > 0.0 ? r.top : 2.9 * rho_c_),
          stated_(r.stated),
          p_high_(std::isfinite(r.stated.p_max) ? r.stated.p_max : 10.0 * model.pcrit()) {}

    std::vector<Check> run() {
        survey_.guarded("contract", [&] { contract(); });
        survey_.guarded("parameters", [&] { parameters(); });
        survey_.guarded("odd arguments", [&] { odd_arguments(); });
        survey_.guarded("dilute gas", [&] { dilute(); });
        for (double t : kReducedT) {
            const double T = low_ + t * (high_ - low_);
            for (double r : kReducedRho)
                survey_.guarded("identities", [&] { identities(T, r * rho_c_); });
            survey_.guarded("signs", [&] { signs(T); });
        }
        survey_.guarded("critical point", [&] { critical(); });
        for (double Tr : {0.5, 0.7, 0.85, 0.95, 0.99, 1.0, 1.01, 1.2, 2.0})
            survey_.guarded("densities", [&] { densities(std::max(Tr * Tc_, low_)); });
        survey_.guarded("rewritten parameters", [&] {
            rewritten_densities(survey_, m_, {low_, high_, 3.0 * rho_c_, p_high_});
        });
        for (double Tr : {0.45, 0.55, 0.7, 0.85, 0.95, 0.99, 0.9999})
            survey_.guarded("saturation", [&] { saturation(std::max(Tr * Tc_, low_)); });
        if (auto const* many = dynamic_cast<ManyDensities1 const*>(&m_))
            survey_.guarded("densities", [&] { many_densities(*many); });
        survey_.guarded("threads", [&] { threads(); });
        return survey_.take();
    }

  private:
    void contract() {
        char const* name = "numbers and addresses of parameters";
        const int n = m_.mpar();
        survey_.holds(name, {}, n >= 3 && m_.madj() >= 0 && m_.madj() < n, "mpar, madj");
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < i; ++j)
                survey_.holds(name, {}, m_.ppar(i) && m_.ppar(i) != m_.ppar(j),
                              "two share a place");
        survey_.holds(name, {}, m_.eos() != nullptr && *m_.eos(), "no name of the equation");
        if (Deriv1 const* exact = m_.derivatives())
            orders_of_derivatives(survey_, {.T = 1.1 * Tc_, .rho = rho_c_},
                                  [&](int nrho, int nT, double* d) {
                                      return exact->deriv(rho_c_, 1.1 * Tc_, nrho, nT, d);
                                  });
    }

    // ---- parameters

    /// A value of everything that depends on the parameters, but for what the density tables
    /// decide, which may stay those of the last par_in.
    double fingerprint() const {
        double a = 0, b = 0;
        m_.vcalc(0.5 * m_.pcrit(), 1.3 * Tc_, 1, a, b);
        return m_.Ar(1.7 * rho_c_, 0.9 * Tc_) + 2.0 * m_.Z(0.3 * rho_c_, 1.1 * Tc_) + 3.0 * a;
    }
    /// Tables that are made anew may give roots another last digit.
    static bool alike(double a, double b) { return std::abs(a - b) <= 1e-12 * std::abs(b); }
    bool read(std::string const& section) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> f(std::tmpfile(), std::fclose);
        if (!f) throw ThException(th_cannot_open);
        std::fwrite(section.data(), 1, section.size(), f.get());
        std::rewind(f.get());
        try {
            m_.par_in(f.get(), 1);
        } catch (ThException const&) {
            return false;
        }
        return true;
    }
    std::string written() const {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> f(std::tmpfile(), std::fclose);
        if (!f) throw ThException(th_cannot_open);
        m_.par_out(f.get());
        std::string text(static_cast<std::size_t>(std::ftell(f.get())), '\0');
        std::rewind(f.get());
        text.resize(std::fread(text.data(), 1, text.size(), f.get()));
        return text;
    }
    void parameters() {
        std::vector<double> before;
        for (int i = 0; i < m_.mpar(); ++i) before.push_back(m_.param(i));
        const double first = fingerprint();
        const std::string section = written();
        survey_.holds("a set survives writing and reading", {},
                      read(section) && same_as(before) && alike(fingerprint(), first),
                      "other values after par_out and par_in");
        // Cut after its first line, M: what is cut later may be whole, without the lines that may
        // lack.
        for (std::string const& broken :
             {std::string(), section.substr(0, section.find('\n') + 1), "M:\tone\n" + section})
            survey_.holds("a broken section changes nothing", {},
                          !read(broken) && same_as(before) && alike(fingerprint(), first),
                          "it was taken, or left its traces");
        // Written behind its back: what counts is the value of now, whatever was kept.
        for (int i = 1; i < m_.mpar(); ++i) {
            // Whole numbers may be counts and exponents.
            const double value = before[static_cast<unsigned>(i)];
            if (value == 0.0 || (i > 2 && value == std::floor(value))) continue;
            const char* name = "parameters count from the moment they are written";
            m_.param(i, value * 1.001);
            const double changed = fingerprint();
            const bool taken = read(written());  // an equation that limits it need not
            if (taken)
                survey_.holds(name, {}, alike(fingerprint(), changed) || !std::isfinite(changed),
                              "parameter " + std::to_string(i));
            m_.param(i, value);
            if (taken) read(section);
            survey_.holds(name, {}, alike(fingerprint(), first),
                          "parameter " + std::to_string(i) + " put back");
        }
    }
    bool same_as(std::vector<double> const& values) const {
        for (int i = 0; i < m_.mpar(); ++i)
            if (m_.param(i) != values[static_cast<unsigned>(i)]) return false;
        return true;
    }

    // ---- odd arguments

    void odd_arguments() {
        const double odd[] = {0.0, -0.0, -1.0, 1e-300, 1e300, HUGE_VAL, -HUGE_VAL, kNaN};
        double d[9];
        for (double T : {0.0, -300.0, kNaN, HUGE_VAL, 1e-3, 1e8, 0.7 * Tc_})
            for (double rho : {-1e-3 * rho_c_, 0.0, rho_c_, 30.0 * rho_c_, 1e3 * rho_c_, 1e300,
                               HUGE_VAL, kNaN}) {
                m_.Ar(rho, T);  // must not throw
                m_.Z(rho, T);
                if (m_.derivatives()) m_.derivatives()->deriv(rho, T, 2, 2, d);
            }
        for (double T : {0.7 * low_, low_, high_})
            for (double r : {1.5, 2.0, 5.0, 1e3}) {
                const double rho = r * top_;
                numbers_end_together(survey_, {.T = T, .rho = rho}, m_.Z(rho, T),
                                     [&] { return m_.betaV(rho, T); });
            }
        char const* name = "impossible states have no density";
        for (int phase : {1, 3, -1})
            for (double a : odd) {
                double one = 5.0, two = 6.0;
                if (!(a > 0.0) || !std::isfinite(a)) {
                    survey_.holds(
                        name, {.T = a, .p = 1.0},
                        m_.vcalc(1.0, a, phase, one, two) == 0 && one == 5.0 && two == 6.0, "T");
                    if (!std::isfinite(a))
                        survey_.holds(name, {.T = Tc_, .p = a},
                                      m_.vcalc(a, Tc_, phase, one, two) == 0 && one == 5.0, "p");
                }
                // Whatever stands in the outputs, the roots are the same; phase −1 keeps to a side.
                double x = a, y = a, u = 0.0, v = 0.0;
                const int n = m_.vcalc(0.1 * m_.pcrit(), 0.9 * Tc_, phase, x, y);
                const int k = m_.vcalc(0.1 * m_.pcrit(), 0.9 * Tc_, phase, u, v);
                survey_.holds("start values do not matter", {.T = 0.9 * Tc_, .p = 0.1 * m_.pcrit()},
                              n == k && (phase == -1 || (x == u && (n < 3 || y == v))),
                              "other roots");
            }
        double v = 1e-5, w = 0.0;
        survey_.holds(name, {.T = 1.5 * Tc_, .p = 0.0}, m_.vcalc(0.0, 1.5 * Tc_, 1, v, w) == 0,
                      "p = 0 above Tc");
    }

    // ---- identities

    void dilute() {
        for (double Tr : {0.5, 0.7, 1.0, 2.0}) {
            const State at{.T = Tr * Tc_, .rho = 0.0};
            survey_.same("nothing at zero density", at, m_.Ar(0.0, at.T), 0.0, 1e-300);
            survey_.same("nothing at zero density", at, m_.Z(0.0, at.T), 1.0, 1e-300);
            double rho = 1e-9 * rho_c_;
            // A vapour that associates is not dilute there yet: D is some B³.
            rho *= std::min(1.0, 1e-7 / std::abs(m_.Z(rho, at.T) - 1.0));
            // The third coefficient is even in the density and falls out of B; it is in both sums.
            const double plus = m_.Ar(rho, at.T), minus = m_.Ar(-rho, at.T),
                         Zp = m_.Z(rho, at.T) - 1.0, Zm = m_.Z(-rho, at.T) - 1.0,
                         B = 0.5 * (Zp - Zm) / rho, allowed = 1e-6 * (std::abs(B) + m_.vcrit());
            survey_.same("second virial coefficient of Ar and Z", at, 0.5 * (plus - minus) / rho, B,
                         allowed);
            survey_.same("Ar is smooth through zero density", at, (plus + minus) / rho,
                         0.5 * (Zp + Zm) / rho, allowed);
        }
    }

    /// One state of the identities, and what rounding is measured by there.
    struct Place {
        State at;
        double Ar, Z, size;
    };
    /// A value against x times a difference. `more`: what else is subject to rounding, for instance
    /// a Z near 1.
    void agree(char const* name, Place const& q, double value, Difference d, double x,
               double more = 0.0) {
        survey_.see("values are smooth to rounding", q.at, d.scatter,
                    kScatter * (q.size + std::abs(value) + 1.0));
        survey_.same(
            name, q.at, value, x * d.value,
            20.0 * x * d.error + kDifferenced * (q.size + std::abs(value) + more) + 1e-300);
    }
    template <class F>
    static Difference along_rho(Place const& q, F const& f) {
        return ridders(f, q.at.rho, 0.02 * q.at.rho);
    }
    template <class F>
    static Difference along_T(Place const& q, F const& f) {
        return ridders(f, q.at.T, 0.01 * q.at.T);
    }

    void identities(double T, double rho) {
        if (rho > top_) return;
        const double Ar = m_.Ar(rho, T), Z = m_.Z(rho, T);
        if (!std::isfinite(Ar) || !std::isfinite(Z) || !(m_.pV(rho, T) > 0.01)) return;
        const Place q{{.T = T, .rho = rho}, Ar, Z, std::abs(Ar) + std::abs(Z - 1.0)};
        agree("Z is 1 + rho·∂Ar/∂rho", q, Z - 1.0,
              along_rho(q, [&](double r) { return m_.Ar(r, T); }), rho, 1e-3);
        const double S = m_.Sr(rho, T), PT = m_.betaV(rho, T), P = m_.pV(rho, T);
        agree("Maxwell: rho·∂S/∂rho is −∂p/∂T/(rho·R)", q, 1.0 - PT,
              along_rho(q, [&](double r) { return m_.Sr(r, T); }), rho, 1e-3);
        const double CV = m_.CVr(rho, T);
        survey_.same("energies fit together", q.at, m_.Gr(rho, T), m_.Hr(rho, T) - S,
                     40 * kRounding * (q.size + std::abs(S)) + kNearOne);
        survey_.same("energies fit together", q.at, m_.Cpr(rho, T) - CV + 1.0, PT * PT / P,
                     1e-11 * (1 + PT * PT / P + std::abs(CV)));
        if (Deriv1 const* const exact = m_.derivatives()) exact_derivatives(*exact, q);
    }

    void exact_derivatives(Deriv1 const& exact, Place const& q) {
        const double T = q.at.T, rho = q.at.rho, Z = q.Z;
        double d[9], c[4], e[4];
        if (!exact.deriv(rho, T, 2, 2, d) || !exact.deriv(rho, T, 3, 0, c)) return;
        auto exactly = [&](char const* name, double a, double b) {
            survey_.same(name, q.at, a, b, 20 * kRounding * (q.size + std::abs(a)) + 1e-300);
        };
        exactly("exact derivatives: value and Z", d[0], q.Ar);
        survey_.same("exact derivatives: value and Z", q.at, d[3], Z - 1.0,
                     20 * kRounding * q.size + kNearOne);
        for (int i = 0; i < 3; ++i) exactly("exact derivatives: orders agree", c[i], d[3 * i]);
        if (exact.deriv(rho, T, 1, 1, e)) {
            exactly("exact derivatives: orders agree", e[1], d[1]);
            exactly("exact derivatives: orders agree", e[2], d[3]);
        }
        if (exact.deriv(rho, T, 0, 1, e)) exactly("exact derivatives: orders agree", e[1], d[1]);
        if (auto const* many = dynamic_cast<ManyStates1 const*>(&m_)) four_states(exact, *many, q);
        if (const std::unique_ptr<Isotherm1> kept = exact.isotherm(T))
            for (int n = 0; n <= 3; ++n) {
                kept->at(rho, n, e);
                for (int i = 0; i <= n; ++i)
                    exactly("an isotherm that is kept has its derivatives", e[i], c[i]);
            }
        auto element = [&](double r, double t, int k) {
            double all[9];
            exact.deriv(r, t, 2, 2, all);
            return all[k];
        };
        agree("exact derivatives: ∂²/∂rho²", q, d[6] + (Z - 1.0),
              along_rho(q, [&](double r) { return m_.Z(r, T); }), rho, 1.0);
        agree("exact derivatives: ∂³/∂rho³", q, c[3] + 2.0 * c[2],
              along_rho(q, [&](double r) { return element(r, T, 6); }), rho);
        agree("exact derivatives: ∂/∂T", q, d[1],
              along_T(q, [&](double t) { return m_.Ar(rho, t); }), T);
        agree("exact derivatives: ∂²/∂rho∂T", q, d[4],
              along_T(q, [&](double t) { return m_.Z(rho, t); }), T, 1.0);
        agree("exact derivatives: ∂²/∂T²", q, d[2] + d[1],
              along_T(q, [&](double t) { return element(rho, t, 1); }), T);
    }

    /// Four different states at once against each alone.
    void four_states(Deriv1 const& exact, ManyStates1 const& many, Place const& q) {
        const double rho = q.at.rho, T = q.at.T;
        const double r[4] = {rho, 0.9 * rho, rho, 0.8 * rho}, t[4] = {T, T, 1.1 * T, 1.2 * T};
        double columns[6][4], *out[6], d[9];
        for (int k = 0; k < 6; ++k) out[k] = columns[k];
        many.second(4, r, t, out);
        constexpr int element[6] = {0, 1, 2, 3, 4, 6};
        for (int i = 0; i < 4; ++i) {
            exact.deriv(r[i], t[i], 2, 2, d);
            const double size = std::abs(d[0]) + std::abs(d[3]);
            for (int k = 0; k < 6; ++k)
                survey_.same("many states at once are those alone", {.T = t[i], .rho = r[i]},
                             columns[k][i], d[element[k]],
                             20 * kRounding * (size + std::abs(d[element[k]])) + 1e-300);
        }
    }

    /// What a stable fluid within the stated range cannot have. Between the saturated densities
    /// nothing was fitted.
    void signs(double T) {
        if (T < stated_.T_min || T > stated_.T_max) return;
        double vapour = HUGE_VAL, liquid = 0.0;
        if (T < Tc_) {
            const PureSaturation s = pure_saturation_T(m_, T);
            vapour = s.rhoV;
            liquid = s.rhoL;
        }
        for (double r : kReducedRho) {
            const double rho = r * rho_c_;
            if (rho > top_ || (rho > vapour && rho < liquid)) continue;
            const double p = m_.Z(rho, T) * rho * R * T;
            if (!std::isfinite(p) || p > stated_.p_max) continue;
            const State at{.T = T, .rho = rho};
            char const* name = "heat capacity and compressibility are positive";
            survey_.holds(name, at, m_.CVr(rho, T) + ideal_heat_capacity(T) > 0, "c_v < 0");
            survey_.holds(name, at, m_.pV(rho, T) > 0, "dp/drho < 0");
        }
    }
    /// c_v/R of the ideal gas; without a table, or where it is left for too long, that of atoms.
    double ideal_heat_capacity(double T) const {
        constexpr double kAtoms = 1.5;
        try {
            const double known = m_.ideal.CVm(T);
            return known > kAtoms ? known : kAtoms;
        } catch (ThException const&) {
            return kAtoms;
        }
    }

    void critical() {
        const double Zc = m_.pcrit() / (rho_c_ * R * Tc_);
        const State at{.T = Tc_, .rho = rho_c_, .p = m_.pcrit()};
        const Vector<double> zero = m_.crit(Tc_, rho_c_, Zc);
        for (int k = 0; k < 3; ++k)
            survey_.see("pc, Tc, vc are those of the equation", at,
                        k == 2 ? zero[k] * rho_c_ : zero[k], 1e-4,
                        k == 0   ? "pressure"
                        : k == 1 ? "slope"
                                 : "curvature");
    }

    // ---- densities and saturation

    void densities(double T) {
        auto isotherm = [&](double rho) { return rho * m_.Z(rho, T); };
        IsothermScan scan(isotherm, 3.0 * rho_c_, p_high_ / (R * T));
        density_limits(T, scan);
        for (double pr : {1e-12, 1e-6, 1e-3, 0.02, 0.2, 0.5, 0.9, 1.0, 1.5, 4.0}) {
            const double p = pr * m_.pcrit(), P = p / (R * T);
            check_roots(
                survey_, scan, isotherm, {.T = T, .p = p}, P,
                [&](int phase, double& a, double& b) { return m_.vcalc(p, T, phase, a, b); },
                [&](double rho) { return m_.pV(rho, T); });
        }
        survey_.see("one loop in the isotherm", {.T = T}, 0.0, 1.0,
                    scan.loops() > 1 ? "more loops than one" : "");
    }
    /// Densities of many states at once against each alone, impossible states among them; bit by
    /// bit.
    void many_densities(ManyDensities1 const& many) {
        std::vector<double> p, T;
        for (double Tr : {0.5, 0.8, 0.93, 0.99, 1.0, 1.05, 1.6, kNaN, 0.0})
            for (double pr : {1e-9, 0.01, 0.3, 0.8, 1.2, 5.0, -0.1, kNaN, 0.0}) {
                T.push_back(Tr > 0.0 ? std::max(Tr * Tc_, low_) : Tr * Tc_);
                p.push_back(pr * m_.pcrit());
            }
        const int count = static_cast<int>(p.size());
        std::vector<double> rho(p.size());
        for (int phase : {1, 3, -1}) {
            many.densities(count, p.data(), T.data(), phase, rho.data());
            for (std::size_t k = 0; k < p.size(); ++k) {
                double alone = 0.0, other = 0.0;
                if (m_.vcalc(p[k], T[k], phase, alone, other) == 0) alone = kNaN;
                survey_.holds("many densities at once are those alone", {.T = T[k], .p = p[k]},
                              rho[k] == alone || (std::isnan(rho[k]) && std::isnan(alone)),
                              "phase " + std::to_string(phase) + " differs");
            }
        }
    }
    /// The tables against the spinodals; soft ends go to the scan.
    void density_limits(double T, IsothermScan& scan) {
        char const* name = "density tables are the spinodals";
        double low = 0, high = 0;
        try {
            low = m_.xrho(T, 3);
            high = m_.xrho(T, 1);
        } catch (ThException const&) {
            return survey_.holds(name, {.T = T}, false, "no tables");
        }
        if (!(T < 0.995 * Tc_)) return;
        bool soft = false;
        for (double rho : {low, high}) {
            const double before = m_.pV(0.99 * rho, T), after = m_.pV(1.01 * rho, T);
            const bool end = before * after < 0.0,
                       inflection = !end && inflects([&](double r) { return m_.pV(r, T); }, rho);
            soft = soft || inflection;
            survey_.holds(name, {.T = T, .rho = rho}, end || inflection || spinodal_leaps(T, rho),
                          "no spinodal there");
        }
        if (soft) scan.soft_ends(low, high);
    }
    /// Whether a loop of the equation begins or ends there: a spinodal just below T and one just
    /// above lie on either side of the density.
    bool spinodal_leaps(double T, double rho) const {
        const auto of = [this](double t) {
            return IsothermScan([this, t](double r) { return r * m_.Z(r, t); }, 3.0 * rho_c_,
                                p_high_ / (R * t))
                .spinodals();
        };
        const auto [v1, l1] = of(0.995 * T);
        const auto [v2, l2] = of(1.005 * T);
        return (v1 - rho) * (v2 - rho) < 0.0 || (l1 - rho) * (l2 - rho) < 0.0;
    }

    void saturation(double T) {
        if (!(T < Tc_)) return;
        const PureSaturation s = pure_saturation_T(m_, T);
        const State at{.T = T, .p = s.p};
        auto potential = [&](double rho) {
            return m_.Ar(rho, T) + m_.Z(rho, T) - 1.0 + std::log(rho);
        };
        const double size = 10 + std::abs(m_.Ar(s.rhoL, T)) + std::abs(m_.Z(s.rhoL, T));
        // What the rounding of p does to the potential of a thin gas is left out.
        survey_.same("saturation: equal potentials", at, potential(s.rhoL), potential(s.rhoV),
                     10 * kRounding * size + 10 * s.value_error);
        for (double rho : {s.rhoL, s.rhoV})
            survey_.same("saturation: equal pressures", at, m_.Z(rho, T) * R * T * rho, s.p,
                         (10 * kRounding * size + 3 * s.rho_error) * rho * R * T *
                                 (10 + std::abs(m_.pV(rho, T))) +
                             1e-9 * s.p);
        if (T > 0.995 * Tc_) return;
        const Difference slope =
            ridders([&](double t) { return std::log(pure_saturation_T(m_, t).p); }, T, 0.002 * T);
        const double dS = m_.Sr(s.rhoV, T) - m_.Sr(s.rhoL, T) + std::log(s.rhoL / s.rhoV);
        survey_.same("saturation: Clausius–Clapeyron", at, R * dS / (1 / s.rhoV - 1 / s.rhoL) / s.p,
                     slope.value, 10 * slope.error + 1e-8 * std::abs(slope.value));
    }

    void threads() {
        const double alone = fingerprint();
        std::array<double, 4> found{};
        std::vector<std::thread> all;
        for (double& one : found)
            all.emplace_back([&one, this, alone] {
                one = alone;
                try {
                    for (int k = 0; k < 200 && one == alone; ++k) one = fingerprint();
                } catch (...) {
                    one = kNaN;
                }
            });
        for (std::thread& t : all) t.join();
        for (double one : found)
            survey_.holds("four threads find what one finds", {}, one == alone, "another number");
    }

    Model1& m_;
    double Tc_, rho_c_, low_, high_, top_;
    CheckRange::Stated stated_;
    double p_high_;  // the highest pressure that is stated, else a high one
    Survey survey_;
};
}  // namespace

CheckRange check_range(Fluid const& fluid) {
    CheckRange range;
    const ParameterNotes& notes = fluid.notes;
    const double Tc = fluid.model->Tcrit();
    if (notes.Tmin > 0.4 * Tc && notes.Tmin < Tc) range.T_low = notes.Tmin;
    if (notes.Tmin > 0.0) range.stated.T_min = notes.Tmin;
    if (notes.Tmax > 0.0) range.stated.T_max = notes.Tmax;
    if (notes.pmax > 0.0) range.stated.p_max = notes.pmax;
    return range;
}

std::vector<Check> check_equation(Model1& model, CheckRange const& range) {
    return PureChecks(model, range).run();
}

}  // namespace corvane
