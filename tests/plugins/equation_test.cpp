// The authors' kit: equations that say A^r alone agree with the plug-ins written by hand, which
// have closed forms of their own for every slot.
#include <corvane/mixture/isotherm.h>
#include <corvane/plugin/elementary.h>
#include <corvane/plugin/jet.h>
#include <corvane/plugin/partials.h>
#include <tests/support/beside.h>
#include <tests/support/errors.h>
#include <tests/support/scratch.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
constexpr double nan_ = std::numeric_limits<double>::quiet_NaN();

class Kit : public testing::TestWithParam<KitEquation> {
  protected:
    Kit() { enter_with_plugins(scratch_.dir(), scratch_.home(), EQUATIONS); }
    Scratch scratch_{};
};
INSTANTIATE_TEST_SUITE_P(Equations, Kit, testing::ValuesIn(kit_equations()),
                         [](auto const& e) { return std::string(e.param.by_hand); });
INSTANTIATE_TEST_SUITE_P(InOneFunction, Kit,
                         testing::Values(KitEquation{"SRK", "SRKformula", "vdW1", {0, 1, 2, 3}}),
                         [](auto const& e) { return std::string(e.param.by_hand); });

/// Equal to `ulps` roundings of numbers of this size, or both no numbers.
void expect_same(char const* what, double a, double b, double size, double ulps = 40) {
    if (!std::isfinite(a) && !std::isfinite(b)) return;
    EXPECT_NEAR(a, b, ulps * 2.2e-16 * (std::fabs(a) + size)) << what;
}

TEST_P(Kit, PureFluidIsTheOneWrittenByHand) {
    for (char const* name : {"methane", "propane", "water", "decane", "ethanol"}) {
        const PurePair m = pure_pair(GetParam(), name);
        Model1 const &h = *m.hand, &k = *m.kit;
        if (!on_kit(GetParam(), h)) continue;
        for (double Tr : {0.3, 0.6, 0.95, 1.0, 1.05, 3.0})
            for (double r : {0.0, -1e-4, 1e-10, 0.01, 0.5, 1.0, 1.6, 2.5, 2.9, 5.0}) {
                const double T = Tr * h.Tcrit(), rho = r / h.vcrit();
                SCOPED_TRACE(testing::Message() << name << " Tr = " << Tr << ", rho/rho_c = " << r);
                const double Ar = h.Ar(rho, T), Z = h.Z(rho, T);
                // Attraction and repulsion cancel: rounding is that of either.
                const double size = std::min(1.0, std::fabs(r)) * 40;
                expect_same("Ar", k.Ar(rho, T), Ar, size);
                expect_same("Z", k.Z(rho, T), Z, 1 + size);
                if (!std::isfinite(Ar)) continue;
                double a[9] = {}, b[9] = {};
                for (auto [nrho, nT] :
                     {std::pair(3, 0), std::pair(2, 2), std::pair(0, 1), std::pair(1, 0)}) {
                    ASSERT_EQ(h.derivatives()->deriv(rho, T, nrho, nT, a), 1);
                    ASSERT_EQ(k.derivatives()->deriv(rho, T, nrho, nT, b), 1);
                    for (int i = 0; i <= nrho; ++i)
                        for (int j = 0; j <= nT && (nT == 0 || i + j <= 2); ++j)
                            expect_same("derivative", b[i * (nT + 1) + j], a[i * (nT + 1) + j],
                                        size * 10 * std::pow(std::max(1.0, r), i));
                }
            }
        EXPECT_EQ(k.Ar(0.0, 300.0), 0.0);
        EXPECT_EQ(k.Z(0.0, 300.0), 1.0);
        EXPECT_FALSE(std::isfinite(k.Ar(1e-3, 0.0)) || std::isfinite(k.Z(1e-3, -5.0)));
        for (double T : {0.0, -1.0, nan_, HUGE_VAL}) {
            double a = 5, b = 6;
            EXPECT_EQ(k.vcalc(1.0, T, 1, a, b), 0);
            EXPECT_TRUE(a == 5 && b == 6);
        }
    }
}

TEST_P(Kit, DensitiesAreThoseWrittenByHand) {
    int two = 0;
    for (char const* name : {"methane", "propane", "water", "decane"}) {
        const PurePair m = pure_pair(GetParam(), name);
        if (!on_kit(GetParam(), *m.hand)) continue;
        for (double Tr : {0.35, 0.5, 0.7, 0.9, 0.99, 0.9999, 1.0, 1.0001, 1.1, 1.5, 5.0})
            for (double pr : {-2.0, -0.01, 0.0, 1e-200, 1e-12, 1e-4, 0.03, 0.3, 0.9, 0.999, 1.0,
                              1.3, 10.0, 1e3}) {
                const double T = Tr * m.hand->Tcrit(), p = pr * m.hand->pcrit();
                for (int phase : {1, 3, -1}) {
                    SCOPED_TRACE(testing::Message() << name << " Tr = " << Tr << ", pr = " << pr
                                                    << ", phase " << phase);
                    double a[2] = {1e-3, 7.0}, b[2] = {1e-3, 7.0};
                    const int n = m.hand->vcalc(p, T, phase, a[0], a[1]);
                    if (Tr == 1.0 && pr == 1.0) continue;  // where a threefold root is one or two
                    ASSERT_EQ(m.kit->vcalc(p, T, phase, b[0], b[1]), n);
                    two += n == 3;
                    // A root is worth an ulp of the pressure over the slope there.
                    for (int i = 0; i < 2; ++i) {
                        const double slope = n > i ? std::fabs(m.hand->pV(a[i], T)) : 1.0;
                        EXPECT_NEAR(b[i] / a[i], 1.0, 1e-14 * (5 + 40 / slope));
                    }
                }
            }
    }
    EXPECT_GT(two, 150);
}

TEST_P(Kit, MixtureIsTheOneWrittenByHand) {
    for (std::vector<char const*> const& names :
         {std::vector<char const*>{"propane"},
          {"methane", "propane"},
          {"ethanol", "water"},
          {"methane", "ethane", "propane"},
          {"methane", "water", "butane", "carbon_dioxide", "ethanol"}}) {
        if (std::ranges::any_of(names, [](char const* s) {
                return !on_kit(GetParam(), *load_set(GetParam().by_hand, s));
            }))
            continue;
        const MixturePair m = mixture_pair(GetParam(), names);
        const int n = static_cast<int>(names.size());
        Vector<double> x(n), rho_i(n);
        double sum = 0;
        for (int i = 0; i < n; ++i) sum += x[i] = 1.0 + 0.7 * i;
        for (int i = 0; i < n; ++i) x[i] /= sum;
        auto const* iso = dynamic_cast<corvane::IsothermN const*>(m.kit.get());
        ASSERT_TRUE(iso);
        for (double T : {200.0, 300.0, 600.0})
            for (double p : {1e-9, 0.1, 3.0, 60.0}) {
                SCOPED_TRACE(testing::Message()
                             << n << " components, " << names[0] << ", T = " << T << ", p = " << p);
                double a[2] = {7, 7}, b[2] = {7, 7};
                const int roots = m.hand->vcalc(p, T, x, 1, a[0], a[1]);
                ASSERT_EQ(m.kit->vcalc(p, T, x, 1, b[0], b[1]), roots);
                ASSERT_GT(roots, 0);
                EXPECT_NEAR(b[0] / a[0], 1.0, 1e-12);
                EXPECT_NEAR(b[1] / a[1], 1.0, 1e-12);
                const double rho = a[0], size = 40 + 200 * std::fabs(m.hand->Ar(rho, T, x));
                expect_same("Ar", m.kit->Ar(rho, T, x), m.hand->Ar(rho, T, x), size);
                expect_same("Z", m.kit->Z(rho, T, x), m.hand->Z(rho, T, x), size);
                expect_same("betaV", m.kit->betaV(rho, T, x), m.hand->betaV(rho, T, x), size);
                for (int i = 0; i < n; ++i) rho_i[i] = x[i] * rho;
                const auto N = static_cast<unsigned>(n);
                std::vector<double> mu(N), mu_T(N), H(N * N), nu(N), nu_T(N), J(N * N), only(N),
                    first(N), second(N * N);
                m.hand->derivatives()->potentials(rho_i, T, mu.data(), mu_T.data(), H.data());
                m.kit->derivatives()->potentials(rho_i, T, nu.data(), nu_T.data(), J.data());
                m.kit->derivatives()->potentials(rho_i, T, only.data(), nullptr, nullptr);
                std::vector<double> work(static_cast<unsigned>(iso->isotherm_size(n)));
                std::vector<int> present(N);
                for (unsigned i = 0; i < N; ++i) present[i] = static_cast<int>(i);
                iso->isotherm(T, present.data(), n, true, work.data());
                double P = 0, P_T = 0, r[2];
                iso->potentials(work.data(), n, rho_i.data, first.data(), nullptr, second.data(),
                                &P, &P_T);
                for (unsigned i = 0; i < N; ++i) {
                    expect_same("mu", nu[i], mu[i], size);
                    expect_same("mu, alone", only[i], mu[i], size);
                    expect_same("mu, on an isotherm", first[i], mu[i], size);
                    expect_same("mu_T", nu_T[i], mu_T[i], 4 * size);
                    expect_same("myr", m.kit->myr(rho_i, T, static_cast<int>(i)), mu[i], size);
                    for (unsigned j = 0; j < N; ++j) {
                        expect_same("Hessian", J[i * N + j], H[i * N + j], 10 * size / rho);
                        EXPECT_EQ(second[i * N + j], J[i * N + j]);
                    }
                }
                expect_same("P", P, p / (R * T), size * rho);
                expect_same("P_T", P_T + P, rho * m.hand->betaV(rho, T, x), 4 * size * rho);
                ASSERT_EQ(iso->densities(work.data(), n, x.data, p, r), roots == 3 ? 2 : roots);
                EXPECT_EQ(r[0], b[0]);
                expect_same("gibbs", iso->gibbs(work.data(), n, x.data, p, b[0]),
                            m.hand->Ge(a[0], T, x), size);
            }
        Vector<double> none(n);
        for (int i = 0; i < n; ++i) none[i] = 0.0;
        EXPECT_EQ(m.kit->myr(none, 300.0, 0), 0.0);
        double a = 5, b = 6;
        EXPECT_EQ(m.kit->vcalc(1.0, 0.0, x, 1, a, b), 0);
        EXPECT_EQ(m.kit->vcalc(nan_, 300.0, x, 1, a, b), 0);
    }
}

// Taylor coefficients of compositions, against exact ones.
TEST(Numbers, CarryDerivativesThroughElementaryFunctions) {
    using corvane::Jet;
    const double v = 0.37;
    const auto x = Jet<4>::along_h(v);
    const double s = 1 / (1 + v), t = std::tanh(v), f = 1 - t * t;
    struct {
        char const* name;
        Jet<4> jet;
        double slope, third;  // f' and f'''
    } const cases[]{
        {"exp", exp(x), std::exp(v), std::exp(v)},
        {"expm1", expm1(x), std::exp(v), std::exp(v)},
        {"log", log(x), 1 / v, 2 / (v * v * v)},
        {"log1p", log1p(x), s, 2 * s * s * s},
        {"sqrt", sqrt(x), 0.5 / std::sqrt(v), 0.375 * std::pow(v, -2.5)},
        {"cbrt", cbrt(x), std::pow(v, -2.0 / 3) / 3, 10.0 / 27 * std::pow(v, -8.0 / 3)},
        {"pow", pow(x, 2.5), 2.5 * std::pow(v, 1.5), 1.875 * std::pow(v, -0.5)},
        {"tanh", tanh(x), f, f * (6 * t * t - 2)},
        {"power", corvane::power(x, 5), 5 * std::pow(v, 4), 60 * v * v},
    };
    for (auto const& c : cases) {
        EXPECT_NEAR(c.jet(1), c.slope * v, 1e-15 * std::fabs(c.slope)) << c.name;
        EXPECT_NEAR(6 * c.jet(3), c.third * v * v * v, 4e-15 * std::fabs(c.third)) << c.name;
    }
    EXPECT_EQ(corvane::power(Jet<2>::along_h(0.0), 0)(0), 1.0);

    // A gradient whose values are jets, and a curvature: x^2·y/(1 + y) at (3, 0.5).
    using G = corvane::Gradient<2, Jet<1>>;
    G a(Jet<1>::along_h(3.0)), b(0.5);
    a.g[0] = 1.0;
    b.g[1] = 1.0;
    const G g = a * a * b / (1.0 + b);
    EXPECT_DOUBLE_EQ(g.g[0](0), 2.0);       // 2xy/(1 + y)
    EXPECT_DOUBLE_EQ(g.g[0](1), 2.0);       // x·∂² / ∂x²
    EXPECT_DOUBLE_EQ(g.g[1](0), 9 / 2.25);  // x²/(1 + y)²
    corvane::Curvature<2> c(3.0), d(0.5);
    c.g[0] = d.g[1] = 1.0;
    const auto h = c * c * d / (1.0 + d);
    EXPECT_DOUBLE_EQ(h.h[0], 2.0 / 3);           // 2y/(1 + y)
    EXPECT_DOUBLE_EQ(h.h[1], 6 / 2.25);          // 2x/(1 + y)²
    EXPECT_DOUBLE_EQ(h.h[2], -18 / 3.375);       // −2x²/(1 + y)³
    EXPECT_DOUBLE_EQ(sqrt(h * h).h[2], h.h[2]);  // and back
}

// A series in one variable beside one in the other, or in both, is the series in both.
TEST(Numbers, InOneVariableAreThoseInBoth) {
    using corvane::Jet;
    using Both = Jet<2, 2>;
    const auto h = exp(Jet<2>::along_h(0.4)) + 1.0;
    const auto k = sqrt(Jet<2, 2, 0>::along_k(1.7)) - 0.3;
    const Both H(h), K(k), a = log(Both(H * K + 2.0));
    const std::pair<Both, Both> cases[]{{h * k, H * K}, {k * h, K * H}, {h / k, H / K}, {k / h, K / H},
                                        {h + k, H + K}, {k + h, K + H}, {h - k, H - K}, {k - h, K - H},
                                        {a * h, a * H}, {h * a, H * a}, {a * k, a * K}, {k * a, K * a},
                                        {a / h, a / H}, {a / k, a / K}, {h / a, H / a}, {k - a, K - a}};
    EXPECT_EQ(H(0, 1), 0.0);
    EXPECT_EQ(K(1, 0), 0.0);
    EXPECT_EQ(exp(k)(0, 2), exp(K)(0, 2));
    for (auto const& [one, both] : cases)
        for (int j = 0; j <= 2; ++j)
            for (int i = 0; i + j <= 2; ++i)
                EXPECT_NEAR(one(i, j), both(i, j), 8e-16 * (1 + std::fabs(both(i, j))))
                    << &one - &cases[0].first << ": " << i << j;
}
}  // namespace
