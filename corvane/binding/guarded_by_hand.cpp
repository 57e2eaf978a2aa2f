// Guarded exports that do more than forward: densities that are checked, minima that are judged,
// heat capacities in one call, models that go home.
#include <corvane/binding/flat.h>
#include <corvane/binding/guard.h>
#include <corvane/corvane.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/pure/plugin_file.h>

using namespace corvane::binding;

EXPORT int Corvane_volav(void* model, int kind, double p, double T, void* x, double d, double* rho,
                         CorvaneError* error) {
    return guard(error, {},
                 [&] {
                     auto* fractions = as<Vector<double>>(x);
                     return volav(model, kind, p, T, fractions, d, *rho) == 1 &&
                            corvane::is_density(model, kind, p, T, fractions, *rho);
                 });
}
EXPORT void Corvane_equil_min(void* m, double p, double T, void* ph, void* x, CorvaneError* error) {
    guard(error, {{ph, kConstPhdescV}, {x, kDoubleV}},
          [&] {
              corvane::equil_min_judged(as<ModelN>(m), p, T, ref<Vector<phdesc>>(ph),
                                        ref<Vector<double>>(x));
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
EXPORT void Corvane_detach1(void* model, CorvaneError* error) {
    guard(error, {}, [&] { corvane::detach1(as<Model1>(model)); });
}
EXPORT void Corvane_detachN(void* model, CorvaneError* error) {
    guard(error, {}, [&] { corvane::detachN(as<ModelN>(model)); });
}
