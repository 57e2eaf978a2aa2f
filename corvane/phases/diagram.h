// p-x-y and T-x-y diagrams of binaries.
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/certificate.h>
#include <corvane/phases/progress.h>

class ModelN;

namespace corvane {

struct TieLine {
    double T = 0.0, p = 0.0;          ///< K, MPa
    double x = 0.0, y = 0.0;          ///< mole fraction of component 0 in the phases a and b
    double rho_x = 0.0, rho_y = 0.0;  ///< mol/cm³; at the start a is the liquid
    bool stable = true;               ///< false: the tangent-plane test finds a third phase
};

enum class DiagramEnd {
    pure,      ///< at the other pure component
    critical,  ///< the phases become alike; the last point is the critical one, interpolated
    limit,     ///< above p_max, or T outside the model's reach
    full,      ///< bound of the number of points
    interrupted,
    stuck
};

struct Diagram {
    std::vector<TieLine> points;
    DiagramEnd end = DiagramEnd::stuck;
    double dmu = 0.0, dp = 0.0;  ///< largest of all points, see Certificate
    int unstable = 0;            ///< points at which the tangent-plane test finds a third phase
    long evaluations = 0;
};

struct DiagramOptions {
    double step = 0.05;     ///< longest step in x and y, about
    double p_max = 1000.0;  ///< MPa
    int points = 1000;
    bool stability = true;  ///< test every point
    Progress progress;
};

/// Isothermal (p-x-y) diagram at T [K], from the saturation of a pure component on: of the one with
/// the higher critical temperature where it is below that, else of the other.
///
/// Continuation of the two-phase equations (PairSolver) in the logarithmic ratios of the mole
/// fractions in either phase and of the partial densities between the phases, the one that changes
/// most; azeotropes and extrema of p are passed. The first point has a mole fraction of 1e-4.
/// @throws EquilibriumFailure no_solution: T above both critical temperatures; gave_up: no start;
///     ThException 4 not a binary; 5; what the model throws
CORVANE_API Diagram diagram_pxy(ModelN const& model, double T, DiagramOptions const& options = {});

/// The same at p [MPa]: T-x-y.
CORVANE_API Diagram diagram_Txy(ModelN const& model, double p, DiagramOptions const& options = {});

}  // namespace corvane
