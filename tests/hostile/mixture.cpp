// Mixtures and their equilibria in hostile states.
#include "hostile/report.h"
#include "support/mixtures.h"

#include <corvane/binding/guarded_interface.h>
#include <corvane/corvane.h>

#include <vector>

namespace {
Vector<double> pair_of(double x0) {
    return vec({x0, 1 - x0});
}

struct Round {
    Report& report;
    Dice& dice;
    ModelN const& m;
    double T, p, rho;
    Vector<double> x;

    bool is_mixture() const { return x[0] >= 0 && x[0] <= 1; }
    bool ordinary() const {
        double Tc = 0, vc = 0;
        for (int i : {0, 1}) {
            Tc += x[i] * m.mdl1[i]->Tcrit();
            vc += x[i] * m.mdl1[i]->vcrit();
        }
        return T > 0.3 * Tc && T < 3 * Tc && rho > 0 && rho * vc < 3 && is_mixture();
    }
    double pressure(Vector<double> const& rho_i, double at) const {
        const double sum = std::max(rho_i.sum(), 1e-290);
        return m.Z(sum, at, rho_i * (1 / sum)) * R * at * sum;
    }
    /// Chemical potential by differences of rho·Ar, which shares nothing with the solvers.
    double potential(Vector<double> const& rho_i, double at, int i) const {
        const double total = rho_i.sum();
        const double h = std::clamp(0.05 * rho_i[i], 1e-9 * total, 1e-4 * total);
        const auto a = [&](double step) {
            Vector<double> n = rho_i;
            n[i] += step;
            const double sum = n.sum();
            return sum * m.Ar(sum, at, n * (1 / sum));
        };
        const double slope = rho_i[i] < 2 * h
                                 ? (-11 * a(0) + 18 * a(h) - 9 * a(2 * h) + 2 * a(3 * h)) / (6 * h)
                                 : (8 * (a(h) - a(-h)) - (a(2 * h) - a(-2 * h))) / (12 * h);
        return slope + std::log(rho_i[i]);
    }
    void expect_root(double at, Vector<double> const& z) const {
        if (!is_mixture()) return;  // anything
        const Vector<double> rho_i = z * at;
        const double found = pressure(rho_i, T), h = 1e-5;
        const double noise = 1e-10 * at * R * T * (1 + std::fabs(m.Ar(at, T, z)));
        report.expect(at > 0 && std::fabs(found - p) <= 1e-6 * std::fabs(p) + noise,
                      "rho %.17g has p %.17g", at, found);
        const double slope =
            (pressure(rho_i * (1 + h), T) - pressure(rho_i * (1 - h), T)) / (2 * h);
        report.expect(slope > -1e-6 * R * T * at, "rho %.17g: slope %.6g", at, slope);
    }
    /// Two phases at at, which must have the pressure ps and equal potentials.
    void expect_equilibrium(double at, double ps, Vector<double> const& a, Vector<double> const& b,
                            double tolerance) const {
        if (at < 0.2 * std::min(m.mdl1[0]->Tcrit(), m.mdl1[1]->Tcrit())) return;  // 1e9 J/mol apart
        double dmu = 0, largest = 10;
        for (int i : {0, 1})
            // Of component 1 the compositions keep what 1 − x leaves of it.
            if (i == 0 ? a[0] > 0 || b[0] > 0 : std::min(a[1] / a.sum(), b[1] / b.sum()) > 1e-9)
            {
                const double mu = potential(a, at, i);
                largest = std::max(largest, std::fabs(mu));
                dmu = std::max(dmu, std::fabs(mu - potential(b, at, i)));
            }
        const double pa = pressure(a, at), pb = pressure(b, at);
        const auto off = [&](double q, double r) {
            return !(std::fabs(q - ps) <= 1e-4 * ps + 1e-5 * R * at * r * 1e-4);
        };
        report.expect(ps > 0 && dmu <= tolerance * largest / 10 && !off(pa, a.sum()) && !off(pb, b.sum()),
                      "T %.17g p %.17g: (%.17g, %.17g), (%.17g, %.17g): pressures %.9g, %.9g, dmu %.3g",
                      at, ps, a[0], a[1], b[0], b[1], pa, pb, dmu);
    }

    void at_density() const {
        double a = NAN, z = NAN;
        const bool known = report.answers("ModelN::Ar", [&] { a = m.Ar(rho, T, x); }) &
                           report.answers("ModelN::Z", [&] { z = m.Z(rho, T, x); });
        const bool finite = known && std::isfinite(a) && std::isfinite(z);
        const bool past_the_end = rho > 0 && T > 0 && !std::isfinite(a);
        using Property = double (ModelN::*)(double, double, Vector<double> const&) const;
        static constexpr struct {
            char const* name;
            Property f;
        } list[] = {{"ModelN::Gr", &ModelN::Gr},         {"ModelN::Hr", &ModelN::Hr},
                    {"ModelN::Ur", &ModelN::Ur},         {"ModelN::Sr", &ModelN::Sr},
                    {"ModelN::betaV", &ModelN::betaV},   {"ModelN::pV", &ModelN::pV},
                    {"ModelN::kappaT", &ModelN::kappaT}, {"ModelN::alphap", &ModelN::alphap},
                    {"ModelN::CVr", &ModelN::CVr},       {"ModelN::Cpm", &ModelN::Cpm},
                    {"ModelN::Sm", &ModelN::Sm}};
        double value[11];
        for (int k = 0; k < 11; ++k) {
            value[k] = NAN;
            Property const f = list[k].f;  // captured, GCC's sanitizer misreads the table
            if (report.answers(list[k].name, [&] { value[k] = (m.*f)(rho, T, x); }) &&
                is_mixture())
                report.expect(!past_the_end || !std::isfinite(value[k]), "%.6g, where Ar %.6g, Z %.6g",
                              value[k], a, z);
        }
        const Vector<double> rho_i = x * rho;
        double mu[2] = {NAN, NAN}, h01 = NAN, h10 = NAN;
        for (int i : {0, 1})
            if (report.answers("ModelN::myr", [&] { mu[i] = m.myr(rho_i, T, i); }) && is_mixture())
                report.expect(!past_the_end || !std::isfinite(mu[i]), "%.6g, where Ar %.6g, Z %.6g", mu[i],
                              a, z);
        if (report.answers("ModelN::PsiH", [&] {
                const Matrix<double> H = m.PsiH(rho_i, T);
                h01 = H[0][1];
                h10 = H[1][0];
            }))
            if (std::isfinite(h01)) report.expect(near(h01, h10, 1e-6), "%g, %g", h01, h10);
        if (!finite || !ordinary()) return;
        auto const& [Gr, Hr, Ur, Sr, PT, Prho, kappa, alpha, CVr, Cpm, Sm] = value;
        const double scale = std::fabs(a) + std::fabs(z) + 1;
        const auto same = [&](char const* what, double u, double v, double tolerance) {
            if (std::isfinite(u) && std::isfinite(v))
                report.expect(near(u, v, tolerance, scale), "%s: %.12g and %.12g", what, u, v);
        };
        same("Gr", Gr, a + z - 1, 1e-10);
        same("Hr", Hr, Ur + z - 1, 1e-8);
        same("Sr", Sr, Ur - a, 1e-8);
        same("kappaT", kappa * Prho, 1, 1e-8);
        same("alphap", alpha * Prho, PT, 1e-8);
        same("sum of potentials", x[0] * mu[0] + x[1] * mu[1], Gr, 1e-7);
        for (int i : {0, 1})
            if (rho_i[i] > 0)
                same("myr by differences", mu[i], potential(rho_i, T, i) - std::log(rho_i[i]), 1e-3);
    }

    void at_pressure() const {
        for (int phase : {1, 2, 3}) {
            double r1 = 0.0, r2 = 0.0, value = 0;
            int n = 0;
            if (report.answers("ModelN::vcalc", [&] { n = m.vcalc(p, T, x, phase, r1, r2); })) {
                report.expect(n >= 0 && n <= 3, "count %d", n);
                if (n > 0) expect_root(r1, x);
                if (n == 3) expect_root(r2, x);
            }
            double at = 0.0;
            if (report.answers("ModelN::Gr(p)", [&] { value = m.Gr(p, T, x, phase, at); })) {
                expect_root(at, x);
                report.expect(value == m.Gr(at, T, x), "%.17g is not that of rho %.17g", value, at);
            }
            at = 0.0;
            if (report.answers("ModelN::Cpm(p)", [&] { value = m.Cpm(p, T, x, phase, at); }))
                expect_root(at, x);
        }
        Vector<double> roots(3);
        int n = 0;
        const double d = dice.uniform(0.2, 0.4) * m.mdl1[1]->vcrit();
        if (report.answers("volume of mixtures", [&] { n = volume(&m, 1, p, T, &x, d, roots); }) &&
            is_mixture())
            for (int k = 0; n > 0 && k < 3 && roots[k] > 1e-290; ++k) {
                const double found = pressure(x * roots[k], T);
                report.expect(std::fabs(found - p) <= 1e-6 * std::fabs(p) + 1e-8 * roots[k] * R * T,
                              "d %.17g: rho %.17g has p %.17g", d, roots[k], found);
            }
    }

    /// Bubble and dew points from Wilson's estimates, spoiled.
    void bubble_and_dew() const {
        const bool dew = dice.one_in(2);
        Vector<double> K(2), second(2);
        for (int i : {0, 1}) {
            Model1 const& c = *m.mdl1[i];
            K[i] = c.pcrit() / p * std::exp(5.373 * (1 + c.omega()) * (1 - c.Tcrit() / T));
            second[i] = dew ? x[i] / K[i] : x[i] * K[i];
        }
        const double sum = second.sum();
        double ps = dew ? p / sum : p * sum, liquid = 0, unused = 0;
        const Vector<double> y = second * (1 / sum);
        if (!(std::isfinite(ps) && ps > 0)) return;
        if (!report.answers("vcalc of a start", [&] {
                if (m.vcalc(ps, T, dew ? y : x, 1, liquid, unused) == 0) throw ThException(9);
            }))
            return;
        const double spoil = dice.decades(-0.5, 0.5);
        const double gas = spoil * ps / (R * T);
        double r1 = dice.or_absurd(dew ? gas : liquid);
        Vector<double> r2 = y * (dew ? liquid : gas);
        if (dice.one_in(10)) r2 = vec({dice.decades(-6, -1.5), dice.decades(-6, -1.5)});
        const double start1 = r1;
        const Vector<double> start2 = r2;
        report.state += text(" rho1 %.17g rho2 %.17g %.17g", r1, r2[0], r2[1]);
        double at = T * dice.uniform(0.9, 1.1), found = -1;
        if (report.answers("vleN_T", [&] { vleN_T(&m, T, x, found, r1, r2); }))
            expect_equilibrium(T, found, x * r1, r2, 1e-4);
        const double found_T = found;
        r1 = start1;
        r2 = start2;
        report.state += text(" start T %.17g", at);
        if (report.answers("vleN_p", [&] { vleN_p(&m, p, x, at, r1, r2); }))
            expect_equilibrium(at, p, x * r1, r2, 1e-4);
        CorvaneError error{};
        r1 = start1;
        r2 = start2;
        found = -1;
        Corvane_vleN_T(const_cast<ModelN*>(&m), T, const_cast<Vector<double>*>(&x), &found, &r1, &r2,
                       &error);
        if (error.kind == CORVANE_OK) report.expect(found == found_T, "flat %.17g", found);
    }

    void splits() const {
        Vector<double> z(2), r(2);
        if (report.answers("ffinit", [&] { z = ffinit(&m, p, T); }))
            report.expect(z[0] >= 0 && z[0] < z[1] && z[1] <= 1, "%.17g, %.17g", z[0], z[1]);
        const bool given = dice.one_in(2);
        Vector<double> start = given ? vec({dice.uniform(0, 1), dice.uniform(0, 1)}) : z;
        z = start;
        if (report.answers("equil2", [&] { equil2(&m, p, T, z, r); }))
            expect_equilibrium(T, p, pair_of(z[0]) * r[0], pair_of(z[1]) * r[1], 1e-4);
        z = start;
        Vector<phdesc> ph(2);
        for (int k : {0, 1}) ph[k].phase = -1;
        CorvaneError error{};
        report.answers("Corvane_equil_min", [&] {
            Corvane_equil_min(const_cast<ModelN*>(&m), p, T, &ph, &z, &error);
        });
        if (error.kind == CORVANE_OK && (z[0] != start[0] || z[1] != start[1])) {
            double ra = 0, rb = 0;
            m.Gr(p, T, pair_of(z[0]), 2, ra);
            m.Gr(p, T, pair_of(z[1]), 2, rb);
            report.expect(std::fabs(z[0] - z[1]) > 1e-4, "trivial: %.17g, %.17g", z[0], z[1]);
            if (z[0] > 1e-5 && z[0] < 1 - 1e-5 && z[1] > 1e-5 && z[1] < 1 - 1e-5)
                expect_equilibrium(T, p, pair_of(z[0]) * ra, pair_of(z[1]) * rb, 1e-3);
        }
        int form = 0;
        const int s = dice.below(2), phase = 1 + dice.below(3);
        z = vec({1.0 - s, -1});
        if (report.answers("equil2s", [&] { equil2s(&m, p, T, z, phase, 0, r, form); })) {
            const Vector<double> fluid = pair_of(z[1]) * r[1];
            double g = 0, again = 0;
            g = m.mdl1[s]->solid.Ge(p, T, form, again);
            if (z[1] > 1e-12 && z[1] < 1 - 1e-9 && p < 1e6)  // above, differences are too coarse
                // Differences leave nine digits of a potential: at 1 K, where rho·Ar is 6.5e6, its
                // rounding over a step of 1e-4 rho is 3e-4; larger steps err by their fourth power,
                // smaller ones by more rounding, while exact derivatives meet the solid to 3e-7.
                report.expect(std::fabs(potential(fluid, T, s) - g) < 1e-3 + 1e-9 * std::fabs(g),
                              "solid %d, phase %d: x %.17g rho %.17g: mu %.12g, solid %.12g", s,
                              phase, z[1], r[1], potential(fluid, T, s), g);
        }
        if (!dice.one_in(10)) return;
        Matrix<double> line;
        Vector<double> at(x);
        double step = dice.one_in(2) ? 0.0 : dice.uniform(-0.2, 0.2);
        if (dice.one_in(2)) {
            line.size(1, 4);
            line[0][1] = T;
            line[0][2] = rho;
        }
        if (report.answers("crit_slope_x", [&] { crit_slope_x(&m, at, step, line); })) {
            report.expect(step != 0 || line.rows() > 1 || line[0][3] > 0, "p %.17g", line[0][3]);
            for (int k = 0; k < line.rows(); ++k) {
                Vector<double> const& q = line[k];
                report.expect(near(pressure(pair_of(q[0]) * q[2], q[1]), q[3], 1e-9, 1e-6),
                              "row %d: x %.17g T %.17g rho %.17g p %.17g", k, q[0], q[1], q[2],
                              q[3]);
                if (!(q[0] > 1e-3 && q[0] < 1 - 1e-3)) continue;
                const Matrix<double> H = m.PsiH(pair_of(q[0]) * q[2], q[1]);
                const double det = H[0][0] * H[1][1] - H[0][1] * H[1][0];
                report.expect(std::fabs(det) <= 1e-3 * H[0][0] * H[1][1],
                              "row %d: x %.17g T %.17g rho %.17g: determinant %.3g", k, q[0], q[1],
                              q[2], det / (H[0][0] * H[1][1]));
            }
        }
    }
};
}  // namespace

void hostile_mixture(Report& report, Dice& dice, long rounds) {
    static constexpr char const* pairs[][2] = {{"methane", "propane"},
                                               {"carbon_dioxide", "methane"},
                                               {"butane", "water"},
                                               {"nitrogen", "methane"},
                                               {"carbon_dioxide", "decane"}};
    std::vector<Mixture> models;
    std::vector<std::string> labels;
    for (auto const& [eos, mth] :
         {std::pair{"PR", "vdW1"}, {"SRK", "vdW1"}, {"PCSAFT", "LB"}, {"MEOS", "GERG"}})
        for (auto const& [first, second] : pairs) {
            models.push_back(mixture_of(eos, mth, {first, second}));
            labels.push_back(text("%s %s+%s", eos, first, second));
            for (int i : {0, 1}) try {
                    models.back()->mdl1[i]->solid.load();
                } catch (ThException const&) {  // no such data
                }
        }
    for (long k = 0; k < rounds; ++k) {
        const auto at = static_cast<unsigned>(dice.below(static_cast<int>(models.size())));
        ModelN const& m = *models[at];
        const double x0 = dice.one_in(3)   ? dice.decades(-8, 0)
                          : dice.one_in(3) ? 1 - dice.decades(-8, 0)
                                           : dice.uniform(0, 1);
        const Vector<double> x = pair_of(dice.one_in(100) ? dice.absurd() : x0);
        const double Tc = m.mdl1[dice.below(2)]->Tcrit();
        const double T = dice.or_absurd(Tc * dice.decades(-0.5, 0.2));
        const double p = dice.or_absurd(dice.decades(-7, 2.5));
        const double rho = dice.or_absurd(dice.decades(-7, 0.6) / m.mdl1[1]->vcrit());
        report.state = text("%s x %.17g T %.17g p %.17g rho %.17g", labels[at].c_str(), x[0], T, p,
                            rho);
        const Round round{report, dice, m, T, p, rho, x};
        round.at_density();
        round.at_pressure();
        round.splits();
        round.bubble_and_dew();
    }
}
