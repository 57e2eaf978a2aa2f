// Parameter sets: the common section of all equations, and the cubic sets.
#include <corvane/core/constants.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <data/data_files.h>
#include <support/scratch.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <regex>
#include <set>

namespace {

using Model = std::unique_ptr<Model1, corvane::Detach>;
using Labels = std::map<std::string, std::string>;

struct Cubic {
    char const* eos;
    double b;   // Omega_b of Peng, Robinson (1976) and of Soave (1972)
    double Zc;  // (1 − Omega_b)/3 for the first, 1/3 for the second
};
constexpr Cubic kCubics[] = {{"PR", 0.077796073903888455972, (1 - 0.077796073903888455972) / 3},
                             {"SRK", 0.086640349964957721589, 1.0 / 3}};

double value(Labels const& l, char const* key) {
    return std::stod(l.at(key));
}
std::vector<std::filesystem::path> sets(std::filesystem::path const& folder) {
    std::vector<std::filesystem::path> all;
    for (auto const& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file() && !entry.path().has_extension())
            all.push_back(entry.path());  // folders hold pairs
    return all;
}

TEST(ParameterSets, CommonSectionFitsTheReader) {
    const std::vector<std::string> keys = {"name", "id", "text", "pc", "Tc", "vc"};
    int count = 0;
    for (auto const& eos : std::filesystem::directory_iterator("CorvaneS/parameters"))
        for (auto const& file : sets(eos)) {
            SCOPED_TRACE(file);
            const auto all = data::lines(file);
            Labels l = data::labels(file);
            for (size_t i = 0; i < keys.size(); ++i)
                ASSERT_EQ(all.at(i).rfind(keys[i] + ":\t", 0), 0u);
            EXPECT_EQ(l["name"] + ";" + l["id"], file.filename());
            EXPECT_TRUE(!l["text"].empty() && l["text"].size() <= 78) << l["text"];
            for (char const* key : {"pc", "Tc", "vc", "M", "Ts", "vs"})
                EXPECT_GT(value(l, key), 0) << key;
            EXPECT_EQ(data::numbers(l.at("valid")).size(), 3u);
            EXPECT_EQ(data::numbers(l.at("measured")).size(), 3u);
            ++count;
        }
    EXPECT_GT(count, 2000);
}

TEST(CubicSets, BelongToTheSubstanceAndTheEquation) {
    std::set<std::string> cited;
    for (std::string const& line : data::lines("CorvaneS/references.bib"))
        if (line.starts_with("@"))
            cited.insert(line.substr(line.find('{') + 1, line.find(',') - line.find('{') - 1));
    const std::regex key("[A-Z][A-Za-z]*(19|20)[0-9][0-9][a-z]?");
    for (Cubic const& eos : kCubics)
        for (auto const& file : sets(std::string("CorvaneS/parameters/") + eos.eos)) {
            SCOPED_TRACE(file);
            Labels l = data::labels(file);
            data::Substance const& s = data::substances().at(l["name"]);
            EXPECT_EQ(value(l, "Tc"), s.Tc);
            EXPECT_EQ(value(l, "Ts"), s.Tc);
            EXPECT_EQ(value(l, "pc"), s.pc);
            EXPECT_EQ(value(l, "M"), s.M);
            EXPECT_EQ(value(l, "omega"), s.omega);
            const double scale = R * s.Tc / s.pc, c = l.count("c") ? value(l, "c") : 0;
            // Both are written with all digits.
            EXPECT_NEAR(value(l, "vs"), eos.b * scale, 1e-14 * scale);
            EXPECT_NEAR(value(l, "vc"), eos.Zc * scale - c, 1e-14 * scale);
            EXPECT_EQ(l.count("alpha"), l["id"] == "1" ? 0u : 1u);
            EXPECT_EQ(l.count("c"), l["id"] == "3" ? 1u : 0u);
            for (std::sregex_iterator it(l["text"].begin(), l["text"].end(), key), end; it != end;
                 ++it)
                EXPECT_TRUE(cited.count(it->str())) << it->str() << " is not in references.bib";
        }
}

// Through the plug-ins: at the normal boiling point both phases have the same Gibbs energy, so that
// Ge of the liquid minus Ge of the vapour is the logarithm of the vapour pressure over 0.101325
// MPa.
TEST(CubicSets, ReproduceBoilingPoints) {
    for (Cubic const& eos : kCubics) {
        Model m(attach1(eos.eos));
        for (auto const& file : sets(std::string("CorvaneS/parameters/") + eos.eos)) {
            SCOPED_TRACE(file);
            Labels l = data::labels(file);
            data::Substance const& s = data::substances().at(l["name"]);
            m->name(l["name"].c_str());
            m->id(std::stoi(l["id"]));
            m->load(eos.eos);
            if (!(s.Tb < 0.95 * s.Tc)) continue;  // helium-3 has no second root there
            double liquid = 0, vapour = 0;
            const double p = 0.101325;
            const double error = m->Ge(p, s.Tb, 1, liquid) - m->Ge(p, s.Tb, 3, vapour);
            EXPECT_GT(liquid, 2 * vapour);
            // Sets with a fitted alpha are shipped below 10 %; mercury with SRK has the largest
            // error of the standard function, −28 %.
            EXPECT_LE(std::abs(error), l["id"] == "1" ? 0.34 : 0.106);
        }
    }
}

// What store writes under its own tree is, moved to where load reads, the same set: every parameter
// to the last bit, the header to its nine printed digits.
TEST(ParameterSets, SurviveLoadStoreLoad) {
    const Scratch scratch;
    int count = 0;
    for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"}) {
        const auto read = std::filesystem::path("CorvaneS/parameters") / eos;
        const auto written = std::filesystem::path("models/parameters") / eos;
        std::filesystem::create_directories(read);
        std::filesystem::create_directories(written);
        const std::string plugin = std::string("CorvaneS/libth") + eos + ".dll";
        std::filesystem::create_symlink(scratch.home() / plugin, plugin);
        for (auto const& file : sets(scratch.home() / read)) {
            SCOPED_TRACE(file.filename().string());
            if (++count % 7 != 0 && std::string(eos) != "MEOS") continue;  // a sample of the many
            const auto name = file.filename();
            std::filesystem::copy_file(file, read / name);
            const auto load = [&] {
                Model m(attach1(eos));
                m->name(name.string().substr(0, name.string().find(';')).c_str());
                m->id(std::stoi(name.string().substr(name.string().find(';') + 1)));
                m->load(eos);
                return m;
            };
            const Model first = load();
            first->store(eos);
            std::filesystem::rename(written / name, read / name);
            const Model again = load();
            for (int i = 0; i < first->mpar(); ++i)
                EXPECT_EQ(first->param(i), again->param(i)) << i;
            EXPECT_NEAR(again->Tcrit() / first->Tcrit(), 1, 1e-8);
            EXPECT_NEAR(again->vcrit() / first->vcrit(), 1, 1e-8);
            EXPECT_STREQ(again->comment(), first->comment());
            const double rho = 1.3 / first->vcrit(), T = 1.1 * first->Tcrit();
            EXPECT_EQ(first->Ar(rho, T), again->Ar(rho, T));
            std::filesystem::remove(read / name);
        }
    }
    EXPECT_GT(count, 2600);
}

}  // namespace
