// Fitting the adjustable parameters of models to measured data.
//
//     using namespace corvane::fit;
//     Problem problem;
//     problem.add(corvane::open("PCSAFT", "propane"), {read_data("propane.csv", home,
//     {"propane"}, 44.1)}); problem.adjust("m"), problem.adjust("Ts"), problem.adjust("vs"); Result
//     r = solve(problem);                  // r.parameters[0].value, .error ...
//     write_parameters(problem, r, 0, {.home = "mine", .set = 9});
//
// The models are changed by the fit and hold the best parameters afterwards. One problem belongs to
// one thread; problems of their own models may run at the same time.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/fit/data.h>
#include <corvane/phases/report/progress.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::fit {

class Evaluator;

/// A value that is adjusted, at one address or, shared, at several.
struct Parameter {
    std::string name;                ///< "Ts", "kij"
    std::vector<double*> addresses;  ///< in the models; all get the same value
    std::vector<int> systems;        ///< that they belong to
    std::string pair;  ///< "methane + propane" of a mixture of more components, else empty
    double start = 0.0;
    double lower = -1e300, upper = 1e300;
    /// Regularisation: (value − prior)/prior_width joins the weighted deviations. 0: none.
    double prior = 0.0, prior_width = 0.0;
    bool positive = false;  ///< a size: differences and bounds are relative to the start
    double unit = 0.1;      ///< of one that is not: what its differences are relative to
};

/// What is adjusted of a system, by names in parameter files, and what holds for these.
struct Choice {
    std::vector<std::string> names;
    /// Those of the names that have one value in all systems that choose them so: the start of the
    /// first.
    std::vector<std::string> shared = {};
    std::map<std::string, double> start = {};
    std::map<std::string, std::pair<double, double>> bounds = {};  ///< lower, upper
    std::map<std::string, std::pair<double, double>> prior = {};   ///< value, standard deviation
};

/// Models, their data, and what is adjusted.
class Problem {
  public:
    Problem();
    Problem(Problem&&) noexcept;
    Problem& operator=(Problem&&) noexcept;
    ~Problem();

    /// Adds a substance, or a mixture, with its data. @return number of the system
    int add(Fluid&& fluid, std::vector<DataSet> data);
    int add(Mixture&& mixture, std::vector<DataSet> data);

    /// Adjusts a parameter of the substance `system`, by its name in parameter files ("Ts", "m",
    /// "omega") among those that the equation declares adjustable. A positive value is bounded by a
    /// tenth and ten times of it. @throws Failure no such parameter; the names that there are
    Parameter& adjust(std::string const& name, int system = 0);
    /// The same of a pair (i, j) of a mixture: "kij", "lij"; bounds −1 and 1 for these.
    Parameter& adjust_pair(std::string const& name, int i = 0, int j = 1, int system = 0);
    /// Makes another pair or substance share the parameter.
    void share(Parameter& parameter, std::string const& name, int system, int i = -1, int j = -1);
    /// All that is chosen of a substance, or of the first pair of a mixture. What the choice says
    /// of other names than its own is passed over. @throws Failure as adjust
    void choose(int system, Choice const& choice);

    /// The name of a parameter; with its system or pair, "kij (methane + propane)", where others
    /// have it.
    std::string label(std::size_t parameter) const;

    /// Names of what can be adjusted.
    std::vector<std::string> adjustable(int system = 0) const;
    std::vector<std::string> adjustable_pair(int system = 0) const;

    struct System;
    std::vector<std::unique_ptr<System>> systems;
    std::vector<std::unique_ptr<Parameter>> parameters;

  private:
    double* address(std::string const& name, int system, int i, int j) const;
};

/// A model with its data: one of fluid and mixture is there.
struct Problem::System {
    System();
    ~System();
    std::optional<Fluid> fluid;
    std::optional<Mixture> mixture;
    std::vector<DataSet> data;
    std::unique_ptr<Evaluator> evaluator;
    std::string name() const;
    std::string substances() const;  ///< "methane + propane"
};

/// Loss of a weighted deviation r, with the width k: r² where small.
enum class Loss {
    squares,  ///< r²
    huber,    ///< r², beyond k straight: 2·k·|r| − k²
    cauchy    ///< k²·ln(1 + r²/k²)
};

struct Options {
    Loss loss = Loss::squares;
    double loss_width =
        3.0;  ///< k, in units of the spread of the deviations where no uncertainty is given
    /// Deviation that counts as 1 where a point has no uncertainty: relative, and of mole
    /// fractions.
    double relative = 0.01, fraction = 0.01;
    int iterations = 100;     ///< bound of the steps of one start
    int starts = 1;           ///< further ones are spread over the bounds (Halton's sequence)
    int folds = 0;            ///< cross-validation with so many parts of the data; 0: none
    bool first_stage = true;  ///< begin with deviations that need no iteration
    Progress progress = {};   ///< called before every step; false ends the fit
};

struct FittedParameter {
    std::string name;  ///< Problem::label
    double start, value;
    double error;  ///< standard error; NaN where the data do not determine it
    /// The same with the number of deviations that are independent (Result::independent): what
    /// holds where the equation cannot follow the data, or these were smoothed.
    double correlated_error;
    bool at_bound;
};

/// Deviations of one quantity of one data set, (calculated − measured)/size. The size is that of
/// the measured value, so that 0.01 is 1 %; of mole fractions 1; of hE and vE the largest in the
/// set, of B and JT, which also pass through zero, at least a twentieth of the largest. Of the
/// points that are used and have a solution; not-a-number where none has.
struct Spread {
    int points = 0;
    double mean_absolute = 0.0, bias = 0.0, largest = 0.0;  ///< largest with its sign
};
struct SetReport {
    int system, set;
    Observable what;
    int points = 0, excluded = 0;
    int without_solution = 0, unstable = 0;  ///< after the fit
    Spread before, after;
    double predicted = kUnknown;  ///< mean absolute deviation in cross-validation
};

struct PointReport {
    int system, set, point;  ///< indices
    Observable what;
    int component;  ///< of what belongs to one, else −1
    double measured, before,
        after;         ///< library units; what a penalty rests on where there is no solution
    double size;       ///< that deviations are relative to
    double deviation;  ///< after the fit
    double weighted;   ///< what is minimised, without loss
    double leverage;   ///< 0 to 1: how much the point pulls the fit to itself
    bool used, solved, outlier;
    /// False: what was compared is not stable with the best parameters, by the complete test of
    /// phases (of single phases the excess functions alone are tested).
    bool stable;
};

struct Result {
    std::vector<FittedParameter> parameters;
    std::vector<double> correlation;  ///< row by row
    std::vector<SetReport> sets;
    std::vector<PointReport> points;
    double cost = 0.0;       ///< half the sum of losses at the end
    double spread = 0.0;     ///< square root of the sum of squares per degree of freedom
    /// How many of the deviations are independent, by the correlation of neighbours in temperature
    /// (of one quantity of one set: N·(1 − c)/(1 + c)).
    double independent = 0.0;
    double condition = 0.0;  ///< of the Jacobian with columns of unit length
    int iterations = 0;
    long evaluations = 0;  ///< of points, with and without derivatives
    bool converged = false;
    bool interrupted = false;  ///< ended by the progress of the options, with the best so far
    std::vector<std::string>
        warnings;  ///< sentences: data that look wrong, parameters not determined
};

/// Least squares by Levenberg and Marquardt's method with bounds (see least_squares.h).
///
/// First stage: one step of Newton's method from the measured states, which are the deviations to
/// first order; needs no iteration and has a value wherever the start may be. Pure substances:
/// equality of potentials at the measured vapour pressure, pressure at the measured density.
/// Mixtures, where the compositions of all phases are measured: equality of potentials there.
/// Last stage: the true deviations of the measured quantities. Their derivatives come from those of
/// the model at constant densities, by central differences with steps that were tested (plug-ins
/// take numbers of double precision, so that no complex step is possible), and the theorem of
/// implicit functions: no equilibrium is solved twice. Equilibria are followed by Newton's method
/// from the last parameters, and searched by the certified solvers where that does not get there.
/// They are not tested for stability on the way, where the penalty of leaving an equilibrium that
/// is not stable would hide which way is better; at the end every one is (PointReport::stable).
///
/// Points without a solution count what continues their deviation, with continuous first derivatives:
/// bubble and dew points the boundary of their composition through its critical point and, from next to
/// where T has an extremum, along its tangent; phases that become one a mean of their deviations and of
/// that of one phase; pure fluids from next to the critical point of their equation the critical isochore
/// and tangents. Where neither is known √(0.2² + e²), e the logarithm of Σ K_i·x_i at the measured state.
///
/// @throws Failure nothing to adjust, fewer points than parameters
Result solve(Problem& problem, Options const& options = {});

/// One of many fits. make opens the models, in the thread that does the fit.
struct Job {
    std::function<Problem()> make;
    Options options = {};
};
struct Outcome {
    bool done = false;
    std::string failure;  ///< a sentence, where it is not done; "" where it was not begun
    std::optional<Problem> problem;
    Result result;
};
/// Does all, several at a time; the outcomes are those of single fits, in the order of the jobs.
/// @param go_on  null, or called after each, by any of the threads; false: no further one is begun
std::vector<Outcome> solve_all(std::vector<Job> const& jobs, int threads,
                               std::function<bool(int done)> const& go_on = {});

struct Target {
    std::filesystem::path home;  ///< data home of one's own; folders are made
    int set = 0;                 ///< number of the new set; 0: the next that is free in all homes
    std::string comment = {};    ///< at most 78 characters; empty: "fitted to …"
    bool overwrite = false;
};
/// Writes the parameter file of a fitted substance, with the critical constants of the equation
/// solved anew, `source:` and `valid:` from the data; or that of a fitted pair. @return its path
/// @throws Failure
std::filesystem::path write_parameters(Problem const& problem, Result const& result, int system,
                                       Target const& target);

}  // namespace corvane::fit
