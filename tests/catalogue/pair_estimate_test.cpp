// Reducing parameters of multi-fluid pairs from predictive models: against pairs whose own are
// published, against measured points, and the files that keep them.
#include "support/scratch.h"

#include <corvane/catalogue/pair_estimate.h>
#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {
using corvane::Mixture;
using corvane::MixtureOptions;

constexpr int kNone = 9;  // a number under which no pairs are published

Vector<double> two(double x) {
    Vector<double> z(2);
    z[0] = x;
    z[1] = 1.0 - x;
    return z;
}
/// Not a bubble point: off by 100 %.
double deviation(Mixture const& m, double T, double x, double p) try {
    return std::fmin(std::fabs(corvane::bubble_T(*m.model, T, two(x)).p / p - 1.0), 1.0);
} catch (corvane::EquilibriumFailure const&) {
    return 1.0;
}

// Pairs with fitted parameters (Kunz & Wagner 2012; Bell & Lemmon 2016), as if they were unknown.
// Nine in ten are off by less than 2.4 times the stated mean error (docs/models.md); with all
// parameters 1 each is off by three times as much and more.
TEST(PairEstimate, ComesNearToPublishedPairs) {
    struct Row {
        char const *a, *b;
        int number;
        char const* model;
    };
    for (Row const& row : {Row{"dodecane", "octane", 2, "PCSAFT+LB"},
                           {"ethanol", "nonane", 2, "PCSAFT+LB"},
                           {"propane", "r14", 2, "PCSAFT+LB"},
                           {"dimethyl_carbonate", "nonane", 2, "PCSAFT+LB"},
                           {"decane", "hydrogen_sulfide", 1, "SRK+PSRK"},
                           {"butane", "hydrogen_sulfide", 2, "SRK+PSRK"}}) {
        SCOPED_TRACE(std::string(row.a) + " + " + row.b);
        const auto published =
            corvane::open_mixture("MEOS+GERG", {row.a, row.b}, {.pair_set = row.number});
        const int set = published.model->id(0, 0);
        const auto open = [&](bool predict) {
            return corvane::open_mixture(
                "MEOS+GERG", {row.a, row.b},
                {.sets = {set, set}, .pair_set = kNone, .predict = predict});
        };
        const auto plain = open(false), estimate = open(true);
        ASSERT_EQ(estimate.predicted.size(), 1u);
        EXPECT_TRUE(plain.predicted.empty());
        EXPECT_EQ(plain.estimated.size(), 1u);
        for (int k = 0; k < 4; ++k) EXPECT_EQ(plain.model->param(k, 0, 1), 1.0);
        EXPECT_EQ(estimate.predicted[0].model, row.model);
        EXPECT_TRUE(estimate.validity.estimated_pairs);
        double before = 0.0, after = 0.0;
        int points = 0;
        for (double x : {0.15, 0.4, 0.85})
            for (double part : {0.6, 0.7}) {
                const double T = part * (x * published.model->mdl1[0]->Tcrit() +
                                         (1.0 - x) * published.model->mdl1[1]->Tcrit());
                if (T < published.validity.T_triple[0] || T < published.validity.T_triple[1])
                    continue;
                double p = 0.0;
                try {
                    p = corvane::bubble_T(*published.model, T, two(x)).p;
                } catch (corvane::EquilibriumFailure const&) {  // above the critical point
                    continue;
                }
                before += deviation(plain, T, x, p);
                after += deviation(estimate, T, x, p);
                ++points;
            }
        ASSERT_GE(points, 3);
        EXPECT_LT(after / points, 3.0 * estimate.predicted[0].expected);
        EXPECT_LT(after, before / 3.0);
    }
}

// examples/measured/ethanol_water.csv (source there) at 101.3 kPa, a pair without published
// parameters: Lorentz and Berthelot's rules are 30 % off.
TEST(PairEstimate, ComesNearToMeasuredPoints) {
    std::ifstream file(CORVANE_SOURCE "/examples/measured/ethanol_water.csv");
    std::string line;
    const auto plain = corvane::open_mixture("MEOS+GERG", {"ethanol", "water"}, {.predict = false});
    const auto estimate = corvane::open_mixture("MEOS+GERG", {"ethanol", "water"});
    double before = 0.0, after = 0.0;
    int points = 0;
    while (std::getline(file, line)) {
        double T = 0.0, p = 0.0, x = 0.0;
        if (std::sscanf(line.c_str(), "%lf,%lf,%lf", &T, &p, &x) != 3 || !(x > 0.0 && x < 1.0))
            continue;
        before += deviation(plain, T, x, p);
        after += deviation(estimate, T, x, p);
        ++points;
    }
    ASSERT_GT(points, 15);
    EXPECT_GT(before / points, 0.25);
    EXPECT_LT(after / points, 0.10);
}

TEST(PairEstimate, IsKeptAndMadeAnew) {
    Scratch scratch;
    const std::vector<fs::path> folders{scratch.dir() / "a"};
    const corvane::DataHome home(scratch.home());
    const auto open = [&](std::vector<std::string> const& names) {
        return corvane::open_mixture("MEOS+GERG", names,
                                     {.pair_set = kNone, .predict = false, .home = home});
    };
    auto m = open({"propane", "dodecane"});
    const auto estimated = [&](Mixture const& of, int i = 0, int j = 1) {
        EXPECT_TRUE(corvane::estimate_reducing(home, *of.model, i, j, folders));
        std::vector<double> v;
        for (int k = 0; k < 4; ++k) v.push_back(of.model->param(k, i, j));
        return v;
    };
    const auto first = estimated(m);
    const fs::path file = folders[0] / "MEOS+GERG,propane;1+dodecane;1";
    const std::string good = Scratch::read(file);
    std::string other = good;
    other[20] = other[20] == '5' ? '6' : '5';
    for (std::string const& bad : {std::string(), good.substr(0, 40), good + "1", other}) {
        scratch.write(file, bad);
        EXPECT_EQ(estimated(m), first);
        EXPECT_EQ(Scratch::read(file), good);
    }
    // A pair of a ternary is that of the binary, whatever the third; exchanged components invert
    // beta.
    EXPECT_EQ(estimated(open({"propane", "methane", "dodecane"}), 0, 2), first);
    const auto turned = estimated(open({"dodecane", "propane"}));
    for (unsigned k : {0u, 1u, 2u, 3u})
        EXPECT_NEAR(k % 2 == 0 ? 1.0 / turned[k] : turned[k], first[k], 1e-4) << k;
    m.model->mdl1[0]->param(1, 1.01 * m.model->mdl1[0]->param(1));
    EXPECT_NE(estimated(m), first);
    EXPECT_NE(Scratch::read(file), good);
}
}  // namespace
