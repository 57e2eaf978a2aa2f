// Calculations with threads of their own, and what several threads make when they first ask for it.
#include "support/mixtures.h"
#include "support/scratch.h"
#include "threads/together.h"

#include <corvane/corvane.h>
#include <corvane/state/phase_columns.h>

namespace {
/// Pressures, heat capacities and speeds of sound over a grid, by `threads`.
Numbers columns(Model1 const& m, int threads) {
    constexpr std::size_t n = 20000;  // several tasks
    std::vector<double> T(n), rho(n);
    for (std::size_t k = 0; k < n; ++k) {
        T[k] = (0.6 + 1e-4 * static_cast<double>(k)) * m.Tcrit();
        rho[k] = 1e-3 * static_cast<double>(1 + k % 2500) / m.vcrit();
    }
    Numbers v(3 * n);
    corvane::PropertyColumns to;
    to.p = v.data(), to.cp = v.data() + n, to.w = v.data() + 2 * n;
    v.push_back(
        static_cast<double>(corvane::phase_properties(m, n, T.data(), rho.data(), to, threads)));
    return v;
}

// Threads within threads, on one model: arrays by one, two and four threads.
TEST(Threads, ArraysOfStates) {
    for (char const* eos : {"PR", "MEOS", "PCSAFT"}) {
        SCOPED_TRACE(eos);
        const Model m = load_set(eos, "carbon_dioxide");
        m->ideal.load();
        const Numbers alone = columns(*m, 1);
        EXPECT_TRUE(same(columns(*m, 4), alone));
        expect_same_bits(3, {2}, [&](int k) { return columns(*m, 1 << k); });
    }
}

// Two liquids and a vapour by one model, each flash with the work space of its thread.
TEST(Threads, FlashesOfSeveralPhases) {
    const Mixture m = estimated_mixture("PR", "vdW1", {"methane", "hexane", "water"});
    const Vector<double> z = vec({0.4, 0.3, 0.3});
    expect_same_bits(6, {4}, [&](int k) {
        const auto q = corvane::flash_pT(*m, 1.0 + 0.2 * k, 300.0 + 5.0 * k, z);
        Numbers v{double(q.certificate.phases.size())};
        for (auto const& phase : q.certificate.phases) {
            v.push_back(phase.rho);
            v.insert(v.end(), phase.x.data, phase.x.data + phase.x.size());
        }
        return v;
    });
}

// One curve read by all, and a file that all of them find missing, write and read.
TEST(Threads, PrecomputedSaturation) {
    const Scratch scratch;
    const auto fluid = corvane::open("PR", "propane", {.home = corvane::DataHome(scratch.home())});
    const corvane::SaturationExpansion curve(*fluid.model);
    for (char const* folder : {"first", "second"}) {
        SCOPED_TRACE(folder);
        std::atomic<int> different = 0;
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([&] {
                const auto kept = corvane::kept_saturation(fluid, {scratch.dir() / folder});
                for (double T = 150; T < 365; T += 5)
                    if (!(kept.curve.p_at(T) == curve.p_at(T))) ++different;
            });
        for (std::thread& t : threads) t.join();
        EXPECT_EQ(different, 0);
        EXPECT_TRUE(corvane::kept_saturation(fluid, {scratch.dir() / folder}).read);
    }
}

// Fluids and mixtures by name, from tables that are read when the first thread asks for them.
TEST(Threads, OpenByName) {
    const Scratch scratch;
    const corvane::DataHome home(scratch.home());
    expect_same_bits(4, {4}, [&](int k) {
        char const* const names[] = {"propane", "carbon_dioxide", "water", "methane"};
        const auto fluid = corvane::open("MEOS", names[k], {.home = home});
        const auto mixture =
            corvane::open_mixture("PR+vdW1", {"methane", names[k % 3]}, {.home = home});
        Numbers v{fluid.model->Tcrit(), mixture.model->mdl1[1]->Tcrit()};
        for (double Tr : {0.75, 0.85, 0.95}) {
            const double T = Tr * fluid.model->Tcrit();
            v.push_back(corvane::pure_saturation_T(*fluid.model, T).p);
            v.push_back(corvane::phase_properties(*fluid.model, T, 1e-4).cp);
            v.push_back(fluid.model->ideal.Cpm(T));
        }
        return v;
    });
}
}  // namespace
