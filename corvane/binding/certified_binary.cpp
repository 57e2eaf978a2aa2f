// The certified interface: diagrams and lines of binaries, solids beside fluids.
#include <corvane/binding/certified_points.h>

using namespace corvane::binding;

namespace {
void add(CorvaneResult& r, corvane::BinaryDiagram const& d) {
    std::vector<corvane::TieLine> azeotropes;
    for (auto const& branch : d.branches) {
        using P = corvane::PhasePair;
        add_curve(r,
                  branch.kind == P::vapour_liquid   ? CORVANE_LINE_VAPOUR_LIQUID
                  : branch.kind == P::liquid_liquid ? CORVANE_LINE_LIQUID_LIQUID
                                                    : CORVANE_LINE_FLUID_FLUID,
                  branch);
        azeotropes.insert(azeotropes.end(), branch.azeotropes.begin(), branch.azeotropes.end());
    }
    if (!azeotropes.empty()) r.lines.push_back(line_of(CORVANE_LINE_AZEOTROPES, azeotropes));
    if (!d.three_phase.empty())
        r.lines.push_back(line_of(CORVANE_LINE_THREE_PHASE, d.three_phase));
    if (!d.open.empty()) r.lines.push_back(line_of(CORVANE_LINE_OPEN, d.open));
    r.complete = d.complete();
}

template <class Options = corvane::PhaseLineOptions>
Options line_options(CorvaneMixture const* m, double p_max, CorvaneProgress* progress, void* context) {
    auto options = curve_options<Options>(m, progress, context);
    limit(options.p_max, p_max);
    return options;
}

corvane::SolidFluidOptions solid_options(CorvaneMixture const* m, CorvaneProgress* progress,
                                         void* context) {
    if (m->mixture.size() != 2) throw ThException(th_no_option);
    auto options = curve_options<corvane::SolidFluidOptions>(m, progress, context);
    options.anchored = m->solids();
    return options;
}

CorvaneResult* solid_lines(std::vector<corvane::SolidFluidLine> const& lines) {
    auto r = std::make_unique<CorvaneResult>();
    for (auto const& line : lines) add_curve(*r, CORVANE_LINE_SOLID_0 + line.solid, line);
    return r.release();
}
}  // namespace

// ---- binaries

EXPORT CorvaneResult* Corvane_diagram_pxy(const CorvaneMixture* mixture, double T, double p_max,
                                          CorvaneProgress* progress, void* context,
                                          CorvaneError* error) {
    return certified(error, "diagram_pxy", mixture, [&] {
        auto r = std::make_unique<CorvaneResult>();
        add(*r, corvane::complete_pxy(
                    *mixture->mixture.model, T,
                    line_options<corvane::DiagramOptions>(mixture, p_max, progress, context)));
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_diagram_Txy(const CorvaneMixture* mixture, double p, double T_min,
                                          CorvaneProgress* progress, void* context,
                                          CorvaneError* error) {
    return certified(error, "diagram_Txy", mixture, [&] {
        auto options = curve_options<corvane::DiagramOptions>(mixture, progress, context);
        options.T_min = T_min;
        auto r = std::make_unique<CorvaneResult>();
        add(*r, corvane::complete_Txy(*mixture->mixture.model, p, options));
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_critical_lines(const CorvaneMixture* mixture, double p_max,
                                             CorvaneProgress* progress, void* context,
                                             CorvaneError* error) {
    return certified(error, "critical_lines", mixture, [&] {
        const auto options =
            line_options<corvane::CriticalLineOptions>(mixture, p_max, progress, context);
        auto r = std::make_unique<CorvaneResult>();
        for (auto const& line : corvane::critical_lines(*mixture->mixture.model, options)) {
            add_curve(*r, CORVANE_LINE_CRITICAL, line);
            auto& points = r->lines.back().points;
            if (points.empty()) continue;
            if (line.begin_phase.x.size() > 0)
                points.front().phases.push_back(phase_of(line.begin_phase));
            if (line.end_phase.x.size() > 0)
                points.back().phases.push_back(phase_of(line.end_phase));
        }
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_three_phase_lines(const CorvaneMixture* mixture, double p_max,
                                                CorvaneProgress* progress, void* context,
                                                CorvaneError* error) {
    return certified(error, "three_phase_lines", mixture, [&] {
        auto r = std::make_unique<CorvaneResult>();
        for (auto const& line :
             corvane::three_phase_lines(*mixture->mixture.model,
                                        line_options(mixture, p_max, progress, context)))
            add_curve(*r, CORVANE_LINE_THREE_PHASE, line);
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_azeotropic_lines(const CorvaneMixture* mixture, double p_max,
                                               CorvaneProgress* progress, void* context,
                                               CorvaneError* error) {
    return certified(error, "azeotropic_lines", mixture, [&] {
        auto r = std::make_unique<CorvaneResult>();
        for (auto const& line :
             corvane::azeotropic_lines(*mixture->mixture.model,
                                       line_options(mixture, p_max, progress, context)))
            add_curve(*r, CORVANE_LINE_AZEOTROPES, line);
        return r.release();
    });
}

// ---- solids

EXPORT CorvaneResult* Corvane_solubility(const CorvaneMixture* mixture, int solid, double p,
                                         double T, CorvaneError* error) {
    return certified(error, "solubility", mixture, [&] {
        return single(corvane::solubility(*mixture->mixture.model, solid, p, T,
                                          solid_options(mixture, nullptr, nullptr)));
    });
}

EXPORT CorvaneResult* Corvane_eutectic(const CorvaneMixture* mixture, double p,
                                       CorvaneError* error) {
    return certified(error, "eutectic", mixture, [&] {
        return single(corvane::eutectic(*mixture->mixture.model, p,
                                        solid_options(mixture, nullptr, nullptr)));
    });
}

EXPORT CorvaneResult* Corvane_solid_fluid_isobar(const CorvaneMixture* mixture, int solid, double p,
                                                 CorvaneProgress* progress, void* context,
                                                 CorvaneError* error) {
    return certified(error, "solid_fluid_isobar", mixture, [&] {
        return solid_lines(corvane::solid_fluid_isobar(*mixture->mixture.model, solid, p,
                                                       solid_options(mixture, progress, context)));
    });
}

EXPORT CorvaneResult* Corvane_solid_fluid_isotherm(const CorvaneMixture* mixture, int solid,
                                                   double T, double p_max,
                                                   CorvaneProgress* progress, void* context,
                                                   CorvaneError* error) {
    return certified(error, "solid_fluid_isotherm", mixture, [&] {
        auto options = solid_options(mixture, progress, context);
        limit(options.p_max, p_max);
        return solid_lines(
            corvane::solid_fluid_isotherm(*mixture->mixture.model, solid, T, options));
    });
}
