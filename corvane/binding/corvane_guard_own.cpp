// Guarded exports of operations that have no counterpart in the flat interface: the re-entrant
// saturation solver, loading with estimated pairs, the physical heat capacities of a mixture, the
// number of its components, elements of matrices.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/corvane.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/pure/plugin_file.h>

using namespace corvane::binding;

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
EXPORT void Corvane_ModelN_heat_capacities(void* self, double rho, double T, void* x, double* CVr,
                                           double* Cpr, double* CVm, double* Cpm,
                                           CorvaneError* error) {
    guard(error, {{x, kConstDoubleV}}, [&] {
        const corvane::HeatCapacities c =
            corvane::heat_capacities(ref<ModelN>(self), rho, T, ref<Vector<double>>(x));
        *CVr = c.CVr;
        *Cpr = c.Cpr;
        *CVm = c.CVm;
        *Cpm = c.Cpm;
    });
}
EXPORT int Corvane_ModelN_pair_parameters(void* self) {
    auto* model = as<ModelN>(self);
    if (corvane::class_of(model, typeid(ModelN)) != corvane::ClassOf::derived) return 0;
    auto const* known = dynamic_cast<corvane::PairParameters const*>(model);
    return known ? known->pair_parameters() : 0;
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
