#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/stability/hull.h>
#include <corvane/phases/ternary/ternary_regions.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {
constexpr double kStiff = 0.3;   // of stiffness(): above it nothing unstable is near
constexpr double kJump = 0.15;   // of ln rho between neighbours: different density roots

/// Looks for splits: on the edges, at the mesh points, and between them.
class Builder : TernaryRegions {
  public:
    Builder(ModelN const& model, double T, double p, TernaryOptions const& o)
        : TernaryRegions(model, T, p, o) {
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

    std::exception_ptr refusal_;
    std::vector<double> rho_;  // of mesh points that are one phase, else 0
    int asked_ = 0, refused_ = 0;
};
}  // namespace

TernaryDiagram ternary_diagram(ModelN const& ternary, double T, double p,
                               TernaryOptions const& o) {
    if (ternary.mdl1.size() != 3) throw ThException(th_no_option);
    if (!(T > 0.0) || !(p > 0.0) || !std::isfinite(T + p) || !(o.step > 0.0) || !(o.step <= 1.0) ||
        o.mesh < 2 || o.mesh > 100 || o.points < 2)
        throw ThException(th_out_of_range);
    return Builder(ternary, T, p, o).run();
}

}  // namespace corvane
