// One model, read by threads at the same time: every property, the volume finders, the equilibria.
#include "equilibria/phases.h"
#include "threads/together.h"

#include <corvane/corvane.h>

namespace {
/// Appends what f returns, or the code that it throws.
template <class F>
void add(Numbers& v, F f) {
    try {
        v.push_back(f());
    } catch (ThException const& e) {
        v.push_back(1e6 + e.number);
    } catch (MthException const& e) {
        v.push_back(2e6 + e.number);
    }
}

Numbers pure(Model1 const& m, int k) {
    using Property = double (Model1::*)(double, double) const;
    Numbers v;
    const double T = (0.7 + 0.1 * k) * m.Tcrit(), p = 0.3 * m.pcrit() * (1 + k), d = 0.3 * m.vcrit();
    for (Property f : {&Model1::Ar, &Model1::Z, &Model1::CVm, &Model1::Cpm, &Model1::Sm, &Model1::Gm,
                       &Model1::kappaT, &Model1::alphap, &Model1::betaV, &Model1::Ge})
        add(v, [&] { return (m.*f)(0.4 / m.vcrit(), T); });
    for (int phase : {1, 2, 3})
        add(v, [&] {
            double rho = 0;
            return m.Cpm(p, T, phase, rho) + rho;
        });
    for (int n : {2, 3}) add(v, [&] { return m.B(T, n); });
    double rho = 1 / m.vcrit(), rho2 = 0, pr = 0, pa = 0;
    add(v, [&] { return m.crit(T, rho, 0.3)[0]; });
    add(v, [&] {
        double ps = 0, rhoL = 0, rhoV = 0;
        corvane::SaturationMarch().at_T(&m, T, 0, ps, rhoL, rhoV);
        return ps + rhoL + rhoV;
    });
    Vector<double> roots(3);
    add(v, [&] { return volume(&m, 0, p, T, nullptr, d, roots) + roots[0] + roots[2]; });
    add(v, [&] { return volav(&m, 0, p, T, nullptr, d, rho) + rho; });
    add(v, [&] { return volnewt(&m, 0, p, T, nullptr, d, rho) + rho; });
    add(v, [&] { return volf1(&m, p, T, d, rho, rho2) + rho + rho2; });
    add(v, [&] { return m.solid.Hm(p, 0.5 * m.Tcrit()); });
    add(v, [&] { return m.visco.eta(0.4 / m.vcrit(), T, pr, pa); });
    return v;
}

Numbers mixed(ModelN const& m, int k) {
    Numbers v;
    const Vector<double> x = mix(0.2 + 0.1 * k);
    const double T = 220 + 12 * k, p = 0.5 + k, rho = 0.002 * (1 + k);
    const Vector<double> rho_i = x * rho;
    using Property = double (ModelN::*)(double, double, Vector<double> const&) const;
    for (Property f : {static_cast<Property>(&ModelN::Ar), static_cast<Property>(&ModelN::Z),
                       static_cast<Property>(&ModelN::Cpm), static_cast<Property>(&ModelN::Sm),
                       static_cast<Property>(&ModelN::kappaT), static_cast<Property>(&ModelN::Psi)})
        add(v, [&] { return (m.*f)(rho, T, x); });
    for (int i : {0, 1}) {
        add(v, [&] { return m.my(rho_i, T, i); });
        add(v, [&] { return m.PsiG(rho_i, T)[i]; });
        add(v, [&] { return m.PsiH(rho_i, T)[i][1]; });
    }
    add(v, [&] {
        double found = 0;
        return m.Cpm(p, T, x, 2, found) + found;
    });
    add(v, [&] {
        double ps = 0, rho1 = 0.015;
        Vector<double> rho2 = mix(0.7) * 0.001;
        vleN_T(&m, T, x, ps, rho1, rho2);
        return ps + rho1 + rho2.sum();
    });
    Vector<double> split(2), rhos(2), start(x);
    add(v, [&] {
        equil2(&m, p, T, split, rhos);
        return split.sum() + rhos.sum();
    });
    add(v, [&] {
        Matrix<double> line;
        double s = 0;
        crit_slope_x(&m, start, s, line);
        return line[0][1] + line[0][3];
    });
    return v;
}

TEST(Threads, ReadOneModel) {
    for (bool exact : {true, false}) {  // else numerical derivatives, nested
        for (char const* eos : {"PR", "SRK", "PCSAFT", "MEOS"}) {
            SCOPED_TRACE(eos);
            const Model m = load_set(eos, "carbon_dioxide");
            m->ideal.load();
            m->solid.load();
            if (!exact) m->derivatives(nullptr);
            expect_same_bits(6, {8}, [&](int k) { return pure(*m, k); });
        }
        for (auto const& [eos, mth] :
             {std::pair{"PR", "vdW1"}, {"SRK", "vdW1"}, {"PCSAFT", "LB"}, {"MEOS", "GERG"}}) {
            SCOPED_TRACE(eos);
            const Mixture m = mixture_of(eos, mth, {"methane", "propane"});
            if (!exact) m->derivatives(nullptr);
            expect_same_bits(exact ? 6 : 2, {4}, [&](int k) { return mixed(*m, k); });
        }
    }
}
}  // namespace
