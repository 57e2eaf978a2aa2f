// A cubic equation of state as a pure-substance model.
#pragma once

#include <corvane/plugin/plugin.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>
#include <corvane/pure/many_states.h>
#include <plugins/common/cubic_fluid.h>
#include <plugins/common/cubic_lanes.h>

#include <array>
#include <cmath>

namespace corvane {

/// Peng–Robinson or Soave–Redlich–Kwong with volume translation.
///
/// Every call reads the parameters anew: nothing derived from them is kept but the density tables.
template <class Form>
class CubicModel final : public Model1, public Deriv1, public ManyStates1 {
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
            if (i < cubic_c1 || alpha_kind(par_.data()) == alpha_mathias_copeman)
                section.number(kLabels[i], par_[i]);
    }

    double Ar(double rho, double T) const override { return fluid(T).ar(rho); }
    double Z(double rho, double T) const override { return fluid(T).Z(rho); }

    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        return fluid(T).density(p, T, phase, rho1, rho2);
    }
    /// The trial of phase 1 is the liquid at zero pressure, or hard spheres above its temperatures;
    /// that of the other codes hard spheres, which for thin gases are ideal.
    double xinit(double p, double T, int phase) const override {
        const CubicFluid<Form> f = fluid(T);
        const double P = p * f.b / (R * T), spheres = P > 0.0 ? P / (1.0 + P) : 0.0;
        const double liquid = phase == 1 ? cubic_detail::dense_trial<Form>(0.0, f.a.q) : 0.0;
        return f.translated(liquid > 0.0 ? liquid : spheres);
    }

    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        return fluid(T).deriv(rho, nrho, nT, d);
    }
    void second(int count, double const* rho, double const* T, double* const* d) const override {
        cubic_second<Form>(par_.data(), count, rho, T, d);
    }

  private:
    static constexpr std::array<char const*, cubic_parameters> kLabels{
        "M", "Ts", "vs", "omega", "alpha", "L", "Mtwu", "Ntwu", "c", "c1", "c2", "c3"};

    CubicFluid<Form> fluid(double T) const {
        return {par_[cubic_vs], par_[cubic_c], attraction<Form>(par_.data(), T)};
    }
    void fill_tables() {
        const double Tc = par_[cubic_Ts];
        auto isotherm = [this](double T) {
            return [f = fluid(T)](double rho) {
                const double t = 1.0 + f.c * rho;
                const IsothermPoint at = cubic_isotherm<Form>(f.reduced(rho), f.a.q);
                return IsothermPoint{at.P / f.b, at.dP / (t * t)};
            };
        };
        const CubicFluid<Form> f = fluid(Tc);
        const TableRange range{Tc, f.translated(Form::y_c), f.translated(kCubicTop), 0.25 * Tc};
        fill_density_tables(isotherm, range, Ttable_, dilute_, dense_);
    }

    std::array<double, cubic_parameters> par_{1.0, 1.0, 1.0};
};

}  // namespace corvane
