// Critical conditions of an equation of state.
#include <corvane/core/numelo.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace {
double p_rho(double rho, void* ctx) {
    auto const& s = *static_cast<pass1 const*>(ctx);
    return rho * s.mdl1->Z(rho, s.T);
}
}  // namespace

Vector<double> Model1::crit(double T, double rho, double Zt) const {
    Vector<double> r(3);
    r[0] = (Z(rho, T) * rho) / rho - Zt;  // intended: multiplied and divided
    double d[4];
    if (derivatives_ && rho > 0 && T > 0 && derivatives_->deriv(rho, T, 3, 0, d)) {
        r[1] = 1 + 2 * d[1] + d[2];
        r[2] = (2 * d[1] + 4 * d[2] + d[3]) / rho;
        if (std::isfinite(d[0] + r[1] + r[2])) return r;  // else as in the property calculus
    }
    // A step of 1 % and level 4, unlike the property calculus (intended).
    pass1 state{this, 0, 0.0, rho, T};
    r[1] = diff_romberg(p_rho, &state, 1, rho, 0.01 * rho, 4, 0.0, 1e99);
    r[2] = diff_romberg(p_rho, &state, 2, rho, 0.01 * rho, 4, 0.0, 1e99);
    return r;
}
