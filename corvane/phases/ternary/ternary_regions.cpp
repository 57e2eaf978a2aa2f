#include <corvane/phases/ternary/ternary_regions.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr double kSame = 1e-6;   // of mole fractions: the same split or triangle
constexpr double kCross = 1e-7;  // area of a triangle: its corners are on a line

using Point = TernaryPoint;

Point point(Vector<double> const& x) {
    return {x[0], x[1]};
}
double area(Point const& a, Point const& b, Point const& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}
bool inside(Point const& z, Point const& a, Point const& b, Point const& c) {
    const double whole = area(a, b, c), sign = whole < 0.0 ? -1.0 : 1.0, slack = -1e-9;
    return sign * area(z, a, b) >= slack && sign * area(z, b, c) >= slack &&
           sign * area(z, c, a) >= slack && std::fabs(whole) > 1e-14;
}
bool same(PhaseRecord const& a, PhaseRecord const& b) {
    double off = std::fabs(std::log(a.rho / b.rho));
    for (int i = 0; i < 3; ++i) off = std::max(off, std::fabs(a.x[i] - b.x[i]));
    return off < kSame;
}
/// In either order.
bool same(TernaryTieLine const& s, TernaryTieLine const& t) {
    return (same(s.phases[0], t.phases[0]) && same(s.phases[1], t.phases[1])) ||
           (same(s.phases[0], t.phases[1]) && same(s.phases[1], t.phases[0]));
}
Vector<double> mixed(PhaseRecord const& a, PhaseRecord const& b, double part) {
    Vector<double> z(3);
    for (int i = 0; i < 3; ++i) z[i] = (1.0 - part) * a.x[i] + part * b.x[i];
    return z;
}
Vector<double> thirds() {
    Vector<double> z(3);
    z.set(1.0 / 3.0);
    return z;
}
}  // namespace

TernaryRegions::TernaryRegions(ModelN const& model, double T, double p, TernaryOptions const& o)
    : model_(model), o_(o), fluid_(model, thirds()), curve_(model, fluid_, T, p, o_) {
    d_.T = T;
    d_.p = p;
}

void TernaryRegions::leave_edges() {
    for (std::size_t e = 0; e < edges_.size() && !interrupted_; ++e) {
        if (edges_[e].done) continue;
        edges_[e].done = true;
        if (!curve_.begin_edge(edges_[e].tie, edges_[e].absent)) {
            d_.open.push_back(mixed(edges_[e].tie.phases[0], edges_[e].tie.phases[1], 0.5));
            continue;
        }
        TernaryRegion region;
        region.begin = TernaryEnd::edge;
        follow(region);
        finish(std::move(region));
        triangles();
    }
}

bool TernaryRegions::known(Vector<double> const& z) const {
    const auto on_edge = [&](EdgeSplit const& e) {
        const int i = e.absent == 0 ? 1 : 0;
        const double a = e.tie.phases[0].x[i], b = e.tie.phases[1].x[i];
        return z[e.absent] == 0.0 && z[i] >= std::min(a, b) && z[i] <= std::max(a, b);
    };
    return std::any_of(edges_.begin(), edges_.end(), on_edge) || covered(point(z));
}

/// Runs the curve, appends its tie lines, and notes where it arrives.
void TernaryRegions::follow(TernaryRegion& region) {
    region.end = curve_.run(points_);
    region.tie_lines.insert(region.tie_lines.end(), curve_.points.begin(), curve_.points.end());
    TernaryTieLine const& last = region.tie_lines.back();
    switch (region.end) {
        case TernaryEnd::edge: {
            const auto at = std::find_if(edges_.begin(), edges_.end(),
                                         [&](EdgeSplit const& e) { return same(e.tie, last); });
            if (at == edges_.end())
                edges_.push_back({last, curve_.edge, true});
            else
                at->done = true;
            break;
        }
        case TernaryEnd::plait:
            d_.plait.push_back(*curve_.plait);
            break;
        case TernaryEnd::three_phase:
            arrive(*curve_.triangle, last);
            break;
        case TernaryEnd::interrupted:
            interrupted_ = true;
            break;
        default:
            break;
    }
}

std::size_t TernaryRegions::add(Triangle const& triangle) {
    auto const& phases = triangle.record.phases;
    for (std::size_t k = 0; k < d_.three_phase.size(); ++k) {
        int found = 0;
        for (PhaseRecord const& a : phases)
            for (PhaseRecord const& b : d_.three_phase[k].phases) found += same(a, b) ? 1 : 0;
        if (found == 3) return k;
    }
    d_.three_phase.push_back(triangle.record);
    sides_.push_back({false, false, false});
    return sides_.size() - 1;
}
/// The side opposite to phase k of a triangle has been followed.
void TernaryRegions::arrive(Triangle const& triangle, TernaryTieLine const& side) {
    const std::size_t at = add(triangle);
    for (std::size_t k = 0; k < 3; ++k)
        if (same(side_of(at, k), side)) sides_[at][k] = true;
}
TernaryTieLine TernaryRegions::side_of(std::size_t at, std::size_t k) const {
    TernaryTriangle const& t = d_.three_phase[at];
    Certificate const& c = t.certificate;
    return {{t.phases[(k + 1) % 3], t.phases[(k + 2) % 3]}, c.dmu, c.dp, c.tpd, c.x_error};
}
void TernaryRegions::triangles() {
    for (std::size_t at = 0; at < sides_.size(); ++at)
        for (std::size_t k = 0; k < 3; ++k) {
            if (sides_[at][k] || interrupted_) continue;
            sides_[at][k] = true;
            const TernaryTieLine side = side_of(at, k);
            const Vector<double> opposite = d_.three_phase[at].phases[k].x;
            if (!curve_.begin_at({side.phases[0], side.phases[1]}, &opposite, true)) {
                d_.open.push_back(mixed(side.phases[0], side.phases[1], 0.5));
                continue;
            }
            TernaryRegion region;
            region.begin = TernaryEnd::three_phase;
            follow(region);
            finish(std::move(region));
        }
}

void TernaryRegions::seed(Vector<double> const& z, FlashResult& q) {
    if (q.phases.size() == 3) {
        std::vector<double> u;
        for (PhaseRecord const& phase : q.phases)
            for (int i = 0; i < 3; ++i) u.push_back(std::log(phase.rho * phase.x[i]));
        u.push_back(std::log(d_.T));
        Triangle triangle;
        if (!curve_.solve_triangle(u, triangle))
            d_.open.push_back(z);
        else
            add(triangle);
        triangles();
        return;
    }
    // A point between the chords of a region's boundary and the boundary itself.
    if (covered(point(mixed(q.phases[0], q.phases[1], 0.5)))) return;
    TernaryRegion region;
    if (!curve_.begin_at(q.phases, nullptr, false)) {
        d_.open.push_back(z);
        return;
    }
    follow(region);
    if (region.end != TernaryEnd::closed && !interrupted_) {
        region.begin = region.end;
        std::reverse(region.tie_lines.begin(), region.tie_lines.end());
        region.tie_lines.pop_back();
        if (curve_.begin_at(q.phases, nullptr, true))
            follow(region);
        else
            region.end = TernaryEnd::stuck;
    } else {
        region.begin = region.end;
    }
    finish(std::move(region));
    triangles();
}

void TernaryRegions::finish(TernaryRegion&& region) {
    auto& lines = region.tie_lines;
    points_ += static_cast<int>(lines.size());
    auto const& half = lines[lines.size() / 2].phases;
    if (mass(half[0]) < mass(half[1]))
        for (TernaryTieLine& tie : lines) std::swap(tie.phases[0], tie.phases[1]);
    auto const& [dense, light] = lines[lines.size() / 2].phases;
    if (reduced(light) < 1.0 && reduced(dense) > 1.0) region.kind = PhasePair::vapour_liquid;
    for (std::size_t k = 0; k < lines.size(); ++k) {
        TernaryTieLine const& tie = lines[k];
        region.dmu = std::max(region.dmu, tie.dmu);
        region.dp = std::max(region.dp, tie.dp);
        region.tpd = std::min(region.tpd, tie.tpd);
        const bool plait = (k == 0 && region.begin == TernaryEnd::plait) ||
                           (k + 1 == lines.size() && region.end == TernaryEnd::plait);
        if (!plait && !(tie.x_error <= region.x_error) && !std::isnan(region.x_error))
            region.x_error = tie.x_error;
    }
    d_.regions.push_back(std::move(region));
}
double TernaryRegions::mass(PhaseRecord const& q) const {
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) sum += q.rho * q.x[i] * fluid_.weight(i);
    return sum;
}
/// Density over the mole-fraction average of the critical ones.
double TernaryRegions::reduced(PhaseRecord const& q) const {
    double volume = 0.0;
    for (int i = 0; i < 3; ++i) volume += q.x[i] * fluid_.pure(i).vcrit();
    return q.rho * volume;
}

bool TernaryRegions::covered(Point const& z) const {
    for (TernaryTriangle const& t : d_.three_phase)
        if (inside(z, point(t.phases[0].x), point(t.phases[1].x), point(t.phases[2].x)))
            return true;
    for (TernaryRegion const& r : d_.regions)
        for (std::size_t k = 1; k < r.tie_lines.size(); ++k) {
            auto const &s = r.tie_lines[k - 1].phases, &t = r.tie_lines[k].phases;
            const Point a = point(s[0].x), b = point(s[1].x), c = point(t[0].x), d = point(t[1].x);
            if (inside(z, a, b, d) || inside(z, a, c, d) || inside(z, a, b, c) ||
                inside(z, b, c, d))
                return true;
        }
    return false;
}

void TernaryRegions::crossings() {
    std::vector<std::array<Point, 2>> all;
    for (TernaryRegion const& r : d_.regions)
        for (TernaryTieLine const& tie : r.tie_lines)
            all.push_back({point(tie.phases[0].x), point(tie.phases[1].x)});
    const auto apart = [](double s, double t) {
        return (s > kCross && t < -kCross) || (s < -kCross && t > kCross);
    };
    for (std::size_t k = 1; k < all.size(); ++k)
        for (std::size_t j = 0; j < k; ++j) {
            auto const& [a, b] = all[j];
            auto const& [c, d] = all[k];
            const double to_a = area(c, d, a), to_b = area(c, d, b);
            if (!apart(to_a, to_b) || !apart(area(a, b, c), area(a, b, d))) continue;
            const double part = to_a / (to_a - to_b);
            Vector<double> z(3);
            z[0] = a[0] + part * (b[0] - a[0]);
            z[1] = a[1] + part * (b[1] - a[1]);
            z[2] = 1.0 - z[0] - z[1];
            d_.open.push_back(z);
        }
}

bool TernaryDiagram::complete() const {
    const auto explained = [](TernaryEnd e) {
        return e != TernaryEnd::stuck && e != TernaryEnd::full && e != TernaryEnd::interrupted;
    };
    return open.empty() && std::all_of(regions.begin(), regions.end(), [&](TernaryRegion const& r) {
               return explained(r.begin) && explained(r.end);
           });
}

}  // namespace corvane
