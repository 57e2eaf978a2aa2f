// The van der Waals fluid as a model for tests: every result has a closed form.
//
// With y = rho·b and α = 27/8·Tc/T: Ar = −ln(1 − y) − α·y, Z = 1/(1 − y) − α·y. The critical point
// is rho_c = 1/(3b), Zc = 3/8; the virial coefficients are B2 = b·(1 − α), Bn = b^(n−1) for n > 2.
#pragma once

#include <corvane/core/files.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

class VdwModel : public Model1 {
  public:
    explicit VdwModel(char const* substance = "argon", double Tc = 150.0, double b = 32.0) {
        eos_ = "vdw";
        mpar_ = madj_ = 3;
        par_ = {39.948, Tc, b};
        name(substance);
        id(1);
        Tcrit(Tc);
        vcrit(3 * b);
        pcrit(0.375 * R * Tc / (3 * b));
    }
    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }
    void par_in(FILE* f, int) override {
        for (double& x : par_)
            if (std::fscanf(f, "%*s%lf", &x) != 1) throw ThException(th_cannot_open);
    }
    void par_out(FILE* f) const override {
        std::fprintf(f, "M:\t%.17g\nTs:\t%.17g\nvs:\t%.17g\n", par_[0], par_[1], par_[2]);
    }
    double Ar(double rho, double T) const override {
        ++calls;
        return -std::log1p(-rho * par_[2]) - alpha(T) * rho * par_[2];
    }
    double Z(double rho, double T) const override {
        ++calls;
        return 1.0 / (1.0 - rho * par_[2]) - alpha(T) * rho * par_[2];
    }
    /// Bisection between the spinodals: slow and sure.
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        double low = 0, high = 0;
        const int n = stable_roots(p, T, low, high);
        if (n == 0) return 0;
        const bool dense_first = phase == 1 || (phase == -1 && !(rho1 < 1 / vcrit()));
        rho1 = dense_first ? high : low;
        rho2 = dense_first ? low : high;
        return n;
    }
    double xinit(double p, double T, int phase) const override {
        return phase == 1 ? 0.9 / par_[2] : p / (R * T);
    }

    /// Density at which dp/drho = 0, on the dilute or the dense side; 1/vcrit at and above Tc.
    double spinodal(double T, bool dense) const {
        if (T >= par_[1]) return 1 / vcrit();
        double a = 1.0 / 3, b = dense ? 1.0 : 0.0;  // dp/dy < 0 at a, > 0 at b
        for (int k = 0; k < 200; ++k) {
            const double y = 0.5 * (a + b);
            (1 / ((1 - y) * (1 - y)) - 2 * alpha(T) * y < 0 ? a : b) = y;
        }
        return b / par_[2];
    }
    /// Fills the density tables as a plug-in would.
    void fill_tables(int count = 40) {
        Ttable_.size(count + 1);
        dilute_.size(count + 1);
        dense_.size(count + 1);
        for (int k = 0; k <= count; ++k) {
            const double s = (k - 1.0) / (count - 1.0);
            Ttable_[k] = k == 0 ? 1e5 : par_[1] * (1 - 0.7 * s * s);
            dilute_[k] = Ttable_[k] < par_[1] ? spinodal(Ttable_[k], false) : 1 / vcrit() / 0.999;
            dense_[k] = Ttable_[k] < par_[1] ? spinodal(Ttable_[k], true) : 1 / vcrit() / 1.001;
        }
    }

    mutable long calls = 0;  ///< evaluations of Ar and Z

  private:
    double alpha(double T) const { return 27.0 / 8.0 * par_[1] / T; }
    double excess(double y, double p, double T) const {
        return R * T / par_[2] * y * (1 / (1 - y) - alpha(T) * y) - p;
    }
    double bisect(double a, double b, double p, double T) const {
        for (int k = 0; k < 200; ++k) {
            const double y = 0.5 * (a + b);
            (excess(y, p, T) < 0 ? a : b) = y;
        }
        return 0.5 * (a + b) / par_[2];
    }
    int stable_roots(double p, double T, double& low, double& high) const {
        if (!(T > 0) || !(p > 0) || !std::isfinite(p)) return 0;
        if (T >= par_[1]) {
            low = high = bisect(0, 1, p, T);
            return 1;
        }
        const double dilute = spinodal(T, false) * par_[2], dense = spinodal(T, true) * par_[2];
        const bool gas = excess(dilute, p, T) >= 0, liquid = excess(dense, p, T) <= 0;
        if (gas) low = bisect(0, dilute, p, T);
        if (liquid) high = bisect(dense, 1, p, T);
        if (gas && liquid) return 3;
        low = high = gas ? low : high;
        return 1;
    }

    std::array<double, 3> par_{};  // M [g/mol], Tc [K], b [cm³/mol]
};
