// Multi-fluid mixtures of reference equations against published figures and against themselves.
#include "support/errors.h"
#include "support/mixtures.h"
#include "support/vdw_model.h"

#include <corvane/core/files.h>
#include <corvane/ideal/load_ideal.h>
#include <corvane/pure/power_series.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>

namespace {

constexpr double kRg = 8.314472;  // of the residual parts of Kunz & Wagner (2012), J/(mol K)
using Names = std::vector<std::string>;

/// A mixture whose pairs and components are those of a set: 1 GERG-2008, 2 full equations.
Mixture load_mixture(Names const& names, int set = 1) {
    Mixture m(attachN("MEOS", "GERG"));
    m->alloc(static_cast<int>(names.size()), "MEOS");
    for (int j = 0; j < m->mdl1.size(); ++j) {
        m->mdl1[j]->name(names[static_cast<unsigned>(j)].c_str());
        m->mdl1[j]->id(-1);
        for (int i = 0; i < j; ++i) m->id(i, j, set);
    }
    m->load("MEOS", "GERG");
    return m;
}

/// cv, cp [J/(mol K)] and w [m/s]. The residual parts count with the standard's gas constant, the
/// ideal parts as the tables have them, which were made with the standard's older one.
struct Caloric {
    double cv, cp, w;
};
Caloric caloric(ModelN const& m, double rho, double T, Vector<double> const& x) {
    double cv = kRg * T * m.CVr(rho, T, x), M = 0;  // the mixture's own CVr lacks the factor T
    for (int i = 0; i < x.size(); ++i) {
        EXPECT_TRUE(
            corvane::load_ideal(*m.mdl1[i]).ends_with(m.mdl1[i]->name() + std::string(";8")));
        cv += R * x[i] * m.mdl1[i]->ideal.CVm(T);
        M += 1e-3 * x[i] * m.mdl1[i]->M();
    }
    const double beta = m.betaV(rho, T, x), slope = m.pV(rho, T, x);
    return {cv, cv + kRg * beta * beta / slope,
            std::sqrt(kRg * T / M * (slope + kRg * beta * beta / cv))};
}


// Published by the authors of GERG-2008 for equimolar mixtures: T/K, rho/(mol/dm³), then p/MPa, cv,
// cp/(J/(mol K)) and w/(m/s), to eight digits. Every component occurs, with the ideal-gas table of
// its own set.
TEST(Gerg, BinaryMixturesHaveThePublishedProperties) {
    struct {
        char const *a, *b;
        double T, rho, values[4];
    } const rows[] = {
        {"methane", "nitrogen", 155.52, 15, {4.6047112, 33.037161, 175.39203, 280.95694}},
        {"methane", "carbon_dioxide", 201.03, 22, {4.1825383, 32.820054, 75.054572, 692.94508}},
        {"methane", "propane", 275.74, 12.5, {7.8845752, 51.460308, 107.2075, 512.42452}},
        {"methane", "hydrogen", 171.42, 16, {18.480673, 23.763308, 50.785662, 623.75571}},
        {"nitrogen", "carbon_dioxide", 255.93, 12, {13.977026, 33.663403, 93.179029, 303.45817}},
        {"carbon_dioxide", "ethane", 290.81, 8.5, {5.6762027, 66.582731, 4643.432, 170.57444}},
        {"carbon_dioxide", "propane", 288.68, 13.5, {3.3779403, 56.636917, 120.86496, 520.91932}},
        {"propane", "hydrogen", 362.17, 7, {17.27998, 51.419206, 77.699262, 413.83762}},
        {"isobutane", "isopentane", 416.9, 6, {2.7700563, 146.35281, 266.96663, 257.1307}},
        {"butane", "pentane", 416.82, 6.5, {2.248556, 145.13487, 234.56734, 340.76562}},
        {"hexane", "hydrogen_sulfide", 445.94, 6, {6.6898768, 120.47983, 225.90541, 246.76699}},
        {"heptane", "helium", 755.37, 4, {31.920525, 168.61893, 179.16617, 466.55536}},
        {"octane", "oxygen", 653.51, 5, {33.749188, 184.09947, 204.05082, 418.12703}},
        {"nonane", "argon", 686.55, 6, {59.396919, 205.50991, 223.73851, 565.81119}},
        {"decane", "water", 536.41, 7.5, {4.9000642, 221.45147, 342.6259, 224.12245}},
        {"methane", "carbon_monoxide", 160.44, 4, {3.3451222, 28.860264, 81.54607, 233.33672}},
    };
    const Vector<double> x = vec({0.5, 0.5});
    for (auto const& r : rows) {
        SCOPED_TRACE(testing::Message() << r.a << "+" << r.b);
        const Mixture m = load_mixture({r.a, r.b});
        const double rho = r.rho * 1e-3;
        const Caloric c = caloric(*m, rho, r.T, x);
        const double values[] = {m->Z(rho, r.T, x) * kRg * r.T * rho, c.cv, c.cp, c.w};
        // Half a unit of the eighth digit.
        for (int k = 0; k < 4; ++k) EXPECT_NEAR(values[k] / r.values[k], 1, 6e-8) << k;
        double rho1 = 0, rho2 = 0;
        ASSERT_GT(m->vcalc(values[0] * R / kRg, r.T, x, 1, rho1, rho2), 0);
        EXPECT_NEAR(rho1 / rho, 1, 1e-11);
    }
}

Names const kAll = {
    "methane",          "nitrogen",   "carbon_dioxide", "ethane", "propane",         "isobutane",
    "butane",           "isopentane", "pentane",        "hexane", "heptane",         "octane",
    "nonane",           "decane",     "hydrogen",       "oxygen", "carbon_monoxide", "water",
    "hydrogen_sulfide", "helium",     "argon"};

// The example of AGA Report No. 8, Part 2 (2017): 400 K, 50 MPa, printed with 13 digits or more.
TEST(Gerg, TwentyOneComponentsHaveThePublishedProperties) {
    const Vector<double> z = vec({0.77824, 0.02,    0.06,    0.08,    0.03,    0.0015,  0.003,
                                  0.0005,  0.00165, 0.00215, 0.00088, 0.00024, 0.00015, 0.00009,
                                  0.004,   0.005,   0.002,   0.0001,  0.0025,  0.007,   0.001});
    const Mixture m = load_mixture(kAll);
    const double rho = 12.79828626082062e-3, RT = kRg * 400;
    double d[4];
    ASSERT_EQ(m->derivatives()->deriv(rho, 400, z, 3, 0, d), 1);
    EXPECT_NEAR(m->Z(rho, 400, z) / 1.174690666383717, 1, 1e-14);
    EXPECT_NEAR(RT * m->pV(rho, 400, z) / 7000.694030193327, 1, 1e-14);
    EXPECT_NEAR(RT * (2 * d[1] + 4 * d[2] + d[3]) / (1e3 * rho) / 1129.526655214841, 1, 1e-13);
    EXPECT_NEAR(1e3 * rho * kRg * m->betaV(rho, 400, z) / 235.9832292593096, 1, 1e-14);
    // The spline through the ideal-gas tables leaves 1e-9.
    const Caloric c = caloric(*m, rho, 400, z);
    EXPECT_NEAR(c.cv / 39.02948218156372, 1, 1e-9);
    EXPECT_NEAR(c.cp / 58.45522051000366, 1, 1e-9);
    EXPECT_NEAR(c.w / 714.4248840596024, 1, 1e-9);
    EXPECT_NEAR(c.cp - c.cv, 58.45522051000366 - 39.02948218156372, 2e-13);
    double rho1 = 0, rho2 = 0;
    EXPECT_EQ(m->vcalc(50 * R / kRg, 400, z, 3, rho1, rho2), 1);
    EXPECT_NEAR(rho1 / rho, 1, 1e-13);
}

// The linear reducing functions of Lemmon & Jacobsen (2004) for R32 + R125 with ξ = 28.95 K,
// ζ = −0.006008 dm³/mol.
TEST(Gerg, LinearReducingFunctionsAreThePublishedOnes) {
    const Mixture hfc = load_mixture({"r32", "r125"}, 2);
    const auto of = [&](int k, int i) { return hfc->mdl1[i]->param(k); };
    for (double x : {0.0, 1e-12, 0.3, 1.0}) {
        const double y = 1 - x;
        const Vector<double> l = hfc->mixpar(vec({x, y}));
        EXPECT_NEAR(l[0], x * of(1, 0) + y * of(1, 1) + x * y * 28.95, 1e-12 * l[0]);
        EXPECT_NEAR(1 / l[1], x * of(2, 0) + y * of(2, 1) + x * y * -6.008, 1e-10);
    }
}

// Departure functions of the other published kinds, evaluated here as printed: Tkaczuk et al.
// (2020) for helium + neon; Gernert (2013) for carbon dioxide + water, whose fourth term has no
// power of δ and counts from δ = 0.
TEST(Gerg, DepartureFunctionsOfOtherKinds) {
    struct Printed {
        double n, d, t, l, eta, epsilon, beta, gamma;
    };
    struct {
        char const *a, *b;
        std::vector<Printed> terms;
    } const cases[] = {// clang-format off
        {"helium", "neon",
         {{-4.346849, 1, 1.195, 0, 0, 0, 0, 0}, {-0.884378, 2, 1.587, 0, 0, 0, 0, 0},
         {0.258416, 3, 1.434, 0, 0, 0, 0, 0}, {3.502188, 1, 1.341, 0, 0.157, 1.032, 0.173, 1.31},
         {0.83133, 2, 1.189, 0, 0.931, 1.978, 1.07, 1.356}, {2.740495, 3, 1.169, 0, 0.882, 1.966, 0.695, 1.596},
         {-1.58223, 4, 0.944, 0, 0.868, 1.709, 0.862, 1.632}, {-0.304897, 4, 1.874, 0, 0.543, 0.583, 0.971, 0.766}}},
        {"carbon_dioxide", "water",
         {{0.39440467, 1, 0.88, 0, 0, 0, 0, 0}, {-1.7634732, 1, 2.932, 0, 0, 0, 0, 0},
         {0.14620755, 3, 2.433, 0, 0, 0, 0, 0}, {0.008752232, 0, 1.33, 1, 0, 0, 0, 0},
         {2.0349398, 2, 4.416, 1, 0, 0, 0, 0}, {-0.09035025, 3, 5.514, 1, 0, 0, 0, 0},
         {-0.21638854, 1, 5.203, 2, 0, 0, 0, 0}, {0.03961217, 5, 1, 2, 0, 0, 0, 0}}}};  // clang-format on
    for (auto const& c : cases) {
        SCOPED_TRACE(c.a);
        const Mixture m = load_mixture({c.a, c.b}, 2);
        const Vector<double> x = vec({0.4, 0.6}), reduced = m->mixpar(x);
        for (auto [tau, delta] : {std::pair(0.8, 0.3), std::pair(1.1, 2.2), std::pair(0.5, 1e-9)}) {
            const double T = reduced[0] / tau, rho = delta * reduced[1];
            double departure = 0, linear = 0;
            for (Printed const& t : c.terms) {
                const auto density = [&](double at) {
                    return std::pow(at, t.d) * std::exp(-(t.l > 0 ? std::pow(at, t.l) : 0) -
                                                        t.eta * std::pow(at - t.epsilon, 2));
                };
                departure += t.n * std::pow(tau, t.t) *
                             std::exp(-t.beta * std::pow(tau - t.gamma, 2)) *
                             (density(delta) - density(0));
            }
            for (int i = 0; i < 2; ++i)
                linear += x[i] * m->mdl1[i]->Ar(delta / m->mdl1[i]->vs(), m->mdl1[i]->Ts() / tau);
            // The differences of exponentials in the test lose digits at low density.
            EXPECT_NEAR(m->Ar(rho, T, x) - linear, 0.24 * departure, 1e-14);
        }
        EXPECT_EQ(m->Ar(0, 300, x), 0);
        EXPECT_EQ(m->Z(0, 300, x), 1);
    }
}

/// Σ x_i·α_i from the components' own equations, and its derivatives d[3i + j] as Deriv1 has them.
std::array<double, 9> linear(ModelN const& m, double rho, double T, Vector<double> const& x) {
    const Vector<double> reduced = m.mixpar(x);
    std::array<double, 9> sum{}, d{};
    for (int i = 0; i < x.size(); ++i) {
        Model1 const& c = *m.mdl1[i];
        if (x[i] == 0) continue;
        c.derivatives()->deriv(rho / reduced[1] / c.vs(), T / reduced[0] * c.Ts(), 2, 2, d.data());
        for (int k = 0; k < 9; ++k) sum[static_cast<unsigned>(k)] += x[i] * d[static_cast<unsigned>(k)];
    }
    return sum;
}

// Components share their terms in the mixture. Without departure functions (F = 0) it is the linear
// combination of what the components say one by one: also after factors and exponents of one of them were
// written, after one was read again as an equation of another form, and with an absent one whose terms
// overflow.
TEST(Gerg, SharedTermsAreThoseOfTheComponents) {
    const Names names{"methane", "carbon_dioxide", "ethane", "propane", "water", "butane", "nitrogen"};
    const Mixture m = load_mixture(names);
    const int n = m->mdl1.size();
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < j; ++i) m->param(4, i, j, 0.0);
    const auto agree = [&](char const* what, Vector<double> const& x) {
        SCOPED_TRACE(what);
        const Vector<double> reduced = m->mixpar(x);
        for (auto [tau, delta] : {std::pair(0.8, 0.3), {1.1, 2.2}, {0.5, 1e-9}, {1.7, 2.6}, {1.0, 1.0}}) {
            const double T = reduced[0] / tau, rho = delta * reduced[1];
            const auto expected = linear(*m, rho, T, x);
            double d[9], r[4];
            ASSERT_EQ(m->derivatives()->deriv(rho, T, x, 2, 2, d), 1);
            ASSERT_EQ(m->derivatives()->deriv(rho, T, x, 3, 0, r), 1);
            // Terms alternate: of sums of up to 24 of them some 1e-14 are rounding.
            for (unsigned k : {0u, 1u, 2u, 3u, 4u, 6u}) {
                EXPECT_NEAR(d[k], expected[k], 3e-13 * std::fabs(expected[k]) + 1e-14 * delta) << k << ' ' << tau;
                if (k % 3 == 0) {
                    EXPECT_NEAR(r[k / 3], d[k], 3e-13 * std::fabs(d[k]) + 1e-14 * delta) << k;
                }
            }
            EXPECT_NEAR(m->Ar(rho, T, x), d[0], 1e-15 * std::fabs(d[0]));
            EXPECT_NEAR(m->Z(rho, T, x), 1 + d[3], 1e-15 * (1 + std::fabs(d[3])));
            // The potentials' sum is the Gibbs energy, Ar + Z − 1.
            double mu[7], sum = 0;
            m->derivatives()->potentials(x * rho, T, mu, nullptr, nullptr);
            for (int i = 0; i < n; ++i) sum += x[i] == 0 ? 0 : x[i] * mu[i];
            EXPECT_NEAR(sum, d[0] + d[3], 1e-12 * (std::fabs(d[0]) + std::fabs(d[3])));
        }
    };
    const Vector<double> x = vec({0.3, 0.2, 0.1, 0.15, 0.05, 0.1, 0.1});
    agree("as published", x);
    auto& ethane = *m->mdl1[2];  // parameters: M, Ts, vs, 24 factors, 24 exponents
    ethane.param(3, 1.1 * ethane.param(3));
    agree("another factor", x);
    ethane.param(30, 1.5 * ethane.param(30));
    agree("another exponent", x);
    ethane.param(2, 1.02 * ethane.param(2));
    agree("another reducing volume", x);
    m->mdl1[3]->id(1);
    m->mdl1[3]->load("MEOS");
    agree("propane with terms that are no powers", x);
    m->mdl1[3]->id(8);
    m->mdl1[3]->load("MEOS");
    agree("propane as before", x);
    auto& water = *m->mdl1[4];
    water.param(3 + 16, 1e6);  // the exponent of its first term
    agree("an absent component that overflows", vec({0.35, 0.2, 0.1, 0.15, 0.0, 0.1, 0.1}));
}

/// A component Ar = 0.3·τ·δ^d, as somebody else might write one.
class OnePower final : public VdwModel, public corvane::Deriv1, public corvane::PowerSeries1 {
  public:
    explicit OnePower(int d) : power_{0, d} { derivatives(this); }
    int deriv(double rho, double T, int nrho, int nT, double* out) const override {
        const int d = power_.d;
        const double a = factor_ * Ts() / T * std::pow(rho * vs(), d);
        const double by_rho[] = {1.0, 1.0 * d, 1.0 * d * (d - 1), 1.0 * d * (d - 1) * (d - 2)},
                     by_T[] = {1, -1, 2};
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT; ++j) out[i * (nT + 1) + j] = a * by_rho[i] * by_T[j];
        return 1;
    }
    Terms terms() const override {
        ++asked;
        return {1, &power_, &factor_, &exponent_};
    }
    mutable int asked = 0;

  private:
    Power power_;
    double factor_ = 0.3, exponent_ = 1.0;
};

// Powers that the mixture has no place for, 0 and those beyond 32, are evaluated by their
// component, and the terms are not arranged anew for it at every state.
TEST(Gerg, ComponentsWithOtherPowersStandAlone) {
    const Mixture m = load_mixture({"methane", "ethane"});
    m->param(4, 0, 1, 0.0);
    Model1* const ethane = m->mdl1[1];
    for (int power : {-1, 0, 1, 32, 33, 40}) {
        SCOPED_TRACE(power);
        OnePower component(power);
        m->mdl1[1] = &component;
        const Vector<double> x = vec({0.6, 0.4}), reduced = m->mixpar(x);
        for (double delta : {0.7, 1.1}) {
            const double T = 0.9 * reduced[0], rho = delta * reduced[1];
            const auto expected = linear(*m, rho, T, x);
            double d[9], r[4];
            EXPECT_EQ(m->derivatives()->deriv(rho, T, x, 2, 2, d), 1);
            EXPECT_EQ(m->derivatives()->deriv(rho, T, x, 3, 0, r), 1);
            for (unsigned k : {0u, 1u, 2u, 3u, 4u, 6u})
                EXPECT_NEAR(d[k], expected[k], 1e-13 * (1 + std::fabs(d[k])));
            for (unsigned k : {0u, 1u, 2u})
                EXPECT_NEAR(r[k], d[3 * k], 1e-13 * (1 + std::fabs(d[3 * k])));
        }
        component.asked = 0;
        m->Ar(0.5 * reduced[1], reduced[0], x);
        EXPECT_LE(component.asked, 2);  // compared with before, and its factor read
    }
    m->mdl1[1] = ethane;
}

/// The roots that a scan of the isotherm finds on its first and last rising branch.
int scanned(ModelN const& m, double P, double T, Vector<double> const& x, double rho_r, double& gas,
            double& liquid) {
    constexpr int steps = 3000;
    double low = 0;
    bool rising = true, first = true;
    gas = liquid = 0;
    for (int k = 1; k <= steps; ++k) {
        const double rho = 4.2 * rho_r * k / steps, value = rho * m.Z(rho, T, x);
        if (value <= low) first = rising = false;
        if (value > low && !rising) rising = true;
        if (low < P && value >= P) (first ? gas : liquid) = rho;
        low = value;
    }
    return (gas > 0) + (liquid > 0);
}

// Density roots against a scan, around and below the loop, of mixtures whose departure functions
// move it; modes; and no root.
TEST(Gerg, DensitySolverFindsWhatAScanFinds) {
    std::mt19937 random(8);
    std::uniform_real_distribution<double> u(0, 1);
    for (Names const& names :
         {Names{"methane", "nitrogen", "ethane"}, Names{"methane", "hydrogen", "decane"},
          Names{"carbon_dioxide", "water", "methane"}, Names{"nitrogen", "ethane", "helium"}}) {
        const Mixture m = load_mixture(names);
        for (int k = 0; k < 25; ++k) {
            const double a = u(random), b = u(random);
            const Vector<double> x = vec({a, (1 - a) * b, (1 - a) * (1 - b)});
            const Vector<double> reduced = m->mixpar(x);
            const double T = reduced[0] * (0.6 + 0.5 * u(random));
            const double p = R * T * reduced[1] * std::pow(10.0, -2.5 + 3 * u(random));
            SCOPED_TRACE(testing::Message() << names[0] << "+" << names[1] << " x = " << x[0] << " "
                                            << x[1] << ", T = " << T << ", p = " << p);
            double gas, liquid, r1 = 0, r2 = 0, s1 = 0, s2 = 0;
            const int count = scanned(*m, p / (R * T), T, x, reduced[1], gas, liquid);
            const int kind = m->vcalc(p, T, x, 1, r1, r2);
            ASSERT_EQ(kind, count == 2 ? 3 : count);
            ASSERT_EQ(m->vcalc(p, T, x, 3, s1, s2), kind);
            EXPECT_NEAR(r1, liquid > 0 ? liquid : gas, 2e-3 * reduced[1]);
            if (kind == 3) {
                EXPECT_NEAR(r2, gas, 2e-3 * reduced[1]);
                EXPECT_EQ(s1, r2);
                EXPECT_EQ(s2, r1);
            }
            EXPECT_NEAR(m->Z(s1, T, x) * R * T * s1 / p, 1, 1e-11 * (1 + reduced[1] * R * T / p));
        }
        double rho = 7, other = 7;
        const Vector<double> x = vec({0.3, 0.3, 0.4});
        for (auto [p, T] :
             {std::pair(1.0, 0.0), std::pair(-1.0, 900.0), std::pair<double, double>(NAN, 300.0)})
            EXPECT_EQ(m->vcalc(p, T, x, 1, rho, other), 0);
        EXPECT_EQ(rho, 7);
        EXPECT_EQ(m->vcalc(1e-12, 400, x, 3, rho, other), 1);
        EXPECT_NEAR(rho * R * 400 / 1e-12, 1, 1e-12);
    }
}

/// Text of the pair's section as par_out writes it.
std::string section(ModelN const& m, int i, int j) {
    const corvane::File f(std::tmpfile());
    m.par_out(f.get(), i, j);
    std::rewind(f.get());
    std::string text;
    for (int c; (c = std::fgetc(f.get())) != EOF;) text += static_cast<char>(c);
    return text;
}
void read_section(ModelN& m, std::string const& text) {
    const corvane::File f(std::tmpfile());
    std::fputs(text.c_str(), f.get());
    std::rewind(f.get());
    m.par_in(f.get(), 0, 1);
}

// Every shipped pair: its components exist, the section is read and written without loss, from
// either side, and the reducing values stay near those of the components.
TEST(Gerg, EveryShippedPairIsReadAndWrittenFromEitherSide) {
    int count = 0;
    for (auto const& entry : std::filesystem::directory_iterator("CorvaneS/parameters/MEOS/GERG")) {
        SCOPED_TRACE(entry.path());
        std::ifstream file(entry.path());
        std::ostringstream text;
        text << file.rdbuf();
        const std::string all = text.str();
        const auto word = [&](std::string const& label) {
            const std::size_t at = all.find(label + ":\t") + label.size() + 2;
            return all.substr(at, all.find('\n', at) - at);
        };
        EXPECT_NE(all.find("source:\t"), std::string::npos);
        const std::string a = word("name1"), b = word("name2");
        EXPECT_EQ(entry.path().filename(), a + "+" + b + ";" + word("id"));
        for (auto const& [name, id] : {std::pair(a, word("id1")), std::pair(b, word("id2"))})
            EXPECT_TRUE(std::filesystem::exists("CorvaneS/parameters/MEOS/" + name + ";" + id));
        Mixture m[2] = {Mixture(attachN("MEOS", "GERG")), Mixture(attachN("MEOS", "GERG"))};
        for (int k = 0; k < 2; ++k) {
            m[k]->alloc(2, "MEOS");
            m[k]->mdl1[k]->name(a.c_str());
            m[k]->mdl1[1 - k]->name(b.c_str());
            for (int i = 0; i < 2; ++i)
                for (int par : {1, 2}) m[k]->mdl1[i]->param(par, 100.0 + 50 * (i == k));
            read_section(*m[k], all.substr(all.find("of:\t")));
        }
        const Vector<double> p = m[0]->mixpar(vec({0.3, 0.7})), q = m[1]->mixpar(vec({0.7, 0.3}));
        EXPECT_NEAR(p[0], q[0], 1e-12 * p[0]);
        EXPECT_NEAR(p[1], q[1], 1e-12 * p[1]);
        // Far from the mean of the components would be a wrong column or unit.
        EXPECT_TRUE(p[0] > 60 && p[0] < 280 && p[1] > 1 / 280.0 && p[1] < 1 / 70.0) << p[0] << p[1];
        const std::string written = section(*m[0], 0, 1);
        read_section(*m[1], section(*m[0], 0, 1));
        read_section(*m[0], section(*m[1], 0, 1));
        EXPECT_NEAR(m[0]->mixpar(vec({0.3, 0.7}))[0], p[0], 1e-12 * p[0]);
        read_section(*m[0], written);
        EXPECT_EQ(section(*m[0], 0, 1), written);
        ++count;
    }
    EXPECT_GE(count, 1000);
}

TEST(Gerg, MalformedSectionsRaiseAndKeepThePair) {
    const Mixture m = load_mixture({"methane", "nitrogen"});
    const std::string good = section(*m, 0, 1);
    const auto with = [&](std::string const& from, std::string const& to) {
        std::string text = good;
        return text.replace(text.find(from), from.size(), to);
    };
    for (std::string const& bad :
         {std::string(), with("methane", "argon"), with("betaT:\t", "betaT:\t-"),
          with("gammav", "gamma"), with("blocks:\t2", "blocks:\t3"), with("power:\t2", "power:\t3"),
          with("power", "powder"), with("gerg:\t7", "gerg:\t1000000000"),
          with(" 1 0 0\n", " -1 0 0\n"), with(" 1 0 0\n", " 1 nan 0\n"),
          with(" 1 0 0\n", " 1 0 77\n"), good.substr(0, good.size() / 2)}) {
        EXPECT_EQ(th_code([&] { read_section(*m, bad); }), th_cannot_open) << bad;
        EXPECT_EQ(section(*m, 0, 1), good);
    }
}

}  // namespace
