// Peng–Robinson and Soave–Redlich–Kwong through their plug-ins.
#include "cubic_reference.h"
#include "model_text.h"

#include <corvane/phases/saturation/pure_saturation.h>
#include <tests/support/errors.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace {
using reference::Big;
constexpr double kEps = std::numeric_limits<double>::epsilon();

// Propane with round numbers: Tc = 370 K, b = 56 cm³/mol, omega = 0.15 where nothing else is said.
const std::string kHead = "M: 44\nTs: 370\nvs: 56\n", kPropane = kHead + "omega: 0.15\n";
const std::string kTwu = kPropane + "alpha: 1\nL: 0.7455\nMtwu: 0.9133\nNtwu: 0.761\nc: -3.735\n";

struct Case {
    char const* eos;
    std::string section;
    double m, L, M, N, c, c2 = 0, c3 = 0;
    reference::Cubic ref() const {
        if (eos[0] == 'P') return {2, -1, reference::pr_y_c(), 370, 56, m, L, M, N, c, c2, c3};
        return {1, 0, reference::srk_y_c(), 370, 56, m, L, M, N, c, c2, c3};
    }
};
// m(omega) by the polynomials of Peng & Robinson (1976) up to 0.491, of Robinson & Peng (1978),
// Soave (1972), Graboski & Daubert (1978).
const Case kCases[] = {
    {"PR", kPropane, 0.37464 + 1.54226 * 0.15 - 0.26992 * 0.0225, 0, 0, 0, 0},
    {"PR", kHead + "omega: 0.491\n", 0.37464 + 1.54226 * 0.491 - 0.26992 * 0.241081, 0, 0, 0, 0},
    {"PR", kHead + "omega: 0.4911\n",
     0.379642 + 1.48503 * 0.4911 - 0.164423 * 0.24117921 + 0.016666 * 0.118443110031, 0, 0, 0, 0},
    {"PR", kTwu, 0, 0.7455, 0.9133, 0.761, -3.735},
    {"SRK", kPropane + "c: 4.5\n", 0.480 + 1.574 * 0.15 - 0.176 * 0.0225, 0, 0, 0, 4.5},
    {"SRK", kPropane + "alpha: 2\n", 0.48508 + 1.55171 * 0.15 - 0.15613 * 0.0225, 0, 0, 0, 0},
    {"SRK", kPropane + "alpha: 3\nc1: 0.7\nc2: -0.3\nc3: 0.6\n", 0.7, 0, 0, 0, 0, -0.3, 0.6}};

// With c = 0, Z = 1/(1 − y) − q·y/(1 + u·y + w·y²) is a power series of y = b·rho by hand.
TEST(Cubic, VirialCoefficientsAreThoseOfThePowerSeries) {
    // Rounding of Z grows as 1/s^(n−1) with steps s that the poles limit.
    const double tolerance[] = {0, 0, 3e-13, 1e-10, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 5e-3};
    for (Case const& c : kCases) {
        if (c.c != 0) continue;
        const reference::Cubic ref = c.ref();
        const Plugin model = model_from(c.eos, c.section);
        model->vcrit(56 / static_cast<double>(ref.y_c));
        for (double T : {200.0, 370.0, 900.0}) {
            const double q = static_cast<double>(ref.q(T));
            double before = 0, series = 1, power = 1;  // coefficients of 1/(1 + u·y + w·y²)
            for (int n = 2; n <= 9; ++n) {
                power *= 56;
                const double exact = 1 - q * series;
                EXPECT_NEAR(model->B(T, n) / power, exact, tolerance[n] * (q + std::fabs(exact)))
                    << c.section << " T = " << T << ", n = " << n;
                const double next = -ref.u * series - ref.w * before;
                before = series;
                series = next;
            }
        }
    }
}

// Newton's method for equal pressures and potentials in 100 digits, from what pure_saturation gives:
// its errors are within its bounds, also where the phases differ by 1e-5.
TEST(Cubic, SaturationIsExactWithinItsBoundsUpToTheCriticalPoint) {
    for (Case const& c : kCases) {
        const reference::Cubic ref = c.ref();
        const Plugin model = model_from(c.eos, c.section);
        const Big v_c = 56 / ref.y_c - c.c;
        const double v = static_cast<double>(v_c);
        model->vcrit(v);
        model->Tcrit(370);
        model->pcrit(model->Z(1 / v, 370) * R * 370 / v);
        for (double off : {0.4, 0.1, 0.01, 4e-3, 1e-4, 1e-6, 1e-8, 1e-10}) {
            SCOPED_TRACE(testing::Message() << c.section << " 1 - T/Tc = " << off);
            const double T = 370 * (1 - off);
            const corvane::PureSaturation q = corvane::pure_saturation_T(*model, T);
            const Big t = T, h = Big("1e-40");
            const auto P = [&](Big const& rho) {
                const Big y = 56 * rho / (1 + c.c * rho);
                return (y / (1 - y) - ref.q(t) * y * y / (1 + y * (ref.u + ref.w * y))) / 56;
            };
            const auto m = [&](Big const& rho) { return Big(ref.Ar(rho, t) + P(rho) / rho + log(rho)); };
            Big L = q.rhoL, V = q.rhoV;
            for (int k = 0; k < 12; ++k) {
                const Big f = P(L) - P(V), g = m(L) - m(V);
                const Big PL = (P(L * (1 + h)) - P(L)) / h, PV = (P(V * (1 + h)) - P(V)) / h,
                          mL = (m(L * (1 + h)) - m(L)) / h, mV = (m(V * (1 + h)) - m(V)) / h;
                const Big det = PL * mV - PV * mL;
                L *= 1 - (f * mV - PV * g) / det;
                V *= 1 - (f * mL - PL * g) / det;
            }
            const double p = static_cast<double>(q.p / (P(V) * R * t) - 1);
            EXPECT_LE(std::fabs(p), q.value_error);
            EXPECT_LE(std::fabs(static_cast<double>(q.rhoL / L - 1)), q.rho_error);
            EXPECT_LE(std::fabs(static_cast<double>(q.rhoV / V - 1)), q.rho_error);
            EXPECT_LE(std::fabs(static_cast<double>((q.rhoL - q.rhoV) / (L - V) - 1)), q.apart_error);
        }
    }
}

TEST(Cubic, HelmholtzEnergyAndItsDerivativesAreThoseOfThePublishedForm) {
    for (Case const& c : kCases) {
        const reference::Cubic ref = c.ref();
        const Plugin model = model_from(c.eos, c.section);
        for (double T : {90.0, 260.0, 370.0, 900.0, 4000.0})
            for (double rho : {1e-12, 1e-6, 1e-3, 0.005, 0.0123, 0.0165}) {
                SCOPED_TRACE(testing::Message() << c.section << " T = " << T << " rho = " << rho);
                // Attraction and repulsion cancel in part: rounding scales with the larger of them;
                // rounding of y next to the pole counts 1/(1 − y) times.
                const double size = static_cast<double>(ref.q(T)) * 56 * rho;
                const double x = 56 * rho / (1 + c.c * rho), pole = 1 / (1 - x);
                double d[9];
                ASSERT_EQ(1, model->derivatives()->deriv(rho, T, 2, 2, d));
                for (int i = 0; i <= 2; ++i)
                    for (int j = 0; i + j <= (T == 370 && c.c2 != 0 ? 1 : 2); ++j)  // jumps there
                        EXPECT_NEAR(d[3 * i + j], static_cast<double>(ref.derivative(rho, T, i, j)),
                                    32 * kEps * (size + x * std::pow(pole, i + 1)))
                            << i << ' ' << j;
                EXPECT_EQ(d[0], model->Ar(rho, T));
                EXPECT_NEAR(model->Z(rho, T), static_cast<double>(1 + ref.derivative(rho, T, 1, 0)),
                            16 * kEps * (size + pole + x * pole * pole));
                double r[4];
                ASSERT_EQ(1, model->derivatives()->deriv(rho, T, 3, 0, r));
                EXPECT_NEAR(r[3], static_cast<double>(ref.derivative(rho, T, 3, 0)),
                            64 * kEps * (size + x * std::pow(pole, 4)));
            }
    }
}

TEST(Cubic, NegativeAndTooHighDensities) {
    for (Case const& c : kCases) {
        const Plugin model = model_from(c.eos, c.section);
        EXPECT_NEAR(model->Ar(-3e-4, 300.0) / static_cast<double>(c.ref().Ar(-3e-4, 300.0)), 1.0,
                    1e-14);
        for (double rho : {0.03, 1e6}) {
            EXPECT_FALSE(std::isfinite(model->Ar(rho, 300.0)) ||
                         std::isfinite(model->Z(rho, 300.0)));
        }
        double d[32];
        constexpr int kRefused[][2] = {{3, 1}, {4, 0}, {0, 3}, {2, 3}, {-1, 0}, {0, -1}};
        for (auto const& [nrho, nT] : kRefused)
            EXPECT_EQ(model->derivatives()->deriv(0.01, 300, nrho, nT, d), 0);
    }
}

// Exact critical compressibility factors: 1/(3 + y_c) and 1/3.
TEST(Cubic, CriticalPointIsExact) {
    const struct {
        char const* eos;
        Big y_c;
        double Zc;
    } rows[] = {{"PR", reference::pr_y_c(), 0.30740130869870385},
                {"SRK", reference::srk_y_c(), 1.0 / 3}};
    for (auto const& row : rows) {
        const double rho_c = static_cast<double>(row.y_c) / 56;
        const Vector<double> r = model_from(row.eos, kPropane)->crit(370, rho_c, row.Zc);
        EXPECT_NEAR(std::abs(r[0]) + std::abs(r[1]) + std::abs(r[2] * rho_c), 0.0, 100 * kEps);
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
    twu->par_in(text_file(kPropane).get(), 1);  // nothing of the old set is left over
    EXPECT_EQ(section_of(*twu), section_of(*plain));
}

TEST(Cubic, MalformedSectionsAreRefusedAndChangeNothing) {
    const struct {
        std::string text;
        int code;
    } rows[] = {// clang-format off
        {"", 1}, {kHead, 1}, {"M: 44\nvs: 56\nTs: 370\nomega: 0\n", 1}, {"M: 44\nTs: abc\n", 1},
        {"M: 44\nTs: nan\n", 1}, {"M: 44\nTs: 370\nvs: 1e999\n", 1}, {kPropane + "alpha: x\n", 1},
        {kPropane + "c:", 1}, {std::string(100000, 'M'), 1}, {"M: 44\nTs: 0\nvs: 56\nomega: 0\n", 5},
        {"M: 44\nTs: 370\nvs: -56\nomega: 0\n", 5}, {kPropane + "alpha: 2\n", 4},  // SRK alone has 2
        {kPropane + "alpha: 1.5\n", 4}, {kPropane + "alpha: 1e300\n", 4}};  // clang-format on
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
    double a = 0, b = 0, c = 0, d = 0;
    EXPECT_EQ(model->vcalc(0.5, 150, 1, a, b), 3);
    EXPECT_EQ(other->vcalc(0.5, 150, 1, c, d), 3);
    EXPECT_TRUE(a == c && b == d && model->Ar(a, 150) == other->Ar(a, 150));
    model->param(4, 5.0);  // no such alpha function
    EXPECT_TRUE(std::isnan(model->Ar(0.01, 150)));
    EXPECT_EQ(model->vcalc(0.5, 150, 1, a, b), 0);
}
}  // namespace
