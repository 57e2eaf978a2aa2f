#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/phases/ternary/residue_curves.h>
#include <corvane/phases/ternary/residue_path.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr double kNear = 0.01, kTrace = 1e-5, kZero = 1e-3;
constexpr int kParts = 40, kIterations = 60, kNewton = 20;

Vector<double> vector_of(Fractions3 const& x) {
    Vector<double> v(3);
    for (int i = 0; i < 3; ++i) v[i] = x[static_cast<std::size_t>(i)];
    return v;
}
Fractions3 array_of(Vector<double> const& x) {
    return {x[0], x[1], x[2]};
}

SingularKind kind_of(std::array<double, 2> const& e) {
    if (!(std::fabs(e[0]) > kZero) || !(std::fabs(e[1]) > kZero)) return SingularKind::unclear;
    if (e[0] * e[1] < 0.0) return SingularKind::saddle;
    return e[0] > 0.0 ? SingularKind::unstable_node : SingularKind::stable_node;
}

class Map {
  public:
    Map(ModelN const& model, double p, ResidueOptions const& o) : model_(model), o_(o) { map_.p = p; }

    ResidueMap run() {
        for (std::size_t i = 0; i < 3; ++i) pure(i);
        for (std::size_t i = 0; i < 3; ++i) edge(i);
        inner();
        boundaries();
        curves();
        return std::move(map_);
    }

  private:
    /// The certified bubble point of x at p.
    std::optional<Boiling> boil(Fractions3 const& x) {
        SaturationOptions how;
        how.start = last_ ? &*last_ : nullptr;
        how.validity = o_.validity;
        try {
            last_ = bubble_p(model_, map_.p, vector_of(x), how);
            return Boiling{x, array_of(last_->incipient.x), last_->T};
        } catch (EquilibriumFailure const&) {
        } catch (ThException const&) {
        } catch (MthException const&) {
        }
        ++map_.failures;
        last_.reset();
        return {};
    }
    /// x − y, first two mole fractions.
    std::optional<std::array<double, 2>> gap(Fractions3 const& x) {
        const auto b = boil(x);
        if (!b) return {};
        return std::array{x[0] - b->y[0], x[1] - b->y[1]};
    }
    /// 1 − K of a component that is hardly there, beside x.
    double dilute(Fractions3 x, std::size_t i) {
        for (double& part : x) part *= 1.0 - kTrace;
        x[i] += kTrace;
        const auto b = boil(x);
        return b ? 1.0 - b->y[i] / x[i] : std::nan("");
    }
    void add(Fractions3 const& x, double T, int components, std::array<double, 2> const& e) {
        const Vector<double> at = vector_of(x);
        map_.singular.push_back({at, T, components, kind_of(e), e});
    }

    void pure(std::size_t i) {
        Fractions3 x{};
        x[i] = 1.0;
        const double T = bubble_p(model_, map_.p, vector_of(x), {}).T;  // its refusal is the map's
        add(x, T, 1, {dilute(x, (i + 1) % 3), dilute(x, (i + 2) % 3)});
    }

    /// Azeotropes of the two components other than k, i the first of them.
    void edge(std::size_t k) {
        const std::size_t i = (k + 1) % 3, j = (k + 2) % 3;
        const auto on = [&](double part) {
            Fractions3 x{};
            x[i] = part;
            x[j] = 1.0 - part;
            return x;
        };
        const auto excess = [&](double part) {
            const auto b = boil(on(part));
            return b ? b->y[i] - part : std::nan("");
        };
        // At the ends the sign is that of ln K, which is there without cancellation.
        double before = kTrace, f = excess(before);
        for (int n = 1; n <= kParts; ++n) {
            const double here = n < kParts ? static_cast<double>(n) / kParts : 1.0 - kTrace;
            const double g = excess(here);
            if (g == 0.0) {  // of alike components, in the middle
                binary(on(here), i, k);
            } else if (f * g < 0.0) {
                IllinoisBracket root{before, f, here, g};
                for (int it = 0; it < kIterations && std::fabs(root.b - root.a) > 1e-12; ++it) {
                    const double at = root.b - root.fb * (root.b - root.a) / (root.fb - root.fa);
                    const double value = excess(at);
                    if (!std::isfinite(value) || value == 0.0) {
                        root.b = at;
                        break;
                    }
                    root.take(at, value);
                    if (std::fabs(value) < 1e-11) break;
                }
                binary(on(root.b), i, k);
            }
            before = here;
            f = g;
        }
    }
    void binary(Fractions3 const& x, std::size_t i, std::size_t absent) {
        const double h = 1e-3 * std::min(x[i], 1.0 - x[i]);
        const std::size_t j = 3 - i - absent;
        Fractions3 up = x, down = x;
        up[i] += h, up[j] -= h;
        down[i] -= h, down[j] += h;
        const auto a = boil(up), b = boil(down), here = boil(x);
        if (!here) return;
        const double along = a && b ? 1.0 - (a->y[i] - b->y[i]) / (2.0 * h) : std::nan("");
        add(x, here->T, 2, {along, dilute(x, absent)});
    }

    /// d(x − y)/dx of the first two mole fractions, by rows.
    bool derivative(Fractions3 const& x, std::array<double, 4>& d) {
        const double h = 1e-3 * std::min({x[0], x[1], x[2]});
        for (std::size_t k : {0, 1}) {
            Fractions3 up = x, down = x;
            up[k] += h, up[2] -= h;
            down[k] -= h, down[2] += h;
            const auto a = gap(up), b = gap(down);
            if (!a || !b) return false;
            for (std::size_t i : {0, 1}) d[2 * i + k] = ((*a)[i] - (*b)[i]) / (2.0 * h);
        }
        return true;
    }
    void inner() {
        const int n = kParts / 4;
        std::vector<std::pair<double, Fractions3>> starts;
        std::vector<double> size(static_cast<std::size_t>((n + 1) * (n + 1)), 1e300);
        const auto cell = [&](int i, int j) -> double& { return size[static_cast<std::size_t>(i * (n + 1) + j)]; };
        const auto at = [&](int i, int j) {
            return Fractions3{double(i) / n, double(j) / n, double(n - i - j) / n};
        };
        for (int i = 1; i < n; ++i)
            for (int j = 1; i + j < n; ++j)
                if (const auto g = gap(at(i, j))) cell(i, j) = std::hypot((*g)[0], (*g)[1]);
        for (int i = 1; i < n; ++i)
            for (int j = 1; i + j < n; ++j) {
                bool least = cell(i, j) < 1e300;
                for (auto const& [a, b] : {std::pair(1, 0), {-1, 0}, {0, 1}, {0, -1}, {1, -1}, {-1, 1}})
                    least = least && cell(i, j) <= cell(i + a, j + b);
                if (least) newton(at(i, j));
            }
    }
    void newton(Fractions3 x) {
        std::array<double, 4> d{};
        for (int it = 0; it < kNewton; ++it) {
            const auto g = gap(x);
            if (!g || !derivative(x, d)) return;
            if (std::hypot((*g)[0], (*g)[1]) < 1e-9) break;
            const double det = d[0] * d[3] - d[1] * d[2];
            double step[2] = {-(d[3] * (*g)[0] - d[1] * (*g)[1]) / det, -(d[0] * (*g)[1] - d[2] * (*g)[0]) / det};
            const double length = std::hypot(step[0], step[1]), part = std::min(1.0, 0.1 / length);
            if (!std::isfinite(length)) return;
            x = {x[0] + part * step[0], x[1] + part * step[1], x[2] - part * (step[0] + step[1])};
            if (!(x[0] > kTrace && x[1] > kTrace && x[2] > kTrace)) return;  // to an edge: not inside
        }
        const auto here = boil(x);
        if (!here || !(distance(here->x, here->y) < 1e-7)) return;
        for (SingularPoint const& known : map_.singular)
            if (distance(array_of(known.x), x) < 1e-4) return;
        const double mean = 0.5 * (d[0] + d[3]), root = mean * mean - (d[0] * d[3] - d[1] * d[2]);
        const double half = root > 0.0 ? std::sqrt(root) : 0.0;
        add(x, here->T, 3, {mean + half, mean - half});
    }

    /// One way from x: forwards to a stable node, or backwards to an unstable one.
    std::vector<ResidueNode> path(Fractions3 const& x, bool forwards, int& reached) {
        const SingularKind wanted = forwards ? SingularKind::stable_node : SingularKind::unstable_node;
        reached = -1;
        return residue_path(
            x, forwards ? 1.0 : -1.0, o_.step, o_.tolerance, o_.points,
            [&](Fractions3 const& at) { return boil(at); },
            [&](ResidueNode const& node) {
                if (!go_on()) return true;
                for (std::size_t k = 0; k < map_.singular.size(); ++k)
                    if (map_.singular[k].kind == wanted &&
                        distance(node.at.x, array_of(map_.singular[k].x)) < kNear) {
                        reached = static_cast<int>(k);
                        return true;
                    }
                return false;
            });
    }
    bool go_on() {
        on_ = on_ && (!o_.progress || o_.progress(++done_));
        return on_;
    }
    /// The half that runs backwards, turned round, and the other one; singular points at the ends.
    void add(std::vector<ResidueNode> const& back, std::vector<ResidueNode> const& forth, int from, int to,
             bool boundary) {
        ResidueCurve curve;
        curve.begin = from;
        curve.end = to;
        curve.boundary = boundary;
        const auto put = [&](ResidueNode const& n) {
            curve.points.push_back({vector_of(n.at.x), vector_of(n.at.y), n.at.T, n.xi});
        };
        for (std::size_t k = back.size(); k-- > (forth.empty() ? 0u : 1u);) put(back[k]);
        for (ResidueNode const& n : forth) put(n);
        if (curve.points.size() < 2) return;
        const double first = curve.points.front().xi;
        for (ResiduePoint& q : curve.points) q.xi -= first;
        map_.curves.push_back(std::move(curve));
    }

    /// From saddles into the triangle, on either side of one inside.
    void boundaries() {
        for (std::size_t s = 0; s < map_.singular.size() && on_; ++s) {
            const SingularPoint at = map_.singular[s];
            if (at.kind != SingularKind::saddle || at.components == 1) continue;
            const Fractions3 x = array_of(at.x);
            std::vector<std::pair<Fractions3, bool>> starts;
            if (at.components == 2) {
                Fractions3 in = x;
                const std::size_t k = x[0] == 0.0 ? 0 : x[1] == 0.0 ? 1 : 2;
                for (double& part : in) part *= 1.0 - 0.1 * kNear;
                in[k] += 0.1 * kNear;
                starts.emplace_back(in, at.eigenvalues[1] > 0.0);
            } else {
                std::array<double, 4> d{};
                if (!derivative(x, d)) continue;
                for (double e : at.eigenvalues) {
                    double v[2] = {d[1], e - d[0]};  // (D − e)·v = 0, from the larger row
                    if (std::fabs(d[2]) + std::fabs(e - d[3]) > std::fabs(v[0]) + std::fabs(v[1]))
                        v[0] = e - d[3], v[1] = d[2];
                    const double scale = 0.1 * kNear / std::hypot(v[0], v[1]);
                    for (double side : {scale, -scale})
                        starts.emplace_back(Fractions3{x[0] + side * v[0], x[1] + side * v[1],
                                                       x[2] - side * (v[0] + v[1])}, e > 0.0);
                }
            }
            for (auto const& [start, forwards] : starts) {
                if (!(start[0] > 0.0 && start[1] > 0.0 && start[2] > 0.0)) continue;
                int reached = -1;
                const auto way = path(start, forwards, reached);
                if (forwards)
                    add({}, way, static_cast<int>(s), reached, true);
                else
                    add(way, {}, reached, static_cast<int>(s), true);
            }
        }
    }
    void curves() {
        const int n = o_.mesh;
        for (int i = 1; i < n; ++i)
            for (int j = 1; i + j < n && on_; ++j) {
                const Fractions3 x{double(i) / n, double(j) / n, double(n - i - j) / n};
                bool taken = false;
                for (ResidueCurve const& known : map_.curves)
                    for (ResiduePoint const& q : known.points)
                        taken = taken || distance(array_of(q.x), x) < 0.25 / n;
                if (taken) continue;
                int from = -1, to = -1;
                const auto back = path(x, false, from), forth = path(x, true, to);
                add(back, forth, from, to, false);
            }
    }

    ModelN const& model_;
    ResidueOptions const& o_;
    ResidueMap map_;
    std::optional<SaturationPoint> last_;
    int done_ = 0;
    bool on_ = true;
};
}  // namespace

char const* in_words(SingularKind kind) {
    switch (kind) {
        case SingularKind::unstable_node:
            return "unstable node";
        case SingularKind::saddle:
            return "saddle";
        case SingularKind::stable_node:
            return "stable node";
        case SingularKind::unclear:
            break;
    }
    return "unclear";
}

bool ResidueMap::consistent() const {
    int sum = 0;
    for (SingularPoint const& s : singular) {
        if (s.kind == SingularKind::unclear) return false;
        const int sign = s.kind == SingularKind::saddle ? -1 : 1;
        sum += s.components == 3 ? 2 * sign : s.components == 2 ? sign : sign > 0 ? 1 : 0;
    }
    return sum == 2;
}

ResidueMap residue_map(ModelN const& ternary, double p, ResidueOptions const& options) {
    if (ternary.mdl1.size() != 3) throw ThException(th_no_option);
    const auto within = [](double v, double low, double high) { return v >= low && v <= high; };
    if (!(p > 0.0) || !std::isfinite(p) || !within(options.step, 1e-3, 0.5) ||
        !within(options.tolerance, 1e-10, 1e-2) || !within(options.mesh, 3, 30) || options.points < 2)
        throw ThException(th_out_of_range);
    return Map(ternary, p, options).run();
}

}  // namespace corvane
