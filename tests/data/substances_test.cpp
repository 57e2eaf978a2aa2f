// The table of substances, and what all data files have in common.
#include <corvane/core/constants.h>
#include <data/data_files.h>

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

// Standard atomic weights, IUPAC 2021 (abridged); D: deuterium, T: tritium.
const std::map<std::string, double> kWeight = {
    {"H", 1.008},   {"D", 2.0141},  {"He", 4.0026}, {"B", 10.81},   {"C", 12.011},  {"N", 14.007},
    {"O", 15.999},  {"F", 18.998},  {"Ne", 20.180}, {"Si", 28.085}, {"P", 30.974},  {"S", 32.06},
    {"Cl", 35.45},  {"Ar", 39.95},  {"Br", 79.904}, {"Kr", 83.798}, {"I", 126.90},  {"Xe", 131.29},
    {"Hg", 200.59}, {"Rn", 222.02}, {"T", 3.0160},  {"Be", 9.0122}, {"Al", 26.982}, {"Ti", 47.867},
    {"V", 50.942},  {"Fe", 55.845}, {"Ni", 58.693}, {"Ga", 69.723}, {"Ge", 72.630}, {"As", 74.922},
    {"Se", 78.971}, {"Mo", 95.95},  {"Sn", 118.71}, {"Sb", 121.76}, {"Os", 190.23}, {"Pb", 207.2}};

/// Last digit of a CAS number: the sum of the other digits, weighted 1, 2, 3 ... from the right.
bool cas_valid(std::string const& cas) {
    int sum = 0, weight = 0;
    for (auto c = cas.rbegin() + 1; c != cas.rend(); ++c)
        if (std::isdigit(*c)) sum += ++weight * (*c - '0');
    return std::count(cas.begin(), cas.end(), '-') == 2 && sum % 10 == cas.back() - '0';
}

TEST(Substances, ConstantsAreConsistent) {
    // One line per substance and the header: none was skipped for its number of columns.
    ASSERT_EQ(data::substances().size() + 1, data::lines("CorvaneS/substances.tsv").size());
    for (auto const& [name, s] : data::substances()) {
        SCOPED_TRACE(name);
        EXPECT_LE(name.size(), 31u);
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"), name.npos);
        EXPECT_TRUE(s.cas == "-" || cas_valid(s.cas)) << s.cas;
        double M = 0;
        for (auto const& [symbol, n] : data::atoms(s.formula)) M += n * kWeight.at(symbol);
        // 0.2 %: older equations carry older weights. Helium-3 has the symbol of helium.
        if (M > 0 && name != "helium_3") {
            EXPECT_NEAR(s.M, M, 2e-3 * M);
        }
        EXPECT_FALSE(s.Ttriple >= s.Tb) << "triple point above the boiling point";
        EXPECT_FALSE(s.Tb >= s.Tc) << "boiling point above the critical point";
        EXPECT_FALSE(s.ptriple >= s.pc);
        // 0.2-0.35 for normal fluids; hydrogen fluoride 0.12 and dinitrogen tetroxide 0.48 mark the
        // range that association and doubtful critical volumes leave.
        const double Zc = s.pc * s.vc / (R * s.Tc);
        EXPECT_FALSE(Zc < 0.11 || Zc > 0.49) << Zc;
        EXPECT_FALSE(s.omega < -0.5 || s.omega > 1.4) << s.omega;
    }
}

TEST(Substances, NamesAndSynonymsAreUnique) {
    std::map<std::string, std::string> owner;
    for (auto const& [name, s] : data::substances()) {
        std::vector<std::string> own = data::split(s.aliases, "; ");
        own.push_back(name);
        own.push_back(s.cas);
        for (std::string key : own) {
            std::transform(key.begin(), key.end(), key.begin(),
                           [](unsigned char c) { return std::tolower(c); });
            if (key == "-") continue;
            EXPECT_EQ(owner.emplace(key, name).first->second, name) << key;
        }
    }
}

TEST(DataFiles, AreCleanTextWithASource) {
    std::vector<std::filesystem::path> all = data::files("CorvaneS");
    for (auto const& path : data::files("models/viscosity")) all.push_back(path);
    ASSERT_GT(all.size(), 3000u);
    for (auto const& path : all) {
        SCOPED_TRACE(path);
        const std::string folder = (++path.begin())->string(), name = path.filename().string();
        std::ifstream in(path, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), {});
        ASSERT_FALSE(text.empty());
        EXPECT_EQ(text.back(), '\n');
        EXPECT_EQ(text.find('\r'), text.npos);
        EXPECT_EQ(text.find(" \n"), text.npos) << "blank at the end of a line";
        if (path.has_extension()) continue;
        EXPECT_NE(text.find("\nsource:\t"), text.npos);
        for (std::string const& part : data::split(name.substr(0, name.find(';')), "+"))
            EXPECT_TRUE(data::substances().count(part)) << part;
        // The first tab of a line ends its label.
        for (std::string const& line : data::lines(path))
            EXPECT_TRUE(line.find('\t') == line.npos || line.find('\t') == line.find(":\t") + 1)
                << line;
    }
}

}  // namespace
