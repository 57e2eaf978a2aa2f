// Pairs and ternaries fitted to measured liquids, those of examples/measured.
#include "support.h"

using namespace corvane::fit;
using corvane::Mixture;

namespace {
Mixture open(char const* model, std::vector<std::string> const& components, int pair_set = 0) {
    corvane::MixtureOptions options;
    options.home = here();
    options.pair_set = pair_set;
    return corvane::open_mixture(model, components, options);
}
DataSet measured(std::string const& file, std::vector<std::string> const& components) {
    return read_data(CORVANE_SOURCE "/examples/measured/" + file + ".csv", here(), components, 0.0);
}
}  // namespace

// One k_ij for both mutual solubilities. What association is good for: that it brings both ends of
// an alkane and of an alcohol with water. With the k_ij of Rehner, Bardow & Gross (2023), fitted to
// other data, the ether's comes out. Aromatics it cannot have without bonds between water and the
// ring: too little of them in water is made up by too much water in them.
TEST(FitLiquids, OneParameterForBothMutualSolubilities) {
    const struct {
        char const *model, *first;
        int set;
        double within_x, within_x2;  // of x, and of 1 − x2, relative
        double kij, kij_within;      // published; 0: none
    } cases[] = {
        {"CPA+vdW1", "hexane", 1, 0.13, 0.15, 0.0, 0.0},  // the spread of the measured values
        {"CPA+vdW1", "1_butanol", 1, 0.15, 0.05, 0.0, 0.0},
        {"PCSAFT+LB", "diisopropyl_ether", 3, 0.2, 0.05, -0.02548, 0.0025}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.first);
        Problem problem;
        problem.add(open(c.model, {c.first, "water"}, c.set),
                    {measured(std::string(c.first) + "_water", {c.first, "water"})});
        problem.adjust_pair("kij").start = 0.05;
        const Result r = solve(problem);
        EXPECT_TRUE(r.converged);
        PointReport const &x = r.points.at(0), &x2 = r.points.at(1);
        EXPECT_TRUE(x.stable && x2.stable);
        EXPECT_NEAR(x.after / x.measured, 1.0, c.within_x);
        EXPECT_NEAR((1.0 - x2.after) / (1.0 - x2.measured), 1.0, c.within_x2);
        if (c.kij_within > 0.0) {
            EXPECT_NEAR(r.parameters[0].value, c.kij, c.kij_within);
        }
    }
    for (char const* ring : {"benzene", "toluene"}) {
        SCOPED_TRACE(ring);
        Problem problem;
        problem.add(open("PCSAFT+LB", {ring, "water"}, 3),
                    {measured(std::string(ring) + "_water", {ring, "water"})});
        problem.adjust_pair("kij");
        const Result r = solve(problem);
        EXPECT_LT(r.points[0].after, r.points[0].measured);
        EXPECT_LT(r.points[1].after, r.points[1].measured);
    }
}

// Carbon dioxide in water: a k_ij linear in 1/T follows Henry's constants from 280 to 480 K (IAPWS
// G7-04) and with them the solubilities of Bamberger et al. (2000) at 323 K and up to 14 MPa, which
// are compared without influence; a constant one follows neither.
TEST(FitLiquids, TemperatureDependenceHoldsForWhatWasNotFitted) {
    const std::vector<std::string> names{"carbon_dioxide", "water"};
    const auto deviations = [&](std::vector<std::string> const& adjusted) {
        Problem problem;
        DataSet other = measured("carbon_dioxide_water", names);
        for (Point& point : other.points) point.used = false;
        problem.choose(
            problem.add(open("PR+vdW1", names),
                        {read_data(CORVANE_SOURCE "/examples/fit/carbon_dioxide_in_water.csv",
                                   here(), names, 0.0),
                         other}),
            {.names = adjusted});
        const Result r = solve(problem);
        double sum[2] = {0.0, 0.0};
        int count[2] = {0, 0};
        for (PointReport const& p : r.points)
            if (p.what != Observable::y) {
                EXPECT_TRUE(p.solved);
                sum[p.set] += std::fabs(p.deviation);
                ++count[p.set];
            }
        EXPECT_EQ(count[0], 21);
        EXPECT_EQ(count[1], 10);
        return std::pair(sum[0] / count[0], sum[1] / count[1]);
    };
    const auto [constant, constant_p] = deviations({"kij"});
    const auto [linear, linear_p] = deviations({"kij", "kijT"});
    EXPECT_LT(linear, 0.05);
    EXPECT_GT(constant, 5.0 * linear);
    EXPECT_LT(linear_p, 0.25);
    EXPECT_GT(constant_p, 2.0 * linear_p);
}

// Three pairs to the tie lines of a ternary, within what such models reach with them: one k_ij a
// pair to a few per cent, two energies of the NRTL equation a pair to about one (of mole fractions;
// the measured ones have two or three digits).
TEST(FitLiquids, ThreePairsFromTheTieLinesOfATernary) {
    for (char const* third : {"diisopropyl_ether", "chloroform"})
        for (bool nrtl : {false, true}) {
            SCOPED_TRACE(std::string(third) + (nrtl ? ", NRTL" : ", kij"));
            const std::vector<std::string> names{"water", "acetic_acid", third};
            const DataSet data = measured(std::string("water_acetic_acid_") + third, names);
            Problem problem;
            problem.add(nrtl ? open("PR+HV", names) : open("PCSAFT+LB", names, 3), {data});
            ModelN& model = *problem.systems[0]->mixture->model;
            for (int i = 0; i < 3; ++i)
                for (int j = i + 1; j < 3; ++j) {
                    if (!nrtl) {
                        problem.adjust_pair("kij", i, j);
                        continue;
                    }
                    const bool apart = i == 0 && j == 2;  // water and what does not mix with it
                    *model.ppar(1, i, j) = 0.2;           // α of such pairs
                    *model.ppar(2, i, j) = apart ? 2000.0 : 0.0;
                    *model.ppar(3, i, j) = apart ? 500.0 : 0.0;
                    for (char const* energy : {"C12", "C21"})
                        problem.adjust_pair(energy, i, j).unit = 100.0;
                }
            EXPECT_EQ(problem.label(1), std::string(nrtl ? "C21 (water + acetic_acid)"
                                                         : "kij (water + " + names[2] + ")"));
            const Result r = solve(problem);
            double sum = 0.0;
            for (PointReport const& p : r.points) {
                EXPECT_TRUE(p.solved && p.stable);
                sum += std::fabs(p.deviation);
            }
            const double mean = sum / static_cast<double>(r.points.size());
            EXPECT_LT(mean, nrtl ? 0.0125 : 0.035);
            EXPECT_EQ(r.points.size(), 4 * data.points.size());
        }
}
