// corvane fit --batch: a list of substances or pairs, fitted side by side, in one table.
#include <tools/corvane/commands/fit_request.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <mutex>

namespace cli {
namespace fit = corvane::fit;

std::string spread_text(fit::Spread const& s, bool fraction) {
    if (s.points == 0) return "no solution at any point";
    const double f = fraction ? 1.0 : 100.0;
    char const* unit = fraction ? "" : " %";
    return fmt::format("{:.3g}{}, bias {:.3g}{}, largest {:.3g}{}", f * s.mean_absolute, unit,
                       f * s.bias, unit, f * s.largest, unit);
}

namespace {
/// The requests of a list; files are found from its folder.
std::vector<FitRequest> requests(FitRequest const& common, std::string const& list) {
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

Row row_of(FitRequest const& request, fit::Outcome const& outcome) {
    Row row{{join(request.words, " ")}, ""};
    if (!outcome.done) {
        row.note = "failed: " + (outcome.failure.empty() ? "not begun" : outcome.failure);
        return row;
    }
    fit::Result const& r = outcome.result;
    std::string values, errors;
    for (fit::FittedParameter const& p : r.parameters) {
        values += fmt::format("{}{}={:.7g}", values.empty() ? "" : " ", p.name, p.value);
        errors += fmt::format("{}{:.2g}", errors.empty() ? "" : " ", p.error);
    }
    long points = 0, unsolved = 0;
    struct {
        double sum = 0.0, points = 0.0;
        double mean() const { return 100.0 * sum / points; }
    } before, after;  // relative deviations
    double largest = 0.0;
    for (fit::SetReport const& s : r.sets) {
        points += s.points - s.excluded;
        unsolved += s.without_solution;
        if (fit::is_fraction(s.what)) continue;
        for (auto [to, from] : {std::pair{&before, &s.before}, {&after, &s.after}})
            if (from->points > 0) {
                to->sum += from->points * from->mean_absolute;
                to->points += from->points;
            }
        if (std::fabs(s.after.largest) > std::fabs(largest)) largest = s.after.largest;
    }
    row.cells.insert(row.cells.end(), {values, errors, points, unsolved, before.mean(),
                                       after.mean(), 100.0 * largest});
    row.note = join(r.warnings, "; ");
    return row;
}
}  // namespace

int run_fit_batch(FitRequest const& common, std::string const& list, int threads,
                  Options& options) {
    const std::vector<FitRequest> all = requests(common, list);
    options.begin();
    std::vector<fit::Job> jobs;
    for (FitRequest const& one : all)
        jobs.push_back({[&one] { return one.problem(); }, one.options()});
    Watch watch("fits");
    std::mutex watching;
    const auto outcomes = fit::solve_all(jobs, threads, [&](int done) {
        const std::lock_guard lock(watching);
        return watch.go_on(done);
    });
    Heading heading;
    heading.command = "fit";
    heading.fields = {{"batch", std::filesystem::path(list).filename().string()}};
    Table table;
    table.columns = {
        {"fit", "", "model and components"},
        {"values", "", "best values"},
        {"errors", "", "their standard errors"},
        {"points", "", "measured values used"},
        {"unsolved", "", "of them without a solution"},
        {"before", "%", "mean deviation with the start values, mole fractions apart", false, 3},
        {"after", "%", "mean deviation with the best values", false, 3},
        {"largest", "%", "largest deviation", false, 3}};
    int failed = 0;
    for (std::size_t k = 0; k < all.size(); ++k) {
        table.rows.push_back(row_of(all[k], outcomes[k]));
        if (!outcomes[k].done) ++failed;
    }
    heading.summary.push_back(fmt::format("{} fits, {} failed", all.size(), failed));
    write(heading, table, options.style);
    return Watch::interrupted() ? kInterrupted : failed > 0 ? 1 : 0;
}

}  // namespace cli
