// corvane fit: adjustable parameters from measured data.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/fit_report.h>
#include <tools/corvane/commands/fit_request.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>

#include <corvane/fit/fit.h>

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
    std::vector<FitRequest> requests();
};

/// That of the command line, or those of a list that share parameters.
std::vector<FitRequest> FitCommand::requests() {
    if (batch.empty()) {
        if (!request.share.empty()) throw Misuse("--share goes with --batch");
        request.begin();
        return {request};
    }
    return fit_requests(request, batch);
}

int FitCommand::run() {
    if (out.empty() && (!new_set.empty() || !comment.empty() || overwrite))
        throw Misuse("--new-set, --comment and --overwrite go with --out");
    if (!batch.empty()) {
        if (!request.words.empty() || !request.data.empty())
            throw Misuse("--batch takes models, files and parameters from its list");
        if (request.share.empty() && (points || plot || !out.empty()))
            throw Misuse("--batch without --share writes a table alone");
        batch = std::filesystem::absolute(batch).string();
        if (request.share.empty()) return run_fit_batch(request, batch, threads, options);
    }
    const std::vector<FitRequest> wanted = requests();
    if (!out.empty()) out = std::filesystem::absolute(out).string();
    plot.begin();
    options.begin();
    fit::Problem problem = fit_problem(wanted);
    Watch watch("iterations");
    fit::Options how = request.options();
    how.progress = watch.progress();
    const fit::Result result = fit::solve(problem, how);
    Heading heading;
    tell_of_fit(problem, result, heading);
    const fit::Target target{out, new_set.empty() ? 0 : set_number(new_set), comment, overwrite};
    const auto unwritten = failure_of([&] {
        if (!out.empty() && !result.interrupted)
            for (std::size_t k = 0; k < problem.systems.size(); ++k)
                heading.summary.push_back(
                    "written: " +
                    fit::write_parameters(problem, result, static_cast<int>(k), target).string());
    });
    const Table table = points ? fitted_points(problem, result) : fitted_parameters(result);
    plot.show(plot ? fit_picture(problem, result) : Picture(), heading, table, options.style);
    if (unwritten) throw Failure(*unwritten);
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
        .value("--share", fit->request.share,
               "all rows of --batch as one fit, in which they have one value of these parameters, "
               "and of others each its own",
               {.type = "NAMES"})
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
  corvane fit PR+vdW1 methane propane --data vle.csv --adjust kij --loss huber --folds 5
  corvane fit --batch pairs.csv --adjust kij --share kij)");
}

}  // namespace cli
