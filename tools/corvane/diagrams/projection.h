// The p-T projection of a binary: curves of pure components, critical lines, and what meets there.
#pragma once

#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/results/mixture_points.h>

#include <corvane/phases/binary/critical_line.h>
#include <corvane/phases/saturation/saturation.h>

#include <string>
#include <vector>

namespace cli {

/// Vapour pressures of component i from `from` times its critical temperature to it, and the
/// critical point of the equation as the last one; where a point is not found the curve ends.
std::vector<corvane::SaturationPoint> vapour_pressures(MixtureFluid const& mixture, int i,
                                                       double from = 0.5);

/// "a critical end point, ...", or "pure methane".
std::string in_words(corvane::CriticalLineEnd end, corvane::CriticalPoint const& point,
                     MixtureFluid const& mixture);

class Projection {
  public:
    Projection(MixtureFluid const& mixture, Units const& units);
    void add_pure(std::vector<corvane::SaturationPoint> const& curve, int i);
    void add(corvane::CriticalLine const& line);
    /// A mark, once at a place that several lines end at.
    void mark(char const* name, Symbol symbol, XY at);
    XY at(double T, double p) const {
        return {units_.from_library(Quantity::temperature, T),
                units_.from_library(Quantity::pressure, p)};
    }

    Picture picture;

  private:
    /// The picture reaches well above this pressure.
    void show(double p);

    MixtureFluid const& mixture_;
    Units const& units_;
};

}  // namespace cli
