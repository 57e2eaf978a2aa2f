// Bubble and dew points beyond the end of their boundary. Internal.
#pragma once

#include <corvane/fit/equilibrium.h>

#include <cmath>
#include <vector>

namespace corvane::fit {

/// The boundary of a given composition in ln T and ln p turns back where T has its largest value
/// (the cricondentherm): p(T) ends there, with a slope that grows without bound, and so would a
/// penalty that begins there. It is followed up to the point at which |d ln p/d ln T| is kSteepest,
/// through its critical point if that comes first, and continued from there along its tangent. That
/// has one value at every T, and by the theorem of the envelope of tangents continuous first
/// derivatives in T and in the parameters of the model.
///
/// Continuation by a ratio of densities, which passes zero at a critical point, excludes the
/// trivial solution: Michelsen, Fluid Phase Equilib. 4 (1980) 1. An extrapolation from where the
/// slope has a given value instead of a root that is not there: Mathias, Boston & Watanasiri, AIChE
/// J. 30 (1984) 182, of densities.
class Boundary {
  public:
    Boundary(Equilibrium const& equilibrium, int n, std::size_t points)
        : equilibrium_(equilibrium), n_(n), kept_(points) {}

    /// Whether a solution at the measured T is as near to the end as to be no value of its own.
    static bool steep(Equilibrium::Linear const& at) { return !(std::fabs(at.slope) <= kSteepest); }
    /// Where the boundary is continued from, and what it is there.
    struct End {
        Phases phases;
        double T = 0.0, p = 0.0, slope = 0.0;  ///< K, MPa, d ln p/d ln T
        std::vector<double> w, w_slope;        ///< composition of the other phase, by ln T
        double p_at(double t) const { return p * (1.0 + slope * std::log(t / T)); }
        double w_at(std::size_t i, double t) const { return w[i] + w_slope[i] * std::log(t / T); }
    };
    /// The end at or below the measured T. `near`: a solution there, or of the last parameters; or
    /// empty. False if none is found.
    bool end(std::size_t index, Point const& point, Phases const& near, End& end);
    void forget() { kept_.assign(kept_.size(), Spot{}); }

  private:
    static constexpr double kSteepest = 50.0;  // a boiling liquid of 1 Pa has 40

    /// A pair on the boundary, by the logarithm v of the ratio of the densities of component k.
    struct Spot {
        Phases phases;
        double T = 0.0, p = 0.0, v = 0.0;
        int k = 0;
        double hot = 0.0;         // sign of the change of v towards the end
        Eigen::VectorXd tangent;  // of u and ln T, by v
        double p_v = 0.0;         // that of ln p
        double T_v() const { return tangent[tangent.size() - 1]; }
    };
    bool solve(Point const& point, Spot& spot) const;
    bool moved(Point const& point, Spot const& from, double v, Spot& to) const;
    bool begin(Point const& point, Phases const& phases, double T, Spot& spot) const;
    static double gentle(Spot const& spot);
    static Spot between(Spot const& a, Spot const& b, double v);
    template <class F>
    bool root(Point const& point, Spot const& a, Spot const& b, F f, Spot& spot) const;
    bool ends(Point const& point, Spot const& a, Spot const& b, Spot& end) const;
    bool follow(Point const& point, Spot& spot, double way, int steps, Spot& end) const;
    bool follow(Point const& point, Spot& spot, Spot& end) const;
    bool begin_cold(Point const& point, Spot& spot) const;
    bool find(Point const& point, Phases const& near, Spot& spot, Spot& end) const;

    Equilibrium const& equilibrium_;
    int n_;
    std::vector<Spot> kept_;
};

}  // namespace corvane::fit
