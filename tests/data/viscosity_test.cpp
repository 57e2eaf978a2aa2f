// Dilute-gas viscosities and friction-theory sets.
#include <corvane/core/constants.h>
#include <corvane/pure/attach.h>
#include <data/data_files.h>
#include <support/vdw_model.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

/// Viscosity of the dilute gas, µPa·s: Chung, Lee, Starling (1984, 1988) without polar terms, with
/// the collision integral of Neufeld et al. (1972). About 10 % for molecules that are not too
/// small.
double chung(data::Substance const& s, double T) {
    const double t = 1.2593 * T / s.Tc;
    const double collision = 1.16145 * std::pow(t, -0.14874) + 0.52487 * std::exp(-0.77320 * t) +
                             2.16178 * std::exp(-2.43787 * t);
    return 4.0785 * (1 - 0.2756 * s.omega) * std::sqrt(s.M * T) /
           (std::pow(s.vc, 2.0 / 3) * collision);
}

TEST(DiluteViscosity, RisesAndFollowsCorrespondingStates) {
    for (auto const& file : data::files("CorvaneS/viscosity/dilute")) {
        const std::string name = file.filename();
        SCOPED_TRACE(name);
        data::Substance const& s = data::substances().at(name);
        VdwModel model(name.c_str());
        model.visco.load0();
        auto range = data::numbers(data::labels(file).at("valid"));
        ASSERT_EQ(range.size(), 2u);
        if (std::isnan(range[0])) range = {0.5 * s.Tc, 1.5 * s.Tc};
        double before = 0;
        for (int k = 0; k <= 40; ++k) {
            const double T = range[0] + (range[1] - range[0]) * k / 40, eta = model.visco.eta0(T);
            EXPECT_GT(eta, before) << T;
            before = eta;
        }
        const double T = std::clamp(s.Tc, range[0], range[1]);
        // Strongly polar fluids reach +42 %; dinitrogen tetroxide dissociates.
        EXPECT_NEAR(model.visco.eta0(T) / chung(s, T), 1,
                    name == "dinitrogen_tetroxide" ? 0.6 : 0.45);
    }
}

// CRC Handbook of Chemistry and Physics, 95th ed. (2014), viscosity of gases at 300 K, µPa·s. The
// table prints one decimal and holds for 0.1 MPa or less; 2.5 % covers both and the scatter of
// sources.
TEST(DiluteViscosity, AgreesWithTheHandbook) {
    std::istringstream handbook(
        "air 18.6 ammonia 10.2 argon 22.9 boron_trifluoride 17.1 butane 7.5 "
        "carbon_dioxide 15.0 carbon_monoxide 17.8 chloroform 10.2 ethane 9.5 ethylene 10.4 "
        "helium 20.0 hydrogen 9.0 krypton 25.6 hydrogen_chloride 14.6 methane 11.2 neon 32.1 "
        "nitrogen 17.9 nitric_oxide 19.2 oxygen 20.8 propane 8.3 water 10.0 "
        "sulfur_dioxide 12.9 xenon 23.2 sulfur_hexafluoride 15.3");
    std::string name;
    for (double eta; handbook >> name >> eta;) {
        VdwModel model(name.c_str());
        model.visco.load0();
        EXPECT_NEAR(model.visco.eta0(300.0), eta, 0.025 * eta) << name;
    }
    EXPECT_TRUE(handbook.eof());
}

TEST(FrictionTheory, SetsFitTheReader) {
    for (auto const& file : data::files("models/viscosity/friction_theory/MEOS")) {
        SCOPED_TRACE(file);
        const auto l = data::labels(file);
        EXPECT_EQ(l.at("name") + ";" + l.at("id"), file.filename());
        EXPECT_LE(l.at("text").size(), 78u);
        // Five lines before the coefficients: 2 rows of a, 3 of b and 2 of c, of three each.
        const auto all = data::lines(file);
        for (int k = 0; k < 21; ++k) {
            const std::string label = std::string(1, "aabbbcc"[k / 3]) + '[' + "0101201"[k / 3];
            EXPECT_TRUE(all.at(5 + k).starts_with(label + "][" + std::to_string(k % 3) + "]:\t"))
                << all[5 + k];
        }
        VdwModel model(l.at("name").c_str());
        model.visco.set_id(std::stoi(l.at("id")));
        model.visco.load0();
        model.visco.load1("MEOS");
        EXPECT_EQ(model.visco.level(), ft_2);
        EXPECT_EQ(model.visco.comment(), l.at("text"));
    }
}

}  // namespace
