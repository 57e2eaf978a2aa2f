#include <tools/corvane/commands/fit_request.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>

namespace cli {
namespace fit = corvane::fit;
namespace {
std::vector<std::string> names(std::string const& text) {
    std::vector<std::string> result;
    if (text.empty()) return result;
    for (std::string const& name : split(text, ',')) result.push_back(trimmed(name));
    return result;
}

/// "name=rest" of a list.
std::vector<std::pair<std::string, std::string>> pairs(std::string const& text,
                                                       char const* option) {
    std::vector<std::pair<std::string, std::string>> result;
    if (text.empty()) return result;
    for (std::string const& part : split(text, ',')) {
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos || equals == 0)
            throw Misuse(fmt::format("{}: '{}' is not NAME=VALUE", option, clipped(part)));
        result.emplace_back(trimmed(part.substr(0, equals)), trimmed(part.substr(equals + 1)));
    }
    return result;
}
}  // namespace

void FitRequest::add_to(Command& command) {
    command
        .value("--quantities", quantities, "which of the measured ones: p,rhoL (default: all)",
               {.type = "NAMES"})
        .value("--start", start, "values to start from in place of the file's: m=2,Ts=200",
               {.type = "NAME=X"})
        .value("--bounds", bounds, "m=1:3 (default: a tenth and ten times; kij, lij -1 and 1)",
               {.type = "NAME=A:B"})
        .value("--prior", prior,
               "pulls a parameter to a value, with its standard deviation: kij=0:0.05",
               {.type = "NAME=X:W"})
        .value("--weight", weights, "weights of files: a.csv=2", {.type = "FILE=X"})
        .value("--set", from_set, "parameter set of the substance, or of the pair, to start from",
               {.type = "N"})
        .value("--sets", sets, "parameter sets of the two components: 1,2", {.type = "N,N"})
        .value("--loss", loss, "squares, huber or cauchy: robust against outliers",
               {.one_of = {"squares", "huber", "cauchy"}, .type = "LOSS"})
        .value("--loss-width", loss_width,
               "deviation, in their spread, from which points count less (default 3)",
               {.type = "X"})
        .value("--relative", relative,
               "deviation in % that counts as 1 for points without uncertainty (default 1)",
               {.type = "X"})
        .value("--fraction", fraction,
               "difference of mole fractions that counts as 1, likewise (default 0.01)",
               {.type = "X"})
        .count("--starts", starts, "number of starts, spread over the bounds (default 1)")
        .count("--folds", folds, "cross-validation with so many parts of the data")
        .count("--iterations", iterations, "most iterations (default 100)");
}

void FitRequest::begin() {
    files_.clear();
    if (words.size() != (mixture() ? 3u : 2u))
        throw Misuse(
            "give an equation and a substance (PCSAFT propane), or a model and two components "
            "(PR+vdW1 methane propane)");
    if (data.empty()) throw Misuse("give measured data: --data FILE.csv");
    for (std::string const& file : data) {
        if (std::filesystem::is_directory(file))
            throw Misuse("--data " + file + ": a folder, not a file");
        files_.push_back(file == "-" ? file : std::filesystem::absolute(file).string());
    }
}

/// Keeps those that were asked for.
void FitRequest::choose_quantities(std::vector<fit::DataSet>& all) const {
    const auto wanted = split(quantities, ',');
    bool any = false;
    for (fit::DataSet& set : all)
        for (fit::Point& point : set.points) {
            std::erase_if(point.observed, [&](fit::Observation const& o) {
                return std::find(wanted.begin(), wanted.end(), fit::name_of(o.what)) ==
                       wanted.end();
            });
            any = any || !point.observed.empty();
        }
    if (!any)
        throw Misuse(fmt::format("--quantities: none of '{}' was measured", clipped(quantities)));
    for (fit::DataSet& set : all)
        std::erase_if(set.points, [](fit::Point const& point) { return point.observed.empty(); });
}

void FitRequest::open(fit::Problem& problem) const {
    std::vector<fit::DataSet> all;
    const auto read = [&](std::vector<std::string> const& names, double M) {
        for (std::string const& file : files_)
            all.push_back(fit::read_data(file, entered_home(), names, M));
        if (!quantities.empty()) choose_quantities(all);
        for (auto const& [name, value] : pairs(weights, "--weight")) {
            bool known = false;
            for (std::size_t k = 0; k < all.size(); ++k)
                if (all[k].name == name || data[k] == name) {
                    all[k].weight = number(value, "--weight");
                    if (!(all[k].weight >= 0.0))
                        throw Misuse("--weight: a weight is a number from 0 on");
                    known = true;
                }
            if (!known)
                throw Misuse(fmt::format("--weight: '{}' is none of the files", clipped(name)));
        }
    };
    if (mixture()) {
        corvane::MixtureOptions how;
        how.home = entered_home();
        if (!from_set.empty()) how.pair_set = set_number(from_set);
        if (!sets.empty())
            for (std::string const& each : split(sets, ',')) how.sets.push_back(set_number(each));
        corvane::Mixture m = corvane::open_mixture(words[0], {words[1], words[2]}, how);
        read(m.components, 0.0);
        problem.add(std::move(m), std::move(all));
    } else {
        Fluid f = open_fluid({words[0], words[1], from_set.empty() ? 0 : set_number(from_set), {}});
        read({f.substance}, f.model->M());
        problem.add(std::move(f), std::move(all));
    }
}

/// What --adjust, --share, --start, --bounds and --prior say.
fit::Choice FitRequest::choice() const {
    fit::Choice c;
    c.names = names(adjust);
    c.shared = names(share);
    const auto check = [&](std::string const& name, char const* option) {
        if (std::find(c.names.begin(), c.names.end(), name) == c.names.end() &&
            std::find(c.shared.begin(), c.shared.end(), name) == c.shared.end())
            throw Misuse(fmt::format("{}: '{}' is not adjusted", option, clipped(name)));
    };
    const auto two = [](std::string const& value, char const* option, char const* form) {
        const auto parts = split(value, ':');
        if (parts.size() != 2) throw Misuse(fmt::format("{}: write {}", option, form));
        return std::pair(number(parts[0], option), number(parts[1], option));
    };
    for (auto const& [name, value] : pairs(start, "--start")) {
        check(name, "--start");
        c.start[name] = number(value, "--start");
    }
    for (auto const& [name, value] : pairs(bounds, "--bounds")) {
        check(name, "--bounds");
        c.bounds[name] = two(value, "--bounds", "NAME=LOWER:UPPER");
    }
    for (auto const& [name, value] : pairs(prior, "--prior")) {
        check(name, "--prior");
        c.prior[name] = two(value, "--prior", "NAME=VALUE:WIDTH");
        if (!(c.prior[name].second > 0.0)) throw Misuse("--prior: the width must be above zero");
    }
    return c;
}

void FitRequest::add_to(fit::Problem& problem) const {
    open(problem);
    const int system = static_cast<int>(problem.systems.size()) - 1;
    if (adjust.empty())
        throw Misuse(fmt::format(
            "--adjust: give parameters, of {}",
            join(mixture() ? problem.adjustable_pair(system) : problem.adjustable(system), ", ")));
    problem.choose(system, choice());
}

fit::Problem fit_problem(std::vector<FitRequest> const& requests) {
    fit::Problem problem;
    for (FitRequest const& each : requests) each.add_to(problem);
    for (std::string const& name : names(requests[0].share))
        if (std::none_of(problem.parameters.begin(), problem.parameters.end(),
                         [&](auto const& p) { return p->name == name; }))
            throw Misuse(fmt::format("--share: '{}' is not adjusted", clipped(name)));
    return problem;
}

std::vector<FitRequest> fit_requests(FitRequest const& common, std::string const& list) {
    const CsvFile csv = read_csv(list);
    std::map<std::string, std::size_t> column;
    for (std::size_t k = 0; k < csv.header.size(); ++k) column[csv.header[k]] = k;
    for (char const* needed : {"model", "first", "data"})
        if (!column.count(needed)) throw Failure(fmt::format("{}: no column {}", list, needed));
    if (!column.count("adjust") && common.adjust.empty())
        throw Failure(list + ": no column adjust, and no --adjust");
    std::vector<FitRequest> all;
    for (std::size_t row = 0; row < csv.rows.size(); ++row) {
        const auto field = [&](char const* name) {
            const auto at = column.find(name);
            return at == column.end() ? std::string() : csv.rows[row][at->second];
        };
        FitRequest one = common;
        one.words = {field("model"), field("first")};
        if (!field("second").empty()) one.words.push_back(field("second"));
        for (std::string const& file : split(field("data"), ' '))
            if (!file.empty())
                one.data.push_back((std::filesystem::path(list).parent_path() / file).string());
        if (!field("adjust").empty()) one.adjust = join(split(field("adjust"), ' '), ",");
        if (!field("set").empty()) one.from_set = field("set");
        try {
            one.begin();
        } catch (Misuse const& e) {
            throw Failure(fmt::format("{}:{}: {}", list, csv.lines[row], e.what()));
        }
        all.push_back(std::move(one));
    }
    if (all.empty()) throw Failure(list + ": nothing to fit");
    return all;
}

fit::Options FitRequest::options() const {
    fit::Options o;
    o.loss = loss == "huber"    ? fit::Loss::huber
             : loss == "cauchy" ? fit::Loss::cauchy
                                : fit::Loss::squares;
    if (!loss_width.empty()) o.loss_width = number(loss_width, "--loss-width");
    if (!relative.empty()) o.relative = 0.01 * number(relative, "--relative");
    if (!fraction.empty()) o.fraction = number(fraction, "--fraction");
    if (!(o.loss_width > 0.0) || !(o.relative > 0.0) || !(o.fraction > 0.0))
        throw Misuse("--loss-width, --relative and --fraction must be above zero");
    o.starts = starts;
    o.folds = folds;
    o.iterations = iterations;
    return o;
}

}  // namespace cli
