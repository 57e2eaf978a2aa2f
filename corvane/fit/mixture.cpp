// Answers of a mixture model.
#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/fit/boundary.h>
#include <corvane/fit/direct_values.h>
#include <corvane/fit/equilibrium.h>
#include <corvane/fit/evaluator.h>
#include <corvane/fit/merging.h>
#include <corvane/state/phase_properties.h>

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
// Least penalty of a point without a solution where nothing says how far that is, relative.
constexpr double kPenalty = 0.2;
// Of the steps of other differences: the library's solvers leave more than rounding.
constexpr double kDirectStep = 100.0;

class MixtureEvaluator final : public Evaluator {
  public:
    MixtureEvaluator(Mixture& mixture, std::size_t points)
        : model_(*mixture.model),
          n_(mixture.size()),
          equilibrium_(*mixture.model, mixture.size()),
          boundary_(equilibrium_, mixture.size(), points),
          direct_(mixture),
          kept_(points) {}

    void parameters_changed() override {}
    void evaluate(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                  std::vector<Answer>& answers) override;
    void first_stage(Point const& point, std::vector<double>& deviations) override;
    bool has_first_stage() const override { return true; }
    bool stable(std::size_t index, Point const& point) override;
    void forget() override {
        std::fill(kept_.begin(), kept_.end(), Phases{});
        boundary_.forget();
        direct_.forget();
    }

  private:
    using Numbers = std::vector<double>;

    Vector<double> vector(Numbers const& x) const;
    void answer(Point const& point, Phases const& phases, double* values) const;
    Numbers slopes(Point const& point, Phases const& phases, Equilibrium::Linear const& at,
                   std::vector<Knob> const& knobs, std::vector<Answer>& answers) const;
    void state(Point const& point, std::vector<Knob> const& knobs,
               std::vector<Answer>& answers) const;
    double state_value(Point const& point, std::size_t o, double rho) const;
    template <class Values>
    bool differences(Values values, std::vector<Knob> const& knobs, std::vector<Answer>& answers);
    bool solve(std::size_t index, Point const& point, Equilibrium::Linear& at, bool& ended);
    void beyond(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                std::vector<Answer>& answers);
    double distance(Point const& point);
    Numbers penalties(Point const& point);
    void penalty(Point const& point, std::vector<Knob> const& knobs, std::vector<Answer>& answers);
    void merge(Point const& point, double w, Numbers const& w_slope, std::vector<Knob> const& knobs,
               std::vector<Answer>& answers);

    ModelN& model_;
    int n_;
    Equilibrium equilibrium_;
    Boundary boundary_;
    DirectValues direct_;
    std::vector<Phases> kept_;
};

Vector<double> MixtureEvaluator::vector(Numbers const& x) const {
    Vector<double> v(n_);
    for (int i = 0; i < n_; ++i) v[i] = x[static_cast<std::size_t>(i)];
    return v;
}

/// The phase that a mole fraction belongs to.
std::size_t phase_of(PointKind kind, Observable what) {
    if (kind == PointKind::three_phase) return what == Observable::y ? 2 : what == Observable::x2;
    return kind == PointKind::bubble || kind == PointKind::dew || what == Observable::x2;
}

/// The observed values of phases in equilibrium.
void MixtureEvaluator::answer(Point const& point, Phases const& phases, double* values) const {
    for (std::size_t o = 0; o < point.observed.size(); ++o) {
        Observation const& seen = point.observed[o];
        if (seen.what == Observable::p) {  // rounding of a liquid's density moves its pressure more
            values[o] = equilibrium_.pressure(point, phases.rho_i[phases.lightest()]);
        } else {
            Numbers const& rho_i = phases.rho_i[phase_of(point.kind, seen.what)];
            values[o] = rho_i[static_cast<std::size_t>(seen.component)] / total(rho_i);
        }
    }
}

/// The theorem of implicit functions at the solution; then the values are differenced along that
/// direction. @return slopes of the weight of phases that become one
std::vector<double> MixtureEvaluator::slopes(Point const& point, Phases const& phases,
                                             Equilibrium::Linear const& at,
                                             std::vector<Knob> const& knobs,
                                             std::vector<Answer>& answers) const {
    Numbers w_slope(knobs.size(), 0.0);
    Eigen::VectorXd du;
    std::vector<double> high(answers.size()), low(answers.size());
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        Knob const& knob = knobs[k];
        const auto set = [&](double h) { knob.set(knob.value + h); };
        if (!equilibrium_.slope(point, phases, set, knob.step, at.J, du)) continue;
        const Phases back = equilibrium_.moved(phases, du, -knob.step),
                     forth = equilibrium_.moved(phases, du, knob.step);
        set(-knob.step);
        answer(point, back, low.data());
        set(knob.step);
        answer(point, forth, high.data());
        set(0.0);
        w_slope[k] =
            (merging_weight(point, forth) - merging_weight(point, back)) / (2.0 * knob.step);
        for (std::size_t o = 0; o < answers.size(); ++o)
            answers[o].slope[k] = (high[o] - low[o]) / (2.0 * knob.step);
    }
    return w_slope;
}

double MixtureEvaluator::state_value(Point const& point, std::size_t o, double rho) const {
    Vector<double> const x = vector(point.x);
    if (point.observed[o].what == Observable::B) return model_.B(point.T, x, 2);
    if (point.observed[o].what == Observable::rho) return rho;
    const PhaseProperties p = phase_properties(model_, point.T, rho, x);
    return point.observed[o].what == Observable::cp  ? p.cp
           : point.observed[o].what == Observable::w ? p.w
                                                     : p.mu_JT;
}

/// One phase: the density root is followed along the parameter by drho = −∂P/∂θ/S.
void MixtureEvaluator::state(Point const& point, std::vector<Knob> const& knobs,
                             std::vector<Answer>& answers) const {
    Vector<double> const x = vector(point.x);
    double rho = 0.0, other = 0.0;
    if (point.kind == PointKind::state) {
        for (Observation const& seen : point.observed)
            if (seen.what == Observable::rho) rho = seen.value;
        if (model_.vcalc(point.p, point.T, x, point.phase, rho, other) == 0) rho = 0.0;
        for (Answer& answer : answers) answer.calculated = 0.0;
        if (!(rho > 0.0)) return;
    }
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = state_value(point, o, rho);
        answers[o].solved = std::isfinite(answers[o].calculated);
        if (!answers[o].solved) answers[o].calculated = 0.0;
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        const double h = knobs[k].step;
        double slope = 0.0;
        if (rho > 0.0) {
            const double S = model_.pV(rho, point.T, x);
            knobs[k].set(knobs[k].value + h);
            const double up = model_.Z(rho, point.T, x);
            knobs[k].set(knobs[k].value - h);
            slope = -rho * (up - model_.Z(rho, point.T, x)) / (2.0 * h) / S;
        }
        std::vector<double> high(answers.size());
        knobs[k].set(knobs[k].value + h);
        for (std::size_t o = 0; o < answers.size(); ++o)
            high[o] = state_value(point, o, rho + h * slope);
        knobs[k].set(knobs[k].value - h);
        for (std::size_t o = 0; o < answers.size(); ++o)
            if (answers[o].solved)
                answers[o].slope[k] =
                    (high[o] - state_value(point, o, rho - h * slope)) / (2.0 * h);
        knobs[k].set(knobs[k].value);
    }
}

/// What the library calculates in one call, values(to), by differences of such calls.
template <class Values>
bool MixtureEvaluator::differences(Values values, std::vector<Knob> const& knobs,
                                   std::vector<Answer>& answers) {
    Numbers here(answers.size()), up = here, down = here;
    if (!values(here.data())) return false;
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = here[o];
        answers[o].solved = true;
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        const double h = kDirectStep * knobs[k].step;
        knobs[k].set(knobs[k].value + h);
        bool met = values(up.data());
        knobs[k].set(knobs[k].value - h);
        met = met && values(down.data());
        knobs[k].set(knobs[k].value);
        for (std::size_t o = 0; met && o < answers.size(); ++o)
            answers[o].slope[k] = (up[o] - down[o]) / (2.0 * h);
    }
    return true;
}

double MixtureEvaluator::distance(Point const& point) {
    return Equilibrium::takes(point.kind) ? equilibrium_.distance(point) : direct_.distance(point);
}

/// False without a solution; `ended`: of a bubble or dew point that its boundary does not reach.
bool MixtureEvaluator::solve(std::size_t index, Point const& point, Equilibrium::Linear& at,
                             bool& ended) {
    Phases& phases = kept_[index];
    ended = false;
    const auto searched = [&] {
        return equilibrium_.solve(point, phases) && equilibrium_.linearise(point, phases, at);
    };
    if (!Equilibrium::saturation(point)) return searched();
    Phases const last = phases;
    const auto met = [&] {
        return equilibrium_.near(point, phases) && equilibrium_.linearise(point, phases, at) &&
               !Boundary::steep(at);
    };
    if (met()) return true;
    Boundary::End end;
    if (!boundary_.end(index, point, phases.empty() ? last : phases, end)) return searched();
    phases = end.phases;
    if (std::fabs(end.T / point.T - 1.0) < 1e-7 && met()) return true;
    phases = {};
    ended = true;
    return false;
}

/// A bubble or dew point beyond the end of its boundary.
void MixtureEvaluator::beyond(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                              std::vector<Answer>& answers) {
    const auto values = [&](double* to) {
        Boundary::End end;
        if (!boundary_.end(index, point, {}, end)) return false;
        for (Observation const& seen : point.observed)
            *to++ = seen.what == Observable::p
                        ? end.p_at(point.T)
                        : end.w_at(static_cast<std::size_t>(seen.component), point.T);
        return true;
    };
    differences(values, knobs, answers);
    for (Answer& answer : answers) answer.solved = false;
}

/// Of every observation. Where all phases are measured a deviation of the size of that of phases
/// which have become one, which grows with the distance from there.
std::vector<double> MixtureEvaluator::penalties(Point const& point) {
    const double e = std::clamp(distance(point), -10.0, 10.0);
    const bool merging =
        Equilibrium::takes(point.kind) && !Equilibrium::saturation(point) && e != 0.0;
    Numbers result;
    for (Observation const& seen : point.observed)
        result.push_back(!merging                 ? std::hypot(kPenalty, e)
                         : is_fraction(seen.what) ? merged(point, seen) * std::hypot(1.0, e)
                                                  : e);
    return result;
}

void MixtureEvaluator::penalty(Point const& point, std::vector<Knob> const& knobs,
                               std::vector<Answer>& answers) {
    const Numbers here = penalties(point);
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].alone = true;
        answers[o].solved = false;
        answers[o].penalty = here[o];
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        const double h = knobs[k].step;
        knobs[k].set(knobs[k].value + h);
        const Numbers up = penalties(point);
        knobs[k].set(knobs[k].value - h);
        const Numbers down = penalties(point);
        knobs[k].set(knobs[k].value);
        for (std::size_t o = 0; o < answers.size(); ++o)
            answers[o].slope[k] = (up[o] - down[o]) / (2.0 * h);
    }
}

/// From the deviations of a solution to the penalty of none, by the weight w of the first.
void MixtureEvaluator::merge(Point const& point, double w, Numbers const& w_slope,
                             std::vector<Knob> const& knobs, std::vector<Answer>& answers) {
    std::vector<Answer> lost = answers;
    penalty(point, knobs, lost);
    for (std::size_t o = 0; o < answers.size(); ++o) {
        Observation const& seen = point.observed[o];
        const double size = is_fraction(seen.what) ? 1.0 : std::fabs(seen.value),
                     d = (answers[o].calculated - seen.value) / size, P = lost[o].penalty,
                     r = std::sqrt(w * d * d + (1.0 - w) * P * P);
        for (std::size_t k = 0; k < knobs.size(); ++k)
            lost[o].slope[k] =
                (0.5 * w_slope[k] * (d * d - P * P) + w * d * answers[o].slope[k] / size +
                 (1.0 - w) * P * lost[o].slope[k]) /
                r;
        lost[o].calculated = answers[o].calculated;
        lost[o].penalty = r;
    }
    answers = lost;
}

void MixtureEvaluator::evaluate(std::size_t index, Point const& point,
                                std::vector<Knob> const& knobs, std::vector<Answer>& answers) {
    answers.assign(point.observed.size(), Answer{});
    for (Answer& answer : answers) answer.slope.assign(knobs.size(), 0.0);
    if (point.kind == PointKind::state || point.kind == PointKind::virial)
        return state(point, knobs, answers);
    Phases& phases = kept_[index];
    const bool direct = DirectValues::takes(point.kind);
    if (direct || !equilibrium_.whole(point)) {
        const auto values = [&](double* to) {
            if (direct) return direct_.values(index, point, to);
            if (!equilibrium_.solve(point, phases)) return false;
            answer(point, phases, to);
            return true;
        };
        // A pure component boils as it does, whatever the parameters of pairs are.
        const bool pure = !direct && point.kind != PointKind::liquid_liquid && n_ == 2;
        if (differences(values, pure ? std::vector<Knob>{} : knobs, answers)) return;
        if (!pure) return penalty(point, knobs, answers);
        for (Answer& answer : answers) answer.alone = true;  // without influence
        return;
    }
    bool ended = false;
    Equilibrium::Linear at;
    if (!solve(index, point, at, ended))
        return ended ? beyond(index, point, knobs, answers) : penalty(point, knobs, answers);
    Numbers values(answers.size());
    answer(point, phases, values.data());
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = values[o];
        answers[o].solved = true;
    }
    const Numbers w_slope = slopes(point, phases, at, knobs, answers);
    const double w = merging_weight(point, phases);
    if (w < 1.0) merge(point, w, w_slope, knobs, answers);
}

/// Equality of potentials at the measured state: with d_i = ln f_i of the first phase less that of
/// phase k, of mole fractions w, Σ w_i·d_i/(Z_k − Z) is the deviation of ln p (exactly, to first
/// order, of a bubble point) and w_i·(d_i − Σ w_j·d_j) that of w_i in an ideal mixture. These are
/// the deviations' signs and sizes, and vanish where they do; unlike a step of Newton's method they
/// have no pole where the model's liquid is not stable.
void MixtureEvaluator::first_stage(Point const& point, std::vector<double>& deviations) {
    deviations.assign(point.observed.size(), kUnknown);
    std::vector<PhaseState> s;
    if (!Equilibrium::takes(point.kind) || !equilibrium_.at_measured(point, s)) return;
    std::size_t lightest = 0;
    for (std::size_t k = 1; k < s.size(); ++k)
        if (s[k].rho < s[lightest].rho) lightest = k;
    const auto mean = [&](PhaseState const& w, std::size_t other) {
        double sum = 0.0;
        for (std::size_t i = 0; i < w.x.size(); ++i) sum += w.x[i] * (s[other].m[i] - w.m[i]);
        return sum;
    };
    for (std::size_t o = 0; o < deviations.size(); ++o) {
        Observation const& seen = point.observed[o];
        const bool p = seen.what == Observable::p;
        const std::size_t k = p ? lightest : phase_of(point.kind, seen.what),
                          other = k == 0 ? 1 : 0;
        PhaseState const& w = s[k];
        const auto i = static_cast<std::size_t>(std::max(seen.component, 0));
        const double d = mean(w, other),
                     Z = point.p / (R * point.T) * (1.0 / w.rho - 1.0 / s[other].rho);
        deviations[o] = p ? d / Z : w.x[i] * (s[other].m[i] - w.m[i] - d);
    }
}

bool MixtureEvaluator::stable(std::size_t index, Point const& point) {
    if (DirectValues::takes(point.kind)) return direct_.stable(index, point);
    if (!Equilibrium::takes(point.kind) || kept_[index].empty()) return true;
    return equilibrium_.stable(point, kept_[index]);
}
}  // namespace

std::unique_ptr<Evaluator> mixture_evaluator(Mixture& mixture, std::size_t points) {
    return std::make_unique<MixtureEvaluator>(mixture, points);
}

}  // namespace corvane::fit
