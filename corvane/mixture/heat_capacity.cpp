#include <corvane/mixture/heat_capacity.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

namespace corvane {

HeatCapacities heat_capacities(ModelN const& model, double rho, double T, Vector<double> const& x) {
    const double CVr = T * model.CVr(rho, T, x), beta = model.betaV(rho, T, x);
    const double Cpr = CVr + beta * beta / model.pV(rho, T, x) - 1;
    double ideal = 0.0, total = 0.0;
    for (int i = 0; i < x.size(); ++i) {
        ideal += x[i] * model.mdl1[i]->ideal.CVm(T);
        total += x[i];
    }
    return {CVr, Cpr, CVr + ideal, Cpr + ideal + total};
}

}  // namespace corvane
