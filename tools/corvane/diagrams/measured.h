// Measured equilibria beside calculated ones: --data FILE.csv.
//
// The first line of the file names the columns, as in compare.h: T, p, x (in the liquid) and y (in
// the vapour), with their units: "T/K,p/MPa,x_propane,y_propane". x, y, x1 and y1 are mole
// fractions of the first component on the command line; x_<name> and y_<name> of that one, in
// whichever order. Columns of other names are ignored. Lines that begin with # are comments; the
// first one is shown as the source.
#pragma once

#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/results/compare.h>
#include <tools/corvane/results/mixture_points.h>

#include <corvane/fit/data.h>
#include <corvane/phases/binary/binary_diagram.h>
#include <corvane/phases/binary/critical_line.h>
#include <corvane/phases/saturation/saturation.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace cli {

struct MeasuredPoint {
    double T, p, x, y;  ///< library units, x and y of the first component; NaN where not measured
    int line;           ///< in the file
    bool used = false;  ///< it belongs to what was asked for
};

/// A diagram, its branches with the denser phase as x.
struct TracedDiagram {
    double given;  ///< T, or p
    corvane::BinaryDiagram diagram;
};

/// Whether temperatures (pressures) are told apart: within 0.1 K (0.5 %) they are not.
bool same_group(bool isotherms, double one, double other);

/// What the points belong to.
enum class MeasuredKind {
    isotherms,   ///< binary: p, and x or y
    isobars,     ///< binary: T, and x or y
    critical,    ///< binary: T, p and x
    composition  ///< T and p, of a mixture of given composition
};

/// The option --data FILE, and what becomes of it.
class Measured {
  public:
    void add_to(Command& command);
    /// To call before the data home is entered. @throws Misuse a folder
    void begin();
    explicit operator bool() const { return !path_.empty(); }

    /// Reads the file; T, p and the mole fractions must be there as the kind needs them.
    /// @throws Failure as Published; no such points
    void read(MixtureFluid const& mixture, MeasuredKind kind, Units const& units);
    /// Isotherms, isobars: the temperatures (pressures) of the points, ascending; those that follow
    /// one another within 0.1 K (0.5 %) of the first of them are one, their mean.
    std::vector<double> groups() const;
    /// Isotherms, isobars: solves, for each point, the bubble point at its x and the dew point at
    /// its y, at its T (or p), which must be that of one of the diagrams to 0.1 K (0.5 %), and the
    /// split at its T and p; tells the deviations of p (T) and of x and y in summary lines and a list
    /// "measured". A point with several solutions is compared with the nearest. The traced curves
    /// are the start; where none passes the mole fraction, all branches are searched.
    void compare(MixtureFluid const& mixture, std::vector<TracedDiagram> const& diagrams,
                 Units const& units, Heading& heading);
    /// Critical points: solves for the critical point at each x, from those next to it on the
    /// lines; tells the deviations of T and p from the nearest.
    void compare(MixtureFluid const& mixture, std::vector<corvane::CriticalLine> const& lines,
                 corvane::CriticalOptions const& how, Units const& units, Heading& heading);
    /// Points of the mixture's composition: solves for the saturation at each T, the nearest to the
    /// p measured of these kinds; tells the deviations of p. Points of a binary with an x or y are
    /// compared if that is the composition of the liquid or vapour, to 0.001.
    void compare(MixtureFluid const& mixture, std::vector<corvane::Saturated> const& kinds,
                 Units const& units, Heading& heading);
    /// Lays the points that are used over a diagram.
    void draw(Picture& picture, Units const& units) const;

    /// Ternaries: reads tie lines as `corvane fit` does. @throws Failure as there; no tie lines
    void read_ties(MixtureFluid const& mixture);
    /// Splits the mean composition of each tie line that was measured at T, to 0.1 K (and p, to
    /// 0.5 %, beside a vapour), at its T and p; tells the deviations of the fractions in both
    /// phases, by mass if the file has them so. @throws Failure none was measured there
    void compare_ties(MixtureFluid const& mixture, double T, double p, Units const& units,
                      Heading& heading);
    /// Lays those over a triangle, whose places are place(mole fractions).
    void draw_ties(Picture& picture, std::function<XY(Vector<double> const& x)> const& place) const;

  private:
    std::string path_, source_;
    MeasuredKind kind_ = MeasuredKind::isotherms;
    std::vector<MeasuredPoint> points_;
    corvane::fit::DataSet ties_;
};

/// What is told of measured points: each with what was calculated, deviations, and how many were
/// not compared, by reason.
class Comparison {
  public:
    explicit Comparison(Units const& units) : units_(units) {}
    /// The next point.
    void add(MeasuredPoint const& point);
    void skip(std::string const& why);
    /// T or p of the point: calculated/measured − 1, of temperatures the difference. Named
    /// "T<suffix>", in the summary "T<words>".
    void value(Quantity quantity, std::string const& suffix, std::string const& words,
               double calculated, double measured);
    /// A mole fraction.
    void fraction(std::string const& symbol, double calculated, double measured);
    /// One of many in a row: both are told, "w2_water" and "measured_w2_water".
    void tie_end(std::string const& name, double calculated, double measured);
    /// Solves; a failure is the reason why the point is skipped.
    template <class F>
    void attempt(std::string const& what, F solve) {
        try {
            solve();
        } catch (corvane::EquilibriumFailure const& e) {
            skip(what + (e.kind() == corvane::EquilibriumFailure::Kind::no_solution
                             ? ": no solution"
                             : ": gave up"));
        }
    }
    void finish(std::string const& source, Heading& heading);

  private:
    struct Told {
        std::string words, unit;
        Deviations deviations;
    };
    void put(std::string const& name, double value);
    void deviation(std::string const& words, std::string const& unit, double value);

    Units const& units_;
    std::vector<Fields> list_;
    std::vector<int> lines_;  ///< in the file, of the points
    std::vector<Told> told_;
    std::map<std::string, int> reasons_;
};

}  // namespace cli
