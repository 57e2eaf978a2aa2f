#include <corvane/fit/suspicion.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <tuple>

namespace corvane::fit {
namespace {
// Mean deviations from which mass fractions, and exchanged columns, are thought of. Those move
// compositions by little where molar masses are alike (7 % of propane in butane at most).
constexpr double kSmall = 0.01, kLarge = 0.05;
constexpr double kAlone = 0.95;  // leverage of a value that a fit hangs on

std::string number(double x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", x);
    return text;
}

/// Name of a file, with its system where there are several.
std::string file_of(Problem const& problem, int system, int set) {
    auto const& s = *problem.systems[static_cast<std::size_t>(system)];
    return (problem.systems.size() > 1 ? s.substances() + " " : "") +
           s.data[static_cast<std::size_t>(set)].name;
}

double middle(std::vector<double>& values) {
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

/// "bar and MPa" for a factor between units of the quantity; "" for none.
std::string units_apart(text::Quantity quantity, double factor, double M) {
    std::string found;
    double nearest = std::log(1.08);
    const auto names = text::unit_names(quantity);
    for (std::string const& a : names)
        for (std::string const& b : names) {
            const auto to = text::conversion(quantity, a, M),
                       from = text::conversion(quantity, b, M);
            if (!to || !from || to->shift != 0.0 || from->shift != 0.0) continue;
            const double ratio = to->scale / from->scale;
            if (std::fabs(std::log(ratio)) < 0.3) continue;
            const double off = std::fabs(std::log(factor / ratio));
            if (off < nearest - 1e-12) {
                nearest = off;
                found = a + " and " + b;
            }
        }
    return found;
}

/// Of one quantity of a file: ln(calculated/measured) at the start, and sizes of what the fit left,
/// 1 where there is nothing stable to compare.
struct Ratios {
    std::vector<double> logarithms, left;
};

/// What the ratios of a quantity say of its column; "" for nothing. A constant factor is a unit;
/// what no parameters bring near is another quantity, or at another temperature.
std::string suspicion_of(Ratios& ratios, text::Quantity quantity, std::string const& name,
                         double M) {
    auto& all = ratios.logarithms;
    if (all.size() > 2) {
        const double centre = middle(all), factor = std::exp(centre);
        std::vector<double> off;
        off.reserve(all.size());
        for (double x : all) off.push_back(std::fabs(x - centre));
        if (std::fabs(centre) >= 0.4 && middle(off) <= 0.25 * std::fabs(centre)) {
            const std::string units = units_apart(quantity, factor, M);
            return "the model at the start gives " + number(factor) + " times the measured " +
                   name + " at all points" +
                   (units.empty() ? ": a wrong unit, perhaps of T, or a wrong column?"
                                  : ", as between " + units + ": a wrong unit?");
        }
    }
    return ratios.left.size() > 2 && middle(ratios.left) > 0.5
               ? "no parameters bring " + name +
                     " near the measured values: a wrong unit, perhaps of T, a wrong column, or a "
                     "model that cannot?"
               : "";
}

void suspect_units(Problem const& problem, ResidualVector const& vector,
                   std::vector<Answer> const& before, Result& result) {
    std::map<std::tuple<int, int, Observable>, Ratios> all;
    for (std::size_t e = 0; e < before.size(); ++e) {
        Entry const& entry = vector.entries()[e];
        PointReport const& p = result.points[e];
        if (is_fraction(p.what) || !p.used) continue;
        Ratios& ratios = all[{entry.system, entry.set, p.what}];
        const double ratio = before[e].calculated / entry.measured;
        if (before[e].solved && ratio > 0.0) ratios.logarithms.push_back(std::log(ratio));
        ratios.left.push_back(p.solved && p.stable ? std::fabs(p.deviation) : 1.0);
    }
    for (auto& [key, ratios] : all) {
        auto const& [system, set, what] = key;
        auto const& s = *problem.systems[static_cast<std::size_t>(system)];
        const std::string found = suspicion_of(ratios, quantity_of(what), name_of(what),
                                               s.fluid ? s.fluid->model->M() : 0.0);
        if (!found.empty()) result.warnings.push_back(file_of(problem, system, set) + ": " + found);
    }
}

/// Mean absolute deviation of the answers to the points of a set that `change` has altered; points
/// without an answer count as one.
template <class F>
double with(Problem const& problem, int number, int set, ResidualVector const& vector, F change) {
    auto const& system = *problem.systems[static_cast<std::size_t>(number)];
    double sum = 0.0;
    int count = 0;
    std::vector<Answer> answers;
    system.evaluator->forget();
    auto const& entries = vector.entries();
    for (std::size_t e = 0; e < entries.size();) {
        if (entries[e].system != number) {
            ++e;
            continue;
        }
        Point point = system.data[static_cast<std::size_t>(entries[e].set)]
                          .points[static_cast<std::size_t>(entries[e].point)];
        const std::size_t first = e;
        e += point.observed.size();
        if (entries[first].set != set || !point.used || point.x.empty()) continue;
        change(point);
        system.evaluator->evaluate(entries[first].index, point, {}, answers);
        for (std::size_t o = 0; o < answers.size(); ++o, ++count) {
            const double d =
                (answers[o].calculated - point.observed[o].value) / entries[first + o].size;
            sum += answers[o].solved && std::fabs(d) < 1.0 ? std::fabs(d) : 1.0;
        }
    }
    system.evaluator->forget();
    return count > 0 ? sum / count : 0.0;
}

double present(Result const& result, int system, int set) {
    double sum = 0.0;
    int count = 0;
    for (PointReport const& p : result.points)
        if (p.system == system && p.set == set && p.used) {
            sum += p.solved ? std::fmin(1.0, std::fabs(p.deviation)) : 1.0;
            ++count;
        }
    return count > 0 ? sum / count : 0.0;
}

/// The observed mole fractions of a point whose compositions were altered.
void observe_again(Point& p) {
    for (Observation& o : p.observed)
        if (is_fraction(o.what))
            o.value = (o.what == Observable::x ? p.x : o.what == Observable::y ? p.y : p.x2)[0];
}

void exchange(Point& p) {
    if (p.y.empty() || p.x.empty()) return;
    std::swap(p.x, p.y);
    observe_again(p);
}

void reverse(Point& p) {
    for (auto* x : {&p.x, &p.y, &p.x2}) std::reverse(x->begin(), x->end());
    observe_again(p);
}

/// Mole fractions of what were mass fractions.
void from_mass(Point& p, double ratio) {
    for (auto* x : {&p.x, &p.y, &p.x2}) {
        if (x->size() != 2) continue;
        const double first = (*x)[0], second = (*x)[1] * ratio;
        *x = {first / (first + second), second / (first + second)};
    }
    observe_again(p);
}

/// What a binary's file would be with its columns otherwise: mean deviations at the start and at
/// the end of the fit, the less of both, as a fit to wrong data may have gone anywhere.
void suspect_columns(Problem const& problem, int number, ResidualVector& vector, Result& result) {
    auto const& system = *problem.systems[static_cast<std::size_t>(number)];
    if (!system.mixture || system.mixture->size() != 2) return;
    auto const& pure = system.mixture->model->mdl1;
    const double ratio = pure[0]->M() / pure[1]->M();
    for (int set = 0; set < static_cast<int>(system.data.size()); ++set) {
        DataSet const& data = system.data[static_cast<std::size_t>(set)];
        const double as_it_is = present(result, number, set);
        if (!(as_it_is > kSmall)) continue;
        double x_with_y = 1e300, first_with_second = 1e300, mass = 1e300;
        for (bool start : {false, true}) {
            Eigen::VectorXd at(static_cast<Eigen::Index>(result.parameters.size()));
            for (Eigen::Index k = 0; k < at.size(); ++k) {
                FittedParameter const& p = result.parameters[static_cast<std::size_t>(k)];
                at[k] = start ? p.start : p.value;
            }
            vector.set(at);
            const auto changed = [&](double& least, auto change) {
                least = std::fmin(least, with(problem, number, set, vector, change));
            };
            changed(mass, [&](Point& p) { from_mass(p, ratio); });
            if (!(as_it_is > kLarge)) continue;
            const PointKind kind = data.points[0].kind;
            if (kind == PointKind::bubble || kind == PointKind::dew) changed(x_with_y, exchange);
            changed(first_with_second, reverse);
        }
        std::string look;
        if (x_with_y < std::fmin(as_it_is / 3.0, std::fmin(first_with_second, mass)))
            look = "x and y look exchanged";
        else if (mass < std::fmin(as_it_is / 3.0, first_with_second))
            look = "the mole fractions look like mass fractions";
        else if (first_with_second < as_it_is / 3.0)
            look = "the mole fractions look like those of " + system.mixture->components[1];
        if (!look.empty()) result.warnings.push_back(file_of(problem, number, set) + ": " + look);
    }
}

/// "file:line (p, 30 %), ..." of the points that `wanted` picks, at most five; "" for none.
template <class Wanted>
std::string list_of(Problem const& problem, Result const& result, Wanted wanted) {
    int count = 0;
    std::string text;
    for (PointReport const& p : result.points) {
        if (!wanted(p) || ++count > 5) continue;
        DataSet const& set = problem.systems[static_cast<std::size_t>(p.system)]
                                 ->data[static_cast<std::size_t>(p.set)];
        const int line = set.points[static_cast<std::size_t>(p.point)].line;
        text += (text.empty() ? "" : ", ") + file_of(problem, p.system, p.set) +
                (line > 0 ? ":" + std::to_string(line) : "") + " (" + name_of(p.what) + ", " +
                number(is_fraction(p.what) ? p.deviation : 100.0 * p.deviation) +
                (is_fraction(p.what) ? ")" : " %)");
    }
    return count > 5 ? text + " ... (" + std::to_string(count) + " in all)" : text;
}

void suspect_points(Problem const& problem, Result& result) {
    const std::string outliers =
        list_of(problem, result, [](PointReport const& p) { return p.outlier; });
    if (!outliers.empty()) result.warnings.push_back("far from the others: " + outliers);
    // A slope far above all others: the fit ends where that point is met, whatever the others say.
    const auto used = std::count_if(result.points.begin(), result.points.end(),
                                    [](PointReport const& p) { return p.used; });
    const std::string alone =
        used < 4 * static_cast<long>(result.parameters.size())
            ? ""
            : list_of(problem, result, [](PointReport const& p) { return p.leverage > kAlone; });
    if (!alone.empty())
        result.warnings.push_back(
            "the fit hangs on single values, and no standard error holds (the model may lose its "
            "solution there: compare without them): " +
            alone);
    const std::string unstable = list_of(
        problem, result, [](PointReport const& p) { return p.used && p.solved && !p.stable; });
    if (!unstable.empty())
        result.warnings.push_back(
            "compared with states that are not stable with the best parameters: " + unstable);
}
}  // namespace

void suspect(Problem& problem, ResidualVector& vector, std::vector<Answer> const& before,
             Result& result) {
    suspect_units(problem, vector, before, result);
    for (std::size_t s = 0; s < problem.systems.size(); ++s)
        suspect_columns(problem, static_cast<int>(s), vector, result);
    suspect_points(problem, result);
}

}  // namespace corvane::fit
