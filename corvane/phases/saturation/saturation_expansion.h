// The saturation curve of a pure fluid, precomputed: piecewise polynomials with a bound of their
// error, for programs that need many points of one curve.
//
//     const corvane::SaturationExpansion curve(*fluid.model);   // milliseconds
//     corvane::SaturationExpansion::Point s;
//     if (curve.at_T(300.0, s)) use(s.p, s.rhoL, s.rhoV);       // less than a tenth of a
//     microsecond
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/saturation/pure_saturation.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class Model1;

namespace corvane::inline detail {
class SaturationBuilder;
}

namespace corvane {

/// Relative errors against the exact solution of the model's equations, for a piece of the curve.
struct SaturationErrors {
    double p = 0.0, rhoL = 0.0, rhoV = 0.0;
    double T = 0.0;  ///< of T(p)
};

/// p, rhoL and rhoV as polynomials in pieces of z = √(Tc/T − 1), in which the densities of an
/// analytic equation are regular at its critical point: one function of z, the liquid at z > 0 and
/// the vapour at z < 0. Next to the critical point a piece that reaches to both sides of z = 0
/// holds it and no state nearer than τ = 1 − T/Tc = 1e-6 is solved. An equation that is not
/// analytic there gets pieces that halve towards z = 0, down to τ = 1e-10. Elsewhere the pieces
/// halve until the last coefficients of the Chebyshev expansion are within rounding (Bell & Alpert,
/// Int. J. Thermophys. 42 (2021) 75). The states at the nodes are those of pure_saturation.h.
///
/// A value object that does not refer to the model: it holds for the parameters that the model had
/// when it was built, which same_as() tells. Reading is free of state and may go on in many
/// threads.
class CORVANE_API SaturationExpansion {
  public:
    /// A point of the curve: K, MPa, mol/cm³.
    struct Point {
        double T = 0.0, p = 0.0, rhoL = 0.0, rhoV = 0.0;
    };

    /// From the critical point down to where the model ends: to a fifth of the critical temperature
    /// or 1e-24 MPa, or as far as its curve is smooth; as pure_saturation_T otherwise. Takes 0.5 to
    /// 2 thousand solutions of it.
    /// @throws EquilibriumFailure gave_up: the model has no smooth curve at T_critical()·0.99;
    ///     ThException 5 its critical constants; what the model throws
    explicit SaturationExpansion(Model1 const& model);

    /// Where it answers: T_min <= T <= T_max, p_min <= p <= p_max, the end that is the critical
    /// point excluded. K, MPa.
    double T_min() const { return T_min_; }
    double T_max() const { return T_max_; }
    double p_min() const { return p_min_; }
    double p_max() const { return p_max_; }
    double T_critical() const { return Tc_; }  ///< of the equation, from its critical conditions

    /// The curve at T [K], at p [MPa]. False (and `to` as it was) outside of its range and for what
    /// is not a number. T(p) rises with p: by Newton's method within the piece that p belongs to.
    bool at_T(double T, Point& to) const noexcept;
    bool at_p(double p, Point& to) const noexcept;
    /// One quantity alone; not-a-number outside.
    double p_at(double T) const noexcept;
    double T_at(double p) const noexcept;

    /// Bound of the error at T, not-a-number outside: the bounds that the solver gives for the
    /// states at the nodes, times what interpolation makes of them; the part cut off, from the
    /// decay of the coefficients; rounding of the evaluation; and all that T itself says, in units
    /// of its rounding. What is cut off is an estimate, and no proof: it holds for a curve that is
    /// as smooth between the nodes as the coefficients say. certified_T() checks a value by its
    /// equations.
    SaturationErrors bound(double T) const noexcept { return errors(T, false); }
    /// Are the bounds of p and of both densities at T at most this?
    bool within(double error, double T) const noexcept;
    /// Largest difference to the solver between the nodes of the piece that holds T, of T(p) by the
    /// slope of p: four points, a sample, and both have their rounding.
    SaturationErrors measured(double T) const noexcept { return errors(T, true); }

    /// The point with the bounds of pure_saturation_T and pure_saturation_p: one more Newton step
    /// from the expansion, with the residuals of the model. Outside of the range, those functions.
    /// @param model  that it was built from. @throws as they do
    PureSaturation certified_T(Model1 const& model, double T) const;
    PureSaturation certified_p(Model1 const& model, double p) const;

    /// Was it built from this equation with these parameters? Compares the name, all parameters,
    /// the critical point, and Ar and Z of a few states bit by bit.
    bool same_as(Model1 const& model) const;
    std::uint64_t key() const { return key_; }  ///< of all that same_as compares
    static std::uint64_t key_of(Model1 const& model);

    int pieces() const { return static_cast<int>(pieces_.size()); }
    long solutions() const { return solutions_; }  ///< states that were solved to build it

    /// All of it, to keep in a file, for this kind of machine; nothing from bytes that are not
    /// whole.
    std::string bytes() const;
    static std::optional<SaturationExpansion> from_bytes(std::string const& bytes);

    static constexpr int order = 16;  ///< coefficients of a piece

  private:
    friend class detail::SaturationBuilder;
    /// Coefficients of x^k, x = (z − middle)·scale in −1 … 1: of rhoL, rhoV and p.
    struct Piece {
        double from, to, middle, scale;  // in z
        double p_from, p_to;             // at the ends; the first is the larger
        std::array<std::array<double, 4>, order> a;
        std::array<double, 8> start;  // x from p, for the first step of T(p)
        double node_error[3][order];  // bounds at the nodes, absolute
        double cut[3], measured[3];   // relative: series cut off and rounding; seen between nodes
    };
    SaturationErrors errors(double T, bool measured) const noexcept;
    SaturationExpansion() = default;
    Piece const* piece(double z) const noexcept;
    void index();

    double Tc_ = 0.0, T_min_ = 0.0, T_max_ = 0.0, p_min_ = 0.0, p_max_ = 0.0;
    std::uint64_t key_ = 0;
    long solutions_ = 0;
    std::vector<Piece> pieces_;         // by rising z
    std::vector<std::uint16_t> cells_;  // the first piece of each of equal parts of z
    double cell_scale_ = 0.0;
};

}  // namespace corvane
