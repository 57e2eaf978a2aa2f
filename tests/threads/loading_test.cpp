// Models attached, loaded and given back by threads at the same time, from the first call on.
#include "support/mixtures.h"
#include "threads/together.h"

#include <corvane/corvane.h>

namespace {
Numbers one(int k) {
    char const* const equations[] = {"PR", "SRK", "PCSAFT", "MEOS"};
    char const* const mixing[] = {"vdW1", "vdW1", "LB", "GERG"};
    char const* const names[] = {"methane", "propane", "carbon_dioxide"};
    const Model m = load_set(equations[k % 4], names[k % 3]);
    m->ideal.load();
    m->visco.load0();
    Numbers v(8);
    v[0] = m->Tcrit();
    double rho = 0;
    v[1] = m->Cpm(0.1, 300, 3, rho);
    v[2] = rho;
    v[3] = m->visco.eta0(300);
    if (k % 3 == 2) m->solid.load();
    v[4] = m->solid.Ttrp();
    const Mixture pair = mixture_of(equations[k % 4], mixing[k % 4], {names[k % 3], "ethane"});
    Vector<double> x(2);
    x.set(0.5);
    rho = 0;
    v[5] = pair->Cpm(0.1, 300, x, 3, rho);
    v[6] = rho;
    double a = ran_shuffle();  // a sequence of the thread's own
    v[7] = a > 0 && a < 1;
    v.push_back(m->id());
    return v;
}

TEST(Threads, LoadModels) {
    std::vector<std::thread> first;  // nothing has been loaded yet: the libraries, the locale
    std::atomic<int> failures = 0;
    for (int t = 0; t < 8; ++t)
        first.emplace_back([&, t] {
            try {
                one(t);
            } catch (...) {
                ++failures;
            }
        });
    for (std::thread& t : first) t.join();
    EXPECT_EQ(failures, 0);
    expect_same_bits(12, {4}, one);
}
}  // namespace
