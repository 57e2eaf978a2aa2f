#include <corvane/classic/equilibria/equil_min.h>
#include <corvane/classic/equilibria/potentials.h>
#include <corvane/core/numelo.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace {
constexpr int kCycles = 20;
constexpr double kPotential = 1e-5;  // mole fraction times difference of potentials over RT

struct Minimum {
    ModelN const* model;
    int fluid;  // the phase that varies beside a solid
    double p, T;
    double xs, gs;  // composition and Gibbs energy of the solid
    double z;       // overall composition
    Vector<phdesc> const* ph;
};

/// Reduced Gibbs energy of fluid phase k at mole fraction y of component 0.
double fluid_gibbs(Minimum const& s, int k, double y) {
    if (!(y >= 0 && y <= 1)) throw ThException(th_out_of_range);
    if ((*s.ph)[k].phase != -1) throw ThException(th_no_option);
    double rho = 0.0;
    double g = s.model->Gr(s.p, s.T, corvane::binary(y), 2, rho);
    g += std::log(rho);
    if (y > 0 && y < 1) g += y * std::log(y) + (1 - y) * std::log(1 - y);
    return g;
}

double lever(double z, double x0, double g0, double x1, double g1) {
    return ((z - x1) * g0 + (x0 - z) * g1) / (x0 - x1);
}

/// Solid and fluid: y is the composition of the fluid.
double objmin1(Vector<double> const& y, void* ctx) {
    auto const& s = *static_cast<Minimum const*>(ctx);
    return lever(s.z, y[0], fluid_gibbs(s, s.fluid, y[0]), s.xs, s.gs);
}

/// Two fluids. Equal compositions give not-a-number, which the minimiser takes for a wall.
double objmin2(Vector<double> const& y, void* ctx) {
    auto const& s = *static_cast<Minimum const*>(ctx);
    const double g0 = fluid_gibbs(s, 0, y[0]);
    const double g1 = fluid_gibbs(s, 1, y[1]);
    return lever(s.z, y[0], g0, y[1], g1);
}

void minimise(Minimum& s, Vector<double>& x) {
    Vector<phdesc> const& ph = *s.ph;
    const bool fluid0 = ph[0].phase < 0, fluid1 = ph[1].phase < 0;
    if (!fluid0 && !fluid1) return;
    corvane::require_binary(*s.model);
    if (fluid0 && fluid1) {
        min_powell(objmin2, x, &s, kCycles, 0);
    } else {
        s.fluid = fluid0 ? 0 : 1;
        const int solid = 1 - s.fluid, species = ph[solid].species;
        if (species < 0 || species > 1) throw ThException(th_out_of_range);
        int phase = 0;
        double rho = 0.0;
        s.xs = x[solid];
        s.gs = s.model->mdl1[species]->solid.Ge(s.p, s.T, phase, rho);
        Vector<double> y(1);
        y[0] = x[s.fluid];
        min_powell(objmin1, y, &s, kCycles, 0);
        x[s.fluid] = y[0];
    }
}
/// Whether x are the compositions of an equilibrium. @throws what the model throws
bool is_equilibrium(ModelN const& m, double p, double T, Vector<phdesc> const& ph,
                    Vector<double> const& x) {
    if (!(p > 0) || !(std::fabs(x[0] - x[1]) > corvane::trivial_distance)) return false;
    for (int i = 0; i < 2; ++i) {
        double potential[2], fraction = 1.0;
        for (int k = 0; k < 2; ++k) {
            const Vector<double> z = corvane::binary(x[k]);
            double rho = 0.0;
            int form = 0;
            if (ph[k].phase >= 0) {
                if (ph[k].species != i) {
                    fraction = 0.0;  // not in the solid: no condition
                    continue;
                }
                potential[k] = m.mdl1[i]->solid.Ge(p, T, form, rho);
            } else {
                potential[k] = m.my(p, T, z, i, 2, rho);
                fraction = std::min(fraction, z[i]);
            }
        }
        if (fraction > 0.0 &&
            !(fraction * std::fabs(potential[0] - potential[1]) <= kPotential))
            return false;
    }
    return true;
}
}  // namespace

void equil_min(ModelN const* m, double p, double T, Vector<phdesc> const& ph, Vector<double>& x) {
    if (x.size() != 2 || ph.size() != 2) return;
    const Vector<double> start(x);
    Minimum s{m, 0, p, T, 0.0, 0.0, (x[0] + x[1]) * 0.5, &ph};
    try {
        minimise(s, x);
    } catch (...) {  // intended: nothing leaves, and the caller gets his compositions back
        x = start;
    }
}

namespace corvane {

bool equil_min_judged(ModelN const* m, double p, double T, Vector<phdesc> const& ph,
                      Vector<double>& x) {
    const Vector<double> start(x);
    equil_min(m, p, T, ph, x);
    try {
        if (x.size() == 2 && ph.size() == 2 && is_equilibrium(*m, p, T, ph, x)) return true;
    } catch (...) {  // no density, or no solid there
    }
    x = start;
    return false;
}

}  // namespace corvane
