// A cubic equation of state as a pure-substance model.
#pragma once

#include <corvane/plugin/plugin.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>
#include <plugins/common/alpha.h>
#include <plugins/common/cubic.h>

#include <array>
#include <cmath>

namespace corvane {

/// Peng–Robinson or Soave–Redlich–Kwong with volume translation (Péneloux, Rauzy & Fréze, Fluid
/// Phase Equilib. 8 (1982) 7): at v = v_eos − c the pressure of the equation at v_eos. With r =
/// rho/(1 + c·rho) that is Ar(rho) = Ar_eos(r) − ln(1 + c·rho), Z = Z_eos(r)/(1 + c·rho); phase
/// equilibria do not change.
///
/// Every call reads the parameters anew: nothing derived from them is kept but the density tables.
template <class Form>
class CubicModel final : public Model1, public Deriv1 {
  public:
    CubicModel() {
        eos_ = Form::name;
        mpar_ = cubic_parameters;
        madj_ = 3;  // Ts, vs, omega
    }

    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }

    /// @throws ThException 1 a section that is short or malformed, 5 Ts or vs not positive, 4 an
    /// alpha function that the equation does not have. The model is not changed then.
    void par_in(FILE* f, int /*mode*/) override {
        SectionReader section(f);
        std::array<double, cubic_parameters> read{};
        for (int i = 0; i < cubic_alpha; ++i) read[i] = section.number(kLabels[i]);
        for (bool more = true; more;) {  // the others may stand in any order, or be missing
            more = false;
            for (int i = cubic_alpha; i < cubic_parameters; ++i)
                if (section.at(kLabels[i])) {
                    read[i] = section.number(kLabels[i]);
                    more = true;
                }
        }
        if (!(read[cubic_Ts] > 0.0) || !(read[cubic_vs] > 0.0)) throw ThException(th_out_of_range);
        if (!alpha_known<Form>(read.data())) throw ThException(th_no_option);
        par_ = read;
        omega(par_[cubic_omega]);
        fill_tables();
    }
    void par_out(FILE* f) const override {
        SectionWriter section(f);
        const bool all = par_[cubic_alpha] != 0.0 || par_[cubic_c] != 0.0;
        for (int i = 0; i < (all ? cubic_parameters : cubic_alpha); ++i)
            section.number(kLabels[i], par_[i]);
    }

    double Ar(double rho, double T) const override {
        const double c_rho = par_[cubic_c] * rho;
        const double y = b() * rho / (1.0 + c_rho);
        return cubic_ar<Form>(y, q(T)) - (c_rho == 0.0 ? 0.0 : std::log1p(c_rho));
    }
    double Z(double rho, double T) const override {
        const double t = 1.0 + par_[cubic_c] * rho;
        if (!(t > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        return cubic_Z<Form>(b() * rho / t, q(T)) / t;
    }

    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        const double P = p * b() / (R * T), q_T = q(T);
        if (!(T > 0.0) || !std::isfinite(P)) return 0;
        const ReducedRoots root = cubic_roots<Form>(P, q_T);
        return order_roots(
            translated(root.dilute), translated(root.dense), phase,
            [&](double start) { return cubic_isotherm<Form>(reduced(start), q_T).P > P; },
            [&](double rho) { return Ar(rho, T) + Z(rho, T) - 1.0 + std::log(rho); }, rho1, rho2);
    }
    /// The trial of phase 1 is the liquid at zero pressure, or hard spheres above its temperatures;
    /// that of the other codes hard spheres, which for thin gases are ideal.
    double xinit(double p, double T, int phase) const override {
        const double P = p * b() / (R * T), spheres = P > 0.0 ? P / (1.0 + P) : 0.0;
        const double liquid = phase == 1 ? cubic_detail::dense_trial<Form>(0.0, q(T)) : 0.0;
        return translated(liquid > 0.0 ? liquid : spheres);
    }

    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        if (nrho < 0 || nT < 0 || nrho > 3 || nT > 2 || (nrho == 3 && nT > 0)) return 0;
        // By r, then by rho: rho^i·d^i r/drho^i over r are e1, e2, e3.
        const double c_rho = par_[cubic_c] * rho, t = 1.0 + c_rho, x = c_rho / t;
        const double e1 = 1.0 / t, e2 = -2.0 * x * e1, e3 = 6.0 * x * x * e1;
        const CubicTerms y = cubic_terms<Form>(b() * rho / t);
        auto by_rho = [&](std::array<double, 4> const& f, int i) {
            switch (i) {
                case 0:
                    return f[0];
                case 1:
                    return f[1] * e1;
                case 2:
                    return f[2] * e1 * e1 + f[1] * e2;
                default:
                    return f[3] * e1 * e1 * e1 + 3.0 * f[2] * e1 * e2 + f[1] * e3;
            }
        };
        const std::array<double, 4> shift{std::log1p(c_rho), x, -x * x, 2.0 * x * x * x};
        const Attraction a = attraction<Form>(par_.data(), T);
        const std::array<double, 3> q_T{a.q, a.Tq, a.TTq};
        for (int i = 0; i <= nrho; ++i) {
            const double integral = by_rho(y.integral, i);
            d[i * (nT + 1)] = by_rho(y.repulsion, i) - q_T[0] * integral - shift[i];
            for (int j = 1; j <= nT && i + j <= 2; ++j) d[i * (nT + 1) + j] = -q_T[j] * integral;
        }
        return 1;
    }

  private:
    static constexpr std::array<char const*, cubic_parameters> kLabels{
        "M", "Ts", "vs", "omega", "alpha", "L", "Mtwu", "Ntwu", "c"};

    double b() const { return par_[cubic_vs]; }
    double q(double T) const { return attraction<Form>(par_.data(), T).q; }
    double reduced(double rho) const { return b() * rho / (1.0 + par_[cubic_c] * rho); }
    /// rho from y = b·r; 0 for no root, or where the translation leaves no volume.
    double translated(double y) const {
        const double rest = b() - par_[cubic_c] * y;
        return rest > 0.0 ? y / rest : 0.0;
    }
    void fill_tables() {
        const double Tc = par_[cubic_Ts];
        auto isotherm = [this](double T) {
            return [this, q_T = q(T)](double rho) {
                const double t = 1.0 + par_[cubic_c] * rho;
                const IsothermPoint at = cubic_isotherm<Form>(reduced(rho), q_T);
                return IsothermPoint{at.P / b(), at.dP / (t * t)};
            };
        };
        const TableRange range{Tc, translated(Form::y_c), translated(kCubicTop), 0.25 * Tc};
        fill_density_tables(isotherm, range, Ttable_, dilute_, dense_);
    }

    std::array<double, cubic_parameters> par_{1.0, 1.0, 1.0};
};

}  // namespace corvane
