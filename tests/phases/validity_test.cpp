// Where models hold, and the flags that certificates take from it.
#include "equilibria/phases.h"
#include "support/scratch.h"

#include <corvane/corvane.h>

using corvane::Validity;

namespace {
// Setzmann & Wagner (1991) and Lemmon, McLinden & Wagner (2009) state their ranges: methane from
// the triple point, 90.6941 K, to 625 K and 1000 MPa; propane 85.525 to 650 K, 1000 MPa.
TEST(Validity, FlagsOfCertificates) {
    const Mixture m = mixture_of("MEOS", "GERG", {"methane", "propane"});
    const Validity v = corvane::validity(*m, {{0, 1}});
    EXPECT_EQ(v.T_min, 90.6941);
    EXPECT_EQ(v.T_max, 625);
    EXPECT_EQ(v.p_max, 1000);
    EXPECT_EQ(v.T_triple[0], 90.6941);
    EXPECT_EQ(v.T_triple[1], 85.525);
    EXPECT_TRUE(v.estimated_pairs);
    const Validity published = corvane::validity(*m);
    const struct {
        double T, p, x;
        bool extrapolated, below_triple;
    } cases[] = {{300, 1, 0.5, false, false},
                 {630, 1, 0.5, true, false},
                 {300, 1001, 0.5, true, false},
                 {88, 0.1, 0, true, false},  // methane, which would freeze, is absent
                 {88, 0.1, 0.1, true, true}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.T);
        corvane::FlashOptions o;
        o.validity = &published;
        const auto q = corvane::flash_pT(*m, c.p, c.T, mix(c.x), o).certificate;
        EXPECT_EQ(q.extrapolated, c.extrapolated);
        EXPECT_EQ(q.below_triple, c.below_triple);
        EXPECT_FALSE(q.estimated_pairs);
        o.validity = &v;
        EXPECT_TRUE(corvane::flash_pT(*m, c.p, c.T, mix(c.x), o).certificate.estimated_pairs);
    }
}

TEST(Validity, UnknownIsNoLimit) {
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane"});
    const Scratch scratch;
    const struct {
        char const* line;
        double T_min, T_max, p_max;
    } cases[] = {{"", 0, Validity::unknown, Validity::unknown},
                 {"valid:", 0, Validity::unknown, Validity::unknown},
                 {"valid:\t- - -\n", 0, Validity::unknown, Validity::unknown},
                 {"valid:\t90.5 - 1e3\r\nvalid: 1 2 3", 90.5, Validity::unknown, 1000},
                 {"valid: 1e999 -5 nan\n", 0, Validity::unknown, Validity::unknown},
                 {"valid: 90,5 600x 7\n", 0, Validity::unknown, 7},
                 {"invalid: 1 2 3\nvalid:100\t200", 100, 200, Validity::unknown}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.line);
        scratch.write("CorvaneS/parameters/PR/methane;1", std::string("name:\tmethane\n") + c.line);
        const Validity v = corvane::validity(*m);
        EXPECT_EQ(v.T_min, c.T_min);
        EXPECT_EQ(v.T_max, c.T_max);
        EXPECT_EQ(v.p_max, c.p_max);
        EXPECT_EQ(v.T_triple[0], 0);
    }
    for (auto const* index :
         {"methane\t90\n", "name\tTtriple [K]\nmethane", "Ttriple [K]\nmethane\n",
          "name\tTtriple [K]\npropane\t85\nmethane\t-\t7\n", "\n\nmethane\t1"}) {
        SCOPED_TRACE(index);
        scratch.write("CorvaneS/substances.tsv", index);
        EXPECT_EQ(corvane::validity(*m).T_triple[0], 0);
    }
    scratch.write("CorvaneS/substances.tsv", "name\tM\tTtriple [K]\r\nmethane\t16\t90.7\r\n");
    EXPECT_EQ(corvane::validity(*m).T_triple[0], 90.7);
}
}  // namespace
