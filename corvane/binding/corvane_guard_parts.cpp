// Guarded exports of the ideal-gas, solid and viscosity parts.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/ideal/ideal.h>
#include <corvane/solid/solid.h>
#include <corvane/viscosity/visco.h>

using namespace corvane::binding;

EXPORT double Corvane_Ideal_Am(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).Am(T); });
}
EXPORT double Corvane_Ideal_CVm(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).CVm(T); });
}
EXPORT double Corvane_Ideal_Cpm(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).Cpm(T); });
}
EXPORT double Corvane_Ideal_Gm(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).Gm(T); });
}
EXPORT double Corvane_Ideal_Hm(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).Hm(T); });
}
EXPORT double Corvane_Ideal_Sm(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).Sm(T); });
}
EXPORT double Corvane_Ideal_Um(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).Um(T); });
}
EXPORT int Corvane_Ideal_interval(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Ideal>(self).interval(T); });
}
EXPORT void Corvane_Ideal_load(void* self, CorvaneError* error) {
    guard(error, {}, [&] { ref<Ideal>(self).load(); });
}
EXPORT void Corvane_Ideal_offset(void* self, double dh, double ds, CorvaneError* error) {
    guard(error, {}, [&] { ref<Ideal>(self).offset(dh, ds); });
}

EXPORT double Corvane_Solid_Ae__SWIG_0(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Ae(p, T); });
}
EXPORT double Corvane_Solid_Ae__SWIG_1(void* self, double p, double T, int* i, double* rho,
                                       CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Ae(p, T, *i, *rho); });
}
EXPORT double Corvane_Solid_Am__SWIG_0(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Am(p, T); });
}
EXPORT double Corvane_Solid_Am__SWIG_1(void* self, double p, double T, int* i, double* rho,
                                       CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Am(p, T, *i, *rho); });
}
EXPORT double Corvane_Solid_Gm__SWIG_0(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Gm(p, T); });
}
EXPORT double Corvane_Solid_Gm__SWIG_1(void* self, double p, double T, int* i, double* rho,
                                       CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Gm(p, T, *i, *rho); });
}
EXPORT double Corvane_Solid_Ge(void* self, double p, double T, int* i, double* rho,
                               CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Ge(p, T, *i, *rho); });
}
EXPORT double Corvane_Solid_He(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).He(p, T); });
}
EXPORT double Corvane_Solid_Hm(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Hm(p, T); });
}
EXPORT double Corvane_Solid_Se(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Se(p, T); });
}
EXPORT double Corvane_Solid_Sm(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Sm(p, T); });
}
EXPORT double Corvane_Solid_Ue(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Ue(p, T); });
}
EXPORT double Corvane_Solid_Um(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Um(p, T); });
}
EXPORT double Corvane_Solid_Vm(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).Vm(p, T); });
}
EXPORT double Corvane_Solid_d(void* self, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).d(p, T); });
}
EXPORT int Corvane_Solid_sge(void* self, double T, int i, double* psub, double* v, double* kappa,
                             CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Solid>(self).sge(T, i, *psub, *v, *kappa); });
}
EXPORT void Corvane_Solid_load(void* self, CorvaneError* error) {
    guard(error, {}, [&] { ref<Solid>(self).load(); });
}

EXPORT void Corvane_Subl_load(void* self, FILE* f, CorvaneError* error) {
    guard(error, {}, [&] { ref<Subl>(self).load(f); });
}

EXPORT double Corvane_Visco_eta(void* self, double rho, double T, double* pr, double* pa,
                                CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Visco>(self).eta(rho, T, *pr, *pa); });
}
EXPORT double Corvane_Visco_eta0(void* self, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Visco>(self).eta0(T); });
}
EXPORT void Corvane_Visco_load0(void* self, CorvaneError* error) {
    guard(error, {}, [&] { ref<Visco>(self).load0(); });
}
EXPORT void Corvane_Visco_load1(void* self, const char* set, CorvaneError* error) {
    guard(error, {}, [&] { ref<Visco>(self).load1(set); });
}
EXPORT void Corvane_Visco_set1(void* self, void* v, CorvaneError* error) {
    guard(error, {{v, kConstDoubleV}}, [&] { ref<Visco>(self).set1(ref<Vector<double>>(v)); });
}
EXPORT void Corvane_Visco_set_comment(void* self, const char* text, int* level,
                                      CorvaneError* error) {
    guard(error, {{level, kLevel}},
          [&] { ref<Visco>(self).set_comment(text, static_cast<ft_level>(*level)); });
}
EXPORT void Corvane_Visco_store1(void* self, const char* set, double rms, CorvaneError* error) {
    guard(error, {}, [&] { ref<Visco>(self).store1(set, rms); });
}
