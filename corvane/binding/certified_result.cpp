// The certified interface: what a result holds.
#include <corvane/binding/certified.h>

using namespace corvane::binding;

namespace {
std::string counted(char const* what, int i) {
    return std::string("no ") + what + " " + std::to_string(i);
}

template <class Items>
auto& at(Items& items, int i, char const* what) {
    if (i < 0 || i >= static_cast<int>(items.size())) throw BadArgument(counted(what, i));
    return items[static_cast<std::size_t>(i)];
}
ResultLine const& line_of(CorvaneResult const* r, int line) {
    return at(r->lines, line, "line");
}
ResultPoint const& point_of(CorvaneResult const* r, int line, int point) {
    return at(line_of(r, line).points, point, "point");
}

/// phase: CORVANE_WHOLE or an index; the phases of the points of a line may differ in number, so a
/// phase that a point does not have is not-a-number where the line has points with it.
double value(ResultPoint const& point, int phase, int property) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    if (phase < CORVANE_WHOLE) throw BadArgument(counted("phase", phase));
    if (property >= CORVANE_X) {
        if (phase == CORVANE_WHOLE || phase >= static_cast<int>(point.phases.size())) return none;
        return at(point.phases[static_cast<std::size_t>(phase)].x, property - CORVANE_X,
                  "component");
    }
    if (property < 0 || property >= kProperties) throw BadArgument(counted("property", property));
    if (phase == CORVANE_WHOLE) return point.of[static_cast<std::size_t>(property)];
    if (phase >= static_cast<int>(point.phases.size())) return none;
    return point.phases[static_cast<std::size_t>(phase)].of[static_cast<std::size_t>(property)];
}
}  // namespace

EXPORT int Corvane_Result_lines(const CorvaneResult* result) {
    return result ? static_cast<int>(result->lines.size()) : 0;
}

EXPORT int Corvane_Result_points(const CorvaneResult* result, int line, CorvaneError* error) {
    return certified(error, "points", result,
                     [&] { return static_cast<int>(line_of(result, line).points.size()); });
}

EXPORT int Corvane_Result_phases(const CorvaneResult* result, int line, int point,
                                 CorvaneError* error) {
    return certified(error, "phases", result, [&] {
        return static_cast<int>(point_of(result, line, point).phases.size());
    });
}

EXPORT int Corvane_Result_components(const CorvaneResult* result) {
    if (result)
        for (auto const& line : result->lines)
            for (auto const& point : line.points)
                for (auto const& phase : point.phases) return static_cast<int>(phase.x.size());
    return 0;
}

EXPORT int Corvane_Result_complete(const CorvaneResult* result) {
    return result && result->complete ? 1 : 0;
}

EXPORT int Corvane_Result_kind(const CorvaneResult* result, int line, CorvaneError* error) {
    return certified(error, "kind", result, [&] { return line_of(result, line).kind; });
}

EXPORT int Corvane_Result_begin(const CorvaneResult* result, int line, CorvaneError* error) {
    return certified(error, "begin", result, [&] { return line_of(result, line).begin; });
}

EXPORT int Corvane_Result_end(const CorvaneResult* result, int line, CorvaneError* error) {
    return certified(error, "end", result, [&] { return line_of(result, line).end; });
}

EXPORT double Corvane_Result_value(const CorvaneResult* result, int line, int point, int phase,
                                   int property, CorvaneError* error) {
    return certified(error, "value", result,
                     [&] { return value(point_of(result, line, point), phase, property); });
}

EXPORT int Corvane_Result_column(const CorvaneResult* result, int line, int phase, int property,
                                 double* values, int size, CorvaneError* error) {
    return certified(error, "column", result, [&] {
        if (size < 0) throw BadArgument("a size below 0");
        if (size > 0 && !values) refuse_null("array");
        auto const& points = line_of(result, line).points;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double x = value(points[i], phase, property);
            if (i < static_cast<std::size_t>(size)) values[i] = x;
        }
        return static_cast<int>(points.size());
    });
}

EXPORT int Corvane_Result_flags(const CorvaneResult* result, int line, int point,
                                CorvaneError* error) {
    return certified(error, "flags", result,
                     [&] { return point_of(result, line, point).flags; });
}

EXPORT int Corvane_Result_certificate(const CorvaneResult* result, int line, int point,
                                      char* buffer, int size, CorvaneError* error) {
    return certified(error, "certificate", result, [&] {
        auto const& c = point_of(result, line, point).certificate;
        return write(c ? c->line() : "", buffer, size);
    });
}
