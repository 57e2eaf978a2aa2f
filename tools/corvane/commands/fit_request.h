// What a fit is asked for on the command line. Internal to the command fit.
#pragma once

#include <tools/corvane/program.h>

#include <corvane/fit/fit.h>

#include <string>
#include <vector>

namespace cli {

struct FitRequest {
    std::vector<std::string> words, data;  ///< model and components; files, as they were given
    std::string adjust, share, start, bounds, prior, weights, from_set, sets, loss = "squares",
                                                                              loss_width, relative,
                                                                              fraction, quantities;
    int starts = 1, folds = 0, iterations = 100;

    /// Everything but words, data and adjust.
    void add_to(Command& command);
    /// Checks words and files, which it makes absolute; before the data home is entered. @throws
    /// Misuse
    void begin();
    /// Adds model, data and parameters. @throws Misuse; Failure; corvane::OpenFailure
    void add_to(corvane::fit::Problem& problem) const;
    corvane::fit::Options options() const;

  private:
    bool mixture() const { return !words.empty() && words[0].find('+') != std::string::npos; }
    void open(corvane::fit::Problem& problem) const;
    corvane::fit::Choice choice() const;
    void choose_quantities(std::vector<corvane::fit::DataSet>& all) const;

    std::vector<std::string> files_;
};

/// The requests of a list (--batch): `common` with model, data and parameters of every row. Files
/// are found from its folder. @throws Failure
std::vector<FitRequest> fit_requests(FitRequest const& common, std::string const& list);
/// Models, data and parameters of one request, or of several that share parameters.
corvane::fit::Problem fit_problem(std::vector<FitRequest> const& requests);

struct Options;
/// corvane fit --batch; returns the exit code.
int run_fit_batch(FitRequest const& request, std::string const& list, int threads,
                  Options& options);

}  // namespace cli
