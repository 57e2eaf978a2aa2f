// CPA against figures of other programs, and by the checks that every plug-in has to pass.
#include <corvane/check/check.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <tests/data/data_files.h>
#include <tests/support/mixtures.h>
#include <tests/support/shipped.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {
// Deviations of the vapour pressure at the boiling point in per cent, as an evaluation written for
// the collection of the sets gives them, to one digit.
TEST(Cpa, SetsBoilAsAnotherProgramSays) {
    struct Row {
        char const* name;
        int id;
        double deviation;
    };
    for (Row const& row : {Row{"water", 1, -1.2},
                           {"ethanol", 2, 2.3},
                           {"ethanol", 1, 2.0},
                           {"phenol", 1, -4.7},
                           {"decane", 1, 2.0},
                           {"ethylene_glycol", 1, 2.2},
                           {"methane", 1, 0.7}}) {
        const Model m = load_set("CPA", row.name, row.id);
        const double p = corvane::pure_saturation_T(*m, data::substances().at(row.name).Tb).p;
        EXPECT_NEAR(100 * (p / 0.101325 - 1), row.deviation, 0.06) << row.name << ";" << row.id;
    }
}

/// With both components at 0.01 mol/cm³, 298.15 K, equal amounts: what association adds.
double association(ModelN& m) {
    const Vector<double> x = vec({0.5, 0.5});
    double Ar = m.Ar(0.01, 298.15, x);
    for (int i = 0; i < 2; ++i) {
        m.param(7, i, i, 0.0);
        m.param(8, i, i, 0.0);
    }
    return Ar - m.Ar(0.01, 298.15, x);
}

// Of the test suite of another program: the original and the simplified contact value, self- and
// cross-association. The gas constants differ by 1e-7.
TEST(Cpa, AssociationIsThatOfAnotherProgram) {
    const Mixture alcohol = mixture_of("CPA", "vdW1", {"ethanol", "benzene"});
    alcohol->mdl1[0]->id(2);
    alcohol->mdl1[0]->load("CPA");
    EXPECT_NEAR(association(*alcohol), -1.1575210505284332, 3e-7);
    const Mixture gas(attachN("CPA", "vdW1"));
    gas->alloc(2, "CPA");
    gas->mdl1[0]->name("water");
    gas->mdl1[1]->name("carbon_dioxide");
    for (int i = 0; i < 2; ++i) gas->mdl1[i]->id(-1);
    gas->id(0, 1, 1);
    gas->load("CPA", "vdW1");
    EXPECT_EQ(gas->param(0, 0, 1), 0.1145);  // Tsivintzelis et al. (2011)
    EXPECT_NEAR(association(*gas), -1.957518287413705, 3e-7);
}

TEST(Cpa, PassesTheChecksOfPlugins) {
    for (ParameterSet const& set : shipped_sets("CPA"))
        for (corvane::Check const& c : corvane::check_equation(*load_set(set)))
            EXPECT_TRUE(c.passed()) << set.name << ";" << set.id << ": " << c.name << " " << c.what;
    const Mixture m = mixture_of("CPA", "vdW1", {"methanol", "hexane", "water"});
    for (corvane::Check const& c : corvane::check_mixture(*m))
        EXPECT_TRUE(c.passed()) << c.name << " " << c.what;
}
}  // namespace
