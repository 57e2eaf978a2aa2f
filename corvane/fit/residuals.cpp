#include <corvane/fit/residuals.h>
#include <corvane/text/failure.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace corvane::fit {
double deviation(Entry const& entry, Answer const& answer) {
    if (answer.alone) return answer.penalty;
    return (answer.calculated - entry.measured) / entry.size + answer.penalty;
}

namespace {
/// The largest sizes of a set, by quantity.
std::map<Observable, double> largest_of(DataSet const& set) {
    std::map<Observable, double> largest;
    for (Point const& point : set.points)
        for (Observation const& seen : point.observed) {
            double& most = largest[seen.what];
            most = std::fmax(most, std::fabs(seen.value));
        }
    return largest;
}

/// The measured size; of quantities that pass through zero at least a twentieth of the largest in
/// the set, of excess functions, which are small differences, all of it.
double size_of(Observation const& seen, double largest) {
    if (is_fraction(seen.what)) return 1.0;
    if (!is_signed(seen.what)) return std::fabs(seen.value);
    if (!(largest > 0.0)) return 1.0;
    const bool excess = seen.what == Observable::hE || seen.what == Observable::vE;
    return excess ? largest : std::fmax(std::fabs(seen.value), 0.05 * largest);
}
}  // namespace

ResidualVector::ResidualVector(Problem& problem, Options const& options) : problem_(problem) {
    for (std::size_t s = 0; s < problem.systems.size(); ++s) {
        auto const& system = *problem.systems[s];
        std::size_t index = 0;
        for (std::size_t k = 0; k < system.data.size(); ++k) {
            const auto largest = largest_of(system.data[k]);
            for (std::size_t i = 0; i < system.data[k].points.size(); ++i, ++index) {
                Point const& point = system.data[k].points[i];
                for (std::size_t o = 0; o < point.observed.size(); ++o) {
                    Observation const& seen = point.observed[o];
                    const double size = size_of(seen, largest.at(seen.what));
                    double scale = is_fraction(seen.what) ? options.fraction : options.relative;
                    if (seen.uncertainty > 0.0) scale = seen.uncertainty / size;
                    const double weight = point.weight * system.data[k].weight;
                    const bool used = point.used && weight > 0.0;
                    if (used && !(seen.uncertainty > 0.0)) given_ = false;
                    used_ += used ? 1 : 0;
                    entries_.push_back({static_cast<int>(s), static_cast<int>(k),
                                        static_cast<int>(i), index, static_cast<int>(o),
                                        used ? scale / std::sqrt(weight) : 0.0, size, seen.value});
                    fold_of_.push_back(static_cast<int>(index));
                }
            }
        }
        std::vector<std::size_t> mine;
        for (std::size_t k = 0; k < problem.parameters.size(); ++k) {
            auto const& of = problem.parameters[k]->systems;
            if (std::find(of.begin(), of.end(), static_cast<int>(s)) != of.end()) mine.push_back(k);
        }
        adjusted_.push_back(mine);
    }
    if (used_ == 0) throw text::Failure("no measured points that are used");
    choose_steps();
}

/// Steps of central differences: 1e-5 of a size, or of the unit. Halved from 1e-3 on until two
/// steps agree best, by the slopes of all residuals at the start: choose_steps looks at the first
/// stage, which needs no iteration; where there is none the default stays.
void ResidualVector::choose_steps() {
    for (auto const& parameter : problem_.parameters) {
        const double size = parameter->positive ? std::fabs(parameter->start) : parameter->unit;
        double best = 1e-5 * size, least = 1e300;
        for (auto const& system : problem_.systems) {
            if (!system->evaluator->has_first_stage()) continue;
            Point const* point = nullptr;
            for (DataSet const& set : system->data)
                if (!set.points.empty()) point = &set.points[set.points.size() / 2];
            if (!point || point->observed.empty()) continue;
            std::vector<double> up, down;
            const double before = *parameter->addresses[0];
            const auto slope = [&](double h) {
                for (double* a : parameter->addresses) *a = before + h;
                system->evaluator->first_stage(*point, up);
                for (double* a : parameter->addresses) *a = before - h;
                system->evaluator->first_stage(*point, down);
                for (double* a : parameter->addresses) *a = before;
                return (up[0] - down[0]) / (2.0 * h);
            };
            for (double h : {1e-3, 1e-4, 1e-5, 1e-6}) {
                const double wide = slope(h * size), narrow = slope(0.5 * h * size);
                const double error = std::fabs(wide - narrow);
                if (std::isfinite(error) && error < least) {
                    least = error;
                    best = h * size;
                }
            }
            break;
        }
        steps_.push_back(best);
    }
}

void ResidualVector::set(Eigen::VectorXd const& x) {
    for (std::size_t k = 0; k < problem_.parameters.size(); ++k)
        for (double* address : problem_.parameters[k]->addresses)
            *address = x[static_cast<Eigen::Index>(k)];
    for (auto const& system : problem_.systems) system->evaluator->parameters_changed();
}

std::vector<Knob> ResidualVector::knobs(std::size_t system) const {
    std::vector<Knob> result;
    for (std::size_t k : adjusted_[system]) {
        Parameter const& p = *problem_.parameters[k];
        result.push_back({p.addresses, *p.addresses[0], steps_[k]});
    }
    return result;
}

/// f(first entry, its observations, system's evaluator, point) for every point in turn.
template <class F>
void ResidualVector::each_point(F f) {
    for (std::size_t e = 0; e < entries_.size();) {
        Entry const& entry = entries_[e];
        auto const& system = *problem_.systems[static_cast<std::size_t>(entry.system)];
        Point const& point = system.data[static_cast<std::size_t>(entry.set)]
                                 .points[static_cast<std::size_t>(entry.point)];
        f(e, system, point);
        e += point.observed.size();
    }
}

void ResidualVector::fold(int part, int parts) {
    fold_ = part;
    folds_ = parts;
}
bool ResidualVector::in_fold(std::size_t entry) const {
    return folds_ > 0 && fold_of_[entry] % folds_ == fold_;
}

Eigen::Index ResidualVector::priors(Eigen::VectorXd const& x, Eigen::Index row, Eigen::VectorXd& r,
                                    Eigen::MatrixXd* J) const {
    for (std::size_t k = 0; k < problem_.parameters.size(); ++k) {
        Parameter const& p = *problem_.parameters[k];
        if (!(p.prior_width > 0.0)) continue;
        const auto i = static_cast<Eigen::Index>(k);
        r[row] = (x[i] - p.prior) / p.prior_width;
        if (J) (*J)(row, i) = 1.0 / p.prior_width;
        ++row;
    }
    return row;
}

bool ResidualVector::last_stage(Eigen::VectorXd const& x, Eigen::VectorXd& r, Eigen::MatrixXd* J) {
    set(x);
    Eigen::Index rows = static_cast<Eigen::Index>(problem_.parameters.size()), row = 0;
    for (std::size_t e = 0; e < entries_.size(); ++e)
        rows += entries_[e].scale > 0.0 && !in_fold(e) ? 1 : 0;
    r = Eigen::VectorXd::Zero(rows);
    if (J) *J = Eigen::MatrixXd::Zero(rows, x.size());
    std::vector<std::vector<Knob>> all;
    for (std::size_t s = 0; s < problem_.systems.size(); ++s)
        all.push_back(J ? knobs(s) : std::vector<Knob>{});
    std::vector<Answer> answers;
    each_point([&](std::size_t e, Problem::System const& system, Point const& point) {
        if (entries_[e].scale == 0.0 || in_fold(e)) return;
        const auto s = static_cast<std::size_t>(entries_[e].system);
        system.evaluator->evaluate(entries_[e].index, point, all[s], answers);
        ++evaluations;
        for (std::size_t o = 0; o < answers.size(); ++o, ++row) {
            Entry const& entry = entries_[e + o];
            r[row] = deviation(entry, answers[o]) / entry.scale;
            const double unit = answers[o].alone ? entry.scale : entry.scale * entry.size;
            for (std::size_t k = 0; k < all[s].size(); ++k)
                (*J)(row, static_cast<Eigen::Index>(adjusted_[s][k])) = answers[o].slope[k] / unit;
        }
    });
    row = priors(x, row, r, J);
    r.conservativeResize(row);
    if (J) J->conservativeResize(row, Eigen::NoChange);
    return r.allFinite() && (!J || J->allFinite());
}

bool ResidualVector::first_stage(Eigen::VectorXd const& x, Eigen::VectorXd& r, Eigen::MatrixXd* J) {
    set(x);
    const auto evaluate = [&](Eigen::VectorXd& to) {
        std::vector<double> deviations;
        Eigen::Index row = 0;
        to = Eigen::VectorXd::Zero(
            static_cast<Eigen::Index>(entries_.size() + problem_.parameters.size()));
        each_point([&](std::size_t e, Problem::System const& system, Point const& point) {
            system.evaluator->first_stage(point, deviations);
            for (std::size_t o = 0; o < deviations.size(); ++o, ++row) {
                const bool there = entries_[e + o].scale > 0.0 && std::isfinite(deviations[o]);
                // Far from a solution the linear deviation may be any size: at most a hundred per
                // cent.
                to[row] = there ? std::atan(deviations[o]) / entries_[e + o].scale : 0.0;
            }
        });
        return row;
    };
    Eigen::Index row = evaluate(r);
    if (J) {
        *J = Eigen::MatrixXd::Zero(r.size(), x.size());
        Eigen::VectorXd up, down;
        for (std::size_t k = 0; k < problem_.parameters.size(); ++k) {
            Parameter const& p = *problem_.parameters[k];
            const auto i = static_cast<Eigen::Index>(k);
            for (double* a : p.addresses) *a = x[i] + steps_[k];
            evaluate(up);
            for (double* a : p.addresses) *a = x[i] - steps_[k];
            evaluate(down);
            for (double* a : p.addresses) *a = x[i];
            J->col(i) = (up - down) / (2.0 * steps_[k]);
        }
    }
    priors(x, row, r, J);
    return r.allFinite() && (!J || J->allFinite());
}

std::vector<Answer> ResidualVector::answers(Eigen::VectorXd const& x) {
    set(x);
    std::vector<Answer> result, some;
    each_point([&](std::size_t e, Problem::System const& system, Point const& point) {
        system.evaluator->evaluate(entries_[e].index, point, {}, some);
        ++evaluations;
        result.insert(result.end(), some.begin(), some.end());
    });
    return result;
}

}  // namespace corvane::fit
