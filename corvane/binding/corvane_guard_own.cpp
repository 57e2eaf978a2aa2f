// Guarded exports of operations that have no counterpart in the flat interface: the re-entrant
// saturation solver, loading with estimated pairs, the physical heat capacities of a mixture, the
// number of its components, elements of matrices.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/corvane.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/pure/plugin_file.h>

#include <exception>

using namespace corvane::binding;

namespace {
/// Runs a march; where that does not get there, close to the critical point for one, the direct
/// solver. If both fail, the march's failure counts.
template <class March, class Direct>
void march_or_solve(March march, Direct direct) {
    try {
        march();
    } catch (...) {
        const std::exception_ptr failure = std::current_exception();
        try {
            direct();
        } catch (...) {
            std::rethrow_exception(failure);
        }
    }
}
}  // namespace

EXPORT void* Corvane_new_Saturation(CorvaneError* error) {
    return guard(error, {}, [&]() -> void* { return new corvane::Saturation; });
}
EXPORT void Corvane_delete_Saturation(void* self) {
    delete as<corvane::Saturation>(self);
}
EXPORT void Corvane_Saturation_at_T(void* self, void* model, double T, int cont, double* p,
                                    double* rhoL, double* rhoV, CorvaneError* error) {
    guard(error, {}, [&] {
        Model1* const m = as<Model1>(model);
        march_or_solve([&] { ref<corvane::Saturation>(self).at_T(m, T, cont, *p, *rhoL, *rhoV); },
                       [&] {
                           const corvane::PureSaturation q = corvane::pure_saturation_T(*m, T);
                           *p = q.p, *rhoL = q.rhoL, *rhoV = q.rhoV;
                       });
    });
}
EXPORT void Corvane_Saturation_at_p(void* self, void* model, double p, int cont, double* T,
                                    double* rhoL, double* rhoV, CorvaneError* error) {
    guard(error, {}, [&] {
        Model1* const m = as<Model1>(model);
        march_or_solve([&] { ref<corvane::Saturation>(self).at_p(m, p, cont, *T, *rhoL, *rhoV); },
                       [&] {
                           const corvane::PureSaturation q = corvane::pure_saturation_p(*m, p);
                           *T = q.T, *rhoL = q.rhoL, *rhoV = q.rhoV;
                       });
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
