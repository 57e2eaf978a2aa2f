/* Certified calculations for C, and for languages that call C functions: fluids and mixtures opened
 * by name, states, flashes, bubble and dew points, envelopes, diagrams, critical points and lines,
 * solids. Each result carries its certificate; what cannot be certified is a failure with its text.
 *
 *     CorvaneError e;
 *     CorvaneMixture* gas = Corvane_open_mixture("PR+vdW1", 2, names, NULL, 0, 1, NULL, &e);
 *     CorvaneResult* r = Corvane_flash_pT(gas, 2.0, 250.0, z, 2, &e);
 *     if (e.kind == CORVANE_OK) fraction = Corvane_Result_value(r, 0, 0, 1, CORVANE_FRACTION, &e);
 *     Corvane_release(r);
 *     Corvane_release(gas);
 *
 * Units: K, MPa, mol/cm3, J/mol, J/(mol K), m/s, g/mol; compositions are mole fractions of all
 * components, zeros allowed. Reference states of h and s: those of the models.
 *
 * Handles. What a function returns as CorvaneFluid*, CorvaneMixture* or CorvaneResult* is the
 * caller's until Corvane_release. A result does not need what it was computed from. After a failure
 * null or zero is returned, and nothing is to be released.
 *
 * Failures. No C++ exception leaves, nothing but the progress function is called. The record (it
 * may be null) receives kind, number and text (guarded_interface.h): CORVANE_NOT_OPENED from the two
 * functions that open, CORVANE_NO_SOLUTION (the search was complete, there is none) or
 * CORVANE_GAVE_UP (nothing is known) from solvers, CORVANE_BAD_ARGUMENT for an index, a size or a
 * choice out of range, CORVANE_THERMODYNAMIC and CORVANE_NUMERICAL with the codes of the library (5:
 * a value out of range; 3: no ideal-gas table; 4: not a binary), CORVANE_NULL_ARGUMENT. The text
 * says what was asked of which model; Corvane_message has it where the record's is cut short.
 *
 * Threads. Every function may be called at any time by any thread, also for the same handle; only
 * Corvane_release, and writing to a model that Corvane_Fluid_model or Corvane_Mixture_model lends,
 * need the handle alone.
 */
#ifndef CORVANE_CERTIFIED_INTERFACE_H
#define CORVANE_CERTIFIED_INTERFACE_H

#include "corvane/binding/guarded_interface.h"
#include "corvane/core/api.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct CorvaneFluid CorvaneFluid;
typedef struct CorvaneMixture CorvaneMixture;
typedef struct CorvaneResult CorvaneResult;

/* Called after every point of a trace with the number of points so far, on the calling thread.
 * Zero ends the trace, which keeps what it has (CORVANE_END_INTERRUPTED). No exception may leave.
 */
typedef int CorvaneProgress(int points, void* context);

/* ---- Opening ---- */

/* A pure substance: name in the data tree, synonym, CAS number or sum formula. equation: "MEOS",
 * "PR" ...; null or "" is the best that the substance has. set: number of the parameter set, 0 the
 * first. home: directory that holds CorvaneS; null: the one in the environment variable
 * CORVANE_DATA, else beside the library, else the working directory. */
CORVANE_API CorvaneFluid* Corvane_open(const char* equation, const char* substance, int set,
                                       const char* home, CorvaneError* error);
/* A mixture. model: equation and mixing theory, "PR+vdW1", "PCSAFT+LB", "MEOS+GERG". sets: of the
 * components, or null for those that the pairs were made for. pair_set: 0 is the first number under
 * which all pairs are published for these sets, else 1. estimate: 0 refuses pairs without published
 * parameters, 1 estimates them, of MEOS+GERG by a predictive model, 2 takes 1 for all reducing parameters there. */
CORVANE_API CorvaneMixture* Corvane_open_mixture(const char* model, int count,
                                                 const char* const* components, const int* sets,
                                                 int pair_set, int estimate, const char* home,
                                                 CorvaneError* error);
/* Frees a fluid, a mixture or a result; null is ignored. */
CORVANE_API void Corvane_release(void* handle);

/* Texts go to a buffer of `size` bytes, cut and terminated (UTF-8); the whole length without the
 * final zero is returned, so that a null buffer of size 0 asks for it. */

/* Text of the last failure that a function of this header had on this thread; "" before any. */
CORVANE_API int Corvane_message(char* buffer, int size);

enum CorvaneText {
    CORVANE_TEXT_MODEL,     /* equation, or equation+theory */
    CORVANE_TEXT_SUBSTANCE, /* name in the data tree; of component i of a mixture */
    CORVANE_TEXT_SOURCE,    /* where the parameters of a fluid come from; "" unknown */
    CORVANE_TEXT_HOME       /* data home */
};
CORVANE_API int Corvane_Fluid_text(const CorvaneFluid* fluid, int what, char* buffer, int size,
                                   CorvaneError* error);
CORVANE_API int Corvane_Mixture_text(const CorvaneMixture* mixture, int what, int i, char* buffer,
                                     int size, CorvaneError* error);

enum CorvaneNumber {
    CORVANE_MOLAR_MASS, /* g/mol */
    CORVANE_T_CRITICAL, /* K, MPa, mol/cm3: stored with the parameters */
    CORVANE_P_CRITICAL,
    CORVANE_RHO_CRITICAL,
    CORVANE_PARAMETER_SET, /* its number */
    /* Published range of the parameters, K, K, MPa; not-a-number: not stated. Of mixtures: what the
     * ranges of all components have in common, whatever i. */
    CORVANE_T_MIN,
    CORVANE_T_MAX,
    CORVANE_P_MAX,
    CORVANE_HAS_IDEAL /* 1: ideal-gas tables (of all components), so h, s, u, cp, w are known */
};
CORVANE_API double Corvane_Fluid_number(const CorvaneFluid* fluid, int what, CorvaneError* error);
/* The same of component i. */
CORVANE_API double Corvane_Mixture_number(const CorvaneMixture* mixture, int what, int i,
                                          CorvaneError* error);
CORVANE_API int Corvane_Mixture_size(const CorvaneMixture* mixture);
/* 1 if the pair has no published parameters and the theory's estimate stands in. */
CORVANE_API int Corvane_Mixture_estimated(const CorvaneMixture* mixture, int i, int j,
                                          CorvaneError* error);

/* The model, for the other functions (CSharp_Model1_..., Corvane_ModelN_...); lent, it goes with
 * its handle. */
CORVANE_API void* Corvane_Fluid_model(const CorvaneFluid* fluid);
CORVANE_API void* Corvane_Mixture_model(const CorvaneMixture* mixture);

/* ---- Pure fluids ---- */

enum CorvaneQuantity { /* what a state can be asked by */
    CORVANE_GIVEN_T,
    CORVANE_GIVEN_P,
    CORVANE_GIVEN_RHO,
    CORVANE_GIVEN_H,
    CORVANE_GIVEN_S,
    CORVANE_GIVEN_U,
    CORVANE_GIVEN_Q /* amount of vapour over the whole, 0 to 1 */
};
/* The stable states with two given quantities, by rising temperature, as the points of one line:
 * several where the quantities leave a choice, none where none was found. One phase, or liquid and
 * vapour, with all properties of each. */
CORVANE_API CorvaneResult* Corvane_pure_states(const CorvaneFluid* fluid, int first, double a,
                                               int second, double b, CorvaneError* error);
/* Saturation with bounds of its errors; phases: liquid, vapour. */
CORVANE_API CorvaneResult* Corvane_pure_saturation_T(const CorvaneFluid* fluid, double T,
                                                     CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_pure_saturation_p(const CorvaneFluid* fluid, double p,
                                                     CorvaneError* error);
/* All properties at T and density, stable or not. */
CORVANE_API CorvaneResult* Corvane_pure_phase(const CorvaneFluid* fluid, double T, double rho,
                                              CorvaneError* error);

enum CorvaneTransportProperty {
    CORVANE_VISCOSITY,      /* Pa s */
    CORVANE_CONDUCTIVITY,   /* thermal, W/(m K) */
    CORVANE_SURFACE_TENSION, /* of liquid and vapour, N/m; rho counts for nothing */
    CORVANE_DIFFUSION,      /* m²/s at rho > 0: of a fluid in itself; of two components, by Maxwell and Stefan */
    CORVANE_FICK_DIFFUSION  /* of two components: times the thermodynamic factor */
};
/* A transport property at T and density (0: the dilute gas), by the best model that the data home has
 * for the substance; CORVANE_NOT_OPENED: it has none. evidence (two values, or null): 1 where T lies
 * within what the source states, else 0; relative deviation of a second source, not-a-number without
 * one. */
CORVANE_API double Corvane_transport(const CorvaneFluid* fluid, int property, double T, double rho,
                                     double* evidence, CorvaneError* error);
/* What it is computed by there: the model and its publication; ", 18 % in nine cases of ten" where that is known of the model;
 * ", metastable" where the state is between the densities of saturated vapour and liquid. */
CORVANE_API int Corvane_transport_model(const CorvaneFluid* fluid, int property, double T,
                                        double rho, char* buffer, int size, CorvaneError* error);

/* ---- Mixtures; z: n mole fractions ---- */

/* All properties at T, density and composition, stable or not. */
CORVANE_API CorvaneResult* Corvane_mixture_phase(const CorvaneMixture* mixture, double T,
                                                 double rho, const double* z, int n,
                                                 CorvaneError* error);

/* CORVANE_VISCOSITY, CORVANE_CONDUCTIVITY or a diffusion of one phase at T, density (0: the mixture of dilute gases)
 * and composition, from those of the components; CORVANE_NOT_OPENED: the data home has none of one of
 * them. evidence (one value, or null): 1 where T lies within the ranges of all sources, else 0. */
CORVANE_API double Corvane_mixture_transport(const CorvaneMixture* mixture, int property, double T,
                                             double rho, const double* z, int n, double* evidence,
                                             CorvaneError* error);
/* What it is computed by there: the rules, and the publications of the components' values; likewise, ", metastable" of states
 * that no phase can be in. */
CORVANE_API int Corvane_mixture_transport_model(const CorvaneMixture* mixture, int property,
                                                double T, double rho, const double* z, int n,
                                                char* buffer, int size, CorvaneError* error);
/* Surface tension, N/m, of a liquid x beside a vapour y in equilibrium with it, by density-gradient theory, else by
 * parachors; otherwise likewise. */
CORVANE_API double Corvane_mixture_tension(const CorvaneMixture* mixture, double T,
                                           double rho_liquid, const double* x, double rho_vapour,
                                           const double* y, int n, double* evidence,
                                           CorvaneError* error);
/* The interface between them by density-gradient theory: writes n + 2 values for each of at most `points` points, the place
 * z (nm, rising into the liquid, 0 half-way), the grand potential above that of the phases (MPa), the partial densities
 * (mol/cm3). summary (three values, or null): tension (N/m), its relative error from half the points, thickness (nm, from 10 to
 * 90 % of the way). Returns the number of points that there are; values may be null with points = 0. */
CORVANE_API int Corvane_mixture_interface(const CorvaneMixture* mixture, double T, double rho_liquid,
                                          const double* x, double rho_vapour, const double* y, int n,
                                          double* values, int points, double* summary,
                                          CorvaneError* error);

/* The stable state; phases by falling mass density, all properties of each, CORVANE_FRACTION of the
 * whole. h and s of the whole where there are tables. */
CORVANE_API CorvaneResult* Corvane_flash_pT(const CorvaneMixture* mixture, double p, double T,
                                            const double* z, int n, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_flash_ph(const CorvaneMixture* mixture, double p, double h,
                                            const double* z, int n, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_flash_ps(const CorvaneMixture* mixture, double p, double s,
                                            const double* z, int n, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_flash_Trho(const CorvaneMixture* mixture, double T, double rho,
                                              const double* z, int n, CorvaneError* error);
/* All stable states with two given quantities of CorvaneGiven, by rising temperature (density where T is
 * given), as the points of one line. (p, T), (p, h), (p, s), (T, rho), (T, q), (p, q), (h, s), (rho, u),
 * (rho, s) and (T, s) have one; (T, h), (T, u), (p, rho), (p, u) and (rho, h) may have several, and
 * Corvane_Result_complete tells whether flashes failed where there may be more. q is the amount of the
 * lightest phase. Other pairs are refused. */
CORVANE_API CorvaneResult* Corvane_mixture_states(const CorvaneMixture* mixture, int first,
                                                  double a, int second, double b,
                                                  const double* z, int n, CorvaneError* error);

enum CorvaneBranch { /* where there are several solutions */
    CORVANE_BRANCH_ANY,
    CORVANE_BRANCH_LOWER, /* of lowest p (or T) */
    CORVANE_BRANCH_UPPER
};
/* Phases: the given one, the incipient one; then, where the given composition is two liquids or more
 * beside which the first vapour appears, these with their fractions. */
CORVANE_API CorvaneResult* Corvane_bubble_T(const CorvaneMixture* mixture, double T,
                                            const double* z, int n, int branch,
                                            CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_bubble_p(const CorvaneMixture* mixture, double p,
                                            const double* z, int n, int branch,
                                            CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_dew_T(const CorvaneMixture* mixture, double T, const double* z,
                                         int n, int branch, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_dew_p(const CorvaneMixture* mixture, double p, const double* z,
                                         int n, int branch, CorvaneError* error);

/* The phase envelope from the dew point at p_start on (0: 0.05 MPa) up to p_max (0: 1000 MPa);
 * phases: the given one, the incipient one. all: 1 for the curves of other liquids, too, with a
 * test of every point (CORVANE_FLAG_UNSTABLE). Lines: the curve, then its critical points,
 * cricondentherms and cricondenbars, as far as there are any; then the next curve. */
CORVANE_API CorvaneResult* Corvane_envelope(const CorvaneMixture* mixture, const double* z, int n,
                                            double p_start, double p_max, int all,
                                            CorvaneProgress* progress, void* context,
                                            CorvaneError* error);

/* Critical point of a composition; all that a search finds, by rising density, stable or not. */
CORVANE_API CorvaneResult* Corvane_critical_point(const CorvaneMixture* mixture, const double* z,
                                                  int n, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_critical_points(const CorvaneMixture* mixture, const double* z,
                                                   int n, CorvaneError* error);

/* ---- Binaries; 0 for a limit is its default ---- */

/* Complete p-x-y diagram at T, T-x-y diagram at p: one line a branch, two phases a point; then
 * lines of azeotropes, of three-phase points, and of tie lines found but not traced. */
CORVANE_API CorvaneResult* Corvane_diagram_pxy(const CorvaneMixture* mixture, double T,
                                               double p_max, CorvaneProgress* progress,
                                               void* context, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_diagram_Txy(const CorvaneMixture* mixture, double p,
                                               double T_min, CorvaneProgress* progress,
                                               void* context, CorvaneError* error);
/* One phase a point; where a line ends at a critical end point, the coexisting phase is the second
 * of its last (or first) point. */
CORVANE_API CorvaneResult* Corvane_critical_lines(const CorvaneMixture* mixture, double p_max,
                                                  CorvaneProgress* progress, void* context,
                                                  CorvaneError* error);
/* Three phases a point, by falling mass density; no lines: none was found. */
CORVANE_API CorvaneResult* Corvane_three_phase_lines(const CorvaneMixture* mixture, double p_max,
                                                     CorvaneProgress* progress, void* context,
                                                     CorvaneError* error);
/* Dense and light phase of equal composition. */
CORVANE_API CorvaneResult* Corvane_azeotropic_lines(const CorvaneMixture* mixture, double p_max,
                                                    CorvaneProgress* progress, void* context,
                                                    CorvaneError* error);

/* Pure solid of component `solid` (0 or 1) beside a fluid: phases are the fluid, the solid, and at
 * a eutectic the other solid. The solids are made from the data of the home: anchored at the
 * melting point where it is known, else from the measured sublimation curve; number 6 without. */
CORVANE_API CorvaneResult* Corvane_solubility(const CorvaneMixture* mixture, int solid, double p,
                                              double T, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_eutectic(const CorvaneMixture* mixture, double p,
                                            CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_solid_fluid_isobar(const CorvaneMixture* mixture, int solid,
                                                      double p, CorvaneProgress* progress,
                                                      void* context, CorvaneError* error);
CORVANE_API CorvaneResult* Corvane_solid_fluid_isotherm(const CorvaneMixture* mixture, int solid,
                                                        double T, double p_max,
                                                        CorvaneProgress* progress, void* context,
                                                        CorvaneError* error);

/* ---- Ternaries, property diagrams ---- */

/* Everything that three components do at p and T: a line for each region of two phases, its tie
 * lines in order (CORVANE_END_PURE: at an edge, CORVANE_END_CRITICAL: at a plait point); then the
 * plait points, the corners of the triangles of three phases, and wholes of which nothing certain
 * is known. step: longest step in the compositions of both phases (0: 0.05); mesh: parts of an edge
 * in the search (0: 10). */
CORVANE_API CorvaneResult* Corvane_ternary(const CorvaneMixture* mixture, double p, double T,
                                           double step, int mesh, CorvaneProgress* progress,
                                           void* context, CorvaneError* error);
/* Bubble points, dew points, and an isoline for each of `count` values of the quantities `what`
 * (CORVANE_GIVEN_T, _P, _RHO, _S, _Q), grouped in the order T, p, q, s, rho, with about `points`
 * states each (0: 120): stable states with T, p, rho, h, s, u and q of the whole, without phases.
 * Complete: no state of the isolines is missing. */
CORVANE_API CorvaneResult* Corvane_pure_property_diagram(const CorvaneFluid* fluid, const int* what,
                                                         const double* values, int count,
                                                         int points, CorvaneProgress* progress,
                                                         void* context, CorvaneError* error);
/* The same of a mixture of composition z; CORVANE_GIVEN_Q is not offered for mixtures. */
CORVANE_API CorvaneResult* Corvane_property_diagram(const CorvaneMixture* mixture, const double* z,
                                                    int n, const int* what, const double* values,
                                                    int count, int points,
                                                    CorvaneProgress* progress, void* context,
                                                    CorvaneError* error);

/* ---- Results: lines of points of phases, all counted from 0 ---- */

CORVANE_API int Corvane_Result_lines(const CorvaneResult* result);
CORVANE_API int Corvane_Result_points(const CorvaneResult* result, int line, CorvaneError* error);
CORVANE_API int Corvane_Result_phases(const CorvaneResult* result, int line, int point,
                                      CorvaneError* error);
/* Number of components: the mole fractions of a phase; 0 where the result has no phases. */
CORVANE_API int Corvane_Result_components(const CorvaneResult* result);
/* 1 unless a line ends before its end (stuck, full, interrupted, uncertified) or a diagram has
 * splits that were not traced. */
CORVANE_API int Corvane_Result_complete(const CorvaneResult* result);

enum CorvaneLineKind {
    CORVANE_LINE_POINTS, /* single points: states, flashes, bubble, dew and critical points ... */
    CORVANE_LINE_ENVELOPE,
    CORVANE_LINE_CRICONDENTHERM, /* local maxima of T along the envelope before it */
    CORVANE_LINE_CRICONDENBAR,   /* local maxima of p */
    CORVANE_LINE_CRITICAL,       /* critical points of the envelope before it; a critical line */
    CORVANE_LINE_VAPOUR_LIQUID,  /* branches of a diagram */
    CORVANE_LINE_LIQUID_LIQUID,
    CORVANE_LINE_FLUID_FLUID,
    CORVANE_LINE_AZEOTROPES, /* of a diagram; an azeotropic line */
    CORVANE_LINE_THREE_PHASE,
    CORVANE_LINE_OPEN, /* splits that were found but not traced */
    CORVANE_LINE_SOLID_0, /* component 0 is solid */
    CORVANE_LINE_SOLID_1,
    CORVANE_LINE_LIQUID, /* of property diagrams: bubble points, dew points, isolines */
    CORVANE_LINE_VAPOUR,
    CORVANE_LINE_ISOTHERM,
    CORVANE_LINE_ISOBAR,
    CORVANE_LINE_ISOCHORE,
    CORVANE_LINE_ISENTROPE,
    CORVANE_LINE_EQUAL_Q
};
CORVANE_API int Corvane_Result_kind(const CorvaneResult* result, int line, CorvaneError* error);

enum CorvaneEnd { /* why a line begins or ends where it does */
    CORVANE_END_NONE, /* not a curve */
    CORVANE_END_CLOSED,
    CORVANE_END_PURE,        /* a pure component */
    CORVANE_END_CRITICAL,    /* phases become alike */
    CORVANE_END_END_POINT,   /* of a critical line: another phase coexists */
    CORVANE_END_THREE_PHASE, /* a further phase appears */
    CORVANE_END_EUTECTIC,    /* the other component freezes */
    CORVANE_END_PRESSURE,    /* the highest pressure; of T-x-y diagrams: the highest temperature */
    CORVANE_END_COLD,        /* the lowest temperature */
    CORVANE_END_TENSION,     /* the pressure becomes negative */
    CORVANE_END_DILUTE,      /* a mole fraction becomes too small */
    CORVANE_END_SOLID_RANGE, /* end of the data of the solid */
    CORVANE_END_OTHER_RANGE, /* the other freezes at once where the data of its solid begin */
    CORVANE_END_UNCERTIFIED, /* the next point misses its certificate */
    CORVANE_END_FULL,        /* bound of the number of points */
    CORVANE_END_INTERRUPTED, /* by the caller */
    CORVANE_END_STUCK        /* no shorter step finds a further point */
};
CORVANE_API int Corvane_Result_begin(const CorvaneResult* result, int line, CorvaneError* error);
CORVANE_API int Corvane_Result_end(const CorvaneResult* result, int line, CorvaneError* error);

enum CorvaneProperty {
    /* of a point (phase CORVANE_WHOLE) and of its phases */
    CORVANE_T,   /* K */
    CORVANE_P,   /* MPa */
    CORVANE_RHO, /* mol/cm3 */
    CORVANE_H,   /* J/mol */
    CORVANE_S,   /* J/(mol K) */
    CORVANE_U,   /* J/mol */
    CORVANE_Q,   /* amount of vapour in the whole, two phases of a pure fluid */
    /* of phases */
    CORVANE_FRACTION, /* amount of the phase over the whole */
    CORVANE_G,        /* J/mol */
    CORVANE_A,        /* J/mol */
    CORVANE_Z,
    CORVANE_CV,      /* J/(mol K) */
    CORVANE_CP,      /* J/(mol K) */
    CORVANE_W,       /* speed of sound, m/s */
    CORVANE_MU_JT,   /* Joule-Thomson coefficient, K/MPa */
    CORVANE_KAPPA_T, /* isothermal compressibility, 1/MPa */
    CORVANE_ALPHA_P, /* isobaric expansivity, 1/K */
    CORVANE_DP_DT,   /* at constant density, MPa/K */
    CORVANE_DP_DRHO, /* at constant T, MPa cm3/mol */
    CORVANE_M,       /* molar mass, g/mol */
    /* of points: the certificate (what they mean: corvane/phases/report/certificate.h) */
    CORVANE_DMU,     /* largest difference of the chemical potentials, over RT */
    CORVANE_DP,      /* largest relative difference of the pressures */
    CORVANE_TARGET,  /* distance to the given h, s or rho */
    CORVANE_BALANCE, /* of the components */
    CORVANE_TPD,     /* smallest tangent-plane distance found, over RT */
    CORVANE_VALUE_ERROR, /* bounds of the errors: of p or T, relative */
    CORVANE_X_ERROR,
    CORVANE_RHO_ERROR,
    CORVANE_APART_ERROR,
    CORVANE_CONDITIONS,  /* residual of the critical conditions */
    CORVANE_EVALUATIONS, /* of the model */
    /* + i: mole fraction of component i in a phase */
    CORVANE_X = 1000
};
enum { CORVANE_WHOLE = -1 };
/* One value; not-a-number where the result does not have it. */
CORVANE_API double Corvane_Result_value(const CorvaneResult* result, int line, int point, int phase,
                                        int property, CorvaneError* error);
/* The values of all points of a line, of which the first `size` are written; returns how many there
 * are, so that a null array of size 0 asks for the number. */
CORVANE_API int Corvane_Result_column(const CorvaneResult* result, int line, int phase,
                                      int property, double* values, int size, CorvaneError* error);

enum CorvaneFlag { /* bits */
    CORVANE_FLAG_NEAR_TRIVIAL = 1,    /* the phases are nearly alike, as near a critical point */
    CORVANE_FLAG_ESTIMATED_PAIRS = 2, /* a pair without published parameters */
    CORVANE_FLAG_EXTRAPOLATED = 4,    /* outside the published range of the parameters */
    CORVANE_FLAG_BELOW_TRIPLE = 8,    /* below the triple temperature of a component: may freeze */
    CORVANE_FLAG_UNSTABLE = 16,       /* a further phase is more stable */
    CORVANE_FLAG_BUBBLE = 32          /* envelope: the incipient phase is the lighter one */
};
CORVANE_API int Corvane_Result_flags(const CorvaneResult* result, int line, int point,
                                     CorvaneError* error);
/* The certificate as a line of text; "" where there is none. */
CORVANE_API int Corvane_Result_certificate(const CorvaneResult* result, int line, int point,
                                           char* buffer, int size, CorvaneError* error);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
