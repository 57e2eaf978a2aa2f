// Thermodynamic identities and the density solver's contract, for every equation × substances ×
// states.
#include "support/errors.h"
#include "support/shipped.h"

#include <corvane/catalogue/open.h>
#include <corvane/check/check.h>

#include <gtest/gtest.h>

namespace {
struct Fluid {
    std::string eos, name;
};
std::ostream& operator<<(std::ostream& out, Fluid const& f) { return out << f.eos << " " << f.name; }

/// A few substances of each kind: small, chain, polar, associating, quantum.
std::vector<Fluid> fluids() {
    std::vector<Fluid> all;
    for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"})
        for (char const* name : {"methane", "carbon_dioxide", "water", "decane", "hydrogen",
                                 "ethanol", "ammonia", "r134a"})
            if (std::filesystem::exists(std::string("CorvaneS/parameters/") + eos + "/" + name +
                                        ";1"))
                all.push_back({eos, name});
    return all;
}

class EveryEquation : public testing::TestWithParam<Fluid> {
  protected:
    Model model_ = load_set(GetParam().eos, GetParam().name);
};
std::string title(testing::TestParamInfo<Fluid> const& info) {
    return info.param.eos + "_" + info.param.name;
}
INSTANTIATE_TEST_SUITE_P(Conformance, EveryEquation, testing::ValuesIn(fluids()), title);

// Identities, derivatives, densities against a scan, saturation, parameters, threads, odd arguments.
TEST_P(EveryEquation, PassesTheChecksForAuthors) {
    const ParameterSet set{GetParam().eos, GetParam().name, 1};
    const double valid = free_value(set, "valid", 0), Tc = model_->Tcrit();
    const corvane::CheckRange range{.T_low = valid > 0.4 * Tc && valid < Tc ? valid : 0.0};
    for (corvane::Check const& c : corvane::check_equation(*model_, range))
        EXPECT_TRUE(c.passed()) << c.name << ": " << c.worst << " times what is allowed at T = " << c.T
                                << ", rho = " << c.rho << ", p = " << c.p << ": " << c.what;
}

// An impossible state, or one past the pole of the equation, has no properties: where Ar or Z is no
// number the exact route raises what the numerical one raises, in every property.
TEST_P(EveryEquation, ExactRouteFailsWhereTheNumericalOneDoes) {
    Model1& m = *model_;
    corvane::Deriv1 const* exact = m.derivatives();
    ASSERT_TRUE(exact);
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    using Property = double (Model1::*)(double, double) const;
    constexpr std::pair<char const*, Property> properties[] = {
        {"Ur", &Model1::Ur},       {"Hr", &Model1::Hr},         {"Sr", &Model1::Sr},
        {"CVr", &Model1::CVr},     {"Cpr", &Model1::Cpr},       {"betaV", &Model1::betaV},
        {"pV", &Model1::pV},       {"alphap", &Model1::alphap}, {"kappaT", &Model1::kappaT},
        {"crit", nullptr}};
    const double beyond = 1.2 / m.vs(), wrong_unit = 1e3 / m.vcrit();
    int refused = 0;
    for (double T : {300.0, 0.5 * m.Tcrit(), 0.0, -0.0, -300.0, nan, HUGE_VAL})
        for (double rho : {1e-3, 0.0, -1e-4, -0.1, beyond, 3 * beyond, wrong_unit, 1e5 * wrong_unit,
                           1e300, nan, HUGE_VAL})
            for (auto [name, property] : properties) {
                SCOPED_TRACE(testing::Message() << name << " at rho = " << rho << ", T = " << T);
                const auto code = [&] {
                    double value = 0.0;
                    const int raised = mth_code([&] {
                        value = property ? (m.*property)(rho, T) : m.crit(T, rho, 0.3)[2];
                    });
                    return raised == -1 && !std::isfinite(value) ? -3 : raised;
                };
                const int by_exact = code();
                m.derivatives(nullptr);
                const int by_differences = code();
                m.derivatives(exact);
                EXPECT_EQ(by_exact, by_differences);
                if (!(T > 0) || !std::isfinite(m.Ar(rho, T))) {
                    EXPECT_GT(by_exact, 0);
                    ++refused;
                }
            }
    EXPECT_GT(refused, 200);
}

struct Blend {
    char const *eos, *mixing;
    std::vector<char const*> components;
};
TEST(EveryMixture, PassesTheChecksForAuthors) {
    for (Blend const& b : {Blend{"PR", "vdW1", {"methane", "propane"}},
                           Blend{"PR", "vdW1", {"carbon_dioxide", "ethane", "decane"}},
                           Blend{"SRK", "vdW1", {"methane", "butane"}},
                           Blend{"PCSAFT", "LB", {"methane", "propane"}},
                           Blend{"PCSAFT", "LB", {"ethanol", "water"}},
                           Blend{"MEOS", "GERG", {"methane", "propane"}},
                           // β is not 1: a component split in two is no longer the same mixture.
                           Blend{"MEOS", "GERG", {"carbon_dioxide", "water"}}}) {
        const std::string model = std::string(b.eos) + "+" + b.mixing;
        const corvane::Mixture m =
            corvane::open_mixture(model, {b.components.begin(), b.components.end()});
        for (corvane::Check const& c : corvane::check_mixture(*m.model))
            EXPECT_TRUE(c.passed()) << model << " " << b.components[0] << ", " << c.name << ": "
                                    << c.worst << " times what is allowed at T = " << c.T
                                    << ", rho = " << c.rho << ", p = " << c.p << ": " << c.what;
    }
}

// Sets whose formulas do what most do not, each by its stated range.
TEST(Checks, KnowWhatPublishedEquationsDo) {
    const struct {
        char const *eos, *name;
        int set;
        char const* why;
    } sets[] = {
        {"PR", "2_bromopropane", 3, "its pole is 2 % above the densest state of the identities"},
        {"SRK", "4_methyl_2_pentanone", 5,
         "residual heat capacity below −1.5 R, not below that of the ideal gas"},
        {"PCSAFT", "propadiene", 2, "Z − 1 of 0.0065, the rest of terms that cancel"},
        {"PCSAFT", "carbon_disulfide", 6, "residual heat capacity of −2.4 R under tension"},
        {"SAFTVRMIE", "water", 1, "terms of a thousand times their sum"},
        {"MEOS", "methanol", 2,
         "bonds at a millionth of the critical density; an inner loop of 1e8 MPa"},
        {"MEOS", "decamethylcyclopentasiloxane", 2,
         "vapour at 14,000 times the saturated density, c_v < 0"},
        {"MEOS", "r22", 1, "terms of a thousand times their sum"},
        {"MEOS", "nitrogen", 1, "isotherm without a vapour spinodal"},
        {"MEOS", "argon", 1, "second loop in the stretched liquid, which ends at 128.5 K"},
        {"MEOS", "acetic_acid", 1,
         "falls from 250 MPa on, stated to 30; more than one critical point"},
        {"MEOS", "helium", 8, "stated from 60 K, twelve times its Tc"},
    };
    for (auto const& s : sets) {
        const corvane::Fluid fluid = corvane::open(s.eos, s.name, {.set = s.set});
        for (corvane::Check const& c :
             corvane::check_equation(*fluid.model, corvane::check_range(fluid)))
            EXPECT_TRUE(c.passed()) << s.eos << " " << s.name << ": " << s.why << ": " << c.name
                                    << " " << c.worst << " at T = " << c.T << ", rho = " << c.rho;
    }
}
}  // namespace
