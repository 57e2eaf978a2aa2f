// Pure fluids, solids, ideal gases and viscosities in hostile states.
#include "hostile/report.h"
#include "support/shipped.h"

#include <corvane/binding/guarded_interface.h>
#include <corvane/corvane.h>

#include <vector>

namespace {
using Property = double (Model1::*)(double, double) const;
using StateProperty = double (Model1::*)(double, double, int, double&) const;

struct Round {
    Report& report;
    Dice& dice;
    Model1 const& m;
    double T, p, rho;

    bool ordinary() const {  // where equations are meant to answer
        return T > 0.3 * m.Tcrit() && T < 3 * m.Tcrit() && rho > 0 && rho < 3 / m.vcrit();
    }
    /// Near the data of the solid; below them its splines go on, at 0 K to anything.
    bool solid() const {
        return m.solid.sg.size() > 0 && T > 0.3 * m.solid.Ttrp() && T < m.solid.Tmax();
    }
    double pressure(double at) const { return m.Z(at, T) * R * T * at; }
    double slope(double at) const {
        const double h = 1e-5 * at;
        return (pressure(at + h) - pressure(at - h)) / (2 * h);
    }
    /// Of the pressure of a dense fluid, whose terms are as large as the residual energy says.
    double noise(double at) const { return 1e-10 * at * R * T * (1 + std::fabs(m.Ar(at, T))); }
    /// p(at) = p, to the rounding of a liquid's pressure, and not between the spinodals.
    void expect_root(double at) const {
        const double found = pressure(at);
        report.expect(at > 0 && std::isfinite(at) &&
                          std::fabs(found - p) <= 1e-6 * std::fabs(p) + noise(at),
                      "rho %.17g has p %.17g", at, found);
        report.expect(slope(at) > -1e-6 * R * T, "rho %.17g: slope %.6g", at, slope(at));
    }

    void at_density() const {
        double a = NAN, z = NAN;
        const bool known =
            report.answers("Model1::Ar", [&] { a = m.Ar(rho, T); }) &
            report.answers("Model1::Z", [&] { z = m.Z(rho, T); });
        const bool finite = known && std::isfinite(a) && std::isfinite(z);
        const bool past_the_end = rho > 0 && !std::isfinite(a);
        double value[13];
        static constexpr struct {
            char const* name;
            Property f;
        } list[] = {{"Model1::Gr", &Model1::Gr},         {"Model1::Hr", &Model1::Hr},
                    {"Model1::Ur", &Model1::Ur},         {"Model1::Sr", &Model1::Sr},
                    {"Model1::CVr", &Model1::CVr},       {"Model1::Cpr", &Model1::Cpr},
                    {"Model1::betaV", &Model1::betaV},   {"Model1::pV", &Model1::pV},
                    {"Model1::kappaT", &Model1::kappaT}, {"Model1::alphap", &Model1::alphap},
                    {"Model1::Cpm", &Model1::Cpm},       {"Model1::Gm", &Model1::Gm},
                    {"Model1::Sm", &Model1::Sm}};
        for (int k = 0; k < 13; ++k) {
            value[k] = NAN;
            Property const f = list[k].f;  // captured, GCC's sanitizer misreads the table
            if (report.answers(list[k].name, [&] { value[k] = (m.*f)(rho, T); }))
                report.expect(!past_the_end || !std::isfinite(value[k]),
                              "%.6g, where Ar %.6g, Z %.6g", value[k], a, z);
        }
        auto const [Gr, Hr, Ur, Sr, CVr, Cpr, PT, Prho, kappa, alpha, Cpm, Gm, Sm] = value;
        if (!finite || !ordinary()) return;
        const double scale = std::fabs(a) + std::fabs(z) + 1;
        const auto same = [&](char const* what, double x, double y, double tolerance) {
            if (std::isfinite(x) && std::isfinite(y))
                report.expect(near(x, y, tolerance, scale), "%s: %.12g and %.12g", what, x, y);
        };
        same("Gr", Gr, a + z - 1, 1e-10);
        same("Hr", Hr, Ur + z - 1, 1e-8);
        same("Sr", Sr, Ur - a, 1e-8);
        same("Cpr", Cpr * Prho, (CVr - 1) * Prho + PT * PT, 1e-6 * (1 + std::fabs(PT * PT)));
        same("kappaT", kappa * Prho, 1, 1e-8);
        same("alphap", alpha * Prho, PT, 1e-8);
        // A second method: plain differences.
        const double h = 1e-4 * T, k = 1e-4 * rho;
        const double dT = (m.Z(rho, T + h) * (T + h) - m.Z(rho, T - h) * (T - h)) / (2 * h);
        const double dr = (m.Z(rho + k, T) * (rho + k) - m.Z(rho - k, T) * (rho - k)) / (2 * k);
        const double dA = -T * (m.Ar(rho, T + h) - m.Ar(rho, T - h)) / (2 * h);
        same("betaV by differences", PT, dT, 1e-3);
        same("pV by differences", Prho, dr, 1e-3);
        same("Ur by differences", Ur, dA, 1e-3);
    }

    void at_pressure() const {
        for (int phase : {1, 2, 3}) {
            double r1 = dice.one_in(2) ? 0.0 : rho, r2 = r1;
            int n = 0;
            if (report.answers("Model1::vcalc", [&] { n = m.vcalc(p, T, phase, r1, r2); })) {
                report.expect(n >= 0 && n <= 3, "count %d", n);
                if (n > 0) expect_root(r1);
                if (n == 3) expect_root(r2);
            }
            static constexpr struct {
                char const* name;
                StateProperty state;
                Property f;
            } list[] = {{"Model1::Cpm(p)", &Model1::Cpm, &Model1::Cpm},
                        {"Model1::Gr(p)", &Model1::Gr, &Model1::Gr},
                        {"Model1::Hm(p)", &Model1::Hm, &Model1::Hm},
                        {"Model1::kappaT(p)", &Model1::kappaT, &Model1::kappaT},
                        {"Model1::Sm(p)", &Model1::Sm, &Model1::Sm}};
            auto const& [name, state, f] = list[dice.below(std::size(list))];
            double at = 0.0, value = 0.0;
            if (report.answers(name, [&] { value = (m.*state)(p, T, phase, at); })) {
                expect_root(at);
                report.expect(value == (m.*f)(at, T), "%.17g is not that of rho %.17g", value, at);
            }
        }
        double v = 0.0;
        if (report.answers("Model1::Vm", [&] { v = m.Vm(p, T, 2); })) expect_root(1 / v);
    }

    void expect_coexistence(double Ts, double ps, double rhoL, double rhoV) const {
        const auto g = [&](double at) { return m.Ar(at, Ts) + m.Z(at, Ts) - 1 + std::log(at); };
        const auto ratio = [&](double at) { return m.Z(at, Ts) * R * Ts * at; };
        report.expect(rhoL > rhoV && rhoV > 0, "T %.17g, p %.17g: densities %.17g, %.17g", Ts, ps,
                      rhoL, rhoV);
        report.expect(near(ratio(rhoV), ps, 1e-8) &&
                          std::fabs(ratio(rhoL) - ps) <= 1e-8 * ps + 1e-10 * rhoL * R * Ts,
                      "T %.17g, p %.17g: pressures %.17g, %.17g", Ts, ps, ratio(rhoL), ratio(rhoV));
        // What the rounding of p in the liquid does to its potential is left out.
        const double gL = g(rhoL) + (ps - ratio(rhoL)) / (rhoL * R * Ts);
        report.expect(near(gL, g(rhoV), 1e-8, 1), "T %.17g, p %.17g: potentials %.17g, %.17g", Ts,
                      ps, gL, g(rhoV));
    }

    void saturation() const {
        const int cont = dice.below(2);
        double ps = 0, Ts = 0, rhoL = 0, rhoV = 0, again = 0;
        if (report.answers("vle1_T", [&] { vle1_T(&m, T, cont, ps, rhoL, rhoV); }))
            expect_coexistence(T, ps, rhoL, rhoV);
        if (report.answers("vle1_p", [&] { vle1_p(&m, p, cont, Ts, rhoL, rhoV); }))
            expect_coexistence(Ts, p, rhoL, rhoV);
        double difference = 0;
        if (report.answers("maxwell", [&] { difference = maxwell(&m, p, T, rhoL, rhoV); })) {
            expect_root(rhoL);
            expect_root(rhoV);
            report.expect(std::isfinite(difference), "%g", difference);
        }
        corvane::SaturationMarch fresh;
        if (report.answers("Saturation::at_T", [&] { fresh.at_T(&m, T, 0, ps, rhoL, rhoV); })) {
            expect_coexistence(T, ps, rhoL, rhoV);
            CorvaneError error;
            report.answers("Corvane_vle1_T", [&] {
                Corvane_vle1_T(const_cast<Model1*>(&m), T, 0, &again, &rhoL, &rhoV, &error);
            });
            report.expect(error.kind == CORVANE_OK && near(again, ps, 1e-9), "%d, %.17g for %.17g",
                          error.kind, again, ps);
        }
    }

    void volumes() const {
        const double d = dice.or_absurd(dice.uniform(0.2, 0.4) * m.vcrit());
        const double vmin = dice.or_absurd(dice.uniform(0.25, 0.35) * m.vcrit());
        const auto detail = [&](char const* name, double at) {
            const double found = pressure(at);
            report.expect(at > 0 && std::isfinite(at) &&
                              std::fabs(found - p) <= 1e-6 * std::fabs(p) + 1e-8 * at * R * T,
                          "%s, d %.17g, vmin %.17g: rho %.17g has p %.17g", name, d, vmin, at,
                          found);
        };
        Vector<double> roots(dice.below(5));
        int n = 0;
        if (report.answers("volume", [&] { n = volume(&m, 0, p, T, nullptr, d, roots); })) {
            report.expect(n == 0 || n == 1 || n == 3, "count %d", n);
            for (int k = 0; n > 0 && k < 3; ++k) detail("volume", roots[k]);
        }
        double r1 = dice.or_absurd(rho), r2 = r1, before = r1;
        const double start = r1;
        if (report.answers("volav", [&] { n = volav(&m, 0, p, T, nullptr, d, r1); }) && n == 1 &&
            d > 0.1 * m.vcrit() && r1 * d > 1e-8) {
            // 1e-9 of 1/d, and ideal below 4e-5 of it.
            const double excess = std::fabs(pressure(r1) - p), y = r1 * d;
            const double ideal = y < 5e-5 ? std::fabs(m.Z(r1, T) - 1) * R * T * r1 : 0.0;
            report.expect(excess <= 1e-6 * std::fabs(p) + 3e-9 / d * std::fabs(slope(r1)) +
                                        2 * ideal + 1e-8 * r1 * R * T,
                          "d %.17g, from %.17g: rho %.17g has p %.17g", d, start, r1, pressure(r1));
        }
        CorvaneError error;
        r1 = start;
        if (report.answers("Corvane_volav", [&] {
                n = Corvane_volav(const_cast<Model1*>(&m), 0, p, T, nullptr, d, &r1, &error);
            }) &&
            n == 1)
            report.expect(std::fabs(pressure(r1) - p) <= 1e-3 * std::fabs(p) + 1e-7 * r1 * R * T,
                          "d %.17g, from %.17g: rho %.17g has p %.17g", d, start, r1, pressure(r1));
        bool found = false;
        r1 = start;
        if (report.answers("volnewt", [&] { found = volnewt(&m, 0, p, T, nullptr, d, r1); })) {
            if (found)
                detail("volnewt", r1);
            else
                report.expect(std::isnan(before) || r1 == before, "rho %.17g written", r1);
        }
        r1 = r2 = -1;
        if (report.answers("volf1", [&] { n = volf1(&m, p, T, vmin, r1, r2); })) {
            if (n > 0) detail("volf1", r1);
            if (n > 1) detail("volf1", r2);
        }
    }

    void others() const {
        double value = 0;
        if (report.answers("Model1::crit", [&] { value = m.crit(T, rho, p)[0]; }))
            report.expect(std::isfinite(value) || !ordinary() || !std::isfinite(p), "%g", value);
        if (report.answers("Model1::B", [&] { value = m.B(T, 2 + dice.below(4)); }))
            report.expect(std::isfinite(value) || !ordinary(), "%g", value);
        if (report.answers("Model1::xrho", [&] { value = m.xrho(T, 1 + 2 * dice.below(2)); }))
            report.expect(std::isfinite(value) || !(T > 0), "%g", value);
        report.answers("Model1::off", [&] { m.off(rho, T); });
        double h = 0, s = 0, g = 0;
        if (report.answers("Ideal::Hm", [&] { h = m.ideal.Hm(T); }) &
            report.answers("Ideal::Sm", [&] { s = m.ideal.Sm(T); }) &
            report.answers("Ideal::Gm", [&] { g = m.ideal.Gm(T); }))
            if (T > 1 && T < 1e4)
                report.expect(near(g, h - s, 1e-10, std::fabs(s)), "%.17g, %.17g, %.17g", g, h, s);
        report.answers("Ideal::interval", [&] { m.ideal.interval(T); });
        double at = 0.0, pr = 0, pa = 0;
        if (report.answers("Visco::eta0", [&] { value = m.visco.eta0(T); }))
            report.expect(value > 0 || !ordinary(), "%g", value);
        if (report.answers("Visco::eta", [&] { value = m.visco.eta(rho, T, pr, pa); }))
            report.expect(!ordinary() || std::isfinite(value), "%g", value);
        int i = -1;
        double ge = 0, v = 0, ps = 0, kappa = 0, he = 0, se = 0;
        if (report.answers("Solid::sge", [&] { m.solid.sge(T, i, ps, v, kappa); }))
            report.expect(!solid() || (ps >= 0 && v > 0), "psub %g, v %g", ps, v);
        if (report.answers("Solid::Ge", [&] { ge = m.solid.Ge(p, T, i, at); })) {
            report.expect(!solid() || !(p > 0 && p < 1e4) || (at > 0 && std::isfinite(ge)),
                          "%g, rho %g", ge, at);
            if (report.answers("Solid::He", [&] { he = m.solid.He(p, T); }) &
                    report.answers("Solid::Se", [&] { se = m.solid.Se(p, T); }) &&
                std::isfinite(he) && solid())
                report.expect(near(ge, he - se, 1e-6, std::fabs(se)), "%.17g, %.17g, %.17g", ge, he,
                              se);
        }
        for (auto f : {&Solid::Hm, &Solid::Um, &Solid::Sm, &Solid::d, &Solid::Vm})
            report.answers("Solid", [&] { (m.solid.*f)(p, T); });
        CorvaneError error;  // the flat way refuses alike
        for (auto f : {Corvane_Model1_Ar, Corvane_Model1_Am, Corvane_Model1_Um, Corvane_Model1_Z})
            report.answers("Corvane_Model1", [&] { f(const_cast<Model1*>(&m), rho, T, &error); });
        report.answers("Corvane_volume", [&] {
            Corvane_volume(const_cast<Model1*>(&m), 0, p, T, nullptr, 1 / rho, nullptr, &error);
        });
        report.expect(error.kind == CORVANE_NULL_ARGUMENT, "null vector: kind %d", error.kind);
    }
};
}  // namespace

void hostile_pure(Report& report, Dice& dice, long rounds) {
    std::vector<Model> models;
    std::vector<std::string> labels;
    for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"})
        for (char const* name : {"methane", "carbon_dioxide", "water", "butane", "argon"}) {
            models.push_back(load_set(eos, name));
            labels.push_back(std::string(eos) + " " + name);
            Model1& m = *models.back();
            m.ideal.load();
            for (auto load : {+[](Model1& f) { f.solid.load(); }, +[](Model1& f) { f.visco.load0(); },
                              +[](Model1& f) { f.visco.load1(f.eos()); }})
                try {
                    load(m);
                } catch (ThException const&) {  // no such data: its functions refuse
                }
        }
    for (long k = 0; k < rounds; ++k) {
        const auto at = static_cast<unsigned>(dice.below(static_cast<int>(models.size())));
        Model1 const& m = *models[at];
        const double T = dice.or_absurd(m.Tcrit() * dice.decades(-0.7, 0.5));
        const double p = dice.or_absurd(m.pcrit() * dice.decades(-9, 3));
        const double rho = dice.or_absurd(dice.decades(-8, 0.6) / m.vcrit());
        report.state = text("%s T %.17g p %.17g rho %.17g", labels[at].c_str(), T, p, rho);
        const Round round{report, dice, m, T, p, rho};
        round.at_density();
        round.at_pressure();
        round.saturation();
        round.volumes();
        round.others();
    }
}
