// Peng–Robinson and Soave–Redlich–Kwong through their plug-ins.
#include "cubic_reference.h"
#include "model_text.h"

#include <corvane/equilibria/ffe1core.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace {
using reference::Big;
constexpr double kEps = std::numeric_limits<double>::epsilon();

// Propane with round numbers: Tc = 370 K, b = 56 cm³/mol, omega = 0.15.
const std::string kPropane = "M: 44\nTs: 370\nvs: 56\nomega: 0.15\n";
const std::string kTwu = kPropane + "alpha: 1\nL: 0.7455\nMtwu: 0.9133\nNtwu: 0.761\nc: -3.735\n";

struct Case {
    char const* name;
    char const* eos;
    std::string section;
    reference::Cubic ref;
};
/// Slopes m(0.15): Peng & Robinson (1976), Soave (1972), Graboski & Daubert (1978).
std::array<Case, 5> cases() {
    auto cubic = [](bool pr, double m) {
        return reference::Cubic{pr ? 2.0 : 1.0,
                                pr ? -1.0 : 0.0,
                                pr ? reference::pr_y_c() : reference::srk_y_c(),
                                370,
                                56,
                                m};
    };
    std::array<Case, 5> all{
        {{"PR", "PR", kPropane, cubic(true, 0.5999058)},
         {"PR, Twu, translated", "PR", kTwu, cubic(true, 0)},
         {"SRK", "SRK", kPropane, cubic(false, 0.71214)},
         {"SRK, Graboski", "SRK", kPropane + "alpha: 2\n", cubic(false, 0.714323575)},
         {"SRK, translated", "SRK", kPropane + "c: 4.5\n", cubic(false, 0.71214)}}};
    all[1].ref.twu = true;
    all[1].ref.L = 0.7455;
    all[1].ref.M = 0.9133;
    all[1].ref.N = 0.761;
    all[1].ref.c = -3.735;
    all[4].ref.c = 4.5;
    return all;
}

double rel(double x, Big const& exact) {
    return static_cast<double>(abs((x - exact) / exact));
}

TEST(Cubic, HelmholtzEnergyAndItsDerivativesAreThoseOfThePublishedForm) {
    for (Case const& c : cases()) {
        const Plugin model = model_from(c.eos, c.section);
        for (double T : {90.0, 260.0, 370.0, 900.0, 4000.0})
            for (double rho : {1e-12, 1e-6, 1e-3, 0.005, 0.0123, 0.0165}) {
                SCOPED_TRACE(testing::Message() << c.name << " T = " << T << " rho = " << rho);
                // Attraction and repulsion cancel in part: rounding scales with the larger of them;
                // rounding of y next to the pole counts 1/(1 − y) times.
                const double size = static_cast<double>(c.ref.q(T)) * 56 * rho;
                const double x = 56 * rho / (1 + c.ref.c * rho), pole = 1 / (1 - x);
                EXPECT_NEAR(model->Ar(rho, T), static_cast<double>(c.ref.Ar(rho, T)),
                            16 * kEps * (size + x * pole));
                EXPECT_NEAR(model->Z(rho, T), static_cast<double>(c.ref.Z(rho, T)),
                            16 * kEps * (size + pole + x * pole * pole));
                double d[9];
                ASSERT_EQ(1, model->derivatives()->deriv(rho, T, 2, 2, d));
                for (int i = 0; i <= 2; ++i)
                    for (int j = 0; i + j <= 2; ++j)
                        EXPECT_NEAR(d[3 * i + j],
                                    static_cast<double>(c.ref.derivative(rho, T, i, j)),
                                    32 * kEps * (size + x * std::pow(pole, i + 1)))
                            << i << ' ' << j;
                EXPECT_EQ(d[0], model->Ar(rho, T));
                EXPECT_NEAR(1 + d[3], model->Z(rho, T), 1e-14 * (1 + size + pole));
                double r[4];
                ASSERT_EQ(1, model->derivatives()->deriv(rho, T, 3, 0, r));
                EXPECT_NEAR(r[3], static_cast<double>(c.ref.derivative(rho, T, 3, 0)),
                            64 * kEps * (size + x * std::pow(pole, 4)));
            }
    }
}

TEST(Cubic, ZeroNegativeAndTooHighDensities) {
    for (Case const& c : cases()) {
        const Plugin model = model_from(c.eos, c.section);
        EXPECT_EQ(model->Ar(0.0, 300.0), 0.0);
        EXPECT_EQ(model->Z(0.0, 300.0), 1.0);
        EXPECT_LT(rel(model->Ar(-3e-4, 300.0), c.ref.Ar(-3e-4, 300.0)), 1e-13);
        for (double rho : {0.03, 0.5, 1e6}) {
            EXPECT_FALSE(std::isfinite(model->Ar(rho, 300.0))) << c.name << rho;
            EXPECT_FALSE(std::isfinite(model->Z(rho, 300.0))) << c.name << rho;
        }
    }
}

TEST(Cubic, OffersTheStatedOrdersOfDerivatives) {
    const Plugin model = model_from("PR", kPropane);
    double d[32];
    constexpr int kOffered[][3] = {{0, 0, 1}, {2, 2, 1}, {3, 0, 1}, {0, 2, 1},  {3, 1, 0},
                                   {4, 0, 0}, {0, 3, 0}, {2, 3, 0}, {-1, 0, 0}, {0, -1, 0}};
    for (auto const& [nrho, nT, offered] : kOffered)
        EXPECT_EQ(model->derivatives()->deriv(0.01, 300, nrho, nT, d), offered)
            << nrho << ' ' << nT;
}

// Second virial coefficient b − a/(R·T) − c and the slope m by its published polynomials:
// a/(b·R·T) = (Omega_a/Omega_b)·[1 + m(1 − √Tr)]²/Tr with the Omegas of the papers.
TEST(Cubic, SecondVirialCoefficientFollowsTheAlphaFunction) {
    struct Row {
        char const* eos;
        double omega, kind, m;
    };
    auto p76 = [](double w) { return 0.37464 + 1.54226 * w - 0.26992 * w * w; };
    auto p78 = [](double w) {
        return 0.379642 + 1.48503 * w - 0.164423 * w * w + 0.016666 * w * w * w;
    };
    const Row rows[] = {{"PR", -0.4, 0, p76(-0.4)},
                        {"PR", 0.0, 0, p76(0)},
                        {"PR", 0.491, 0, p76(0.491)},
                        {"PR", 0.4911, 0, p78(0.4911)},
                        {"PR", 0.9, 0, p78(0.9)},
                        {"SRK", 0.3, 0, 0.480 + 1.574 * 0.3 - 0.176 * 0.09},
                        {"SRK", 0.3, 2, 0.48508 + 1.55171 * 0.3 - 0.15613 * 0.09}};
    for (Row const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.eos << ' ' << row.omega);
        const Plugin model = model_from(row.eos, kPropane);
        model->vcrit(220.0);
        *model->ppar(3) = row.omega;
        *model->ppar(4) = row.kind;
        *model->ppar(8) = 2.5;
        const double q_c = row.eos[0] == 'P' ? 0.45723552892138219 / 0.077796073903888456
                                             : 0.42748023354034140 / 0.086640349964957722;
        for (double T : {200.0, 370.0, 1000.0}) {
            const double s = 1 + row.m * (1 - std::sqrt(T / 370));
            const double exact = 56 - q_c * s * s * 370 / T * 56 - 2.5;
            double d[2];  // d[1] = B·rho + 2·C·rho² …, of which rho = 1e-20 leaves the first
            model->derivatives()->deriv(1e-20, T, 1, 0, d);
            EXPECT_NEAR(d[1] / 1e-20, exact, 8 * kEps * (56 + std::abs(exact)));
            EXPECT_NEAR(model->B(T, 2), exact, 1e-9 * 400);  // differenced
        }
    }
}

// Exact critical compressibility factors: 1/(3 + y_c) and 1/3.
TEST(Cubic, CriticalPointIsExact) {
    for (char const* eos : {"PR", "SRK"}) {
        const Plugin model = model_from(eos, kPropane);
        const bool pr = eos[0] == 'P';
        const double Zc = pr ? 0.30740130869870385 : 1.0 / 3;
        const double rho_c =
            static_cast<double>(pr ? reference::pr_y_c() : reference::srk_y_c()) / 56;
        EXPECT_NEAR(model->Z(rho_c, 370), Zc, 4 * kEps);
        const Vector<double> residuals = model->crit(370, rho_c, Zc);
        for (int i = 0; i < 2; ++i) EXPECT_NEAR(residuals[i], 0.0, 20 * kEps) << eos;
        EXPECT_NEAR(residuals[2] * rho_c, 0.0, 100 * kEps) << eos;
    }
}

// Translation moves the volumes of both phases by c and nothing else.
TEST(Cubic, TranslationLeavesTheSaturationLineAlone) {
    for (char const* eos : {"PR", "SRK"})
        for (double T : {180.0, 300.0, 365.0}) {
            const Plugin plain = model_from(eos, kPropane), moved = model_from(eos, kPropane);
            *moved->ppar(8) = -3.75;
            double p[2], liquid[2], vapour[2];
            for (int k : {0, 1}) {
                Model1& model = k ? *moved : *plain;
                const double v_c = eos[0] == 'P' ? 56 * 3.9513730355914394 : 56 * 3.847322101863073;
                model.Tcrit(370);
                model.vcrit(v_c - model.param(8));  // 56/y_c and Zc·R·Tc/v_c
                model.pcrit((eos[0] == 'P' ? 0.30740130869870385 : 1.0 / 3) * R * 370 / v_c);
                vle1_T(&model, T, 0, p[k], liquid[k], vapour[k]);
            }
            SCOPED_TRACE(testing::Message() << eos << ' ' << T);
            // ln p converges to the rounding of the Gibbs energies, a few ulp of their size (10).
            EXPECT_NEAR(p[1] / p[0], 1.0, 1e-12);
            EXPECT_NEAR(1 / liquid[1] - 1 / liquid[0], 3.75, 1e-9);
            EXPECT_NEAR((1 / vapour[1] - 1 / vapour[0]) / 3.75, 1.0, 1e-11 / vapour[0]);
        }
}

TEST(Cubic, TablesHoldTheSpinodals) {
    for (Case const& c : cases()) {
        const Plugin model = model_from(c.eos, c.section);
        auto slope = [&](double rho, double T) {
            double d[3];
            model->derivatives()->deriv(rho, T, 2, 0, d);
            return 1 + 2 * d[1] + d[2];
        };
        for (int k : {1, 2, 5, 30, 100, 200}) {  // T[1 + k] = Tc − 0.75·Tc·(k/200)²
            SCOPED_TRACE(testing::Message() << c.name << " entry " << k);
            const double T = 370 * (1 - 0.75 * k * k / 40000.0);
            EXPECT_NEAR(slope(model->xrho(T, 3), T), 0.0, 1e-9);
            EXPECT_NEAR(slope(model->xrho(T, 1), T) / slope(1.05 * model->xrho(T, 1), T), 0.0,
                        1e-9);
            const double low = model->xrho(T, 3), high = model->xrho(T, 1);
            EXPECT_TRUE(model->off(0.5 * (low + high), T));
            EXPECT_FALSE(model->off(low, T) || model->off(high, T));
            // Between the entries the limits are linear: 0.3 % in the first interval, less later.
            const double between = 370 * (1 - 0.75 * (k - 0.5) * (k - 0.5) / 40000.0);
            for (int phase : {1, 3}) {
                const double x = model->xrho(between, phase), sign = phase == 1 ? 1 : -1;
                EXPECT_GT(slope(x * (1 + 0.003 * sign), between), 0.0);
                EXPECT_LT(slope(x * (1 - 0.003 * sign), between), 0.0);
            }
        }
        for (double T : {370.0, 500.0, 99999.0})
            for (double rho : {1e-4, 0.0045, 0.015}) EXPECT_FALSE(model->off(rho, T));
        EXPECT_EQ(th_code([&] { model->xrho(1.1e5, 1); }), th_generic);
    }
}

TEST(Cubic, SectionIsReadByLabelAndWrittenBackExactly) {
    const Plugin plain = model_from("PR", kPropane + "source: a paper, 1.0 alpha: 7\nvalid: 1 2\n");
    EXPECT_EQ(section_of(*plain), "M:\t44\nTs:\t370\nvs:\t56\nomega:\t0.14999999999999999\n");
    EXPECT_EQ(plain->omega(), 0.15);
    const Plugin twu = model_from("PR", kTwu + "measured: 0 0 0");
    EXPECT_EQ(twu->param(4), 1.0);
    EXPECT_EQ(twu->param(8), -3.735);
    const std::string text = section_of(*twu);
    const Plugin again = model_from("PR", text);
    EXPECT_EQ(section_of(*again), text);
    for (int i = 0; i < twu->mpar(); ++i) EXPECT_EQ(again->param(i), twu->param(i));
    // A set without the optional lines after one with them: none is left over.
    twu->par_in(text_file(kPropane).get(), 1);
    EXPECT_EQ(twu->param(8), 0.0);
    EXPECT_EQ(section_of(*model_from("SRK", "M: 44\nTs: 370\nvs: 56\nomega: 0.15\nc: 1\n")),
              "M:\t44\nTs:\t370\nvs:\t56\nomega:\t0.14999999999999999\nalpha:\t0\nL:\t0\nMtwu:\t0\n"
              "Ntwu:\t0\nc:\t1\n");
}

TEST(Cubic, MalformedSectionsAreRefusedAndChangeNothing) {
    const struct {
        std::string text;
        int code;
    } rows[] = {{"", 1},
                {"M: 44\nTs: 370\nvs: 56\n", 1},
                {"M: 44\nvs: 56\nTs: 370\nomega: 0\n", 1},
                {"M: 44\nTs: abc\nvs: 56\nomega: 0\n", 1},
                {"M: 44\nTs: nan\nvs: 56\nomega: 0\n", 1},
                {"M: 44\nTs: 370\nvs: 1e999\nomega: 0\n", 1},
                {kPropane + "alpha: x\n", 1},
                {kPropane + "c:", 1},
                {std::string(100000, 'M'), 1},
                {"M: 44\nTs: 0\nvs: 56\nomega: 0\n", 5},
                {"M: 44\nTs: 370\nvs: -56\nomega: 0\n", 5},
                {kPropane + "alpha: 2\n", 4},  // not with Peng–Robinson
                {kPropane + "alpha: 1.5\n", 4},
                {kPropane + "alpha: 1e300\n", 4}};
    const Plugin model = model_from("PR", kTwu);
    const std::string before = section_of(*model);
    for (auto const& row : rows) {
        EXPECT_EQ(th_code([&] { model->par_in(text_file(row.text).get(), 1); }), row.code)
            << row.text.substr(0, 60);
        EXPECT_EQ(section_of(*model), before);
    }
}

// Callers may write parameters at any time.
TEST(Cubic, ParametersWrittenThroughTheirAddressCountAtOnce) {
    const Plugin model = model_from("PR", kPropane);
    const Plugin other = model_from("PR", "M: 16\nTs: 190\nvs: 27\nomega: 0.01\n");
    for (int i = 0; i < model->mpar(); ++i) model->param(i, other->param(i));
    EXPECT_EQ(model->Ar(0.01, 150), other->Ar(0.01, 150));
    double a = 0, b = 0, c = 0, d = 0;
    EXPECT_EQ(model->vcalc(0.5, 150, 1, a, b), 3);
    EXPECT_EQ(other->vcalc(0.5, 150, 1, c, d), 3);
    EXPECT_EQ(a, c);
    EXPECT_EQ(b, d);
    model->param(4, 5.0);  // no such alpha function
    EXPECT_TRUE(std::isnan(model->Ar(0.01, 150)));
    EXPECT_EQ(model->vcalc(0.5, 150, 1, a, b), 0);
}
}  // namespace
