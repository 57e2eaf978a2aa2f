// The managed assembly computes what C++ computes, to the last bit.
#include "support/shipped.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <map>

namespace {
using Bits = std::map<std::string, std::uint64_t>;

Bits in_cpp() {
    Bits b;
    auto show = [&](char const* name, double x) { b[name] = std::bit_cast<std::uint64_t>(x); };
    const double T = 180, p = 4;
    const Model m = load_set("PR", "methane");
    m->ideal.load();
    corvane::Saturation saturation;
    double ps, rhoL, rhoV, a, c, Ts, rho = 0;
    saturation.at_T(m.get(), T, 0, ps, rhoL, rhoV);
    saturation.at_p(m.get(), 1, 0, Ts, a, c);
    show("sat.p", ps);
    show("sat.rhoL", rhoL);
    show("sat.rhoV", rhoV);
    show("sat.T", Ts);
    show("Z", m->Z(rhoL, T));
    show("Hm", m->Hm(rhoL, T));
    show("Sm", m->Sm(rhoV, T));
    show("B", m->B(T, 2));
    show("Cpm", m->Cpm(p, T, 1, rho));
    show("rho", rho);
    show("crit", m->crit(T, 0.01, 0.3)[1]);
    Vector<double> roots(3);
    volume(m.get(), 0, ps, T, nullptr, m->vs(), roots);
    show("root", roots[0]);

    const std::unique_ptr<ModelN, corvane::Detach> n(attachN("PR", "vdW1"));
    n->alloc(2, "PR");
    n->mdl1[0]->name("methane");
    n->mdl1[1]->name("propane");
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j <= i; ++j) n->id(i, j, 1);
    n->load("PR", "vdW1");
    for (int i = 0; i < 2; ++i) n->mdl1[i]->ideal.load();
    Vector<double> x(2), y(2);
    x[0] = 0.3, x[1] = 0.7, y[0] = 1e-3, y[1] = 1e-4;
    double liquid = 0.016;
    vleN_T(n.get(), 213.71, x, ps, liquid, y);
    show("vle.p", ps);
    show("vle.rho", liquid);
    show("vle.y", y[1]);
    show("my", n->my(liquid, 213.71, x, 1));
    show("PsiH", n->PsiH(y, 213.71)[0][1]);
    show("cp", corvane::heat_capacities(*n, liquid, 213.71, x).Cpm);

    const corvane::Mixture gas = corvane::open_mixture("PR+vdW1", {"methane", "propane"});
    const auto flash = corvane::flash_ph(*gas.model, 2, 230, x);
    show("flash.T", flash.T);
    show("flash.x", flash.phases[1].x[1]);
    show("flash.error", flash.certificate.x_error);
    show("dew.rho", corvane::dew_p(*gas.model, 2, x).incipient.rho);
    show("phase.w", corvane::phase_properties(*gas.model, 300, 1e-3, x).w);
    const corvane::MixtureTransport of_mixture(gas);
    show("mixture.viscosity", of_mixture.viscosity(300, 1e-3, x).value);
    show("mixture.conductivity", of_mixture.thermal_conductivity(300, 1e-3, x).value);
    const auto bubble = corvane::bubble_T(*gas.model, 250, x);
    const auto profile = of_mixture.interface_profile(250, bubble.given.rho, bubble.given.x, bubble.incipient.rho, bubble.incipient.x);
    show("interface.tension", profile.tension);
    show("interface.thickness", profile.thickness);
    show("interface.z", profile.z.back());
    show("interface.rho", profile.rho_i[5][1]);
    y[0] = 0.9, y[1] = 0.1;
    show("mixture.tension", of_mixture.surface_tension(250, 0.014, x, 1e-3, y).value);
    const corvane::Fluid propane = corvane::open("PR", "propane");
    const corvane::Transport transport(propane);
    show("viscosity", transport.viscosity(300, 1e-3).value);
    show("conductivity", transport.thermal_conductivity(300, 1e-3).value);
    show("tension", transport.surface_tension(300).value);
    return b;
}

TEST(Managed, NumbersEqualThoseOfCpp) {
    const std::unique_ptr<FILE, int (*)(FILE*)> out(popen(CORVANE_MANAGED " numbers", "r"), pclose);
    ASSERT_TRUE(out);
    Bits managed;
    char name[32];
    unsigned long long bits;
    while (std::fscanf(out.get(), "%31s %llx", name, &bits) == 2) managed[name] = bits;
    EXPECT_EQ(managed, in_cpp());
}
}  // namespace
