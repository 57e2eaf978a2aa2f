// Flat exports of the free functions.
#include <corvane/binding/flat.h>
#include <corvane/corvane.h>

using namespace corvane::binding;

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
