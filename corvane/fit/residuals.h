// The vector of weighted deviations of a problem, and its derivatives. Internal.
#pragma once

#include <corvane/fit/evaluator.h>

#include <Eigen/Dense>

namespace corvane::fit {

/// An observation in the vector.
struct Entry {
    int system, set, point;  // indices
    std::size_t index;       // of the point within the system
    int observation;
    double scale;  // deviation/scale is the residual; 0 for what is excluded
    double size;   // what deviations are relative to, above 0; 1 for mole fractions
    double measured;
};

/// Deviation of an answer, (calculated − measured)/size.
double deviation(Entry const& entry, Answer const& answer);

class ResidualVector {
  public:
    /// @throws Failure nothing to compare
    ResidualVector(Problem& problem, Options const& options);

    std::vector<Entry> const& entries() const { return entries_; }
    Eigen::Index used() const { return used_; }
    bool uncertainties_given() const { return given_; }

    /// Writes the parameters into the models.
    void set(Eigen::VectorXd const& x);
    /// Residuals of what is used, then those of the priors. False where one is not finite.
    bool last_stage(Eigen::VectorXd const& x, Eigen::VectorXd& r, Eigen::MatrixXd* J);
    /// The same of the first stage; the number of residuals is that of the first call.
    bool first_stage(Eigen::VectorXd const& x, Eigen::VectorXd& r, Eigen::MatrixXd* J);
    /// Answers to all entries at x, excluded ones too.
    std::vector<Answer> answers(Eigen::VectorXd const& x);

    /// Leaves out the used entries of this part (index modulo parts), or those of the others.
    /// parts = 0: all again.
    void fold(int part, int parts);
    bool in_fold(std::size_t entry) const;

    long evaluations = 0;

  private:
    void choose_steps();
    std::vector<Knob> knobs(std::size_t system) const;
    Eigen::Index priors(Eigen::VectorXd const& x, Eigen::Index row, Eigen::VectorXd& r,
                        Eigen::MatrixXd* J) const;
    template <class F>
    void each_point(F f);

    Problem& problem_;
    std::vector<Entry> entries_;
    std::vector<std::vector<std::size_t>> adjusted_;  // parameters of every system
    std::vector<double> steps_;
    std::vector<int> fold_of_;
    Eigen::Index used_ = 0;
    int fold_ = 0, folds_ = 0;
    bool given_ = true;
};

}  // namespace corvane::fit
