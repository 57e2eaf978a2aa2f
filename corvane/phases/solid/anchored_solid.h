// Solids anchored at their melting point to the liquid of an equation of state.
#pragma once

#include <corvane/core/api.h>
#include <corvane/solid/fusion.h>

class Model1;

namespace corvane {

/// A pure solid whose Gibbs energy hangs on the liquid of an equation of state: at the measured
/// melting temperature T_t and the equation's own vapour pressure p_t there both are equal, and
/// their enthalpies differ by the measured enthalpy of fusion. Every equation then melts at T_t and
/// gives solubilities and eutectics the right slope, however far its vapour pressure is from the
/// measured one.
///
/// With e = −T·∂g/∂T at p, g the Gibbs energy over RT without the ideal gas's (as Model1::Ge), and
/// E = T·e, the enthalpy over R:
///
///     E_s(T_t) = E_L(T_t) − Δh/R,   C = C_L(T_t) − Δcp/R,   C_L = ∂E_L/∂T at p
///     g_s(T, p_t) = g_L(T_t, p_t) + E_s·(1/T − 1/T_t) − C·(ln(T/T_t) + T_t/T − 1)
///     g_s(T, p) = g_s(T, p_t) + v(T)·(1 − exp(−kappa·(p − p_t)))/(kappa·R·T)
///     v(T) = v·(1 + alpha·(T − T_t))
///
/// where the liquid is the equation's own, so that it need not exist anywhere but at T_t. Where the
/// substance has a measured sublimation curve (Solid), which knows the solid's heat capacity, this
/// gives the course below T_t: g_s = Ge + A + B·(1/T − 1/T_t), A and B from the same two
/// conditions; beyond its last point E_s goes on as a straight line with the curve's mean slope.
///
/// The volume v is the equation's liquid at T_t less the measured difference, so that errors of the
/// liquid's volume cancel from the melting curve; kappa is such that the curve passes the measured
/// temperature at 100 MPa. Without a difference: the mean volume that this temperature asks for.
/// With neither, v is estimated as v_L/1.12 (Goodman et al., J. Chem. Eng. Data 49 (2004) 1512, eq.
/// 7, at T_t), kappa as 0.4 of the liquid's, and so is alpha without measured volumes of the solid.
///
/// A value; points to the model, whose parameters must not change. Const functions may run at the
/// same time.
class CORVANE_API AnchoredSolid {
  public:
    /// State at (p [MPa], T [K]).
    struct State {
        double g = 0.0;    ///< Gibbs energy over RT, comparable with Model1::Ge
        double g_T = 0.0;  ///< T·∂g/∂T at p
        double v = 0.0;    ///< R·T·∂g/∂p, cm³/mol
        double rho = 0.0;  ///< measured density where it is known, else 1/v; mol/cm³
        int form = 0;      ///< index in Solid::sg where that is used
    };

    /// @throws ThException 5 data out of range; 9 the equation has no liquid at T_t; what the model
    ///     throws
    AnchoredSolid(Model1 const& fluid, FusionData const& data);

    /// slope: g_T, too, which is dear below T_t if a sublimation curve is used.
    /// Below T_min the form that melts is extrapolated: the stable one is lower still.
    /// @throws ThException 5 above T_max or below T_t/20, p not finite; what Solid::Ge throws
    State at(double p, double T, bool slope = true) const;

    /// Melting temperature at p [MPa], K, next to T_t: the equation's liquid has the Gibbs energy
    /// of the solid. Illinois method from T_t outwards.
    /// @throws ThException 0 not between T_min and T_max, no liquid there, or the enthalpy of
    ///     fusion is not positive there
    double melting(double p) const;
    /// Enthalpy of the equation's liquid less that of the solid, J/mol. @throws as at, Model1::Hr
    double enthalpy_of_fusion(double p, double T) const;
    /// Sublimation pressure at T <= T_t, MPa. Successive substitution.
    /// @throws ThException 5 T out of range, 0 no convergence; what the model throws
    double sublimation(double T) const;

    FusionData const& data() const { return data_; }
    double p_t() const { return p_t_; }  ///< equation's vapour pressure at T_t, MPa
    double T_min() const { return T_min_; }  ///< transition, or T_t/4
    double T_max() const { return 1.6 * data_.T; }
    bool measured_volume() const { return measured_volume_; }    ///< else estimated
    bool sublimation_curve() const { return curve_; }  ///< gives the course below T_t

  private:
    double expanded(double T) const;        // volume at T over that at T_t
    double work(double p, double T) const;  // ∫ v dp from p_t, cm³ MPa/mol
    bool level(double T, double& g, double& E, int& form, bool slope) const;
    void set_volume(double rhoL);

    Model1 const* fluid_;
    FusionData data_;
    double p_t_ = 0.0, g_t_ = 0.0, E_t_ = 0.0, C_ = 0.0, A_ = 0.0, B_ = 0.0;
    double v_ = 0.0;
    double T_low_ = 0.0, g_low_ = 0.0, E_low_ = 0.0, C_low_ = 0.0;  // end of the curve
    double kappa_ = 0.0, alpha_ = 0.0, T_min_ = 0.0;
    bool measured_volume_ = false, curve_ = false;
};

}  // namespace corvane
