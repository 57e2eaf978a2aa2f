// The example of the author's guide, loaded from a working directory of its own.
#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <tests/support/scratch.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>

namespace {
// Saturated states of the van der Waals fluid in closed form (Lekner, Am. J. Phys. 50 (1982) 161):
// half the difference of the molar entropies over R is the parameter s.
struct Saturated {
    double Tr, pr, liquid, vapour;  // reduced by the critical values; densities
};
Saturated lekner(double s) {
    const double c = std::cosh(s), h = std::sinh(s);
    const double g = (s * c - h) / (h * c - s), f = 1 + 2 * g * c + g * g;
    const double Tr = 27.0 / 4.0 * g * (c + g) / (f * f);
    return {Tr, 27.0 * g * g * (1 - g * g) / (f * f), 3 * g * (std::exp(s) + g) / f,
            3 * g * (std::exp(-s) + g) / f};
}

TEST(ExamplePlugin, LoadsAndSaturatesAsTheClosedFormSays) {
    Scratch scratch;
    std::filesystem::copy(VDW_PLUGIN, "libthvdw.dll");
    scratch.write("CorvaneS/parameters/vdw/argon;1",
                  Scratch::read(VDW_EXAMPLE "/parameters/argon;1"));
    std::unique_ptr<Model1, corvane::Detach> argon(attach1("vdw"));
    argon->name("argon");
    argon->id(1);
    argon->load("vdw");
    const double Tc = argon->Tcrit(), rho_c = 1 / argon->vcrit();
    for (double s : {0.5, 1.0, 3.0, 6.0}) {
        const Saturated exact = lekner(s);
        SCOPED_TRACE(testing::Message() << "Tr = " << exact.Tr);
        double p, liquid, vapour;
        vle1_T(argon.get(), exact.Tr * Tc, 0, p, liquid, vapour);
        // The formula loses digits as s → 0; pc of the file is that of Tc and b to 16 digits.
        EXPECT_NEAR(p / argon->pcrit() / exact.pr, 1.0, 1e-12 / (s * s));
        EXPECT_NEAR(liquid / rho_c / exact.liquid, 1.0, 1e-12 / (s * s));
        EXPECT_NEAR(vapour / rho_c / exact.vapour, 1.0, 1e-12 / (s * s));
    }
}
}  // namespace
