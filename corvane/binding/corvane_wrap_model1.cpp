// Flat exports of the pure-substance model.
#include <corvane/binding/access.h>
#include <corvane/binding/flat.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

using namespace corvane::binding;

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
// Through the plug-in's destroyer, so that the members of its own class go as well.
EXPORT void CSharp_delete_Model1(void* self) {
    if (self && !corvane::release1(as<Model1>(self)))
        corvane::ModelAccess::destroy(as<Model1>(self));
}
