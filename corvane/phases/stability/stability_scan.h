// The complete tangent-plane test of a binary: every density root followed over all compositions.
// Internal to the library.
#pragma once

#include <corvane/phases/phase/phase.h>

#include <array>
#include <limits>
#include <vector>

namespace corvane::inline detail {

/// The distance t(w) of a binary at (T, p) along its density roots, in pieces that show their own
/// accuracy. Nodes are kept for further tests at the same T and p.
///
/// Along a root t has the exact slope Δm_0 − Δm_1 and the exact second derivative from H. Between
/// two nodes the excess part of t (without w·ln w, which is known exactly) is a quintic polynomial
/// of Hermite's; value, slope and curvature at the next node between them, which are three
/// independent checks, give the size A of its error A·s³(1 − s)³. Half the interval then has A/64;
/// A/8 is used. All bounds are on Bernstein coefficients, which enclose a polynomial (Farouki,
/// Comput. Aided Geom. Des. 29 (2012) 379), with that error taken off. A piece is settled when it
/// is
///  - convex: its one minimum is at an end, or above where the end tangents meet, or is solved for;
///  - concave or monotone: its minimum is at an end;
///  - positive throughout;
///  - too high at both ends to reach zero between them: t″ = U − (∂p/∂w)²/(…∂p/∂rho) ≤ U, the
///    curvature at constant density, so that t is at most U·h²/8 below its chord. U has no
///    dips next to a critical point and no poles at folds; four times what the ends show is used
///    (ideal part at the smaller fraction, and the larger excess part of all roots). Where the
///    root may vanish inside and appear again (∂(p/RT)/∂rho below 0.5), all roots must be that
///    high: at the two folds another one has the lower Gibbs energy. Where the density changes
///    more than its stiffness allows, the interval is halved instead.
/// Otherwise it is halved, and so is a piece that is long in ln rho against √(∂p/∂rho): next to a
/// critical point t″ has dips as narrow as those of ∂p/∂rho. The phase under test and the known
/// one are nodes of their own, where t and its slope are exactly zero: so pairs that are nearly
/// alike are told apart.
///
/// Ends: at w = 1e-8 the excess curvature must be below 0.1/w, else the end is moved down to 1e-300.
/// From there on to w = 0 t is convex with ln w* = ln w − t′(w) at its minimum.
///
/// Where a root vanishes between two nodes (a fold, ∂p/∂rho = 0) the interval is halved until the
/// vanishing root is concave there (its curvature tends to −∞) or too high to reach zero in what is
/// left of the interval, by the same bound: at the fold itself another root has the lower Gibbs
/// energy, so that the chord ends above that.
///
/// Proven, if in every settled interval the error of the quintic is at most eight times what its
/// middle shows, and U at most four times what its ends show: no composition has t < 0 along the
/// density roots that the model reports. Both are assumptions: the models' slots give values, not
/// bounds, of derivatives, so that no test by slots alone can do without. For cubic mixtures single
/// answers are proven without them, by bounds over all states that the equation's own form gives
/// (benchmarks/judge/enclosure.h): all of 11,000 were, and none refuted (docs/phases_measured.md, where
/// also is what was seen of U, at most 1.2 times what the ends show). Not proven, either:
/// features that leave value, slope and curvature at all nodes as they are, density roots that
/// begin and end between two neighbouring nodes, 0.19 apart in w at most, at neither of which they
/// exist, and what is narrower than 1e-6·w·(1 − w) (1e-4 beside the phase itself), where the nodes
/// alone decide.
class BinaryScan {
  public:
    explicit BinaryScan(FluidModel const& fluid);
    /// The nodes: the fluid is another one.
    void forget() { nodes_.clear(); }

    /// What a test found: the lowest stationary point, or the first negative value.
    struct Result {
        bool negative = false;   ///< some t < −tolerance
        bool found = false;      ///< t, rho and w are set
        bool resolved = true;    ///< false: compositions without density, or too many nodes
        double t = 0.0, rho = 0.0;
        std::array<double, 2> w{};
        int nodes = 0;  ///< evaluated in this test
    };
    /// @param first  end at the first value below −10·tolerance; otherwise find the lowest minimum
    /// @param tolerance  t below −tolerance is negative
    Result test(PhaseState const& phase, double p, PhaseState const* known, bool first,
                double tolerance);

  private:
    static constexpr double kInfinite = std::numeric_limits<double>::infinity();
    /// Of an interval that is halved no further, over w·(1 − w).
    static constexpr double kNarrow = 1e-6;
    /// From composition a to b, by the mole fractions that are small.
    static double length(double a0, double a1, double b0, double b1) {
        return a0 < 0.5 ? b0 - a0 : a1 - b1;
    }

    struct Point {
        double w0 = 0.0, w1 = 0.0, t = 0.0, t1 = 0.0, t2 = 0.0;
        double e = 0.0, e1 = 0.0, e2 = 0.0;  ///< without the ideal part
        double rho = 0.0, stiff = 0.0;       ///< density, ∂(p/RT)/∂rho
        bool zero = false;                   ///< the phase itself or the known one
    };
    struct Node {
        double w0 = 0.0, w1 = 0.0;
        int roots = 0;
        // of each root: m_0, m_1, G″, the excess parts of G″ and of U
        double rho[2], m0[2], m1[2], G2[2], e2[2], U2[2], stiff[2];
        double excess[2], slope[2];  ///< G^E and its slope
        mutable int seen[2] = {-1, -1};  ///< tests that `at` is of
        mutable Point at[2];
    };
    /// An interval between two nodes, halved if need be.
    struct Cell {
        int a = 0, b = 0, mid = -1, left = -1, right = -1;
    };
    /// One root through a cell: its index at either end, −1 where it does not exist.
    struct Strand {
        int a = -1, b = -1;
        double A = 0.0, B = 0.0;  ///< errors of the quintic of t and of the cubic of t′
    };
    /// A minimum between two compositions.
    struct Bracket {
        int root = 0;
        Point a, b;
        double estimate = 0.0;
    };
    /// The phase or the known one: its place among the nodes.
    struct Zero {
        Point at;
        double rho = 0.0;
        int root = -1;  ///< where the model has two; found when needed
        bool asked = false;
    };

    static Zero zero_at(PhaseState const& s);
    void lay();
    int node(double w0, double w1);
    int middle(Cell const& c);
    bool dilute(Node const& n) const;
    Point const& point(Node const& n, int root) const;
    int root_of(Zero& z);
    int strands(Cell const& c, Strand* s) const;
    void process(int cell, Strand const* known, int count, int depth);
    void end(int k);
    void refine(Bracket const& b);
    bool negative(double t) const { return t < -tolerance_; }
    void take(double t, double rho, double w0, double w1);
    bool visit(int k);

    // ---- what settles a piece (stability_pieces.cpp)

    static void compare(Point const& a, Point const& b, Point const& m, double h, double x,
                        double& A, double& B);
    void error(Cell const& c, Strand& s, int& root) const;
    double lowest(Cell const& c) const;
    /// How far t may be below its chord in a cell.
    double sag(Cell const& c) const;
    bool settled(Cell const& c, Strand const& s, bool halved);
    static bool gentle(Point const& a, Point const& b);
    bool piece(Point const& a, Point const& b, double A, double B, int root);
    bool vanishing(Cell const& c, Strand const& s, bool halved);

    FluidModel const& fluid_;
    double T_ = 0.0, p_ = 0.0;
    PhaseState s_;
    std::vector<double> x_;
    std::vector<Node> nodes_;
    std::vector<Cell> cells_;
    int first_cells_ = 0;
    int low_ = 0, high_ = 0;  ///< nodes at the ends
    // of one test
    int test_ = 0;
    double mu0_ = 0.0, mu1_ = 0.0, tolerance_ = 0.0;
    bool first_ = false, over_ = false;
    std::array<Zero, 2> zero_;
    int zeros_ = 0;
    std::vector<Bracket> brackets_;
    Result result_;
};

}  // namespace corvane::inline detail
