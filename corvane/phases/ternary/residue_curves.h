// Residue curve maps of ternary mixtures: simple distillation at given pressure.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/report/line_options.h>

#include <array>
#include <vector>

class ModelN;

namespace corvane {

/// What residue curves do next to a singular point, where liquid and vapour are equal.
enum class SingularKind {
    unstable_node,  ///< all begin there: it boils lowest of its surroundings
    saddle,
    stable_node,  ///< all end there: it boils highest
    unclear       ///< an eigenvalue is within 1e-3 of 0, or was not found
};
CORVANE_API char const* in_words(SingularKind kind);

/// A pure component or an azeotrope.
struct SingularPoint {
    Vector<double> x;
    double T = 0.0;      ///< K
    int components = 1;  ///< that are present
    SingularKind kind = SingularKind::unclear;
    /// Of the derivatives of x − y on the curves next to it; real parts.
    std::array<double, 2> eigenvalues{};
};

/// A boiling liquid x and its vapour y. xi is the time of distillation, −ln of what is left of the
/// liquid, from the first point on.
struct ResiduePoint {
    Vector<double> x, y;
    double T = 0.0;
    double xi = 0.0;
};

/// By rising T, which never falls along a residue curve.
struct ResidueCurve {
    std::vector<ResiduePoint> points;
    int begin = -1, end = -1;  ///< numbers of the singular points reached, −1 none
    bool boundary = false;     ///< it begins or ends at a saddle: no curve crosses it
};

struct CORVANE_API ResidueMap {
    double p = 0.0;  ///< MPa
    std::vector<SingularPoint> singular;
    std::vector<ResidueCurve> curves;
    int failures = 0;  ///< bubble points without a certified answer
    /// 2·(N₃ − S₃) + N₂ − S₂ + N₁ with the numbers N, S of nodes and saddles of so many components: 2 in a
    /// map that lacks no singular point (Doherty, Perkins, Chem. Eng. Sci. 34 (1979) 1401). A necessary
    /// condition, no proof. False, too, where a singular point is unclear.
    bool consistent() const;
};

struct ResidueOptions : CurveOptions {
    /// A step is the longest in the mole fractions, 1e-3 to 0.5. `points`: of every half of a curve.
    ResidueOptions() { points = 300; }
    double tolerance = 1e-6;  ///< of a step in the mole fractions, 1e-10 to 1e-2
    int mesh = 6;             ///< curves begin at inner points of a triangle divided by this, 3 to 30
};

/// The residue curve map at p [MPa]: what the liquid left in a still of one stage does, dx/dξ = x − y
/// (Doherty, Perkins, Chem. Eng. Sci. 33 (1978) 281). Every point is a certified bubble point; of two
/// liquids x is the whole. Curves are integrated in their arc length by Dormand and Prince's method
/// with error control, until next to a node (0.01).
///
/// Azeotropes: of binaries every change of sign of y − x in 40 parts of an edge, bracketed; ternary
/// ones by Newton's method from the points of a mesh where |x − y| is smallest. Their kind follows from
/// the derivatives of y by differences. A pair of azeotropes within a part is missed: `consistent`
/// sees a single one, not a pair.
///
/// @throws ThException 4 not three components; 5 p or an option. EquilibriumFailure: a component
///     does not boil at p. What the model throws
CORVANE_API ResidueMap residue_map(ModelN const& ternary, double p, ResidueOptions const& options = {});

}  // namespace corvane
