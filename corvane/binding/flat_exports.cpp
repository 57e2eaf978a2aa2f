// Written by scripts/bindings from signatures.txt: the flat exports that only forward.
#include <corvane/binding/access.h>
#include <corvane/binding/flat.h>
#include <corvane/binding/phdesc_interface.h>
#include <corvane/core/numelo.h>
#include <corvane/corvane.h>

using namespace corvane::binding;

EXPORT void* CSharp_new_doubleV__SWIG_0(int n) {
    return new Vector<double>(n);
}
EXPORT void* CSharp_new_doubleV__SWIG_1() {
    return new Vector<double>;
}
EXPORT void* CSharp_new_doubleV__SWIG_2(void* v) {
    if (is_null(v, kConstDoubleV)) return nullptr;
    return new Vector<double>(ref<Vector<double>>(v));
}
EXPORT void CSharp_delete_doubleV(void* self) {
    delete as<Vector<double>>(self);
}
EXPORT int CSharp_doubleV_size__SWIG_0(void* self) {
    return ref<Vector<double>>(self).size();
}
EXPORT int CSharp_doubleV_size__SWIG_1(void* self, int n) {
    return ref<Vector<double>>(self).size(n);
}
EXPORT double* CSharp_doubleV_first__SWIG_0(void* self) {
    return &ref<Vector<double>>(self).first();
}
EXPORT double* CSharp_doubleV_last__SWIG_0(void* self) {
    return &ref<Vector<double>>(self).last();
}
EXPORT double* CSharp_doubleV_getItem__SWIG_0(void* self, int i) {
    return &ref<Vector<double>>(self)[i];
}
EXPORT double CSharp_doubleV_getItemValue(void* self, int i) {
    return ref<Vector<double>>(self)[i];
}
EXPORT void CSharp_doubleV_setItemValue(void* self, int i, double x) {
    ref<Vector<double>>(self)[i] = x;
}
EXPORT int CSharp_doubleV_find_idx(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<double>>(self).find_idx(static_cast<MthKey::mth_key>(*key));
}
EXPORT double CSharp_doubleV_find_val(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<double>>(self).find_val(static_cast<MthKey::mth_key>(*key));
}
EXPORT void CSharp_doubleV_func(void* self, double (*f)(double)) {
    ref<Vector<double>>(self).func(f);
}
EXPORT double CSharp_doubleV_polynomial(void* self, double x) {
    return ref<Vector<double>>(self).polynomial(x);
}
EXPORT int CSharp_doubleV_print__SWIG_0(void* self, FILE* f, const char* head, const char* fmt,
                                        const char* tail) {
    return ref<Vector<double>>(self).print(f, head, fmt, tail);
}
EXPORT int CSharp_doubleV_print__SWIG_1(void* self, FILE* f, const char* fmt) {
    return ref<Vector<double>>(self).print(f, fmt);
}
EXPORT int CSharp_doubleV_read(void* self, FILE* f, const char* fmt) {
    return ref<Vector<double>>(self).read(f, fmt);
}
EXPORT void CSharp_doubleV_ramp(void* self, double start, double step) {
    ref<Vector<double>>(self).ramp(start, step);
}
EXPORT void CSharp_doubleV_set(void* self, double x) {
    ref<Vector<double>>(self).set(x);
}
EXPORT double CSharp_doubleV_sum(void* self) {
    return ref<Vector<double>>(self).sum();
}
EXPORT double CSharp_doubleV_sum2(void* self) {
    return ref<Vector<double>>(self).sum2();
}
EXPORT void CSharp_doubleV_urand(void* self) {
    ref<Vector<double>>(self).urand();
}
EXPORT void* CSharp_new_intV__SWIG_0(int n) {
    return new Vector<int>(n);
}
EXPORT void* CSharp_new_intV__SWIG_1() {
    return new Vector<int>;
}
EXPORT void* CSharp_new_intV__SWIG_2(void* v) {
    if (is_null(v, kConstIntV)) return nullptr;
    return new Vector<int>(ref<Vector<int>>(v));
}
EXPORT void CSharp_delete_intV(void* self) {
    delete as<Vector<int>>(self);
}
EXPORT int CSharp_intV_size__SWIG_0(void* self) {
    return ref<Vector<int>>(self).size();
}
EXPORT int CSharp_intV_size__SWIG_1(void* self, int n) {
    return ref<Vector<int>>(self).size(n);
}
EXPORT int* CSharp_intV_first__SWIG_0(void* self) {
    return &ref<Vector<int>>(self).first();
}
EXPORT int* CSharp_intV_last__SWIG_0(void* self) {
    return &ref<Vector<int>>(self).last();
}
EXPORT int* CSharp_intV_getItem__SWIG_0(void* self, int i) {
    return &ref<Vector<int>>(self)[i];
}
EXPORT int CSharp_intV_getItemValue(void* self, int i) {
    return ref<Vector<int>>(self)[i];
}
EXPORT void CSharp_intV_setItemValue(void* self, int i, int x) {
    ref<Vector<int>>(self)[i] = x;
}
EXPORT int CSharp_intV_find_idx(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<int>>(self).find_idx(static_cast<MthKey::mth_key>(*key));
}
EXPORT int CSharp_intV_find_val(void* self, int* key) {
    if (is_null(key, kKey)) return 0;
    return ref<Vector<int>>(self).find_val(static_cast<MthKey::mth_key>(*key));
}
EXPORT void CSharp_intV_func(void* self, int (*f)(int)) {
    ref<Vector<int>>(self).func(f);
}
EXPORT int CSharp_intV_polynomial(void* self, int x) {
    return ref<Vector<int>>(self).polynomial(x);
}
EXPORT int CSharp_intV_print__SWIG_0(void* self, FILE* f, const char* head, const char* fmt,
                                     const char* tail) {
    return ref<Vector<int>>(self).print(f, head, fmt, tail);
}
EXPORT int CSharp_intV_print__SWIG_1(void* self, FILE* f, const char* fmt) {
    return ref<Vector<int>>(self).print(f, fmt);
}
EXPORT int CSharp_intV_read(void* self, FILE* f, const char* fmt) {
    return ref<Vector<int>>(self).read(f, fmt);
}
EXPORT void CSharp_intV_ramp(void* self, int start, int step) {
    ref<Vector<int>>(self).ramp(start, step);
}
EXPORT void CSharp_intV_set(void* self, int x) {
    ref<Vector<int>>(self).set(x);
}
EXPORT int CSharp_intV_sum(void* self) {
    return ref<Vector<int>>(self).sum();
}
EXPORT int CSharp_intV_sum2(void* self) {
    return ref<Vector<int>>(self).sum2();
}
EXPORT void* CSharp_new_doubleM__SWIG_0(int rows, int cols) {
    return new Matrix<double>(rows, cols);
}
EXPORT void* CSharp_new_doubleM__SWIG_1(int rows) {
    return new Matrix<double>(rows);
}
EXPORT void* CSharp_new_doubleM__SWIG_2() {
    return new Matrix<double>;
}
EXPORT void CSharp_delete_doubleM(void* self) {
    delete as<Matrix<double>>(self);
}
EXPORT int CSharp_doubleM_rows(void* self) {
    return ref<Matrix<double>>(self).rows();
}
EXPORT int CSharp_doubleM_cols(void* self) {
    return ref<Matrix<double>>(self).cols();
}
EXPORT void CSharp_doubleM_size(void* self, int rows, int cols) {
    ref<Matrix<double>>(self).size(rows, cols);
}
EXPORT void* CSharp_doubleM_I(void* self) {
    return &ref<Matrix<double>>(self).I();
}
EXPORT double CSharp_doubleM_det(void* self) {
    return translate<MthException>([&] { return ref<Matrix<double>>(self).det(); });
}
EXPORT void* CSharp_new_ThException__SWIG_0(int number) {
    return new ThException(number);
}
EXPORT void* CSharp_new_ThException__SWIG_1(int number, int info) {
    return new ThException(number, info);
}
EXPORT void CSharp_delete_ThException(void* self) {
    delete as<ThException>(self);
}
EXPORT int CSharp_ThException_number(void* self) {
    return ref<ThException>(self).number;
}
EXPORT void* CSharp_ThException_message(void* self) {
    return text(ref<ThException>(self).message());
}
EXPORT int CSharp_th_namelength_get() {
    return th_namelength;
}
EXPORT int CSharp_th_eqnlength_get() {
    return th_eqnlength;
}
EXPORT int CSharp_th_commlength_get() {
    return th_commlength;
}
EXPORT double CSharp_R_get() {
    return R;
}
EXPORT double CSharp_NA_get() {
    return NA;
}
EXPORT double CSharp_kB_get() {
    return kB;
}
EXPORT double CSharp_hP_get() {
    return hP;
}
EXPORT double CSharp_pref_get() {
    return pref;
}
EXPORT double CSharp_th_inc0_get() {
    return th_inc0;
}
EXPORT double CSharp_th_inc1_get() {
    return th_inc1;
}
EXPORT double CSharp_th_veps_get() {
    return th_veps;
}
EXPORT double CSharp_ran_shuffle() {
    return ran_shuffle();
}
EXPORT void* CSharp_attach1(const char* eos) {
    return translate<ThException>([&] { return attach1(eos); });
}
EXPORT void* CSharp_attachN(const char* eos, const char* mixing) {
    return translate<ThException>([&] { return attachN(eos, mixing); });
}
EXPORT int CSharp_read_vars(const char* prompt, double* x1, double* x2, double* dx) {
    return read_vars(prompt, *x1, *x2, *dx);
}
EXPORT int CSharp_recognize(const char* name, void* table) {
    return recognize(name, as<prop_str>(table));
}
EXPORT double CSharp_xtoz(double x) {
    return xtoz(x);
}
EXPORT double CSharp_ztox(double z) {
    return ztox(z);
}
EXPORT double CSharp_adjust_x(int i, void* x) {
    if (is_null(x, kDoubleV)) return 0;
    return translate<ThException>([&] { return adjust_x(i, ref<Vector<double>>(x)); });
}
EXPORT void CSharp_read_r(const char* prompt, void* x) {
    if (is_null(x, kDoubleV)) return;
    translate<ThException>([&] { read_r(prompt, ref<Vector<double>>(x)); });
}
EXPORT void CSharp_read_x(const char* prompt, void* x) {
    if (is_null(x, kDoubleV)) return;
    translate<ThException>([&] { read_x(prompt, ref<Vector<double>>(x)); });
}
EXPORT int CSharp_volav(void* model, int kind, double p, double T, void* x, double d, double* rho) {
    return volav(model, kind, p, T, as<Vector<double>>(x), d, *rho);
}
EXPORT int CSharp_volf1(void* model, double p, double T, double vmin, double* rho1, double* rho2) {
    return volf1(as<Model1>(model), p, T, vmin, *rho1, *rho2);
}
EXPORT unsigned int CSharp_volnewt(void* model, int kind, double p, double T, void* x, double d,
                                   double* rho) {
    return volnewt(model, kind, p, T, as<Vector<double>>(x), d, *rho);
}
EXPORT int CSharp_volume(void* model, int kind, double p, double T, void* x, double d,
                         void* roots) {
    if (is_null(roots, kDoubleV)) return 0;
    return volume(model, kind, p, T, as<Vector<double>>(x), d, ref<Vector<double>>(roots));
}
EXPORT void CSharp_vle1_T(void* model, double T, int cont, double* p, double* rhoL, double* rhoV) {
    vle1_T(as<Model1>(model), T, cont, *p, *rhoL, *rhoV);
}
EXPORT void CSharp_vle1_p(void* model, double p, int cont, double* T, double* rhoL, double* rhoV) {
    vle1_p(as<Model1>(model), p, cont, *T, *rhoL, *rhoV);
}
EXPORT double CSharp_maxwell(void* model, double p, double T, double* rhoL, double* rhoV) {
    return maxwell(as<Model1>(model), p, T, *rhoL, *rhoV);
}
EXPORT void CSharp_vleN_T(void* model, double T, void* x, double* p, double* rho1, void* rho2) {
    if (is_null(x, kConstDoubleV) || is_null(rho2, kDoubleV)) return;
    vleN_T(as<ModelN>(model), T, ref<Vector<double>>(x), *p, *rho1, ref<Vector<double>>(rho2));
}
EXPORT void CSharp_vleN_p(void* model, double p, void* x, double* T, double* rho1, void* rho2) {
    if (is_null(x, kConstDoubleV) || is_null(rho2, kDoubleV)) return;
    vleN_p(as<ModelN>(model), p, ref<Vector<double>>(x), *T, *rho1, ref<Vector<double>>(rho2));
}
EXPORT void* CSharp_objffeN(void* u, void* ctx) {
    if (is_null(u, kConstDoubleV)) return nullptr;
    return new Vector<double>(objffeN(ref<Vector<double>>(u), ctx));
}
EXPORT void* CSharp_ffinit(void* model, double p, double T) {
    return new Vector<double>(ffinit(as<ModelN>(model), p, T));
}
EXPORT void CSharp_equil_min(void* m, double p, double T, void* ph, void* x) {
    if (is_null(ph, kConstPhdescV) || is_null(x, kDoubleV)) return;
    equil_min(as<ModelN>(m), p, T, ref<Vector<phdesc>>(ph), ref<Vector<double>>(x));
}
EXPORT void CSharp_list_different(void* a, double d, void* list, int* count, void* idx) {
    if (is_null(a, kConstDoubleV) || is_null(list, kDoubleV) || is_null(idx, kIntV)) return;
    list_different(ref<Vector<double>>(a), d, ref<Vector<double>>(list), *count,
        ref<Vector<int>>(idx));
}
EXPORT void CSharp_equil2s(void* m, double p, double T, void* x, int phase, double d, void* rho,
                           int* i) {
    if (is_null(x, kDoubleV) || is_null(rho, kDoubleV)) return;
    equil2s(as<ModelN>(m), p, T, ref<Vector<double>>(x), phase, d, ref<Vector<double>>(rho), *i);
}
EXPORT void CSharp_equil2(void* m, double p, double T, void* x, void* rho) {
    if (is_null(x, kDoubleV) || is_null(rho, kDoubleV)) return;
    equil2(as<ModelN>(m), p, T, ref<Vector<double>>(x), ref<Vector<double>>(rho));
}
EXPORT void CSharp_crit_slope_x(void* m, void* x, double* s, void* line) {
    if (is_null(x, kDoubleV) || is_null(line, kDoubleM)) return;
    crit_slope_x(as<ModelN>(m), ref<Vector<double>>(x), *s, ref<Matrix<double>>(line));
}
EXPORT double CSharp_Model1_Ak(void* self, double rho, double T) {
    return ref<Model1>(self).Ak(rho, T);
}
EXPORT double CSharp_Model1_Am(void* self, double rho, double T) {
    return ref<Model1>(self).Am(rho, T);
}
EXPORT double CSharp_Model1_Ar(void* self, double rho, double T) {
    return ref<Model1>(self).Ar(rho, T);
}
EXPORT double CSharp_Model1_Sk(void* self, double rho, double T) {
    return ref<Model1>(self).Sk(rho, T);
}
EXPORT double CSharp_Model1_Um(void* self, double rho, double T) {
    return ref<Model1>(self).Um(rho, T);
}
EXPORT double CSharp_Model1_Z(void* self, double rho, double T) {
    return ref<Model1>(self).Z(rho, T);
}
EXPORT double CSharp_Model1_pV(void* self, double rho, double T) {
    return ref<Model1>(self).pV(rho, T);
}
EXPORT double CSharp_Model1_B(void* self, double T, int n) {
    return ref<Model1>(self).B(T, n);
}
EXPORT double CSharp_Model1_Vm(void* self, double p, double T, int phase) {
    return ref<Model1>(self).Vm(p, T, phase);
}
EXPORT double CSharp_Model1_CVm__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).CVm(rho, T);
}
EXPORT double CSharp_Model1_CVm__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).CVm(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_CVr__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).CVr(rho, T);
}
EXPORT double CSharp_Model1_CVr__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).CVr(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Cpm__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Cpm(rho, T);
}
EXPORT double CSharp_Model1_Cpm__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Cpm(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Cpr__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Cpr(rho, T);
}
EXPORT double CSharp_Model1_Cpr__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Cpr(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Ge__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Ge(rho, T);
}
EXPORT double CSharp_Model1_Ge__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Ge(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Gm__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Gm(rho, T);
}
EXPORT double CSharp_Model1_Gm__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Gm(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Gr__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Gr(rho, T);
}
EXPORT double CSharp_Model1_Gr__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Gr(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Hm__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Hm(rho, T);
}
EXPORT double CSharp_Model1_Hm__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Hm(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Hr__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Hr(rho, T);
}
EXPORT double CSharp_Model1_Hr__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Hr(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Sm__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Sm(rho, T);
}
EXPORT double CSharp_Model1_Sm__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Sm(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Sr__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Sr(rho, T);
}
EXPORT double CSharp_Model1_Sr__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Sr(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_Ur__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).Ur(rho, T);
}
EXPORT double CSharp_Model1_Ur__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).Ur(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_alphap__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).alphap(rho, T);
}
EXPORT double CSharp_Model1_alphap__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).alphap(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_betaV__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).betaV(rho, T);
}
EXPORT double CSharp_Model1_betaV__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).betaV(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_kappaT__SWIG_0(void* self, double rho, double T) {
    return ref<Model1>(self).kappaT(rho, T);
}
EXPORT double CSharp_Model1_kappaT__SWIG_1(void* self, double p, double T, int phase, double* rho) {
    return ref<Model1>(self).kappaT(p, T, phase, *rho);
}
EXPORT double CSharp_Model1_M__SWIG_0(void* self) {
    return ref<Model1>(self).M();
}
EXPORT void CSharp_Model1_M__SWIG_1(void* self, double value) {
    ref<Model1>(self).M(value);
}
EXPORT double CSharp_Model1_vs__SWIG_0(void* self) {
    return ref<Model1>(self).vs();
}
EXPORT void CSharp_Model1_vs__SWIG_1(void* self, double value) {
    ref<Model1>(self).vs(value);
}
EXPORT double CSharp_Model1_Ts__SWIG_0(void* self) {
    return ref<Model1>(self).Ts();
}
EXPORT void CSharp_Model1_Ts__SWIG_1(void* self, double value) {
    ref<Model1>(self).Ts(value);
}
EXPORT double CSharp_Model1_Tcrit__SWIG_0(void* self) {
    return ref<Model1>(self).Tcrit();
}
EXPORT void CSharp_Model1_Tcrit__SWIG_1(void* self, double value) {
    ref<Model1>(self).Tcrit(value);
}
EXPORT double CSharp_Model1_pcrit__SWIG_0(void* self) {
    return ref<Model1>(self).pcrit();
}
EXPORT void CSharp_Model1_pcrit__SWIG_1(void* self, double value) {
    ref<Model1>(self).pcrit(value);
}
EXPORT double CSharp_Model1_vcrit__SWIG_0(void* self) {
    return ref<Model1>(self).vcrit();
}
EXPORT void CSharp_Model1_vcrit__SWIG_1(void* self, double value) {
    ref<Model1>(self).vcrit(value);
}
EXPORT double CSharp_Model1_omega__SWIG_0(void* self) {
    return ref<Model1>(self).omega();
}
EXPORT void CSharp_Model1_omega__SWIG_1(void* self, double value) {
    ref<Model1>(self).omega(value);
}
EXPORT void* CSharp_Model1_crit(void* self, double T, double rho, double Zt) {
    return new Vector<double>(ref<Model1>(self).crit(T, rho, Zt));
}
EXPORT double CSharp_Model1_param__SWIG_0(void* self, int i) {
    return ref<Model1>(self).param(i);
}
EXPORT void CSharp_Model1_param__SWIG_1(void* self, int i, double x) {
    ref<Model1>(self).param(i, x);
}
EXPORT void CSharp_Model1_params_(void* self, void* v) {
    if (is_null(v, kConstDoubleV)) return;
    ref<Model1>(self).params(ref<Vector<double>>(v));
}
EXPORT double* CSharp_Model1_ppar__SWIG_0(void* self, int i) {
    return ref<Model1>(self).ppar(i);
}
EXPORT void CSharp_Model1_par_in(void* self, FILE* f, int mode) {
    ref<Model1>(self).par_in(f, mode);
}
EXPORT void CSharp_Model1_par_out(void* self, FILE* f) {
    ref<Model1>(self).par_out(f);
}
EXPORT int CSharp_Model1_mpar(void* self) {
    return ref<Model1>(self).mpar();
}
EXPORT int CSharp_Model1_madj(void* self) {
    return ref<Model1>(self).madj();
}
EXPORT double CSharp_Model1_xinit(void* self, double p, double T, int phase) {
    return ref<Model1>(self).xinit(p, T, phase);
}
EXPORT int CSharp_Model1_vcalc(void* self, double p, double T, int phase, double* rho1,
                               double* rho2) {
    return ref<Model1>(self).vcalc(p, T, phase, *rho1, *rho2);
}
EXPORT double CSharp_Model1_xrho(void* self, double T, int phase) {
    return translate<ThException>([&] { return ref<Model1>(self).xrho(T, phase); });
}
EXPORT int CSharp_Model1_load(void* self, const char* eos) {
    return translate<ThException>([&] { return ref<Model1>(self).load(eos); });
}
EXPORT void CSharp_Model1_load_thchem(void* self) {
    translate<ThException>([&] { ref<Model1>(self).load_thchem(); });
}
EXPORT void CSharp_Model1_store(void* self, const char* eos) {
    translate<ThException>([&] { ref<Model1>(self).store(eos); });
}
EXPORT void CSharp_Model1_show1(void* self, const char* title) {
    ref<Model1>(self).show1(title);
}
EXPORT void CSharp_Model1_intro(void* self, const char* title, int level) {
    ref<Model1>(self).intro(title, level);
}
EXPORT unsigned int CSharp_Model1_off(void* self, double rho, double T) {
    return ref<Model1>(self).off(rho, T);
}
EXPORT int CSharp_Model1_id__SWIG_0(void* self) {
    return ref<Model1>(self).id();
}
EXPORT void CSharp_Model1_id__SWIG_1(void* self, int id) {
    ref<Model1>(self).id(id);
}
EXPORT void* CSharp_Model1_name__SWIG_0(void* self) {
    return text(ref<Model1>(self).name());
}
EXPORT void CSharp_Model1_name__SWIG_1(void* self, const char* name) {
    ref<Model1>(self).name(name);
}
EXPORT void* CSharp_Model1_comment__SWIG_0(void* self) {
    return text(ref<Model1>(self).comment());
}
EXPORT void CSharp_Model1_comment__SWIG_1(void* self, const char* text) {
    ref<Model1>(self).comment(text);
}
EXPORT void* CSharp_Model1_eos(void* self) {
    return text(ref<Model1>(self).eos());
}
EXPORT void* CSharp_Model1_ideal_get(void* self) {
    return &ref<Model1>(self).ideal;
}
EXPORT void CSharp_Model1_ideal_set(void* self, void* value) {
    if (self && value) set_part(ref<Model1>(self).ideal, ref<Ideal>(value), as<Model1>(self));
}
EXPORT void* CSharp_Model1_solid_get(void* self) {
    return &ref<Model1>(self).solid;
}
EXPORT void CSharp_Model1_solid_set(void* self, void* value) {
    if (self && value) set_part(ref<Model1>(self).solid, ref<Solid>(value), as<Model1>(self));
}
EXPORT void* CSharp_Model1_visco_get(void* self) {
    return &ref<Model1>(self).visco;
}
EXPORT void CSharp_Model1_visco_set(void* self, void* value) {
    if (self && value) set_part(ref<Model1>(self).visco, ref<Visco>(value), as<Model1>(self));
}
EXPORT void CSharp_delete_Model1(void* self) {
    if (self && !corvane::release1(as<Model1>(self)))
        corvane::ModelAccess::destroy(as<Model1>(self));
}
EXPORT double CSharp_ModelN_Ak(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Ak(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Gk(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Gk(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Sk(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Sk(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Am(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Am(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Um(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Um(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Ur(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Ur(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_pV(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).pV(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_B(void* self, double T, void* x, int k) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).B(T, ref<Vector<double>>(x), k);
}
EXPORT double CSharp_ModelN_Vm(void* self, double p, double T, void* x, int phase) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Vm(p, T, ref<Vector<double>>(x), phase);
}
EXPORT double CSharp_ModelN_CVm__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).CVm(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_CVm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).CVm(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_CVr__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).CVr(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_CVr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).CVr(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Cpm__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Cpm(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Cpm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Cpm(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Cpr__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Cpr(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Cpr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Cpr(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Ge__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Ge(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Ge__SWIG_1(void* self, double p, double T, void* x, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Ge(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Gm__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Gm(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Gm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Gm(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Gr__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Gr(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Gr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Gr(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Hm__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Hm(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Hm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Hm(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Hr__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Hr(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Hr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Hr(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_alphap__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).alphap(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_alphap__SWIG_1(void* self, double p, double T, void* x, int phase,
                                           double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).alphap(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_kappaT__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).kappaT(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_kappaT__SWIG_1(void* self, double p, double T, void* x, int phase,
                                           double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).kappaT(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Ar__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Ar(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Ar__SWIG_1(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Ar(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Z__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Z(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Z__SWIG_1(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Z(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Sr__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Sr(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Sr__SWIG_1(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Sr(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_betaV__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).betaV(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_betaV__SWIG_1(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).betaV(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_betaV__SWIG_2(void* self, double p, double T, void* x, int phase,
                                          double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).betaV(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_Sm__SWIG_0(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Sm(rho, T, ref<Vector<double>>(x));
}
EXPORT double CSharp_ModelN_Sm__SWIG_1(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Sm(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Sm__SWIG_2(void* self, double p, double T, void* x, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Sm(p, T, ref<Vector<double>>(x), phase, *rho);
}
EXPORT double CSharp_ModelN_my__SWIG_0(void* self, void* rho_i, double T, int i) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).my(ref<Vector<double>>(rho_i), T, i);
}
EXPORT double CSharp_ModelN_my__SWIG_1(void* self, double rho, double T, void* x, int i) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).my(rho, T, ref<Vector<double>>(x), i);
}
EXPORT double CSharp_ModelN_my__SWIG_2(void* self, double p, double T, void* x, int i, int phase,
                                       double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).my(p, T, ref<Vector<double>>(x), i, phase, *rho);
}
EXPORT double CSharp_ModelN_myr__SWIG_0(void* self, void* rho_i, double T, int i) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).myr(ref<Vector<double>>(rho_i), T, i);
}
EXPORT double CSharp_ModelN_myr__SWIG_1(void* self, double rho, double T, void* x, int i) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).myr(rho, T, ref<Vector<double>>(x), i);
}
EXPORT double CSharp_ModelN_myr__SWIG_2(void* self, double p, double T, void* x, int i, int phase,
                                        double* rho) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).myr(p, T, ref<Vector<double>>(x), i, phase, *rho);
}
EXPORT double CSharp_ModelN_Psi__SWIG_0(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Psi(ref<Vector<double>>(rho_i), T);
}
EXPORT double CSharp_ModelN_Psi__SWIG_1(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).Psi(rho, T, ref<Vector<double>>(x));
}
EXPORT void* CSharp_ModelN_PsiG__SWIG_0(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return nullptr;
    return new Vector<double>(ref<ModelN>(self).PsiG(ref<Vector<double>>(rho_i), T));
}
EXPORT void* CSharp_ModelN_PsiG__SWIG_1(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return nullptr;
    return new Vector<double>(ref<ModelN>(self).PsiG(rho, T, ref<Vector<double>>(x)));
}
EXPORT void* CSharp_ModelN_PsiH__SWIG_0(void* self, void* rho_i, double T) {
    if (is_null(rho_i, kConstDoubleV)) return nullptr;
    return new Matrix<double>(ref<ModelN>(self).PsiH(ref<Vector<double>>(rho_i), T));
}
EXPORT void* CSharp_ModelN_PsiH__SWIG_1(void* self, double rho, double T, void* x) {
    if (is_null(x, kConstDoubleV)) return nullptr;
    return new Matrix<double>(ref<ModelN>(self).PsiH(rho, T, ref<Vector<double>>(x)));
}
EXPORT int CSharp_ModelN_vcalc(void* self, double p, double T, void* x, int mode, double* rho_a,
                               double* rho_b) {
    if (is_null(x, kConstDoubleV)) return 0;
    return ref<ModelN>(self).vcalc(p, T, ref<Vector<double>>(x), mode, *rho_a, *rho_b);
}
EXPORT void CSharp_ModelN_alloc(void* self, int n, const char* eos) {
    ref<ModelN>(self).alloc(n, copy_text(eos));
}
EXPORT void CSharp_ModelN_par_alloc(void* self) {
    ref<ModelN>(self).par_alloc();
}
EXPORT void CSharp_ModelN_par_in(void* self, FILE* f, int i, int j) {
    ref<ModelN>(self).par_in(f, i, j);
}
EXPORT void CSharp_ModelN_par_out(void* self, FILE* f, int i, int j) {
    ref<ModelN>(self).par_out(f, i, j);
}
EXPORT double* CSharp_ModelN_ppar(void* self, int k, int i, int j) {
    return ref<ModelN>(self).ppar(k, i, j);
}
EXPORT double CSharp_ModelN_param__SWIG_0(void* self, int k, int i, int j) {
    return ref<ModelN>(self).param(k, i, j);
}
EXPORT void CSharp_ModelN_param__SWIG_1(void* self, int k, int i, int j, double value) {
    ref<ModelN>(self).param(k, i, j, value);
}
EXPORT void* CSharp_ModelN_mixpar(void* self, void* x) {
    if (is_null(x, kConstDoubleV)) return nullptr;
    return new Vector<double>(ref<ModelN>(self).mixpar(ref<Vector<double>>(x)));
}
EXPORT int CSharp_ModelN_mmth(void* self) {
    return ref<ModelN>(self).mmth();
}
EXPORT void* CSharp_ModelN_getModel1i(void* self, int i) {
    return ref<ModelN>(self).getModel1i(i);
}
EXPORT void CSharp_ModelN_load(void* self, const char* eos, const char* mth) {
    translate<ThException>([&] { ref<ModelN>(self).load(eos, mth); });
}
EXPORT void CSharp_ModelN_store2(void* self, const char* eos, const char* mth) {
    translate<ThException>([&] { ref<ModelN>(self).store2(eos, mth); });
}
EXPORT void CSharp_ModelN_show2(void* self, const char* title, void* v) {
    if (is_null(v, kConstDoubleV)) return;
    ref<ModelN>(self).show2(title, ref<Vector<double>>(v));
}
EXPORT void CSharp_ModelN_intro(void* self, const char* title, int flags) {
    ref<ModelN>(self).intro(title, flags);
}
EXPORT int CSharp_ModelN_id__SWIG_0(void* self, int i, int j) {
    return ref<ModelN>(self).id(i, j);
}
EXPORT void CSharp_ModelN_id__SWIG_1(void* self, int i, int j, int value) {
    ref<ModelN>(self).id(i, j, value);
}
EXPORT void* CSharp_ModelN_comment__SWIG_0(void* self, int i, int j) {
    return text(ref<ModelN>(self).comment(i, j));
}
EXPORT void CSharp_ModelN_comment__SWIG_1(void* self, int i, int j, const char* text) {
    ref<ModelN>(self).comment(i, j, text);
}
EXPORT void* CSharp_ModelN_eos_get(void* self) {
    return text(ref<ModelN>(self).eos);
}
EXPORT void CSharp_ModelN_eos_set(void* self, const char* text) {
    if (self) set_text(ref<ModelN>(self).eos, text);
}
EXPORT void* CSharp_ModelN_mth_get(void* self) {
    return text(ref<ModelN>(self).mth);
}
EXPORT void CSharp_ModelN_mth_set(void* self, const char* text) {
    if (self) set_text(ref<ModelN>(self).mth, text);
}
EXPORT void* CSharp_ModelN_mdl1_get(void* self) {
    return &ref<ModelN>(self).mdl1;
}
EXPORT void CSharp_ModelN_mdl1_set(void* self, void* v) {
    if (self && v) ref<ModelN>(self).mdl1 = ref<Vector<Model1*>>(v);
}
EXPORT void CSharp_delete_ModelN(void* self) {
    if (self && !corvane::releaseN(as<ModelN>(self)))
        corvane::ModelAccess::destroy(as<ModelN>(self));
}
EXPORT void* CSharp_new_Ideal() {
    return new Ideal;
}
EXPORT void CSharp_delete_Ideal(void* self) {
    delete as<Ideal>(self);
}
EXPORT double CSharp_Ideal_Am(void* self, double T) {
    return ref<Ideal>(self).Am(T);
}
EXPORT double CSharp_Ideal_CVm(void* self, double T) {
    return ref<Ideal>(self).CVm(T);
}
EXPORT double CSharp_Ideal_Cpm(void* self, double T) {
    return ref<Ideal>(self).Cpm(T);
}
EXPORT double CSharp_Ideal_Gm(void* self, double T) {
    return ref<Ideal>(self).Gm(T);
}
EXPORT double CSharp_Ideal_Hm(void* self, double T) {
    return ref<Ideal>(self).Hm(T);
}
EXPORT double CSharp_Ideal_Sm(void* self, double T) {
    return ref<Ideal>(self).Sm(T);
}
EXPORT double CSharp_Ideal_Um(void* self, double T) {
    return ref<Ideal>(self).Um(T);
}
EXPORT void CSharp_Ideal_info(void* self) {
    ref<Ideal>(self).info();
}
EXPORT int CSharp_Ideal_interval(void* self, double T) {
    return translate<ThException>([&] { return ref<Ideal>(self).interval(T); });
}
EXPORT void CSharp_Ideal_load(void* self) {
    translate<ThException, MthException>([&] { ref<Ideal>(self).load(); });
}
EXPORT void CSharp_Ideal_offset(void* self, double dh, double ds) {
    translate<ThException>([&] { ref<Ideal>(self).offset(dh, ds); });
}
EXPORT void CSharp_Ideal_reset(void* self) {
    ref<Ideal>(self).reset();
}
EXPORT void* CSharp_Ideal_model__SWIG_0(void* self) {
    return ref<Ideal>(self).model();
}
EXPORT void CSharp_Ideal_model__SWIG_1(void* self, void* model) {
    ref<Ideal>(self).model(as<Model1>(model));
}
EXPORT void* CSharp_new_Solid() {
    return new Solid;
}
EXPORT void CSharp_delete_Solid(void* self) {
    delete as<Solid>(self);
}
EXPORT double CSharp_Solid_Ae__SWIG_0(void* self, double p, double T) {
    return ref<Solid>(self).Ae(p, T);
}
EXPORT double CSharp_Solid_Ae__SWIG_1(void* self, double p, double T, int* i, double* rho) {
    return ref<Solid>(self).Ae(p, T, *i, *rho);
}
EXPORT double CSharp_Solid_Am__SWIG_0(void* self, double p, double T) {
    return ref<Solid>(self).Am(p, T);
}
EXPORT double CSharp_Solid_Am__SWIG_1(void* self, double p, double T, int* i, double* rho) {
    return ref<Solid>(self).Am(p, T, *i, *rho);
}
EXPORT double CSharp_Solid_Gm__SWIG_0(void* self, double p, double T) {
    return ref<Solid>(self).Gm(p, T);
}
EXPORT double CSharp_Solid_Gm__SWIG_1(void* self, double p, double T, int* i, double* rho) {
    return ref<Solid>(self).Gm(p, T, *i, *rho);
}
EXPORT double CSharp_Solid_Ge(void* self, double p, double T, int* i, double* rho) {
    return ref<Solid>(self).Ge(p, T, *i, *rho);
}
EXPORT double CSharp_Solid_He(void* self, double p, double T) {
    return ref<Solid>(self).He(p, T);
}
EXPORT double CSharp_Solid_Hm(void* self, double p, double T) {
    return ref<Solid>(self).Hm(p, T);
}
EXPORT double CSharp_Solid_Se(void* self, double p, double T) {
    return ref<Solid>(self).Se(p, T);
}
EXPORT double CSharp_Solid_Sm(void* self, double p, double T) {
    return ref<Solid>(self).Sm(p, T);
}
EXPORT double CSharp_Solid_Ue(void* self, double p, double T) {
    return ref<Solid>(self).Ue(p, T);
}
EXPORT double CSharp_Solid_Um(void* self, double p, double T) {
    return ref<Solid>(self).Um(p, T);
}
EXPORT double CSharp_Solid_Vm(void* self, double p, double T) {
    return ref<Solid>(self).Vm(p, T);
}
EXPORT double CSharp_Solid_d(void* self, double p, double T) {
    return ref<Solid>(self).d(p, T);
}
EXPORT int CSharp_Solid_sge(void* self, double T, int i, double* psub, double* v, double* kappa) {
    return ref<Solid>(self).sge(T, i, *psub, *v, *kappa);
}
EXPORT double CSharp_Solid_Ttrp(void* self) {
    return ref<Solid>(self).Ttrp();
}
EXPORT void* CSharp_Solid_id(void* self, int i) {
    return text(i < 0 ? nullptr : ref<Solid>(self).id(i));
}
EXPORT void CSharp_Solid_info(void* self) {
    ref<Solid>(self).info();
}
EXPORT void CSharp_Solid_load(void* self) {
    translate<ThException>([&] { ref<Solid>(self).load(); });
}
EXPORT void CSharp_Solid_reset(void* self) {
    ref<Solid>(self).reset();
}
EXPORT void* CSharp_Solid_model__SWIG_0(void* self) {
    return ref<Solid>(self).model();
}
EXPORT void CSharp_Solid_model__SWIG_1(void* self, void* model) {
    ref<Solid>(self).model(as<Model1>(model));
}
EXPORT void* CSharp_Solid_sg_get(void* self) {
    return &ref<Solid>(self).sg;
}
EXPORT void CSharp_Solid_sg_set(void* self, void* v) {
    if (self && v) ref<Solid>(self).sg = ref<Vector<Subl>>(v);
}
EXPORT void* CSharp_new_Subl() {
    return new Subl;
}
EXPORT void CSharp_delete_Subl(void* self) {
    delete as<Subl>(self);
}
EXPORT void CSharp_Subl_load(void* self, FILE* f) {
    translate<ThException, MthException>([&] { ref<Subl>(self).load(f); });
}
EXPORT void* CSharp_new_Visco() {
    return new Visco;
}
EXPORT void CSharp_delete_Visco(void* self) {
    delete as<Visco>(self);
}
EXPORT double CSharp_Visco_eta(void* self, double rho, double T, double* pr, double* pa) {
    return ref<Visco>(self).eta(rho, T, *pr, *pa);
}
EXPORT double CSharp_Visco_eta0(void* self, double T) {
    return ref<Visco>(self).eta0(T);
}
EXPORT void CSharp_Visco_intro(void* self) {
    ref<Visco>(self).intro();
}
EXPORT void CSharp_Visco_load0(void* self) {
    translate<ThException>([&] { ref<Visco>(self).load0(); });
}
EXPORT void CSharp_Visco_load1(void* self, const char* set) {
    translate<ThException>([&] { ref<Visco>(self).load1(set); });
}
EXPORT void CSharp_Visco_set1(void* self, void* v) {
    if (is_null(v, kConstDoubleV)) return;
    ref<Visco>(self).set1(ref<Vector<double>>(v));
}
EXPORT void CSharp_Visco_set_comment(void* self, const char* text, int* level) {
    if (is_null(level, kLevel)) return;
    ref<Visco>(self).set_comment(text, static_cast<ft_level>(*level));
}
EXPORT void CSharp_Visco_set_id(void* self, int id) {
    ref<Visco>(self).set_id(id);
}
EXPORT void CSharp_Visco_show(void* self, double rms) {
    ref<Visco>(self).show(rms);
}
EXPORT void CSharp_Visco_store1(void* self, const char* set, double rms) {
    translate<ThException>([&] { ref<Visco>(self).store1(set, rms); });
}
EXPORT void CSharp_Visco_reset(void* self) {
    ref<Visco>(self).reset();
}
EXPORT void* CSharp_Visco_model__SWIG_0(void* self) {
    return ref<Visco>(self).model();
}
EXPORT void CSharp_Visco_model__SWIG_1(void* self, void* model) {
    ref<Visco>(self).model(as<Model1>(model));
}
EXPORT void* CSharp_new_pass1() {
    return new pass1;
}
EXPORT void CSharp_delete_pass1(void* self) {
    delete as<pass1>(self);
}
EXPORT void* CSharp_pass1_mdl1_get(void* self) {
    return handle(ref<pass1>(self).mdl1);
}
EXPORT void CSharp_pass1_mdl1_set(void* self, void* value) {
    if (self) ref<pass1>(self).mdl1 = as<Model1>(value);
}
EXPORT int CSharp_pass1_mode_get(void* self) {
    return ref<pass1>(self).mode;
}
EXPORT void CSharp_pass1_mode_set(void* self, int value) {
    if (self) ref<pass1>(self).mode = value;
}
EXPORT double CSharp_pass1_p_get(void* self) {
    return ref<pass1>(self).p;
}
EXPORT void CSharp_pass1_p_set(void* self, double value) {
    if (self) ref<pass1>(self).p = value;
}
EXPORT double CSharp_pass1_rho_get(void* self) {
    return ref<pass1>(self).rho;
}
EXPORT void CSharp_pass1_rho_set(void* self, double value) {
    if (self) ref<pass1>(self).rho = value;
}
EXPORT double CSharp_pass1_T_get(void* self) {
    return ref<pass1>(self).T;
}
EXPORT void CSharp_pass1_T_set(void* self, double value) {
    if (self) ref<pass1>(self).T = value;
}
EXPORT void* CSharp_new_passN() {
    return new passN;
}
EXPORT void CSharp_delete_passN(void* self) {
    delete as<passN>(self);
}
EXPORT void* CSharp_passN_mdlN_get(void* self) {
    return handle(ref<passN>(self).mdlN);
}
EXPORT void CSharp_passN_mdlN_set(void* self, void* value) {
    if (self) ref<passN>(self).mdlN = as<ModelN>(value);
}
EXPORT int CSharp_passN_i_get(void* self) {
    return ref<passN>(self).i;
}
EXPORT void CSharp_passN_i_set(void* self, int value) {
    if (self) ref<passN>(self).i = value;
}
EXPORT double CSharp_passN_p_get(void* self) {
    return ref<passN>(self).p;
}
EXPORT void CSharp_passN_p_set(void* self, double value) {
    if (self) ref<passN>(self).p = value;
}
EXPORT double CSharp_passN_rho_get(void* self) {
    return ref<passN>(self).rho;
}
EXPORT void CSharp_passN_rho_set(void* self, double value) {
    if (self) ref<passN>(self).rho = value;
}
EXPORT double CSharp_passN_T_get(void* self) {
    return ref<passN>(self).T;
}
EXPORT void CSharp_passN_T_set(void* self, double value) {
    if (self) ref<passN>(self).T = value;
}
EXPORT double CSharp_passN_h_get(void* self) {
    return ref<passN>(self).h;
}
EXPORT void CSharp_passN_h_set(void* self, double value) {
    if (self) ref<passN>(self).h = value;
}
EXPORT void* CSharp_passN_x_get(void* self) {
    return handle(ref<passN>(self).x);
}
EXPORT void CSharp_passN_x_set(void* self, void* value) {
    if (self) ref<passN>(self).x = as<Vector<double>>(value);
}
EXPORT void* CSharp_new_pass_ffeN() {
    return new pass_ffeN;
}
EXPORT void CSharp_delete_pass_ffeN(void* self) {
    delete as<pass_ffeN>(self);
}
EXPORT void* CSharp_pass_ffeN_m_get(void* self) {
    return handle(ref<pass_ffeN>(self).m);
}
EXPORT void CSharp_pass_ffeN_m_set(void* self, void* value) {
    if (self) ref<pass_ffeN>(self).m = as<ModelN>(value);
}
EXPORT int CSharp_pass_ffeN_mode_get(void* self) {
    return ref<pass_ffeN>(self).mode;
}
EXPORT void CSharp_pass_ffeN_mode_set(void* self, int value) {
    if (self) ref<pass_ffeN>(self).mode = value;
}
EXPORT double CSharp_pass_ffeN_p_get(void* self) {
    return ref<pass_ffeN>(self).p;
}
EXPORT void CSharp_pass_ffeN_p_set(void* self, double value) {
    if (self) ref<pass_ffeN>(self).p = value;
}
EXPORT double CSharp_pass_ffeN_T_get(void* self) {
    return ref<pass_ffeN>(self).T;
}
EXPORT void CSharp_pass_ffeN_T_set(void* self, double value) {
    if (self) ref<pass_ffeN>(self).T = value;
}
EXPORT void* CSharp_pass_ffeN_xl_get(void* self) {
    return handle(ref<pass_ffeN>(self).xl);
}
EXPORT void CSharp_pass_ffeN_xl_set(void* self, void* value) {
    if (self) ref<pass_ffeN>(self).xl = as<Vector<double>>(value);
}
EXPORT void* CSharp_new_phdesc() {
    return new phdesc;
}
EXPORT void CSharp_delete_phdesc(void* self) {
    delete as<phdesc>(self);
}
EXPORT int CSharp_phdesc_species_get(void* self) {
    return ref<phdesc>(self).species;
}
EXPORT void CSharp_phdesc_species_set(void* self, int value) {
    if (self) ref<phdesc>(self).species = value;
}
EXPORT int CSharp_phdesc_phase_get(void* self) {
    return ref<phdesc>(self).phase;
}
EXPORT void CSharp_phdesc_phase_set(void* self, int value) {
    if (self) ref<phdesc>(self).phase = value;
}
EXPORT void* CSharp_prop_str_sname_get(void* self) {
    return text(ref<prop_str>(self).sname);
}
EXPORT void CSharp_prop_str_sname_set(void* self, const char* text) {
    if (self) set_text(ref<prop_str>(self).sname, text);
}
EXPORT void* CSharp_prop_str_lname_get(void* self) {
    return text(ref<prop_str>(self).lname);
}
EXPORT void CSharp_prop_str_lname_set(void* self, const char* text) {
    if (self) set_text(ref<prop_str>(self).lname, text);
}
EXPORT void* CSharp_prop_str_unit_get(void* self) {
    return text(ref<prop_str>(self).unit);
}
EXPORT void CSharp_prop_str_unit_set(void* self, const char* text) {
    if (self) set_text(ref<prop_str>(self).unit, text);
}
EXPORT int CSharp_prop_str_dimension_get(void* self) {
    return ref<prop_str>(self).dimension;
}
EXPORT void* CSharp_new_phdescV__SWIG_0(int n) {
    return new Vector<phdesc>(n);
}
EXPORT void CSharp_delete_phdescV(void* self) {
    delete as<Vector<phdesc>>(self);
}
EXPORT int CSharp_phdescV_size(void* self) {
    return ref<Vector<phdesc>>(self).size();
}
EXPORT void* CSharp_phdescV_getItem__SWIG_0(void* self, int i) {
    return &ref<Vector<phdesc>>(self)[i];
}
EXPORT void CSharp_phdescV_setItemValue(void* self, int i, int species, int phase) {
    ref<Vector<phdesc>>(self)[i] = {species, phase};
}
