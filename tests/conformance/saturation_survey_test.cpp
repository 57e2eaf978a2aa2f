// Saturation of every shipped parameter set, from the triple point or 0.3·Tc to 0.9999·Tc.
#include "support/errors.h"
#include "support/shipped.h"

#include <corvane/equilibria/ffe1core.h>

#include <map>

namespace {
/// What vle1_T must give at T: two densities and equal reduced Gibbs energies. Empty if all is
/// well.
std::string fault(Model1 const& m, double T) {
    corvane::Saturation curve;
    double p = 0, rhoL = 0, rhoV = 0;
    try {
        curve.at_T(&m, T, 0, p, rhoL, rhoV);
    } catch (ThException const& e) {
        return std::string("ThException ") + std::to_string(e.number);
    } catch (MthException const& e) {
        return std::string("MthException ") + std::to_string(e.number);
    }
    // Ge is a sum of terms of this size; each carries a rounding error of its own.
    const double size = 10 + std::fabs(m.Ar(rhoL, T)) + std::fabs(m.Z(rhoL, T));
    if (!(rhoL > rhoV) || !(p > 0)) return "no two phases";
    if (!(std::fabs(m.Ge(rhoL, T) - m.Ge(rhoV, T)) < 1e-13 * size)) return "unequal Gibbs energies";
    const double pL = m.Z(rhoL, T) * R * T * rhoL, pV = m.Z(rhoV, T) * R * T * rhoV;
    // The liquid pressure is a difference of terms of size rho·R·T·pV.
    const double noise = 1e-14 * R * T * rhoL * (10 + std::fabs(m.pV(rhoL, T)));
    if (!(std::fabs(pL - p) < noise) || !(std::fabs(pV / p - 1) < 1e-10))
        return "unequal pressures";
    return "";
}

class Survey : public testing::TestWithParam<char const*> {};
INSTANTIATE_TEST_SUITE_P(Conformance, Survey, testing::Values("PR", "SRK", "PCSAFT", "MEOS"),
                         [](auto const& set) { return std::string(set.param); });

TEST_P(Survey, EverySetSaturatesUpToItsCriticalPoint) {
    const std::vector<ParameterSet> sets = shipped_sets(GetParam());
    if (sets.empty()) GTEST_SKIP() << "no parameter sets of " << GetParam();
    long points = 0;
    std::map<std::string, std::string> faults;
    for (ParameterSet const& set : sets) {
        const Model m = load_set(set);
        const double Tc = m->Tcrit(), valid = free_value(set, "valid", 0);
        const double low =
            std::isfinite(valid) && valid > 0.3 * Tc && valid < Tc ? valid : 0.3 * Tc;
        for (double s : {0.0, 0.1, 0.3, 0.5, 0.7, 0.9, 0.97, 0.99}) {
            const double T = low + s * (Tc - low);
            const std::string what = fault(*m, T);
            ++points;
            if (!what.empty())
                faults[set.name + ";" + std::to_string(set.id)] +=
                    " T/Tc = " + std::to_string(T / Tc) + ": " + what + ".";
        }
        const std::string what = fault(*m, 0.9999 * Tc);
        ++points;
        if (!what.empty())
            faults[set.name + ";" + std::to_string(set.id)] += " 0.9999 Tc: " + what + ".";
        double p = 0, rhoL = 0, rhoV = 0;
        for (double Tr : {1.0, 1.01})
            EXPECT_EQ(
                th_code([&] { corvane::Saturation().at_T(m.get(), Tr * Tc, 0, p, rhoL, rhoV); }),
                th_generic)
                << set.name << ";" << set.id << " at " << Tr << " Tc";
    }
    for (auto const& [name, what] : faults)
        ADD_FAILURE() << GetParam() << " " << name << ":" << what;
    std::printf("%s: %zu sets, %ld points, %zu sets with a fault\n", GetParam(), sets.size(),
                points, faults.size());
}
}  // namespace
