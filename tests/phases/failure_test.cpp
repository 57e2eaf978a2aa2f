// What a refusal says.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

#include <clocale>
#include <functional>
#include <regex>

namespace {
// Numbers have a point where the process writes a comma, and the state is the one that was asked for.
TEST(Failure, TextsAreThoseOfTheCLocale) {
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "locale de_DE.UTF-8 not installed";
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane"});
    const Vector<double> z = mix(0.25);
    const struct {
        char const* says;
        std::function<void()> call;
    } cases[] = {
        {"T = 600.5 K, z = 0.25 0.75", [&] { corvane::bubble_T(*m, 600.5, z); }},
        {"p = 30.25 MPa, z = 0.25 0.75", [&] { corvane::dew_p(*m, 30.25, z); }},
        {"p = 30.25 MPa, z = 0.25 0.75",
         [&] {
             corvane::EnvelopeOptions o;
             o.p_start = 30.25;
             corvane::phase_envelope(*m, z, o);
         }},
        {"T = 600.5 K, rho = 1.5 mol/cm3", [&] { corvane::flash_Trho(*m, 600.5, 1.5, z); }},
        {"T = 600.5 K", [&] { corvane::pure_saturation_T(*m->mdl1[0], 600.5); }},
        {"T = 600.5 K", [&] { corvane::azeotrope_T(*m, 600.5); }},
        {"T = 250.5 K", [&] { corvane::three_phase_T(*m, 250.5); }},
        {"T = 600.5 K", [&] { corvane::diagram_pxy(*m, 600.5); }}};
    const std::regex comma("[0-9],[0-9]");
    for (auto const& c : cases) {
        SCOPED_TRACE(c.says);
        try {
            c.call();
            ADD_FAILURE() << "no refusal";
        } catch (corvane::EquilibriumFailure const& e) {
            EXPECT_NE(std::string(e.what()).find(c.says), std::string::npos) << e.what();
            EXPECT_FALSE(std::regex_search(e.what(), comma)) << e.what();
        }
    }
    const std::string line = corvane::flash_pT(*m, 1.0, 250.0, z).certificate.line();
    EXPECT_FALSE(std::regex_search(line, comma)) << line;
    std::setlocale(LC_ALL, "C");
}
}  // namespace
