// Viscosity of a pure fluid: dilute gas and friction theory.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/containers.h>
#include <corvane/core/owner.h>

class Model1;

/// Level of friction theory. Levels 1 and 2: Quiñones-Cisneros, Zeberg-Mikkelsen, Stenby, Fluid
/// Phase Equilib. 169 (2000) 249; level 3 splits the pressure at temperature-dependent hard
/// spheres.
enum ft_level : int { ft_none = 0, ft_1 = 1, ft_2 = 2, ft_3 = 3 };

/// Dilute-gas viscosity polynomial and friction-theory coefficients of a substance. Units of
/// results are those of the data files (shipped: µPa·s). A new object has every field zero.
class CORVANE_API Visco {
  public:
    /// Reads "./CorvaneS/viscosity/dilute/<name>": form, count, Tc [K], then count coefficients.
    /// @throws ThException 1 no file, no owner, or a count beyond 10^6
    void load0();
    /// Dilute-gas viscosity: Σ d_j·t^j with t = (T/Tc)^¼; form 2 multiplies by t³/(T/Tc + 1).
    /// @throws ThException 4 before load0
    double eta0(double T) const;
    /// Reads "./models/viscosity/friction_theory/<set>/<name>;<id>"; set_id comes first. The file's
    /// own id replaces it. Read errors inside the file are not detected (intended).
    /// @throws ThException 1 no file, no owner, null set
    void load1(char const* set);
    /// Sets the coefficients from 12 values (level 1) or 21 (level 2), row by row of a, b, c;
    /// shapes the matrices when they are too small. The level itself is left alone.
    /// @throws MthException 2 fewer values than that
    void set1(Vector<double> const& p);
    /// Friction-theory viscosity at rho [mol/cm³], T [K]. Levels 1 and 2 lack eta0(T), which the
    /// caller adds; level 3 contains it. pr and pa receive the repulsive and attractive pressures
    /// [MPa]. Tc comes from load0, without which levels 1 and 2 are zero.
    /// @throws ThException 4 (outputs untouched) unknown level, no coefficients, level 3 before
    /// load0
    double eta(double rho, double T, double& pr, double& pa) const;
    /// Prints the coefficients with the given deviation of the fit.
    void show(double rms) const;
    /// Writes "<th_home>/viscosity/friction_theory/<set>/<name>;<id>"; a level-3 set incompletely
    /// (intended). Folders are not made. @throws ThException 1 not writable, no owner, null set
    void store1(char const* set, double rms) const;
    void intro() const;  ///< prints id and comment

    void set_comment(char const* text, ft_level const& level);  ///< also sets the level
    void set_id(int id) { id_ = id; }
    void reset();  ///< empties a, b and c

    int id() const { return id_; }
    ft_level level() const { return level_; }
    char const* comment() const { return comment_; }
    Model1* model() const { return model_; }  ///< not owned; kept by assignment
    void model(Model1* owner) { model_.set(owner); }

  private:
    Vector<double> dilute_;
    double Tc_ = 0.0;
    int id_ = 0;
    ft_level level_ = ft_none;
    int form_ = 0;
    int count_ = 0;
    char comment_[th_commlength] = {};
    Matrix<double> a_, b_, c_;
    corvane::Owner model_;
};
