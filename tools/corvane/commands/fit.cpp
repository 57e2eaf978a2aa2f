// corvane fit: adjustable parameters from measured data.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/fit_request.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/fit/fit.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>

namespace cli {
namespace {
namespace fit = corvane::fit;

struct FitCommand {
    Options options;
    FitRequest request;
    std::string out, new_set, comment, batch;
    int threads = 1;
    bool points = false, overwrite = false;
    PlotFile plot;

    int run();

  private:
    void tell_of(fit::Problem const& problem, fit::Result const& result, Heading& heading) const;
    Table parameters(fit::Result const& result) const;
    Table table_of_points(fit::Problem const& problem, fit::Result const& result) const;
    Picture picture(fit::Problem const& problem, fit::Result const& result) const;
};

void FitCommand::tell_of(fit::Problem const& problem, fit::Result const& result,
                         Heading& heading) const {
    auto const& system = *problem.systems[0];
    for (fit::SetReport const& s : result.sets) {
        fit::DataSet const& set = system.data[static_cast<std::size_t>(s.set)];
        const bool fraction = fit::is_fraction(s.what);
        std::string line =
            fmt::format("{} {}: {} points", set.name, fit::name_of(s.what), s.points);
        if (s.excluded > 0) line += fmt::format(", {} excluded", s.excluded);
        if (s.without_solution > 0)
            line += fmt::format(", {} without a solution", s.without_solution);
        if (s.unstable > 0) line += fmt::format(", {} not stable", s.unstable);
        line += fmt::format("; mean deviation {}; before {}", spread_text(s.after, fraction),
                            spread_text(s.before, fraction));
        if (std::isfinite(s.predicted))
            line += fmt::format("; predicted in cross-validation {:.3g}{}",
                                (fraction ? 1.0 : 100.0) * s.predicted, fraction ? "" : " %");
        heading.summary.push_back(line);
        list(heading, "sets")
            .push_back({{"file", set.name},
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
    int used = 0;
    for (fit::SetReport const& each : result.sets) used += each.points - each.excluded;
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

Table FitCommand::parameters(fit::Result const& result) const {
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

Table FitCommand::table_of_points(fit::Problem const& problem, fit::Result const& result) const {
    Table table;
    table.columns = {{"file", "", "data file"},
                     {"line", "", "line in it", true},
                     {"quantity", "", "what was measured"},
                     {"T", "K", "temperature", true},
                     {"measured", "", "library units"},
                     {"before", "", "calculated with the start values"},
                     {"after", "", "calculated with the best values"},
                     {"deviation", "",
                      "(after - measured)/measured; of mole fractions the difference; of hE, vE "
                      "over the largest",
                      false, 4},
                     {"leverage", "", "0 to 1: pull of the point", false, 3}};
    for (fit::PointReport const& p : result.points) {
        auto const& set = problem.systems[0]->data[static_cast<std::size_t>(p.set)];
        fit::Point const& point = set.points[static_cast<std::size_t>(p.point)];
        std::string note;
        if (!p.used) note = "excluded";
        if (!p.solved) note += note.empty() ? "no solution" : ", no solution";
        if (p.solved && !p.stable) note += note.empty() ? "not stable" : ", not stable";
        if (p.outlier) note += note.empty() ? "far from the others" : ", far from the others";
        std::string what = fit::name_of(p.what);
        auto const& mixture = problem.systems[0]->mixture;
        if (mixture && fit::of_component(p.what) && !fit::is_fraction(p.what))
            what += "_" + mixture->components[static_cast<std::size_t>(p.component)];
        table.rows.push_back({{set.name, static_cast<long>(point.line), what, point.T, p.measured,
                               p.before, p.after, p.deviation, p.leverage},
                              note});
    }
    return table;
}

/// Deviations by temperature; before the fit as open symbols.
Picture FitCommand::picture(fit::Problem const& problem, fit::Result const& result) const {
    Picture picture;
    picture.title = problem.systems[0]->name();
    picture.x_axis = "T / K";
    picture.y_axis = "deviation / %";
    constexpr Ink kInks[] = {Ink::liquid,    Ink::vapour, Ink::liquid2,
                             Ink::azeotrope, Ink::solid,  Ink::black};
    std::vector<fit::Observable> seen;
    double first = 1e300, last = 0.0;
    for (fit::PointReport const& p : result.points) {
        auto const& set = problem.systems[0]->data[static_cast<std::size_t>(p.set)];
        const double T = set.points[static_cast<std::size_t>(p.point)].T;
        const bool critical = !(T > 0.0);
        if (!p.solved || !std::isfinite(p.before) || critical) continue;
        auto at = std::find(seen.begin(), seen.end(), p.what);
        if (at == seen.end()) at = seen.insert(seen.end(), p.what);
        const Ink ink = kInks[static_cast<std::size_t>(at - seen.begin()) % 6];
        const double before = (p.before - p.measured) / p.size;
        picture.mark(fmt::format("{}, before", fit::name_of(p.what)), Symbol::measured_open, ink,
                     {T, 100.0 * before});
        picture.mark(fit::name_of(p.what), Symbol::measured, ink, {T, 100.0 * p.deviation});
        first = std::fmin(first, T);
        last = std::fmax(last, T);
    }
    picture.curves.push_back({"", Ink::grey, Stroke::thin, {{first, 0.0}, {last, 0.0}}});
    return picture;
}

int FitCommand::run() {
    if (out.empty() && (!new_set.empty() || !comment.empty() || overwrite))
        throw Misuse("--new-set, --comment and --overwrite go with --out");
    if (!batch.empty()) {
        if (!request.words.empty() || !request.data.empty() || points || plot || !out.empty())
            throw Misuse(
                "--batch takes models, files and parameters from its list, and writes a table "
                "alone");
        batch = std::filesystem::absolute(batch).string();
        return run_fit_batch(request, batch, threads, options);
    }
    request.begin();
    if (!out.empty()) out = std::filesystem::absolute(out).string();
    plot.begin();
    options.begin();
    fit::Problem problem = request.problem();
    Watch watch("iterations");
    fit::Options how = request.options();
    how.progress = watch.progress();
    const fit::Result result = fit::solve(problem, how);
    Heading heading;
    heading.command = "fit";
    auto const& system = *problem.systems[0];
    if (system.fluid)
        heading.fields = {{"eos", system.fluid->equation}, {"substance", system.fluid->substance}};
    else
        heading.fields = {{"model", system.mixture->name()},
                          {"components", join(system.mixture->components, ", ")}};
    for (fit::DataSet const& each : system.data)
        heading.remarks.push_back("data: " + each.name +
                                  (each.source.empty() ? "" : ", " + each.source));
    tell_of(problem, result, heading);
    if (!out.empty() && !result.interrupted) {
        fit::Target target{out, new_set.empty() ? 0 : set_number(new_set), comment, overwrite};
        heading.summary.push_back("written: " +
                                  fit::write_parameters(problem, result, 0, target).string());
    }
    const Table table = points ? table_of_points(problem, result) : parameters(result);
    if (plot) plot.draw(picture(problem, result), heading, table, options.style);
    write(heading, table, options.style);
    return Watch::interrupted() ? kInterrupted : result.converged ? 0 : 1;
}
}  // namespace

void add_fit(Program& program) {
    auto fit = std::make_shared<FitCommand>();
    Command command = program.add("fit", "adjustable parameters from measured data",
                                  [fit] { return fit->run(); });
    command
        .positionals("MODEL", fit->request.words,
                     "an equation and a substance (PCSAFT propane), or a model and two components "
                     "(PR+vdW1 methane "
                     "propane)",
                     false)
        .words("--data", fit->request.data,
               "files of measured points, with columns such as T/K, p/MPa, rhoL/(kg/m3), x_methane",
               "FILE")
        .value("--adjust", fit->request.adjust,
               "parameters, by their names in parameter files: m,Ts,vs or kij", {.type = "NAMES"})
        .value("--batch", fit->batch,
               "many fits: a CSV file with columns model, first, second (of a pair), data, adjust "
               "and, if wanted, set",
               {.type = "FILE"})
        .count("--threads", fit->threads, "of a batch (default 1)")
        .flag("--points", fit->points, "a row for every measured value in place of the parameters")
        .value("--out", fit->out, "writes a parameter file into this data home (made if not there)",
               {.type = "DIRECTORY"})
        .value("--new-set", fit->new_set, "its number (default: the next that is free)",
               {.type = "N"})
        .value("--comment", fit->comment, "its text", {.type = "TEXT"})
        .flag("--overwrite", fit->overwrite, "over a file of this number");
    fit->request.add_to(command);
    fit->plot.add_to(command);
    fit->options.add_output(command);
    command.examples(
        R"(  corvane fit PCSAFT propane --data propane.csv --adjust m,Ts,vs
  corvane fit PCSAFT propane --data propane.csv --adjust m,Ts,vs --out mine --new-set 9 --plot deviations.svg
  corvane fit PR+vdW1 methane propane --data vle.csv --adjust kij --loss huber --folds 5)");
}

}  // namespace cli
