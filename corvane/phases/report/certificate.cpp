#include <corvane/core/constants.h>
#include <corvane/phases/phase/phase.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/report/least_fraction.h>
#include <corvane/phases/report/words.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace corvane {
namespace {
std::string text(EquilibriumFailure::Kind kind, std::string const& state, std::string const& solver,
                 int iterations, double residual, std::string const& advice) {
    std::string s = solver + (kind == EquilibriumFailure::Kind::no_solution ? ": no solution at "
                                                                            : ": gave up at ");
    s += state + " after " + std::to_string(iterations) + " iterations";
    if (std::isfinite(residual)) s += ", residual " + shortest(residual, 2);
    return advice.empty() ? s : s + "; " + advice;
}
}  // namespace

EquilibriumFailure::EquilibriumFailure(Kind kind, std::string state, std::string solver,
                                       int iterations, double residual, std::string advice)
    : std::runtime_error(text(kind, state, solver, iterations, residual, advice)),
      kind_(kind),
      state_(std::move(state)),
      solver_(std::move(solver)),
      iterations_(iterations),
      residual_(residual),
      advice_(std::move(advice)) {}

std::string Certificate::line() const {
    std::string s = "phases " + std::to_string(phases.size()) + ", dmu " + scientific(dmu) +
                    ", dp/p " + scientific(dp) + ", tangent-plane distance " + scientific(tpd);
    if (bounded())
        s += ", errors below " +
             (value_error > 0.0 ? scientific(value_error) + " in p or T (relative), " : "") +
             scientific(x_error) + " in x, " + scientific(rho_error) + " in rho (relative)";
    s += ", evaluations " + std::to_string(evaluations);
    if (test == StabilityTest::quick) s += ", quick stability test";
    if (near_trivial) s += ", phases nearly alike";
    if (estimated_pairs) s += ", estimated pairs";
    if (extrapolated) s += ", extrapolated";
    if (below_triple) s += ", below a triple point";
    return s;
}

void Certificate::flag(Validity const* v, double T, double p, Vector<double> const& z) {
    estimated_pairs = v && v->estimated_pairs;
    extrapolated = v && (T < v->T_min || T > v->T_max || p > v->p_max);
    below_triple = false;
    for (int i = 0; v && i < std::min(z.size(), v->T_triple.size()); ++i)
        if (z[i] > 0.0 && T < v->T_triple[i]) below_triple = true;
}

void certify(FluidModel const& fluid, double p, std::vector<PhaseState const*> phases,
             Certificate& c) {
    c.dmu = c.dp = 0.0;
    c.near_trivial = phases.size() > 1;
    c.phases.clear();
    c.phases.reserve(phases.size());
    PhaseState const& first = *phases.front();
    for (PhaseState const* s : phases) {
        const double rounding = R * s->T * s->P_rounding();
        c.dp = std::max(c.dp, std::max(0.0, std::fabs(s->p - p) - rounding) / p);
        if (std::fabs(s->rho / first.rho - 1) > 0.01) c.near_trivial = false;
        for (int k = 0; k < s->size(); ++k)
            if (std::fabs(s->x[k] - first.x[k]) > 0.01) c.near_trivial = false;
        c.phases.push_back({s->rho, fluid.expand(s->x)});
    }
    for (int k = 0; k < first.size(); ++k) {
        double least = first.m[k];
        for (PhaseState const* s : phases) least = std::min(least, s->m[k]);
        for (PhaseState const* s : phases)
            if (!absent(s->x[k]))
                c.dmu = std::max(c.dmu, std::fabs(s->m[k] - least));
    }
    if (!std::isfinite(c.dmu + c.dp)) c.dmu = std::numeric_limits<double>::infinity();
}

}  // namespace corvane
