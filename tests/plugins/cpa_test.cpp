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
                           {"acetic_acid", 1, 0.4},  // scheme 1A
                           {"formic_acid", 1, 0.5},
                           {"propanoic_acid", 1, 2.9},
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

// One site of each molecule: the free fraction of an acid (1) in an alcohol (2, scheme 2B) from
// X1 = 1/(1 + n1·D11·X1 + 2·n2·D12·X2), X2 = 1/(1 + n2·D22·X2 + n1·D12·X1), by substitution.
TEST(Cpa, AcidsHaveOneSite) {
    const double T = 350.0, rho = 0.012, x1 = 0.3;
    const Mixture m = mixture_of("CPA", "vdW1", {"acetic_acid", "methanol"});
    const auto p = [&](int k, int i) { return m->param(k, i, i); };
    const double b = x1 * p(2, 0) + (1 - x1) * p(2, 1), g = 1 / (1 - 0.475 * b * rho);
    const auto D = [&](int i, int j) {
        return rho * g * 0.5 * (p(2, i) + p(2, j)) * std::sqrt(p(5, i) * p(5, j)) *
               std::expm1(0.5 * (p(6, i) + p(6, j)) / T);
    };
    double X1 = 1, X2 = 1;
    for (int k = 0; k < 2000; ++k) {
        const double one = 1 / (1 + x1 * D(0, 0) * X1 + 2 * (1 - x1) * D(0, 1) * X2);
        const double two = 1 / (1 + (1 - x1) * D(1, 1) * X2 + x1 * D(0, 1) * X1);
        X1 = 0.5 * (X1 + one), X2 = 0.5 * (X2 + two);
    }
    const auto site = [](double X) { return std::log(X) - 0.5 * X + 0.5; };
    const Vector<double> x = vec({x1, 1 - x1});
    double bonds = m->Ar(rho, T, x);
    for (int i : {0, 1})
        for (int k : {7, 8}) m->param(k, i, i, 0.0);
    bonds -= m->Ar(rho, T, x);
    EXPECT_NEAR(bonds, x1 * site(X1) + (1 - x1) * 2 * site(X2), 1e-11);
}

TEST(Cpa, PassesTheChecksOfPlugins) {
    for (ParameterSet const& set : shipped_sets("CPA"))
        for (corvane::Check const& c : corvane::check_equation(*load_set(set)))
            EXPECT_TRUE(c.passed()) << set.name << ";" << set.id << ": " << c.name << " " << c.what;
    const Mixture m = mixture_of("CPA", "vdW1", {"methanol", "hexane", "acetic_acid"});
    for (corvane::Check const& c : corvane::check_mixture(*m))
        EXPECT_TRUE(c.passed()) << c.name << " " << c.what;
}
}  // namespace
