#include <corvane/classic/equilibria/ffe1core.h>
#include <corvane/core/constants.h>
#include <corvane/core/numelo.h>
#include <corvane/core/records.h>
#include <corvane/pure/model1.h>

#include <cmath>

double maxwell(Model1 const* model, double p, double T, double& rhoL, double& rhoV) {
    if (!(p > 0) || !(T > 0)) throw ThException(th_out_of_range);
    const auto refuse_single = [&] {
        throw ThException(rhoL <= 1 / model->vcrit() ? th_gas_only : th_liquid_only);
    };
    rhoL = 0.0;
    const int n = model->vcalc(p, T, 1, rhoL, rhoV);
    if (n < 1 || n > 3) throw ThException(th_no_density);
    if (n == 1) refuse_single();
    if (n == 2) {
        double spare = 0.0;
        rhoV = 0.0;
        // intended: from this second call at least two roots are wanted
        if (model->vcalc(p, T, 3, rhoV, spare) <= 1 || std::fabs(1 - rhoL / rhoV) < 0.01)
            refuse_single();
    }
    if (!(rhoL > 0) || !(rhoV > 0)) throw ThException(th_no_density);
    const double difference = model->Ar(rhoV, T) - model->Ar(rhoL, T) + std::log(rhoV / rhoL) +
                              (1 / rhoV - 1 / rhoL) * p / (R * T);
    if (!std::isfinite(difference)) throw ThException(th_no_density);
    return difference;
}

namespace {
constexpr int kMaxFailures = 16;
constexpr int kMaxIterations = 40;

/// State of a saturation fit; the densities are those of the latest evaluation.
struct ffe1 : pass1 {
    double rhoL = 0.0, rhoV = 0.0;
};

/// The fit variable is ln p.
Vector<double> objffe_T(Vector<double> const& x, void* ctx) {
    auto& s = *static_cast<ffe1*>(ctx);
    Vector<double> y(1);
    y[0] = maxwell(s.mdl1, std::exp(x[0]), s.T, s.rhoL, s.rhoV);
    return y;
}

/// The fit variable is T.
Vector<double> objffe_p(Vector<double> const& x, void* ctx) {
    auto& s = *static_cast<ffe1*>(ctx);
    Vector<double> y(1);
    y[0] = maxwell(s.mdl1, s.p, x[0], s.rhoL, s.rhoV);
    return y;
}

/// Moves the variable v of `state` (p or T) until maxwell finds two roots there. A state that has
/// one root only moves v up by steps that halve after each failure when the code is `up`, down
/// otherwise; the first step goes half way to `bound`, or to zero.
template <class Evaluate>
void walk_to_two_roots(double& v, double bound, int up, Evaluate evaluate) {
    double step = 0.0;
    for (int failures = 0;;) {
        try {
            evaluate();
            return;
        } catch (ThException const& e) {
            if (e.number != th_liquid_only && e.number != th_gas_only) throw;
            if (++failures == kMaxFailures) throw ThException(th_generic);
            const bool rise = e.number == up;
            if (failures == 1) step = rise ? (bound - v) / 2 : v / 2;
            v += rise ? step : -step;
            step /= 2;
        }
    }
}
}  // namespace

namespace corvane {

void SaturationMarch::start(Model1 const* model, double DeltaH) {
    T0_ = Tc_ = model->Tcrit();
    pc_ = model->pcrit();
    lp0_ = std::log(pc_);
    DeltaH_ = DeltaH;
}

void SaturationMarch::remember(double T, double lp) {
    if (T0_ != T) DeltaH_ = (lp - lp0_) * R / (1 / T0_ - 1 / T);
    lp0_ = lp;
    T0_ = T;
}

void SaturationMarch::at_T(Model1 const* model, double T, int cont, double& p, double& rhoL,
                      double& rhoV) {
    // Trouton's rule for the first slope. The two functions seed it differently (intended).
    if (cont == 0 || !(DeltaH_ > 0)) start(model, 80 * T);
    ffe1 state;
    state.mdl1 = model;
    state.T = T;
    state.p = std::exp(lp0_ + (1 / T0_ - 1 / T) * DeltaH_ / R);
    walk_to_two_roots(state.p, pc_, th_gas_only,
                      [&] { maxwell(model, state.p, T, state.rhoL, state.rhoV); });
    Vector<double> x(1);
    x[0] = std::log(state.p);
    fit_marquardt(objffe_T, x, 1, &state, kMaxIterations, 0);
    p = std::exp(x[0]);
    rhoL = state.rhoL;
    rhoV = state.rhoV;
    remember(T, x[0]);
}

void SaturationMarch::at_p(Model1 const* model, double p, int cont, double& T, double& rhoL,
                      double& rhoV) {
    if (cont == 0 || !(DeltaH_ > 0)) start(model, 60 * model->Tcrit());
    ffe1 state;
    state.mdl1 = model;
    state.p = p;
    state.T = 1 / (1 / T0_ - (std::log(p) - lp0_) * R / DeltaH_);
    if (state.T > Tc_) state.T = Tc_;
    walk_to_two_roots(state.T, Tc_, th_liquid_only,
                      [&] { maxwell(model, p, state.T, state.rhoL, state.rhoV); });
    Vector<double> x(1);
    x[0] = state.T;
    fit_marquardt(objffe_p, x, 1, &state, kMaxIterations, 0);
    T = x[0];
    rhoL = state.rhoL;
    rhoV = state.rhoV;
    remember(T, std::log(p));
}

}  // namespace corvane

void vle1_T(Model1 const* model, double T, int cont, double& p, double& rhoL, double& rhoV) {
    static corvane::SaturationMarch state;
    state.at_T(model, T, cont, p, rhoL, rhoV);
}

void vle1_p(Model1 const* model, double p, int cont, double& T, double& rhoL, double& rhoV) {
    static corvane::SaturationMarch state;
    state.at_p(model, p, cont, T, rhoL, rhoV);
}
