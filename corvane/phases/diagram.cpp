#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/diagram.h>
#include <corvane/phases/pair.h>
#include <corvane/phases/saturation.h>
#include <corvane/phases/stability.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace corvane {
namespace {
constexpr double kTrace = 1e-4, kAlike = 0.03, kShortest = 1e-6;

Vector<double> at_end(int component, double trace) {
    Vector<double> z(2);
    z[component] = 1.0 - trace;
    z[1 - component] = trace;
    return z;
}

class Tracer {
  public:
    Tracer(ModelN const& model, bool at_T, double value, DiagramOptions const& o,
           SaturationPoint const& first)
        : fluid_(model, first.given.x), o_(o), pair_(fluid_), stability_(fluid_) {
        (at_T ? pair_.T : pair_.p) = value;
        begin_ = first.given.x[0];
        pair_.start({first.given.x[0], first.given.x[1]}, first.given.rho,
                    {first.incipient.x[0], first.incipient.x[1]}, first.incipient.rho, first.T);
    }

    bool begin() {
        choose(0);
        pair_.value = at(pair_.u, 0);
        if (!pair_.solve(20) || !pair_.tangent(t_)) return false;
        // towards the other component: the logit of phase a leaves its end
        if ((t_[0] - t_[1] > 0.0) != (begin_ < 0.5))
            for (double& v : t_) v = -v;
        record();
        return true;
    }

    Diagram run() {
        double step = o_.step;
        while (true) {
            const int count = static_cast<int>(d_.points.size());
            if (count >= o_.points) return end(DiagramEnd::full);
            if (o_.progress && !o_.progress(count)) return end(DiagramEnd::interrupted);
            const std::vector<double> u = pair_.u, t = t_;
            int variable = 0;
            double most = 0.0, moves = 0.0;
            for (int k = 0; k < 4; ++k) {
                const double size = std::fabs(at(t, k)) * weight(u, k);
                if (size > most) most = size, variable = k;
            }
            // Bounds of one step: `step` in x and y, 0.5 in the logits, a fraction of the ratios.
            for (int k = 0; k < 2; ++k)
                moves = std::max(moves, std::fabs(at(t, k)) * std::max(fraction(u, k), 0.1));
            for (int k = 2; k < 4; ++k) moves = std::max(moves, 0.1 * std::fabs(at(t, k)));
            bool met = false;
            for (;; step *= 0.4) {
                if (step < kShortest) return end(DiagramEnd::stuck);
                const double h = step / moves;
                pair_.iterations = 0;
                choose(variable);
                pair_.value = at(u, variable) + h * at(t, variable);
                for (std::size_t i = 0; i < u.size(); ++i) pair_.u[i] = u[i] + h * t[i];
                // The ratio through zero: the critical point lies on the way.
                double largest = 0.0;
                for (int k = 2; k < 4; ++k) largest = std::max(largest, std::fabs(at(pair_.u, k)));
                if (largest < kAlike || at(pair_.u, 2) * at(u, 2) + at(pair_.u, 3) * at(u, 3) < 0)
                    met = true;
                if (met) break;
                if (pair_.solve(8) && pair_.a.S > 0 && pair_.b.S > 0 && pair_.pressure() > 0 &&
                    pair_.tangent(t_) && turn(t))
                    break;
            }
            if (met) return critical(u, t);
            record();
            TieLine const& q = d_.points.back();
            if (q.p > o_.p_max) return end(DiagramEnd::limit);
            const double far = begin_ < 0.5 ? 1 - q.x : q.x;
            if (far < kTrace) return end(DiagramEnd::pure);
            step = pair_.iterations <= 5 ? std::min(1.5 * step, o_.step) : 0.7 * step;
        }
    }

  private:
    /// 0, 1: logits of component 0 in a and b; 2, 3: ratios of the partial densities, b to a.
    static double at(std::vector<double> const& u, int k) {
        return k < 2 ? u[2 * k] - u[2 * k + 1] : u[k] - u[k - 2];
    }
    static double fraction(std::vector<double> const& u, int k) {  // x·(1 − x)
        const double x = 1.0 / (1.0 + std::exp(-at(u, k)));
        return x * (1.0 - x);
    }
    static double weight(std::vector<double> const& u, int k) {
        return k < 2 ? std::max(fraction(u, k), 0.05) : 0.1;
    }
    void choose(int k) {
        pair_.row.assign(5, 0.0);
        if (k < 2) {
            pair_.row[2 * k] = 1.0;
            pair_.row[2 * k + 1] = -1.0;
        } else {
            pair_.row[k] = 1.0;
            pair_.row[k - 2] = -1.0;
        }
    }
    /// Keeps the direction; false if the curve turned by more than 60 degrees.
    bool turn(std::vector<double> const& last) {
        double dot = 0.0, a = 0.0, b = 0.0;
        for (std::size_t i = 0; i < last.size(); ++i) {
            dot += last[i] * t_[i];
            a += last[i] * last[i];
            b += t_[i] * t_[i];
        }
        if (dot < 0)
            for (double& v : t_) v = -v;
        return std::fabs(dot) > 0.5 * std::sqrt(a * b);
    }
    void record() {
        PhaseState const &a = pair_.a, &b = pair_.b;
        const double p = pair_.pressure();
        d_.points.push_back({a.T, p, a.x[0], b.x[0], a.rho, b.rho, true});
        for (int k = 0; k < 2; ++k) d_.dmu = std::max(d_.dmu, std::fabs(a.m[k] - b.m[k]));
        const double rounding = 2e-15 * R * a.T * std::max(a.S, b.S);
        d_.dp = std::max(d_.dp, std::max(0.0, std::fabs(a.p - b.p) - rounding) / p);
        if (o_.stability && !stability_.test(a, p, &b, true).stable) {
            ++d_.unstable;
            d_.points.back().stable = false;
        }
    }
    /// Both phases at the point where the larger ratio is zero.
    Diagram critical(std::vector<double> u, std::vector<double> const& t) {
        const int k = std::fabs(at(u, 2)) > std::fabs(at(u, 3)) ? 2 : 3;
        // The means of the phases are even functions of the ratio s: f(0) = f(s) − s·f'(s)/2 +
        // O(s⁴).
        const double h = -0.5 * at(u, k) / at(t, k);
        PhaseState& s = pair_.a;
        for (int i = 0; i < 2; ++i)
            s.rho_i[i] = std::exp(0.5 * (u[i] + u[i + 2] + h * (t[i] + t[i + 2])));
        if (fluid_.evaluate(s, std::exp(u[4] + h * t[4]), phase_all))
            d_.points.push_back({s.T, s.p, s.x[0], s.x[0], s.rho, s.rho, true});
        return end(DiagramEnd::critical);
    }
    Diagram end(DiagramEnd why) {
        d_.end = why;
        d_.evaluations = fluid_.evaluations;
        return std::move(d_);
    }

    const FluidModel fluid_;
    const DiagramOptions o_;
    PairSolver pair_;
    Stability stability_;
    double begin_ = 0.0;
    std::vector<double> t_;
    Diagram d_;
};

Diagram trace(ModelN const& model, bool at_T, double value, DiagramOptions const& o) {
    if (model.mdl1.size() != 2) throw ThException(th_no_option);
    if (!(value > 0.0) || !std::isfinite(value)) throw ThException(th_out_of_range);
    const std::string name = at_T ? "diagram_pxy" : "diagram_Txy";
    char state[40];
    std::snprintf(state, sizeof state, at_T ? "T = %g K" : "p = %g MPa", value);
    const int heavy = model.mdl1[0]->Tcrit() > model.mdl1[1]->Tcrit() ? 0 : 1;
    bool below = false;
    for (int component : {heavy, 1 - heavy}) {
        Model1 const& c = *model.mdl1[component];
        if (!(value < (at_T ? c.Tcrit() : c.pcrit()))) continue;
        below = true;
        try {
            const Vector<double> z = at_end(component, kTrace);
            Tracer t(model, at_T, value, o,
                     at_T ? bubble_T(model, value, z) : bubble_p(model, value, z));
            if (t.begin()) return t.run();
        } catch (EquilibriumFailure const&) {
            // the other end, if there is one
        }
    }
    throw EquilibriumFailure(
        below ? EquilibriumFailure::Kind::gave_up : EquilibriumFailure::Kind::no_solution, state,
        name, 0, std::nan(""),
        below ? "no bubble point next to the pure component" : "above both critical points");
}
}  // namespace

Diagram diagram_pxy(ModelN const& model, double T, DiagramOptions const& options) {
    return trace(model, true, T, options);
}
Diagram diagram_Txy(ModelN const& model, double p, DiagramOptions const& options) {
    return trace(model, false, p, options);
}

}  // namespace corvane
