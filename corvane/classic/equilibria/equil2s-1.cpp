#include <corvane/classic/equilibria/equil2s-1.h>
#include <corvane/classic/equilibria/potentials.h>
#include <corvane/classic/input/input.h>
#include <corvane/core/numelo.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace {
constexpr double kDilute = 30.0;  // of ln(x/(1 − x)): x = 1e-13
constexpr int kTrials = 5;
constexpr double kTolerance = 1e-9;
constexpr double kPotential = 1e-6;   // of μ/(RT): the largest difference that is no jump,
constexpr double kLastDigit = 1e-14;  // beside that of a root found to this in x

struct Freeze {
    int phase;   // of the fluid
    int s;       // the component that forms the solid
    double g_s;  // Gibbs energy of the solid over RT
    double p, T;
    double rho;  // fluid density of the last evaluation
    ModelN const* model;
};

double dmy(double x, void* ctx) {
    auto& c = *static_cast<Freeze*>(ctx);
    return c.model->my(c.p, c.T, corvane::binary(x), c.s, c.phase, c.rho) - c.g_s;
}
}  // namespace

void equil2s(ModelN const* m, double p, double T, Vector<double>& x, int phase, double /*d*/,
             Vector<double>& rho, int& i) {
    corvane::require_binary(*m);
    if (x.size() != 2 || rho.size() != 2) throw MthException(mth_dimensions);
    const int s = x[0] < 0.5 ? 1 : 0;
    const double g_s = m->mdl1[s]->solid.Ge(p, T, i, rho[0]);
    rho[1] = 0.0;
    const double excess = m->mdl1[s]->Ge(p, T, phase, rho[1]) - g_s;
    if (excess < 0) throw ThException(th_generic);  // above the melting point
    Freeze context{phase, s, g_s, p, T, rho[1], m};

    const double start = ztox(s == 1 ? kDilute : -kDilute);
    const double f_start = dmy(start, &context);
    if (f_start > 0) throw ThException(th_generic);
    double end = x[0], f_end = excess, w = 0.01;
    for (int k = 0; k < kTrials; ++k, w *= 3) {
        const double trial = (1 - w) * start + w * x[0];
        const double f = dmy(trial, &context);
        if (f >= 0) {
            end = trial;
            f_end = f;
            break;
        }
    }
    const double found = eqn_regulafalsi(dmy, &context, end, start, f_end, f_start, kTolerance);
    // A change of sign may be the step from one density root to the other: no equilibrium.
    const double rest = dmy(found, &context), solute = s == 1 ? 1 - found : found;
    if (!(std::fabs(rest) <= kPotential + kLastDigit / solute)) throw ThException(th_generic);
    x[1] = found;
    rho[1] = context.rho;
}
