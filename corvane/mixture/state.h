// States of a mixture: partial densities and the density at (p, T). Internal to the library.
#pragma once

#include <corvane/core/containers.h>
#include <corvane/core/errors.h>

#include <cmath>

class ModelN;

namespace corvane::inline detail {

/// Total density and mole fractions of a vector of partial densities; zero fractions at zero
/// density.
struct Partial {
    explicit Partial(Vector<double> const& rho_i) : rho(rho_i.sum()), y(rho_i.size()) {
        if (rho != 0)
            for (int i = 0; i < y.size(); ++i) y[i] = rho_i[i] / rho;
    }
    double rho;
    Vector<double> y;
};

inline double checked_log(double rho) {
    if (!(rho > 0)) throw ThException(th_out_of_range);
    return std::log(rho);
}

/// Writes the density of the root at (p, T, x) that the phase code names; its old value is the
/// start.
/// @throws ThException 9 no root
void find_density(ModelN const& model, double p, double T, Vector<double> const& x, int phase,
                  double& rho);

}  // namespace corvane::inline detail
