// PR, PR+vdW1, PR76 and SRKformula are linked into this program; the data home is the source tree,
// which has no library of a plug-in.
#include <corvane/catalogue/open.h>
#include <corvane/catalogue/parameter_sets.h>
#include <corvane/phases/saturation/saturation.h>

#include "support/errors.h"
#include "support/scratch.h"

#include <cmath>

namespace {
const corvane::DataHome source(CORVANE_SOURCE);

TEST(LinkedPlugins, AreAttachedWithoutFilesAndGoBack) {
    Scratch scratch;  // an empty working directory
    Model1* const one = attach1("PR");
    ASSERT_TRUE(one);
    EXPECT_TRUE(one->derivatives());
    corvane::detach1(one);
    for (char const* equation : {"PR", "PR76", "SRKformula"}) {
        ModelN* const mixture = attachN(equation, "vdW1");
        ASSERT_TRUE(mixture) << equation;
        EXPECT_TRUE(mixture->derivatives()) << equation;
        mixture->alloc(2, equation);
        corvane::detachN(mixture);
    }
    EXPECT_EQ(th_code([] { attach1("SRK"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attachN("PR", "none"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attach1("PR+vdW1"); }), th_cannot_open);  // not of a substance
}

TEST(LinkedPlugins, StandBesideFilesInTheCatalogue) {
    const corvane::Plugins there = corvane::plugins(source);
    EXPECT_EQ(there.pure, (std::vector<std::string>{"PR", "PR76", "SRKformula"}));
    EXPECT_EQ(there.mixture, (std::vector<std::string>{"PR+vdW1", "PR76+vdW1", "SRKformula+vdW1"}));
    EXPECT_THROW(corvane::open("SRK", "methane", {.home = source}), corvane::OpenFailure);
}

// The equation in closed form, D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59.
TEST(LinkedPlugins, ComputeTheirEquation) {
    const corvane::Fluid methane = corvane::open("PR", "methane", {.home = source});
    const double Tc = 190.564, pc = 4.5992, omega = 0.01142, T = 250.0, rho = 0.004;
    const double m = 0.37464 + (1.54226 - 0.26992 * omega) * omega;
    const double root = 1.0 + m * (1.0 - std::sqrt(T / Tc));
    const double a = 0.45724 * R * R * Tc * Tc / pc * root * root, b = 0.07780 * R * Tc / pc;
    const double v = 1.0 / rho;
    const double p = R * T / (v - b) - a / (v * (v + b) + b * (v - b));
    EXPECT_NEAR(methane.model->Z(rho, T) * rho * R * T, p, 1e-4 * p);  // rounded constants

    const corvane::Mixture gas =
        corvane::open_mixture("PR+vdW1", {"methane", "propane"}, {.home = source});
    Vector<double> z(2);
    z[0] = 0.3, z[1] = 0.7;
    const auto bubble = corvane::bubble_T(*gas.model, T, z);
    EXPECT_TRUE(bubble.certificate.holds());
}
}  // namespace
