#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/stability/hull.h>
#include <corvane/phases/ternary/ternary_diagram.h>
#include <corvane/phases/ternary/tie_line_curve.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr double kSame = 1e-6;   // of mole fractions: the same split or triangle
constexpr double kStiff = 0.3;   // of stiffness(): above it nothing unstable is near
constexpr double kJump = 0.15;   // of ln rho between neighbours: different density roots
constexpr double kCross = 1e-7;  // area of a triangle: its corners are on a line

using Point = std::array<double, 2>;  // mole fractions of the first two components

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

class Builder {
  public:
    Builder(ModelN const& model, double T, double p, TernaryOptions const& o)
        : model_(model), o_(o), fluid_(model, thirds()), curve_(model, fluid_, T, p, o_) {
        d_.T = T;
        d_.p = p;
        rho_.assign(node(o.mesh, o.mesh) + 1, 0.0);
    }

    TernaryDiagram run() {
        for (int k = 0; k < 3 && !interrupted_; ++k) edge(k);
        search();
        leave_edges();
        crossings();
        if (!d_.regions.empty() || !d_.three_phase.empty() || refused_ < asked_) {
            d_.evaluations += fluid_.evaluations + curve_.evaluations;
            return std::move(d_);
        }
        std::rethrow_exception(refusal_);  // at every composition
    }

  private:
    struct EdgeSplit {
        TernaryTieLine tie;
        int absent;
        bool done;
    };

    static Vector<double> thirds() {
        Vector<double> z(3);
        z.set(1.0 / 3.0);
        return z;
    }

    /// The flash; false where it gives up, which makes z open, or the model refuses.
    bool flash(Vector<double> const& z, FlashResult& q) {
        ++asked_;
        try {
            q = flash_pT(model_, d_.p, d_.T, z);
            d_.evaluations += q.certificate.evaluations;
            return true;
        } catch (...) {
            refusal_ = std::current_exception();
        }
        // What is no failure of a state goes through.
        try {
            std::rethrow_exception(refusal_);
        } catch (EquilibriumFailure const&) {
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
        ++refused_;
        d_.open.push_back(z);
        return false;
    }

    /// All splits of the binary without component k, each followed into the triangle.
    void edge(int k) {
        const int i = k == 0 ? 1 : 0, j = 3 - i - k;
        const auto whole = [&](double x) {
            Vector<double> z(3);
            z[i] = x;
            z[j] = 1.0 - x;
            z[k] = 0.0;
            return z;
        };
        tolerated([&] {
            const FluidModel binary(model_, whole(0.5));
            for (Facet const& f : split_facets(binary, d_.p, d_.T))
                between(whole(f.x[0]), f.rho[0], whole(f.x[1]), f.rho[1]);
            d_.evaluations += binary.evaluations;
            return true;
        });
        for (int m = 1; m < o_.mesh; ++m) {
            std::array<int, 3> node{};
            node[static_cast<std::size_t>(i)] = m;
            node[static_cast<std::size_t>(j)] = o_.mesh - m;
            look(node[0], node[1]);
        }
        leave_edges();
    }
    void leave_edges() {
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

    /// Is the whole in a region, a triangle, or a split of an edge that is known?
    bool known(Vector<double> const& z) const {
        const auto on_edge = [&](EdgeSplit const& e) {
            const int i = e.absent == 0 ? 1 : 0;
            const double a = e.tie.phases[0].x[i], b = e.tie.phases[1].x[i];
            return z[e.absent] == 0.0 && z[i] >= std::min(a, b) && z[i] <= std::max(a, b);
        };
        return std::any_of(edges_.begin(), edges_.end(), on_edge) || covered(point(z));
    }

    /// The flash of a whole that is not known, and what follows from it. The density of a single
    /// phase, else 0.
    double look(Vector<double> const& z) {
        FlashResult q;
        if (known(z) || !flash(z, q)) return 0.0;
        if (q.phases.size() == 1) return q.phases[0].rho;
        for (int k = 0; k < 3; ++k) {
            if (z[k] > 0.0) continue;
            Certificate const& c = q.certificate;
            edges_.push_back(
                {{{q.phases[0], q.phases[1]}, c.dmu, c.dp, c.tpd, c.x_error}, k, false});
            return 0.0;
        }
        seed(z, q);
        return 0.0;
    }
    Vector<double> mesh_point(double i, double j) const {
        Vector<double> z(3);
        z[0] = i / o_.mesh;
        z[1] = j / o_.mesh;
        z[2] = (o_.mesh - i - j) / o_.mesh;
        return z;
    }
    void look(int i, int j) { rho_[node(i, j)] = look(mesh_point(i, j)); }
    std::size_t node(int i, int j) const {
        return static_cast<std::size_t>(i * (o_.mesh + 1) + j);
    }

    /// Two phases of different density, both stable: somewhere on the line between them a split, if
    /// the density jumps. Halved as long as it does.
    void between(Vector<double> a, double rho_a, Vector<double> b, double rho_b) {
        for (int it = 0; it < 10; ++it) {
            Vector<double> z(3);
            for (int i = 0; i < 3; ++i) z[i] = 0.5 * (a[i] + b[i]);
            const double rho = look(z);
            if (rho == 0.0) return;
            const bool like_a =
                std::fabs(std::log(rho / rho_a)) < std::fabs(std::log(rho / rho_b));
            (like_a ? a : b) = z;
            (like_a ? rho_a : rho_b) = rho;
            if (std::fabs(std::log(rho_a / rho_b)) < kJump) return;
        }
    }

    /// The smaller eigenvalue of √(x_i·x_j)·∂m_i/∂n_j across the direction of the phase itself: 1 of
    /// an ideal mixture, negative of one that is locally unstable. Of a binary its only one.
    double stiffness(Vector<double> const& z, double rho) {
        FluidModel const& f = fluid_;
        PhaseState s;
        s.resize(3);
        for (int i = 0; i < 3; ++i) s.rho_i[i] = rho * std::max(z[i], 1e-12);
        if (!tolerated([&] { return f.evaluate(s, d_.T, phase_H); })) return 1.0;
        double trace = 0.0, minors = 0.0;
        for (int i = 0; i < 3; ++i) {
            trace += s.x[i] * s.m_n(i, i);
            for (int j = 0; j < i; ++j)
                minors += s.x[i] * s.x[j] *
                          (s.m_n(i, i) * s.m_n(j, j) - s.m_n(i, j) * s.m_n(j, i));
        }
        return 0.5 * (trace - std::sqrt(std::max(0.0, trace * trace - 4.0 * minors)));
    }
    /// From a mesh point of one phase whose neighbours are stiffer, down to where the mixture is
    /// locally unstable: regions that no mesh point hits.
    void descend(int i, int j) {
        double at[2] = {static_cast<double>(i), static_cast<double>(j)};
        const bool on_edge[] = {i == 0, j == 0, i + j == o_.mesh};
        const auto value = [&](double x, double y) {
            if (x < 0.0 || y < 0.0 || x + y > o_.mesh) return 1e300;
            const Vector<double> z = mesh_point(x, y);
            double rho[2], g[2], least = 1e300;
            std::vector<double> w(z.data, z.data + 3);
            for (double& v : w) v = std::max(v, 1e-12);
            tolerated([&] {
                const int roots = fluid_.densities(d_.p, d_.T, w, rho, g);
                for (int k = 0, best = 0; k < roots; ++k)
                    if (k == 0 || g[k] < g[best]) best = k, least = stiffness(z, rho[k]);
                return true;
            });
            return least;
        };
        double least = value(at[0], at[1]);
        constexpr int ways[6][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, -1}, {-1, 1}};
        for (double step = 0.5; step > 0.02 && least > 0.0;) {
            bool moved = false;
            for (auto const& way : ways) {
                if ((on_edge[0] && way[0]) || (on_edge[1] && way[1]) ||
                    (on_edge[2] && way[0] + way[1]))
                    continue;  // a binary stays one
                const double x = at[0] + step * way[0], y = at[1] + step * way[1],
                             here = value(x, y);
                if (!(here < least)) continue;
                at[0] = x;
                at[1] = y;
                least = here;
                moved = true;
                break;
            }
            if (!moved) step *= 0.5;
        }
        if (least <= 0.0) look(mesh_point(at[0], at[1]));
    }

    /// The mesh points, then what may be between them.
    void search() {
        const int mesh = o_.mesh;
        for (int i = 1; i < mesh; ++i)
            for (int j = 1; i + j < mesh && !interrupted_; ++j) look(i, j);
        constexpr int ways[3][2] = {{1, 0}, {0, 1}, {1, -1}};
        const std::vector<double> rho = rho_;
        const auto density = [&](int i, int j) {
            return i < 0 || j < 0 || i + j > mesh ? 0.0 : rho[node(i, j)];
        };
        const auto stiff = [&](int i, int j) {
            const double at = density(i, j);
            return at > 0.0 ? stiffness(mesh_point(i, j), at) : 1e300;
        };
        for (int i = 0; i <= mesh; ++i)
            for (int j = 0; i + j <= mesh && !interrupted_; ++j) {
                const double at = density(i, j);
                if (at == 0.0) continue;
                const double here = stiff(i, j);
                bool least = here < kStiff;
                for (auto const& way : ways) {
                    const double other = density(i + way[0], j + way[1]);
                    if (other > 0.0 && std::fabs(std::log(at / other)) > kJump)
                        between(mesh_point(i, j), at, mesh_point(i + way[0], j + way[1]), other);
                    least = least && here <= stiff(i + way[0], j + way[1]) &&
                            here <= stiff(i - way[0], j - way[1]);
                }
                if (least) descend(i, j);
            }
    }

    /// Runs the curve, appends its tie lines, and notes where it arrives.
    void follow(TernaryRegion& region) {
        region.end = curve_.run(points_);
        region.tie_lines.insert(region.tie_lines.end(), curve_.points.begin(),
                                curve_.points.end());
        TernaryTieLine const& last = region.tie_lines.back();
        switch (region.end) {
            case TernaryEnd::edge: {
                const auto at = std::find_if(edges_.begin(), edges_.end(), [&](EdgeSplit const& e) {
                    return same(e.tie, last);
                });
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

    std::size_t add(Triangle const& triangle) {
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
    void arrive(Triangle const& triangle, TernaryTieLine const& side) {
        const std::size_t at = add(triangle);
        for (std::size_t k = 0; k < 3; ++k)
            if (same(side_of(at, k), side)) sides_[at][k] = true;
    }
    TernaryTieLine side_of(std::size_t at, std::size_t k) const {
        TernaryTriangle const& t = d_.three_phase[at];
        Certificate const& c = t.certificate;
        return {{t.phases[(k + 1) % 3], t.phases[(k + 2) % 3]}, c.dmu, c.dp, c.tpd, c.x_error};
    }
    void triangles() {
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

    void seed(Vector<double> const& z, FlashResult& q) {
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

    void finish(TernaryRegion&& region) {
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
    double mass(PhaseRecord const& q) const {
        double sum = 0.0;
        for (int i = 0; i < 3; ++i) sum += q.rho * q.x[i] * fluid_.molar_mass(i);
        return sum;
    }
    /// Density over the mole-fraction average of the critical ones.
    double reduced(PhaseRecord const& q) const {
        double volume = 0.0;
        for (int i = 0; i < 3; ++i) volume += q.x[i] * fluid_.pure(i).vcrit();
        return q.rho * volume;
    }

    bool covered(Point const& z) const {
        for (TernaryTriangle const& t : d_.three_phase)
            if (inside(z, point(t.phases[0].x), point(t.phases[1].x), point(t.phases[2].x)))
                return true;
        for (TernaryRegion const& r : d_.regions)
            for (std::size_t k = 1; k < r.tie_lines.size(); ++k) {
                auto const &s = r.tie_lines[k - 1].phases, &t = r.tie_lines[k].phases;
                const Point a = point(s[0].x), b = point(s[1].x), c = point(t[0].x),
                            d = point(t[1].x);
                if (inside(z, a, b, d) || inside(z, a, c, d) || inside(z, a, b, c) ||
                    inside(z, b, c, d))
                    return true;
            }
        return false;
    }

    /// Two tie lines that cross contradict each other: at most one is stable.
    void crossings() {
        std::vector<std::array<Point, 2>> all;
        for (TernaryRegion const& r : d_.regions)
            for (TernaryTieLine const& tie : r.tie_lines)
                all.push_back({point(tie.phases[0].x), point(tie.phases[1].x)});
        const auto apart = [](double s, double t) {
            return (s > kCross && t < -kCross) || (s < -kCross && t > kCross);
        };
        for (std::size_t k = 1; k < all.size(); ++k)
            for (std::size_t j = 0; j < k; ++j) {
                auto const &[a, b] = all[j];
                auto const &[c, d] = all[k];
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

    ModelN const& model_;
    const TernaryOptions o_;
    const FluidModel fluid_;
    TieLineCurve curve_;
    std::vector<EdgeSplit> edges_;
    std::vector<std::array<bool, 3>> sides_;  // of the triangles: opposite to each phase
    std::exception_ptr refusal_;
    std::vector<double> rho_;  // of mesh points that are one phase, else 0
    int asked_ = 0, refused_ = 0, points_ = 0;
    bool interrupted_ = false;
    TernaryDiagram d_;
};
}  // namespace

bool TernaryDiagram::complete() const {
    const auto explained = [](TernaryEnd e) {
        return e != TernaryEnd::stuck && e != TernaryEnd::full && e != TernaryEnd::interrupted;
    };
    return open.empty() &&
           std::all_of(regions.begin(), regions.end(), [&](TernaryRegion const& r) {
               return explained(r.begin) && explained(r.end);
           });
}

TernaryDiagram ternary_diagram(ModelN const& ternary, double T, double p,
                               TernaryOptions const& o) {
    if (ternary.mdl1.size() != 3) throw ThException(th_no_option);
    if (!(T > 0.0) || !(p > 0.0) || !std::isfinite(T + p) || !(o.step > 0.0) || !(o.step <= 1.0) ||
        o.mesh < 2 || o.mesh > 100 || o.points < 2)
        throw ThException(th_out_of_range);
    return Builder(ternary, T, p, o).run();
}

}  // namespace corvane
