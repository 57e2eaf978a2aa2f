// The volume finders against the closed form of cubic equations, and with models that fail.
#include <corvane/corvane.h>
#include <support/errors.h>
#include <support/vdw_model.h>
#include <tests/equilibria/phases.h>
#include <tests/plugins/cubic_reference.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace {
/// An equation P = y/(1 − y) − α·y²/(1 + u·y + w·y²) with P = p·b/(RT), y = rho·b, α = a/(b·R·T).
struct Cubic {
    Model1 const& m;
    double u, w;
    double (*alpha)(Model1 const&, double T);
};

double vdw_alpha(Model1 const& m, double T) {
    return 27.0 / 8.0 * m.Tcrit() / T;
}

// Peng & Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59.
double pr_alpha(Model1 const& m, double T) {
    const double w = m.omega(), Tr = T / m.Tcrit();
    const double root = 1 + (0.37464 + 1.54226 * w - 0.26992 * w * w) * (1 - std::sqrt(Tr));
    return 0.45723552892138218 / 0.07779607390388846 / Tr * root * root;
}

/// All y of the isotherm, ascending, in many digits.
std::vector<double> closed_form(Cubic const& c, double p, double T) {
    std::vector<double> y;
    for (auto const& root :
         reference::reduced_roots(c.u, c.w, p * c.m.vs() / (R * T), c.alpha(c.m, T)))
        y.push_back(static_cast<double>(root));
    return y;
}

void expect_one_of(std::vector<double> const& y, double found, double tolerance) {
    double nearest = 1e99;
    for (double root : y) nearest = std::min(nearest, std::fabs(found - root));
    EXPECT_LE(nearest, tolerance);
}

/// Walks isotherms of 0.45 … 1.2 Tc from 1e-5 to 100 MPa. The tolerance 1e-9 is th_veps, which
/// all four promise.
void expect_all_roots(Cubic const& c) {
    Model1 const& m = c.m;
    const double b = m.vs();
    Vector<double> roots;  // enlarged by the first call
    int states = 0, missed = 0, failures = 0;
    for (double Tr = 0.4513; Tr < 1.2; Tr += 0.0503)
        for (double lg = -5; lg <= 2; lg += 0.117, ++states) {
            const double p = std::pow(10.0, lg), T = Tr * m.Tcrit();
            const std::vector<double> y = closed_form(c, p, T);
            SCOPED_TRACE(testing::Message() << "T " << T << " p " << p << " roots " << y.size());
            const double low = y.front(), high = y.back();
            const bool loop = y.size() == 3;
            const int found = volume(&m, 0, p, T, nullptr, b, roots);
            // What it may miss: pairs of roots closer than eight halvings resolve (1/256), and the
            // liquid beside a gas so thin that the curvature of its isotherm is less than rounding.
            if (loop && found == 1 && (y[1] - low < 0.004 || high - y[1] < 0.004 || low < 3e-7)) {
                ++missed;
            } else {
                ASSERT_EQ(found, loop ? 3 : 1);
                EXPECT_NEAR(roots[0] * b / high, 1, 1e-9);
                EXPECT_NEAR(roots[2] * b / low, 1, 1e-9);
            }
            expect_one_of(y, roots[1] * b, 1e-9 * roots[1] * b);
            if (!loop || (low < 0.998 * m.xrho(T, 3) * b && high > 1.002 * m.xrho(T, 1) * b)) {
                double dense = 0, dilute = low / b;
                ASSERT_EQ(volf1(&m, p, T, b * (1 + 1e-9), dense, dilute), loop ? 2 : 1);
                EXPECT_NEAR(dense * b / high, 1, 1e-9);
                EXPECT_NEAR(dilute * b / low, 1, 1e-9);
            }
            for (double root : {low, high}) {
                double rho = std::min(0.95 * root, 0.99) / b, rho2 = rho;
                ASSERT_EQ(volav(&m, 0, p, T, nullptr, b, rho), 1);
                // Absolute, and ideal below y = 4e-5: B·y² with |B| < 40·b at 0.45 Tc.
                expect_one_of(y, rho * b, 1e-9 + (root < 5e-5 ? 40 * root * root : 0));
                const bool solved = volnewt(&m, 0, p, T, nullptr, b, rho2);
                failures += !solved;  // starts in the unstable band
                if (solved) expect_one_of(y, rho2 * b, 1e-9 * root);
            }
        }
    EXPECT_LT(missed, 0.005 * states);
    EXPECT_LT(failures, 0.01 * 2 * states);
}
}  // namespace

TEST(VolumeFinder, FindsAllRoots) {
    VdwModel vdw;
    vdw.fill_tables(400);
    expect_all_roots({vdw, 0, 0, vdw_alpha});
    for (char const* name : {"methane", "water", "decane"}) {
        SCOPED_TRACE(name);
        const std::unique_ptr<Model1, corvane::Detach> m(attach1("PR"));
        m->name(name);
        m->id(1);
        m->load("PR");
        expect_all_roots({*m, 2, -1, pr_alpha});
    }
}

TEST(VolumeFinder, CountsEvaluationsAndRefusesWhatItCannotReach) {
    VdwModel m;
    const double b = m.vs(), T = 0.8 * m.Tcrit(), vmin = 1.001 * b;
    Vector<double> roots(3);
    int states = 0;
    for (double Tr = 0.5; Tr < 1.2; Tr += 0.05)
        for (double p = 1e-4; p < 100; p *= 1.5, ++states)
            volume(&m, 0, p, Tr * m.Tcrit(), nullptr, b, roots);
    EXPECT_LT(m.calls, 40 * states);  // 35 on average
    // With d = 3·b, y = 1 is the critical density: 100 MPa is out of reach.
    EXPECT_EQ(volume(&m, 0, 100, T, nullptr, 3 * b, roots), 0);
    for (double p : {0.0, -1.0, std::nan("")}) EXPECT_EQ(volume(&m, 0, p, T, nullptr, b, roots), 0);
    double rho = 1 / b, rho2 = -1;
    m.calls = 0;
    EXPECT_EQ(volav(&m, 0, 1, T, nullptr, b, rho), 0);  // y = 1
    EXPECT_EQ(volav(&m, 0, 1, T, nullptr, -1, rho), 0);
    EXPECT_EQ(m.calls, 0);
    // A start in the unstable band: volav leaves it, volnewt refuses it without tables, which it
    // takes for the range, and with them (intended).
    const double start = 0.3 / b;
    EXPECT_FALSE(volnewt(&m, 0, 0.5, T, nullptr, b, rho = start));
    m.fill_tables();
    EXPECT_FALSE(volnewt(&m, 0, 0.5, T, nullptr, b, rho));
    EXPECT_EQ(rho, start);
    EXPECT_EQ(volav(&m, 0, 0.5, T, nullptr, b, rho), 1);
    EXPECT_NEAR(m.Z(rho, T) * R * T * rho, 0.5, 1e-6);
    EXPECT_EQ(volf1(&m, 20, T, vmin, rho, rho2), 1);    // above the vapour's spinodal
    EXPECT_EQ(volf1(&m, -0.5, T, vmin, rho, rho2), 1);  // liquid under tension
    EXPECT_NEAR(m.Z(rho, T) * R * T * rho, -0.5, 1e-6);
    EXPECT_EQ(volf1(&m, 1, 2e5, vmin, rho, rho2), 0);  // above the tables
    EXPECT_EQ(volf1(&m, 1e6, T, vmin, rho, rho2), 0);
    EXPECT_EQ(rho2, -1);
}

namespace {
/// A fluid whose Z, and Ar, is any function of the density and the temperature.
struct Custom : VdwModel {
    std::function<double(double, double)> f;
    double Ar(double rho, double T) const override { return f(rho, T); }
    double Z(double rho, double T) const override { return f(rho, T); }
};
}  // namespace

// With p = 2·(1 + g(u)) MPa, u = y/0.35 − 1 and g(±1) = ±1 the first secant, from 0 to 0.7, hits
// the root y = 0.35: on the unstable branch of a loop, or at an inflection.
TEST(Volume, SearchesFromAnUnstableOrCriticalRoot) {
    for (double aside : {std::sqrt(0.75), 0.0}) {  // u of the outer roots
        Custom m;
        m.f = [&](double rho, double T) {
            const double u = (rho - 0.35) / 0.35, flat = std::fabs(u) < 1e-3 ? 0 : u * u * u;
            const double p = 2 * (1 + (aside > 0 ? 4 * u * u * u - 3 * u : flat));
            double z = p / (R * T * rho);
            for (int k = 0; k < 8 && z * R * T * rho != p; ++k)  // p to the last bit
                z = std::nextafter(z, z * R * T * rho < p ? 1e99 : -1e99);
            return z;
        };
        Vector<double> roots(4);
        EXPECT_EQ(volume(&m, 0, 2, 100, nullptr, 1, roots), 3);
        EXPECT_NEAR(roots[0], 0.35 * (1 + aside), 1e-9);
        EXPECT_NEAR(roots[2], 0.35 * (1 - aside), 1e-9);
        EXPECT_EQ(roots[1] + roots[3], 0.7);  // every other entry is the first root
    }
}

TEST(FaultyModel, LeavesTheStatedCounts) {
    for (bool throws : {false, true}) {
        Custom m;
        m.fill_tables();
        double from = 0, to = 1;  // where it fails
        m.f = [&](double rho, double T) {
            if (rho < from || rho > to) return m.VdwModel::Z(rho, T);
            return throws ? throw ThException(th_out_of_range) : std::nan("");
        };
        const double T = 0.8 * m.Tcrit(), p = 0.5, b = m.vs(), start = 0.01 / b;
        double rho = start, rho2 = -1;
        Vector<double> roots;
        EXPECT_EQ(volume(&m, 0, p, T, nullptr, b, roots), 0);
        EXPECT_FALSE(volnewt(&m, 0, p, T, nullptr, b, rho));
        EXPECT_EQ(volf1(&m, p, T, 1.001 * b, rho, rho2), 0);
        EXPECT_EQ(rho, start);
        const auto run = [&] { volav(&m, 0, p, T, nullptr, b, rho); };
        EXPECT_EQ(throws ? th_code(run) : mth_code(run),
                  throws ? int{th_out_of_range} : int{mth_out_of_range});
        to = 1 / m.vcrit();  // volf1: the liquid is still tried,
        EXPECT_EQ(volf1(&m, p, T, 1.001 * b, rho, rho2), 1);
        EXPECT_GT(rho, to);
        std::swap(from, to);  // and a gas root that was found stays
        to = 1;
        EXPECT_EQ(volf1(&m, p, T, 1.001 * b, rho, rho2), 1);
        EXPECT_LT(rho, from);
    }
}

// Below their range multiparameter equations have loops within loops and slopes next to a pole, on
// which a search can end where no root is; and a gas may be as thin as it likes.
TEST(VolumeFinder, HandsOutRootsOnly) {
    for (auto [name, T0] : {std::pair("argon", 30.0), std::pair("water", 130.0)}) {
        const std::unique_ptr<Model1, corvane::Detach> m(attach1("MEOS"));
        m->name(name);
        m->id(1);
        m->load("MEOS");
        const auto expect_root = [&](double p, double T, double rho) {
            EXPECT_NEAR(m->Z(rho, T) * R * T * rho, p, 1e-6 * p + 1e-8 * R * T * rho)
                << name << " T " << T << " p " << p << " rho " << rho;
        };
        Vector<double> roots(3);
        for (double T = T0; T < 2 * T0; T *= 1.04)
            for (double p = 1e-7; p < 100; p *= 7)
                for (double d : {0.24, 0.31, 0.37}) {
                    const double volume_d = d * m->vcrit();
                    if (volume(m.get(), 0, p, T, nullptr, volume_d, roots))
                        for (int k : {0, 1, 2}) expect_root(p, T, roots[k]);
                    double rho = 1e-8, rho2 = 0;
                    if (volav(m.get(), 0, p, T, nullptr, volume_d, rho) && rho * volume_d > 1e-4) {
                        EXPECT_LT(std::fabs(m->Z(rho, T) * R * T * rho / p - 1), 0.05)
                            << name << " T " << T << " p " << p << " rho " << rho;
                    }
                    if (volnewt(m.get(), 0, p, T, nullptr, volume_d, rho = 1e-8))
                        expect_root(p, T, rho);
                    const int n = volf1(m.get(), p, T, volume_d, rho, rho2);
                    if (n > 0) expect_root(p, T, rho);
                    if (n > 1) expect_root(p, T, rho2);
                }
    }
    VdwModel m;
    m.fill_tables();
    for (double p : {1e-20, 1e-100, 1e-280}) {
        Vector<double> roots(3);
        EXPECT_GT(volume(&m, 0, p, m.Tcrit(), nullptr, m.vs(), roots), 0);
        EXPECT_NEAR(roots[2] * R * m.Tcrit() / p, 1, 1e-12) << p;
        double rho = 0, rho2 = 0;
        ASSERT_EQ(volf1(&m, p, m.Tcrit(), 1.001 * m.vs(), rho, rho2), 1);
        EXPECT_NEAR(rho * R * m.Tcrit() / p, 1, 1e-12) << p;
        EXPECT_FALSE(corvane::is_density(&m, 0, p, m.Tcrit(), nullptr, 1.1 * rho));
    }
    const double inf = INFINITY, nan = std::nan("");
    for (auto [p, T] : {std::pair(1.0, -inf), {1.0, inf}, {1.0, 0.0}, {inf, 100.0}, {nan, 100.0}}) {
        Vector<double> roots(3);
        double rho = 1e-3, rho2 = 0;
        m.calls = 0;
        EXPECT_EQ(volume(&m, 0, p, T, nullptr, m.vs(), roots), 0);
        EXPECT_EQ(volav(&m, 0, p, T, nullptr, m.vs(), rho), 0);
        EXPECT_FALSE(volnewt(&m, 0, p, T, nullptr, m.vs(), rho));
        EXPECT_EQ(volf1(&m, p, T, m.vs(), rho, rho2), 0);
        EXPECT_EQ(m.calls, 0);  // no state: the model is not asked
    }
}

// A pressure that leaps over the one that is asked for is no root, whatever search ends there.
TEST(VolumeFinder, LeapsAreNoRoots) {
    const double T = 240, P = 1, b = 40;
    Custom m;  // tables of 300 K and 40 cm³/mol
    m.fill_tables();
    std::vector<std::pair<double, double>> leaps;  // the pressure from a density on
    m.f = [&](double density, double) {
        double p = 0.5 * P;
        for (auto [from, to] : leaps)
            if (density > from) p = to;
        return p / (R * T * density);
    };
    const double gas = 0.5 * m.xrho(T, 3), liquid = 1.2 * m.xrho(T, 1);
    Vector<double> roots(3);
    double rho = 0, rho2 = 0;
    leaps = {{gas, 2 * P}};
    EXPECT_EQ(volume(&m, 0, P, T, nullptr, b, roots), 0);
    EXPECT_EQ(volf1(&m, P, T, b, rho, rho2), 0);
    leaps = {{liquid, 2 * P}};
    EXPECT_EQ(volf1(&m, P, T, b, rho, rho2), 0);
    // So near to the leap that its slope makes the step short.
    leaps = {{0, (1 - 1e-7) * P}, {gas, 1e3 * P}};
    EXPECT_FALSE(volnewt(&m, 0, P, T, nullptr, b, rho = gas * (1 - 1e-6)));
    // Beside an unstable root: falling from 3·P to −P, and leaps at either end of that.
    m.f = [&](double density, double) {
        const double u = (density * b - 0.35) / 0.35;
        return P * (u < -0.9 ? 0 : u > 0.9 ? 2 : 1 - 2 * u) / (R * T * density);
    };
    EXPECT_EQ(volume(&m, 0, P, T, nullptr, b, roots), 3);
    for (int k : {0, 1, 2}) EXPECT_NEAR(roots[k] * b, 0.35, 1e-9);
}

// Where the searches of a density end: at the ends of y, at a step that is no number, and where the
// start's retreats hit a root that they are not to see.
TEST(VolumeFinder, EndsOfSearches) {
    VdwModel m;
    m.fill_tables();
    const double T = 0.8 * m.Tcrit(), b = m.vs();
    double rho = 0.27 / b;  // the end of the secant that stays has to count less and less
    EXPECT_EQ(volav(&m, 0, 17, 97.5, nullptr, b, rho), 1);
    EXPECT_NEAR(m.Z(rho, 97.5) * R * 97.5 * rho, 17, 1e-6);
    Custom falls;  // to y = 1, from where short steps lead nowhere: p·b/(RT) = −y²/(y − 0.5) − …
    falls.f = [&](double density, double) {
        const double y = density * b;
        return std::log(std::fabs(1 - y / 0.5)) - 6.2 * y;
    };
    EXPECT_EQ(volav(&falls, 0, 0.028, 70.7, nullptr, b, rho = (1 - 1.8e-9) / b), 0);
    Custom ideal;
    ideal.f = [](double, double) { return 0.0; };
    EXPECT_EQ(volav(&ideal, 0, 1e10, 1e-300, nullptr, 30, rho = 0.01), 0);
    EXPECT_EQ(rho, 0.01);
    // 0.3/8 is what three retreats make of 0.3; the fourth check fails.
    const double thin = 0.3 / 8 / b, start = 0.3 / b;
    EXPECT_FALSE(volnewt(&m, 0, m.Z(thin, T) * R * T * thin, T, nullptr, b, rho = start));
    EXPECT_EQ(rho, start);
    const VdwTwins twins(0);  // a root at y = 1.5, for which d is too large
    Vector<double> x = mix(0.5);
    const double dense = 0.5 / 40, p = twins.Z(dense, 600, x) * R * 600 * dense;
    EXPECT_FALSE(volnewt(&twins, 1, p, 600, &x, 120, rho = 0.9 / 120));
    EXPECT_TRUE(volnewt(&twins, 1, p, 600, &x, 60, rho));
}

TEST(VolumeFinder, ServesMixturesThroughTheSamePath) {
    const std::unique_ptr<ModelN, corvane::Detach> m(attachN("PR", "vdW1"));
    m->alloc(2, "PR");
    Vector<double> x(2), roots;
    x.set(0.5);
    double b = 0;
    for (int i : {0, 1}) {
        Model1& component = *m->getModel1i(i);
        component.name(i == 0 ? "methane" : "propane");
        component.id(1);
        component.load("PR");
        b += x[i] * component.vs();
    }
    const double T = 200, p = 1;
    double rho[2] = {0, 0};
    ASSERT_EQ(m->vcalc(p, T, x, 1, rho[0], rho[1]), 3);
    ASSERT_EQ(volume(m.get(), 1, p, T, &x, b, roots), 3);
    for (int i : {0, 1}) {
        EXPECT_NEAR(roots[2 * i] / rho[i], 1, 1e-9);
        double start = 0.95 * rho[i], start2 = start;
        EXPECT_EQ(volav(m.get(), 1, p, T, &x, b, start), 1);
        EXPECT_NEAR(start * b, rho[i] * b, 1e-9);
        EXPECT_TRUE(volnewt(m.get(), 1, p, T, &x, b, start2));  // a mixture has no range check
        EXPECT_NEAR(start2 / rho[i], 1, 1e-9);
    }
}
