/* Flat function interface of the library, for C and for languages that call C functions.
 *
 * Objects cross as opaque handles (void*): what a CSharp_new_... function returns is the caller's
 * until it goes to the matching CSharp_delete_...; so are vectors and matrices returned by
 * functions that compute one. Members, elements and components are borrowed and live as long as
 * their owner, elements until the next resize. References to numbers cross as addresses, strings in
 * as char const*, strings out through the string callback, whose result the function returns.
 * Units, meanings and error codes are those of the class interface.
 *
 * A null handle for a container, record or enumeration argument is refused through the argument
 * callback; the functions that translate exceptions report them through the exception callback.
 * Both then return zero. Every other function lets C++ exceptions leave: a caller that cannot catch
 * them must use the guarded functions of guarded_interface.h.
 */
#ifndef CORVANE_FLAT_INTERFACE_H
#define CORVANE_FLAT_INTERFACE_H

#include <stdio.h>

#include "corvane/core/api.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Callbacks, registered once before any other call; a null pointer is never called ---- */

typedef void CorvaneExceptionCallback(const char* message);
typedef void CorvaneArgumentExceptionCallback(const char* message, const char* parameter);
typedef void* CorvaneStringCallback(const char* text);

CORVANE_API void SWIGRegisterExceptionCallbacks_libcorvane(
    CorvaneExceptionCallback* application, CorvaneExceptionCallback* arithmetic,
    CorvaneExceptionCallback* divide_by_zero, CorvaneExceptionCallback* index_out_of_range,
    CorvaneExceptionCallback* invalid_cast, CorvaneExceptionCallback* invalid_operation,
    CorvaneExceptionCallback* io, CorvaneExceptionCallback* null_reference,
    CorvaneExceptionCallback* out_of_memory, CorvaneExceptionCallback* overflow,
    CorvaneExceptionCallback* system);
CORVANE_API void SWIGRegisterExceptionArgumentCallbacks_libcorvane(
    CorvaneArgumentExceptionCallback* argument, CorvaneArgumentExceptionCallback* argument_null,
    CorvaneArgumentExceptionCallback* argument_out_of_range);
CORVANE_API void SWIGRegisterStringCallback_libcorvane(CorvaneStringCallback* callback);

/* Written by scripts/bindings from signatures.txt, up to the end of the declarations. */

/* ---- Vector<double> ---- */

CORVANE_API void* CSharp_new_doubleV__SWIG_0(int n);
CORVANE_API void* CSharp_new_doubleV__SWIG_1(void);
CORVANE_API void* CSharp_new_doubleV__SWIG_2(void* v);
CORVANE_API void CSharp_delete_doubleV(void* self);
CORVANE_API int CSharp_doubleV_size__SWIG_0(void* self);
CORVANE_API int CSharp_doubleV_size__SWIG_1(void* self, int n);
CORVANE_API double* CSharp_doubleV_first__SWIG_0(void* self);
CORVANE_API double* CSharp_doubleV_last__SWIG_0(void* self);
CORVANE_API double* CSharp_doubleV_getItem__SWIG_0(void* self, int i);
CORVANE_API double CSharp_doubleV_getItemValue(void* self, int i);
CORVANE_API void CSharp_doubleV_setItemValue(void* self, int i, double x);
CORVANE_API int CSharp_doubleV_find_idx(void* self, int* key);
CORVANE_API double CSharp_doubleV_find_val(void* self, int* key);
CORVANE_API void CSharp_doubleV_func(void* self, double (*f)(double));
CORVANE_API double CSharp_doubleV_polynomial(void* self, double x);
CORVANE_API int CSharp_doubleV_print__SWIG_0(void* self, FILE* f, const char* head, const char* fmt,
                                             const char* tail);
CORVANE_API int CSharp_doubleV_print__SWIG_1(void* self, FILE* f, const char* fmt);
CORVANE_API int CSharp_doubleV_read(void* self, FILE* f, const char* fmt);
CORVANE_API void CSharp_doubleV_ramp(void* self, double start, double step);
CORVANE_API void CSharp_doubleV_set(void* self, double x);
CORVANE_API double CSharp_doubleV_sum(void* self);
CORVANE_API double CSharp_doubleV_sum2(void* self);
CORVANE_API void CSharp_doubleV_urand(void* self);

/* ---- Vector<int> ---- */

CORVANE_API void* CSharp_new_intV__SWIG_0(int n);
CORVANE_API void* CSharp_new_intV__SWIG_1(void);
CORVANE_API void* CSharp_new_intV__SWIG_2(void* v);
CORVANE_API void CSharp_delete_intV(void* self);
CORVANE_API int CSharp_intV_size__SWIG_0(void* self);
CORVANE_API int CSharp_intV_size__SWIG_1(void* self, int n);
CORVANE_API int* CSharp_intV_first__SWIG_0(void* self);
CORVANE_API int* CSharp_intV_last__SWIG_0(void* self);
CORVANE_API int* CSharp_intV_getItem__SWIG_0(void* self, int i);
CORVANE_API int CSharp_intV_getItemValue(void* self, int i);
CORVANE_API void CSharp_intV_setItemValue(void* self, int i, int x);
CORVANE_API int CSharp_intV_find_idx(void* self, int* key);
CORVANE_API int CSharp_intV_find_val(void* self, int* key);
CORVANE_API void CSharp_intV_func(void* self, int (*f)(int));
CORVANE_API int CSharp_intV_polynomial(void* self, int x);
CORVANE_API int CSharp_intV_print__SWIG_0(void* self, FILE* f, const char* head, const char* fmt,
                                          const char* tail);
CORVANE_API int CSharp_intV_print__SWIG_1(void* self, FILE* f, const char* fmt);
CORVANE_API int CSharp_intV_read(void* self, FILE* f, const char* fmt);
CORVANE_API void CSharp_intV_ramp(void* self, int start, int step);
CORVANE_API void CSharp_intV_set(void* self, int x);
CORVANE_API int CSharp_intV_sum(void* self);
CORVANE_API int CSharp_intV_sum2(void* self);

/* ---- Matrix<double> ---- */

CORVANE_API void* CSharp_new_doubleM__SWIG_0(int rows, int cols);
CORVANE_API void* CSharp_new_doubleM__SWIG_1(int rows);
CORVANE_API void* CSharp_new_doubleM__SWIG_2(void);
CORVANE_API void CSharp_delete_doubleM(void* self);
CORVANE_API int CSharp_doubleM_rows(void* self);
CORVANE_API int CSharp_doubleM_cols(void* self);
CORVANE_API void CSharp_doubleM_size(void* self, int rows, int cols);
CORVANE_API void* CSharp_doubleM_I(void* self);
CORVANE_API double CSharp_doubleM_det(void* self);

/* ---- Exception objects ---- */

CORVANE_API void* CSharp_new_ThException__SWIG_0(int number);
CORVANE_API void* CSharp_new_ThException__SWIG_1(int number, int info);
CORVANE_API void CSharp_delete_ThException(void* self);
CORVANE_API int CSharp_ThException_number(void* self);
CORVANE_API void* CSharp_ThException_message(void* self);

/* ---- Constants and settings ---- */

CORVANE_API int CSharp_th_namelength_get(void);
CORVANE_API int CSharp_th_eqnlength_get(void);
CORVANE_API int CSharp_th_commlength_get(void);
CORVANE_API double CSharp_R_get(void);
CORVANE_API double CSharp_NA_get(void);
CORVANE_API double CSharp_kB_get(void);
CORVANE_API double CSharp_hP_get(void);
CORVANE_API double CSharp_pref_get(void);
CORVANE_API double CSharp_th_inc0_get(void);
CORVANE_API double CSharp_th_inc1_get(void);
CORVANE_API double CSharp_th_veps_get(void);
CORVANE_API double CSharp_ran_shuffle(void);

/* ---- Free functions ---- */

CORVANE_API void* CSharp_attach1(const char* eos);
CORVANE_API void* CSharp_attachN(const char* eos, const char* mixing);
CORVANE_API int CSharp_read_vars(const char* prompt, double* x1, double* x2, double* dx);
CORVANE_API int CSharp_recognize(const char* name, void* table);
CORVANE_API double CSharp_xtoz(double x);
CORVANE_API double CSharp_ztox(double z);
CORVANE_API double CSharp_adjust_x(int i, void* x);
CORVANE_API void CSharp_read_r(const char* prompt, void* x);
CORVANE_API void CSharp_read_x(const char* prompt, void* x);
CORVANE_API int CSharp_volav(void* model, int kind, double p, double T, void* x, double d,
                             double* rho);
CORVANE_API int CSharp_volf1(void* model, double p, double T, double vmin, double* rho1,
                             double* rho2);
CORVANE_API unsigned int CSharp_volnewt(void* model, int kind, double p, double T, void* x,
                                        double d, double* rho);
CORVANE_API int CSharp_volume(void* model, int kind, double p, double T, void* x, double d,
                              void* roots);
CORVANE_API void CSharp_vle1_T(void* model, double T, int cont, double* p, double* rhoL,
                               double* rhoV);
CORVANE_API void CSharp_vle1_p(void* model, double p, int cont, double* T, double* rhoL,
                               double* rhoV);
CORVANE_API double CSharp_maxwell(void* model, double p, double T, double* rhoL, double* rhoV);
CORVANE_API void CSharp_vleN_T(void* model, double T, void* x, double* p, double* rho1, void* rho2);
CORVANE_API void CSharp_vleN_p(void* model, double p, void* x, double* T, double* rho1, void* rho2);
CORVANE_API void* CSharp_objffeN(void* u, void* ctx);
CORVANE_API void* CSharp_ffinit(void* model, double p, double T);
CORVANE_API void CSharp_equil_min(void* m, double p, double T, void* ph, void* x);
CORVANE_API void CSharp_list_different(void* a, double d, void* list, int* count, void* idx);
CORVANE_API void CSharp_equil2s(void* m, double p, double T, void* x, int phase, double d,
                                void* rho, int* i);
CORVANE_API void CSharp_equil2(void* m, double p, double T, void* x, void* rho);
CORVANE_API void CSharp_crit_slope_x(void* m, void* x, double* s, void* line);

/* ---- Pure-substance model ---- */

CORVANE_API double CSharp_Model1_Ak(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Am(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Ar(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Sk(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Um(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Z(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_pV(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_B(void* self, double T, int n);
CORVANE_API double CSharp_Model1_Vm(void* self, double p, double T, int phase);
CORVANE_API double CSharp_Model1_CVm__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_CVm__SWIG_1(void* self, double p, double T, int phase,
                                             double* rho);
CORVANE_API double CSharp_Model1_CVr__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_CVr__SWIG_1(void* self, double p, double T, int phase,
                                             double* rho);
CORVANE_API double CSharp_Model1_Cpm__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Cpm__SWIG_1(void* self, double p, double T, int phase,
                                             double* rho);
CORVANE_API double CSharp_Model1_Cpr__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Cpr__SWIG_1(void* self, double p, double T, int phase,
                                             double* rho);
CORVANE_API double CSharp_Model1_Ge__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Ge__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Gm__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Gm__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Gr__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Gr__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Hm__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Hm__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Hr__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Hr__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Sm__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Sm__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Sr__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Sr__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_Ur__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_Ur__SWIG_1(void* self, double p, double T, int phase, double* rho);
CORVANE_API double CSharp_Model1_alphap__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_alphap__SWIG_1(void* self, double p, double T, int phase,
                                                double* rho);
CORVANE_API double CSharp_Model1_betaV__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_betaV__SWIG_1(void* self, double p, double T, int phase,
                                               double* rho);
CORVANE_API double CSharp_Model1_kappaT__SWIG_0(void* self, double rho, double T);
CORVANE_API double CSharp_Model1_kappaT__SWIG_1(void* self, double p, double T, int phase,
                                                double* rho);
CORVANE_API double CSharp_Model1_M__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_M__SWIG_1(void* self, double value);
CORVANE_API double CSharp_Model1_vs__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_vs__SWIG_1(void* self, double value);
CORVANE_API double CSharp_Model1_Ts__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_Ts__SWIG_1(void* self, double value);
CORVANE_API double CSharp_Model1_Tcrit__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_Tcrit__SWIG_1(void* self, double value);
CORVANE_API double CSharp_Model1_pcrit__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_pcrit__SWIG_1(void* self, double value);
CORVANE_API double CSharp_Model1_vcrit__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_vcrit__SWIG_1(void* self, double value);
CORVANE_API double CSharp_Model1_omega__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_omega__SWIG_1(void* self, double value);
CORVANE_API void* CSharp_Model1_crit(void* self, double T, double rho, double Zt);
CORVANE_API double CSharp_Model1_param__SWIG_0(void* self, int i);
CORVANE_API void CSharp_Model1_param__SWIG_1(void* self, int i, double x);
CORVANE_API void CSharp_Model1_params_(void* self, void* v);
CORVANE_API double* CSharp_Model1_ppar__SWIG_0(void* self, int i);
CORVANE_API void CSharp_Model1_par_in(void* self, FILE* f, int mode);
CORVANE_API void CSharp_Model1_par_out(void* self, FILE* f);
CORVANE_API int CSharp_Model1_mpar(void* self);
CORVANE_API int CSharp_Model1_madj(void* self);
CORVANE_API double CSharp_Model1_xinit(void* self, double p, double T, int phase);
CORVANE_API int CSharp_Model1_vcalc(void* self, double p, double T, int phase, double* rho1,
                                    double* rho2);
CORVANE_API double CSharp_Model1_xrho(void* self, double T, int phase);
CORVANE_API int CSharp_Model1_load(void* self, const char* eos);
CORVANE_API void CSharp_Model1_load_thchem(void* self);
CORVANE_API void CSharp_Model1_store(void* self, const char* eos);
CORVANE_API void CSharp_Model1_show1(void* self, const char* title);
CORVANE_API void CSharp_Model1_intro(void* self, const char* title, int level);
CORVANE_API unsigned int CSharp_Model1_off(void* self, double rho, double T);
CORVANE_API int CSharp_Model1_id__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_id__SWIG_1(void* self, int id);
CORVANE_API void* CSharp_Model1_name__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_name__SWIG_1(void* self, const char* name);
CORVANE_API void* CSharp_Model1_comment__SWIG_0(void* self);
CORVANE_API void CSharp_Model1_comment__SWIG_1(void* self, const char* text);
CORVANE_API void* CSharp_Model1_eos(void* self);
CORVANE_API void* CSharp_Model1_ideal_get(void* self);
CORVANE_API void CSharp_Model1_ideal_set(void* self, void* value);
CORVANE_API void* CSharp_Model1_solid_get(void* self);
CORVANE_API void CSharp_Model1_solid_set(void* self, void* value);
CORVANE_API void* CSharp_Model1_visco_get(void* self);
CORVANE_API void CSharp_Model1_visco_set(void* self, void* value);
/* Through the plug-in, so that the members of its own class go as well. */
CORVANE_API void CSharp_delete_Model1(void* self);

/* ---- Mixture model ---- */

CORVANE_API double CSharp_ModelN_Ak(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Gk(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Sk(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Am(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Um(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Ur(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_pV(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_B(void* self, double T, void* x, int k);
CORVANE_API double CSharp_ModelN_Vm(void* self, double p, double T, void* x, int phase);
CORVANE_API double CSharp_ModelN_CVm__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_CVm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho);
CORVANE_API double CSharp_ModelN_CVr__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_CVr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho);
CORVANE_API double CSharp_ModelN_Cpm__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Cpm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho);
CORVANE_API double CSharp_ModelN_Cpr__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Cpr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                             double* rho);
CORVANE_API double CSharp_ModelN_Ge__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Ge__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho);
CORVANE_API double CSharp_ModelN_Gm__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Gm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho);
CORVANE_API double CSharp_ModelN_Gr__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Gr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho);
CORVANE_API double CSharp_ModelN_Hm__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Hm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho);
CORVANE_API double CSharp_ModelN_Hr__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Hr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho);
CORVANE_API double CSharp_ModelN_alphap__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_alphap__SWIG_1(void* self, double p, double T, void* x, int phase,
                                                double* rho);
CORVANE_API double CSharp_ModelN_kappaT__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_kappaT__SWIG_1(void* self, double p, double T, void* x, int phase,
                                                double* rho);
CORVANE_API double CSharp_ModelN_Ar__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Ar__SWIG_1(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Z__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Z__SWIG_1(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Sr__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Sr__SWIG_1(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_betaV__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_betaV__SWIG_1(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_betaV__SWIG_2(void* self, double p, double T, void* x, int phase,
                                               double* rho);
CORVANE_API double CSharp_ModelN_Sm__SWIG_0(void* self, double rho, double T, void* x);
CORVANE_API double CSharp_ModelN_Sm__SWIG_1(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Sm__SWIG_2(void* self, double p, double T, void* x, int phase,
                                            double* rho);
CORVANE_API double CSharp_ModelN_my__SWIG_0(void* self, void* rho_i, double T, int i);
CORVANE_API double CSharp_ModelN_my__SWIG_1(void* self, double rho, double T, void* x, int i);
CORVANE_API double CSharp_ModelN_my__SWIG_2(void* self, double p, double T, void* x, int i,
                                            int phase, double* rho);
CORVANE_API double CSharp_ModelN_myr__SWIG_0(void* self, void* rho_i, double T, int i);
CORVANE_API double CSharp_ModelN_myr__SWIG_1(void* self, double rho, double T, void* x, int i);
CORVANE_API double CSharp_ModelN_myr__SWIG_2(void* self, double p, double T, void* x, int i,
                                             int phase, double* rho);
CORVANE_API double CSharp_ModelN_Psi__SWIG_0(void* self, void* rho_i, double T);
CORVANE_API double CSharp_ModelN_Psi__SWIG_1(void* self, double rho, double T, void* x);
CORVANE_API void* CSharp_ModelN_PsiG__SWIG_0(void* self, void* rho_i, double T);
CORVANE_API void* CSharp_ModelN_PsiG__SWIG_1(void* self, double rho, double T, void* x);
CORVANE_API void* CSharp_ModelN_PsiH__SWIG_0(void* self, void* rho_i, double T);
CORVANE_API void* CSharp_ModelN_PsiH__SWIG_1(void* self, double rho, double T, void* x);
CORVANE_API int CSharp_ModelN_vcalc(void* self, double p, double T, void* x, int mode,
                                    double* rho_a, double* rho_b);
CORVANE_API void CSharp_ModelN_alloc(void* self, int n, const char* eos);
CORVANE_API void CSharp_ModelN_par_alloc(void* self);
CORVANE_API void CSharp_ModelN_par_in(void* self, FILE* f, int i, int j);
CORVANE_API void CSharp_ModelN_par_out(void* self, FILE* f, int i, int j);
CORVANE_API double* CSharp_ModelN_ppar(void* self, int k, int i, int j);
CORVANE_API double CSharp_ModelN_param__SWIG_0(void* self, int k, int i, int j);
CORVANE_API void CSharp_ModelN_param__SWIG_1(void* self, int k, int i, int j, double value);
CORVANE_API void* CSharp_ModelN_mixpar(void* self, void* x);
CORVANE_API int CSharp_ModelN_mmth(void* self);
CORVANE_API void* CSharp_ModelN_getModel1i(void* self, int i);
CORVANE_API void CSharp_ModelN_load(void* self, const char* eos, const char* mth);
CORVANE_API void CSharp_ModelN_store2(void* self, const char* eos, const char* mth);
CORVANE_API void CSharp_ModelN_show2(void* self, const char* title, void* v);
CORVANE_API void CSharp_ModelN_intro(void* self, const char* title, int flags);
CORVANE_API int CSharp_ModelN_id__SWIG_0(void* self, int i, int j);
CORVANE_API void CSharp_ModelN_id__SWIG_1(void* self, int i, int j, int value);
CORVANE_API void* CSharp_ModelN_comment__SWIG_0(void* self, int i, int j);
CORVANE_API void CSharp_ModelN_comment__SWIG_1(void* self, int i, int j, const char* text);
CORVANE_API void* CSharp_ModelN_eos_get(void* self);
CORVANE_API void CSharp_ModelN_eos_set(void* self, const char* text);
CORVANE_API void* CSharp_ModelN_mth_get(void* self);
CORVANE_API void CSharp_ModelN_mth_set(void* self, const char* text);
CORVANE_API void* CSharp_ModelN_mdl1_get(void* self);
CORVANE_API void CSharp_ModelN_mdl1_set(void* self, void* v);
/* Through the plug-in; the components stay, as their handles do. */
CORVANE_API void CSharp_delete_ModelN(void* self);

/* ---- Ideal-gas heat capacities ---- */

CORVANE_API void* CSharp_new_Ideal(void);
CORVANE_API void CSharp_delete_Ideal(void* self);
CORVANE_API double CSharp_Ideal_Am(void* self, double T);
CORVANE_API double CSharp_Ideal_CVm(void* self, double T);
CORVANE_API double CSharp_Ideal_Cpm(void* self, double T);
CORVANE_API double CSharp_Ideal_Gm(void* self, double T);
CORVANE_API double CSharp_Ideal_Hm(void* self, double T);
CORVANE_API double CSharp_Ideal_Sm(void* self, double T);
CORVANE_API double CSharp_Ideal_Um(void* self, double T);
CORVANE_API void CSharp_Ideal_info(void* self);
CORVANE_API int CSharp_Ideal_interval(void* self, double T);
CORVANE_API void CSharp_Ideal_load(void* self);
CORVANE_API void CSharp_Ideal_offset(void* self, double dh, double ds);
CORVANE_API void CSharp_Ideal_reset(void* self);
CORVANE_API void* CSharp_Ideal_model__SWIG_0(void* self);
CORVANE_API void CSharp_Ideal_model__SWIG_1(void* self, void* model);

/* ---- Solid phases ---- */

CORVANE_API void* CSharp_new_Solid(void);
CORVANE_API void CSharp_delete_Solid(void* self);
CORVANE_API double CSharp_Solid_Ae__SWIG_0(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Ae__SWIG_1(void* self, double p, double T, int* i, double* rho);
CORVANE_API double CSharp_Solid_Am__SWIG_0(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Am__SWIG_1(void* self, double p, double T, int* i, double* rho);
CORVANE_API double CSharp_Solid_Gm__SWIG_0(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Gm__SWIG_1(void* self, double p, double T, int* i, double* rho);
CORVANE_API double CSharp_Solid_Ge(void* self, double p, double T, int* i, double* rho);
CORVANE_API double CSharp_Solid_He(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Hm(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Se(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Sm(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Ue(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Um(void* self, double p, double T);
CORVANE_API double CSharp_Solid_Vm(void* self, double p, double T);
CORVANE_API double CSharp_Solid_d(void* self, double p, double T);
CORVANE_API int CSharp_Solid_sge(void* self, double T, int i, double* psub, double* v,
                                 double* kappa);
CORVANE_API double CSharp_Solid_Ttrp(void* self);
CORVANE_API void* CSharp_Solid_id(void* self, int i);
CORVANE_API void CSharp_Solid_info(void* self);
CORVANE_API void CSharp_Solid_load(void* self);
CORVANE_API void CSharp_Solid_reset(void* self);
CORVANE_API void* CSharp_Solid_model__SWIG_0(void* self);
CORVANE_API void CSharp_Solid_model__SWIG_1(void* self, void* model);
CORVANE_API void* CSharp_Solid_sg_get(void* self);
CORVANE_API void CSharp_Solid_sg_set(void* self, void* v);

/* ---- One solid phase ---- */

CORVANE_API void* CSharp_new_Subl(void);
CORVANE_API void CSharp_delete_Subl(void* self);
CORVANE_API void CSharp_Subl_load(void* self, FILE* f);

/* ---- Viscosity ---- */

CORVANE_API void* CSharp_new_Visco(void);
CORVANE_API void CSharp_delete_Visco(void* self);
CORVANE_API double CSharp_Visco_eta(void* self, double rho, double T, double* pr, double* pa);
CORVANE_API double CSharp_Visco_eta0(void* self, double T);
CORVANE_API void CSharp_Visco_intro(void* self);
CORVANE_API void CSharp_Visco_load0(void* self);
CORVANE_API void CSharp_Visco_load1(void* self, const char* set);
CORVANE_API void CSharp_Visco_set1(void* self, void* v);
CORVANE_API void CSharp_Visco_set_comment(void* self, const char* text, int* level);
CORVANE_API void CSharp_Visco_set_id(void* self, int id);
CORVANE_API void CSharp_Visco_show(void* self, double rms);
CORVANE_API void CSharp_Visco_store1(void* self, const char* set, double rms);
CORVANE_API void CSharp_Visco_reset(void* self);
CORVANE_API void* CSharp_Visco_model__SWIG_0(void* self);
CORVANE_API void CSharp_Visco_model__SWIG_1(void* self, void* model);

/* ---- Context records and property descriptors ---- */

CORVANE_API void* CSharp_new_pass1(void);
CORVANE_API void CSharp_delete_pass1(void* self);
CORVANE_API void* CSharp_pass1_mdl1_get(void* self);
CORVANE_API void CSharp_pass1_mdl1_set(void* self, void* value);
CORVANE_API int CSharp_pass1_mode_get(void* self);
CORVANE_API void CSharp_pass1_mode_set(void* self, int value);
CORVANE_API double CSharp_pass1_p_get(void* self);
CORVANE_API void CSharp_pass1_p_set(void* self, double value);
CORVANE_API double CSharp_pass1_rho_get(void* self);
CORVANE_API void CSharp_pass1_rho_set(void* self, double value);
CORVANE_API double CSharp_pass1_T_get(void* self);
CORVANE_API void CSharp_pass1_T_set(void* self, double value);
CORVANE_API void* CSharp_new_passN(void);
CORVANE_API void CSharp_delete_passN(void* self);
CORVANE_API void* CSharp_passN_mdlN_get(void* self);
CORVANE_API void CSharp_passN_mdlN_set(void* self, void* value);
CORVANE_API int CSharp_passN_i_get(void* self);
CORVANE_API void CSharp_passN_i_set(void* self, int value);
CORVANE_API double CSharp_passN_p_get(void* self);
CORVANE_API void CSharp_passN_p_set(void* self, double value);
CORVANE_API double CSharp_passN_rho_get(void* self);
CORVANE_API void CSharp_passN_rho_set(void* self, double value);
CORVANE_API double CSharp_passN_T_get(void* self);
CORVANE_API void CSharp_passN_T_set(void* self, double value);
CORVANE_API double CSharp_passN_h_get(void* self);
CORVANE_API void CSharp_passN_h_set(void* self, double value);
CORVANE_API void* CSharp_passN_x_get(void* self);
CORVANE_API void CSharp_passN_x_set(void* self, void* value);
CORVANE_API void* CSharp_new_pass_ffeN(void);
CORVANE_API void CSharp_delete_pass_ffeN(void* self);
CORVANE_API void* CSharp_pass_ffeN_m_get(void* self);
CORVANE_API void CSharp_pass_ffeN_m_set(void* self, void* value);
CORVANE_API int CSharp_pass_ffeN_mode_get(void* self);
CORVANE_API void CSharp_pass_ffeN_mode_set(void* self, int value);
CORVANE_API double CSharp_pass_ffeN_p_get(void* self);
CORVANE_API void CSharp_pass_ffeN_p_set(void* self, double value);
CORVANE_API double CSharp_pass_ffeN_T_get(void* self);
CORVANE_API void CSharp_pass_ffeN_T_set(void* self, double value);
CORVANE_API void* CSharp_pass_ffeN_xl_get(void* self);
CORVANE_API void CSharp_pass_ffeN_xl_set(void* self, void* value);
CORVANE_API void* CSharp_new_phdesc(void);
CORVANE_API void CSharp_delete_phdesc(void* self);
CORVANE_API int CSharp_phdesc_species_get(void* self);
CORVANE_API void CSharp_phdesc_species_set(void* self, int value);
CORVANE_API int CSharp_phdesc_phase_get(void* self);
CORVANE_API void CSharp_phdesc_phase_set(void* self, int value);
CORVANE_API void* CSharp_prop_str_sname_get(void* self);
CORVANE_API void CSharp_prop_str_sname_set(void* self, const char* text);
CORVANE_API void* CSharp_prop_str_lname_get(void* self);
CORVANE_API void CSharp_prop_str_lname_set(void* self, const char* text);
CORVANE_API void* CSharp_prop_str_unit_get(void* self);
CORVANE_API void CSharp_prop_str_unit_set(void* self, const char* text);
CORVANE_API int CSharp_prop_str_dimension_get(void* self);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
