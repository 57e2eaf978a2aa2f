// Written by scripts/bindings from signatures.txt: the guarded exports that only forward.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/core/numelo.h>
#include <corvane/corvane.h>

using namespace corvane::binding;

EXPORT void* Corvane_new_doubleV__SWIG_0(int n, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new Vector<double>(n); });
}
EXPORT void* Corvane_new_doubleV__SWIG_2(void* v, CorvaneError* error) {
    return guard(error, {{v, kConstDoubleV}}, [&]() -> void* {
        return new Vector<double>(ref<Vector<double>>(v));
    });
}
EXPORT int Corvane_doubleV_size__SWIG_1(void* self, int n, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Vector<double>>(self).size(n); });
}
EXPORT void* Corvane_new_intV__SWIG_0(int n, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new Vector<int>(n); });
}
EXPORT void* Corvane_new_intV__SWIG_2(void* v, CorvaneError* error) {
    return guard(error, {{v, kConstIntV}}, [&]() -> void* {
        return new Vector<int>(ref<Vector<int>>(v));
    });
}
EXPORT int Corvane_intV_size__SWIG_1(void* self, int n, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Vector<int>>(self).size(n); });
}
EXPORT void* Corvane_new_doubleM__SWIG_0(int rows, int cols, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new Matrix<double>(rows, cols); });
}
EXPORT void Corvane_doubleM_size(void* self, int rows, int cols, CorvaneError* error) {
    guard(error, {}, [&] { ref<Matrix<double>>(self).size(rows, cols); });
}
EXPORT double Corvane_doubleM_det(void* self, CorvaneError* error) {
    return guard(error, {}, [&] { return ref<Matrix<double>>(self).det(); });
}
EXPORT void* Corvane_attach1(const char* eos, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return attach1(eos); });
}
EXPORT void* Corvane_attachN(const char* eos, const char* mixing, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return attachN(eos, mixing); });
}
EXPORT int Corvane_read_vars(const char* prompt, double* x1, double* x2, double* dx,
                             CorvaneError* error) {
    return guard(error, {}, [&] { return read_vars(prompt, *x1, *x2, *dx); });
}
EXPORT double Corvane_adjust_x(int i, void* x, CorvaneError* error) {
    return guard(error, {{x, kDoubleV}}, [&] { return adjust_x(i, ref<Vector<double>>(x)); });
}
EXPORT void Corvane_read_r(const char* prompt, void* x, CorvaneError* error) {
    guard(error, {{x, kDoubleV}}, [&] { read_r(prompt, ref<Vector<double>>(x)); });
}
EXPORT void Corvane_read_x(const char* prompt, void* x, CorvaneError* error) {
    guard(error, {{x, kDoubleV}}, [&] { read_x(prompt, ref<Vector<double>>(x)); });
}
EXPORT int Corvane_volf1(void* model, double p, double T, double vmin, double* rho1, double* rho2,
                         CorvaneError* error) {
    return guard(error, {}, [&] { return volf1(as<Model1>(model), p, T, vmin, *rho1, *rho2); });
}
EXPORT unsigned int Corvane_volnewt(void* model, int kind, double p, double T, void* x, double d,
                                    double* rho, CorvaneError* error) {
    return guard(error, {}, [&] {
        return volnewt(model, kind, p, T, as<Vector<double>>(x), d, *rho);
    });
}
EXPORT int Corvane_volume(void* model, int kind, double p, double T, void* x, double d, void* roots,
                          CorvaneError* error) {
    return guard(error, {{roots, kDoubleV}}, [&] {
        return volume(model, kind, p, T, as<Vector<double>>(x), d, ref<Vector<double>>(roots));
    });
}
EXPORT void Corvane_vle1_T(void* model, double T, int cont, double* p, double* rhoL, double* rhoV,
                           CorvaneError* error) {
    guard(error, {}, [&] { vle1_T(as<Model1>(model), T, cont, *p, *rhoL, *rhoV); });
}
EXPORT void Corvane_vle1_p(void* model, double p, int cont, double* T, double* rhoL, double* rhoV,
                           CorvaneError* error) {
    guard(error, {}, [&] { vle1_p(as<Model1>(model), p, cont, *T, *rhoL, *rhoV); });
}
EXPORT double Corvane_maxwell(void* model, double p, double T, double* rhoL, double* rhoV,
                              CorvaneError* error) {
    return guard(error, {}, [&] { return maxwell(as<Model1>(model), p, T, *rhoL, *rhoV); });
}
EXPORT void Corvane_vleN_T(void* model, double T, void* x, double* p, double* rho1, void* rho2,
                           CorvaneError* error) {
    guard(error, {{x, kConstDoubleV}, {rho2, kDoubleV}}, [&] {
        vleN_T(as<ModelN>(model), T, ref<Vector<double>>(x), *p, *rho1, ref<Vector<double>>(rho2));
    });
}
EXPORT void Corvane_vleN_p(void* model, double p, void* x, double* T, double* rho1, void* rho2,
                           CorvaneError* error) {
    guard(error, {{x, kConstDoubleV}, {rho2, kDoubleV}}, [&] {
        vleN_p(as<ModelN>(model), p, ref<Vector<double>>(x), *T, *rho1, ref<Vector<double>>(rho2));
    });
}
EXPORT void* Corvane_objffeN(void* u, void* ctx, CorvaneError* error) {
    return guard(error, {{u, kConstDoubleV}}, [&]() -> void* {
        return new Vector<double>(objffeN(ref<Vector<double>>(u), ctx));
    });
}
EXPORT void* Corvane_ffinit(void* model, double p, double T, CorvaneError* error) {
    return guard(error, {}, [&]() -> void* {
        return new Vector<double>(ffinit(as<ModelN>(model), p, T));
    });
}
EXPORT void Corvane_list_different(void* a, double d, void* list, int* count, void* idx,
                                   CorvaneError* error) {
    guard(error, {{a, kConstDoubleV}, {list, kDoubleV}, {idx, kIntV}}, [&] {
        list_different(ref<Vector<double>>(a), d, ref<Vector<double>>(list), *count,
            ref<Vector<int>>(idx));
    });
}
EXPORT void Corvane_equil2s(void* m, double p, double T, void* x, int phase, double d, void* rho,
                            int* i, CorvaneError* error) {
    guard(error, {{x, kDoubleV}, {rho, kDoubleV}}, [&] {
        equil2s(as<ModelN>(m), p, T, ref<Vector<double>>(x), phase, d, ref<Vector<double>>(rho),
            *i);
    });
}
EXPORT void Corvane_equil2(void* m, double p, double T, void* x, void* rho, CorvaneError* error) {
    guard(error, {{x, kDoubleV}, {rho, kDoubleV}}, [&] {
        equil2(as<ModelN>(m), p, T, ref<Vector<double>>(x), ref<Vector<double>>(rho));
    });
}
EXPORT void Corvane_crit_slope_x(void* m, void* x, double* s, void* line, CorvaneError* error) {
    guard(error, {{x, kDoubleV}, {line, kDoubleM}}, [&] {
        crit_slope_x(as<ModelN>(m), ref<Vector<double>>(x), *s, ref<Matrix<double>>(line));
    });
}
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
    return guard(error, {}, [&]() -> void* {
        return new Vector<double>(ref<Model1>(self).crit(T, rho, Zt));
    });
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
EXPORT double Corvane_ModelN_Ak(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Ak(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Gk(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Gk(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Sk(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Sk(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Am(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Am(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Um(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Um(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Ur(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Ur(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_pV(void* self, double rho, double T, void* x, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).pV(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_B(void* self, double T, void* x, int k, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).B(T, ref<Vector<double>>(x), k);
    });
}
EXPORT double Corvane_ModelN_Vm(void* self, double p, double T, void* x, int phase,
                                CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Vm(p, T, ref<Vector<double>>(x), phase);
    });
}
EXPORT double Corvane_ModelN_CVm__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).CVm(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_CVm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).CVm(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_CVr__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).CVr(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_CVr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).CVr(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Cpm__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Cpm(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Cpm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Cpm(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Cpr__SWIG_0(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Cpr(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Cpr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Cpr(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Ge__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Ge(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Ge__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Ge(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Gm__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Gm(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Gm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Gm(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Gr__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Gr(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Gr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Gr(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Hm__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Hm(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Hm__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Hm(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Hr__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Hr(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Hr__SWIG_1(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Hr(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_alphap__SWIG_0(void* self, double rho, double T, void* x,
                                            CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).alphap(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_alphap__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).alphap(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_kappaT__SWIG_0(void* self, double rho, double T, void* x,
                                            CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).kappaT(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_kappaT__SWIG_1(void* self, double p, double T, void* x, int phase,
                                            double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).kappaT(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Ar__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Ar(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Ar__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Ar(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Z__SWIG_0(void* self, double rho, double T, void* x,
                                       CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Z(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Z__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Z(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Sr__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Sr(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Sr__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Sr(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_betaV__SWIG_0(void* self, double rho, double T, void* x,
                                           CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).betaV(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_betaV__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).betaV(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_betaV__SWIG_2(void* self, double p, double T, void* x, int phase,
                                           double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).betaV(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Sm__SWIG_0(void* self, double rho, double T, void* x,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Sm(rho, T, ref<Vector<double>>(x));
    });
}
EXPORT double Corvane_ModelN_Sm__SWIG_1(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Sm(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Sm__SWIG_2(void* self, double p, double T, void* x, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Sm(p, T, ref<Vector<double>>(x), phase, *rho);
    });
}
EXPORT double Corvane_ModelN_my__SWIG_0(void* self, void* rho_i, double T, int i,
                                        CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).my(ref<Vector<double>>(rho_i), T, i);
    });
}
EXPORT double Corvane_ModelN_my__SWIG_1(void* self, double rho, double T, void* x, int i,
                                        CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).my(rho, T, ref<Vector<double>>(x), i);
    });
}
EXPORT double Corvane_ModelN_my__SWIG_2(void* self, double p, double T, void* x, int i, int phase,
                                        double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).my(p, T, ref<Vector<double>>(x), i, phase, *rho);
    });
}
EXPORT double Corvane_ModelN_myr__SWIG_0(void* self, void* rho_i, double T, int i,
                                         CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).myr(ref<Vector<double>>(rho_i), T, i);
    });
}
EXPORT double Corvane_ModelN_myr__SWIG_1(void* self, double rho, double T, void* x, int i,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).myr(rho, T, ref<Vector<double>>(x), i);
    });
}
EXPORT double Corvane_ModelN_myr__SWIG_2(void* self, double p, double T, void* x, int i, int phase,
                                         double* rho, CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).myr(p, T, ref<Vector<double>>(x), i, phase, *rho);
    });
}
EXPORT double Corvane_ModelN_Psi__SWIG_0(void* self, void* rho_i, double T, CorvaneError* error) {
    return guard(error, {{rho_i, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Psi(ref<Vector<double>>(rho_i), T);
    });
}
EXPORT double Corvane_ModelN_Psi__SWIG_1(void* self, double rho, double T, void* x,
                                         CorvaneError* error) {
    return guard(error, {{x, kConstDoubleV}}, [&] {
        return ref<ModelN>(self).Psi(rho, T, ref<Vector<double>>(x));
    });
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
    guard(error, {{level, kLevel}}, [&] {
        ref<Visco>(self).set_comment(text, static_cast<ft_level>(*level));
    });
}
EXPORT void Corvane_Visco_store1(void* self, const char* set, double rms, CorvaneError* error) {
    guard(error, {}, [&] { ref<Visco>(self).store1(set, rms); });
}
EXPORT void* Corvane_new_Saturation(CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new corvane::Saturation; });
}
EXPORT void Corvane_delete_Saturation(void* self) {
    delete as<corvane::Saturation>(self);
}
EXPORT void Corvane_Saturation_at_T(void* self, void* model, double T, int cont, double* p,
                                    double* rhoL, double* rhoV, CorvaneError* error) {
    guard(error, {}, [&] {
        ref<corvane::Saturation>(self).at_T(as<Model1>(model), T, cont, *p, *rhoL, *rhoV);
    });
}
EXPORT void Corvane_Saturation_at_p(void* self, void* model, double p, int cont, double* T,
                                    double* rhoL, double* rhoV, CorvaneError* error) {
    guard(error, {}, [&] {
        ref<corvane::Saturation>(self).at_p(as<Model1>(model), p, cont, *T, *rhoL, *rhoV);
    });
}
EXPORT int Corvane_ModelN_load_estimating(void* self, const char* eos, const char* mth,
                                          CorvaneError* error) {
    return guard(error, {}, [&] {
        return static_cast<int>(corvane::load_estimating(ref<ModelN>(self), eos, mth).size());
    });
}
EXPORT int Corvane_ModelN_components(void* self) {
    return ref<ModelN>(self).mdl1.size();
}
EXPORT double Corvane_doubleM_getItemValue(void* self, int i, int j) {
    return ref<Matrix<double>>(self)[i][j];
}
EXPORT void Corvane_doubleM_setItemValue(void* self, int i, int j, double x) {
    ref<Matrix<double>>(self)[i][j] = x;
}
