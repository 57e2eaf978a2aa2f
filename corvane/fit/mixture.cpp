// Answers of a mixture model.
#include <corvane/core/constants.h>
#include <corvane/fit/evaluator.h>
#include <corvane/fit/two_phase.h>
#include <corvane/state/phase_properties.h>

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>

namespace corvane::fit {
namespace {
constexpr double kPenalty = 0.2;  // of a point without a solution, relative

class MixtureEvaluator final : public Evaluator {
  public:
    MixtureEvaluator(Mixture& mixture, std::size_t points)
        : model_(*mixture.model),
          n_(mixture.size()),
          solver_(*mixture.model, mixture.size()),
          kept_(points) {}

    void parameters_changed() override {}
    void evaluate(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                  std::vector<Answer>& answers) override;
    void first_stage(Point const& point, std::vector<double>& deviations) override {
        deviations.assign(point.observed.size(), kUnknown);
    }
    bool has_first_stage() const override { return false; }
    void forget() override { std::fill(kept_.begin(), kept_.end(), Phases{}); }

  private:
    using Numbers = std::vector<double>;

    Vector<double> vector(Numbers const& x) const { return solver_.vector(x); }
    void answer(Point const& point, Phases const& phases, double* values) const;
    void slopes(Point const& point, Phases const& phases, std::vector<Knob> const& knobs,
                std::vector<Answer>& answers) const;
    void state(Point const& point, std::vector<Knob> const& knobs,
               std::vector<Answer>& answers) const;
    double state_value(Point const& point, std::size_t o, double rho) const;
    double unsolved(Point const& point) const;
    void penalty(Point const& point, std::vector<Knob> const& knobs,
                 std::vector<Answer>& answers) const;

    ModelN& model_;
    int n_;
    TwoPhase solver_;
    std::vector<Phases> kept_;
};

/// The observed values of two phases.
void MixtureEvaluator::answer(Point const& point, Phases const& phases, double* values) const {
    const double sum_a = total(phases.a), sum_b = total(phases.b);
    for (std::size_t o = 0; o < point.observed.size(); ++o) {
        Observation const& seen = point.observed[o];
        const auto i = static_cast<std::size_t>(std::max(seen.component, 0));
        if (seen.what == Observable::p) {
            const bool gas_b =
                sum_b < sum_a;  // rounding of a liquid's density moves its pressure more
            Vector<double> const rho_i = vector(gas_b ? phases.b : phases.a);
            values[o] = R * point.T * rho_i.sum() * model_.Z(rho_i, point.T);
        } else if (point.kind == PointKind::liquid_liquid) {
            values[o] = seen.what == Observable::x ? phases.a[i] / sum_a : phases.b[i] / sum_b;
        } else {
            values[o] = phases.b[i] / sum_b;  // of the incipient phase
        }
    }
}

/// The theorem of implicit functions at the solution: J·du = −∂F/∂θ·dθ with the phases held; then
/// the values are differenced along that direction.
void MixtureEvaluator::slopes(Point const& point, Phases const& phases,
                              std::vector<Knob> const& knobs, std::vector<Answer>& answers) const {
    const bool two = point.kind == PointKind::liquid_liquid;
    const int first = two ? n_ : 1;
    Numbers const& z = two ? point.x : TwoPhase::given(point);
    Numbers present = z;
    if (two)
        for (std::size_t i = 0; i < z.size(); ++i) present[i] = 1.0 / static_cast<double>(n_);
    PhaseState a, b;
    Eigen::MatrixXd J;
    Eigen::VectorXd F, up, down;
    const auto states = [&](int order) {
        const FluidModel fluid(model_, vector(present));  // anew: parameters have changed
        fill(a, phases.a);
        fill(b, phases.b);
        return fluid.evaluate(a, point.T, order) && fluid.evaluate(b, point.T, order);
    };
    if (!states(phase_H | phase_p) || !solver_.system(point, a, b, &J, F)) return;
    const Eigen::PartialPivLU<Eigen::MatrixXd> lu(J);
    std::vector<double> high(answers.size()), low(answers.size());
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        Knob const& knob = knobs[k];
        knob.set(knob.value + knob.step);
        bool met = states(phase_p) && solver_.system(point, a, b, nullptr, up);
        knob.set(knob.value - knob.step);
        met = met && states(phase_p) && solver_.system(point, a, b, nullptr, down);
        if (met) {
            const Eigen::VectorXd du = lu.solve((down - up) / (2.0 * knob.step));
            const auto moved = [&](double h) {
                Phases next = phases;
                for (int j = 0; j < n_; ++j) {
                    next.a[static_cast<std::size_t>(j)] *= std::exp(h * du[two ? j : 0]);
                    next.b[static_cast<std::size_t>(j)] *= std::exp(h * du[first + j]);
                }
                return next;
            };
            answer(point, moved(-knob.step), low.data());
            knob.set(knob.value + knob.step);
            answer(point, moved(knob.step), high.data());
            for (std::size_t o = 0; o < answers.size(); ++o)
                answers[o].slope[k] = (high[o] - low[o]) / (2.0 * knob.step);
        }
        knob.set(knob.value);
    }
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

/// How far the measured state is from an equilibrium: ln Σ K_i·z_i with K from the fugacities of
/// the measured (or Wilson's) second phase; of two liquids the mean difference of the potentials.
double MixtureEvaluator::unsolved(Point const& point) const {
    const bool two = point.kind == PointKind::liquid_liquid;
    Numbers const &z = two ? point.x : TwoPhase::given(point),
                  &measured = two || !TwoPhase::dew(point) ? point.y : point.x;
    const FluidModel fluid(model_, vector(z));
    Numbers w = solver_.second_phase(fluid, point, measured);
    const double sum = total(w);
    for (double& each : w) each /= sum;
    PhaseState a, b;
    a.resize(n_);
    b.resize(n_);
    if (!fluid.evaluate_at(a, point.p, point.T, z,
                           TwoPhase::dew(point) ? Root::dilute : Root::dense, 0) ||
        !fluid.evaluate_at(b, point.p, point.T, w,
                           two || TwoPhase::dew(point) ? Root::dense : Root::dilute, 0))
        return 0.0;
    double K = 0.0;
    for (std::size_t i = 0; i < z.size(); ++i) K += w[i] * std::exp(a.m[i] - b.m[i]);
    return std::log(K);
}

void MixtureEvaluator::penalty(Point const& point, std::vector<Knob> const& knobs,
                               std::vector<Answer>& answers) const {
    const auto size = [&] {
        return std::hypot(kPenalty, std::clamp(unsolved(point), -10.0, 10.0));
    };
    const double here = size();
    for (Answer& answer : answers) {
        answer.alone = true;
        answer.penalty = here;
    }
    for (std::size_t k = 0; k < knobs.size(); ++k) {
        knobs[k].set(knobs[k].value + knobs[k].step);
        const double up = size();
        knobs[k].set(knobs[k].value - knobs[k].step);
        const double slope = (up - size()) / (2.0 * knobs[k].step);
        knobs[k].set(knobs[k].value);
        for (Answer& answer : answers) answer.slope[k] = slope;
    }
}

void MixtureEvaluator::evaluate(std::size_t index, Point const& point,
                                std::vector<Knob> const& knobs, std::vector<Answer>& answers) {
    answers.assign(point.observed.size(), Answer{});
    for (Answer& answer : answers) answer.slope.assign(knobs.size(), 0.0);
    if (point.kind == PointKind::state || point.kind == PointKind::virial)
        return state(point, knobs, answers);
    if (point.kind != PointKind::liquid_liquid && !TwoPhase::all_present(TwoPhase::given(point))) {
        for (Answer& answer : answers) {  // a pure component tells nothing of a pair
            answer.alone = true;
            answer.penalty = 0.0;
        }
        return;
    }
    Phases& phases = kept_[index];
    if (!solver_.solve(point, phases)) return penalty(point, knobs, answers);
    std::vector<double> values(answers.size());
    answer(point, phases, values.data());
    for (std::size_t o = 0; o < answers.size(); ++o) {
        answers[o].calculated = values[o];
        answers[o].solved = true;
    }
    if (!knobs.empty()) slopes(point, phases, knobs, answers);
}
}  // namespace

std::unique_ptr<Evaluator> mixture_evaluator(Mixture& mixture, std::size_t points) {
    return std::make_unique<MixtureEvaluator>(mixture, points);
}

}  // namespace corvane::fit
