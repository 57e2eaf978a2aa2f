// Complete p-x-y and T-x-y diagrams of binaries.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/binary/diagram.h>
#include <corvane/phases/binary/three_phase.h>

#include <vector>

class ModelN;

namespace corvane {

/// All stable two-phase states of a binary at one T or p.
struct CORVANE_API BinaryDiagram {
    std::vector<Diagram> branches;
    std::vector<ThreePhasePoint> three_phase;  ///< where branches meet
    /// Splits that were found but not traced: one tie line of each, not solved. From 0 to 1: a p
    /// (or T) at which the model has no densities to search. A pure component (x = y) whose
    /// saturation no branch reaches. A branch ends `stuck` where the model refuses a state.
    std::vector<TieLine> open;
    long evaluations = 0;

    /// Is every branch explained at both ends, and nothing open?
    bool complete() const;
};

/// The p-x-y diagram at T [K]: every stable two-phase curve up to p_max.
///
/// Curves are traced (diagram.h) from the saturation points of the pure components and cut where
/// the tangent-plane test finds a third phase; that state is solved exactly, and its other two
/// curves are followed from there. Where a pure component's saturation lies above p_max, its curve
/// is followed to p_max and begins there. Then pressures up to p_max, 50 % apart, are searched for splits
/// that no curve has (convex hull of the Gibbs energy over 25 compositions); each is traced both
/// ways. A detached region smaller than these grids is not found.
///
/// options.stability is always on. `full` bounds the points of every branch; Progress counts all.
/// @throws ThException 4 not a binary; 5 T, p or an option; what the model throws
CORVANE_API BinaryDiagram complete_pxy(ModelN const& binary, double T,
                                       DiagramOptions const& options = {});

/// The T-x-y diagram at p [MPa], from T_min to twice the higher critical temperature; the search
/// goes in steps of 4 %.
CORVANE_API BinaryDiagram complete_Txy(ModelN const& binary, double p,
                                       DiagramOptions const& options = {});

}  // namespace corvane
