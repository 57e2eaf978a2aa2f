// What a model answers at measured points, and how that changes with its parameters. Internal.
#pragma once

#include <corvane/fit/fit.h>

#include <memory>
#include <vector>

namespace corvane::fit {

/// A parameter as an evaluator sees it: where it is, and the step of central differences.
struct Knob {
    std::vector<double*> addresses;
    double value, step;
    void set(double x) const {
        for (double* address : addresses) *address = x;
    }
};

/// The answer to an observation. Where there is no solution, `calculated` is a continuation (or
/// not-a-number) and `penalty` is added to the deviation, with its sign; with `alone` it is the
/// deviation by itself.
struct Answer {
    double calculated = kUnknown, penalty = 0.0;
    bool solved = false, alone = false;
    std::vector<double> slope;  // of calculated + penalty × measured, by the knobs
};

/// Of one system; keeps solutions from one parameter vector to the next.
class Evaluator {
  public:
    virtual ~Evaluator() = default;
    /// To call after every change of parameters.
    virtual void parameters_changed() = 0;
    /// Answers to the observations of a point. With knobs also the slopes, for which parameters are
    /// changed and put back.
    /// @param index  of the point among all of the system, for what is kept
    virtual void evaluate(std::size_t index, Point const& point, std::vector<Knob> const& knobs,
                          std::vector<Answer>& answers) = 0;
    /// Deviations of the first stage, relative; not-a-number where there are none.
    virtual void first_stage(Point const& point, std::vector<double>& deviations) = 0;
    /// Whether any is.
    virtual bool has_first_stage() const = 0;
    /// Whether the last answer, at the present parameters, is that of a stable state.
    virtual bool stable(std::size_t index, Point const& point) = 0;
    /// Warm starts are forgotten.
    virtual void forget() = 0;
};

std::unique_ptr<Evaluator> pure_evaluator(Model1& model, std::size_t points);
std::unique_ptr<Evaluator> mixture_evaluator(Mixture& mixture, std::size_t points);

/// Critical point of an equation near a guess, by Newton's method in ln T and ln rho. False if
/// there is none.
bool solve_critical(Model1 const& model, double& T, double& rho);
/// Writes critical constants of the present parameters into the model. False: not found, unchanged.
bool renew_critical(Model1& model);

}  // namespace corvane::fit
