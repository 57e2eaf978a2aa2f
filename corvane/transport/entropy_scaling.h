// Viscosity by entropy scaling with PC-SAFT: Lötgering-Lin, Gross, Ind. Eng. Chem. Res. 54 (2015) 7942;
// Lötgering-Lin, Fischer, Hopp, Gross, ibid. 57 (2018) 4095.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/core/lazy.h>
#include <corvane/transport/volume_shift.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::inline detail {

/// Coefficients of a substance, and the PC-SAFT set that they were fitted with.
struct EntropyScalingRow {
    int set = 0;
    std::array<double, 4> c{};  ///< A, B, C, D
    double uncertainty = 0.0;   ///< relative, nine of ten deviations stay below
};

/// The row of "<home>/CorvaneS/transport/entropy_scaling.tsv"; nothing where there is none.
/// @throws OpenFailure a malformed row
std::optional<EntropyScalingRow> entropy_scaling_row(DataHome const& home, std::string const& substance);

/// ln(η/η_CE) = A + B·s + C·s² + D·s³ with the residual entropy per segment s = s_res/(R·m) at T and
/// density. Mixtures: m = Σ x_i·m_i, A = Σ x_i·A_i, the others Σ x_i·m_i/m·B_i …; η_CE by Wilke's rule from
/// the components' viscosities of Chapman and Enskog. One component is the pure substance.
class EntropyScaling {
  public:
    /// Opens PCSAFT+LB with the sets that the coefficients belong to.
    /// @param home        of the data
    /// @param components  names in the data tree
    /// @throws OpenFailure a component without a row, or whose set is missing
    EntropyScaling(DataHome const& home, std::vector<std::string> const& components);

    /// Densities are those of this other model from now on, which must outlive this. The values hang on them: 1 % is
    /// 10 % of a liquid's.
    void translate(int component, Model1 const& model);

    /// Pa·s at T [K], rho [mol/cm³] of the other model, mole fractions x.
    /// @throws ThException 5 a density beyond the equation's range
    double operator()(double T, double rho, Vector<double> const& x) const;

    /// Viscosity of component i by the theory of Chapman and Enskog with the collision integral of
    /// Neufeld, Janzen, Aziz, J. Chem. Phys. 57 (1972) 1100, Pa·s.
    double chapman_enskog(int i, double T) const;

    static constexpr char const* source =
        "Lötgering-Lin, Fischer, Hopp, Gross (2018), Ind. Eng. Chem. Res. 57, 4095, doi "
        "10.1021/acs.iecr.7b04871";

  private:
    struct Segment {
        double M, m, sigma, epsilon;  // g/mol, –, nm, K
        std::array<double, 4> c;
        std::shared_ptr<Lazy<VolumeShift> const> shift = {};  ///< null: none
    };
    Mixture mixture_;
    std::vector<Segment> segments_;
};

}  // namespace corvane::inline detail
