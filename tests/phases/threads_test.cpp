// One model shared by threads: the same numbers to the last bit, in whatever order they are asked
// for.
#include "equilibria/phases.h"

#include <corvane/corvane.h>

#include <atomic>
#include <cstring>
#include <thread>

namespace {
using Numbers = std::vector<double>;
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
bool same(Numbers const& a, Numbers const& b) {
    return a.size() == b.size() && !std::memcmp(a.data(), b.data(), a.size() * sizeof(double));
}

TEST(Threads, GiveTheSameBits) {
    for (auto const& [eos, mth] :
         {std::pair{"PR", "vdW1"}, {"SRK", "vdW1"}, {"PCSAFT", "LB"}, {"MEOS", "GERG"}}) {
        SCOPED_TRACE(eos);
        const Mixture m = mixture_of(eos, mth, {"methane", "propane"});
        std::vector<Numbers> alone;
        for (int k = 0; k < kTasks; ++k) {
            alone.push_back(task(*m, k));
            EXPECT_GT(alone.back().size(), 8u);
        }
        for (int count : {1, 2, 8}) {
            std::atomic<int> different = 0;
            std::vector<std::thread> threads;
            for (int t = 0; t < count; ++t)
                threads.emplace_back([&, t] {  // each begins with a task of its own, downwards
                    for (int k = kTasks; k-- > 0;) {
                        const int at = (k + 3 * t) % kTasks;
                        if (!same(task(*m, at), alone[static_cast<unsigned>(at)])) ++different;
                    }
                });
            for (std::thread& t : threads) t.join();
            EXPECT_EQ(different, 0);
        }
    }
}
}  // namespace
