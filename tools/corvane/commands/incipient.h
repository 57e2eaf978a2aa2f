// Bubble and dew points of a mixture, with start values found without help.
#pragma once

#include <corvane/mixture/modeln.h>

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// A phase of given composition and the first trace of the phase that coexists with it.
struct Incipient {
    double T = 0.0, p = 0.0;
    Vector<double> x;          ///< of the given phase
    double rho = 0.0;          ///< of the given phase
    Vector<double> rho_i;      ///< partial densities of the incipient phase
    Vector<double> y() const;  ///< its composition
};

/// Searches point after point: from the last solution; from Wilson's K-factors (A modified
/// Redlich-Kwong equation of state, AIChE 65th National Meeting, 1968), as they are and after
/// successive substitution; and by a march from states where those lead to a solution: at lower T
/// or p, and near pure components. Every solution is recomputed through the slots of the model.
class IncipientSearch {
  public:
    /// dew: the given phase is the vapour; otherwise the liquid. by_T: T is given; otherwise p.
    IncipientSearch(ModelN const& model, bool dew, bool by_T) : m_(model), dew_(dew), by_T_(by_T) {}

    /// The point at T or p, nothing if none was found; failure() then tells what was tried.
    std::optional<Incipient> at(double given, Vector<double> const& x);
    std::string failure() const;

  private:
    struct Start {
        std::string name;
        double given;
        Vector<double> x;
    };
    double saturation(int i, double T) const;
    double wilson_pressure(double T, Vector<double> const& x) const;
    std::optional<Incipient> wilson(double given, Vector<double> const& x, int rounds) const;
    std::optional<Incipient> fresh(double given, Vector<double> const& x);
    std::optional<Incipient> walk(Incipient const& from, double given, Vector<double> const& x);
    std::vector<Start> easy(double given, Vector<double> const& x) const;
    bool solve(Incipient& point);
    char const* flaw(Incipient const& point) const;

    ModelN const& m_;
    bool dew_, by_T_;
    std::optional<Incipient> last_;
    std::string error_;               // of the last solve
    std::vector<std::string> tried_;  // of the last at()
};

}  // namespace cli
