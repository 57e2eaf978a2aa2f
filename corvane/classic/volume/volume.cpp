#include <corvane/classic/volume/fluid.h>
#include <corvane/classic/volume/volume.h>
#include <corvane/core/numelo.h>

#include <array>

namespace {
using corvane::pass_vol;

struct Point {
    double y, f;  // f: pressure less the target
};

/// Slope and curvature of the isotherm by central differences.
struct Shape {
    double below, at, above;  // f at y − h, y, y + h
    double slope, curvature;
};

Shape shape_at(pass_vol const& fluid, double y) {
    const double h = th_inc0 * y;
    Shape s{fluid.excess(y - h), fluid.excess(y), fluid.excess(y + h), 0.0, 0.0};
    s.slope = (s.above - s.below) / (2.0 * h);
    s.curvature = (s.above - 2.0 * s.at + s.below) / (h * h);
    return s;
}

double solve(pass_vol& fluid, Point a, Point b, double scale) {
    return eqn_regulafalsi(corvane::pdiff, &fluid, a.y, b.y, a.f, b.f, th_veps * scale);
}

/// Looks from a root y0 on a stable branch for another stable root towards end: eight trial points,
/// each half as far as the one before. Returns its y, or 0 if there is none.
double second_root(pass_vol& fluid, double y0, Point end, bool dense) {
    double step = (y0 - end.y) / 2.0, y = end.y;
    for (int k = 0; k < 8; ++k, step /= 2.0) {
        y += step;
        const Shape s = shape_at(fluid, y);
        if (s.at * end.f < 0.0) return solve(fluid, end, {y, s.at}, y);
        // Still on the outer branch: go on from here. Past the inflection: back.
        if (s.slope > 0.0 && (dense ? s.curvature : -s.curvature) > 0.0)
            end = {y, s.at};
        else
            y -= step;
    }
    return 0.0;
}

int find_roots(pass_vol& fluid, Vector<double>& roots) {
    if (!corvane::is_state(fluid.p, fluid.T) || !(fluid.p > 0.0) || !(fluid.d > 0.0)) return 0;
    Point dense{};
    for (int k = 5; k >= 0; --k) {
        dense.y = 1.0 - 0.06 * k;
        dense.f = fluid.excess(dense.y);
        if (dense.f >= 0.0) break;
    }
    if (!(dense.f >= 0.0)) return 0;
    const std::array<Point, 2> ends{{{0.0, -fluid.p}, dense}};

    const double d = fluid.d;
    const double y0 = solve(fluid, ends[0], ends[1], dense.y);
    if (!corvane::is_root(fluid, y0)) return 0;
    const Shape s = shape_at(fluid, y0);
    if (roots.n < 3) roots.size(3);
    roots.set(y0 / d);

    // Intended, here and below: the inner ends of the brackets are th_inc0 away from y0, but their
    // values are those at th_inc0·y0. Only the first secant notices.
    const Point below{y0 - th_inc0, s.below}, above{y0 + th_inc0, s.above};
    // Where there is no root the entry keeps the first one, as if there had been no search.
    const auto store = [&](int entry, double y) {
        if (corvane::is_root(fluid, y)) roots[entry] = y / d;
    };
    if (s.slope < 0.0) {
        store(2, solve(fluid, ends[0], below, y0));
        store(0, solve(fluid, ends[1], above, y0));
        return 3;
    }
    const bool towards_dense = s.curvature <= 0.0;
    const int slot = towards_dense ? 0 : 2;
    const Point end = ends[towards_dense ? 1 : 0];
    if (s.slope == 0.0) {
        if (s.curvature == 0.0) return 3;  // critical point
        store(slot, solve(fluid, end, towards_dense ? above : below, y0));
        return 3;
    }
    const double y = second_root(fluid, y0, end, towards_dense);
    if (!corvane::is_root(fluid, y)) return 1;
    roots[slot] = y / d;
    return 3;
}
}  // namespace

int volume(void const* model, int kind, double p, double T, Vector<double> const* x, double d,
           Vector<double>& roots) {
    pass_vol fluid{kind, p, T, d, x, model};
    try {
        return find_roots(fluid, roots);
    } catch (...) {
        return 0;
    }
}
