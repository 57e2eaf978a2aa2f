#include <tools/corvane/diagrams/xy_branch.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace cli {
using corvane::Diagram;
using corvane::DiagramEnd;
using corvane::PhasePair;
using corvane::TieLine;

std::string in_words(DiagramEnd end, TieLine const& point, MixtureFluid const& mixture) {
    if (end == DiagramEnd::pure)
        return fmt::format("pure {}", mixture.component(point.x > 0.5 ? 0 : 1));
    return corvane::in_words(end, corvane::CurveKind::branch);
}

char const* in_words(PhasePair kind) {
    return kind == PhasePair::vapour_liquid   ? "vapour-liquid"
           : kind == PhasePair::liquid_liquid ? "liquid-liquid"
                                              : "fluid-fluid";
}

Diagram denser_first(Diagram branch, MixtureFluid const& mixture) {
    double most = 0.0;
    for (TieLine const& tie : branch.points) {
        const double contrast =
            std::log(tie.rho_x * mixture.weight(binary(tie.x)) / (tie.rho_y * mixture.weight(binary(tie.y))));
        if (std::fabs(contrast) > std::fabs(most)) most = contrast;
    }
    if (most < 0.0)
        for (TieLine& tie : branch.points) {
            std::swap(tie.x, tie.y);
            std::swap(tie.rho_x, tie.rho_y);
        }
    return branch;
}

void draw(Diagram const& branch, XyFrame const& frame, Picture& picture) {
    std::vector<XY> x, y;
    std::vector<bool> stable;
    for (TieLine const& tie : branch.points) {
        x.push_back({tie.x, frame.value(tie)});
        y.push_back({tie.y, frame.value(tie)});
        stable.push_back(tie.stable);
    }
    switch (branch.kind) {
        case PhasePair::vapour_liquid:
            picture.add("liquid", Ink::liquid, x, stable);
            picture.add("vapour", Ink::vapour, y, stable);
            break;
        case PhasePair::liquid_liquid:
            picture.add("liquid", Ink::liquid, x, stable);
            picture.add("second liquid", Ink::liquid2, y, stable);
            break;
        case PhasePair::fluid_fluid:
            picture.add("fluid", Ink::black, x, stable);
            picture.add("fluid", Ink::black, y, stable);
    }
    if (branch.begin == DiagramEnd::critical && stable.front())
        picture.mark("critical point", Symbol::critical, Ink::black, x.front());
    if (branch.end == DiagramEnd::critical && stable.back())
        picture.mark("critical point", Symbol::critical, Ink::black, x.back());
    for (TieLine const& tie : branch.azeotropes)
        if (std::none_of(branch.points.begin(), branch.points.end(), [&](TieLine const& point) {
                return !point.stable && point.T == tie.T && point.p == tie.p;
            }))
            picture.mark("azeotrope", Symbol::azeotrope, Ink::black, {tie.x, frame.value(tie)});
}

void draw(corvane::ThreePhasePoint const& three, bool stable, XyFrame const& frame,
          Picture& picture) {
    std::vector<XY> line;
    for (corvane::PhaseRecord const& phase : three.phases) {
        line.push_back({phase.x[0], frame.value(three)});
        if (stable) picture.mark("three phases", Symbol::three_phase, Ink::black, line.back());
    }
    std::sort(line.begin(), line.end());
    if (stable)
        picture.curves.push_back({"", Ink::black, Stroke::thin, line});
    else
        picture.add("", Ink::grey, line, {false, false, false});
}

}  // namespace cli
