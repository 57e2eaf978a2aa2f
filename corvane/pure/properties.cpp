// Residual and total properties of a pure fluid, built on Ar, Z and vcalc of the equation of state.
#include <corvane/core/numelo.h>
#include <corvane/pure/model1.h>

#include <cmath>

namespace {
constexpr double kNoBound = 1e99;

// Objective functions of the numerical derivatives; the context is a pass1 record.
double ar_T(double T, void* ctx) {
    auto const& s = *static_cast<pass1 const*>(ctx);
    return s.mdl1->Ar(s.rho, T);
}
double p_T(double T, void* ctx) {
    auto const& s = *static_cast<pass1 const*>(ctx);
    return T * s.mdl1->Z(s.rho, T);
}
double p_rho(double rho, void* ctx) {
    auto const& s = *static_cast<pass1 const*>(ctx);
    return rho * s.mdl1->Z(rho, s.T);
}
double Z_rho(double rho, void* ctx) {
    auto const& s = *static_cast<pass1 const*>(ctx);
    return s.mdl1->Z(rho, s.T);
}

/// The derivatives that the properties need, exact where the equation offers them. Everything is
/// reduced: Ta = T·∂Ar/∂T, TTa = T²·∂²Ar/∂T² at rho, PT = ∂(T·Z)/∂T at rho, Prho = ∂(rho·Z)/∂rho at
/// T.
///
/// Past the pole of an equation Ar is no number, but the closed forms of its derivatives often are.
/// Where Ar, or the result, is not finite, the numerical route therefore answers, with the error
/// that it raises for such a state.
class Slopes {
  public:
    Slopes(Model1 const& model, double rho, double T) : model_(model), rho_(rho), T_(T) {}

    double Ta() const {
        double d[2];
        if (exact(0, 1, d) && finite(d[0], d[1])) return d[1];
        return T_ * by_T(ar_T, 1);
    }
    /// −2·T·∂Ar/∂T − T²·∂²Ar/∂T²: the residual isochoric heat capacity over R.
    double heat_capacity() const {
        double d[3];
        if (exact(0, 2, d) && finite(d[0], d[1] + d[2])) return -2 * d[1] - d[2];
        return (-2 * by_T(ar_T, 1) - T_ * by_T(ar_T, 2)) * T_;
    }
    double PT() const {
        double d[4];
        if (exact(1, 1, d) && finite(d[0], d[2] + d[3])) return 1 + d[2] + d[3];
        return by_T(p_T, 1);
    }
    double Prho() const {
        double d[3];
        if (rho_ > 0 && exact(2, 0, d) && finite(d[0], d[1] + d[2])) return 1 + 2 * d[1] + d[2];
        return by_rho();
    }
    double PT_over_Prho() const {
        double d[9];
        if (rho_ > 0 && exact(2, 2, d)) {
            const double ratio = (1 + d[3] + d[4]) / (1 + 2 * d[3] + d[6]);
            if (finite(d[0], ratio)) return ratio;
        }
        return PT() / Prho();
    }
    double isobaric_heat_capacity() const {
        double d[9];
        if (rho_ > 0 && exact(2, 2, d)) {
            const double PT = 1 + d[3] + d[4];
            const double Cpr = -2 * d[1] - d[2] + PT * PT / (1 + 2 * d[3] + d[6]) - 1;
            if (finite(d[0], Cpr)) return Cpr;
        }
        const double beta = PT();
        return heat_capacity() + beta * beta / Prho() - 1;
    }

  private:
    bool exact(int nrho, int nT, double* d) const {
        corvane::Deriv1 const* extension = model_.derivatives();
        return extension && T_ > 0 && T_ <= kNoBound &&
               extension->deriv(rho_, T_, nrho, nT, d) != 0;
    }
    static bool finite(double Ar, double result) { return std::isfinite(Ar + result); }
    double by_T(numelo_function f, int order) const {
        pass1 state{&model_, 0, 0.0, rho_, T_};
        return diff_romberg(f, &state, order, T_, th_inc1 * T_, 1, 0.0, kNoBound);
    }
    double by_rho() const {
        pass1 state{&model_, 0, 0.0, rho_, T_};
        return diff_romberg(p_rho, &state, 1, rho_, th_inc1 * rho_, 1, 0.0, kNoBound);
    }

    Model1 const& model_;
    double rho_, T_;
};

double checked_log(double rho) {
    if (!(rho > 0)) throw ThException(th_out_of_range);
    return std::log(rho);
}

/// Writes the density of the root at (p, T) that the phase code names; its old value is the start.
void find_density(Model1 const& model, double p, double T, int phase, double& rho) {
    const int odd = phase % 2 == 0 ? phase - 1 : phase;
    double root = rho, other = 0.0, spare = 0.0;
    const int n = model.vcalc(p, T, odd, root, other);
    if (n < 1) throw ThException(th_no_density);
    rho = root;
    if (phase != 2 || n < 2) return;
    if (n == 2) {
        other = 0.0;
        if (model.vcalc(p, T, 3, other, spare) < 1 || std::fabs(1 - other / root) < 0.01) return;
    }
    if (model.Ge(other, T) < model.Ge(root, T))
        rho = other;  // intended: a tie keeps the first root
}
}  // namespace

double Model1::Ak(double rho, double T) const {
    const double ln_rho = checked_log(rho);
    return Ar(rho, T) + ln_rho - 1;
}
double Model1::Am(double rho, double T) const {
    return Ak(rho, T) + ideal.Am(T) + 1;  // intended: in this order of summation
}
double Model1::Gr(double rho, double T) const {
    return Ar(rho, T) + Z(rho, T) - 1;
}
double Model1::Ge(double rho, double T) const {
    const double ln_rho = checked_log(rho);
    return Gr(rho, T) + ln_rho;
}
double Model1::Gm(double rho, double T) const {
    return Ge(rho, T) + ideal.Gm(T);
}
double Model1::Ur(double rho, double T) const {
    return -Slopes(*this, rho, T).Ta();
}
double Model1::Um(double rho, double T) const {
    return Ur(rho, T) + ideal.Um(T);
}
double Model1::Hr(double rho, double T) const {
    return Ur(rho, T) + Z(rho, T) - 1;
}
double Model1::Hm(double rho, double T) const {
    return Hr(rho, T) + ideal.Hm(T);
}
double Model1::Sr(double rho, double T) const {
    return Ur(rho, T) - Ar(rho, T);
}
double Model1::Sk(double rho, double T) const {
    const double ln_rho = checked_log(rho);
    return Sr(rho, T) - ln_rho;
}
double Model1::Sm(double rho, double T) const {
    return Sk(rho, T) + ideal.Sm(T);
}
double Model1::CVr(double rho, double T) const {
    return Slopes(*this, rho, T).heat_capacity();
}
double Model1::CVm(double rho, double T) const {
    return CVr(rho, T) + ideal.CVm(T);
}
double Model1::Cpr(double rho, double T) const {
    return Slopes(*this, rho, T).isobaric_heat_capacity();
}
double Model1::Cpm(double rho, double T) const {
    return Cpr(rho, T) + ideal.Cpm(T);
}
double Model1::betaV(double rho, double T) const {
    return Slopes(*this, rho, T).PT();
}
double Model1::pV(double rho, double T) const {
    return Slopes(*this, rho, T).Prho();
}
double Model1::kappaT(double rho, double T) const {
    return 1 / pV(rho, T);
}
double Model1::alphap(double rho, double T) const {
    return Slopes(*this, rho, T).PT_over_Prho();
}

double Model1::B(double T, int n) const {
    pass1 state{this, 0, 0.0, 0.0, T};
    // Densities below zero are evaluated here: Z is smooth there.
    double b = diff_romberg(Z_rho, &state, n - 1, 0.0, th_inc1 / vcrit_, 4, -kNoBound, kNoBound);
    for (int k = 2; k < n; ++k) b *= 1.0 / k;
    return b;
}

double Model1::Vm(double p, double T, int phase) const {
    double rho = 0.0;
    find_density(*this, p, T, phase, rho);
    return 1 / rho;
}

// The (p, T) forms: the density first, then the (rho, T) form.
#define CORVANE_AT_P_T(property)                                                \
    double Model1::property(double p, double T, int phase, double& rho) const { \
        find_density(*this, p, T, phase, rho);                                  \
        return property(rho, T);                                                \
    }
CORVANE_AT_P_T(CVr)
CORVANE_AT_P_T(CVm)
CORVANE_AT_P_T(Cpr)
CORVANE_AT_P_T(Cpm)
CORVANE_AT_P_T(Gr)
CORVANE_AT_P_T(Ge)
CORVANE_AT_P_T(Gm)
CORVANE_AT_P_T(Hr)
CORVANE_AT_P_T(Hm)
CORVANE_AT_P_T(Sr)
CORVANE_AT_P_T(Sm)
CORVANE_AT_P_T(Ur)
CORVANE_AT_P_T(alphap)
CORVANE_AT_P_T(betaV)
CORVANE_AT_P_T(kappaT)
#undef CORVANE_AT_P_T
