// Guarded exports of the free functions.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/corvane.h>

using namespace corvane::binding;

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
EXPORT int Corvane_volav(void* model, int kind, double p, double T, void* x, double d, double* rho,
                         CorvaneError* error) {
    return guard(error, {},
                 [&] {
                     auto* fractions = as<Vector<double>>(x);
                     return volav(model, kind, p, T, fractions, d, *rho) == 1 &&
                            corvane::is_density(model, kind, p, T, fractions, *rho);
                 });
}
EXPORT int Corvane_volf1(void* model, double p, double T, double vmin, double* rho1, double* rho2,
                         CorvaneError* error) {
    return guard(error, {}, [&] { return volf1(as<Model1>(model), p, T, vmin, *rho1, *rho2); });
}
EXPORT unsigned int Corvane_volnewt(void* model, int kind, double p, double T, void* x, double d,
                                    double* rho, CorvaneError* error) {
    return guard(error, {},
                 [&] { return volnewt(model, kind, p, T, as<Vector<double>>(x), d, *rho); });
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
    return guard(error, {},
                 [&]() -> void* { return new Vector<double>(ffinit(as<ModelN>(model), p, T)); });
}
EXPORT void Corvane_equil_min(void* m, double p, double T, void* ph, void* x, CorvaneError* error) {
    guard(error, {{ph, kConstPhdescV}, {x, kDoubleV}},
          [&] {
              corvane::equil_min_judged(as<ModelN>(m), p, T, ref<Vector<phdesc>>(ph),
                                        ref<Vector<double>>(x));
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
    guard(error, {{x, kDoubleV}, {rho, kDoubleV}},
          [&] { equil2(as<ModelN>(m), p, T, ref<Vector<double>>(x), ref<Vector<double>>(rho)); });
}
EXPORT void Corvane_crit_slope_x(void* m, void* x, double* s, void* line, CorvaneError* error) {
    guard(error, {{x, kDoubleV}, {line, kDoubleM}}, [&] {
        crit_slope_x(as<ModelN>(m), ref<Vector<double>>(x), *s, ref<Matrix<double>>(line));
    });
}

EXPORT void Corvane_detach1(void* model, CorvaneError* error) {
    guard(error, {}, [&] { corvane::detach1(as<Model1>(model)); });
}
EXPORT void Corvane_detachN(void* model, CorvaneError* error) {
    guard(error, {}, [&] { corvane::detachN(as<ModelN>(model)); });
}
