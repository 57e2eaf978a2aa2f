// The certified interface against the C++ functions behind it, and what it says of failures.
#include "support/mixtures.h"

#include <corvane/binding/certified_interface.h>
#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <thread>

namespace {
CorvaneError e;

struct Release {
    void operator()(void* handle) const { Corvane_release(handle); }
};
using Fluid = std::unique_ptr<CorvaneFluid, Release>;
using Mixture = std::unique_ptr<CorvaneMixture, Release>;
using Result = std::unique_ptr<CorvaneResult, Release>;

Mixture open_mixture(char const* model, std::vector<char const*> names) {
    Mixture m(Corvane_open_mixture(model, static_cast<int>(names.size()), names.data(), nullptr, 0,
                                   1, nullptr, &e));
    EXPECT_EQ(e.kind, CORVANE_OK) << e.message;
    return m;
}

constexpr double z[] = {0.5, 0.5};
const Vector<double> x = [] {
    Vector<double> v(2);
    v.set(0.5);
    return v;
}();

double value(Result const& r, int line, int point, int phase, int property) {
    EXPECT_TRUE(r) << e.message;
    return r ? Corvane_Result_value(r.get(), line, point, phase, property, nullptr) : NAN;
}

std::string text(std::function<int(char*, int)> const& get) {
    std::string s(static_cast<std::size_t>(get(nullptr, 0)) + 1, '?');
    get(s.data(), static_cast<int>(s.size()));
    s.pop_back();
    return s;
}

// Every number that is handed on is that of the C++ function, to the bit.
TEST(Certified, PureFluidsAsInCpp) {
    const Fluid fluid(Corvane_open(nullptr, "CO2", 0, nullptr, &e));
    const corvane::Fluid cpp = corvane::open("", "CO2");
    ASSERT_TRUE(fluid) << e.message;
    EXPECT_EQ(text([&](char* to, int n) {
                  return Corvane_Fluid_text(fluid.get(), CORVANE_TEXT_SUBSTANCE, to, n, &e);
              }),
              "carbon_dioxide");
    EXPECT_EQ(Corvane_Fluid_number(fluid.get(), CORVANE_T_CRITICAL, &e), cpp.model->Tcrit());
    EXPECT_EQ(Corvane_Fluid_number(fluid.get(), CORVANE_T_MAX, &e), cpp.notes.Tmax);

    using Q = corvane::Quantity;
    const Result one(
        Corvane_pure_states(fluid.get(), CORVANE_GIVEN_P, 5, CORVANE_GIVEN_U, 1e4, &e));
    const auto states = corvane::pure_states(*cpp.model, {Q::p, 5}, {Q::u, 1e4});
    ASSERT_EQ(Corvane_Result_points(one.get(), 0, &e), static_cast<int>(states.size()));
    ASSERT_FALSE(states.empty());
    EXPECT_EQ(value(one, 0, 0, CORVANE_WHOLE, CORVANE_T), states[0].T);
    EXPECT_EQ(value(one, 0, 0, CORVANE_WHOLE, CORVANE_S), states[0].s);

    const Result two(
        Corvane_pure_states(fluid.get(), CORVANE_GIVEN_Q, 0.25, CORVANE_GIVEN_T, 280, &e));
    const auto wet = corvane::pure_states(*cpp.model, {Q::q, 0.25}, {Q::T, 280}).at(0);
    EXPECT_EQ(value(two, 0, 0, 0, CORVANE_W), wet.liquid->w);
    EXPECT_EQ(value(two, 0, 0, 1, CORVANE_CP), wet.vapour->cp);
    EXPECT_EQ(value(two, 0, 0, 1, CORVANE_FRACTION), 0.25);

    const Result curve(Corvane_pure_saturation_p(fluid.get(), 3, &e));
    const auto s = corvane::pure_saturation_p(*cpp.model, 3);
    EXPECT_EQ(value(curve, 0, 0, CORVANE_WHOLE, CORVANE_T), s.T);
    EXPECT_EQ(value(curve, 0, 0, 1, CORVANE_RHO), s.rhoV);
    EXPECT_EQ(value(curve, 0, 0, CORVANE_WHOLE, CORVANE_VALUE_ERROR), s.value_error);
    double evidence[2];
    for (int what : {CORVANE_VISCOSITY, CORVANE_CONDUCTIVITY, CORVANE_SURFACE_TENSION, CORVANE_DIFFUSION}) {
        const corvane::Transport transport(cpp);
        const auto v = what == CORVANE_VISCOSITY      ? transport.viscosity(300, 1e-3)
                       : what == CORVANE_CONDUCTIVITY ? transport.thermal_conductivity(300, 1e-3)
                       : what == CORVANE_DIFFUSION    ? transport.diffusion(300, 1e-3)
                                                      : transport.surface_tension(300);
        EXPECT_EQ(Corvane_transport(fluid.get(), what, 300, 1e-3, evidence, &e), v.value);
        EXPECT_EQ(evidence[0], v.in_range);
        EXPECT_EQ(text([&](char* to, int n) {
                      return Corvane_transport_model(fluid.get(), what, 300, 1e-3, to, n, &e);
                  }),
                  v.model + ": " + v.source + (what == CORVANE_DIFFUSION ? ", 25 % in nine cases of ten" : "") +
                      (v.metastable ? ", metastable" : ""));
    }
    EXPECT_EQ(Corvane_transport(fluid.get(), CORVANE_FICK_DIFFUSION, 300, 1e-3, nullptr, &e), 0.0);
    EXPECT_EQ(e.kind, CORVANE_BAD_ARGUMENT);
    const Result phase(Corvane_pure_phase(fluid.get(), 300, 1e-3, &e));
    EXPECT_EQ(value(phase, 0, 0, 0, CORVANE_MU_JT),
              corvane::phase_properties(*cpp.model, 300, 1e-3).mu_JT);
}

TEST(Certified, PointsOfMixturesAsInCpp) {
    const Mixture gas = open_mixture("PR+vdW1", {"methane", "propane"});
    const corvane::Mixture cpp = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    ModelN const& m = *cpp.model;
    EXPECT_EQ(Corvane_Mixture_size(gas.get()), 2);
    EXPECT_EQ(Corvane_Mixture_number(gas.get(), CORVANE_MOLAR_MASS, 1, &e), m.mdl1[1]->M());

    struct Flash {
        CorvaneResult* (*c)(CorvaneMixture const*, double, double, double const*, int,
                            CorvaneError*);
        corvane::FlashResult (*cpp)(ModelN const&, double, double, Vector<double> const&,
                                    corvane::FlashOptions const&);
        double a, b;
    };
    for (Flash const& f : {Flash{Corvane_flash_pT, corvane::flash_pT, 2, 250},
                           Flash{Corvane_flash_ph, corvane::flash_ph, 2, 230},
                           Flash{Corvane_flash_ps, corvane::flash_ps, 2, 87},
                           Flash{Corvane_flash_Trho, corvane::flash_Trho, 250, 2e-3}}) {
        const Result r(f.c(gas.get(), f.a, f.b, z, 2, &e));
        corvane::FlashResult q = f.cpp(m, f.a, f.b, x, {});
        corvane::add_caloric(m, x, q);
        ASSERT_EQ(Corvane_Result_phases(r.get(), 0, 0, &e), 2) << e.message;
        EXPECT_EQ(value(r, 0, 0, CORVANE_WHOLE, CORVANE_T), q.T);
        EXPECT_EQ(value(r, 0, 0, CORVANE_WHOLE, CORVANE_P), q.p);
        EXPECT_NEAR(value(r, 0, 0, CORVANE_WHOLE, CORVANE_H), q.h, 1e-9 * std::abs(q.h));
        EXPECT_EQ(value(r, 0, 0, 1, CORVANE_FRACTION), q.fraction[1]);
        double h = 0.0;  // the whole is the sum of its phases
        for (int k = 0; k < 2; ++k)
            h += value(r, 0, 0, k, CORVANE_FRACTION) * value(r, 0, 0, k, CORVANE_H);
        EXPECT_NEAR(h, q.h, 1e-9 * std::abs(q.h));
        EXPECT_EQ(value(r, 0, 0, 1, CORVANE_X + 1), q.phases[1].x[1]);
        EXPECT_EQ(value(r, 0, 0, CORVANE_WHOLE, CORVANE_TPD), q.certificate.tpd);
        EXPECT_EQ(value(r, 0, 0, CORVANE_WHOLE, CORVANE_X_ERROR), q.certificate.x_error);
    }

    // Two states at one T and h, between which the isotherm has its lowest h.
    using Q = corvane::Quantity;
    const auto both = corvane::mixture_states(m, {Q::T, 250}, {Q::h, 3000}, x);
    const Result pair(Corvane_mixture_states(gas.get(), CORVANE_GIVEN_H, 3000, CORVANE_GIVEN_T, 250, z, 2, &e));
    ASSERT_EQ(Corvane_Result_points(pair.get(), 0, &e), 2) << e.message;
    EXPECT_EQ(Corvane_Result_complete(pair.get()), 1);
    for (int k : {0, 1}) EXPECT_EQ(value(pair, 0, k, CORVANE_WHOLE, CORVANE_P), both.states[k].p);

    // Two dew points at one T: the branch, bubble and dew, and T and p are not mixed up.
    struct Saturation {
        CorvaneResult* (*c)(CorvaneMixture const*, double, double const*, int, int, CorvaneError*);
        corvane::SaturationPoint (*cpp)(ModelN const&, corvane::Saturated, double,
                                        Vector<double> const&, corvane::SaturationOptions const&);
        corvane::Saturated kind;
        double value;
        int branch;
    };
    using corvane::Saturated;
    for (Saturation const& s :
         {Saturation{Corvane_bubble_T, corvane::saturation_T, Saturated::bubble, 250, 0},
          Saturation{Corvane_bubble_p, corvane::saturation_p, Saturated::bubble, 5, 1},
          Saturation{Corvane_dew_T, corvane::saturation_T, Saturated::dew, 325, 1},
          Saturation{Corvane_dew_T, corvane::saturation_T, Saturated::dew, 325, 2},
          Saturation{Corvane_dew_p, corvane::saturation_p, Saturated::dew, 3, 0}}) {
        const Result r(s.c(gas.get(), s.value, z, 2, s.branch, &e));
        corvane::SaturationOptions options;
        options.branch = static_cast<corvane::Branch>(s.branch);
        const auto q = s.cpp(m, s.kind, s.value, x, options);
        EXPECT_EQ(value(r, 0, 0, CORVANE_WHOLE, CORVANE_P), q.p);
        EXPECT_EQ(value(r, 0, 0, 1, CORVANE_X), q.incipient.x[0]);
        EXPECT_EQ(value(r, 0, 0, 0, CORVANE_RHO), q.given.rho);
        EXPECT_EQ(text([&](char* to, int n) {
                      return Corvane_Result_certificate(r.get(), 0, 0, to, n, &e);
                  }),
                  q.certificate.line());
    }
    const Result critical(Corvane_critical_point(gas.get(), z, 2, &e));
    EXPECT_EQ(value(critical, 0, 0, 0, CORVANE_RHO), corvane::critical_point(m, x).rho);
    const corvane::MixtureTransport transport(cpp);
    double in_range = 0.0;
    for (int what : {CORVANE_VISCOSITY, CORVANE_CONDUCTIVITY, CORVANE_DIFFUSION}) {
        const auto v = what == CORVANE_VISCOSITY      ? transport.viscosity(300, 1e-3, x)
                       : what == CORVANE_CONDUCTIVITY ? transport.thermal_conductivity(300, 1e-3, x)
                                                      : transport.diffusion(300, 1e-3, x).stefan;
        EXPECT_EQ(Corvane_mixture_transport(gas.get(), what, 300, 1e-3, z, 2, &in_range, &e), v.value);
        EXPECT_EQ(in_range, v.in_range);
        EXPECT_EQ(text([&](char* to, int n) {
                      return Corvane_mixture_transport_model(gas.get(), what, 300, 1e-3, z, 2, to, n, &e);
                  }),
                  v.model + ": " + v.source + (what == CORVANE_DIFFUSION      ? ", 25 % in nine cases of ten"
                                               : what == CORVANE_CONDUCTIVITY ? ", 15 % in nine cases of ten"
                                                                              : ", 12 % in nine cases of ten"));
    }
    EXPECT_EQ(Corvane_mixture_transport(gas.get(), CORVANE_FICK_DIFFUSION, 300, 1e-3, z, 2, &in_range, &e),
              transport.diffusion(300, 1e-3, x).fick());
    const double y[] = {0.9, 0.1};
    Vector<double> vapour(2);
    vapour[0] = y[0], vapour[1] = y[1];
    EXPECT_EQ(Corvane_mixture_tension(gas.get(), 250, 0.014, z, 1e-3, y, 2, nullptr, &e),
              transport.surface_tension(250, 0.014, x, 1e-3, vapour).value);
    // The profile: as in C++, in part, and refused where there is none.
    const auto s = corvane::bubble_T(m, 250, x);
    const auto profile = transport.interface_profile(250, s.given.rho, x, s.incipient.rho, s.incipient.x);
    const double incipient[] = {s.incipient.x[0], s.incipient.x[1]};
    double points[3 * 4], summary[3];
    const auto ask = [&](double* to, int count, double factor) {
        return Corvane_mixture_interface(gas.get(), 250, factor * s.given.rho, z, s.incipient.rho, incipient, 2, to, count, summary, &e);
    };
    EXPECT_EQ(ask(nullptr, 0, 1), static_cast<int>(profile.z.size()));
    EXPECT_EQ(ask(points, 3, 1), static_cast<int>(profile.z.size()));
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_EQ(points[4 * k], profile.z[k]);
        EXPECT_EQ(points[4 * k + 1], profile.excess[k]);
        for (std::size_t i = 0; i < 2; ++i) EXPECT_EQ(points[4 * k + 2 + i], profile.rho_i[k][i]);
    }
    EXPECT_EQ(summary[0], profile.tension);
    EXPECT_EQ(summary[2], profile.thickness);
    EXPECT_EQ(ask(points, 3, 1.1), 0);
    EXPECT_EQ(e.kind, CORVANE_NO_SOLUTION);
    EXPECT_EQ(ask(nullptr, 3, 1), 0);
    EXPECT_EQ(e.kind, CORVANE_BAD_ARGUMENT);
    EXPECT_EQ(Corvane_mixture_transport(gas.get(), 2, 300, 1e-3, z, 2, nullptr, &e), 0.0);
    EXPECT_EQ(e.kind, CORVANE_BAD_ARGUMENT);
    EXPECT_EQ(Corvane_mixture_tension(gas.get(), 250, 0.014, z, 1e-3, y, 1, nullptr, &e), 0.0);
    EXPECT_EQ(e.kind, CORVANE_BAD_ARGUMENT);
    const Result phase(Corvane_mixture_phase(gas.get(), 300, 1e-3, z, 2, &e));
    EXPECT_EQ(value(phase, 0, 0, 0, CORVANE_W), corvane::phase_properties(m, 300, 1e-3, x).w);
}

/// A column equals a member of the points of a curve.
template <class Points, class Get>
void expect_column(Result const& r, int line, int phase, int property, Points const& points,
                   Get get) {
    std::vector<double> column(points.size() + 1, -1.0), expected;
    const int n = Corvane_Result_column(r.get(), line, phase, property, column.data(),
                                        static_cast<int>(column.size()), &e);
    for (auto const& q : points) expected.push_back(get(q));
    expected.push_back(-1.0);  // nothing is written beyond the last point
    EXPECT_EQ(n, static_cast<int>(points.size()));
    EXPECT_EQ(column, expected);
}

TEST(Certified, CurvesAsInCpp) {
    const Mixture gas = open_mixture("PR+vdW1", {"carbon_dioxide", "ethane"});
    const corvane::Mixture cpp = corvane::open_mixture("PR+vdW1", {"carbon_dioxide", "ethane"});
    ModelN const& m = *cpp.model;
    int calls = 0;
    const auto count = [](int, void* context) { return ++*static_cast<int*>(context); };

    // At 0.05 MPa a liquid that would freeze comes first: the second curve is the usual one.
    const Result envelope(Corvane_envelope(gas.get(), z, 2, 0, 20, 1, count, &calls, &e));
    corvane::EnvelopeOptions options;
    options.p_max = 20;
    const auto curves = corvane::phase_envelopes(m, x, options);
    ASSERT_EQ(curves.size(), 2u);
    expect_column(envelope, 0, 1, CORVANE_X, curves[0].points, [](auto& q) { return q.y[0]; });
    EXPECT_GT(calls, 10);
    int line = 1;
    while (Corvane_Result_kind(envelope.get(), line, &e) != CORVANE_LINE_ENVELOPE) ++line;
    EXPECT_EQ(Corvane_Result_end(envelope.get(), line, &e), CORVANE_END_CLOSED);
    EXPECT_EQ(Corvane_Result_kind(envelope.get(), line + 1, &e), CORVANE_LINE_CRITICAL);
    EXPECT_EQ(value(envelope, line + 1, 0, CORVANE_WHOLE, CORVANE_T), curves[1].critical.at(0).T);

    // The azeotrope of this pair splits the isotherm into two branches from the pure components.
    const Result pxy(Corvane_diagram_pxy(gas.get(), 263.15, 0, nullptr, nullptr, &e));
    const auto d = corvane::complete_pxy(m, 263.15);
    expect_column(pxy, 0, 0, CORVANE_RHO, d.branches.at(0).points, [](auto& q) { return q.rho_x; });
    expect_column(pxy, 0, 1, CORVANE_X + 1, d.branches.at(0).points,
                  [](auto& q) { return 1.0 - q.y; });
    EXPECT_EQ(value(pxy, 0, 5, CORVANE_WHOLE, CORVANE_X_ERROR), d.branches.at(0).points.at(5).x_error);
    EXPECT_EQ(Corvane_Result_components(pxy.get()), 2);
    EXPECT_EQ(Corvane_Result_kind(pxy.get(), 0, &e), CORVANE_LINE_VAPOUR_LIQUID);
    EXPECT_EQ(Corvane_Result_begin(pxy.get(), 0, &e), CORVANE_END_PURE);
    EXPECT_EQ(Corvane_Result_end(pxy.get(), 0, &e), CORVANE_END_PURE);
    EXPECT_EQ(Corvane_Result_complete(pxy.get()), 1);
    const int last = Corvane_Result_lines(pxy.get()) - 1;
    EXPECT_EQ(Corvane_Result_kind(pxy.get(), last, &e), CORVANE_LINE_AZEOTROPES);
    EXPECT_EQ(value(pxy, last, 0, 0, CORVANE_X), d.branches.at(0).azeotropes.at(0).x);

    const Result critical(Corvane_critical_lines(gas.get(), 0, nullptr, nullptr, &e));
    const auto lines = corvane::critical_lines(m);
    ASSERT_EQ(Corvane_Result_lines(critical.get()), static_cast<int>(lines.size()));
    expect_column(critical, 0, CORVANE_WHOLE, CORVANE_CONDITIONS, lines[0].points,
                  [](auto& q) { return q.certificate.conditions; });

    // Whoever interrupts keeps the points so far, and is told.
    const auto stop = [](int points, void*) { return int(points < 3); };
    const Result part(Corvane_critical_lines(gas.get(), 0, stop, nullptr, &e));
    EXPECT_EQ(Corvane_Result_end(part.get(), 0, &e), CORVANE_END_INTERRUPTED);
    EXPECT_EQ(Corvane_Result_complete(part.get()), 0);
}

TEST(Certified, TernariesAndPropertyDiagramsAsInCpp) {
    const std::vector<char const*> names = {"methane", "ethane", "carbon_dioxide"};
    const Mixture m = open_mixture("PR+vdW1", names);
    const corvane::Mixture cpp = corvane::open_mixture("PR+vdW1", {"methane", "ethane", "carbon_dioxide"});
    const Result ternary(Corvane_ternary(m.get(), 5, 250, 0.1, 6, nullptr, nullptr, &e));
    corvane::TernaryOptions options;
    options.step = 0.1, options.mesh = 6;
    const auto t = corvane::ternary_diagram(*cpp.model, 250, 5, options);
    ASSERT_FALSE(t.regions.empty());
    for (std::size_t i = 0; i < t.regions.size(); ++i)
        expect_column(ternary, static_cast<int>(i), 1, CORVANE_X + 2, t.regions[i].tie_lines,
                      [](auto& q) { return q.phases[1].x[2]; });
    EXPECT_EQ(value(ternary, 0, 0, CORVANE_WHOLE, CORVANE_X_ERROR), t.regions[0].tie_lines[0].x_error);
    EXPECT_EQ(Corvane_Result_begin(ternary.get(), 0, &e), CORVANE_END_PURE);
    EXPECT_EQ(Corvane_Result_complete(ternary.get()), int(t.complete()));

    const Fluid fluid(Corvane_open("PR", "CO2", 0, nullptr, &e));
    const corvane::Fluid pure = corvane::open("PR", "CO2");
    const int what[] = {CORVANE_GIVEN_P, CORVANE_GIVEN_Q, CORVANE_GIVEN_T};
    const double values[] = {3.0, 0.5, 280.0};
    corvane::PropertyDiagramOptions lines;
    lines.T = {280.0}, lines.p = {3.0}, lines.points = 20;
    const double three[] = {0.5, 0.3, 0.2};
    const Result mixed(
        Corvane_property_diagram(m.get(), three, 3, what, values, 1, 20, nullptr, nullptr, &e));
    EXPECT_EQ(Corvane_Result_kind(mixed.get(), 2, &e), CORVANE_LINE_ISOBAR);
    EXPECT_EQ(value(mixed, 2, 0, CORVANE_WHOLE, CORVANE_P), 3.0);
    lines.q = {0.5};
    const Result r(Corvane_pure_property_diagram(fluid.get(), what, values, 3, 20, nullptr, nullptr, &e));
    const auto d = corvane::property_diagram(*pure.model, lines);
    ASSERT_EQ(Corvane_Result_lines(r.get()), static_cast<int>(2 + d.lines.size()));
    expect_column(r, 0, CORVANE_WHOLE, CORVANE_H, d.liquid, [](auto& q) { return q.h; });
    const int kinds[] = {CORVANE_LINE_ISOTHERM, CORVANE_LINE_ISOBAR, CORVANE_LINE_EQUAL_Q};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Corvane_Result_kind(r.get(), 2 + i, &e), kinds[i]);
        expect_column(r, 2 + i, CORVANE_WHOLE, CORVANE_S, d.lines[static_cast<std::size_t>(i)].points,
                      [](auto& q) { return q.s; });
    }
}

// From four threads at once, the data of the solids being read by whoever comes first.
TEST(Certified, SolidsAsInCppFromFourThreads) {
    const Mixture m = open_mixture("PR+vdW1", {"benzene", "naphthalene"});
    const corvane::Mixture cpp = corvane::open_mixture("PR+vdW1", {"benzene", "naphthalene"});
    std::vector<corvane::AnchoredSolid> solids;
    for (int i = 0; i < 2; ++i) {
        cpp.model->mdl1[i]->solid.load();
        solids.emplace_back(*cpp.model->mdl1[i], corvane::load_fusion(cpp.components[std::size_t(i)]));
    }
    corvane::SolidFluidOptions options;
    options.anchored = {&solids[0], &solids[1]};
    const auto q = corvane::eutectic(*cpp.model, 0.1, options);
    std::array<double, 4> T{}, x0{};
    std::vector<std::thread> threads;
    for (std::size_t k = 0; k < T.size(); ++k)
        threads.emplace_back([&, k] {
            CorvaneError mine;
            const Result r(Corvane_eutectic(m.get(), 0.1, &mine));
            T[k] = Corvane_Result_value(r.get(), 0, 0, CORVANE_WHOLE, CORVANE_T, &mine);
            x0[k] = Corvane_Result_value(r.get(), 0, 0, 0, CORVANE_X, &mine);
        });
    for (auto& t : threads) t.join();
    for (std::size_t k = 0; k < T.size(); ++k) {
        EXPECT_EQ(T[k], q.T);
        EXPECT_EQ(x0[k], q.x[0]);
    }
    const Result line(Corvane_solid_fluid_isobar(m.get(), 1, 0.1, nullptr, nullptr, &e));
    EXPECT_EQ(Corvane_Result_kind(line.get(), 0, &e), CORVANE_LINE_SOLID_1);
    EXPECT_EQ(Corvane_Result_begin(line.get(), 0, &e), CORVANE_END_PURE);
    EXPECT_EQ(Corvane_Result_end(line.get(), 0, &e), CORVANE_END_EUTECTIC);
    EXPECT_NEAR(value(line, 0, Corvane_Result_points(line.get(), 0, &e) - 1, 0, CORVANE_X), q.x[0],
                1e-9);
}

TEST(Certified, FailuresSayWhatWasAsked) {
    const Mixture gas = open_mixture("PR+vdW1", {"methane", "propane"});
    const Mixture three = open_mixture("PR+vdW1", {"methane", "ethane", "propane"});
    const Fluid fluid(Corvane_open("PR", "methane", 0, nullptr, &e));
    const Result r(Corvane_flash_pT(gas.get(), 2, 250, z, 2, &e));
    char const* names[] = {"methane", nullptr};
    char const* twice[] = {"methane", "CH4"};
    auto* const m = gas.get();
    struct Row {
        int kind, number;
        char const* part;  // of the text
        std::function<void()> call;
    };
    const Row rows[] = {
        {CORVANE_NOT_OPENED, 0, "unknown substance 'unobtainium'",
         [&] { Corvane_open("PR", "unobtainium", 0, nullptr, &e); }},
        {CORVANE_NOT_OPENED, 0, "PR has no set 9 for methane; sets: 1",
         [&] { Corvane_open("PR", "methane", 9, nullptr, &e); }},
        {CORVANE_NOT_OPENED, 0, "/nowhere does not hold CorvaneS",
         [&] { Corvane_open("PR", "methane", 0, "/nowhere", &e); }},
        {CORVANE_NULL_ARGUMENT, 0, "open: the substance is null",
         [&] { Corvane_open("PR", nullptr, 0, nullptr, &e); }},
        {CORVANE_NULL_ARGUMENT, 0, "name of a component",
         [&] { Corvane_open_mixture("PR+vdW1", 2, names, nullptr, 0, 1, nullptr, &e); }},
        {CORVANE_NOT_OPENED, 0, "methane is named twice",
         [&] { Corvane_open_mixture("PR+vdW1", 2, twice, nullptr, 0, 1, nullptr, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "3 mole fractions for 2 components",
         [&] { Corvane_flash_pT(m, 2, 250, z, 3, &e); }},
        {CORVANE_NULL_ARGUMENT, 0, "flash_pT, PR+vdW1 methane, propane: the composition is null",
         [&] { Corvane_flash_pT(m, 2, 250, nullptr, 2, &e); }},
        {CORVANE_NULL_ARGUMENT, 0, "dew_T: the object is null",
         [&] { Corvane_dew_T(nullptr, 250, z, 2, 0, &e); }},
        {CORVANE_THERMODYNAMIC, th_out_of_range, "flash_pT, PR+vdW1 methane, propane: ",
         [&] { Corvane_flash_pT(m, -2, 250, z, 2, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no choice 3", [&] { Corvane_dew_T(m, 250, z, 2, 3, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no choice 7",
         [&] { Corvane_pure_states(fluid.get(), 7, 1, 0, 300, &e); }},
        {CORVANE_NO_SOLUTION, 0, "PR+vdW1 methane, propane: dew_T: no solution at T = 400 K",
         [&] { Corvane_dew_T(m, 400, z, 2, 0, &e); }},
        {CORVANE_NO_SOLUTION, 0, "PR methane: ",
         [&] { Corvane_pure_saturation_T(fluid.get(), 200, &e); }},
        {CORVANE_THERMODYNAMIC, th_no_option, "diagram_pxy, PR+vdW1 methane, ethane, propane: ",
         [&] { Corvane_diagram_pxy(three.get(), 250, 0, nullptr, nullptr, &e); }},
        {CORVANE_THERMODYNAMIC, th_no_option, "eutectic, ",
         [&] { Corvane_eutectic(three.get(), 0.1, &e); }},
        {CORVANE_THERMODYNAMIC, th_no_option, "ternary, ",
         [&] { Corvane_ternary(m, 1, 250, 0, 0, nullptr, nullptr, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no isolines of quantity 6",  // equal q of a mixture
         [&, what = int(CORVANE_GIVEN_Q)] {
             Corvane_property_diagram(m, z, 2, &what, z, 1, 0, nullptr, nullptr, &e);
         }},
        {CORVANE_BAD_ARGUMENT, 0, "no line 1", [&] { Corvane_Result_points(r.get(), 1, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no point -1",
         [&] { Corvane_Result_value(r.get(), 0, -1, 0, CORVANE_T, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no phase -2",
         [&] { Corvane_Result_value(r.get(), 0, 0, -2, CORVANE_T, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no property 31",
         [&] { Corvane_Result_value(r.get(), 0, 0, 0, CORVANE_EVALUATIONS + 1, &e); }},
        {CORVANE_BAD_ARGUMENT, 0, "no component 2",
         [&] { Corvane_Result_value(r.get(), 0, 0, 0, CORVANE_X + 2, &e); }},
        {CORVANE_NULL_ARGUMENT, 0, "the array is null",
         [&] { Corvane_Result_column(r.get(), 0, 0, CORVANE_T, nullptr, 2, &e); }},
    };
    for (Row const& row : rows) {
        row.call();
        EXPECT_EQ(e.kind, row.kind) << row.part;
        EXPECT_EQ(e.number, row.number) << row.part;
        EXPECT_EQ(e.info, -1) << row.part;
        const std::string whole = text(Corvane_message);
        EXPECT_NE(whole.find(row.part), std::string::npos) << whole;
        EXPECT_EQ(whole.substr(0, sizeof e.message - 1), e.message);
    }
    Corvane_release(nullptr);
    Corvane_flash_pT(m, -2, 250, z, 2, nullptr);  // the record may be null
    char cut[4];
    EXPECT_EQ(Corvane_Fluid_text(fluid.get(), CORVANE_TEXT_SUBSTANCE, cut, sizeof cut, &e), 7);
    EXPECT_STREQ(cut, "met");
    EXPECT_TRUE(std::isnan(value(r, 0, 0, 5, CORVANE_X)));
}
}  // namespace
