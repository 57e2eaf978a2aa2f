// The lines of a binary's p-T projection as rows and curves.
#pragma once

#include <tools/corvane/diagrams/projection.h>
#include <tools/corvane/output/watch.h>
#include <tools/corvane/results/certified.h>

#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/critical_line.h>
#include <corvane/phases/binary/three_phase_line.h>

#include <string>
#include <vector>

namespace cli {

/// Rows "curve, number, T, p, x1, x2, x3" with certificates, beside their picture: the mole
/// fractions of the first component in all phases that differ, the densest (by mass) first.
/// Where lines end: --p-max and --T-min.
struct LineLimits {
    std::string p_max, T_min;
    bool log_p = false;

    /// A picture up to --p-max, if it is given, and --log-p.
    void frame(Picture& picture) const;
    void add_to(Command& command);
    explicit operator bool() const { return !p_max.empty() || !T_min.empty(); }
    /// Options of a trace, shorter steps for a picture. The watch must outlive them.
    template <class How>
    How apply(MixtureFluid const& mixture, Units const& units, Watch& watch, bool picture) const {
        How how;
        limit(units, how.p_max, how.T_min);
        if (picture) how.step = 0.02;
        how.validity = &mixture.validity;
        how.progress = watch.progress();
        return how;
    }

  private:
    void limit(Units const& units, double& highest, double& coldest) const;
};

class BinaryLines {
  public:
    BinaryLines(MixtureFluid const& mixture, Units const& units);

    void add_pure(int i);
    void add(corvane::CriticalLine const& line);
    void add(corvane::ThreePhaseLine const& line);
    void add(corvane::AzeotropicLine const& line);
    Row row(corvane::ThreePhasePoint const& point);
    Row row(corvane::AzeotropePoint const& point);
    /// Summary lines and the certificates' worst.
    void finish(Heading& heading) const;
    /// Some line ends open, where no further point was found.
    bool open() const { return open_; }

    Table table;
    Projection projection;

  private:
    using Fractions = std::vector<double>;
    Row row(std::string const& curve, double T, double p, Fractions const& x,
            corvane::Certificate const& certificate);
    void ends(std::string const& curve, std::size_t points, std::string const& begin,
              std::string const& end);
    template <class Line>
    std::vector<XY> listed(Line const& line, char const* name, corvane::CurveKind kind);

    MixtureFluid const& mixture_;
    Units const& units_;
    Evidence evidence_;
    std::vector<std::string> summary_;
    long number_ = 0;
    bool open_ = false;
};

}  // namespace cli
