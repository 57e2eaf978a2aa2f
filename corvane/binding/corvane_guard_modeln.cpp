// Guarded exports of the mixture model.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/mixture/modeln.h>

using namespace corvane::binding;

EXPORT double Corvane_ModelN_Ak(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Ak(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Gk(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Gk(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Sk(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Sk(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Am(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Am(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Um(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Um(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Ur(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Ur(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_pV(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).pV(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_B(void* self, double T, void* x, int k, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).B(T, ref<Vector<double>>(x), k); });
}
EXPORT double Corvane_ModelN_Vm(void* self, double p, double T, void* x, int phase,
                                CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Vm(p, T, ref<Vector<double>>(x), phase); });
}
EXPORT double Corvane_ModelN_CVm__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).CVm(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_CVm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).CVm(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_CVr__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).CVr(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_CVr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).CVr(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Cpm__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Cpm(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Cpm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Cpm(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Cpr__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Cpr(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Cpr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Cpr(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Ge__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Ge(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Ge__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Ge(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Gm__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Gm(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Gm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Gm(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Gr__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Gr(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Gr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Gr(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Hm__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Hm(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Hm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Hm(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_Hr__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Hr(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Hr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Hr(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_alphap__SWIG_0(void* self, double rho, double T, void* x,
                                            CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).alphap(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_alphap__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).alphap(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_kappaT__SWIG_0(void* self, double rho, double T, void* x,
                                            CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).kappaT(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_kappaT__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).kappaT(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Ar__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Ar(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Ar__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Ar(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Z__SWIG_0(void* self, double rho, double T, void* x,
                                       CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Z(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Z__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Z(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Sr__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Sr(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Sr__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Sr(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_betaV__SWIG_0(void* self, double rho, double T, void* x,
                                           CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).betaV(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_betaV__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).betaV(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_betaV__SWIG_2(void* self, double p, double T, void* x, int phase,
                                           double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).betaV(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Sm__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Sm(rho, T, ref<Vector<double>>(x)); });
}
EXPORT double Corvane_ModelN_Sm__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Sm(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Sm__SWIG_2(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Sm(p, T, ref<Vector<double>>(x), phase, *rho); });
}
EXPORT double Corvane_ModelN_my__SWIG_0(void* self, void* rho_i, double T, int i,
                                        CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).my(ref<Vector<double>>(rho_i), T, i); });
}
EXPORT double Corvane_ModelN_my__SWIG_1(void* self, double rho, double T, void* x, int i,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).my(rho, T, ref<Vector<double>>(x), i); });
}
EXPORT double Corvane_ModelN_my__SWIG_2(void* self, double p, double T, void* x, int i, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).my(p, T, ref<Vector<double>>(x), i, phase, *rho);
    });
}
EXPORT double Corvane_ModelN_myr__SWIG_0(void* self, void* rho_i, double T, int i,
                                         CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).myr(ref<Vector<double>>(rho_i), T, i); });
}
EXPORT double Corvane_ModelN_myr__SWIG_1(void* self, double rho, double T, void* x, int i,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).myr(rho, T, ref<Vector<double>>(x), i); });
}
EXPORT double Corvane_ModelN_myr__SWIG_2(void* self, double p, double T, void* x, int i, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).myr(p, T, ref<Vector<double>>(x), i, phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Psi__SWIG_0(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Psi(ref<Vector<double>>(rho_i), T); });
}
EXPORT double Corvane_ModelN_Psi__SWIG_1(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}},
                 [&] { return ref<ModelN>(self).Psi(rho, T, ref<Vector<double>>(x)); });
}
EXPORT void* Corvane_ModelN_PsiG__SWIG_0(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&]() -> void* {
        return new Vector<double>(ref<ModelN>(self).PsiG(ref<Vector<double>>(rho_i), T));
    });
}
EXPORT void* Corvane_ModelN_PsiG__SWIG_1(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&]() -> void* {
        return new Vector<double>(ref<ModelN>(self).PsiG(rho, T, ref<Vector<double>>(x)));
    });
}
EXPORT void* Corvane_ModelN_PsiH__SWIG_0(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&]() -> void* {
        return new Matrix<double>(ref<ModelN>(self).PsiH(ref<Vector<double>>(rho_i), T));
    });
}
EXPORT void* Corvane_ModelN_PsiH__SWIG_1(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&]() -> void* {
        return new Matrix<double>(ref<ModelN>(self).PsiH(rho, T, ref<Vector<double>>(x)));
    });
}
EXPORT int Corvane_ModelN_vcalc(void* self, double p, double T, void* x, int mode, double* rho_a,
                                double* rho_b, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).vcalc(p, T, ref<Vector<double>>(x), mode, *rho_a, *rho_b);
    });
}
EXPORT void Corvane_ModelN_alloc(void* self, int n, const char* eos, CorvaneError* error) {
    guard(error, {}, [&] { ref<ModelN>(self).alloc(n, copy_text(eos)); });
}
EXPORT void Corvane_ModelN_par_alloc(void* self, CorvaneError* error) {
    guard(error, {}, [&] { ref<ModelN>(self).par_alloc(); });
}
EXPORT void Corvane_ModelN_par_in(void* self, FILE* f, int i, int j, CorvaneError* error) {
    guard(error, {}, [&] { ref<ModelN>(self).par_in(f, i, j); });
}
EXPORT void Corvane_ModelN_par_out(void* self, FILE* f, int i, int j, CorvaneError* error) {
    guard(error, {}, [&] { ref<ModelN>(self).par_out(f, i, j); });
}
EXPORT void* Corvane_ModelN_mixpar(void* self, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&]() -> void* {
        return new Vector<double>(ref<ModelN>(self).mixpar(ref<Vector<double>>(x)));
    });
}
EXPORT void Corvane_ModelN_load(void* self, const char* eos, const char* mth, CorvaneError* error) {
    guard(error, {}, [&] { ref<ModelN>(self).load(eos, mth); });
}
EXPORT void Corvane_ModelN_store2(void* self, const char* eos, const char* mth,
                                  CorvaneError* error) {
    guard(error, {}, [&] { ref<ModelN>(self).store2(eos, mth); });
}
