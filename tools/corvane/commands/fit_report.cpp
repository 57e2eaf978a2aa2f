#include <tools/corvane/commands/fit_report.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace cli {
namespace fit = corvane::fit;
namespace {
fit::Problem::System const& system_of(fit::Problem const& problem, int system) {
    return *problem.systems[static_cast<std::size_t>(system)];
}
/// The file of a set, a point of it.
fit::DataSet const& set_of(fit::Problem const& problem, int system, int set) {
    return system_of(problem, system).data[static_cast<std::size_t>(set)];
}
fit::Point const& point_of(fit::Problem const& problem, fit::PointReport const& p) {
    return set_of(problem, p.system, p.set).points[static_cast<std::size_t>(p.point)];
}
/// "methane + propane " where there are several systems.
std::string prefix(fit::Problem const& problem, int system) {
    return problem.systems.size() > 1 ? system_of(problem, system).substances() + " " : "";
}

/// Mean, bias, largest: in %, of mole fractions as they are.
std::string spread_text(fit::Spread const& s, bool fraction) {
    if (s.points == 0) return "no solution at any point";
    const double f = fraction ? 1.0 : 100.0;
    char const* unit = fraction ? "" : " %";
    return fmt::format("{:.3g}{}, bias {:.3g}{}, largest {:.3g}{}", f * s.mean_absolute, unit,
                       f * s.bias, unit, f * s.largest, unit);
}

void tell_of_models(fit::Problem const& problem, Heading& heading) {
    auto const& first = *problem.systems[0];
    std::vector<std::string> all;
    for (auto const& system : problem.systems) {
        all.push_back(system->substances());
        for (fit::DataSet const& each : system->data)
            heading.remarks.push_back("data: " + each.name +
                                      (each.source.empty() ? "" : ", " + each.source));
    }
    heading.command = "fit";
    if (first.fluid)
        heading.fields = {{"eos", first.fluid->equation}, {"substance", join(all, ", ")}};
    else if (all.size() > 1)
        heading.fields = {{"model", first.mixture->name()}, {"components", join(all, ", ")}};
    else
        heading.fields = {{"model", first.mixture->name()},
                          {"components", join(first.mixture->components, ", ")}};
}

void tell_of_set(fit::Problem const& problem, fit::SetReport const& s, Heading& heading) {
    std::string const& file = set_of(problem, s.system, s.set).name;
    const bool fraction = fit::is_fraction(s.what);
    std::string line = fmt::format("{}{} {}: {} points", prefix(problem, s.system), file,
                                   fit::name_of(s.what), s.points);
    if (s.excluded > 0) line += fmt::format(", {} excluded", s.excluded);
    if (s.without_solution > 0) line += fmt::format(", {} without a solution", s.without_solution);
    if (s.unstable > 0) line += fmt::format(", {} not stable", s.unstable);
    line += fmt::format("; mean deviation {}; before {}", spread_text(s.after, fraction),
                        spread_text(s.before, fraction));
    if (std::isfinite(s.predicted))
        line += fmt::format("; predicted in cross-validation {:.3g}{}",
                            (fraction ? 1.0 : 100.0) * s.predicted, fraction ? "" : " %");
    heading.summary.push_back(line);
    list(heading, "sets")
        .push_back({{"system", system_of(problem, s.system).substances()},
                    {"file", file},
                    {"quantity", std::string(fit::name_of(s.what))},
                    {"points", static_cast<long>(s.points)},
                    {"excluded", static_cast<long>(s.excluded)},
                    {"without_solution", static_cast<long>(s.without_solution)},
                    {"unstable", static_cast<long>(s.unstable)},
                    {"before", s.before.mean_absolute},
                    {"before_bias", s.before.bias},
                    {"before_largest", s.before.largest},
                    {"after", s.after.mean_absolute},
                    {"after_bias", s.after.bias},
                    {"after_largest", s.after.largest},
                    {"predicted", s.predicted}});
}

void tell_of_correlation(fit::Result const& result, Heading& heading) {
    const std::size_t n = result.parameters.size();
    std::string correlations;
    for (std::size_t i = 0; i < n; ++i) {
        Fields row{{"parameter", result.parameters[i].name}};
        for (std::size_t j = 0; j < n; ++j) {
            const double c = result.correlation[i * n + j];
            row.emplace_back(result.parameters[j].name, c);
            if (j < i && std::isfinite(c))
                correlations +=
                    fmt::format("{}{} {} {:.3f}", correlations.empty() ? "" : ", ",
                                result.parameters[j].name, result.parameters[i].name, c);
        }
        list(heading, "correlation").push_back(row);
    }
    if (!correlations.empty()) heading.summary.push_back("correlation: " + correlations);
}
}  // namespace

void tell_of_fit(fit::Problem const& problem, fit::Result const& result, Heading& heading) {
    tell_of_models(problem, heading);
    int used = 0;
    for (fit::SetReport const& each : result.sets) {
        tell_of_set(problem, each, heading);
        used += each.points - each.excluded;
    }
    tell_of_correlation(result, heading);
    heading.summary.push_back(fmt::format(
        "{} {} iterations, {} evaluations of points; spread of the weighted deviations {:.3g}; "
        "about {:.3g} of {} deviations are independent",
        result.converged ? "converged in" : "not converged in", result.iterations,
        result.evaluations, result.spread, result.independent, used));
    for (std::string const& warning : result.warnings) {
        heading.summary.push_back("warning: " + warning);
        list(heading, "warnings").push_back({{"text", warning}});
    }
}

Table fitted_parameters(fit::Result const& result) {
    Table table;
    table.columns = {
        {"parameter", "", "name in parameter files"},
        {"start", "", "value at the start"},
        {"value", "", "best value"},
        {"error", "", "standard error", false, 3},
        {"correlated_error", "", "with the deviations that are independent", false, 3}};
    const auto known = [](double x) { return std::isfinite(x) ? Cell(x) : Cell(); };
    for (fit::FittedParameter const& p : result.parameters)
        table.rows.push_back({{p.name, p.start, p.value, known(p.error), known(p.correlated_error)},
                              p.at_bound ? "at its bound" : ""});
    return table;
}

Table fitted_points(fit::Problem const& problem, fit::Result const& result) {
    const bool several = problem.systems.size() > 1;
    Table table;
    if (several) table.columns.push_back({"system", "", "substances"});
    table.columns.insert(
        table.columns.end(),
        {{"file", "", "data file"},
         {"line", "", "line in it", true},
         {"quantity", "", "what was measured"},
         {"T", "K", "temperature", true},
         {"measured", "", "library units"},
         {"before", "", "calculated with the start values"},
         {"after", "", "calculated with the best values"},
         {"deviation", "",
          "(after - measured)/measured; of mole fractions the difference; of hE, vE over the "
          "largest",
          false, 4},
         {"leverage", "", "0 to 1: pull of the point", false, 3}});
    for (fit::PointReport const& p : result.points) {
        auto const& system = system_of(problem, p.system);
        fit::Point const& point = point_of(problem, p);
        std::vector<std::string> notes;
        if (!p.used) notes.push_back("excluded");
        if (!p.solved) notes.push_back("no solution");
        if (p.solved && !p.stable) notes.push_back("not stable");
        if (p.outlier) notes.push_back("far from the others");
        std::string what = fit::name_of(p.what);
        if (system.mixture && fit::of_component(p.what) && !fit::is_fraction(p.what))
            what += "_" + system.mixture->components[static_cast<std::size_t>(p.component)];
        Row row{{}, join(notes, ", ")};
        if (several) row.cells.push_back(system.substances());
        row.cells.insert(row.cells.end(), {set_of(problem, p.system, p.set).name,
                                           static_cast<long>(point.line), what, point.T, p.measured,
                                           p.before, p.after, p.deviation, p.leverage});
        table.rows.push_back(std::move(row));
    }
    return table;
}

Picture fit_picture(fit::Problem const& problem, fit::Result const& result) {
    Picture picture;
    picture.title = problem.systems[0]->name();
    for (std::size_t k = 1; k < problem.systems.size(); ++k)
        picture.title += ", " + problem.systems[k]->substances();
    picture.x_axis = "T / K";
    picture.y_axis = "deviation / %";
    constexpr Ink kInks[] = {Ink::liquid,    Ink::vapour, Ink::liquid2,
                             Ink::azeotrope, Ink::solid,  Ink::black};
    std::vector<std::string> seen;  // a colour each
    double first = 1e300, last = 0.0;
    for (fit::PointReport const& p : result.points) {
        const double T = point_of(problem, p).T;
        const bool critical = !(T > 0.0);
        if (!p.solved || !std::isfinite(p.before) || critical) continue;
        const std::string name = prefix(problem, p.system) + fit::name_of(p.what);
        auto at = std::find(seen.begin(), seen.end(), name);
        if (at == seen.end()) at = seen.insert(seen.end(), name);
        const Ink ink = kInks[static_cast<std::size_t>(at - seen.begin()) % 6];
        const double before = (p.before - p.measured) / p.size;
        picture.mark(name + ", before", Symbol::measured_open, ink, {T, 100.0 * before});
        picture.mark(name, Symbol::measured, ink, {T, 100.0 * p.deviation});
        first = std::fmin(first, T);
        last = std::fmax(last, T);
    }
    picture.curves.push_back({"", Ink::grey, Stroke::thin, {{first, 0.0}, {last, 0.0}}});
    return picture;
}

}  // namespace cli
