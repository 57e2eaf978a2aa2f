// The mixture model: one equation of state with one mixing theory over a list of pure components.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/containers.h>
#include <corvane/core/records.h>
#include <corvane/mixture/derivatives.h>
#include <corvane/mixture/loading.h>

#include <cstdio>
#include <memory>

class Model1;
namespace corvane::inline detail {
struct ModelAccess;
}

/// Abstract mixture model. rho in mol/cm³, T in K, p in MPa; x holds the n mole fractions, rho_i
/// the n partial densities rho·x_i. Mole fractions are used as given, not normalised. Results are
/// reduced: energies by R·T, entropies and heat capacities by R.
///
/// A plug-in derives from ModelN as its *first* base, implements the pure slots, may override
/// betaV, PsiH, Z and myr with exact forms (every property then uses them), and exports createN and
/// destroyN. No virtual destructor: only destroyN deletes a mixture. The order of the virtual
/// functions is ABI. Where a name has several forms, their order here numbers them elsewhere.
class CORVANE_API ModelN {
  public:
    ModelN(ModelN const&) = delete;
    ModelN& operator=(ModelN const&) = delete;

    // ---- slots, in order
    // -------------------------------------------------------------------------

    /// ∂(T·Z)/∂T at rho and x, by numerical differentiation unless overridden.
    virtual double betaV(double rho, double T, Vector<double> const& x) const;
    /// Hessian of the reduced Helmholtz energy density in the partial densities,
    /// ∂²(rho·Ar)/∂rho_i∂rho_j + δ_ij/rho_i [cm³/mol]; 1e99 on the diagonal of an absent component.
    /// Returned as computed, not symmetrised (intended).
    virtual Matrix<double> PsiH(Vector<double> const& rho_i, double T) const;
    /// Address of binary parameter k of the pair (i, j), i ≠ j; (j, i) is the same.
    virtual double* ppar(int k, int i, int j) = 0;
    /// Makes the storage of the binary parameters for the present number of components.
    virtual void par_alloc() = 0;
    /// Reads the binary parameters of the pair (i, j) from a file that stands after the header.
    virtual void par_in(FILE* f, int i, int j) = 0;
    /// Writes them in the same form.
    virtual void par_out(FILE* f, int i, int j) const = 0;
    /// Residual Helmholtz energy A^r/(nRT); 0 at rho = 0.
    virtual double Ar(double rho, double T, Vector<double> const& x) const = 0;
    /// Compressibility factor, 1 + rho·∂Ar/∂rho by numerical differentiation unless overridden.
    virtual double Z(double rho, double T, Vector<double> const& x) const;
    /// Density roots at (p, T, x); contract as Model1::vcalc.
    virtual int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
                      double& rho_b) const = 0;
    /// Mixture parameters at x, of the plug-in's choice; for callers only.
    virtual Vector<double> mixpar(Vector<double> const& x) const = 0;
    /// Residual chemical potential μ_i^r/(RT) at constant T and volume, by numerical
    /// differentiation unless overridden. 0 at zero density.
    virtual double myr(Vector<double> const& rho_i, double T, int i) const;

    // ---- members
    // ---------------------------------------------------------------------------------

  protected:
    int hess_myr_ = 0;  ///< nonzero: PsiH differentiates myr once instead of Ar twice
    int mmth_ = 0;      ///< of the plug-in's choice

  private:
    struct PairComment {
        char text[th_commlength] = {};
    };
    std::unique_ptr<int[]> pair_ids_;  // n(n − 1)/2 each
    std::unique_ptr<PairComment[]> pair_comments_;

  public:
    char const* eos = nullptr;  ///< equation of state; the caller keeps the text alive
    char const* mth = nullptr;  ///< mixing theory; set by the plug-in's factory or the caller
    Vector<Model1*> mdl1;       ///< the components; see alloc for who owns them

    // ---- components, pairs, files
    // ----------------------------------------------------------------

    /// Makes n components with attach1(eos), empty pair tables and the binary parameters. The text
    /// is kept, not copied (intended). Components are released by corvane::detachN together with
    /// the mixture, or one by one by corvane::detach1; destroyN alone leaves them, and so does
    /// another alloc. @throws ThException 5 more than 10^4 components; 0, 1 from attach1 (components
    /// not made are null)
    void alloc(int n, char const* eos);
    Model1* getModel1i(int i) const { return mdl1[i]; }
    int mmth() const { return mmth_; }

    /// Number of the parameter set of the pair (i, j), or of component i when i = j.
    int id(int i, int j) const;
    void id(int i, int j, int value);
    /// Comment of the pair, or of the component when i = j. The setter copies at most 79 characters.
    char const* comment(int i, int j) const;
    void comment(int i, int j, char const* text);
    /// Binary parameter k of the pair, or parameter k of the component when i = j.
    double param(int k, int i, int j) const;
    void param(int k, int i, int j, double value);

    /// Reads the file of every pair, "./CorvaneS/parameters/<eos>/<mth>/<a>+<b>;<id>" or else
    /// "<b>+<a>", then every component's own file. Names of components come from the caller; a
    /// component id of −1 takes the first pair file's.
    /// A pair or component that cannot be loaded stays as it was, those before it are loaded.
    /// @throws ThException 1 no pair file, the names of another plug-in (nothing is read), or a
    ///         component that fails for whatever reason (its name goes to standard error); 2 an id
    ///         that contradicts a pair file; or from par_in. FileError where a file is to blame
    void load(char const* eos, char const* mth);
    /// Writes the file of the pair (0, 1) to "./CorvaneS/models/parameters/<eos>/<mth>/…", a tree
    /// of its own (intended), as a whole or not at all, and only if load can read it.
    /// @throws ThException 1
    void store2(char const* eos, char const* mth) const;
    /// Prints components and pairs. Bits of flags: 1 parameters, 2 ideal-gas and 4 solid ranges.
    void intro(char const* title, int flags) const;
    /// Prints the title, v from its second element on (intended) and the pair (0, 1).
    void show2(char const* title, Vector<double> const& v) const;

    // ---- properties
    // ------------------------------------------------------------------------------
    //
    // At (p, T, x) the density comes from vcalc as for Model1; rho is a start value on entry and
    // receives the density. @throws ThException 9 no root. Suffix r residual; suffix m with the
    // components' ideal-gas parts (@throws ThException 3 without tables).

    double pV(double rho, double T, Vector<double> const& x) const;      ///< ∂(rho·Z)/∂rho
    double kappaT(double rho, double T, Vector<double> const& x) const;  ///< 1/pV
    double kappaT(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double alphap(double rho, double T, Vector<double> const& x) const;  ///< betaV/pV
    double alphap(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Ur(double rho, double T, Vector<double> const& x) const;  ///< −T·∂Ar/∂T
    double Hr(double rho, double T, Vector<double> const& x) const;  ///< Z − 1 − T·∂Ar/∂T
    double Hr(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Sr(double rho, double T, Vector<double> const& x) const;  ///< −T·∂Ar/∂T − Ar
    double Gr(double rho, double T, Vector<double> const& x) const;  ///< Ar + Z − 1
    double Gr(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    /// Ar + Z − 1 + ln rho, without a mixing term (intended). @throws ThException 5 rho <= 0
    double Ge(double rho, double T, Vector<double> const& x) const;
    double Ge(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    /// −2·∂Ar/∂T − T·∂²Ar/∂T² [1/K]: intended without the factor T that a heat capacity has; CVm,
    /// Cpr and Cpm inherit it. corvane::heat_capacities gives the physical values.
    double CVr(double rho, double T, Vector<double> const& x) const;
    double CVr(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Cpr(double rho, double T, Vector<double> const& x) const;  ///< CVr + betaV²/pV − 1
    double Cpr(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double CVm(double rho, double T, Vector<double> const& x) const;
    double CVm(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Cpm(double rho, double T, Vector<double> const& x) const;
    double Cpm(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Hm(double rho, double T, Vector<double> const& x) const;
    double Hm(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Um(double rho, double T, Vector<double> const& x) const;
    double Am(double rho, double T, Vector<double> const& x) const;
    double Gm(double rho, double T, Vector<double> const& x) const;
    double Gm(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    /// Entropy; the only form that normalises the composition (intended). @throws ThException 5
    double Sm(double rho, double T, Vector<double> const& x) const;
    /// k-th virial coefficient [(cm³/mol)^(k−1)], 1 <= k <= 9.
    double B(double T, Vector<double> const& x, int k) const;
    double Vm(double p, double T, Vector<double> const& x, int phase) const;  ///< 1/rho, cm³/mol

    // At partial densities. Absent components add nothing to the sums of y·ln(rho_i).
    double Ar(Vector<double> const& rho_i, double T) const;
    double Z(Vector<double> const& rho_i, double T) const;
    double Sr(Vector<double> const& rho_i, double T) const;
    double betaV(Vector<double> const& rho_i, double T) const;
    double betaV(double p, double T, Vector<double> const& x, int phase, double& rho) const;
    double Ak(Vector<double> const& rho_i,
              double T) const;  ///< Ar − 1 + Σ y·ln rho_i; 5 if rho <= 0
    double Gk(Vector<double> const& rho_i, double T) const;  ///< Gr + Σ y·ln rho_i; 5 if rho <= 0
    double Sk(Vector<double> const& rho_i, double T) const;  ///< Sr − Σ y·ln rho_i; 5 if rho <= 0
    double Sm(Vector<double> const& rho_i, double T) const;
    double Sm(double p, double T, Vector<double> const& x, int phase, double& rho) const;

    // ---- chemical potentials and the Helmholtz energy density
    // ------------------------------------

    double myr(double rho, double T, Vector<double> const& x, int i) const;
    double myr(double p, double T, Vector<double> const& x, int i, int phase, double& rho) const;
    /// μ_i/(RT) = myr + ln rho_i; −1e99 for an absent component. @throws ThException 5 rho <= 0
    double my(Vector<double> const& rho_i, double T, int i) const;
    double my(double rho, double T, Vector<double> const& x, int i) const;
    double my(double p, double T, Vector<double> const& x, int i, int phase, double& rho) const;
    /// rho·Ak: Helmholtz energy density over RT, mol/cm³. @throws ThException 5 rho <= 0
    double Psi(Vector<double> const& rho_i, double T) const;
    double Psi(double rho, double T, Vector<double> const& x) const;
    /// Gradient of rho·Ar + Σ rho_i·ln rho_i: element i is my_i + 1, not the gradient of Psi
    /// (intended); 1e99 lower for an absent component.
    Vector<double> PsiG(Vector<double> const& rho_i, double T) const;
    Vector<double> PsiG(double rho, double T, Vector<double> const& x) const;
    Matrix<double> PsiH(double rho, double T, Vector<double> const& x) const;

    /// The exact-derivative extension of the model, or null. Set by attachN.
    corvane::DerivN const* derivatives() const { return derivatives_; }
    void derivatives(corvane::DerivN const* extension) { derivatives_ = extension; }

  protected:
    ModelN() = default;
    ~ModelN() = default;
    friend struct corvane::ModelAccess;  // the flat interface destroys models

  private:
    friend std::vector<std::pair<int, int>> corvane::load_estimating(ModelN&, char const*,
                                                                     char const*);
    /// Reads the file of a pair; false if there is none.
    bool load_pair(int a, int b, char const* eos, char const* mth);
    void load_components(char const* eos);
    static int pair(int i, int j) { return i < j ? (j - 1) * j / 2 + i : (i - 1) * i / 2 + j; }

    corvane::DerivN const* derivatives_ = nullptr;
};
