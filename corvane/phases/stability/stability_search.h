// The tangent-plane test of one phase from its starts on. Internal to the library.
#pragma once

#include <corvane/phases/stability/stability.h>
#include <corvane/phases/stability/stability_line.h>

#include <vector>

namespace corvane::inline detail {

/// One test and what it has found so far. Parts of it are false where it may end.
class StabilitySearch {
  public:
    static constexpr int kSubstitutions = 3;
    static constexpr double kPurest = 1e-12;  // of the others in one that is as good as pure
    static constexpr double kPure = 0.998, kHalf = 0.5;  // of components in a start
    static constexpr double kLow = 0.6,
                            kHigh = 1.1;  // of a distance over an ideal mixture's, see note()

    StabilitySearch(Stability& of, PhaseState const& phase, double p, PhaseState const* known,
                    bool first)
        : of_(of),
          phase_(phase),
          known_(known),
          p_(p),
          first_(first),
          line_(of.fluid_, phase, p, of.s_, of.way_) {}
    StabilityResult run();

  private:
    using End = Stability::End;
    bool itself();
    void binary();
    bool below(std::vector<double> const& x, double limit);
    bool nearly_pure();
    void from_starts();
    void beside_the_phase();
    void toward(int a, int b, double part);
    double note(int a, int b, double distance);
    void low_start(int a, int b, double part);
    void between_minima();
    void along_lines();
    void to_pure(PhaseState const& from, int pure);
    void on_line(DistanceLine::Node const& a, DistanceLine::Node const& m,
                 DistanceLine::Node const& b);
    void late(int k);
    class Edge;  // stability_edge.cpp
    void without_liquid(int k);
    void dissolving(std::size_t start);
    void pair_alone(int a, int b);
    bool ends(std::size_t start, int substitutions = kSubstitutions);
    bool record(End end);
    void take(double tpd);

    Stability& of_;
    PhaseState const &phase_, *known_;
    double p_;
    bool first_;
    StabilityResult r_;
    double best_ = 1e300;
    double tpd_ = 0.0;                // of the last descent
    std::size_t at_ = 0;              // in starts_: no descent began from there on
    std::vector<double> at_start_;    // distances there
    std::vector<double> rho_, over_;  // densities and potentials over those of the phase there
    std::vector<double> low_, high_;  // of each component: range of note() of mixtures with it
    std::vector<std::vector<double>> minima_;
    DistanceLine line_;
};

}  // namespace corvane::inline detail
