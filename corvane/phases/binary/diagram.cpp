#include <corvane/phases/binary/binary.h>
#include <corvane/phases/binary/diagram.h>
#include <corvane/phases/binary/tie_lines.h>
#include <corvane/phases/report/words.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace corvane {
namespace {
Diagram trace(ModelN const& model, Fixed held, DiagramOptions const& o) {
    check_binary(model, held.value);
    check_options(o);
    const std::string name = held.at_T ? "diagram_pxy" : "diagram_Txy";
    const std::string state = T_or_p(held);
    const FluidModel fluid(model, equal_parts());
    const int heavy = model.mdl1[0]->Tcrit() > model.mdl1[1]->Tcrit() ? 0 : 1;
    bool below = false;
    for (int component : {heavy, 1 - heavy}) {
        Model1 const& c = *model.mdl1[component];
        if (!(held.value < (held.at_T ? c.Tcrit() : c.pcrit()))) continue;
        below = true;
        TieLineTracer tracer(fluid, held, o, false);
        if (tracer.begin_pure(component)) return tracer.run();
    }
    throw EquilibriumFailure(
        below ? EquilibriumFailure::Kind::gave_up : EquilibriumFailure::Kind::no_solution, state,
        name, 0, std::nan(""),
        below ? "no start next to the pure component" : "above both critical points");
}
}  // namespace

Diagram diagram_pxy(ModelN const& model, double T, DiagramOptions const& options) {
    return trace(model, {true, T}, options);
}
Diagram diagram_Txy(ModelN const& model, double p, DiagramOptions const& options) {
    return trace(model, {false, p}, options);
}

}  // namespace corvane
