// What a fit is asked for on the command line. Internal to the command fit.
#pragma once

#include <tools/corvane/program.h>

#include <corvane/fit/fit.h>

#include <string>
#include <vector>

namespace cli {

struct FitRequest {
    std::vector<std::string> words, data;  ///< model and components; files, as they were given
    std::string adjust, start, bounds, prior, weights, from_set, sets, loss = "squares", loss_width,
                                                                       relative, quantities;
    int starts = 1, folds = 0, iterations = 100;

    /// Everything but words, data and adjust.
    void add_to(Command& command);
    /// Checks words and files, which it makes absolute; before the data home is entered. @throws
    /// Misuse
    void begin();
    /// Models, data and parameters. @throws Misuse; Failure; corvane::OpenFailure
    corvane::fit::Problem problem() const;
    corvane::fit::Options options() const;

  private:
    bool mixture() const { return !words.empty() && words[0].find('+') != std::string::npos; }
    void open(corvane::fit::Problem& problem) const;
    void choose(corvane::fit::Problem& problem) const;
    void choose_quantities(std::vector<corvane::fit::DataSet>& all) const;
    corvane::fit::Parameter& parameter(corvane::fit::Problem& problem, std::string const& name,
                                       char const* option) const;

    std::vector<std::string> files_;
};

/// Mean, bias, largest: in %, of mole fractions as they are.
std::string spread_text(corvane::fit::Spread const& s, bool fraction);
struct Options;
/// corvane fit --batch; returns the exit code.

int run_fit_batch(FitRequest const& request, std::string const& list, int threads,
                  Options& options);

}  // namespace cli
