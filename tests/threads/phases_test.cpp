// One model shared by threads: the same numbers to the last bit, in whatever order they are asked
// for.
#include "equilibria/phases.h"
#include "threads/together.h"

#include <corvane/corvane.h>


namespace {
constexpr int kTasks = 8;

Numbers task(ModelN const& m, int k) {
    Numbers v;
    auto add = [&](corvane::Certificate const& c) {
        for (double x : {c.dmu, c.dp, c.tpd, double(c.evaluations)}) v.push_back(x);
        for (auto const& phase : c.phases) {
            v.push_back(phase.rho);
            v.insert(v.end(), phase.x.data, phase.x.data + phase.x.size());
        }
    };
    if (k < 3) {
        add(corvane::bubble_T(m, 220 + 10 * k, mix(0.4)).certificate);
    } else if (k < 5) {
        add(corvane::dew_p(m, 0.5 * k, mix(0.4)).certificate);
    } else if (k == 5) {
        add(corvane::flash_pT(m, 2, 250, mix(0.4)).certificate);
    } else if (k == 6) {
        corvane::EnvelopeOptions o;
        o.step = 0.3;
        for (auto const& q : corvane::phase_envelope(m, mix(0.4), o).points)
            v.insert(v.end(), {q.T, q.p, q.rho, q.rho2, q.y[0]});
    } else {
        corvane::DiagramOptions o;
        o.step = 0.2;
        for (auto const& q : corvane::diagram_pxy(m, 250, o).points)
            v.insert(v.end(), {q.p, q.x, q.y, q.rho_x, q.rho_y});
    }
    return v;
}
TEST(Threads, GiveTheSameBits) {
    for (auto const& [eos, mth] :
         {std::pair{"PR", "vdW1"}, {"SRK", "vdW1"}, {"PCSAFT", "LB"}, {"MEOS", "GERG"}}) {
        SCOPED_TRACE(eos);
        const Mixture m = mixture_of(eos, mth, {"methane", "propane"});
        expect_same_bits(kTasks, {1, 2, 8}, [&](int k) { return task(*m, k); });
    }
}
}  // namespace
