// corvane fit --batch: a list of substances or pairs, fitted side by side, in one table.
#include <tools/corvane/commands/fit_request.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <mutex>

namespace cli {
namespace fit = corvane::fit;

namespace {
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
    const std::vector<FitRequest> all = fit_requests(common, list);
    options.begin();
    std::vector<fit::Job> jobs;
    for (FitRequest const& one : all)
        jobs.push_back({[&one] { return fit_problem({one}); }, one.options()});
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
