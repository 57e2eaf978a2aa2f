// Flat exports of the ideal-gas, solid and viscosity parts of a substance.
#include <corvane/binding/flat.h>
#include <corvane/ideal/ideal.h>
#include <corvane/solid/solid.h>
#include <corvane/viscosity/visco.h>

using namespace corvane::binding;

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
