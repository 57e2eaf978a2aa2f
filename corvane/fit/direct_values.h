// Answers of a mixture that are one call of the library each: excess functions, infinite dilution,
// critical points, solubilities of solids. Internal.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/fit/data.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/solid/anchored_solid.h>

#include <array>
#include <map>
#include <optional>
#include <vector>

namespace corvane::fit {

class DirectValues {
  public:
    explicit DirectValues(Mixture const& mixture) : mixture_(mixture), model_(*mixture.model) {}

    static bool takes(PointKind kind);

    /// The observed values at the present parameters, in their order; false without a solution.
    /// index: of the point, for what is kept.
    bool values(std::size_t index, Point const& point, double* to);
    /// Whether the answer is that of a stable state, by the complete test.
    bool stable(std::size_t index, Point const& point);
    /// How far the measured state is from an equilibrium; 0 where that is not known.
    double distance(Point const& point);
    void forget() { critical_.clear(); }

  private:
    void excess(Point const& point, double* to);
    void dilute(std::size_t index, Point const& point, double* to);
    void critical(std::size_t index, Point const& point, double* to);
    void dissolved(Point const& point, double* to);
    void load_solids();
    Vector<double> vector(std::vector<double> const& x) const;

    Mixture const& mixture_;
    ModelN const& model_;
    bool stable_ = true, loaded_ = false;
    std::map<std::size_t, CriticalPoint> critical_;  // last solutions
    std::map<std::size_t, double> solvent_;          // vapour pressures of pure solvents
    std::array<std::optional<AnchoredSolid>, 2> anchored_;
};

}  // namespace corvane::fit
