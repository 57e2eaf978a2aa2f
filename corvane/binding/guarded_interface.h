/* Guarded function interface: the operations of flat_interface.h that can fail, for callers that no
 * C++ exception may reach.
 *
 * A function Corvane_X does what CSharp_X does and takes one more argument, the record that
 * receives the outcome. After a failure it returns zero, output arguments hold what the operation
 * left in them, and no callback has been called. The record may be null. Handles and ownership are
 * those of the flat interface; Corvane_attach1 and Corvane_attachN go with Corvane_detach1 and
 * Corvane_detachN, which release a model through its plug-in (a mixture with its components).
 */
#ifndef CORVANE_GUARDED_INTERFACE_H
#define CORVANE_GUARDED_INTERFACE_H

#include <stdio.h>

#include "corvane/core/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What kind of failure a CorvaneError holds. */
enum {
    CORVANE_OK = 0,
    CORVANE_THERMODYNAMIC = 1, /* ThException: number and info as there */
    CORVANE_NUMERICAL = 2,     /* MthException */
    CORVANE_NULL_ARGUMENT = 3, /* a null handle where an object is needed */
    CORVANE_NO_MEMORY = 4,
    CORVANE_UNKNOWN = 5,
    /* of certified_interface.h */
    CORVANE_NO_SOLUTION = 6, /* the search was complete and says that there is none */
    CORVANE_GAVE_UP = 7,     /* no certified result; nothing is known about a solution */
    CORVANE_NOT_OPENED = 8,  /* what was asked for by name is not there, or damaged */
    CORVANE_BAD_ARGUMENT = 9 /* an index, a size or a choice out of range */
};

typedef struct CorvaneError {
    int kind;
    int number;        /* index into the message table of the kind, 0 where there is none */
    int info;          /* additional integer, -1 = none */
    char message[384]; /* text of the failure, without info and newline; "" on success */
} CorvaneError;

/* Written by scripts/bindings from signatures.txt, up to the end of the declarations. */

/* ---- Vector<double> ---- */

CORVANE_API void* Corvane_new_doubleV__SWIG_0(int n, CorvaneError* error);
CORVANE_API void* Corvane_new_doubleV__SWIG_2(void* v, CorvaneError* error);
CORVANE_API int Corvane_doubleV_size__SWIG_1(void* self, int n, CorvaneError* error);

/* ---- Vector<int> ---- */

CORVANE_API void* Corvane_new_intV__SWIG_0(int n, CorvaneError* error);
CORVANE_API void* Corvane_new_intV__SWIG_2(void* v, CorvaneError* error);
CORVANE_API int Corvane_intV_size__SWIG_1(void* self, int n, CorvaneError* error);

/* ---- Matrix<double> ---- */

CORVANE_API void* Corvane_new_doubleM__SWIG_0(int rows, int cols, CorvaneError* error);
CORVANE_API void Corvane_doubleM_size(void* self, int rows, int cols, CorvaneError* error);
CORVANE_API double Corvane_doubleM_det(void* self, CorvaneError* error);

/* ---- Free functions ---- */

CORVANE_API void* Corvane_attach1(const char* eos, CorvaneError* error);
CORVANE_API void* Corvane_attachN(const char* eos, const char* mixing, CorvaneError* error);
CORVANE_API int Corvane_read_vars(const char* prompt, double* x1, double* x2, double* dx,
                                  CorvaneError* error);
CORVANE_API double Corvane_adjust_x(int i, void* x, CorvaneError* error);
CORVANE_API void Corvane_read_r(const char* prompt, void* x, CorvaneError* error);
CORVANE_API void Corvane_read_x(const char* prompt, void* x, CorvaneError* error);
CORVANE_API int Corvane_volav(void* model, int kind, double p, double T, void* x, double d,
                              double* rho, CorvaneError* error);
CORVANE_API int Corvane_volf1(void* model, double p, double T, double vmin, double* rho1,
                              double* rho2, CorvaneError* error);
CORVANE_API unsigned int Corvane_volnewt(void* model, int kind, double p, double T, void* x,
                                         double d, double* rho, CorvaneError* error);
CORVANE_API int Corvane_volume(void* model, int kind, double p, double T, void* x, double d,
                               void* roots, CorvaneError* error);
CORVANE_API void Corvane_vle1_T(void* model, double T, int cont, double* p, double* rhoL,
                                double* rhoV, CorvaneError* error);
CORVANE_API void Corvane_vle1_p(void* model, double p, int cont, double* T, double* rhoL,
                                double* rhoV, CorvaneError* error);
CORVANE_API double Corvane_maxwell(void* model, double p, double T, double* rhoL, double* rhoV,
                                   CorvaneError* error);
CORVANE_API void Corvane_vleN_T(void* model, double T, void* x, double* p, double* rho1, void* rho2,
                                CorvaneError* error);
CORVANE_API void Corvane_vleN_p(void* model, double p, void* x, double* T, double* rho1, void* rho2,
                                CorvaneError* error);
CORVANE_API void* Corvane_objffeN(void* u, void* ctx, CorvaneError* error);
CORVANE_API void* Corvane_ffinit(void* model, double p, double T, CorvaneError* error);
CORVANE_API void Corvane_equil_min(void* m, double p, double T, void* ph, void* x,
                                   CorvaneError* error);
CORVANE_API void Corvane_list_different(void* a, double d, void* list, int* count, void* idx,
                                        CorvaneError* error);
CORVANE_API void Corvane_equil2s(void* m, double p, double T, void* x, int phase, double d,
                                 void* rho, int* i, CorvaneError* error);
CORVANE_API void Corvane_equil2(void* m, double p, double T, void* x, void* rho,
                                CorvaneError* error);
CORVANE_API void Corvane_crit_slope_x(void* m, void* x, double* s, void* line, CorvaneError* error);

/* ---- Pure-substance model ---- */

CORVANE_API double Corvane_Model1_Ak(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Am(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Ar(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Sk(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Um(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Z(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_pV(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_B(void* self, double T, int n, CorvaneError* error);
CORVANE_API double Corvane_Model1_Vm(void* self, double p, double T, int phase,
                                     CorvaneError* error);
CORVANE_API double Corvane_Model1_CVm__SWIG_0(void* self, double rho, double T,
                                              CorvaneError* error);
CORVANE_API double Corvane_Model1_CVm__SWIG_1(void* self, double p, double T, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_Model1_CVr__SWIG_0(void* self, double rho, double T,
                                              CorvaneError* error);
CORVANE_API double Corvane_Model1_CVr__SWIG_1(void* self, double p, double T, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_Model1_Cpm__SWIG_0(void* self, double rho, double T,
                                              CorvaneError* error);
CORVANE_API double Corvane_Model1_Cpm__SWIG_1(void* self, double p, double T, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_Model1_Cpr__SWIG_0(void* self, double rho, double T,
                                              CorvaneError* error);
CORVANE_API double Corvane_Model1_Cpr__SWIG_1(void* self, double p, double T, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_Model1_Ge__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Ge__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Gm__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Gm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Gr__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Gr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Hm__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Hm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Hr__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Hr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Sm__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Sm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Sr__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Sr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_Ur__SWIG_0(void* self, double rho, double T, CorvaneError* error);
CORVANE_API double Corvane_Model1_Ur__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                             CorvaneError* error);
CORVANE_API double Corvane_Model1_alphap__SWIG_0(void* self, double rho, double T,
                                                 CorvaneError* error);
CORVANE_API double Corvane_Model1_alphap__SWIG_1(void* self, double p, double T, int phase,
                                                 double* rho, CorvaneError* error);
CORVANE_API double Corvane_Model1_betaV__SWIG_0(void* self, double rho, double T,
                                                CorvaneError* error);
CORVANE_API double Corvane_Model1_betaV__SWIG_1(void* self, double p, double T, int phase,
                                                double* rho, CorvaneError* error);
CORVANE_API double Corvane_Model1_kappaT__SWIG_0(void* self, double rho, double T,
                                                 CorvaneError* error);
CORVANE_API double Corvane_Model1_kappaT__SWIG_1(void* self, double p, double T, int phase,
                                                 double* rho, CorvaneError* error);
CORVANE_API void* Corvane_Model1_crit(void* self, double T, double rho, double Zt,
                                      CorvaneError* error);
CORVANE_API void Corvane_Model1_params_(void* self, void* v, CorvaneError* error);
CORVANE_API void Corvane_Model1_par_in(void* self, FILE* f, int mode, CorvaneError* error);
CORVANE_API void Corvane_Model1_par_out(void* self, FILE* f, CorvaneError* error);
CORVANE_API double Corvane_Model1_xinit(void* self, double p, double T, int phase,
                                        CorvaneError* error);
CORVANE_API int Corvane_Model1_vcalc(void* self, double p, double T, int phase, double* rho1,
                                     double* rho2, CorvaneError* error);
CORVANE_API double Corvane_Model1_xrho(void* self, double T, int phase, CorvaneError* error);
CORVANE_API int Corvane_Model1_load(void* self, const char* eos, CorvaneError* error);
CORVANE_API void Corvane_Model1_load_thchem(void* self, CorvaneError* error);
CORVANE_API void Corvane_Model1_store(void* self, const char* eos, CorvaneError* error);
CORVANE_API unsigned int Corvane_Model1_off(void* self, double rho, double T, CorvaneError* error);

/* ---- Mixture model ---- */

CORVANE_API double Corvane_ModelN_Ak(void* self, void* rho_i, double T, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Gk(void* self, void* rho_i, double T, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Sk(void* self, void* rho_i, double T, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Am(void* self, double rho, double T, void* x,
                                     CorvaneError* error);
CORVANE_API double Corvane_ModelN_Um(void* self, double rho, double T, void* x,
                                     CorvaneError* error);
CORVANE_API double Corvane_ModelN_Ur(void* self, double rho, double T, void* x,
                                     CorvaneError* error);
CORVANE_API double Corvane_ModelN_pV(void* self, double rho, double T, void* x,
                                     CorvaneError* error);
CORVANE_API double Corvane_ModelN_B(void* self, double T, void* x, int k, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Vm(void* self, double p, double T, void* x, int phase,
                                     CorvaneError* error);
CORVANE_API double Corvane_ModelN_CVm__SWIG_0(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_CVm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_CVr__SWIG_0(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_CVr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Cpm__SWIG_0(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_Cpm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Cpr__SWIG_0(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_Cpr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                              double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Ge__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Ge__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Gm__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Gm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Gr__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Gr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Hm__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Hm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Hr__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Hr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_alphap__SWIG_0(void* self, double rho, double T, void* x,
                                                 CorvaneError* error);
CORVANE_API double Corvane_ModelN_alphap__SWIG_1(void* self, double p, double T, void* x, int phase,
                                                 double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_kappaT__SWIG_0(void* self, double rho, double T, void* x,
                                                 CorvaneError* error);
CORVANE_API double Corvane_ModelN_kappaT__SWIG_1(void* self, double p, double T, void* x, int phase,
                                                 double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Ar__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Ar__SWIG_1(void* self, void* rho_i, double T,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Z__SWIG_0(void* self, double rho, double T, void* x,
                                            CorvaneError* error);
CORVANE_API double Corvane_ModelN_Z__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Sr__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Sr__SWIG_1(void* self, void* rho_i, double T,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_betaV__SWIG_0(void* self, double rho, double T, void* x,
                                                CorvaneError* error);
CORVANE_API double Corvane_ModelN_betaV__SWIG_1(void* self, void* rho_i, double T,
                                                CorvaneError* error);
CORVANE_API double Corvane_ModelN_betaV__SWIG_2(void* self, double p, double T, void* x, int phase,
                                                double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Sm__SWIG_0(void* self, double rho, double T, void* x,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Sm__SWIG_1(void* self, void* rho_i, double T,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_Sm__SWIG_2(void* self, double p, double T, void* x, int phase,
                                             double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_my__SWIG_0(void* self, void* rho_i, double T, int i,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_my__SWIG_1(void* self, double rho, double T, void* x, int i,
                                             CorvaneError* error);
CORVANE_API double Corvane_ModelN_my__SWIG_2(void* self, double p, double T, void* x, int i,
                                             int phase, double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_myr__SWIG_0(void* self, void* rho_i, double T, int i,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_myr__SWIG_1(void* self, double rho, double T, void* x, int i,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_myr__SWIG_2(void* self, double p, double T, void* x, int i,
                                              int phase, double* rho, CorvaneError* error);
CORVANE_API double Corvane_ModelN_Psi__SWIG_0(void* self, void* rho_i, double T,
                                              CorvaneError* error);
CORVANE_API double Corvane_ModelN_Psi__SWIG_1(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API void* Corvane_ModelN_PsiG__SWIG_0(void* self, void* rho_i, double T,
                                              CorvaneError* error);
CORVANE_API void* Corvane_ModelN_PsiG__SWIG_1(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API void* Corvane_ModelN_PsiH__SWIG_0(void* self, void* rho_i, double T,
                                              CorvaneError* error);
CORVANE_API void* Corvane_ModelN_PsiH__SWIG_1(void* self, double rho, double T, void* x,
                                              CorvaneError* error);
CORVANE_API int Corvane_ModelN_vcalc(void* self, double p, double T, void* x, int mode,
                                     double* rho_a, double* rho_b, CorvaneError* error);
CORVANE_API void Corvane_ModelN_alloc(void* self, int n, const char* eos, CorvaneError* error);
CORVANE_API void Corvane_ModelN_par_alloc(void* self, CorvaneError* error);
CORVANE_API void Corvane_ModelN_par_in(void* self, FILE* f, int i, int j, CorvaneError* error);
CORVANE_API void Corvane_ModelN_par_out(void* self, FILE* f, int i, int j, CorvaneError* error);
CORVANE_API void* Corvane_ModelN_mixpar(void* self, void* x, CorvaneError* error);
CORVANE_API void Corvane_ModelN_load(void* self, const char* eos, const char* mth,
                                     CorvaneError* error);
CORVANE_API void Corvane_ModelN_store2(void* self, const char* eos, const char* mth,
                                       CorvaneError* error);

/* ---- Ideal-gas heat capacities ---- */

CORVANE_API double Corvane_Ideal_Am(void* self, double T, CorvaneError* error);
CORVANE_API double Corvane_Ideal_CVm(void* self, double T, CorvaneError* error);
CORVANE_API double Corvane_Ideal_Cpm(void* self, double T, CorvaneError* error);
CORVANE_API double Corvane_Ideal_Gm(void* self, double T, CorvaneError* error);
CORVANE_API double Corvane_Ideal_Hm(void* self, double T, CorvaneError* error);
CORVANE_API double Corvane_Ideal_Sm(void* self, double T, CorvaneError* error);
CORVANE_API double Corvane_Ideal_Um(void* self, double T, CorvaneError* error);
CORVANE_API int Corvane_Ideal_interval(void* self, double T, CorvaneError* error);
CORVANE_API void Corvane_Ideal_load(void* self, CorvaneError* error);
CORVANE_API void Corvane_Ideal_offset(void* self, double dh, double ds, CorvaneError* error);

/* ---- Solid phases ---- */

CORVANE_API double Corvane_Solid_Ae__SWIG_0(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Ae__SWIG_1(void* self, double p, double T, int* i, double* rho,
                                            CorvaneError* error);
CORVANE_API double Corvane_Solid_Am__SWIG_0(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Am__SWIG_1(void* self, double p, double T, int* i, double* rho,
                                            CorvaneError* error);
CORVANE_API double Corvane_Solid_Gm__SWIG_0(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Gm__SWIG_1(void* self, double p, double T, int* i, double* rho,
                                            CorvaneError* error);
CORVANE_API double Corvane_Solid_Ge(void* self, double p, double T, int* i, double* rho,
                                    CorvaneError* error);
CORVANE_API double Corvane_Solid_He(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Hm(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Se(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Sm(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Ue(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Um(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_Vm(void* self, double p, double T, CorvaneError* error);
CORVANE_API double Corvane_Solid_d(void* self, double p, double T, CorvaneError* error);
CORVANE_API int Corvane_Solid_sge(void* self, double T, int i, double* psub, double* v,
                                  double* kappa, CorvaneError* error);
CORVANE_API void Corvane_Solid_load(void* self, CorvaneError* error);

/* ---- One solid phase ---- */

CORVANE_API void Corvane_Subl_load(void* self, FILE* f, CorvaneError* error);

/* ---- Viscosity ---- */

CORVANE_API double Corvane_Visco_eta(void* self, double rho, double T, double* pr, double* pa,
                                     CorvaneError* error);
CORVANE_API double Corvane_Visco_eta0(void* self, double T, CorvaneError* error);
CORVANE_API void Corvane_Visco_load0(void* self, CorvaneError* error);
CORVANE_API void Corvane_Visco_load1(void* self, const char* set, CorvaneError* error);
CORVANE_API void Corvane_Visco_set1(void* self, void* v, CorvaneError* error);
CORVANE_API void Corvane_Visco_set_comment(void* self, const char* text, int* level,
                                           CorvaneError* error);
CORVANE_API void Corvane_Visco_store1(void* self, const char* set, double rms, CorvaneError* error);

/* ---- Operations without a counterpart in the flat interface ---- */

/* Releases a model through its plug-in; a mixture with its components. */
CORVANE_API void Corvane_detach1(void* model, CorvaneError* error);
CORVANE_API void Corvane_detachN(void* model, CorvaneError* error);
/* The saturation solver with its memory in an object: one per curve and thread. */
CORVANE_API void* Corvane_new_Saturation(CorvaneError* error);
CORVANE_API void Corvane_delete_Saturation(void* self);
CORVANE_API void Corvane_Saturation_at_T(void* self, void* model, double T, int cont, double* p,
                                         double* rhoL, double* rhoV, CorvaneError* error);
CORVANE_API void Corvane_Saturation_at_p(void* self, void* model, double p, int cont, double* T,
                                         double* rhoL, double* rhoV, CorvaneError* error);
/* As Corvane_ModelN_load; pairs without a file keep the theory's estimate. Returns their
 * number. */
CORVANE_API int Corvane_ModelN_load_estimating(void* self, const char* eos, const char* mth,
                                               CorvaneError* error);
/* Number of parameters of a pair; 0 if the plug-in does not tell. */
CORVANE_API int Corvane_ModelN_pair_parameters(void* self);
/* The physical heat capacities over R, residual and total. */
CORVANE_API void Corvane_ModelN_heat_capacities(void* self, double rho, double T, void* x,
                                                double* CVr, double* Cpr, double* CVm, double* Cpm,
                                                CorvaneError* error);
/* Number of components: the i of CSharp_ModelN_getModel1i is below it. */
CORVANE_API int Corvane_ModelN_components(void* self);
/* One element of a matrix; i below the number of rows, j below that of columns, unchecked. */
CORVANE_API double Corvane_doubleM_getItemValue(void* self, int i, int j);
CORVANE_API void Corvane_doubleM_setItemValue(void* self, int i, int j, double x);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
