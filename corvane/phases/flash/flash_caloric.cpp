#include <corvane/core/constants.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/phase/caloric.h>

namespace corvane {

void add_caloric(ModelN const& model, Vector<double> const& z, FlashResult& result) {
    const FluidModel fluid(model, z);
    Caloric caloric(fluid);
    caloric.at(result.T);
    PhaseState s;
    s.resize(fluid.size());
    result.h = result.s = 0.0;
    for (std::size_t k = 0; k < result.phases.size(); ++k) {
        for (int i = 0, at = 0; i < z.size(); ++i)
            if (z[i] > 0.0) s.rho_i[at++] = result.phases[k].x[i] * result.phases[k].rho;
        fluid.evaluate(s, result.T, phase_T | phase_p);
        result.h += result.fraction[k] * R * result.T * caloric.h(s);
        result.s += result.fraction[k] * R * caloric.s(s);
    }
}

}  // namespace corvane
