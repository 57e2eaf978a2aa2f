// Phase diagrams of ternary mixtures at given temperature and pressure.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/binary/diagram.h>
#include <corvane/phases/critical/critical.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/report/curve_end.h>
#include <corvane/phases/report/line_options.h>

#include <array>
#include <vector>

class ModelN;

namespace corvane {

/// Two phases in equilibrium, x over the three components. A tie line next to an edge of the
/// triangle may have traces of a component; on the edge it is exactly 0.
struct TernaryTieLine {
    std::array<PhaseRecord, 2> phases;
    /// As in Certificate: the evidence for this tie line. At a plait point 0 and not-a-number.
    double dmu = 0.0, dp = 0.0, tpd = 0.0;
    double x_error = Certificate::unknown;
};

/// Where a region of two phases begins or ends, and why: edge (at a binary split; the last tie line
/// is that); plait (its phase stands for both of the last tie line); three_phase (at a side of a
/// triangle, which is the last tie line); closed (the tie lines come back to the first one: the
/// region is a ring); full; interrupted; stuck.
using TernaryEnd = CurveEnd;

/// Tie lines in order. phases[0] of them is the phase that is denser (by mass) half-way.
struct TernaryRegion {
    std::vector<TernaryTieLine> tie_lines;
    TernaryEnd begin = TernaryEnd::stuck, end = TernaryEnd::stuck;
    /// A label: vapour–liquid where half-way the lighter phase is below its mole-fraction average of
    /// the critical densities, and the denser one above; no certificate says so.
    PhasePair kind = PhasePair::liquid_liquid;
    /// The worst of its tie lines but plait points; x_error is unknown where one has no bound.
    double dmu = 0.0, dp = 0.0, tpd = 0.0, x_error = 0.0;
};

/// Three phases, by falling mass density: any whole inside the triangle splits into them.
struct TernaryTriangle {
    std::array<PhaseRecord, 3> phases;
    Certificate certificate;
};

/// What is stable at T and p. Outside all regions and triangles there is one phase.
struct CORVANE_API TernaryDiagram {
    double T = 0.0, p = 0.0;  ///< K, MPa
    std::vector<TernaryRegion> regions;
    std::vector<TernaryTriangle> three_phase;
    /// Certified by the critical conditions at their x, rho and T, which those of tie lines become
    /// where the distance of the phases is 0; `conditions` is at most 1e-8, since both determine the
    /// third derivative in their own way.
    std::vector<CriticalPoint> plait;
    /// Wholes of which nothing certain is known: flashes that gave up, splits that could not be
    /// traced, points where tie lines cross.
    std::vector<Vector<double>> open;
    long evaluations = 0;

    /// Is every region explained at both ends, and nothing open?
    bool complete() const;
};

/// A step is the longest in the compositions of both phases together, about.
struct TernaryOptions : CurveOptions {
    int mesh = 10;  ///< parts of an edge in the search, 2 to 100
};

/// The diagram of three components at p [MPa], T [K].
///
/// Seeds: flash_pT of the binaries in the middle of every facet of the convex hull of their Gibbs
/// energy over 25 compositions, and at the mesh points of the edges; then of the mesh points inside
/// that no region found so far covers. From each split the tie lines are followed both ways: Newton's
/// method for two phases with a condition on the arc length in the compositions of both (weighted
/// ln rho_i, so that traces and supercritical fluids need no care), next to a plait point in variables
/// that are regular through it (RegularPair). The plait point is that system at distance 0. Where the
/// tangent-plane test finds a third phase the triangle is solved, and followed from its other sides.
///
/// Certified: every tie line and triangle as a result of flash_pT (equal potentials and pressures,
/// bounds of the errors, tangent-plane test of a ternary, which is no proof), every plait point as
/// one of critical_point. No two tie lines cross; where some do, that is in `open`, as one of them
/// cannot be stable. Not proven: that nothing is missing. What reaches an edge is found from the
/// binary's hull; an island or a triangle that holds no mesh point and is connected to nothing found
/// is missed.
///
/// @throws ThException 4 not three components; 5 T, p or an option; what the model throws at every
///     composition
CORVANE_API TernaryDiagram ternary_diagram(ModelN const& ternary, double T, double p,
                                           TernaryOptions const& options = {});

}  // namespace corvane
