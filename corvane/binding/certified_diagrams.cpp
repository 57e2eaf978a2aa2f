// The certified interface: diagrams of ternaries, property diagrams.
#include <corvane/binding/certified_points.h>

using namespace corvane::binding;

namespace {
ResultPoint tie_line(corvane::TernaryDiagram const& d, corvane::TernaryTieLine const& q) {
    ResultPoint r = point_at(d.T, d.p);
    r[CORVANE_DMU] = q.dmu, r[CORVANE_DP] = q.dp, r[CORVANE_TPD] = q.tpd;
    r[CORVANE_X_ERROR] = q.x_error;
    r.phases = {phase_of(q.phases[0]), phase_of(q.phases[1])};
    return r;
}

ResultLine region(corvane::TernaryDiagram const& d, corvane::TernaryRegion const& region) {
    using P = corvane::PhasePair;
    ResultLine line;
    line.kind = region.kind == P::vapour_liquid   ? CORVANE_LINE_VAPOUR_LIQUID
                : region.kind == P::liquid_liquid ? CORVANE_LINE_LIQUID_LIQUID
                                                  : CORVANE_LINE_FLUID_FLUID;
    line.begin = end_of(region.begin), line.end = end_of(region.end);
    for (auto const& q : region.tie_lines) line.points.push_back(tie_line(d, q));
    return line;
}

CorvaneResult* result_of(corvane::TernaryDiagram const& d) {
    auto r = std::make_unique<CorvaneResult>();
    for (auto const& one : d.regions) r->lines.push_back(region(d, one));
    if (!d.plait.empty()) r->lines.push_back(line_of(CORVANE_LINE_CRITICAL, d.plait));
    ResultLine triangles, open;
    triangles.kind = CORVANE_LINE_THREE_PHASE, open.kind = CORVANE_LINE_OPEN;
    for (auto const& q : d.three_phase) {
        triangles.points.push_back(point_at(d.T, d.p, q.certificate));
        for (auto const& phase : q.phases)
            triangles.points.back().phases.push_back(phase_of(phase));
    }
    for (auto const& z : d.open) {
        open.points.push_back(point_at(d.T, d.p));
        open.points.back().phases.push_back(
            phase_of(std::numeric_limits<double>::quiet_NaN(), fractions(z)));
    }
    for (ResultLine* line : {&triangles, &open})
        if (!line->points.empty()) r->lines.push_back(std::move(*line));
    r->complete = d.complete();
    return r.release();
}

ResultLine states(int kind, std::vector<corvane::PropertyPoint> const& points) {
    ResultLine line;
    line.kind = kind;
    for (auto const& q : points) {
        ResultPoint r = point_at(q.T, q.p);
        r[CORVANE_RHO] = q.rho, r[CORVANE_H] = q.h, r[CORVANE_S] = q.s, r[CORVANE_U] = q.u;
        r[CORVANE_Q] = q.q;
        line.points.push_back(std::move(r));
    }
    return line;
}

int kind_of(corvane::Quantity what) {
    switch (what) {
        case corvane::Quantity::T: return CORVANE_LINE_ISOTHERM;
        case corvane::Quantity::p: return CORVANE_LINE_ISOBAR;
        case corvane::Quantity::rho: return CORVANE_LINE_ISOCHORE;
        case corvane::Quantity::s: return CORVANE_LINE_ISENTROPE;
        default: return CORVANE_LINE_EQUAL_Q;
    }
}

CorvaneResult* result_of(corvane::PropertyDiagram const& d) {
    auto r = std::make_unique<CorvaneResult>();
    r->lines.push_back(states(CORVANE_LINE_LIQUID, d.liquid));
    r->lines.push_back(states(CORVANE_LINE_VAPOUR, d.vapour));
    for (auto const& line : d.lines) r->lines.push_back(states(kind_of(line.what), line.points));
    r->complete = d.failures == 0;
    return r.release();
}

corvane::PropertyDiagramOptions diagram_options(const int* what, const double* values, int count,
                                                int points, bool pure, CorvaneProgress* progress,
                                                void* context) {
    if (count < 0 || points < 0) throw BadArgument("a negative number");
    if (count > 0 && (!what || !values)) refuse_null("isolines");
    corvane::PropertyDiagramOptions options;
    if (points > 0) options.points = points;
    options.progress = progress_of(progress, context);
    for (int i = 0; i < count; ++i) {
        switch (what[i]) {
            case CORVANE_GIVEN_T: options.T.push_back(values[i]); break;
            case CORVANE_GIVEN_P: options.p.push_back(values[i]); break;
            case CORVANE_GIVEN_RHO: options.rho.push_back(values[i]); break;
            case CORVANE_GIVEN_S: options.s.push_back(values[i]); break;
            case CORVANE_GIVEN_Q:
                if (pure) {
                    options.q.push_back(values[i]);
                    break;
                }
                [[fallthrough]];
            default: throw BadArgument("no isolines of quantity " + std::to_string(what[i]));
        }
    }
    return options;
}
}  // namespace

EXPORT CorvaneResult* Corvane_ternary(const CorvaneMixture* mixture, double p, double T, double step,
                                      int mesh, CorvaneProgress* progress, void* context,
                                      CorvaneError* error) {
    return certified(error, "ternary", mixture, [&] {
        auto options = curve_options<corvane::TernaryOptions>(mixture, progress, context);
        limit(options.step, step);
        if (mesh != 0) options.mesh = mesh;
        return result_of(corvane::ternary_diagram(*mixture->mixture.model, T, p, options));
    });
}

EXPORT CorvaneResult* Corvane_pure_property_diagram(const CorvaneFluid* fluid, const int* what,
                                                    const double* values, int count, int points,
                                                    CorvaneProgress* progress, void* context,
                                                    CorvaneError* error) {
    return certified(error, "pure_property_diagram", fluid, [&] {
        return result_of(corvane::property_diagram(
            *fluid->fluid.model,
            diagram_options(what, values, count, points, true, progress, context)));
    });
}

EXPORT CorvaneResult* Corvane_property_diagram(const CorvaneMixture* mixture, const double* z, int n,
                                               const int* what, const double* values, int count,
                                               int points, CorvaneProgress* progress, void* context,
                                               CorvaneError* error) {
    return certified(error, "property_diagram", mixture, [&] {
        return result_of(corvane::property_diagram(
            *mixture->mixture.model, composition(mixture, z, n),
            diagram_options(what, values, count, points, false, progress, context)));
    });
}
