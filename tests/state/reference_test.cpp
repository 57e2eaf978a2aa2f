// Reference states against tables that are printed in them.
#include "support/errors.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
using corvane::Quantity;
using corvane::ReferenceState;

TEST(Reference, GivesThePrintedEnthalpiesAndEntropies) {
    constexpr double kLiquid = -1.0, kVapour = -2.0;  // saturated; else a density, mol/dm³
    struct Row {
        char const* substance;
        ReferenceState which;
        double T, where, h, s;    // K, –, kJ/kg, kJ/(kg K)
        double h_digit, s_digit;  // half a unit of the last printed digit
    };
    // Wagner & Pruss (2002), table 13.2: zero at the triple point. Lemmon et al. (2009), table A1:
    // IIR. Gao et al. (2023), table 7, in J/mol over 17.03052 g/mol: triple point. Span & Wagner
    // (1996), table 34, less its saturated liquid at the triple point (-426.74, -2.2177), whose
    // p·v is 0.440 kJ/kg. Tillner-Roth & Baehr (1994), saturation
    // table: IIR.
    const Row rows[] = {
        {"water", ReferenceState::triple, 275, kLiquid, 7.75972202, 0.0283094670, 1e-4, 1e-6},
        {"water", ReferenceState::triple, 275, kVapour, 2504.28995, 9.10660121, 1e-5, 1e-8},
        {"water", ReferenceState::triple, 625, kLiquid, 1686.26976, 3.80194683, 1e-5, 1e-8},
        {"propane", ReferenceState::IIR, 223.15, kLiquid, 82.753, 0.5298, 5e-4, 5e-5},
        {"propane", ReferenceState::IIR, 323.15, kVapour, 621.66, 2.332, 5e-3, 5e-4},
        {"ammonia", ReferenceState::triple, 250, 42, 5715.934 / 17.03052, NAN, 3e-5, 0},
        {"ammonia", ReferenceState::triple, 275, 0.2, 27463.83 / 17.03052, 104.2956 / 17.03052,
         3e-4, 3e-6},
        {"carbon_dioxide", ReferenceState::triple, 240, kLiquid, 46.80 + 0.440, 0.2022, 0.01, 1e-4},
        {"carbon_dioxide", ReferenceState::triple, 304, kVapour, 267.90 + 0.440, 0.9641, 0.01, 1e-4},
        {"r134a", ReferenceState::IIR, 273.15, kLiquid, 200, 1, 1e-9, 1e-12},  // by definition
        {"r134a", ReferenceState::IIR, 200, kLiquid, 107.39, 0.6073, 5e-3, 5e-5},
        {"r134a", ReferenceState::IIR, 169.85, kVapour, 334.94, 1.9639, 5e-3, 5e-5}};
    const corvane::Substances index(corvane::DataHome::find());
    for (Row const& row : rows) {
        SCOPED_TRACE(testing::Message() << row.substance << " at " << row.T);
        corvane::Fluid fluid = corvane::open("MEOS", row.substance);
        Model1& model = *fluid.model;
        set_reference(model, row.which, index.find(row.substance).front()->Ttriple);
        const corvane::Given second = row.where > 0
                                          ? corvane::Given{Quantity::rho, 1e-3 * row.where}
                                          : corvane::Given{Quantity::q, row.where == kVapour ? 1.0 : 0.0};
        const auto q = corvane::pure_states(model, {Quantity::T, row.T}, second).front();
        // R is that of the library, which is up to 1.1e-5 off an equation's own.
        EXPECT_NEAR(q.h / model.M(), row.h, row.h_digit + 1.2e-5 * std::fabs(row.h));
        if (row.s_digit > 0) {
            EXPECT_NEAR(q.s / model.M(), row.s, row.s_digit + 1.2e-5 * row.s);
        }
    }
}

TEST(Reference, HoldsWhateverWasSetBefore) {
    corvane::Fluid fluid = corvane::open("PR", "propane");
    Model1& model = *fluid.model;
    const auto liquid = [&](double p) {
        return corvane::pure_states(model, {Quantity::p, p}, {Quantity::q, 0.0}).front();
    };
    set_reference(model, ReferenceState::formation);
    set_reference(model, ReferenceState::IIR);
    set_reference(model, ReferenceState::NBP);
    EXPECT_NEAR(liquid(0.101325).h, 0.0, 1e-8);
    EXPECT_NEAR(liquid(0.101325).s, 0.0, 1e-10);
    set_reference(model, ReferenceState::table);  // leaves it
    EXPECT_NEAR(liquid(0.101325).h, 0.0, 1e-8);
    set_reference(model, ReferenceState::ASHRAE);
    EXPECT_NEAR(corvane::pure_states(model, {Quantity::T, 233.15}, {Quantity::q, 0.0}).front().h,
                0.0, 1e-8);
    EXPECT_EQ(th_code([&] { set_reference(model, ReferenceState::triple); }), th_out_of_range);
    corvane::Fluid gas = corvane::open("MEOS", "nitrogen");  // no liquid at 0 °C
    EXPECT_THROW(set_reference(*gas.model, ReferenceState::IIR), corvane::EquilibriumFailure);
}
}  // namespace
