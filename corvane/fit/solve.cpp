#include <corvane/fit/independence.h>
#include <corvane/fit/least_squares.h>
#include <corvane/fit/residuals.h>
#include <corvane/fit/suspicion.h>
#include <corvane/text/failure.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace corvane::fit {
namespace {
constexpr double kFar = 0.1;       // median deviation above which the first stage is worth its time
constexpr double kSingular = 1e4;  // condition of the Jacobian from which a warning is due

/// Radical inverse of k in a base: Halton's sequence (Numer. Math. 2 (1960) 84).
double halton(int k, int base) {
    double x = 0.0, part = 1.0;
    for (; k > 0; k /= base) x += (part /= base) * (k % base);
    return x;
}

class Solver {
  public:
    Solver(Problem& problem, Options const& options)
        : problem_(problem), options_(options), vector_(problem, options) {
        const auto n = static_cast<Eigen::Index>(problem.parameters.size());
        if (n == 0) throw text::Failure("no parameter is adjusted");
        if (vector_.used() < n) throw text::Failure("fewer measured values than parameters");
        start_ = lower_ = upper_ = Eigen::VectorXd(n);
        for (Eigen::Index i = 0; i < n; ++i) {
            Parameter const& p = *problem.parameters[static_cast<std::size_t>(i)];
            start_[i] = p.start;
            lower_[i] = p.lower;
            upper_[i] = p.upper;
            if (!(p.lower < p.upper))
                throw text::Failure("the bounds of " + problem.label(static_cast<std::size_t>(i)) +
                                    " leave no room");
            if (!(p.start >= p.lower && p.start <= p.upper))
                throw text::Failure("the start of " + problem.label(static_cast<std::size_t>(i)) +
                                    " is outside its bounds");
        }
    }
    Result run();

  private:
    LeastSquares how();
    bool far(Eigen::VectorXd const& x);
    bool at_bound(Eigen::VectorXd const& x) const;
    Minimum once(Eigen::VectorXd const& from, bool first_stage);
    Minimum best();
    void robust(Minimum& m);
    void statistics(Minimum const& m, Result& result);
    void identify(Eigen::MatrixXd const& J, Uncertainty const& u,
                  std::vector<Eigen::Index> const& free, Result& result) const;
    void report(Minimum const& m, std::vector<Answer> const& before, Result& result);
    void cross_validate(Minimum const& m, Result& result);

    Problem& problem_;
    Options const& options_;
    ResidualVector vector_;
    Eigen::VectorXd start_, lower_, upper_;
    double width_ = 0.0;
    Eigen::VectorXd leverage_;  // of the used residuals
    double robust_spread_ = 0.0;
    bool stopped_ = false;  // by the caller's progress
};

double median(std::vector<double> values) {
    if (values.empty()) return kUnknown;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
/// Median of the absolute values as a standard deviation.
double robust_deviation(Eigen::VectorXd const& r) {
    std::vector<double> sizes;
    for (double value : r) sizes.push_back(std::fabs(value));
    return 1.4826 * median(sizes);
}

LeastSquares Solver::how() {
    LeastSquares how;
    how.loss = width_ > 0.0 ? options_.loss : Loss::squares;
    how.width = width_;
    how.losses = static_cast<int>(vector_.used());
    how.lower = lower_;
    how.upper = upper_;
    how.limit = options_.iterations;
    how.room = Eigen::VectorXd(lower_.size());
    for (Eigen::Index i = 0; i < how.room.size(); ++i) {
        Parameter const& p = *problem_.parameters[static_cast<std::size_t>(i)];
        how.room[i] = p.positive ? 0.0 : 10.0 * p.unit;
    }
    if (options_.progress)
        how.go_on = [this] { return !stopped_ && !(stopped_ = !options_.progress(1)); };
    return how;
}

/// Whether a start is too far from the data for the last stage to know the way: a point without a
/// solution, or half of the deviations above a tenth.
bool Solver::far(Eigen::VectorXd const& x) {
    const std::vector<Answer> answers = vector_.answers(x);
    std::vector<double> sizes;
    for (std::size_t e = 0; e < answers.size(); ++e) {
        Entry const& entry = vector_.entries()[e];
        if (entry.scale == 0.0) continue;
        if (!answers[e].solved && !(answers[e].alone && answers[e].penalty == 0.0)) return true;
        sizes.push_back(std::fabs(deviation(entry, answers[e])));
    }
    return median(std::move(sizes)) > kFar;
}

bool Solver::at_bound(Eigen::VectorXd const& x) const {
    return (x.array() <= lower_.array()).any() || (x.array() >= upper_.array()).any();
}

Minimum Solver::once(Eigen::VectorXd const& from, bool first_stage) {
    Eigen::VectorXd x = from;
    const Residuals last = [&](auto const& at, auto& r, auto* J) {
        return vector_.last_stage(at, r, J);
    };
    if (first_stage && far(from)) {
        const Residuals first = [&](auto const& at, auto& r, auto* J) {
            return vector_.first_stage(at, r, J);
        };
        LeastSquares quick = how();
        quick.limit = 30;
        const Minimum m = minimise(first, x, quick);
        Eigen::VectorXd here, there;
        // It is a start for the last stage if that says so.
        if (m.r.size() > 0 && last(from, here, nullptr) && last(m.x, there, nullptr) &&
            there.squaredNorm() < here.squaredNorm())
            x = m.x;
    }
    Minimum m = minimise(last, x, how());
    if (x == from || !at_bound(m.x)) return m;
    Minimum other = minimise(last, from, how());  // led astray
    return other.cost < m.cost ? other : m;
}

/// From the start, then from points spread over the bounds.
Minimum Solver::best() {
    const bool any = std::any_of(problem_.systems.begin(), problem_.systems.end(),
                                 [](auto const& s) { return s->evaluator->has_first_stage(); });
    const bool first = options_.first_stage && any;
    Minimum best = once(start_, first);
    constexpr int kBases[] = {2, 3, 5, 7, 11, 13, 17, 19, 23, 29};
    for (int k = 1; k < options_.starts && !stopped_; ++k) {
        Eigen::VectorXd x = start_;
        for (Eigen::Index i = 0; i < x.size(); ++i)
            if (lower_[i] > -1e299 && upper_[i] < 1e299) {
                const double at = halton(k, kBases[i % 10]);
                x[i] = lower_[i] > 0.0 ? lower_[i] * std::pow(upper_[i] / lower_[i], at)
                                       : lower_[i] + at * (upper_[i] - lower_[i]);
            }
        for (auto const& system : problem_.systems) system->evaluator->forget();
        Minimum other = once(x, first);
        if (other.J.size() > 0 && (best.J.size() == 0 || other.cost < best.cost))
            best = std::move(other);
    }
    return best;
}

/// Widths of robust losses count in the spread of the deviations, which is that of a fit by squares
/// at first; it settles in a few rounds.
void Solver::robust(Minimum& m) {
    if (options_.loss == Loss::squares) return;
    const Residuals last = [&](auto const& at, auto& r, auto* J) {
        return vector_.last_stage(at, r, J);
    };
    for (int round = 0; round < 4 && !stopped_; ++round) {
        const double spread = vector_.uncertainties_given()
                                  ? 1.0
                                  : std::fmax(1e-12, robust_deviation(m.r.head(vector_.used())));
        width_ = options_.loss_width * spread;
        const int before = m.iterations;
        Eigen::VectorXd const x = m.x;
        m = minimise(last, x, how());
        m.iterations += before;
        if (vector_.uncertainties_given()) return;
    }
}

/// What the data leave open.
void Solver::identify(Eigen::MatrixXd const& J, Uncertainty const& u,
                      std::vector<Eigen::Index> const& free, Result& result) const {
    const auto name = [&](Eigen::Index j) {
        return problem_.label(static_cast<std::size_t>(free[static_cast<std::size_t>(j)]));
    };
    bool none = false;
    for (Eigen::Index j = 0; j < J.cols(); ++j)
        if (!(J.col(j).norm() > 1e-10)) {
            none = true;
            result.warnings.push_back("no measured value depends on " + name(j));
        }
    if (none || !(u.condition > kSingular)) return;
    std::string names;
    for (Eigen::Index j = 0; j < J.cols(); ++j)
        if (std::fabs(u.weakest[j]) > 0.3) names += (names.empty() ? "" : ", ") + name(j);
    result.warnings.push_back(
        "the data hardly tell " + names +
        " apart: their effects are nearly the same (condition of the Jacobian " +
        std::to_string(static_cast<long>(std::fmin(u.condition, 1e15))) + ")");
}

/// With the weights of the losses; parameters at a bound are fixed.
void Solver::statistics(Minimum const& m, Result& result) {
    const Eigen::Index n = m.x.size();
    Eigen::MatrixXd J = m.J;
    Eigen::VectorXd r = m.r;
    for (Eigen::Index k = 0; k < vector_.used(); ++k) {
        const double root = std::sqrt(width_ > 0.0 ? weight_of(options_.loss, width_, r[k]) : 1.0);
        J.row(k) *= root;
        r[k] *= root;
    }
    std::vector<Eigen::Index> free;
    for (Eigen::Index i = 0; i < n; ++i) {
        const double room = 1e-9 * (std::fabs(m.x[i]) + 1e-3);
        const bool at_bound = m.x[i] <= lower_[i] + room || m.x[i] >= upper_[i] - room;
        result.parameters.push_back({problem_.label(static_cast<std::size_t>(i)), start_[i], m.x[i],
                                     kUnknown, kUnknown, at_bound});
        if (at_bound)
            result.warnings.push_back(result.parameters.back().name + " ends at its bound");
        else
            free.push_back(i);
    }
    const auto count = static_cast<Eigen::Index>(free.size());
    Eigen::MatrixXd part(J.rows(), count);
    for (Eigen::Index j = 0; j < count; ++j) part.col(j) = J.col(free[static_cast<std::size_t>(j)]);
    const Uncertainty u = uncertainty(part, r);
    identify(part, u, free, result);
    result.spread = u.spread;
    result.condition = u.condition;
    result.correlation.assign(static_cast<std::size_t>(n * n), kUnknown);
    for (Eigen::Index j = 0; j < count; ++j) {
        const Eigen::Index at = free[static_cast<std::size_t>(j)];
        result.parameters[static_cast<std::size_t>(at)].error = u.error[j];
        for (Eigen::Index k = 0; k < count; ++k)
            result
                .correlation[static_cast<std::size_t>(at * n + free[static_cast<std::size_t>(k)])] =
                u.correlation(j, k);
    }
    leverage_ = u.leverage;
    robust_spread_ = std::fmax(robust_deviation(m.r.head(vector_.used())), 1e-12);
}

/// The report that a point belongs to.
SetReport& set_of(PointReport const& p, Result& result) {
    for (SetReport& s : result.sets)
        if (s.system == p.system && s.set == p.set && s.what == p.what) return s;
    SetReport fresh;
    fresh.system = p.system;
    fresh.set = p.set;
    fresh.what = p.what;
    result.sets.push_back(fresh);
    return result.sets.back();
}

void Solver::report(Minimum const& m, std::vector<Answer> const& before, Result& result) {
    const std::vector<Answer> after = vector_.answers(m.x);
    Eigen::Index row = 0;
    for (std::size_t e = 0; e < after.size(); ++e) {
        Entry const& entry = vector_.entries()[e];
        Point const& point = problem_.systems[static_cast<std::size_t>(entry.system)]
                                 ->data[static_cast<std::size_t>(entry.set)]
                                 .points[static_cast<std::size_t>(entry.point)];
        Observation const& seen = point.observed[static_cast<std::size_t>(entry.observation)];
        PointReport p{};
        p.system = entry.system;
        p.set = entry.set;
        p.point = entry.point;
        p.what = seen.what;
        p.component = seen.component;
        p.measured = entry.measured;
        p.before = before[e].calculated;
        p.after = after[e].calculated;
        p.size = entry.size;
        p.deviation = deviation(entry, after[e]);
        Problem::System const& system = *problem_.systems[static_cast<std::size_t>(entry.system)];
        p.stable = entry.observation > 0 ? result.points.back().stable
                                         : system.evaluator->stable(entry.index, point);
        p.used = entry.scale > 0.0;
        p.solved = after[e].solved;
        p.weighted = p.used ? p.deviation / entry.scale : 0.0;
        if (p.used) {
            p.leverage = leverage_[row];
            const double rest = std::sqrt(std::fmax(1e-6, 1.0 - p.leverage));
            p.outlier = p.solved && std::fabs(p.weighted) > 5.0 * robust_spread_ * rest &&
                        std::fabs(p.deviation) > 1e-3;
            ++row;
        }
        result.points.push_back(p);
        SetReport& set = set_of(p, result);
        const auto add = [&](Spread& to, double d) {
            ++to.points;
            to.mean_absolute += std::fabs(d);
            to.bias += d;
            if (std::fabs(d) > std::fabs(to.largest)) to.largest = d;
        };
        ++set.points;
        if (!p.used) {
            ++set.excluded;
            continue;
        }
        if (!p.solved) ++set.without_solution;
        if (p.solved && !p.stable) ++set.unstable;
        if (p.solved) add(set.after, p.deviation);
        if (before[e].solved) add(set.before, deviation(entry, before[e]));
    }
    for (SetReport& s : result.sets)
        for (Spread* each : {&s.before, &s.after}) {
            each->mean_absolute /= each->points;  // not-a-number where there are none
            each->bias /= each->points;
        }
}

/// Every part of the data predicted by a fit to the others.
void Solver::cross_validate(Minimum const& m, Result& result) {
    const int parts = std::min<int>(options_.folds, static_cast<int>(vector_.used()));
    const Residuals last = [&](auto const& at, auto& r, auto* J) {
        return vector_.last_stage(at, r, J);
    };
    std::vector<double> sum(result.sets.size(), 0.0);
    std::vector<int> count(result.sets.size(), 0);
    for (int part = 0; part < parts && !stopped_; ++part) {
        vector_.fold(part, parts);
        LeastSquares rest = how();
        rest.losses = -1;
        const Minimum without = minimise(last, m.x, rest);
        const std::vector<Answer> answers = vector_.answers(without.x);
        for (std::size_t e = 0; e < answers.size(); ++e) {
            Entry const& entry = vector_.entries()[e];
            if (!vector_.in_fold(e) || entry.scale == 0.0 || !answers[e].solved) continue;
            for (std::size_t s = 0; s < result.sets.size(); ++s)
                if (result.sets[s].system == entry.system && result.sets[s].set == entry.set &&
                    result.sets[s].what == result.points[e].what) {
                    sum[s] += std::fabs(deviation(entry, answers[e]));
                    ++count[s];
                }
        }
    }
    vector_.fold(0, 0);
    if (stopped_) return;
    for (std::size_t s = 0; s < result.sets.size(); ++s)
        if (count[s] > 0) result.sets[s].predicted = sum[s] / count[s];
}

Result Solver::run() {
    Result result;
    const std::vector<Answer> before = vector_.answers(start_);
    Minimum m = best();
    if (m.J.size() == 0) throw text::Failure("the deviations are not finite at the start");
    robust(m);
    result.converged = m.converged;
    result.iterations = m.iterations;
    result.cost = m.cost;
    statistics(m, result);
    report(m, before, result);
    result.independent = independent_deviations(problem_, result);
    const double parameters = static_cast<double>(m.x.size()),
                 used = static_cast<double>(vector_.used());
    const double free = std::fmax(1.0, result.independent - parameters);
    for (FittedParameter& p : result.parameters)
        p.correlated_error = p.error * std::sqrt(std::fmax(1.0, (used - parameters) / free));
    suspect(problem_, vector_, before, result);
    if (options_.folds > 1) cross_validate(m, result);
    result.interrupted = stopped_;
    if (!result.converged)
        result.warnings.push_back("the fit did not converge in " +
                                  std::to_string(result.iterations) + " iterations");
    vector_.set(m.x);
    result.evaluations = vector_.evaluations;
    return result;
}
}  // namespace

Result solve(Problem& problem, Options const& options) {
    return Solver(problem, options).run();
}

}  // namespace corvane::fit
