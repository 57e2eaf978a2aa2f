// Measured tie lines of ternaries beside calculated ones.
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/text/errors.h>

#include <corvane/phases/flash/flash.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace cli {
namespace {
using corvane::fit::Point;
using corvane::fit::PointKind;
using Ends = std::array<Vector<double>, 2>;

Vector<double> composition_of(std::vector<double> const& x) {
    Vector<double> v(static_cast<int>(x.size()));
    for (int i = 0; i < v.size(); ++i) v[i] = x[static_cast<std::size_t>(i)];
    return v;
}

bool is_tie(Point const& point) {
    return point.kind == PointKind::liquid_liquid ||
           (point.kind == PointKind::bubble && !point.y.empty());
}
bool of_vapour(Point const& point) {
    return point.kind == PointKind::bubble;
}
Ends ends(Point const& point) {
    return {composition_of(point.x), composition_of(of_vapour(point) ? point.y : point.x2)};
}

/// The two phases into which the mean composition splits, the one nearer to the first end first.
/// @throws EquilibriumFailure; a message why there are none
Ends phases_around(MixtureFluid const& mixture, Point const& point, Ends const& measured,
                   std::string& why) {
    Vector<double> middle(mixture.size());
    for (int i = 0; i < middle.size(); ++i) middle[i] = 0.5 * (measured[0][i] + measured[1][i]);
    const auto phases = corvane::flash_pT(*mixture.model, point.p, point.T, middle).phases;
    if (phases.size() != 2) {
        why = phases.size() < 2 ? "no split at the mean composition" : "a split into three phases";
        return {};
    }
    const auto far = [&](Vector<double> const& x) {
        double sum = 0.0;
        for (int i = 0; i < x.size(); ++i) sum += std::fabs(x[i] - measured[0][i]);
        return sum;
    };
    Ends found{phases[0].x, phases[1].x};
    if (far(found[1]) < far(found[0])) std::swap(found[0], found[1]);
    return found;
}
}  // namespace

void Measured::read_ties(MixtureFluid const& mixture) {
    ties_ = corvane::fit::read_data(path_, entered_home(), mixture.components, 0.0);
    source_ = ties_.source;
    std::erase_if(ties_.points, [](Point const& point) { return !is_tie(point); });
    if (ties_.points.empty())
        throw Failure(fmt::format("{}: no tie lines: name columns like T/K, p/MPa, x_{}, x2_{}",
                                  path_, mixture.component(0), mixture.component(0)));
}

void Measured::compare_ties(MixtureFluid const& mixture, double T, double p, Units const& units,
                            Heading& heading) {
    Comparison comparison(units);
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    bool any = false;
    for (Point& tie : ties_.points) {
        comparison.add({tie.T, tie.p, none, none, tie.line});
        tie.used = tie.used && same_group(true, tie.T, T) &&
                   (!of_vapour(tie) || same_group(false, tie.p, p));
        any = any || tie.used;
        if (!tie.used) {
            comparison.skip(same_group(true, tie.T, T) ? "at another pressure, or excluded"
                                                       : "at another temperature");
            continue;
        }
        comparison.attempt("split", [&] {
            const Ends measured = ends(tie);
            std::string why;
            const Ends found = phases_around(mixture, tie, measured, why);
            if (!why.empty()) return comparison.skip(why);
            const char* const names[] = {"x", of_vapour(tie) ? "y" : "x2"};
            const char* const by_mass[] = {"w", of_vapour(tie) ? "wy" : "w2"};
            for (std::size_t k : {0, 1}) {
                const auto shown = [&](Vector<double> const& x) {
                    return ties_.by_mass ? mixture.mass_fractions(x) : x;
                };
                const Vector<double> calculated = shown(found[k]), seen = shown(measured[k]);
                for (int i = 0; i < seen.size(); ++i)
                    comparison.tie_end(fmt::format("{}_{}", ties_.by_mass ? by_mass[k] : names[k],
                                                   mixture.component(i)),
                                       calculated[i], seen[i]);
            }
        });
    }
    if (!any)
        throw Failure(fmt::format("{}: no tie lines at {}, {}", path_,
                                  units.text(Quantity::temperature, T),
                                  units.text(Quantity::pressure, p)));
    comparison.finish(source_, heading);
}

void Measured::draw_ties(Picture& picture,
                         std::function<XY(Vector<double> const& x)> const& place) const {
    std::vector<XY> lines;
    for (Point const& tie : ties_.points) {
        if (!tie.used) continue;
        const Ends measured = ends(tie);
        const XY a = place(measured[0]), b = place(measured[1]);
        picture.mark("measured", Symbol::measured_open, Ink::black, a);
        picture.mark("measured", Symbol::measured_open, Ink::black, b);
        lines.insert(lines.end(), {a, b, XY{std::nan(""), std::nan("")}});
    }
    picture.curves.push_back({"measured tie lines", Ink::black, Stroke::dashed, std::move(lines)});
}

}  // namespace cli
