// The pure-substance model: what a plug-in supplies, and what the library builds on top of it.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/containers.h>
#include <corvane/core/records.h>
#include <corvane/ideal/ideal.h>
#include <corvane/pure/derivatives.h>
#include <corvane/solid/solid.h>
#include <corvane/viscosity/visco.h>

#include <cstdio>

namespace corvane::inline detail {
struct ModelAccess;
}

/// Abstract equation of state of a pure substance. T in K, p in MPa, rho in mol/cm³; energies are
/// returned divided by R·T, entropies and heat capacities by R; Z = p/(rho·R·T).
///
/// A plug-in derives from Model1 as its *first* base, implements slots 0 to 6 and exports create1
/// and destroy1. There is no virtual destructor: only destroy1 deletes a model. The order of the
/// virtual functions and of the fields is ABI: append only. Property functions only read the model
/// and may run concurrently on one object.
class CORVANE_API Model1 {
  public:
    Model1(Model1 const&) = delete;
    Model1& operator=(Model1 const&) = delete;

    // ---- what the equation of state supplies, in slot order ------------------------------------

    /// Address of parameter i, 0 <= i < mpar(). 0 = molar mass M [g/mol], 1 = scaling temperature
    /// Ts [K], 2 = scaling volume vs [cm³/mol]. Callers write through it at any time.
    virtual double* ppar(int i) = 0;
    /// Reads the equation's own section of a parameter file from the current position. load passes
    /// mode 1. Changes nothing before all is read and checked. @throws ThException 1 for a section
    /// that is short or malformed
    virtual void par_in(FILE* f, int mode) = 0;
    /// Writes that section; also used with f = standard output.
    virtual void par_out(FILE* f) const = 0;
    /// Residual Helmholtz energy A^r/(RT). 0 at rho = 0, relatively accurate as rho → 0, finite at
    /// slightly negative rho; not-a-number or infinite beyond a pole, never a throw.
    virtual double Ar(double rho, double T) const = 0;
    /// Compressibility factor, 1 at rho = 0; consistent with Ar to rounding.
    virtual double Z(double rho, double T) const = 0;
    /// Density roots at (p, T): writes mechanically stable roots only, converged to rounding, and
    /// returns their kind: 0 none (outputs untouched), 1 one root in rho1, 3 two stable roots.
    /// phase 1: rho1 the dense, rho2 the dilute root; 3: the reverse; −1: rho1 the root on the side
    /// of the start value rho1, or that of lower Gibbs energy without one. The value of rho1 on
    /// entry may serve as a start value.
    virtual int vcalc(double p, double T, int phase, double& rho1, double& rho2) const = 0;
    /// Density from which the equation's own solver starts for that phase code, mol/cm³.
    virtual double xinit(double p, double T, int phase) const = 0;
    /// Critical conditions at the trial point (temperature first, against the general order):
    /// Z − Zt, ∂(rho·Z)/∂rho and ∂²(rho·Z)/∂rho². All vanish at the critical point of
    /// compressibility factor Zt.
    virtual Vector<double> crit(double T, double rho, double Zt) const;

    // ---- data of the substance
    // -------------------------------------------------------------------

    double const* ppar(int i) const { return const_cast<Model1*>(this)->ppar(i); }
    int id() const { return id_; }  ///< number of the parameter set; part of the file name
    void id(int value) { id_ = value; }
    char const* name() const { return name_; }  ///< substance; part of the file name
    void name(char const* text);                ///< copies at most 31 characters
    char const* comment() const { return comment_; }
    void comment(char const* text);           ///< copies at most 79 characters
    char const* eos() const { return eos_; }  ///< name of the equation of state
    double pcrit() const { return pcrit_; }   ///< critical pressure of the equation, MPa
    void pcrit(double value) { pcrit_ = value; }
    double Tcrit() const { return Tcrit_; }  ///< its critical temperature, K
    void Tcrit(double value) { Tcrit_ = value; }
    double vcrit() const { return vcrit_; }  ///< its critical molar volume, cm³/mol
    void vcrit(double value) { vcrit_ = value; }
    double omega() const { return omega_; }  ///< acentric factor
    void omega(double value) { omega_ = value; }
    int mpar() const { return mpar_; }  ///< number of parameters
    int madj() const { return madj_; }  ///< number of adjustable parameters
    double M() const { return *ppar(0); }
    void M(double value) { *ppar(0) = value; }
    double Ts() const { return *ppar(1); }
    void Ts(double value) { *ppar(1) = value; }
    double vs() const { return *ppar(2); }
    void vs(double value) { *ppar(2) = value; }
    double param(int i) const { return *ppar(i); }
    void param(int i, double x) { *ppar(i) = x; }
    void params(Vector<double> const& v);  ///< writes v[0 … n−1] into parameters 0 … n−1

    // ---- files and reports
    // -----------------------------------------------------------------------

    /// Reads "./CorvaneS/parameters/<eos>/<name>;<id>" for the name and id set before; the file's
    /// own name and id replace them. Returns the result of closing the file. Read errors in the
    /// common section are not detected (intended) unless the equation's section is out of step by
    /// them. A model that cannot be loaded stays as it was.
    /// @throws ThException 1 no file, a critical constant that is not positive and finite, a name
    ///         with a slash, an eos that names the plug-in of another equation; or from par_in.
    ///         All as corvane::FileError, with file and line
    int load(char const* eos);
    /// Writes "./models/parameters/<eos>/<name>;<id>", a tree of its own, so that a stored set
    /// never overwrites the data (intended). Folders are not made. The file is written as a whole
    /// or not at all, and only if load can read it (critical constants of zero excepted).
    /// @throws ThException 1 not written, as on a full disk; an empty name or one with a blank, a
    ///         comment of more than 78 characters or several lines, numbers that are not finite
    void store(char const* eos) const;
    /// Prints a banner, then by the bits of level: 1 the parameters, 2 the ideal-gas range, 4 the
    /// range of the solid data.
    void intro(char const* title, int level) const;
    /// Prints the title and the parameters.
    void show1(char const* title) const;

    // ---- density range of the equation
    // -----------------------------------------------------------

    /// Density that bounds dense roots from below (phase 1) or dilute roots from above (any other)
    /// at T, from the plug-in's tables. @throws ThException 0 without tables or above the first
    /// temperature
    double xrho(double T, int phase) const;
    /// True if rho lies strictly between the two limits. Errors as xrho.
    bool off(double rho, double T) const;

    // ---- properties at (rho, T) and at (p, T)
    // ----------------------------------------------------
    //
    // At (p, T) the density comes from vcalc: an even phase code is lowered by one; with code 2 and
    // two roots the one of lower Gibbs energy is taken. 1 is the dense, 3 the dilute root. rho is a
    // start value on entry and receives the density. @throws ThException 9 no root.
    // Suffix r: residual; suffix m: with the ideal-gas part (@throws ThException 3 without a
    // table). Properties with ln(rho) throw ThException 5 for rho <= 0. Derivatives are those of
    // Deriv1 where the plug-in offers it, else numerical; MthException from diff_romberg passes.

    double Ak(double rho, double T) const;   ///< Ar + ln(rho) − 1
    double Am(double rho, double T) const;   ///< A/(RT)
    double CVr(double rho, double T) const;  ///< residual isochoric heat capacity / R
    double CVr(double p, double T, int phase, double& rho) const;
    double CVm(double rho, double T) const;  ///< isochoric heat capacity / R
    double CVm(double p, double T, int phase, double& rho) const;
    double Cpr(double rho, double T) const;  ///< CVr + P_T²/P_rho − 1
    double Cpr(double p, double T, int phase, double& rho) const;
    double Cpm(double rho, double T) const;  ///< isobaric heat capacity / R
    double Cpm(double p, double T, int phase, double& rho) const;
    double Gr(double rho, double T) const;  ///< Ar + Z − 1
    double Gr(double p, double T, int phase, double& rho) const;
    double Ge(double rho, double T) const;  ///< Ar + Z − 1 + ln(rho)
    double Ge(double p, double T, int phase, double& rho) const;
    double Gm(double rho, double T) const;  ///< G/(RT)
    double Gm(double p, double T, int phase, double& rho) const;
    double Hr(double rho, double T) const;  ///< −T·∂Ar/∂T + Z − 1
    double Hr(double p, double T, int phase, double& rho) const;
    double Hm(double rho, double T) const;  ///< H/(RT)
    double Hm(double p, double T, int phase, double& rho) const;
    double Sr(double rho, double T) const;  ///< −T·∂Ar/∂T − Ar
    double Sr(double p, double T, int phase, double& rho) const;
    double Sk(double rho, double T) const;  ///< Sr − ln(rho)
    double Sm(double rho, double T) const;  ///< S/R
    double Sm(double p, double T, int phase, double& rho) const;
    double Ur(double rho, double T) const;  ///< −T·∂Ar/∂T
    double Ur(double p, double T, int phase, double& rho) const;
    double Um(double rho, double T) const;      ///< U/(RT)
    double alphap(double rho, double T) const;  ///< P_T/P_rho = T·α, α the thermal expansivity
    double alphap(double p, double T, int phase, double& rho) const;
    double betaV(double rho, double T) const;  ///< P_T = ∂(T·Z)/∂T = (∂p/∂T at rho)/(rho·R)
    double betaV(double p, double T, int phase, double& rho) const;
    double kappaT(double rho, double T) const;  ///< 1/P_rho = rho·R·T·κ, κ the compressibility
    double kappaT(double p, double T, int phase, double& rho) const;
    double pV(double rho, double T) const;  ///< P_rho = ∂(rho·Z)/∂rho = (∂p/∂rho at T)/(R·T)
    /// n-th virial coefficient [(cm³/mol)^(n−1)], 1 <= n <= 9.
    double B(double T, int n) const;
    /// Molar volume 1/rho, cm³/mol.
    double Vm(double p, double T, int phase) const;

    /// Reads "./CorvaneS/reaction/<name>" (T0 [K], H0 [J/mol], S0 [J/(mol K)]) and moves the ideal
    /// part's reference state so that Hm·R·T0 = H0 and Sm·R = S0 for the stable phase at (pref,
    /// T0). Calling it again changes nothing. @throws ThException 1 no file, 7 not three finite
    /// numbers; 3, 9, 5
    void load_thchem();

    /// The exact-derivative extension of the equation, or null. Set by attach1.
    corvane::Deriv1 const* derivatives() const { return derivatives_; }
    void derivatives(corvane::Deriv1 const* extension) { derivatives_ = extension; }

  protected:
    Model1();  ///< zeroes the fields and makes the three members point back here
    ~Model1() = default;
    friend struct corvane::ModelAccess;  // the flat interface destroys models

    // Set by the plug-in: mpar_, madj_ and eos_ (a string literal) in the constructor, the tables
    // at the end of par_in. The three tables have the same length; temperatures descend.
    int mpar_ = 0, madj_ = 0;

  private:
    struct Header;
    int id_ = 0;
    char name_[th_namelength] = {};
    char comment_[th_commlength] = {};

  protected:
    char const* eos_ = nullptr;

  private:
    double pcrit_ = 0.0, Tcrit_ = 0.0, vcrit_ = 0.0, omega_ = 0.0;

  protected:
    Vector<double> Ttable_;  // K
    Vector<double> dilute_;  // mol/cm³, bounds dilute roots from above
    Vector<double> dense_;   // mol/cm³, bounds dense roots from below

  public:
    Solid solid;
    Ideal ideal;
    Visco visco;

  private:
    corvane::Deriv1 const* derivatives_ = nullptr;
};
