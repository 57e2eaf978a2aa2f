// What is calculated beside measured points.
#include <tools/corvane/diagrams/measured.h>

#include <corvane/phases/flash/flash.h>

#include <cmath>
#include <optional>
#include <utility>

namespace cli {
namespace {
using corvane::Branch;
using corvane::CriticalLine;
using corvane::CriticalPoint;
using corvane::EquilibriumFailure;
using corvane::Saturated;
using corvane::SaturationPoint;

/// The nearest of solutions, by any distance, and the last failure.
template <class Point>
class Nearest {
  public:
    template <class Solve, class Distance>
    void add(Solve solve, Distance distance) {
        try {
            const Point point = solve();
            const double far = distance(point);
            if (best_ && !(far < least_)) return;
            best_ = point;
            least_ = far;
        } catch (EquilibriumFailure const& e) {
            failure_ = e;
        }
    }
    explicit operator bool() const { return best_.has_value(); }
    /// @throws EquilibriumFailure none
    Point const& get() const {
        if (!best_) throw *failure_;
        return *best_;
    }

  private:
    std::optional<Point> best_;
    double least_ = 0.0;
    std::optional<EquilibriumFailure> failure_;
};

/// The solution at composition z nearest to what was measured: lowest, highest, and what is found
/// without a branch.
/// @throws EquilibriumFailure none
SaturationPoint nearest(MixtureFluid const& mixture, std::vector<Saturated> const& kinds, bool at_T,
                        double given, Vector<double> const& z, double measured) {
    Nearest<SaturationPoint> found;
    for (Saturated kind : kinds)
        for (Branch branch : {Branch::any, Branch::lower, Branch::upper}) {
            corvane::SaturationOptions how;
            how.branch = branch;
            found.add(
                [&] {
                    return at_T ? saturation_T(*mixture.model, kind, given, z, how)
                                : saturation_p(*mixture.model, kind, given, z, how);
                },
                [&](SaturationPoint const& s) {
                    return std::fabs(std::log((at_T ? s.p : s.T) / measured));
                });
        }
    return found.get();
}

/// Where the traced curve of the given phase passes the mole fraction x0: starts for its bubble
/// point (x of the tie lines is given) or dew point (y).
std::vector<SaturationPoint> passes(corvane::BinaryDiagram const& diagram, Saturated kind, double x0) {
    std::vector<SaturationPoint> found;
    const bool bubble = kind == Saturated::bubble;
    const auto of = [&](corvane::TieLine const& tie) { return bubble ? tie.x : tie.y; };
    for (corvane::Diagram const& branch : diagram.branches)
        for (std::size_t k = 1; k < branch.points.size(); ++k) {
            corvane::TieLine const &a = branch.points[k - 1], &b = branch.points[k];
            const double fa = of(a) - x0, fb = of(b) - x0;
            if (fa * fb > 0.0 || fa == fb || !(a.stable || b.stable)) continue;
            const double t = fa / (fa - fb);
            const auto at = [&](double from, double to) { return from + t * (to - from); };
            SaturationPoint start;
            start.T = at(a.T, b.T);
            start.p = std::exp(at(std::log(a.p), std::log(b.p)));
            const corvane::PhaseRecord x{at(a.rho_x, b.rho_x), binary(at(a.x, b.x))},
                y{at(a.rho_y, b.rho_y), binary(at(a.y, b.y))};
            start.given = bubble ? x : y;
            start.incipient = bubble ? y : x;
            found.push_back(start);
        }
    return found;
}

/// The solution at composition z nearest to what was measured, from the traced curves; where they
/// have none there, by the search of all branches.
/// @throws EquilibriumFailure none
SaturationPoint nearest(MixtureFluid const& mixture, corvane::BinaryDiagram const& diagram,
                        Saturated kind, bool at_T, double given, double x0, double measured) {
    const Vector<double> z = binary(x0);
    const auto distance = [&](SaturationPoint const& s) {
        return std::fabs(std::log((at_T ? s.p : s.T) / measured));
    };
    Nearest<SaturationPoint> found;
    for (SaturationPoint const& start : passes(diagram, kind, x0)) {
        corvane::SaturationOptions how;
        how.start = &start;
        how.trace = false;
        found.add(
            [&] {
                return at_T ? saturation_T(*mixture.model, kind, given, z, how)
                            : saturation_p(*mixture.model, kind, given, z, how);
            },
            distance);
    }
    if (found) return found.get();
    // Inside a gap of three phases no curve passes: the first vapour appears beside two liquids.
    try {
        const SaturationPoint any = at_T ? saturation_T(*mixture.model, kind, given, z)
                                         : saturation_p(*mixture.model, kind, given, z);
        if (!any.split.empty()) return any;
    } catch (EquilibriumFailure const&) {
    }
    return nearest(mixture, {kind}, at_T, given, z, measured);
}

/// The critical point at composition x0 nearest to what was measured: from the points of each line
/// next to that composition, or without a start where no line passes it.
/// @throws EquilibriumFailure none
CriticalPoint nearest(MixtureFluid const& mixture, std::vector<CriticalLine> const& lines,
                      corvane::CriticalOptions how, MeasuredPoint const& measured) {
    const double x0 = measured.x;
    Nearest<CriticalPoint> found;
    const auto add = [&](CriticalPoint const* start) {
        how.start = start;
        found.add([&] { return corvane::critical_point(*mixture.model, binary(x0), how); },
                  [&](CriticalPoint const& point) {
                      return std::hypot(std::log(point.T / measured.T),
                                        std::log(point.p / measured.p));
                  });
    };
    bool passed = false;
    for (CriticalLine const& line : lines)
        for (std::size_t k = 1; k < line.points.size(); ++k) {
            CriticalPoint const &a = line.points[k - 1], &b = line.points[k];
            if ((a.x[0] - x0) * (b.x[0] - x0) > 0.0) continue;
            passed = true;
            add(std::fabs(a.x[0] - x0) < std::fabs(b.x[0] - x0) ? &a : &b);
        }
    if (!passed) add(nullptr);
    return found.get();
}

/// Mole fractions of the first component in the phases nearer to x and y into which a mixture
/// half-way between them splits at p and T; nothing if it does not.
std::optional<std::pair<double, double>> split_around(MixtureFluid const& mixture, double p,
                                                      double T, double x, double y) {
    try {
        const auto phases = corvane::flash_pT(*mixture.model, p, T, binary(0.5 * (x + y))).phases;
        if (phases.size() < 2) return {};
        const double a = phases[0].x[0], b = phases[1].x[0];
        return (a < b) == (x < y) ? std::pair(a, b) : std::pair(b, a);
    } catch (EquilibriumFailure const&) {
        return {};
    }
}

constexpr char const* kNoFraction = "mole fraction not between 0 and 1";
constexpr char const* kNoState = "no T or p";
bool is_fraction(double x) {
    return x >= 0.0 && x <= 1.0;
}
}  // namespace

void Measured::compare(MixtureFluid const& mixture, std::vector<TracedDiagram> const& diagrams,
                       Units const& units, Heading& heading) {
    const bool isotherms = kind_ == MeasuredKind::isotherms;
    Comparison comparison(units);
    for (MeasuredPoint& m : points_) {
        comparison.add(m);
        double fixed = isotherms ? m.T : m.p;
        const double measured = isotherms ? m.p : m.T;
        if (std::isnan(fixed) && diagrams.size() == 1) fixed = diagrams.front().given;
        TracedDiagram const* own = nullptr;
        for (TracedDiagram const& one : diagrams)
            if (same_group(isotherms, fixed, one.given) &&
                (!own || std::fabs(fixed - one.given) < std::fabs(fixed - own->given)))
                own = &one;
        m.used = own != nullptr;
        if (!m.used) {
            comparison.skip(isotherms ? "at another temperature" : "at another pressure");
            continue;
        }
        if (!(measured > 0.0) || !(fixed > 0.0)) {
            comparison.skip(kNoState);
            continue;
        }
        const auto side = [&](Saturated kind, double x0, char const* suffix, char const* words) {
            if (std::isnan(x0)) return;
            if (!is_fraction(x0)) return comparison.skip(kNoFraction);
            comparison.attempt(kind == Saturated::bubble ? "bubble point" : "dew point", [&] {
                const SaturationPoint point =
                    nearest(mixture, own->diagram, kind, isotherms, fixed, x0, measured);
                comparison.value(isotherms ? Quantity::pressure : Quantity::temperature, suffix,
                                 words, isotherms ? point.p : point.T, measured);
            });
        };
        side(Saturated::bubble, m.x, "_x", " at the x of the liquid");
        side(Saturated::dew, m.y, "_y", " at the y of the vapour");
        if (!std::isfinite(m.x) || !std::isfinite(m.y)) continue;
        const auto split = split_around(mixture, isotherms ? measured : fixed,
                                        isotherms ? fixed : measured, m.x, m.y);
        if (split) {
            comparison.fraction("x", split->first, m.x);
            comparison.fraction("y", split->second, m.y);
        } else {
            comparison.skip("x and y: does not split at the T and p measured");
        }
    }
    comparison.finish(source_, heading);
}

void Measured::compare(MixtureFluid const& mixture, std::vector<CriticalLine> const& lines,
                       corvane::CriticalOptions const& how, Units const& units, Heading& heading) {
    Comparison comparison(units);
    for (MeasuredPoint& m : points_) {
        comparison.add(m);
        m.used = m.T > 0.0 && m.p > 0.0;
        if (!m.used)
            comparison.skip(kNoState);
        else if (!is_fraction(m.x))
            comparison.skip(kNoFraction);
        else
            comparison.attempt("critical point", [&] {
                const CriticalPoint point = nearest(mixture, lines, how, m);
                comparison.value(Quantity::temperature, "_x", " of the critical point at x",
                                 point.T, m.T);
                comparison.value(Quantity::pressure, "_x", " of the critical point at x", point.p,
                                 m.p);
            });
    }
    comparison.finish(source_, heading);
}

void Measured::compare(MixtureFluid const& mixture, std::vector<Saturated> const& kinds,
                       Units const& units, Heading& heading) {
    Comparison comparison(units);
    for (MeasuredPoint& m : points_) {
        comparison.add(m);
        // Binaries' points may tell that they are bubble points of x, dew points of y.
        std::vector<Saturated> own = kinds;
        if (std::isfinite(m.x) || std::isfinite(m.y))
            std::erase_if(own, [&](Saturated kind) {
                const double fraction = kind == Saturated::bubble ? m.x : m.y;
                return !(std::fabs(fraction - mixture.x[0]) <= 1e-3);
            });
        m.used = m.T > 0.0 && m.p > 0.0 && !own.empty();
        if (!m.used)
            comparison.skip(own.empty() ? "of another composition" : kNoState);
        else
            comparison.attempt("saturation", [&] {
                comparison.value(Quantity::pressure, "_T", " at T",
                                 nearest(mixture, own, true, m.T, mixture.x, m.p).p, m.p);
            });
    }
    comparison.finish(source_, heading);
}

}  // namespace cli
