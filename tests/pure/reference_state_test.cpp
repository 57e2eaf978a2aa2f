// Reference states from enthalpies of formation, and the critical conditions, of a shipped
// equation.
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <memory>

namespace {
using Handle = std::unique_ptr<Model1, corvane::Detach>;

Handle substance(char const* name, char const* eos = "PR") {
    Handle m(attach1(eos));
    m->name(name);
    m->id(1);
    m->load(eos);
    m->ideal.load();
    m->load_thchem();
    return m;
}

constexpr double kT0 = 298.15;

/// Enthalpy of the gas at 1000 K, kJ/mol.
double hot(char const* name) {
    double rho = 0;
    return R * substance(name, "MEOS")->Hm(pref, 1000, 3, rho);
}

TEST(ReferenceState, ReproducesEnthalpiesOfFormationAndEntropies) {
    struct Row {
        char const* name;
        double H, S;  // ideal gas at 298.15 K and 0.1 MPa: J/mol, J/(mol K)
    };
    // CODATA Key Values for Thermodynamics (Cox, Wagman, Medvedev 1989). The files hold the real
    // gas, whose residual enthalpy (41 J/mol for CO2) and entropy are those of other equations.
    for (Row const& r :
         {Row{"carbon_dioxide", -393510, 213.785}, Row{"carbon_monoxide", -110530, 197.660},
          Row{"hydrogen", 0, 130.680}, Row{"oxygen", 0, 205.152}, Row{"nitrogen", 0, 191.609}}) {
        SCOPED_TRACE(r.name);
        const Handle m = substance(r.name);
        EXPECT_NEAR(R * kT0 * m->ideal.Hm(kT0), r.H, 5);
        EXPECT_NEAR(R * (m->ideal.Sm(kT0) - std::log(pref / (R * kT0))), r.S, 0.005);
    }
    // Liquid water, same source; the stable phase at 0.1 MPa is the reference.
    const Handle water = substance("water");
    double rho = 0;
    EXPECT_NEAR(R * kT0 * water->Hm(pref, kT0, 2, rho), -285830, 1e-6);
    EXPECT_NEAR(R * water->Sm(rho, kT0), 69.95, 1e-10);
    EXPECT_GT(rho, 1 / water->vcrit());
}

TEST(ReferenceState, GivesReactionEnthalpies) {
    // NIST-JANAF (Chase 1998) at 1000 K, from the printed enthalpies of formation: CO −111.983, CO2
    // −394.623, H2O −247.857 kJ/mol; CODATA, from which we start, differs by 0.02. The shift starts
    // from liquid water: the equation's enthalpy of vaporisation enters.
    EXPECT_NEAR(hot("carbon_dioxide") - hot("carbon_monoxide") - hot("oxygen") / 2, -282.640, 0.05);
    EXPECT_NEAR(hot("carbon_dioxide") + hot("hydrogen") - hot("carbon_monoxide") - hot("water"),
                -34.783, 0.05);
}

TEST(ReferenceState, CallingTwiceChangesNothing) {
    const Handle m = substance("carbon_dioxide");
    const double H = m->ideal.Hm(700), S = m->ideal.Sm(700), cp = m->ideal.Cpm(700);
    m->load_thchem();
    EXPECT_NEAR(m->ideal.Hm(700), H, 1e-13 * std::fabs(H));  // rounding of the shifts
    EXPECT_NEAR(m->ideal.Sm(700), S, 1e-13 * std::fabs(S));
    EXPECT_EQ(m->ideal.Cpm(700), cp);
}

TEST(ReferenceState, SaysWhatIsMissing) {
    const Scratch dir;
    VdwModel m;
    const auto code = [&] { return th_code([&] { m.load_thchem(); }); };
    EXPECT_EQ(code(), th_cannot_open);
    for (char const* text : {"298.15 -1.5 three", "298.15 -1.5", "298.15 nan 154.8",
                             "298.15 0 154,8", "298.15 0 1.548D2", "inf 0 154.8"}) {
        dir.write("CorvaneS/reaction/argon", text);
        EXPECT_EQ(code(), th_no_thermochemistry) << text;
    }
    dir.write("CorvaneS/reaction/argon", "298.15 0 154.8");
    EXPECT_EQ(code(), th_no_ideal);
    dir.write("CorvaneS/reaction/argon", "-1 0 154.8");
    EXPECT_EQ(code(), th_no_density);
}

}  // namespace
