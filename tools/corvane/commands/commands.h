// The commands, one source each. To add one: a function here, its source, a line in main.
#pragma once

#include <tools/corvane/program.h>

namespace cli {

void add_list(Program& program);
void add_state(Program& program);
void add_saturation(Program& program);
void add_density(Program& program);
void add_critical(Program& program);
void add_solid(Program& program);
void add_viscosity(Program& program);
void add_transport(Program& program);
void add_diffusion(Program& program);
void add_interface(Program& program);
void add_range(Program& program);
void add_reaction(Program& program);
void add_mixture(Program& program);
void add_bubble(Program& program);
void add_dew(Program& program);
void add_flash(Program& program);
void add_pxy(Program& program);
void add_txy(Program& program);
void add_envelope(Program& program);
void add_equilibrium(Program& program);
void add_split(Program& program);
void add_critical_line(Program& program);
void add_diagram(Program& program);
void add_three_phase(Program& program);
void add_azeotrope(Program& program);
void add_solubility(Program& program);
void add_residue_curves(Program& program);
void add_ternary(Program& program);
void add_fit(Program& program);
void add_property_diagram(Program& program);
void add_excess(Program& program);
void add_henry(Program& program);
void add_virial(Program& program);
void add_ideal_curve(Program& program);
void add_check_equation(Program& program);
void add_new_equation(Program& program);

}  // namespace cli
