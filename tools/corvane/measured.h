// Measured equilibria of binaries beside calculated ones: --data FILE.csv.
//
// The first line of the file names the columns, as in compare.h: T, p, x (in the liquid) and y (in
// the vapour), with their units: "T/K,p/MPa,x_propane,y_propane". x, y, x1 and y1 are mole
// fractions of the first component on the command line; x_<name> and y_<name> of that one, in
// whichever order. Columns of other names are ignored. Lines that begin with # are comments; the
// first one is shown as the source.
#pragma once

#include <tools/corvane/mixture_points.h>
#include <tools/corvane/plot.h>

#include <string>
#include <vector>

namespace cli {

struct MeasuredPoint {
    double T, p, x, y;  ///< library units, x and y of the first component; NaN where not measured
    int line;           ///< in the file
    bool used = false;  ///< its T (or p) is one of those that were asked for
};

/// The option --data FILE, and what becomes of it.
class Measured {
  public:
    void add_to(Command& command);
    /// To call before the data home is entered. @throws Misuse a folder
    void begin();
    explicit operator bool() const { return !path_.empty(); }

    /// Reads the file. @throws Failure as Published; no column x, y, or of the variable sought
    void read(MixtureFluid const& mixture, bool isotherms);
    /// Solves, for each point, the bubble point at its x and the dew point at its y, at its T (or
    /// p), which must be one of `given` to 0.1 K (0.5 %), and the split at its T and p; tells the
    /// deviations of p (T) and of x and y in summary lines and a list "measured". A point with
    /// several solutions is compared with the nearest.
    void compare(MixtureFluid const& mixture, std::vector<double> const& given, Units const& units,
                 Heading& heading);
    /// Lays the points that are used over a diagram.
    void draw(Picture& picture, Units const& units) const;

  private:
    std::string path_, source_;
    bool isotherms_ = true;
    std::vector<MeasuredPoint> points_;
};

}  // namespace cli
