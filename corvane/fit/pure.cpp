// Answers of an equation of state of a pure substance.
#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/fit/evaluator.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/state/phase_properties.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane::fit {
namespace {
constexpr double kNear = 5e-3;  // 1 − T/Tc below which the library's near-critical solver is asked
constexpr double kEnd = 5e-4;  // 1 − T/Tc from which densities are continued along their tangents
constexpr double kGrowth = 10.0, kOnset = 3e-3;  // of the deviation with T/Tc − 1 above Tc

/// A density at T: Ar, Z, S = ∂(rho·Z)/∂rho and T·∂Ar/∂T.
struct Density {
    double Ar, Z, S, Ta;
};
Density density(Model1 const& model, double rho, double T, bool slopes) {
    double d[9];
    Deriv1 const* exact = model.derivatives();
    if (exact && slopes && exact->deriv(rho, T, 2, 2, d))
        return {d[0], 1.0 + d[3], 1.0 + 2.0 * d[3] + d[6], d[1]};
    if (exact && exact->deriv(rho, T, 2, 0, d))
        return {d[0], 1.0 + d[1], 1.0 + 2.0 * d[1] + d[2], 0.0};
    return {model.Ar(rho, T), model.Z(rho, T), model.pV(rho, T), slopes ? -model.Ur(rho, T) : 0.0};
}

struct Conditions {
    double S, C;  // S, rho·∂S/∂rho: both vanish at the critical point
};
Conditions conditions(Model1 const& model, double T, double rho) {
    const Vector<double> r = model.crit(T, rho, 0.0);
    return {r[1], r[2] * rho};
}

class PureEvaluator final : public Evaluator {
  public:
    PureEvaluator(Model1& model, std::size_t points)
        : model_(model),
          first_{model.Tcrit(), model.vcrit(), model.Ts(), model.vs()},
          last_(first_),
          kept_(points) {}

    /// The critical point from the one solved last, or else from that of the beginning: parameters
    /// from which none was found leave no trace.
    void parameters_changed() override {
        const double Ts = model_.Ts(), vs = model_.vs();
        for (Sizes const& from : {last_, first_}) {
            // The sizes Ts and vs scale an equation of corresponding states: a first guess for all.
            const bool scaled = Ts > 0.0 && vs > 0.0 && from.Ts > 0.0 && from.vs > 0.0;
            model_.Tcrit(from.Tc * (scaled ? Ts / from.Ts : 1.0));
            model_.vcrit(from.vc * (scaled ? vs / from.vs : 1.0));
            if (!renew_critical(model_)) continue;
            last_ = {model_.Tcrit(), model_.vcrit(), Ts, vs};
            break;
        }
        Tc_ = model_.Tcrit();
        rho_c_ = 1.0 / model_.vcrit();
    }
    void evaluate(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                  std::vector<Answer>& answers) override;
    void first_stage(Point const& point, std::vector<double>& deviations) override;
    bool has_first_stage() const override { return true; }
    bool stable(std::size_t index, Point const& point) override;
    void forget() override {
        std::fill(kept_.begin(), kept_.end(), Pair{});
        last_ = first_;
    }

  private:
    /// Densities of a solution; of one phase the first alone.
    struct Pair {
        double rhoL = 0.0, rhoV = 0.0;
    };
    using Values = std::array<double, 4>;  // of the observations of a point, in their order

    bool saturation(double T, Pair& pair) const;
    bool newton(double T, Pair& pair) const;
    Values values(Point const& point, Pair const& pair) const;
    void slopes(Point const& point, Pair const& pair, Knob const& knob, std::size_t k,
                std::vector<Answer>& answers);
    void beyond(Point const& point, std::vector<Knob> const& knobs, std::vector<Answer>& answers);
    Values continued(Point const& point, Values& penalty) const;
    void critical(Point const& point, std::vector<Knob> const& knobs, std::vector<Answer>& answers);
    double state_density(Point const& point) const;

    /// A critical point, and the sizes of the equation that it goes with.
    struct Sizes {
        double Tc, vc, Ts, vs;
    };

    Model1& model_;
    const Sizes first_;
    Sizes last_;
    std::vector<Pair> kept_;
    double Tc_ = 0.0, rho_c_ = 0.0;
};

/// Newton's method in the logarithms of both densities from those given.
bool PureEvaluator::newton(double T, Pair& pair) const {
    double L = pair.rhoL, V = pair.rhoV;
    for (int k = 0; k < 25; ++k) {
        const Density l = density(model_, L, T, false), v = density(model_, V, T, false);
        const double f = L * l.Z - V * v.Z, g = l.Ar - v.Ar + l.Z - v.Z + std::log(L / V);
        const double det = l.S * v.S * (V - L);
        const double dL = -v.S * (V * g - f) / det, dV = -l.S * (L * g - f) / det;
        if (!(l.S > 0.0) || !(v.S > 0.0) || !std::isfinite(dL + dV)) return false;
        L *= std::exp(std::clamp(dL, -0.1, 0.1));
        V *= std::exp(std::clamp(dV, -0.5, 0.5));
        if (!(L > 1.02 * V)) return false;
        if (std::fabs(dL) + std::fabs(dV) < 1e-7) {
            pair = {L, V};
            return true;
        }
    }
    return false;
}

bool PureEvaluator::saturation(double T, Pair& pair) const {
    if (!(T < (1.0 - kEnd) * Tc_)) return false;
    if (T < (1.0 - kNear) * Tc_ && pair.rhoL > 0.0 && newton(T, pair)) return true;
    try {
        const PureSaturation s = pure_saturation_T(model_, T);
        pair = {s.rhoL, s.rhoV};
        return true;
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    pair = {};
    return false;
}

double PureEvaluator::state_density(Point const& point) const {
    double rho = 0.0, other = 0.0;
    for (Observation const& o : point.observed)
        if (o.what == Observable::rho) rho = o.value;
    const int phase = point.phase, found = model_.vcalc(point.p, point.T, phase, rho, other);
    return found == 0 ? 0.0 : rho;
}

/// What is observed, at densities that are given.
PureEvaluator::Values PureEvaluator::values(Point const& point, Pair const& pair) const {
    Values result{};
    const double T = point.T;
    PhaseProperties properties;
    if (point.kind == PointKind::state) {
        for (Observation const& o : point.observed)
            if (o.what != Observable::rho) properties = phase_properties(model_, T, pair.rhoL);
    }
    for (std::size_t k = 0; k < point.observed.size(); ++k) {
        double& value = result[k];
        switch (point.observed[k].what) {
            case Observable::p:
                value = R * T * pair.rhoV * density(model_, pair.rhoV, T, false).Z;
                break;
            case Observable::rho:
            case Observable::rhoL:
                value = pair.rhoL;
                break;
            case Observable::rhoV:
                value = pair.rhoV;
                break;
            case Observable::hvap: {
                const Density l = density(model_, pair.rhoL, T, true),
                              v = density(model_, pair.rhoV, T, true);
                value = R * T * (v.Z - v.Ta - l.Z + l.Ta);
                break;
            }
            case Observable::cp:
                value = properties.cp;
                break;
            case Observable::w:
                value = properties.w;
                break;
            case Observable::JT:
                value = properties.mu_JT;
                break;
            case Observable::B:
                value = model_.B(T, 2);
                break;
            default:
                value = kUnknown;
        }
    }
    return result;
}

/// With A and P = p/(RT) at constant densities: (v_L − v_V)·dP = (A_V,θ − A_L,θ)·dθ along the
/// saturation curve at constant T, and drho = (dP − P_θ·dθ)/S in each phase. The other values are
/// differenced along that direction.
void PureEvaluator::slopes(Point const& point, Pair const& pair, Knob const& knob, std::size_t k,
                           std::vector<Answer>& answers) {
    const double h = knob.step, L = pair.rhoL, V = pair.rhoV, T = point.T;
    double dL = 0.0, dV = 0.0, dP = 0.0;
    if (point.kind != PointKind::virial) {
        const Density l = density(model_, L, T, false);
        Density v{};
        if (V > 0.0) v = density(model_, V, T, false);
        knob.set(knob.value + h);
        const double Lup = model_.Z(L, T), Lup_A = model_.Ar(L, T);
        const double Vup = V > 0.0 ? model_.Z(V, T) : 0.0, Vup_A = V > 0.0 ? model_.Ar(V, T) : 0.0;
        knob.set(knob.value - h);
        const double L_P = L * (Lup - model_.Z(L, T)) / (2.0 * h),
                     L_A = (Lup_A - model_.Ar(L, T)) / (2.0 * h);
        if (V > 0.0) {
            const double V_P = V * (Vup - model_.Z(V, T)) / (2.0 * h),
                         V_A = (Vup_A - model_.Ar(V, T)) / (2.0 * h);
            dP = (V_A - L_A) / (1.0 / L - 1.0 / V);
            dV = (dP - V_P) / v.S;
        }
        dL = (dP - L_P) / l.S;
    }
    knob.set(knob.value + h);
    const Values up = values(point, {L + h * dL, V + h * dV});
    knob.set(knob.value - h);
    const Values down = values(point, {L - h * dL, V - h * dV});
    knob.set(knob.value);
    for (std::size_t o = 0; o < answers.size(); ++o)
        answers[o].slope[k] =
            point.observed[o].what == Observable::p ? R * T * dP : (up[o] - down[o]) / (2.0 * h);
}

/// From next to the critical point on: p on the critical isochore, which has its slope there;
/// densities and the enthalpy of vaporisation, whose slopes grow without bound, along their
/// tangents at kEnd, by the square root with which they approach it; and a growth of the deviation.
PureEvaluator::Values PureEvaluator::continued(Point const& point, Values& penalty) const {
    double T = model_.Tcrit(), rho = 1.0 / model_.vcrit();
    solve_critical(model_, T, rho);
    Point end = point;
    end.T = (1.0 - kEnd) * T;
    Values result{};
    bool known = true;
    try {
        const PureSaturation s = pure_saturation_T(model_, end.T);
        result = values(end, {s.rhoL, s.rhoV});
    } catch (EquilibriumFailure const&) {
        known = false;
    }
    const double above = std::fmax(0.0, point.T / T - 1.0),
                 beyond = kGrowth * (std::hypot(above, kOnset) - kOnset),
                 part = std::fmin(2.0, 0.5 + (1.0 - point.T / T) / (2.0 * kEnd));
    const auto isochore = [&](double t) { return R * t * rho * model_.Z(rho, t); };
    for (std::size_t k = 0; k < point.observed.size(); ++k) {
        const Observable what = point.observed[k].what;
        const bool high = what == Observable::p || what == Observable::rhoV;
        const double limit = what == Observable::hvap ? 0.0 : rho;
        penalty[k] = high ? beyond : -beyond;
        if (what == Observable::p)
            result[k] = isochore(point.T) + (known ? result[k] - isochore(end.T) : 0.0);
        else
            result[k] = known ? limit + part * (result[k] - limit) : limit;
    }
    return result;
}

void PureEvaluator::beyond(Point const& point, std::vector<Knob> const& knobs,
                           std::vector<Answer>& answers) {
    Values penalty{};
    const Values at = continued(point, penalty);
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = at[o];
        answers[o].penalty = penalty[o];
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        Values up_penalty{}, down_penalty{};
        knobs[k].set(knobs[k].value + knobs[k].step);
        const Values up = continued(point, up_penalty);
        knobs[k].set(knobs[k].value - knobs[k].step);
        const Values down = continued(point, down_penalty);
        knobs[k].set(knobs[k].value);
        for (std::size_t o = 0; o < answers.size(); ++o)
            answers[o].slope[k] =
                (up[o] - down[o] + (up_penalty[o] - down_penalty[o]) * point.observed[o].value) /
                (2.0 * knobs[k].step);
    }
}

void PureEvaluator::critical(Point const& point, std::vector<Knob> const& knobs,
                             std::vector<Answer>& answers) {
    const auto at = [&] {
        double T = Tc_, rho = rho_c_;
        const bool met = solve_critical(model_, T, rho);
        std::array<double, 4> v{T, R * T * rho * model_.Z(rho, T), rho, met ? 1.0 : 0.0};
        return v;
    };
    const auto which = [](Observable what) {
        return what == Observable::T ? 0u : what == Observable::p ? 1u : 2u;
    };
    const auto here = at();
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = here[which(point.observed[o].what)];
        answers[o].solved = here[3] > 0.0;
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        knobs[k].set(knobs[k].value + knobs[k].step);
        const auto up = at();
        knobs[k].set(knobs[k].value - knobs[k].step);
        const auto down = at();
        knobs[k].set(knobs[k].value);
        for (std::size_t o = 0; o < answers.size(); ++o) {
            const auto i = which(point.observed[o].what);
            answers[o].slope[k] = (up[i] - down[i]) / (2.0 * knobs[k].step);
        }
    }
}

void PureEvaluator::evaluate(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                             std::vector<Answer>& answers) {
    answers.assign(point.observed.size(), Answer{});
    for (Answer& answer : answers) answer.slope.assign(knobs.size(), 0.0);
    if (point.kind == PointKind::critical) return critical(point, knobs, answers);
    Pair& pair = kept_[index];
    bool solved = true;
    if (point.kind == PointKind::saturation)
        solved = saturation(point.T, pair);
    else if (point.kind == PointKind::state)
        solved = (pair.rhoL = state_density(point)) > 0.0;
    if (!solved && point.kind == PointKind::saturation) return beyond(point, knobs, answers);
    if (!solved) {  // no density at all: the whole value is the deviation
        for (Answer& answer : answers) answer.calculated = 0.0;
        return;
    }
    const Values at = values(point, pair);
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = at[o];
        answers[o].solved = std::isfinite(at[o]);
        if (!answers[o].solved) answers[o].calculated = 0.0;
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) slopes(point, pair, knobs[k], k, answers);
    for (std::size_t o = 0; o < answers.size(); ++o)
        if (!answers[o].solved) answers[o].slope.assign(knobs.size(), 0.0);
}

/// One step of Newton's method from the measured values, so that these are the deviations to first
/// order: ln p from the potentials of both roots at the measured p, a density from the pressure
/// there.
void PureEvaluator::first_stage(Point const& point, std::vector<double>& deviations) {
    deviations.assign(point.observed.size(), kUnknown);
    if (point.kind != PointKind::saturation && point.kind != PointKind::state) return;
    const double T = point.T;
    double p = point.p;
    for (std::size_t o = 0; o < deviations.size(); ++o) {
        Observation const& seen = point.observed[o];
        if (seen.what == Observable::p && point.kind == PointKind::saturation) {
            double L = 0.0, V = 0.0;
            if (model_.vcalc(p, T, 1, L, V) != 3) continue;
            const Density l = density(model_, L, T, false), v = density(model_, V, T, false);
            const double g = l.Ar - v.Ar + l.Z - v.Z + std::log(L / V);
            deviations[o] = g / (v.Z - l.Z);  // dg/dln p = Z_L − Z_V
        } else if (seen.what == Observable::rho || seen.what == Observable::rhoL) {
            const Density at = density(model_, seen.value, T, false);
            const double P = p > 0.0 ? p / (R * T) : 0.0;
            if (at.S > 0.0) deviations[o] = (P - seen.value * at.Z) / (seen.value * at.S);
        }
    }
}

/// The certified solver has the same vapour pressure.
bool PureEvaluator::stable(std::size_t index, Point const& point) {
    Pair const& pair = kept_[index];
    if (point.kind != PointKind::saturation || !(pair.rhoV > 0.0)) return true;
    const double p = R * point.T * pair.rhoV * model_.Z(pair.rhoV, point.T);
    try {
        return std::fabs(pure_saturation_T(model_, point.T).p / p - 1.0) < 1e-6;
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return false;
}
}  // namespace

bool solve_critical(Model1 const& model, double& T, double& rho) try {
    double t = T, r = rho, last = 1e300;
    for (int k = 0; k < 30; ++k) {
        const double h = 1e-5;
        const Conditions s = conditions(model, t, r), up = conditions(model, t, r * (1.0 + h)),
                         down = conditions(model, t, r * (1.0 - h)),
                         hot = conditions(model, t * (1.0 + h), r),
                         cold = conditions(model, t * (1.0 - h), r);
        const double C_rho = (up.C - down.C) / (2.0 * h), S_T = (hot.S - cold.S) / (2.0 * h),
                     C_T = (hot.C - cold.C) / (2.0 * h), det = s.C * C_T - S_T * C_rho;
        double x = (-s.S * C_T + S_T * s.C) / det, y = (-s.C * s.C + s.S * C_rho) / det;
        const double size = std::fabs(x) + std::fabs(y);
        if (!std::isfinite(size)) return false;
        const double cut = std::fmin(1.0, 0.1 / size);
        r *= std::exp(cut * x);
        t *= std::exp(cut * y);
        if (size < 1e-6 && (size < 1e-12 || size >= 0.5 * last)) {
            if (!(std::fabs(std::log(r / rho)) < 1.0) || !(std::fabs(std::log(t / T)) < 1.0))
                return false;
            T = t;
            rho = r;
            return true;
        }
        last = size;
    }
    return false;
} catch (ThException const&) {  // a step to where the equation has no values
    return false;
} catch (MthException const&) {
    return false;
}

bool renew_critical(Model1& model) {
    double T = model.Tcrit(), rho = 1.0 / model.vcrit();
    if (!solve_critical(model, T, rho)) return false;
    const double p = R * T * rho * model.Z(rho, T);
    if (!(p > 0.0)) return false;
    model.Tcrit(T);
    model.vcrit(1.0 / rho);
    model.pcrit(p);
    return true;
}

std::unique_ptr<Evaluator> pure_evaluator(Model1& model, std::size_t points) {
    return std::make_unique<PureEvaluator>(model, points);
}

}  // namespace corvane::fit
