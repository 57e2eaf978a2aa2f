// Freezing in p-x-y and T-x-y diagrams: pure solids beside the fluid phases.
#pragma once

#include <tools/corvane/diagrams/xy_branch.h>
#include <tools/corvane/input/solids.h>

#include <corvane/phases/binary/diagram.h>
#include <corvane/phases/solid/solid_fluid.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace cli {

class Solids {
  public:
    /// Loads the solids of the components if `wanted`, from `data` (--solid-data), and tells in the heading which
    /// they are. @throws Failure neither has
    Solids(MixtureFluid const& mixture, bool wanted, std::string const& data, Heading& heading,
           Units const& units);

    /// Whether a component of a fluid of composition x0 and density rho [mol/cm³] freezes.
    bool freeze(double T, double p, double x0, double rho) const;
    /// The lines of fluids above a pure solid at given T or p: rows as those of the diagram (the
    /// fluid as x, the solid as y), curves and eutectics. What fails is told in the summary.
    std::vector<Row> trace(XyFrame const& frame, double given, corvane::DiagramOptions const& asked,
                           Heading& heading, Picture& picture) const;

  private:
    std::string name(int i) const { return std::string("solid ") + mixture_.component(i); }
    std::vector<corvane::SolidFluidLine> lines(XyFrame const& frame, int i, double given,
                                               corvane::DiagramOptions const& asked) const;
    std::vector<Row> rows_of(int i, corvane::SolidFluidLine const& line, XyFrame const& frame,
                             std::string const& where, Heading& heading, Picture& picture) const;
    void mark_end(int i, corvane::SolidFluidLine const& line, XyFrame const& frame, Picture& picture) const;
    void report_eutectic(XyFrame const& frame, double given, corvane::SolidFluidPoint const& point,
                         std::vector<double>& known, Heading& heading) const;

    void label(int i, corvane::SolidFluidLine const& line, XyFrame const& frame, Picture& picture) const;

    MixtureFluid const& mixture_;
    std::array<std::optional<PureSolid>, 2> solid_;
};

}  // namespace cli
