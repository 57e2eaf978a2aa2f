// corvane: thermodynamic properties from equations of state on the command line.
//
// Results go to standard output, the rest to standard error. Exit code 0: done; 1: failed; 2: wrong
// use.
#include <tools/corvane/commands/commands.h>

int main(int argc, char** argv) {
    cli::Program program(
        "Thermodynamic properties of substances and mixtures from equations of state.", R"(
Examples:
  corvane list                                  the substances and what there is for each
  corvane list --substance CO2                  parameter sets of all equations for one substance
  corvane state PR propane --T 300 --p 1        all properties at 300 K and 1 MPa
  corvane saturation PR CO2 --T 220:300:10      vapour pressure table
  corvane saturation PR water --p 1.01325 --unit-p bar --unit-T C --mass
  corvane bubble PR+vdW1 methane=0.3 propane=0.7 --T 250:300:10
corvane COMMAND --help tells the rest.)",
        argc, argv);
    cli::add_list(program);
    cli::add_state(program);
    cli::add_saturation(program);
    cli::add_critical(program);
#ifndef CORVANE_FEW
    cli::add_density(program);
    cli::add_solid(program);
    cli::add_viscosity(program);
    cli::add_transport(program);
    cli::add_diffusion(program);
    cli::add_interface(program);
    cli::add_range(program);
    cli::add_mixture(program);
    cli::add_bubble(program);
    cli::add_dew(program);
#endif
    cli::add_flash(program);
#ifndef CORVANE_FEW
    cli::add_pxy(program);
    cli::add_txy(program);
    cli::add_envelope(program);
    cli::add_equilibrium(program);
    cli::add_split(program);
    cli::add_critical_line(program);
    cli::add_diagram(program);
    cli::add_three_phase(program);
    cli::add_azeotrope(program);
    cli::add_solubility(program);
    cli::add_ternary(program);
    cli::add_excess(program);
    cli::add_henry(program);
    cli::add_virial(program);
    cli::add_ideal_curve(program);
#ifdef CORVANE_FIT
    cli::add_fit(program);
#endif
    cli::add_residue_curves(program);
    cli::add_reaction(program);
    cli::add_property_diagram(program);
    cli::add_check_equation(program);
    cli::add_new_equation(program);
#endif
    return program.run();
}
