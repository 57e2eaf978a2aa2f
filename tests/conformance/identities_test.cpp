// Thermodynamic identities and the density solver's contract, for every equation × substances ×
// states.
#include "support/errors.h"
#include "support/shipped.h"

#include <corvane/core/numelo.h>

#include <gtest/gtest.h>

namespace {
struct Fluid {
    std::string eos, name;
};
std::ostream& operator<<(std::ostream& out, Fluid const& f) { return out << f.eos << " " << f.name; }

/// A few substances of each kind: small, chain, polar, associating, quantum.
std::vector<Fluid> fluids() {
    std::vector<Fluid> all;
    for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"})
        for (char const* name : {"methane", "carbon_dioxide", "water", "decane", "hydrogen",
                                 "ethanol", "ammonia", "r134a"})
            if (std::filesystem::exists(std::string("CorvaneS/parameters/") + eos + "/" + name +
                                        ";1"))
                all.push_back({eos, name});
    return all;
}

class EveryEquation : public testing::TestWithParam<Fluid> {
  protected:
    Model model_ = load_set(GetParam().eos, GetParam().name);
};
std::string title(testing::TestParamInfo<Fluid> const& info) {
    return info.param.eos + "_" + info.param.name;
}
INSTANTIATE_TEST_SUITE_P(Conformance, EveryEquation, testing::ValuesIn(fluids()), title);

/// Calls f at gas, liquid, supercritical and dense states, outside the two-phase region.
template <class F>
void for_each_state(Model1 const& m, F f) {
    for (double Tr : {0.6, 0.8, 0.95, 1.05, 1.5, 2.5})
        // Not at rho_c itself, where reference equations have terms like |rho/rho_c − 1|^3.3, which
        // differences do not see well.
        for (double r : {1e-8, 1e-4, 0.01, 0.2, 0.7, 1.1, 1.5, 2.2, 2.6}) {
            const double T = Tr * m.Tcrit(), rho = r / m.vcrit();
            if (!std::isfinite(m.Z(rho, T)) || m.pV(rho, T) <= 0.01 || m.off(rho, T)) continue;
            SCOPED_TRACE(testing::Message() << "Tr = " << Tr << ", rho/rho_c = " << r);
            f(rho, T);
        }
}

double ar_rho(double rho, void* ctx) {
    auto const& s = *static_cast<pass1 const*>(ctx);
    return s.mdl1->Ar(rho, s.T);
}

TEST_P(EveryEquation, ResidualPropertiesFitTogether) {
    Model1& m = *model_;
    corvane::Deriv1 const* exact = m.derivatives();
    for_each_state(m, [&](double rho, double T) {
        const double Ar = m.Ar(rho, T), Z = m.Z(rho, T), H = m.Hr(rho, T), S = m.Sr(rho, T);
        const double size = std::fabs(H) + std::fabs(S) + std::fabs(Z) + std::fabs(Ar);
        EXPECT_NEAR(m.Gr(rho, T), H - S, 4e-15 * size);
        EXPECT_NEAR(H, m.Ur(rho, T) + Z - 1, 4e-15 * size);
        const double PT = m.betaV(rho, T), Prho = m.pV(rho, T);
        EXPECT_NEAR(m.Cpr(rho, T) - m.CVr(rho, T), PT * PT / Prho - 1,
                    1e-12 * (1 + PT * PT / Prho + std::fabs(m.CVr(rho, T))));
        EXPECT_NEAR(m.alphap(rho, T), PT * m.kappaT(rho, T), 1e-13 * std::fabs(PT / Prho));

        // Z against the slope of Ar, and every exact derivative against the numerical route: two
        // sources of one number, apart by the numerical one's error.
        pass1 state{&m, 0, 0, rho, T};
        const double slope = rho * diff_romberg(ar_rho, &state, 1, rho, th_inc1 * rho, 1, 0, 1e99);
        EXPECT_NEAR(Z - 1, slope, 4e-16 + 1e-10 * (std::fabs(Ar) + std::fabs(slope)));
        if (!exact) return;
        const double CV = m.CVr(rho, T), U = m.Ur(rho, T);
        m.derivatives(nullptr);
        EXPECT_NEAR(U, m.Ur(rho, T), 1e-10 * (std::fabs(Ar) + std::fabs(U)));
        EXPECT_NEAR(CV, m.CVr(rho, T), 1e-6 * (std::fabs(Ar) + std::fabs(U) + std::fabs(CV)));
        EXPECT_NEAR(PT, m.betaV(rho, T), 1e-9 * (std::fabs(Z) + std::fabs(PT)));
        EXPECT_NEAR(Prho, m.pV(rho, T), 1e-9 * (std::fabs(Z) + std::fabs(Prho)));
        m.derivatives(exact);
    });
}

// An impossible state, or one past the pole of the equation, has no properties: where Ar or Z is no
// number the exact route raises what the numerical one raises, in every property.
TEST_P(EveryEquation, ExactRouteFailsWhereTheNumericalOneDoes) {
    Model1& m = *model_;
    corvane::Deriv1 const* exact = m.derivatives();
    ASSERT_TRUE(exact);
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    using Property = double (Model1::*)(double, double) const;
    constexpr std::pair<char const*, Property> properties[] = {
        {"Ur", &Model1::Ur},       {"Hr", &Model1::Hr},         {"Sr", &Model1::Sr},
        {"CVr", &Model1::CVr},     {"Cpr", &Model1::Cpr},       {"betaV", &Model1::betaV},
        {"pV", &Model1::pV},       {"alphap", &Model1::alphap}, {"kappaT", &Model1::kappaT},
        {"crit", nullptr}};
    const double beyond = 1.2 / m.vs(), wrong_unit = 1e3 / m.vcrit();
    int refused = 0;
    for (double T : {300.0, 0.5 * m.Tcrit(), 0.0, -0.0, -300.0, nan, HUGE_VAL})
        for (double rho : {1e-3, 0.0, -1e-4, -0.1, beyond, 3 * beyond, wrong_unit, 1e5 * wrong_unit,
                           1e300, nan, HUGE_VAL})
            for (auto [name, property] : properties) {
                SCOPED_TRACE(testing::Message() << name << " at rho = " << rho << ", T = " << T);
                const auto code = [&] {
                    double value = 0.0;
                    const int raised = mth_code([&] {
                        value = property ? (m.*property)(rho, T) : m.crit(T, rho, 0.3)[2];
                    });
                    return raised == -1 && !std::isfinite(value) ? -3 : raised;
                };
                const int by_exact = code();
                m.derivatives(nullptr);
                const int by_differences = code();
                m.derivatives(exact);
                EXPECT_EQ(by_exact, by_differences);
                if (!(T > 0) || !std::isfinite(m.Ar(rho, T))) {
                    EXPECT_GT(by_exact, 0);
                    ++refused;
                }
            }
    EXPECT_GT(refused, 200);
}

// Maxwell: ∂S/∂rho at T equals −∂p/∂T/rho², that is rho·∂Sr/∂rho = 1 − P_T.
TEST_P(EveryEquation, EntropySlopeIsTheThermalPressure) {
    struct Context {
        Model1 const* m;
        double T;
    } context{model_.get(), 0};
    for_each_state(*model_, [&](double rho, double T) {
        context.T = T;
        const auto Sr = [](double x, void* c) {
            auto const& k = *static_cast<Context*>(c);
            return k.m->Sr(x, k.T);
        };
        const double slope = rho * diff_romberg(Sr, &context, 1, rho, th_inc1 * rho, 1, 0, 1e99);
        const double PT = model_->betaV(rho, T);
        EXPECT_NEAR(slope, 1 - PT, 2e-7 * (1 + std::fabs(PT)));
    });
}

TEST_P(EveryEquation, VanishingDensityIsTheIdealGasAndGivesTheSecondVirialCoefficient) {
    Model1 const& m = *model_;
    for (double Tr : {0.7, 1.0, 2.0}) {
        const double T = Tr * m.Tcrit(), B = m.B(T, 2), rho = 1e-9 / m.vcrit();
        EXPECT_EQ(m.Ar(0, T), 0);
        EXPECT_EQ(m.Z(0, T), 1);
        EXPECT_NEAR(m.Ar(rho, T) / rho, B,
                    2e-6 * (std::fabs(B) + m.vcrit()));  // third virial · rho
        EXPECT_NEAR((m.Z(rho, T) - 1) / rho, B, 1e-6 * (std::fabs(B) + m.vcrit()));
    }
}

TEST_P(EveryEquation, DensityRootsAreRootsStableAndOrdered) {
    Model1 const& m = *model_;
    for (double Tr : {0.55, 0.75, 0.9, 0.99, 1.0, 1.2, 2.0})
        for (double p : {1e-12, 1e-6, 1e-3, 0.1, 1.0, 5.0, 20.0, 100.0}) {
            SCOPED_TRACE(testing::Message() << "Tr = " << Tr << ", p = " << p);
            const double T = Tr * m.Tcrit();
            double dense = std::nan(""), dilute = std::nan("");
            const int n = m.vcalc(p, T, 1, dense, dilute);
            ASSERT_TRUE(n == 1 || n == 3);
            double first = 1e9, second = 0;
            ASSERT_EQ(m.vcalc(p, T, 3, first, second), n);
            EXPECT_EQ(n == 3 ? first : second, n == 3 ? dilute : second);
            for (double rho : {dense, n == 3 ? dilute : dense}) {
                EXPECT_GT(m.pV(rho, T), 0);
                // Converged to rounding: the residual is what one more unit in the last place
                // makes.
                const double noise = 8e-16 * (std::fabs(m.pV(rho, T)) + 40) * R * T * rho;
                EXPECT_NEAR(m.Z(rho, T) * R * T * rho, p, noise + 1e-14 * p);
            }
            if (n == 3) {
                EXPECT_GT(dense, dilute);
            }
            // Phase code −1 stays on the side of its start value.
            for (double start : {dense, n == 3 ? dilute : dense}) {
                double rho = start, other = 0;
                ASSERT_EQ(m.vcalc(p, T, -1, rho, other), n);
                EXPECT_NEAR(rho, start, 1e-13 * start);
            }
        }
    double a = 5, b = 6;
    for (auto [p, T] : {std::pair(1.0, -5.0), std::pair(1.0, 0.0), std::pair(std::nan(""), 300.0),
                        std::pair(HUGE_VAL, 300.0)})
        EXPECT_EQ(m.vcalc(p, T, 1, a, b), 0);
    EXPECT_EQ(a, 5);
    EXPECT_EQ(b, 6);
}

// A scan of the isotherm finds every stable crossing; vcalc must return the lowest and the highest.
// Below the critical temperature only the two outer branches hold states: not the loops that some
// equations have between them.
TEST_P(EveryEquation, DensityRootsAreTheOutermostOnesOfTheIsotherm) {
    Model1 const& m = *model_;
    for (double Tr : {0.65, 0.85, 0.97, 1.1})
        for (double p : {0.01, 0.3, 2.0, 10.0}) {
            SCOPED_TRACE(testing::Message() << "Tr = " << Tr << ", p = " << p);
            const double T = Tr * m.Tcrit();
            double dense = 0, dilute = 0;
            const int n = m.vcalc(p, T, 1, dense, dilute);
            if (n == 1) dilute = Tr < 1 ? std::min(dense, m.xrho(T, 3)) : dense;
            // No crossing below the dilute root, or between the dense root and 15 % above it.
            const auto excess = [&](double rho) { return m.Z(rho, T) * R * T * rho - p; };
            for (int k = 1; k < 400; ++k) {
                EXPECT_LT(excess(dilute * k / 400), 0) << "below the dilute root, " << k;
                EXPECT_GT(excess(dense * (1 + 0.15 * k / 400)), 0) << "above the dense root, " << k;
            }
        }
}
}  // namespace
