// The tables that hold many parameter sets: every row is a set that loads, of a substance in the
// index, and PC-SAFT sets boil where they were measured to.
#include <corvane/core/collected.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/pure/attach.h>
#include <data/data_files.h>
#include <support/shipped.h>

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {
namespace fs = std::filesystem;

TEST(CollectedSets, AreSortedUniqueAndOfSubstancesInTheIndex) {
    int tables = 0;
    for (auto const& path : data::files("CorvaneS/parameters")) {
        if (path.filename() != "collected.tsv") continue;
        ++tables;
        SCOPED_TRACE(path);
        const std::size_t cells = data::split(data::lines(path).at(0), "\t").size();
        const auto names = corvane::collected_names(path.parent_path());
        EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));  // by bytes: found by bisection
        EXPECT_EQ(std::set(names.begin(), names.end()).size(), names.size());
        for (std::string const& name : names) {
            SCOPED_TRACE(name);
            const fs::path file = path.parent_path() / name;
            EXPECT_FALSE(fs::exists(file)) << "a file hides the row";
            const std::string text = corvane::file_contents(file.c_str());
            EXPECT_NE(text.find("\nsource:\t"), text.npos);
            EXPECT_NE(text.find("\nvalid:\t"), text.npos);
            for (std::string const& part : data::split(name.substr(0, name.find(';')), "+"))
                EXPECT_TRUE(data::substances().count(part)) << part;
        }
        for (std::string const& line : data::lines(path))
            EXPECT_LE(data::split(line, "\t").size(), cells);
    }
    EXPECT_GE(tables, 2);
}

// Vapour pressures at the normal boiling point. Some boiling points are as doubtful as the sets;
// those of PC-SAFT that are off by more than 30 % and those of a fitted alpha function by more than
// 10 % are not shipped. Two collections of the latter agree with these shares.
TEST(CollectedSets, BoilWhereMeasured) {
    struct Row {
        char const* eos;
        double most, fitted, least_share;  // of set 1, of others, within 2 %
        int sets;
    };
    for (Row const& row : {Row{"PCSAFT", 0.302, 0.302, 0.55, 1400},
                           {"PR", 0.302, 0.106, 0.55, 3000},
                           {"SRK", 0.302, 0.106, 0.55, 3000}}) {
        int within[3] = {}, all = 0;
        for (std::string const& file :
             corvane::collected_names(std::string("CorvaneS/parameters/") + row.eos)) {
            const std::size_t mark = file.find(';');
            const ParameterSet set{row.eos, file.substr(0, mark),
                                   std::atoi(file.c_str() + mark + 1)};
            const Model m = load_set(set);
            EXPECT_TRUE(m->Tcrit() > 0 && m->pcrit() > 0 && m->vcrit() > 0) << set.name;
            const double Tb = data::substances().at(set.name).Tb;
            if (!(Tb < 0.95 * m->Tcrit())) continue;
            const double error = std::fabs(corvane::pure_saturation_T(*m, Tb).p / 0.101325 - 1);
            EXPECT_LE(error, set.id == 1 ? row.most : row.fitted)
                << row.eos << " " << set.name << ";" << set.id;
            ++all;
            for (int k = 0; k < 3; ++k) within[k] += error < (k == 0 ? 0.01 : k == 1 ? 0.02 : 0.05);
        }
        std::printf("%s: %d sets with a boiling point, within 1 %%, 2 %%, 5 %%: %d, %d, %d\n",
                    row.eos, all, within[0], within[1], within[2]);
        EXPECT_GT(all, row.sets);
        EXPECT_GT(within[1], row.least_share * all);
    }
}

TEST(CollectedSets, PairsLoadWithTheSetsThatTheyNeed) {
    std::unique_ptr<ModelN, corvane::Detach> m(attachN("PCSAFT", "LB"));
    m->alloc(2, "PCSAFT");
    int induced = 0, count = 0;
    for (std::string const& file : corvane::collected_names("CorvaneS/parameters/PCSAFT/LB")) {
        if (++count % 4 != 0) continue;  // a quarter of the many
        SCOPED_TRACE(file);
        const std::size_t plus = file.find('+'), mark = file.find(';');
        m->mdl1[0]->name(file.substr(0, plus).c_str());
        m->mdl1[1]->name(file.substr(plus + 1, mark - plus - 1).c_str());
        for (int i = 0; i < 2; ++i) m->mdl1[i]->id(-1);
        m->id(0, 1, std::atoi(file.c_str() + mark + 1));
        m->load("PCSAFT", "LB");
        EXPECT_LE(std::fabs(m->param(0, 0, 1)), 0.3);
        if (m->param(3, 0, 1) == 0) continue;
        ++induced;  // a donor of one for an acceptor of the other
        const auto sites = [&](int i, int k) { return m->param(k, i, i); };
        EXPECT_GT(sites(0, 6) * sites(1, 7) + sites(1, 6) * sites(0, 7), 0);
        EXPECT_TRUE(m->param(2, 0, 1) >= 100 && m->param(2, 0, 1) <= 5000);
    }
    EXPECT_GT(induced, 200);
}

// Péneloux et al. (1982): a translation linear in composition multiplies all fugacities by the same
// factor exp(c_i·p/RT) in both phases.
TEST(CollectedSets, VolumeTranslationLeavesPhaseEquilibriaAlone) {
    std::unique_ptr<ModelN, corvane::Detach> m(attachN("PR", "vdW1"));
    m->alloc(2, "PR");
    m->mdl1[0]->name("2_2_3_trimethylpentane");
    m->mdl1[1]->name("1_hexadecanol");
    for (int i = 0; i < 2; ++i) {
        m->mdl1[i]->id(3);
        m->mdl1[i]->load("PR");
        ASSERT_NE(m->param(8, i, i), 0);
    }
    Vector<double> x(2);
    x[0] = 0.3;
    x[1] = 0.7;
    for (double T : {350.0, 450.0}) {
        const auto with = corvane::bubble_T(*m, T, x);
        const double c[] = {m->param(8, 0, 0), m->param(8, 1, 1)};
        for (int i = 0; i < 2; ++i) m->param(8, i, i, 0.0);
        const auto without = corvane::bubble_T(*m, T, x);
        for (int i = 0; i < 2; ++i) m->param(8, i, i, c[i]);
        EXPECT_NEAR(with.p / without.p, 1,
                    1e-12 + with.certificate.value_error + without.certificate.value_error);
        EXPECT_NEAR(with.incipient.x[0], without.incipient.x[0], 1e-11);
        const double shift = x[0] * c[0] + x[1] * c[1];
        EXPECT_NEAR(1 / with.given.rho, 1 / without.given.rho - shift, 1e-9);
    }
}
}  // namespace
