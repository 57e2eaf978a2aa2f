#include <corvane/phases/report/curve_end.h>

namespace corvane {
namespace {
using End = CurveEnd;

/// The first row that fits counts: those for all curves come last.
constexpr struct {
    CurveEnd end;
    CurveKind kind;
    char const* words;
} kWords[] = {{End::critical, CurveKind::branch, "a critical point"},
              {End::pressure, CurveKind::branch, "the highest p or T"},
              {End::cold, CurveKind::branch, "the lowest T"},
              {End::full, CurveKind::branch, "the largest number of points, where it goes on"},
              {End::interrupted, CurveKind::branch, "the interruption"},

              {End::critical, CurveKind::azeotrope, "a critical azeotrope"},
              {End::three_phase, CurveKind::azeotrope, "a further phase"},
              {End::full, CurveKind::azeotrope, "the largest number of points, where it goes on"},
              {End::interrupted, CurveKind::azeotrope, "the interruption"},
              {End::three_phase, CurveKind::phase_line, "a further phase"},
              {End::full, CurveKind::phase_line, "the largest number of points, where it goes on"},
              {End::interrupted, CurveKind::phase_line, "the interruption"},

              {End::pure, CurveKind::solid, "the pure component's melting or sublimation point"},
              {End::three_phase, CurveKind::solid, "a split, where a second fluid coexists"},
              {End::dilute, CurveKind::solid, "the least mole fraction asked for"},

              {End::closed, CurveKind::ternary, "its beginning, a ring"},
              {End::full, CurveKind::ternary, "the bound of the number of points"},
              {End::interrupted, CurveKind::ternary, "the interruption"},
              {End::stuck, CurveKind::ternary, "a failure"},

              {End::cold, CurveKind::ideal, "the lowest temperature"},
              {End::pressure, CurveKind::ideal, "the highest pressure"},
              {End::stuck, CurveKind::ideal, "a point from where it was lost"},

              {End::closed, CurveKind::any, "its first point: a closed line"},
              {End::pure, CurveKind::any, "a pure component"},
              {End::critical, CurveKind::any, "a critical end point"},
              {End::end_point, CurveKind::any,
               "a critical end point, where another phase coexists with the critical one"},
              {End::three_phase, CurveKind::any, "three phases"},
              {End::edge, CurveKind::any, "the edge"},
              {End::plait, CurveKind::any, "a plait point"},
              {End::eutectic, CurveKind::any, "a eutectic, where the other component freezes, too"},
              {End::pressure, CurveKind::any, "the highest pressure asked for"},
              {End::tension, CurveKind::any,
               "a pressure that is no longer positive; it goes on under tension"},
              {End::cold, CurveKind::any, "the lowest temperature asked for"},
              {End::dilute, CurveKind::any, "a mere trace of a component"},
              {End::saturation, CurveKind::any, "the edge of the liquid"},
              {End::solid_range, CurveKind::any, "the end of the solid's data"},
              {End::other_range, CurveKind::any,
               "the temperature where the data of the other solid begin, which is stable there"},
              {End::uncertified, CurveKind::any, "a very low pressure, where rounding hides more"},
              {End::full, CurveKind::any, "the largest number of points; it goes on"},
              {End::interrupted, CurveKind::any, "the caller's request"}};
}  // namespace

char const* in_words(CurveEnd end, CurveKind kind) {
    for (auto const& row : kWords)
        if (row.end == end && (row.kind == kind || row.kind == CurveKind::any)) return row.words;
    return "an open end: no further point was found";
}

}  // namespace corvane
