// How results become lines of points of phases, and arguments what the library takes. Internal.
#pragma once

#include <corvane/binding/certified.h>
#include <corvane/corvane.h>

#include <memory>

namespace corvane::binding {

// ---- results

ResultPhase phase_of(double rho, std::vector<double> x);
std::vector<double> fractions(Vector<double> const& x);
ResultPhase phase_of(PhaseRecord const& q);
ResultPhase phase_of(double rho, double x0);  // of a binary
ResultPhase phase_of(PhaseProperties const& q, std::vector<double> x);
ResultPoint point_at(double T, double p);
ResultPoint point_at(double T, double p, Certificate const& c);
ResultPoint point_of(PureState const& q);
ResultPoint point_of(PureSaturation const& q);
ResultPoint point_of(FlashResult const& q, ModelN const& model);
ResultPoint point_of(SaturationPoint const& q);
ResultPoint point_of(CriticalPoint const& q);
ResultPoint point_of(EnvelopePoint const& q, Vector<double> const& z);
ResultPoint point_of(TieLine const& q);
ResultPoint point_of(ThreePhasePoint const& q);
ResultPoint point_of(AzeotropePoint const& q);
ResultPoint point_of(SolidFluidPoint const& q);
CorvaneEnd end_of(CurveEnd end);
/// Does a curve that ends so go on?
bool early(int end);

template <class Points, class... More>
ResultLine line_of(int kind, Points const& points, More const&... more) {
    ResultLine r;
    r.kind = kind;
    r.points.reserve(points.size());
    for (auto const& q : points) r.points.push_back(point_of(q, more...));
    return r;
}

/// Adds the curve with its ends; the result is complete no more where one of them is early.
template <class Curve>
void add_curve(CorvaneResult& r, int kind, Curve const& curve) {
    ResultLine line = line_of(kind, curve.points);
    line.begin = end_of(curve.begin);
    line.end = end_of(curve.end);
    r.complete = r.complete && !early(line.begin) && !early(line.end);
    r.lines.push_back(std::move(line));
}

template <class Point>
CorvaneResult* single(std::vector<Point> const& points) {
    auto r = std::make_unique<CorvaneResult>();
    r->lines.push_back(line_of(CORVANE_LINE_POINTS, points));
    return r.release();
}
template <class Point>
CorvaneResult* single(Point const& point) {
    return single(std::vector<Point>{point});
}

// ---- arguments

template <class Choice>
Choice chosen(int i, Choice last) {
    if (i < 0 || i > static_cast<int>(last)) throw BadArgument("no choice " + std::to_string(i));
    return static_cast<Choice>(i);
}

/// @throws BadArgument not n components
Vector<double> composition(CorvaneMixture const* m, double const* z, int n);
Progress progress_of(CorvaneProgress* progress, void* context);
/// What every curve is asked for.
template <class Options>
Options curve_options(CorvaneMixture const* m, CorvaneProgress* progress, void* context) {
    Options options;
    options.validity = &m->mixture.validity;
    options.progress = progress_of(progress, context);
    return options;
}
/// Sets a limit where one is given; 0 keeps the default.
void limit(double& option, double value);

}  // namespace corvane::binding
