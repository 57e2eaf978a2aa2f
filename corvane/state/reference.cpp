#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/state/reference.h>

namespace corvane {

void set_reference(Model1& model, ReferenceState which, double T_triple) {
    model.ideal.CVm(298.15);  // throws 3 without a table
    if (which == ReferenceState::table) return;
    if (which == ReferenceState::formation) return model.load_thchem();
    const bool triple = which == ReferenceState::triple, IIR = which == ReferenceState::IIR;
    if ((triple && !(T_triple > 0.0)) || (IIR && !(model.M() > 0.0)))
        throw ThException(th_out_of_range);
    const PureSaturation at = which == ReferenceState::NBP
                                  ? pure_saturation_p(model, 0.101325)
                                  : pure_saturation_T(model, triple ? T_triple : IIR ? 273.15 : 233.15);
    const double energy = (IIR ? 200.0 * model.M() : 0.0) / R;  // K; kJ/kg times g/mol is J/mol
    const double entropy = IIR ? model.M() / R : 0.0;           // over R
    const double now = triple ? model.Um(at.rhoL, at.T) : model.Hm(at.rhoL, at.T);
    model.ideal.offset(energy - at.T * now, entropy - model.Sm(at.rhoL, at.T));
}

}  // namespace corvane
