// Equilibrium constants against printed tables and identities.
#include "support/scratch.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
using corvane::OpenFailure;
using corvane::Reaction;

TEST(Reaction, GibbsEnergiesOfPrintedTables) {
    // Sums of the Gibbs energies of formation at 0.1 MPa of NIST-JANAF (Chase, J. Phys. Chem. Ref.
    // Data Monograph 9, 1998), kJ/mol: NH3 -16.367, 27.190 (298.15, 700 K); CO -200.275, CO2
    // -395.886, H2O -192.590, CH4 19.492 (1000 K). The enthalpies of formation here are newer: those
    // of NH3 and CH4 differ by 0.05 and 0.2.
    struct Row {
        char const* text;
        double T, dG, tolerance;
    };
    for (Row const& row :
         {Row{"N2 + 3 H2 = 2 NH3", 298.15, 2 * -16.367, 0.15}, Row{"3H2 + N2 -> 2*NH3", 700.0, 2 * 27.190, 0.25},
          Row{"CO + H2O <=> CO2 + H2", 1000.0, -395.886 + 200.275 + 192.590, 0.15},
          Row{"methane + 7732-18-5 = carbon monoxide + 3 H2", 1000.0, -200.275 - 19.492 + 192.590, 0.6}}) {
        SCOPED_TRACE(row.text);
        const auto state = Reaction(row.text).at(row.T);
        EXPECT_NEAR(state.dG / 1000.0, row.dG, row.tolerance);
        EXPECT_NEAR(state.lnK, -state.dG / (R * row.T), 1e-12 * std::fabs(state.lnK));
        EXPECT_EQ(state.extrapolated, row.T > 700.0);  // carbon monoxide: to 500 K
    }
}

TEST(Reaction, VantHoffHessAndReversal) {
    const Reaction shift("CO + H2O => CO2 + H2"), back("2 CO2 + 2 H2 = 2CO + 2H2O");
    const Reaction dry("CO2 + CH4 = 2 CO + 2 H2"), wet("CH4 + H2O = CO + 3 H2");
    for (double T : {400.0, 900.0}) {
        const auto q = shift.at(T);
        EXPECT_NEAR(back.at(T).lnK, -2.0 * q.lnK, 1e-9);
        EXPECT_NEAR(dry.at(T).dG, wet.at(T).dG - q.dG, 1e-6);
        // d(ln K)/dT = dH/(RT²), d(dH)/dT = dcp, d(dS)/dT = dcp/T
        const double d = 0.1;
        const auto lower = shift.at(T - d), upper = shift.at(T + d);
        EXPECT_NEAR((upper.lnK - lower.lnK) / (2 * d), q.dH / (R * T * T), 1e-7 * std::fabs(q.dH / (R * T * T)));
        EXPECT_NEAR((upper.dH - lower.dH) / (2 * d), q.dcp, 1e-4);
        EXPECT_NEAR((upper.dS - lower.dS) / (2 * d), q.dcp / T, 1e-6);
    }
    // A substance of both sides counts once; a catalyst not at all.
    const Reaction same("CO + 3 H2O + N2 = CO2 + H2 + 2 H2O + N2");
    EXPECT_EQ(same.species().size(), 4u);
    EXPECT_EQ(same.at(500.0).dG, shift.at(500.0).dG);
    EXPECT_TRUE(shift.at(5000.0).extrapolated);
}

// A file without values of the ideal gas: those of the liquid (CODATA, at 0.1 MPa) are taken to it by the
// equation of state. CODATA's gas: -241.826 kJ/mol, 188.835 J/(mol K).
TEST(Reaction, ALiquidIsTurnedIntoItsGas) {
    const Scratch scratch;
    scratch.write("mine/CorvaneS/reaction/water", "298.15 -285830 69.95\n\nphase:\tliquid\n");
    const Reaction mine("2 H2 + O2 = 2 H2O",
                        corvane::DataHome(scratch.dir() / "mine").over(corvane::DataHome::find()));
    auto const& water = mine.species().back();
    EXPECT_TRUE(water.estimated);
    EXPECT_NEAR(water.H0 / 1000.0, -241.826, 0.1);
    EXPECT_NEAR(water.S0, 188.835, 0.2);
    EXPECT_FALSE(Reaction("2 H2 + O2 = 2 H2O").species().back().estimated);
}

TEST(Reaction, RefusesInOneSentence) {
    for (auto const& [text, why] : std::initializer_list<std::pair<char const*, char const*>>{
             {"N2 + H2 = NH3", "not balanced: H 2 before and 3 after, N 2 before and 1 after"},
             {"N2 + 3 H2", "is not a reaction such as"},
             {"N2 = H2 = NH3", "is not a reaction such as"},
             {"", "is not a reaction such as"},
             {"N2 + = NH3", "a substance is missing"},
             {"0 N2 = N2", "is not a number and a substance"},
             {"N2 + CO = CO + N2", "both sides of the reaction are the same"},
             {"unobtainium = N2", "unknown substance 'unobtainium'"},
             {"C4H10 = ethylene", "not one substance"}})
        try {
            const Reaction accepted(text);
            ADD_FAILURE() << text;
        } catch (OpenFailure const& e) {
            EXPECT_NE(std::string(e.what()).find(why), std::string::npos) << e.what();
        }
    EXPECT_THROW(Reaction("N2 + 3 H2 = 2 NH3").at(0.0), ThException);
}
}  // namespace
