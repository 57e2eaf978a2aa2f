#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_curve.h>

#include <exception>

namespace corvane {
namespace {
/// If both fail, the march's failure counts.
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

void Saturation::at_T(Model1 const* model, double T, int cont, double& p, double& rhoL,
                      double& rhoV) {
    march_or_solve([&] { march_.at_T(model, T, cont, p, rhoL, rhoV); },
                   [&] {
                       const PureSaturation q = pure_saturation_T(*model, T);
                       p = q.p, rhoL = q.rhoL, rhoV = q.rhoV;
                   });
}

void Saturation::at_p(Model1 const* model, double p, int cont, double& T, double& rhoL,
                      double& rhoV) {
    march_or_solve([&] { march_.at_p(model, p, cont, T, rhoL, rhoV); },
                   [&] {
                       const PureSaturation q = pure_saturation_p(*model, p);
                       T = q.T, rhoL = q.rhoL, rhoV = q.rhoV;
                   });
}

}  // namespace corvane
