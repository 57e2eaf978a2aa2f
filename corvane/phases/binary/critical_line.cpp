#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/binary/critical_curve.h>
#include <corvane/phases/binary/critical_line.h>
#include <corvane/phases/critical/spinodal.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
using namespace critical_metric;
using End = CriticalLineEnd;

constexpr double kSame = 0.15;  // distance to a known curve, of the length of its segment
// At most 0.15 apart, closer at the ends, where lines of very unlike components run next to a pure
// one. What is narrower than this and the meshes in rho and T (Spinodal) is missed.
constexpr std::array<double, 9> kSearch{0.02, 0.08, 0.2, 0.35, 0.5, 0.65, 0.8, 0.92, 0.98};

class Lines {
  public:
    Lines(ModelN const& model, CriticalLineOptions const& o)
        : o_(o), tracer_(model, o), spinodal_(tracer_.fluid, tracer_.conditions) {}

    std::vector<CriticalLine> run() {
        for (int c : {0, 1}) {
            CriticalCurve curve;
            if (!tracer_.done && tracer_.from_pure(c, curve)) curves_.push_back(std::move(curve));
        }
        if (o_.detached && !tracer_.done) search();
        if (curves_.empty())
            throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, "the whole binary",
                                     "critical_lines", tracer_.conditions.iterations, std::nan(""),
                                     "no critical point of a pure component within the limits, and "
                                     "none in between");
        for (CriticalCurve const& curve : curves_) split(curve);
        return std::move(lines_);
    }

  private:
    /// Into stretches that are stable, or not.
    void split(CriticalCurve const& curve) {
        std::vector<CriticalNode> const& nodes = curve.nodes;
        CriticalLine line;
        line.begin = curve.begin;
        line.stable = nodes.front().point.stable;
        line.evaluations = curve.evaluations;
        const auto finish = [&] {
            const bool cut = line.end == End::full || line.end == End::interrupted;
            if (line.stable || o_.unstable || cut) lines_.push_back(line);
        };
        for (std::size_t k = 0; k < nodes.size(); ++k) {
            line.points.push_back(nodes[k].point);
            if (k + 1 == nodes.size() || nodes[k + 1].point.stable == line.stable) continue;
            CriticalTracer::EndPoint at;
            const bool found = line.stable ? tracer_.end_point(nodes[k], nodes[k + 1], at)
                                           : tracer_.end_point(nodes[k + 1], nodes[k], at);
            if (at.beyond && line.stable && line.points.size() > 1) line.points.pop_back();
            line.end = found ? End::end_point : End::stuck;
            if (found) {
                if (at.point.x[0] != line.points.back().x[0]) line.points.push_back(at.point);
                line.end_phase = at.phase;
            }
            finish();
            CriticalLine next;
            next.begin = line.end;
            next.begin_phase = line.end_phase;
            next.stable = !line.stable;
            next.evaluations = line.evaluations;
            if (found) next.points.push_back(at.point);
            if (at.beyond && next.stable && k + 2 < nodes.size() && nodes[k + 2].point.stable) ++k;
            line = std::move(next);
        }
        line.end = curve.end;
        finish();
    }

    bool known(Variables const& y) const {
        for (CriticalCurve const& curve : curves_)
            for (std::size_t k = 1; k < curve.nodes.size(); ++k) {
                Variables const& a = curve.nodes[k - 1].y;
                const Variables chord = difference(curve.nodes[k].y, a);
                const double size = length(chord);
                const double s = dot(difference(y, a), chord) / (size * size);
                if (s < -0.2 || s > 1.2) continue;
                if (length(difference(y, along(a, s, chord))) < kSame * size + 1e-6) return true;
            }
        return false;
    }

    /// Where C changes its sign from one spinodal state to its neighbour, a curve passes.
    void search() {
        std::array<std::array<std::vector<SpinodalState>, Spinodal::kDensities>, 2> grid;
        for (std::size_t i = 0; i < kSearch.size(); ++i) {
            auto& now = grid[i % 2];
            auto const& last = grid[(i + 1) % 2];
            const std::vector<double> x{kSearch[i], 1.0 - kSearch[i]};
            for (int k = 0; k < Spinodal::kDensities; ++k) {
                auto const& beside = k > 0 ? now[k - 1] : last[k];
                spinodal_.column({spinodal_.density(x, k), 0.0, x[0], x[1]}, 3, beside, now[k]);
                if (k > 0) changes(beside, now[k], 2);
            }
            if (i > 0)
                for (int k = 0; k < Spinodal::kDensities; ++k) changes(last[k], now[k], 0);
        }
    }
    void changes(std::vector<SpinodalState> const& a, std::vector<SpinodalState> const& b, int k) {
        for (std::size_t j = 0; j < std::min(a.size(), b.size()) && !tracer_.done; ++j) {
            double direction = 0.0;
            for (int i = 0; i < 2; ++i) direction += a[j].u[i] * b[j].u[i];
            SpinodalState end = b[j];
            if (direction < 0.0) end.C = -end.C;
            if (a[j].C * end.C > 0.0) continue;
            tracer_.conditions.u = a[j].u;
            CriticalCurve curve;
            if (tracer_.from_point(
                    between(a[j], end), k, [this](Variables const& y) { return known(y); }, curve))
                curves_.push_back(std::move(curve));
        }
    }

    const CriticalLineOptions o_;
    CriticalTracer tracer_;
    Spinodal spinodal_;
    std::vector<CriticalCurve> curves_;
    std::vector<CriticalLine> lines_;
};
}  // namespace

std::vector<CriticalLine> critical_lines(ModelN const& binary, CriticalLineOptions const& options) {
    if (binary.mdl1.size() != 2) throw ThException(th_no_option);
    return Lines(binary, options).run();
}

}  // namespace corvane
