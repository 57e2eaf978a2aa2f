#include <plugins/meos/four_states.h>
#include <plugins/meos/states.h>

#include <cmath>

namespace corvane::meos {
namespace {

[[gnu::always_inline]] inline void four_states(Equation const& e, Plan const& plan, V4 const& tau,
                                               V4 const& ln_tau, V4 const& delta, Work& w,
                                               Four& v) {
    functions_of_tau(e, plan, tau, ln_tau, w);
    four_densities<true>(e, plan, tau, delta, w, v);
}
void narrow(Equation const& e, Plan const& plan, V4 const& tau, V4 const& ln_tau, V4 const& delta,
            Work& w, Four& v) {
    four_states(e, plan, tau, ln_tau, delta, w, v);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void wide(Equation const& e, Plan const& plan, V4 const& tau,
                                  V4 const& ln_tau, V4 const& delta, Work& w, Four& v) {
    four_states(e, plan, tau, ln_tau, delta, w, v);
}
#endif

}  // namespace

bool in_lanes(Equation const& e) {
    return e.extras.empty() && e.levels == 0 && e.association.empty();
}

void second(Equation const& e, int count, double const* rho, double const* T, double* const* d) {
    const double Ts = e.Ts(), vs = e.vs();
    const Plan plan(e);
    Work w;
    for (int i = 0; i < count; i += 4) {
        V4 tau{}, ln_tau{}, delta{};
        for (int k = 0; k < 4; ++k) {
            tau[k] = Ts / T[i + k];
            ln_tau[k] = std::log(tau[k]);  // as Isotherm has it
            delta[k] = rho[i + k] * vs;
        }
        Four v;
#if defined(__x86_64__)
        if (lanes::wide)
            wide(e, plan, tau, ln_tau, delta, w, v);
        else
#endif
            narrow(e, plan, tau, ln_tau, delta, w, v);
        put(d[0] + i, v.a);
        put(d[1] + i, -v.t1);
        put(d[2] + i, v.t2 + 2.0 * v.t1);
        put(d[3] + i, v.d1);
        put(d[4] + i, -v.dt);
        put(d[5] + i, v.d2);
    }
}

}  // namespace corvane::meos
