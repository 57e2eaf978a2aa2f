// Guarded exports of the pure-substance model.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/pure/model1.h>

using namespace corvane::binding;

EXPORT double Corvane_Model1_Ak(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Ak(rho, T); });
}
EXPORT double Corvane_Model1_Am(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Am(rho, T); });
}
EXPORT double Corvane_Model1_Ar(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Ar(rho, T); });
}
EXPORT double Corvane_Model1_Sk(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Sk(rho, T); });
}
EXPORT double Corvane_Model1_Um(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Um(rho, T); });
}
EXPORT double Corvane_Model1_Z(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Z(rho, T); });
}
EXPORT double Corvane_Model1_pV(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).pV(rho, T); });
}
EXPORT double Corvane_Model1_B(void* self, double T, int n, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).B(T, n); });
}
EXPORT double Corvane_Model1_Vm(void* self, double p, double T, int phase, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Vm(p, T, phase); });
}
EXPORT double Corvane_Model1_CVm__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).CVm(rho, T); });
}
EXPORT double Corvane_Model1_CVm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                         CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).CVm(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_CVr__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).CVr(rho, T); });
}
EXPORT double Corvane_Model1_CVr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                         CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).CVr(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Cpm__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Cpm(rho, T); });
}
EXPORT double Corvane_Model1_Cpm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                         CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Cpm(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Cpr__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Cpr(rho, T); });
}
EXPORT double Corvane_Model1_Cpr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                         CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Cpr(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Ge__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Ge(rho, T); });
}
EXPORT double Corvane_Model1_Ge__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Ge(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Gm__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Gm(rho, T); });
}
EXPORT double Corvane_Model1_Gm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Gm(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Gr__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Gr(rho, T); });
}
EXPORT double Corvane_Model1_Gr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Gr(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Hm__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Hm(rho, T); });
}
EXPORT double Corvane_Model1_Hm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Hm(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Hr__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Hr(rho, T); });
}
EXPORT double Corvane_Model1_Hr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Hr(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Sm__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Sm(rho, T); });
}
EXPORT double Corvane_Model1_Sm__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Sm(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Sr__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Sr(rho, T); });
}
EXPORT double Corvane_Model1_Sr__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Sr(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_Ur__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Ur(rho, T); });
}
EXPORT double Corvane_Model1_Ur__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                        CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).Ur(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_alphap__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).alphap(rho, T); });
}
EXPORT double Corvane_Model1_alphap__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                            CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).alphap(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_betaV__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).betaV(rho, T); });
}
EXPORT double Corvane_Model1_betaV__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                           CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).betaV(p, T, phase, *rho); });
}
EXPORT double Corvane_Model1_kappaT__SWIG_0(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).kappaT(rho, T); });
}
EXPORT double Corvane_Model1_kappaT__SWIG_1(void* self, double p, double T, int phase, double* rho,
                                            CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).kappaT(p, T, phase, *rho); });
}
EXPORT void* Corvane_Model1_crit(void* self, double T, double rho, double Zt, CorvaneError* error) {
    return guard(error, {},
                 [&]() -> void* { return new Vector<double>(ref<Model1>(self).crit(T, rho, Zt)); });
}
EXPORT void Corvane_Model1_params_(void* self, void* v, CorvaneError* error) {
    guard(error, {{v, kConstDoubleV}}, [&] { ref<Model1>(self).params(ref<Vector<double>>(v)); });
}
EXPORT void Corvane_Model1_par_in(void* self, FILE* f, int mode, CorvaneError* error) {
    guard(error, {}, [&] { ref<Model1>(self).par_in(f, mode); });
}
EXPORT void Corvane_Model1_par_out(void* self, FILE* f, CorvaneError* error) {
    guard(error, {}, [&] { ref<Model1>(self).par_out(f); });
}
EXPORT double Corvane_Model1_xinit(void* self, double p, double T, int phase, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).xinit(p, T, phase); });
}
EXPORT int Corvane_Model1_vcalc(void* self, double p, double T, int phase, double* rho1,
                                double* rho2, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).vcalc(p, T, phase, *rho1, *rho2); });
}
EXPORT double Corvane_Model1_xrho(void* self, double T, int phase, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).xrho(T, phase); });
}
EXPORT int Corvane_Model1_load(void* self, const char* eos, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).load(eos); });
}
EXPORT void Corvane_Model1_load_thchem(void* self, CorvaneError* error) {
    guard(error, {}, [&] { ref<Model1>(self).load_thchem(); });
}
EXPORT void Corvane_Model1_store(void* self, const char* eos, CorvaneError* error) {
    guard(error, {}, [&] { ref<Model1>(self).store(eos); });
}
EXPORT unsigned int Corvane_Model1_off(void* self, double rho, double T, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Model1>(self).off(rho, T); });
}
