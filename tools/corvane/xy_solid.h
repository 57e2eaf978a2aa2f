// Freezing in p-x-y and T-x-y diagrams: pure solids beside the fluid phases.
#pragma once

#include <tools/corvane/xy_branch.h>

#include <corvane/phases/diagram.h>

#include <vector>

namespace cli {

class Solids {
  public:
    /// Loads the solid data of the components if `wanted`, and tells in the heading which have
    /// none. @throws Failure neither has
    Solids(MixtureFluid const& mixture, bool wanted, Heading& heading);

    /// Whether a component of a fluid of composition x0 and density rho [mol/cm³] freezes.
    bool freeze(double T, double p, double x0, double rho) const;
    /// The lines of fluids above a pure solid at given T or p: rows as those of the diagram (the
    /// fluid as x, the solid as y), curves and eutectics. What fails is told in the summary.
    std::vector<Row> trace(XyFrame const& frame, double given, corvane::DiagramOptions const& asked,
                           Heading& heading, Picture& picture) const;

  private:
    MixtureFluid const& mixture_;
    std::vector<int> loaded_;
};

}  // namespace cli
