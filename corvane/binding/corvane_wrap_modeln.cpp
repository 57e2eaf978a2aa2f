// Flat exports of the mixture model.
#include <corvane/binding/access.h>
#include <corvane/binding/flat.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>

using namespace corvane::binding;

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
// Through the plug-in's destroyer; the components stay, as their handles do.
EXPORT void CSharp_delete_ModelN(void* self) {
    if (self && !corvane::releaseN(as<ModelN>(self)))
        corvane::ModelAccess::destroy(as<ModelN>(self));
}
