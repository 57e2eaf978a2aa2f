#include <corvane/core/constants.h>
#include <plugins/meos/four_states.h>
#include <plugins/meos/many_densities.h>

#include <cmath>

namespace corvane::meos {
namespace {

[[gnu::always_inline]] inline void begin_in_lanes(Equation const& e, Plan const& plan,
                                                  V4 const& tau, V4 const& ln_tau, Work& w) {
    functions_of_tau(e, plan, tau, ln_tau, w);
    sum_slots(e, plan, w);
}
void begin_narrow(Equation const& e, Plan const& plan, V4 const& tau, V4 const& ln_tau, Work& w) {
    begin_in_lanes(e, plan, tau, ln_tau, w);
}
void at_narrow(Equation const& e, Plan const& plan, V4 const& tau, V4 const& delta, Work& w,
               Four& v) {
    four_densities<false>(e, plan, tau, delta, w, v);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void begin_wide(Equation const& e, Plan const& plan, V4 const& tau,
                                        V4 const& ln_tau, Work& w) {
    begin_in_lanes(e, plan, tau, ln_tau, w);
}
[[gnu::target("avx2")]] void at_wide(Equation const& e, Plan const& plan, V4 const& tau,
                                     V4 const& delta, Work& w, Four& v) {
    four_densities<false>(e, plan, tau, delta, w, v);
}
constexpr auto begin = [] { return lanes::wide ? begin_wide : begin_narrow; };
constexpr auto at = [] { return lanes::wide ? at_wide : at_narrow; };
#else
constexpr auto begin = [] { return begin_narrow; };
constexpr auto at = [] { return at_narrow; };
#endif

/// Four states on their way.
struct Quad {
    int size = 0, index[4];
    double T[4];
    Climb climb[4] = {{0, 0, {}}, {0, 0, {}}, {0, 0, {}}, {0, 0, {}}};
};

void solve(Equation const& e, Plan const& plan, Work& w, Quad& quad, double* rho) {
    V4 tau{}, ln_tau{}, delta{};
    for (int k = 0; k < 4; ++k) {
        tau[k] = e.Ts() / quad.T[k];
        ln_tau[k] = std::log(tau[k]);
    }
    begin()(e, plan, tau, ln_tau, w);
    bool ended[4] = {};
    for (int open = 4; open > 0;) {
        double x[4];
        for (int k = 0; k < 4; ++k)
            if (!ended[k]) delta[k] = (x[k] = quad.climb[k].next()) * e.vs();
        Four v;
        at()(e, plan, tau, delta, w, v);
        for (int k = 0; k < 4; ++k) {
            if (ended[k]) continue;
            const Value one{v.a[k], v.d1[k], v.d2[k], v.d3[k]};
            if (!quad.climb[k].ends({x[k], x[k] * one.Z(), one.slope(), one.curvature()})) continue;
            ended[k] = true, --open;
            if (quad.climb[k].root() > 0.0) rho[quad.index[k]] = quad.climb[k].root();
        }
    }
}

}  // namespace

void densities(Equation const& e, StartTables const& tables, int count, double const* p,
               double const* T, double* rho) {
    const Plan plan(e);
    Work w;
    Quad quad;
    for (int i = 0; i < count; ++i) {
        if (!(T[i] > 0.0) || !std::isfinite(T[i])) continue;
        const auto climb = search_by_tables(e, tables, T[i], p[i] / (R * T[i]));
        if (!climb) continue;
        quad.index[quad.size] = i, quad.T[quad.size] = T[i], quad.climb[quad.size] = *climb;
        if (++quad.size < 4) continue;
        solve(e, plan, w, quad, rho);
        quad.size = 0;
    }
}

}  // namespace corvane::meos
