// The pure fluid of a formula.
#include <corvane/plugin/formula_models.h>
#include <corvane/plugin/parameters.h>
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/tables.h>
#include <corvane/pure/derivatives.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace corvane {
namespace {

class FormulaPure final : public Model1, public Deriv1 {
  public:
    explicit FormulaPure(Formula const& formula)
        : formula_(formula),
          par_(static_cast<std::size_t>(formula.count)),
          no_pair_(static_cast<std::size_t>(formula.pair_count) + 1) {
        eos_ = formula.name;
        mpar_ = formula.count;
        madj_ = 0;
        for (int k = 0; k < mpar_; ++k) {
            Parameter const& p = formula.parameters[k];
            par_[static_cast<std::size_t>(k)] = p.value;
            if (p.adjustable) ++madj_;
            if (std::strcmp(p.label, "omega") == 0) omega_at_ = k;
        }
    }

    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }

    void par_in(FILE* f, int /*mode*/) override {
        SectionReader section(f);
        std::vector<double> values(par_.size());
        read_parameters(section, formula_.parameters, formula_.count, values.data());
        std::copy(values.begin(), values.end(), par_.begin());  // they stay where they are
        if (omega_at_ >= 0) omega(*ppar(omega_at_));
        fill_tables();
    }
    void par_out(FILE* f) const override {
        SectionWriter section(f);
        write_parameters(section, formula_.parameters, formula_.count, par_.data());
    }

    double Ar(double rho, double T) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        return formula_.value(state(T), rho);
    }
    double Z(double rho, double T) const override {
        if (!(T > 0.0)) return std::numeric_limits<double>::quiet_NaN();
        return formula_Z(formula_, state(T), rho);
    }
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        if (!(T > 0.0) || !std::isfinite(T)) return 0;
        return formula_densities(formula_, state(T), p / (R * T), phase, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override {
        const DensityRange at = formula_.range(state(T));
        if (phase == 1) return at.liquid > 0.0 ? at.liquid : 0.8 * at.top;
        const double P = p / (R * T);
        return P > 0.0 ? P / (1.0 + P / at.top) : 0.0;
    }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        return formula_derivatives(formula_, state(T), rho, nrho, nT, d);
    }

  private:
    FormulaState state(double T) const {
        static constexpr double one = 1.0;
        return {T, &one, 1, {par_.data(), formula_.count, no_pair_.data(), formula_.pair_count}};
    }
    void fill_tables() {
        const double Tc = Tcrit(), low = 0.25 * Tc;
        double top = no_limit;  // one for all temperatures
        for (double T : {low, Tc})
            if (T > 0.0) {
                const DensityRange at = formula_.range(state(T));
                top = std::min(top, at.clear > 0.0 ? at.clear : at.top);
            }
        fill_density_tables(
            [this](double T) {
                return [this, at = state(T)](double rho) {
                    return FormulaCurve{formula_, at}(rho);
                };
            },
            {.Tc = Tc, .rho_c = 1.0 / vcrit(), .top = top, .Tmin = low}, Ttable_, dilute_, dense_);
    }

    Formula const& formula_;
    std::vector<double> par_;
    std::vector<double> no_pair_;  // zeroes
    int omega_at_ = -1;            // number of the parameter that is the acentric factor
};

}  // namespace

Model1* new_formula1(Formula const& formula) {
    return new FormulaPure(formula);
}
void delete_formula(Model1* model) {
    delete static_cast<FormulaPure*>(model);
}

}  // namespace corvane
