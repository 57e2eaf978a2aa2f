// Saturation of every shipped parameter set, from the triple point or 0.3·Tc to 0.9999·Tc, and by
// pure_saturation on to 1e-10 of the critical point.
#include "support/errors.h"
#include "support/shipped.h"

#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_curve.h>

#include <map>

namespace {
/// What vle1_T must give at T: two densities and equal reduced Gibbs energies. Empty if all is
/// well.
std::string fault(Model1 const& m, double T) {
    corvane::SaturationMarch curve;
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
                th_code([&] { corvane::SaturationMarch().at_T(m.get(), Tr * Tc, 0, p, rhoL, rhoV); }),
                th_generic)
                << set.name << ";" << set.id << " at " << Tr << " Tc";
    }
    for (auto const& [name, what] : faults)
        ADD_FAILURE() << GetParam() << " " << name << ":" << what;
    std::printf("%s: %zu sets, %ld points, %zu sets with a fault\n", GetParam(), sets.size(),
                points, faults.size());
}

// Everywhere there is an answer with small bounds; it is that of vle1_T where this has one, T comes
// back from p, and the phases approach each other as the curve goes up.
TEST_P(Survey, EverySetSaturatesToTheLastTenBillionthBelowItsCriticalPoint) {
    for (ParameterSet const& set : shipped_sets(GetParam())) {
        const Model m = load_set(set);
        const double Tc = m->Tcrit(), valid = free_value(set, "valid", 0);
        double p = 0, apart = 1e9;
        for (double off : {0.5, 0.2, 0.03, 6e-3, 4e-3, 3e-4, 1e-5, 1e-6, 1e-7, 1e-8, 1e-9, 1e-10}) {
            const double T = Tc * (1 - off);
            if (T < valid && off > 0.01) continue;
            SCOPED_TRACE(testing::Message() << set.name << ";" << set.id << " 1 - T/Tc = " << off);
            const corvane::PureSaturation q = corvane::pure_saturation_T(*m, T);
            EXPECT_EQ(q.T, T);
            EXPECT_GT(q.p, p);
            EXPECT_GT(q.rhoV, 0);
            const double distance = q.rhoL / q.rhoV - 1;
            EXPECT_GT(distance, std::sqrt(off));
            EXPECT_LT(distance, apart);
            EXPECT_LT(q.value_error, 1e-9);
            // Carbon dioxide's reference equation is not smooth at the critical density.
            EXPECT_LT(q.rho_error, 3e-5);
            EXPECT_LT(q.apart_error, 0.01);
            const corvane::PureSaturation back = corvane::pure_saturation_p(*m, q.p);
            EXPECT_EQ(back.p, q.p);
            EXPECT_NEAR(back.T / T, 1, back.value_error + q.value_error);
            if (off > 1e-3) {
                double walked = 0, rhoL = 0, rhoV = 0;
                corvane::SaturationMarch().at_T(m.get(), T, 0, walked, rhoL, rhoV);
                EXPECT_NEAR(walked / q.p, 1, 1e-11 + 2 * q.value_error);
                EXPECT_NEAR(rhoL / q.rhoL, 1, 1e-9 + 2 * q.rho_error);
                EXPECT_NEAR(rhoV / q.rhoV, 1, 1e-9 + 2 * q.rho_error);
            } else {  // where the march often fails: the curve goes on
                corvane::Saturation curve;
                double found = 0, rhoL = 0, rhoV = 0;
                curve.at_T(m.get(), T, 0, found, rhoL, rhoV);
                EXPECT_NEAR(found / q.p, 1, 1e-9);
                curve.at_p(m.get(), q.p, 1, found, rhoL, rhoV);
                EXPECT_NEAR(found / T, 1, 1e-9);
                EXPECT_GT(rhoL, rhoV);
            }
            p = q.p;
            apart = distance;
        }
        using Kind = corvane::EquilibriumFailure::Kind;
        const auto kind = [&](auto solve, double value) {
            try {
                solve(*m, value);
            } catch (corvane::EquilibriumFailure const& e) {
                return e.kind() == Kind::no_solution ? 0 : 1;
            } catch (ThException const& e) {
                return 100 + e.number;
            }
            return -1;
        };
        const auto at_T = corvane::pure_saturation_T, at_p = corvane::pure_saturation_p;
        for (double value : {1.0001, 2.0, 1e100}) {
            EXPECT_EQ(kind(at_T, value * Tc), 0) << set.name;
            EXPECT_EQ(kind(at_p, value * m->pcrit()), 0) << set.name;
        }
        for (double tiny : {1e-300, 1e-100, 1e-40}) {
            EXPECT_EQ(kind(at_T, tiny), 1) << set.name;
            EXPECT_EQ(kind(at_p, tiny), 1) << set.name;
        }
        for (double absurd : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
            EXPECT_EQ(kind(at_T, absurd), 100 + th_out_of_range);
            EXPECT_EQ(kind(at_p, absurd), 100 + th_out_of_range);
        }
    }
}
}  // namespace
