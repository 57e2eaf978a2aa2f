// Solid phases of a substance from tabulated sublimation data.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/containers.h>
#include <corvane/core/owner.h>

#include <cstdio>

class Model1;

/// One solid phase: sublimation pressure, molar volume and compressibility over 1/T.
struct CORVANE_API Subl {
    char name[8] = {};              ///< phase label, at most 7 characters
    double p0 = 0.0;                ///< sublimation pressure at the first point, MPa
    SortedVector<double> x;         ///< 1/T, 1/K, ascending
    Vector<double> s;               ///< ln(p/p0)/(x − x[0]), K
    Vector<double> v;               ///< molar volume on the sublimation curve, cm³/mol
    Vector<double> kappa;           ///< isothermal compressibility, 1/MPa
    Matrix<double> cs, cv, ckappa;  ///< spline rows b, c, d of s, v, kappa

    /// Reads a phase: name, number of points m, then m rows T [K, descending], p [MPa], v, kappa.
    /// A single point has no slope: its pressure holds at every T.
    /// @throws ThException 1 for a short row, a T or p that is not positive, or a count outside
    /// 1 … 10^6; MthException 5, 6 from the splines for temperatures that do not descend
    void load(FILE* f);
};

/// The solid phases of a substance. Energies are reduced by R·T, entropies by R; the properties
/// with suffix e lack the ideal-gas part of the substance, those with suffix m contain it.
class CORVANE_API Solid {
  public:
    Vector<Subl> sg;  ///< the phases, in file order

    /// Reads "./CorvaneS/solid/<name>": number of phases, highest temperature Tmax [K], the phases.
    /// The phases read before an error stay. @throws ThException 1 no file, no owner, more than
    /// 1000 phases, or from Subl::load; MthException from Subl::load
    void load();
    /// Sublimation state of phase i at T: psub [MPa], v [cm³/mol], kappa [1/MPa]. i = −1 picks the
    /// phase of lowest pressure, any other i is clamped into range. Returns the phase used, or −1
    /// (outputs untouched) above Tmax, without data or for a T that is not positive. Never throws.
    int sge(double T, int i, double& psub, double& v, double& kappa) const;
    /// Reduced Gibbs energy of the stable solid phase at p [MPa], T [K]: that of the saturated
    /// vapour by the owner's equation of state plus the integral of v over p. i receives the phase,
    /// the first of equal ones, rho its density [mol/cm³].
    /// @throws ThException 6 no data, 5 above Tmax or p not a number, 9 no vapour density
    double Ge(double p, double T, int& i, double& rho) const;

    // Properties of the stable phase at (p [MPa], T [K]); errors as Ge, and 3 for suffix m without
    // an ideal-gas table. Temperature derivatives are numerical with an absolute step of 1 mK.
    // Suffix m is suffix e plus the ideal-gas property of the same name, as it stands (intended).
    // Since Ge contains ln(rho), that makes Hm and Sm larger by 1, and Am smaller by 1, than Hm, Sm
    // and Am of Model1 for the same reference state; Gm and Um agree with it.
    double Gm(double p, double T) const;
    double Gm(double p, double T, int& i, double& rho) const;
    double Ae(double p, double T) const;
    double Ae(double p, double T, int& i, double& rho) const;
    double Am(double p, double T) const;
    double Am(double p, double T, int& i, double& rho) const;
    double He(double p, double T) const;
    double Hm(double p, double T) const;
    double Ue(double p, double T) const;
    double Um(double p, double T) const;
    double Se(double p, double T) const;
    double Sm(double p, double T) const;
    double d(double p, double T) const;   ///< mass density |M|·rho, g/cm³
    double Vm(double p, double T) const;  ///< molar volume, cm³/mol

    double Ttrp() const;  ///< first tabulated temperature of phase 0, K; 0 without phases
    double Tmax() const { return Tmax_; }     ///< highest temperature of validity, K
    char const* id(int i) const;              ///< name of phase i; null if there is none
    void info() const;                        ///< prints the temperature range of the data
    void reset();                             ///< forgets the phases
    Model1* model() const { return model_; }  ///< not owned; kept by assignment
    void model(Model1* owner) { model_.set(owner); }

  private:
    double Tmax_ = 0.0;
    corvane::Owner model_;
};
