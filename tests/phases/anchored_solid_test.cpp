// Solids anchored at their melting point: identities, published melting curves, eutectics, data.
#include "data/data_files.h"
#include "equilibria/phases.h"
#include "support/scratch.h"
#include "support/shipped.h"

#include <corvane/corvane.h>

#include <functional>

using corvane::AnchoredSolid;

namespace {
AnchoredSolid anchored(Model1& m) {
    try {
        m.solid.load();
    } catch (ThException const&) {  // no sublimation curve
    }
    return {m, corvane::load_fusion(m.name())};
}

// At the triple point solid, liquid and vapour are in equilibrium, and the enthalpies differ by the
// measured one; the slopes are those of the Gibbs energy everywhere: above the triple point, on the
// sublimation curve, beyond its end, and without one.
TEST(AnchoredSolid, HangsOnTheLiquidAndObeysThermodynamics) {
    for (auto const& [eos, name] :
         {std::pair{"PR", "water"}, {"SRK", "benzene"}, {"PCSAFT", "naphthalene"},
          {"MEOS", "carbon_dioxide"}, {"PR", "ethanol"}, {"MEOS", "methane"}}) {
        SCOPED_TRACE(testing::Message() << eos << " " << name);
        const Model m = load_set(eos, name);
        const AnchoredSolid s = anchored(*m);
        const double T_t = s.data().T, p_t = s.p_t();
        double liquid = 0, vapour = 0;
        EXPECT_NEAR(s.at(p_t, T_t).g, m->Ge(p_t, T_t, 1, liquid), 1e-10);
        EXPECT_NEAR(s.at(p_t, T_t).g, m->Ge(p_t, T_t, 3, vapour), 1e-8);  // of the saturation
        EXPECT_NEAR(s.enthalpy_of_fusion(p_t, T_t) / s.data().h, 1, 1e-6);
        EXPECT_NEAR(s.sublimation(T_t) / p_t, 1, 1e-7);
        if (s.data().dv != 0) {
            EXPECT_NEAR(1 / liquid - s.at(p_t, T_t).v, s.data().dv, 1e-9);
        }
        for (double t : {0.4, 0.7, 0.95, 1.05, 1.3})
            for (double p : {0.0, 50.0}) {
                const double T = t * T_t, h = 1e-4 * T;
                const auto g = [&](double dp, double dT) { return s.at(p + dp, T + dT, false).g; };
                const auto at = s.at(p, T);
                // The curve is a spline: its slope is differenced by 1 mK.
                EXPECT_NEAR((g(0, h) - g(0, -h)) / 2e-4, at.g_T, 3e-6 * std::fabs(at.g_T)) << T;
                EXPECT_NEAR((g(1, 0) - g(-1, 0)) / 2 * R * T / at.v, 1, 1e-5) << T;
            }
        if (s.sublimation_curve()) {  // no step at its end
            auto const& x = m->solid.sg[m->solid.sg.size() - 1].x;
            const double end = 1 / x[x.size() - 1];
            const auto below = s.at(0, end * (1 - 1e-9)), above = s.at(0, end * (1 + 1e-9));
            EXPECT_NEAR(below.g, above.g, 1e-6);
            EXPECT_NEAR(below.g_T / above.g_T, 1, 1e-6);
        }
        // Clausius and Clapeyron along the melting curve.
        const double T = s.melting(20), dT = s.melting(20.1) - s.melting(19.9);
        m->Ge(20, T, 1, liquid);
        EXPECT_NEAR(dT / 0.2 * s.enthalpy_of_fusion(20, T) / (T * (1 / liquid - s.at(20, T).v)), 1,
                    1e-4);
    }
}

// Melting temperatures at normal pressure, and the published melting-pressure equations at
// pressures between the two points that the data take from them: argon Tegeler et al. (1999),
// carbon dioxide Span & Wagner (1996), nitrogen Span et al. (2000), methane Setzmann & Wagner
// (1991), water IAPWS R14-08 (2011), benzene and cyclohexane Babb (1963). What is left is the
// curvature, which the liquid's compressibility gives: 0.7 K, but 1.4 K of 25 K for the plastic
// crystal of cyclohexane with SRK.
TEST(AnchoredSolid, MeltsWherePublishedEquationsSay) {
    const struct {
        char const* name;
        double normal;
        std::function<double(double)> p;  // of T/T_t
    } rows[] = {
        {"argon", 83.82,
         [](double t) {
             return .068891 * (1 - 7476.2665 * (std::pow(t, 1.05) - 1) +
                               9959.0613 * (std::pow(t, 1.275) - 1));
         }},
        {"carbon_dioxide", 0,
         [](double t) {
             return .51795 * (1 + 1955.539 * (t - 1) + 2055.4593 * (t - 1) * (t - 1));
         }},
        {"nitrogen", 63.17,
         [](double t) { return .012523 * (1 + 12798.61 * (std::pow(t, 1.78963) - 1)); }},
        {"methane", 90.71,
         [](double t) {
             return .011696 * (1 + 24756.8 * (std::pow(t, 1.85) - 1) -
                               7366.02 * (std::pow(t, 2.1) - 1));
         }},
        {"water", 273.15,
         [](double t) {
             return 611.657e-6 *
                    (1 + 1195393.37 * (1 - t * t * t) + 80818.3159 * (1 - std::pow(t, 25.75)) +
                     3338.2686 * (1 - std::pow(t, 103.75)));
         }},
        {"benzene", 278.68, [](double t) { return 357 * (std::pow(t, 2.6) - 1); }},
        {"cyclohexane", 279.5, [](double t) { return 383.4 * (std::pow(t, 1.41) - 1); }},
    };
    for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"})
        for (auto const& row : rows) {
            SCOPED_TRACE(testing::Message() << eos << " " << row.name);
            const Model m = load_set(eos, row.name);
            const AnchoredSolid s = anchored(*m);
            if (row.normal > 0) {
                EXPECT_NEAR(s.melting(0.101325), row.normal, 0.05);
            }
            for (double p : {10.0, 50.0, 100.0}) {
                const double T = s.melting(p), h = 0.01;
                const double slope = (row.p((T + h) / s.data().T) - row.p((T - h) / s.data().T)) /
                                     (2 * h);
                EXPECT_NEAR((p - row.p(T / s.data().T)) / slope, 0, p < 100 ? 1.4 : 0.03) << p;
            }
        }
}

// Every substance with data melts at its own temperature with every equation that has it.
TEST(AnchoredSolid, EverySubstanceMeltsWhereItDoes) {
    const auto lines = data::lines("CorvaneS/fusion.tsv");
    EXPECT_GE(lines.size(), 200u);
    int count = 0, volumes = 0;
    for (std::size_t k = 1; k < lines.size(); ++k) {
        const std::string name = data::split(lines[k], "\t").at(0);
        SCOPED_TRACE(name);
        const corvane::FusionData d = corvane::load_fusion(name);
        data::Substance const& s = data::substances().at(name);
        EXPECT_NEAR(d.T, s.Ttriple, 1e-6 * d.T);
        EXPECT_TRUE(d.h > 0.3 * R * d.T && d.h < 30 * R * d.T) << d.h;  // plastic crystals, chains
        for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"}) {
            if (!std::filesystem::exists(std::string("CorvaneS/parameters/") + eos + "/" + name +
                                         ";1"))
                continue;
            const Model m = load_set(eos, name);
            const AnchoredSolid solid = anchored(*m);
            if (solid.p_t() > 0.09) continue;  // no liquid at 0.1 MPa
            // 0.1 MPa raises it by 0.1·T·Δv/Δh; 3 % of T_t would be seen in any table.
            double rho = 0;
            m->Ge(0.1, d.T, 1, rho);
            const double rise = 0.1 * d.T * 0.2 / (rho * d.h);
            EXPECT_NEAR(solid.melting(0.1), d.T, 1.5 * rise + 0.01) << eos;
            EXPECT_NEAR(solid.enthalpy_of_fusion(0.1, d.T) / d.h, 1, 0.01) << eos;
            ++count;
            // The volume of melting, from the slope of a melting curve by Clapeyron's equation, is
            // that of a reference liquid less a solid's of another source, or the row is marked.
            if (eos == std::string("MEOS") && d.dv != 0.0 &&
                lines[k].find("no second figure") == std::string::npos) {
                EXPECT_GT(d.v, 0.0);
                EXPECT_NEAR((1 / rho - d.v) / d.dv, 1, 0.08);
                ++volumes;
            }
        }
    }
    EXPECT_GT(count, 500);
    EXPECT_GE(volumes, 5);
    EXPECT_EQ(th_code([] { corvane::load_fusion("helium"); }), th_no_solid);
}

TEST(AnchoredSolid, RefusesDamagedDataAndStatesOutOfRange) {
    const Model m = load_set("PR", "benzene");
    const AnchoredSolid s = anchored(*m);
    for (double T : {1.7 * s.data().T, 1.0, 0.0, std::nan("")})
        EXPECT_EQ(th_code([&] { s.at(1, T); }), th_out_of_range) << T;
    EXPECT_EQ(th_code([&] { s.at(std::nan(""), 270); }), th_out_of_range);
    EXPECT_EQ(th_code([&] { s.sublimation(1.01 * s.data().T); }), th_out_of_range);
    EXPECT_EQ(th_code([&] { s.melting(1e5); }), th_generic);
    corvane::FusionData hot = s.data();
    hot.T = 700;  // above the critical temperature
    EXPECT_EQ(th_code([&] { AnchoredSolid(*m, hot); }), th_no_density);
    const Scratch dir;
    EXPECT_EQ(th_code([] { corvane::load_fusion("a"); }), th_cannot_open);
    dir.write("CorvaneS/fusion.tsv",
              "name\tT\na\t300\t9000\t-\t-\t-\t-\t-\tsource\nb\t300\t9000\t-\t-\t-\t-\t-\nc\t300,"
              "5\t9000\t-\t-\t-\t-\t-\nd\t300\t-\t-\t-\t-\t-\t-\ne\t300\nf\t300\t9000\t-\t-\t-\t-"
              "\t301\ng\tnan\t9000\t-\t-\t-\t-\t-\n");
    EXPECT_EQ(corvane::load_fusion("a").h, 9000);
    EXPECT_EQ(corvane::load_fusion("b").T, 300);
    for (char const* name : {"c", "d", "e", "f", "g"})
        EXPECT_EQ(th_code([&] { corvane::load_fusion(name); }), th_cannot_open) << name;
}

// Eutectics: of a substance with itself at x = 1/2, and of benzene with cyclohexane and naphthalene
// near those of an ideal solution with the same enthalpies of fusion (Schroeder and van Laar), which
// is exact for the first; unlike molecules and heat capacities move the others, and the temperature
// of the second by 12 K.
TEST(AnchoredSolid, EutecticsAndFreezingPoints) {
    const struct {
        char const *first, *second;
        double kij, T, x, dT, dx;
    } rows[] = {{"benzene", "benzene", 0, 0, 0.5, 0, 1e-8},
                {"benzene", "cyclohexane", 0.0126, 0, 0.289, 0, 0.05},
                {"benzene", "naphthalene", 0, 269.6, 0.866, 2, 0.03}};
    for (auto const& r : rows) {
        SCOPED_TRACE(r.second);
        const Mixture m = peng_robinson(r.first, r.second, r.kij);
        const AnchoredSolid a = anchored(*m->mdl1[0]), b = anchored(*m->mdl1[1]);
        corvane::SolidFluidOptions o;
        o.anchored = {&a, &b};
        const auto e = corvane::eutectic(*m, 0.101325, o);
        EXPECT_TRUE(e.stable && e.certificate.holds());
        EXPECT_NEAR(e.x[0], r.x, r.dx);
        if (r.T > 0) {
            EXPECT_NEAR(e.T, r.T, r.dT);
        }
        for (int i : {0, 1})
            EXPECT_NEAR(m->my(e.rho * e.x, e.T, i), (i == 0 ? a : b).at(0.101325, e.T).g, 1e-9);
        // The first trace lowers the freezing point by x·R·T²/Δh: van 't Hoff.
        const auto line = corvane::solid_fluid_isobar(*m, 0, 0.101325, o).at(0).points;
        const double T = line[0].T;
        EXPECT_NEAR((T - line[1].T) / (line[1].x[1] * R * T * T / a.data().h), 1, 2e-3);
        // The same point from the composition's side.
        auto const& q = line[line.size() / 2];
        EXPECT_NEAR(corvane::solubility(*m, 0, 0.101325, q.T, o).x[0], q.x[0], 1e-9);
    }
}

// Both ways to a point: along the line from the pure component, and by a search at its temperature,
// which cold liquids, so stiff, must not make miss it.
TEST(AnchoredSolid, SolubilityIsThatOfTheLine) {
    const struct {
        char const *first, *second;
        int solid;
        double p;
    } cases[] = {{"methane", "propane", 0, 1},
                 {"methane", "propane", 1, 20},
                 {"methane", "ethane", 0, 0.2},
                 {"nitrogen", "methane", 1, 0.5}};
    for (auto const& c : cases) {
        const Mixture m = peng_robinson(c.first, c.second, 0.01);
        const AnchoredSolid a = anchored(*m->mdl1[0]), b = anchored(*m->mdl1[1]);
        corvane::SolidFluidOptions o;
        o.anchored = {&a, &b};
        const auto points = corvane::solid_fluid_isobar(*m, c.solid, c.p, o)[0].points;
        ASSERT_GT(points.size(), 5u) << c.first << c.second;
        for (std::size_t k = 1; k + 1 < points.size(); ++k) {
            const auto q = corvane::solubility(*m, c.solid, c.p, points[k].T, o);
            EXPECT_NEAR(q.x[0], points[k].x[0], 1e-8) << c.first << c.second << points[k].T;
        }
    }
}

// Next to a split of the fluid its potential has extrema, next to melting it is nearly that of the
// pure component: the solid dissolves there, too, and the more the hotter it is.
TEST(AnchoredSolid, SolubilityNextToASplitAndToMelting) {
    const Mixture m = peng_robinson("methanol", "cyclohexane", 0);
    const AnchoredSolid a = anchored(*m->mdl1[0]), b = anchored(*m->mdl1[1]);
    corvane::SolidFluidOptions o;
    o.anchored = {&a, &b};
    double last = 0;
    for (auto const& [p, T] : {std::pair(281.998, 272.0), {281.998, 273.0}, {281.998, 273.051024},
                               {281.998, 273.5}, {281.998, 274.0},
                               {10.0, b.melting(10) * (1 - 1e-9)}}) {
        SCOPED_TRACE(T);
        const auto q = corvane::solubility(*m, 1, p, T, o);
        EXPECT_NEAR(m->my(q.x * q.rho, T, 1), b.at(p, T, false).g, 1e-9);
        EXPECT_TRUE(corvane::stability(*m, p, T, q.x).stable);
        EXPECT_GT(q.x[1], last);
        last = q.x[1];
    }
    EXPECT_GT(last, 1 - 1e-6);
}
}  // namespace
