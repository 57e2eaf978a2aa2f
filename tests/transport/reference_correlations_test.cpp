// The reference correlations of transport properties: printed values, limits, densities of other
// equations.
#include "opened.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <tuple>

namespace {

enum Property { viscosity, conductivity };
enum Density { mass, molar };

// Pa·s and W/(m K) as the publications print them (water: tables of IAPWS R12-08 and R15-11 with
// the critical enhancement); kg/m³ or mol/m³.
TEST(Transport, ReferenceCorrelationsGiveThePrintedValues) {
    struct Printed {
        char const* name;
        Property property;
        double T, rho;
        Density unit;
        double value;
    };
    constexpr Printed table[] = {
        {"octane", viscosity, 300, 6177.2, molar, 0.0005536},
        {"nonane", viscosity, 300, 5619.1, molar, 0.00070953},
        {"decane", viscosity, 300, 5150.4, molar, 0.00092644},
        {"dodecane", viscosity, 500, 3444.7, molar, 0.00018376},
        {"r125", viscosity, 400, 30.631, molar, 1.707e-05},
        {"hydrogen", viscosity, 35, 100.0, mass, 5.47889e-05},
        {"ammonia", viscosity, 398, 21066.7, molar, 4.395e-05},
        {"nitrogen", viscosity, 126.195, 11180.0, molar, 1.82978e-05},
        {"argon", viscosity, 150.69, 13400.0, molar, 2.76101e-05},
        {"oxygen", viscosity, 154.6, 13600.0, molar, 2.47898e-05},
        {"air", viscosity, 132.64, 10400.0, molar, 1.77623e-05},
        {"hexane", viscosity, 550, 500.0, mass, 9.5002e-05},
        {"heptane", viscosity, 550, 500.0, mass, 9.5105e-05},
        {"carbon_dioxide", viscosity, 700, 1200.0, mass, 0.0002298},
        {"r123", viscosity, 415, 118.9, mass, 1.582e-05},
        {"water", viscosity, 298.15, 998.0, mass, 0.0008897351},
        {"water", viscosity, 298.15, 1200.0, mass, 0.001437649467},
        {"water", viscosity, 373.15, 1000.0, mass, 0.000307883622},
        {"water", viscosity, 433.15, 1.0, mass, 1.4538324e-05},
        {"water", viscosity, 433.15, 1000.0, mass, 0.000217685358},
        {"water", viscosity, 873.15, 1.0, mass, 3.2619287e-05},
        {"water", viscosity, 873.15, 100.0, mass, 3.5802262e-05},
        {"water", viscosity, 873.15, 600.0, mass, 7.7430195e-05},
        {"water", viscosity, 1173.15, 1.0, mass, 4.4217245e-05},
        {"water", viscosity, 1173.15, 100.0, mass, 4.7640433e-05},
        {"water", viscosity, 1173.15, 400.0, mass, 6.4154608e-05},
        {"water", viscosity, 647.35, 122.0, mass, 2.5520677e-05},
        {"water", viscosity, 647.35, 222.0, mass, 3.1337589e-05},
        {"water", viscosity, 647.35, 272.0, mass, 3.6228143e-05},
        {"water", viscosity, 647.35, 322.0, mass, 4.2961579e-05},
        {"water", viscosity, 647.35, 372.0, mass, 4.5688204e-05},
        {"water", viscosity, 647.35, 422.0, mass, 4.9436256e-05},
        {"ethane", viscosity, 500, 11210.0, molar, 4.834e-05},
        {"cyclohexane", viscosity, 700, 7476.5, molar, 0.000176749},
        {"benzene", viscosity, 550, 500.0, mass, 6.0511e-05},
        {"heavy_water", viscosity, 772.616, 286.40000000000003, mass, 4.228387599e-05},
        {"toluene", viscosity, 550, 550.0, mass, 8.0267e-05},
        {"hexane", conductivity, 510, 2.0, mass, 0.036772},
        {"heptane", conductivity, 400, 650.0, mass, 0.12075},
        {"ethanol", conductivity, 500, 10.0, mass, 0.039594},
        {"toluene", conductivity, 185, 968.821, mass, 0.15824},
        {"sulfur_hexafluoride", conductivity, 310, 0.0, mass, 0.013834},
        {"benzene", conductivity, 500, 800.0, mass, 0.14124},
        {"hydrogen", conductivity, 18, 75.0, mass, 0.10448},
        {"parahydrogen", conductivity, 18, 75.0, mass, 0.10052},
        {"octane", conductivity, 300, 6177.2, molar, 0.12836},
        {"nonane", conductivity, 300, 5619.4, molar, 0.13031},
        {"decane", conductivity, 300, 5150.4, molar, 0.1328},
        {"dodecane", conductivity, 660, 1500.98, molar, 0.090346},
        {"r123", conductivity, 430, 166.9, mass, 0.02103},
        {"carbon_dioxide", conductivity, 310, 400.0, mass, 0.07304},
        {"nitrogen", conductivity, 300, 5000.0, molar, 0.0327694},
        {"argon", conductivity, 150.69, 13400.0, molar, 0.856793},
        {"oxygen", conductivity, 154.6, 13600.0, molar, 0.377476},
        {"air", conductivity, 132.64, 10400.0, molar, 0.0756231},
        {"water", conductivity, 298.15, 0.0, mass, 0.0184341883},
        {"water", conductivity, 298.15, 998.0, mass, 0.607712868},
        {"water", conductivity, 298.15, 1200.0, mass, 0.799038144},
        {"water", conductivity, 873.15, 0.0, mass, 0.0791034659},
        {"water", conductivity, 647.35, 1.0, mass, 0.0519298924},
        {"water", conductivity, 647.35, 122.0, mass, 0.130922885},
        {"water", conductivity, 647.35, 222.0, mass, 0.367787459},
        {"water", conductivity, 647.35, 272.0, mass, 0.757959776},
        {"water", conductivity, 647.35, 322.0, mass, 1.44375556},
        {"water", conductivity, 647.35, 372.0, mass, 0.650319402},
        {"water", conductivity, 647.35, 422.0, mass, 0.448883487},
        {"water", conductivity, 647.35, 750.0, mass, 0.600961346},
        {"r23", viscosity, 180, 21097, molar, 0.00035388},
        {"r23", viscosity, 420, 7564, molar, 3.9459e-05},
        {"r23", viscosity, 370, 32.62, molar, 1.8213e-05},
        {"r23", conductivity, 180, 21097, molar, 0.14319},
        {"r23", conductivity, 420, 7564, molar, 0.05019},
        {"r23", conductivity, 370, 32.62, molar, 0.017455},
        {"methanol", viscosity, 300, 0.12955, mass, 9.696e-06},
        {"methanol", viscosity, 300, 788.41, mass, 0.0005422},
        {"methanol", viscosity, 630, 0.061183, mass, 2.081e-05},
        {"m_xylene", viscosity, 300, 0, molar, 6.637e-06},
        {"m_xylene", viscosity, 300, 40, molar, 6.564e-06},
        {"m_xylene", viscosity, 300, 8942.1, molar, 0.001898841},
        {"m_xylene", viscosity, 400, 7228.2, molar, 0.000238785},
        {"m_xylene", viscosity, 600, 7659.1, molar, 0.000299164},
        {"o_xylene", viscosity, 300, 40, molar, 6.598e-06},
        {"o_xylene", viscosity, 300, 8784.5, molar, 0.001645436},
        {"o_xylene", viscosity, 600, 7240.8, molar, 0.00025353},
        {"p_xylene", viscosity, 300, 49, molar, 6.405e-06},
        {"p_xylene", viscosity, 300, 8630.9, molar, 0.001266337},
        {"p_xylene", viscosity, 600, 7098.5, molar, 0.000209151},
        {"heavy_water", conductivity, 321.923, 1099.06, mass, 0.6202605019},
        {"heavy_water", conductivity, 579.462, 773.28, mass, 0.4658913274},
        {"heavy_water", conductivity, 772.616, 286.4, mass, 0.1926603184},
        {"ethane", conductivity, 230, 16020, molar, 0.1262},
        {"o_xylene", conductivity, 300, 0.0, mass, 0.01368},
        {"m_xylene", conductivity, 600, 0.0, mass, 0.0406},
        {"p_xylene", conductivity, 600, 0.0, mass, 0.04173},
        {"ethylbenzene", conductivity, 600, 0.0, mass, 0.04114},
        {"cyclopentane", conductivity, 512, 0.0, mass, 0.037042},
        {"isopentane", conductivity, 460, 0.0, mass, 0.035883},
        {"pentane", conductivity, 460, 0.0, mass, 0.034048},
    };
    for (Printed const& row : table) {
        Opened const& o = opened(row.name);
        const double rho =
            row.unit == mass ? 1e-3 * row.rho / o.fluid.model->param(0) : 1e-6 * row.rho;
        const corvane::TransportValue v = row.property == viscosity
                                              ? o.transport.viscosity(row.T, rho)
                                              : o.transport.thermal_conductivity(row.T, rho);
        EXPECT_EQ(v.model, "reference correlation");
        // 6e-4: values of four digits, and those that were printed with another molar mass or gas
        // constant; of water 2e-7, and 2e-4 next to the critical point, where the slope of the
        // equation's critical isotherm, as printed digits leave it, counts.
        const bool water = std::string(row.name) == "water";
        const bool critical = water && std::fabs(row.T - 647.35) < 1;
        EXPECT_NEAR(v.value / row.value, 1.0,
                    !water     ? 6e-4
                    : critical ? 2e-4
                               : 2e-7)
            << row.name << (row.property == viscosity ? " viscosity " : " conductivity ") << row.T
            << " K";
    }
}

// Printed with three digits, and helium by its pressure.
TEST(Transport, TablesOfThreeDigitsAreMet) {
    Opened const &ethane = opened("ethane"), &helium = opened("helium");
    EXPECT_NEAR(ethane.transport.thermal_conductivity(100, 0).value / 0.00346, 1, 2e-3);
    EXPECT_NEAR(ethane.transport.thermal_conductivity(440, 0.00152).value / 0.0459, 1, 5e-3);
    EXPECT_NEAR(ethane.transport.thermal_conductivity(310, 0.00413).value / 0.0454, 1, 5e-3);
    // Of the liquid the table has the density of an older equation; 0.3 % is 0.5 % of the viscosity.
    for (auto const& [T, expected, within] : {std::tuple(3.6, 3.745e-6, 6e-3), {50.0, 6.376e-6, 1e-3}, {400.0, 2.429e-5, 1e-3}}) {
        const auto s = corvane::pure_states(*helium.fluid.model, {corvane::Quantity::T, T}, {corvane::Quantity::p, 0.18});
        EXPECT_NEAR(helium.transport.viscosity(T, s.front().rho).value / expected, 1, within) << T;
    }
    // Far from its critical point, whose part is not there: 0.1 MPa, then 2 and 10 MPa at 20 K. Rounded to three or four digits.
    for (auto const& [T, p, expected] : {std::tuple(800.0, 0.1, 0.3085), {300.0, 0.1, 0.156}, {20.0, 0.1, 0.0262}, {20.0, 2.0, 0.0328}, {20.0, 10.0, 0.0594}}) {
        const auto s = corvane::pure_states(*helium.fluid.model, {corvane::Quantity::T, T}, {corvane::Quantity::p, p});
        EXPECT_NEAR(helium.transport.thermal_conductivity(T, s.front().rho).value / expected, 1, 0.01) << T << ' ' << p;
    }
    EXPECT_FALSE(helium.transport.thermal_conductivity(5, 0.015).in_range);
}

// The enhancement diverges towards the critical point of the gas-liquid line, and dies away from
// it.
TEST(Transport, ConductivityIsEnhancedNearTheCriticalPointOnly) {
    Opened const& o = opened("carbon_dioxide");
    const double Tc = o.fluid.model->Tcrit(), rho = 1 / o.fluid.model->vcrit();
    const auto lambda = [&](double part) {
        return o.transport.thermal_conductivity(part * Tc, rho).value;
    };
    EXPECT_GT(lambda(1.0001), 2 * lambda(1.003));
    EXPECT_GT(lambda(1.003), 1.5 * lambda(1.03));
    EXPECT_NEAR(lambda(1.6) / lambda(1.5), 1.05, 0.05);
}

// Every reference correlation: no density is the dilute gas, also for what is near it; towards the critical point the conductivity
// grows, by less than a theory of xi·cp can (5 per decade of T/Tc − 1), and is nowhere infinite.
TEST(Transport, ReferenceCorrelationsHaveTheirLimits) {
    int enhanced = 0;
    for (char const* folder : {"viscosity", "conductivity"})
        for (auto const& entry : std::filesystem::directory_iterator(std::string("CorvaneS/transport/") + folder)) {
            const std::string name = entry.path().filename().string();
            SCOPED_TRACE(name);
            Opened const& o = opened(name);
            const double Tc = o.fluid.model->Tcrit(), rho_c = 1 / o.fluid.model->vcrit();
            for (double part : {0.7, 1.0, 1.4}) {
                const double T = part * Tc;
                EXPECT_NEAR(o.transport.viscosity(T, 1e-9 * rho_c).value / o.transport.viscosity(T, 0).value, 1, 1e-6) << name;
                EXPECT_NEAR(o.transport.thermal_conductivity(T, 1e-9 * rho_c).value / o.transport.thermal_conductivity(T, 0).value,
                            1, name == "r123" ? 3e-4 : 1e-5) << name;  // whose Gaussian enhancement reaches so far
            }
            if (std::string(folder) == "viscosity") continue;
            const auto extra = [&](double tau) {
                const double T = Tc * (1 + tau);
                return o.transport.thermal_conductivity(T, rho_c).value - o.transport.conductivity_background(T, rho_c).value;
            };
            const double far = extra(0.1), near = extra(1e-2), next = extra(1e-3);
            if (!(far > 0)) continue;
            ++enhanced;
            EXPECT_GT(near, far) << name;
            EXPECT_GE(next, near) << name;
            EXPECT_LT(next, 5 * near) << name;
            for (double tau : {1e-9, -1e-9, 1e-6, 1e-4})
                EXPECT_TRUE(extra(tau) > next && extra(tau) < 12) << tau << ' ' << extra(tau);
            if (name == "water" || name == "carbon_dioxide")
                EXPECT_THROW(extra(0), ThException);  // the terms of their equations that are not analytic have no value there
            else
                EXPECT_NEAR(extra(0) / extra(1e-9), 1, 0.01);
        }
    EXPECT_GE(enhanced, 30);
}

// A reference correlation gives nearly its own liquid with the densities of any equation; one per cent of the density
// would be ten of the viscosity.
TEST(Transport, ReferenceCorrelationsKnowTheDensitiesOfOtherEquations) {
    for (char const* name : {"benzene", "toluene", "propane", "nitrogen"})
        for (char const* equation : {"PR", "SRK", "PCSAFT"}) {
            Opened const &reference = opened(name), &other = opened(name, equation);
            const auto liquid = [](Opened const& o, double T) { return corvane::pure_saturation_T(*o.fluid.model, T).rhoL; };
            for (double part : {0.5, 0.6, 0.75}) {
                const double T = part * reference.fluid.model->Tcrit(), a = liquid(reference, T), b = liquid(other, T);
                EXPECT_NEAR(other.transport.viscosity(T, b).value / reference.transport.viscosity(T, a).value, 1, 1e-3);
                EXPECT_NEAR(other.transport.conductivity_background(T, b).value /
                                reference.transport.conductivity_background(T, a).value, 1, 1e-3);
                EXPECT_EQ(other.transport.viscosity(T, 0).value, reference.transport.viscosity(T, 0).value);
            }
        }
}

}  // namespace
