// Fits: tables and files in, parameters and what they say of themselves out.
#include "module.h"

#include <corvane/fit/fit.h>
#include <corvane/text/failure.h>

#include <nanobind/stl/map.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/tuple.h>
#include <nanobind/stl/vector.h>

#include <tuple>

namespace py {
namespace {
namespace fit = corvane::fit;

/// A file by its path, or a table: its name, columns and rows as texts.
using Table =
    std::tuple<std::string, std::vector<std::string>, std::vector<std::vector<std::string>>>;
using Numbers = std::map<std::string, std::pair<double, double>>;

struct FitSettings {
    std::string loss;
    double loss_width, relative, fraction;
    int starts, folds, iterations;
    std::string out, comment;
    int set;
    std::vector<int> sets;  // of the components of mixtures
    int new_set;
    bool overwrite;
};

fit::DataSet data_of(Table const& table, corvane::DataHome const& home,
                     std::vector<std::string> const& names, double M) {
    auto const& [name, header, rows] = table;
    if (header.empty()) return fit::read_data(name, home, names, M);
    corvane::text::CsvFile csv{{}, header, rows, {}};
    for (std::size_t k = 0; k < rows.size(); ++k) csv.lines.push_back(static_cast<int>(k) + 1);
    return fit::read_data(name, csv, home, names, M);
}

/// A substance or a mixture with its data.
struct System {
    std::vector<std::string> substances;
    std::vector<Table> tables;
};

void add_system(fit::Problem& problem, std::string const& model, System const& system, FitSettings const& how,
                corvane::DataHome const& home) {
    auto const& [substances, tables] = system;
    std::vector<fit::DataSet> data;
    const auto read = [&](std::vector<std::string> const& names, double M) {
        for (Table const& table : tables) data.push_back(data_of(table, home, names, M));
    };
    if (substances.size() == 1) {
        corvane::Fluid fluid = corvane::open(model, substances[0], {how.set, home});
        read({fluid.substance}, fluid.model->M());
        problem.add(std::move(fluid), std::move(data));
    } else {
        corvane::MixtureOptions options;
        options.home = home;
        if (how.set > 0) options.pair_set = how.set;
        options.sets = how.sets;
        corvane::Mixture mixture = corvane::open_mixture(model, substances, options);
        read(mixture.components, 0.0);
        problem.add(std::move(mixture), std::move(data));
    }
}

fit::Problem problem_of(std::string const& model, std::vector<System> const& systems,
                        fit::Choice const& choice, FitSettings const& how,
                        corvane::DataHome const& home) {
    fit::Problem problem;
    for (System const& system : systems) {
        add_system(problem, model, system, how, home);
        problem.choose(static_cast<int>(problem.systems.size()) - 1, choice);
    }
    return problem;
}

nb::dict spread_of(fit::Spread const& s) {
    nb::dict d;
    d["mean"] = s.mean_absolute;
    d["bias"] = s.bias;
    d["largest"] = s.largest;
    return d;
}

/// What both reports have of a set: its system (by the names of its substances), file and quantity.
template <class Report>
nb::dict head(fit::Problem const& problem, Report const& report) {
    auto const& system = *problem.systems[static_cast<std::size_t>(report.system)];
    nb::dict one;
    one["system"] = system.substances();
    one["data"] = system.data[static_cast<std::size_t>(report.set)].name;
    one["quantity"] = fit::name_of(report.what);
    return one;
}

nb::dict answer(fit::Problem const& problem, fit::Result const& r, std::vector<std::string> const& files) {
    nb::dict d, start, value, error, correlated;
    for (fit::FittedParameter const& p : r.parameters) {
        nb::str name(p.name.c_str());
        start[name] = p.start;
        value[name] = p.value;
        error[name] = p.error;
        correlated[name] = p.correlated_error;
    }
    d["start"] = start;
    d["parameters"] = value;
    d["errors"] = error;
    d["correlated_errors"] = correlated;
    d["correlation"] = r.correlation;
    nb::list sets;
    for (fit::SetReport const& s : r.sets) {
        nb::dict one = head(problem, s);
        one["points"] = s.points;
        one["excluded"] = s.excluded;
        one["without_solution"] = s.without_solution;
        one["unstable"] = s.unstable;
        one["before"] = spread_of(s.before);
        one["after"] = spread_of(s.after);
        one["predicted"] = s.predicted;
        sets.append(one);
    }
    d["sets"] = sets;
    nb::list points;
    for (fit::PointReport const& p : r.points) {
        fit::Point const& point = problem.systems[static_cast<std::size_t>(p.system)]
                                      ->data[static_cast<std::size_t>(p.set)]
                                      .points[static_cast<std::size_t>(p.point)];
        nb::dict one = head(problem, p);
        one["row"] = point.line;
        one["T"] = point.T;
        one["deviation"] = p.deviation;
        one["leverage"] = p.leverage;
        one["used"] = p.used;
        one["solved"] = p.solved;
        one["stable"] = p.stable;
        one["outlier"] = p.outlier;
        points.append(one);
    }
    d["points"] = points;
    d["spread"] = r.spread;
    d["independent"] = r.independent;
    d["condition"] = r.condition;
    d["iterations"] = r.iterations;
    d["converged"] = r.converged;
    d["interrupted"] = r.interrupted;
    d["warnings"] = r.warnings;
    d["files"] = files;
    return d;
}

fit::Loss loss_of(std::string const& name) {
    if (name == "squares") return fit::Loss::squares;
    if (name == "huber") return fit::Loss::huber;
    if (name == "cauchy") return fit::Loss::cauchy;
    throw corvane::text::Failure("loss is squares, huber or cauchy, not " + name);
}

nb::dict run(std::string const& model, std::vector<System> const& systems, fit::Choice const& choice,
             FitSettings const& how, std::optional<std::string> const& given) {
    std::optional<fit::Problem> problem;
    fit::Result result;
    std::vector<std::string> files;
    int to_write = static_cast<int>(systems.size());
    Tracing tracing;
    {
        nb::gil_scoped_release release;
        try {
            const corvane::DataHome home = home_of(given);
            problem = problem_of(model, systems, choice, how, home);
            fit::Options options;
            options.loss = loss_of(how.loss);
            options.loss_width = how.loss_width;
            options.relative = how.relative;
            options.fraction = how.fraction;
            options.starts = how.starts;
            options.folds = how.folds;
            options.iterations = how.iterations;
            options.progress = tracing.progress;
            result = fit::solve(*problem, options);
            if (how.out.empty() || result.interrupted) to_write = 0;
            for (int k = 0; k < to_write; ++k)
                files.push_back(fit::write_parameters(*problem, result, k,
                                                      {how.out, how.new_set, how.comment, how.overwrite})
                                    .string());
        } catch (corvane::text::Failure const& e) {
            throw nb::value_error(e.what());
        }
    }
    return answer(*problem, result, files);
}
}  // namespace

void add_fit(nb::module_& m) {
    m.def(
        "fit",
        [](std::string const& model, std::vector<std::vector<std::string>> const& substances,
           std::vector<std::vector<Table>> const& tables, std::vector<std::string> const& adjust,
           std::vector<std::string> const& share, std::map<std::string, double> const& start,
           Numbers const& bounds, Numbers const& prior, std::string const& loss, double loss_width, double relative, double fraction, int starts,
           int folds, int iterations, std::string const& out, int new_set,
           std::string const& comment, bool overwrite, int set,
           std::vector<int> const& sets, std::optional<std::string> const& home) {
            if (substances.empty() || substances.size() != tables.size())
                throw nb::value_error("data for every system");
            std::vector<System> systems;
            for (std::size_t k = 0; k < tables.size(); ++k) {
                if (substances[k].empty() || (substances[k].size() == 1) != (substances[0].size() == 1))
                    throw nb::value_error("systems that share parameters are all pure or all mixtures");
                systems.push_back({substances[k], tables[k]});
            }
            return run(model, systems, {adjust, share, start, bounds, prior},
                       {loss, loss_width, relative, fraction, starts, folds,
                        iterations, out, comment, set, sets, new_set, overwrite},
                       home);
        },
        nb::arg("model"), nb::arg("substances"), nb::arg("tables"), nb::arg("adjust"), nb::arg("share"),
        nb::arg("start"), nb::arg("bounds"), nb::arg("prior"), nb::arg("loss"),
        nb::arg("loss_width"), nb::arg("relative"), nb::arg("fraction"), nb::arg("starts"),
        nb::arg("folds"), nb::arg("iterations"), nb::arg("out"), nb::arg("new_set"),
        nb::arg("comment"), nb::arg("overwrite"), nb::arg("set"), nb::arg("sets"), nb::arg("home").none(),
        "corvane.fit is for people.");
}

}  // namespace py
