// Ideal-gas caloric properties of a substance from its tabulated isobaric heat capacity.
#pragma once

#include <corvane/core/containers.h>
#include <corvane/core/owner.h>

#include <string>

class Model1;

namespace corvane {
CORVANE_API std::string load_ideal(Model1& model);
}

/// Table of ideal-gas heat capacities with a cubic spline through it and the exact integrals of the
/// spline. All results are reduced: heat capacities and entropies by R, energies by R·T. Until
/// offset moves it, the reference state is U° = 0 and S° = 0 at the first table temperature, with
/// S° at constant density. A default-constructed object holds no data.
class CORVANE_API Ideal {
  public:
    /// Reads "./CorvaneS/ideal/<name>": the number of points, then T [K] and cp [J/(mol K)] in
    /// ascending order of T; whatever follows the last number is free text. One handle of each file
    /// stays open for the life of the process (intended). On failure the tables stay as they were.
    /// @throws ThException 1 no file, no owner, a count beyond 10^6, a number that is missing or
    ///         malformed; MthException 5, 6 from the spline for equal or descending temperatures
    void load();
    /// Prints the temperature range of the data to standard output.
    void info() const;
    /// Table segment of T: −1 below the table, the last point from there on. @throws ThException 3
    int interval(double T) const;
    /// Adds dh [K] to every energy and ds [R] to every entropy: moves the reference state.
    /// @throws ThException 3
    void offset(double dh, double ds);
    /// Forgets the temperatures (and nothing else, intended), so that there are no data.
    void reset();

    /// Gives the file name; not owned; kept by assignment.
    Model1* model() const { return model_; }
    void model(Model1* owner) { model_.set(owner); }

    // Properties at T [K]; below the table cp continues linearly, above it with the last cubic.
    // All throw ThException 3 without data.
    double Cpm(double T) const;  ///< cp°/R
    double CVm(double T) const;  ///< cv°/R
    double Hm(double T) const;   ///< H°/(RT)
    double Sm(double T) const;   ///< S°/R at unit density (mol/cm³) of the reference
    double Am(double T) const;   ///< U°/(RT) − S°/R
    double Gm(double T) const;   ///< U°/(RT) + 1 − S°/R
    double Um(double T) const;   ///< U°/(RT)

    /// Um, Sm and CVm of one temperature, from one search of the table.
    struct Parts {
        double U, S, cv;
    };
    Parts parts(double T) const;  ///< bit by bit Um, Sm and CVm
    /// The same of many temperatures, as columns. Within the table U and cv are bit by bit those of
    /// Um and CVm, S differs from Sm by rounding: at most 2 ulp of the largest of its terms. The
    /// results depend on T alone, neither on count nor on the order of the temperatures.
    void parts(int count, double const* T, double* U, double* S, double* cv) const;

  private:
    friend std::string corvane::load_ideal(Model1& model);
    void read(std::string const& path);

    struct Value;    // cv, U and S at a temperature
    struct Columns;  // many temperatures at once
    Value at(double T) const;
    int segment(double T) const;

    SortedVector<double> x_;  // temperatures, K
    Vector<double> y_;        // CV°/R
    Vector<double> energy_;   // U°/R, K
    Vector<double> entropy_;  // S°/R
    Matrix<double> c_;        // spline rows b, c, d
    corvane::Owner model_;
};
