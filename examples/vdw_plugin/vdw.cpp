// van der Waals (1873) in Ts = Tc and vs = b, so that a = 27/8·R·Ts·vs:
//     Ar = −ln(1 − y) − α·y,   Z = 1/(1 − y) − α·y,   y = vs·rho,   α = 27/8·Ts/T
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>

#include <array>
#include <cmath>

namespace {
class VanDerWaals final : public Model1 {
  public:
    VanDerWaals() {
        eos_ = "vdw";
        mpar_ = 3;
        madj_ = 2;
    }

    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }

    void par_in(FILE* f, int /*mode*/) override {
        corvane::SectionReader section(f);
        const double M = section.number("M"), Ts = section.number("Ts"), b = section.number("vs");
        if (!(Ts > 0.0) || !(b > 0.0)) throw ThException(th_out_of_range);
        par_ = {M, Ts, b};
        auto curve = [this](double T) {
            return [this, T](double rho) { return isotherm(rho, T); };
        };
        corvane::fill_density_tables(curve, {Ts, 1.0 / (3.0 * b), top(), 0.25 * Ts}, Ttable_,
                                     dilute_, dense_);
    }
    void par_out(FILE* f) const override {
        corvane::SectionWriter section(f);
        section.number("M", par_[0]);
        section.number("Ts", par_[1]);
        section.number("vs", par_[2]);
    }

    double Ar(double rho, double T) const override {
        return -std::log1p(-y(rho)) - alpha(T) * y(rho);
    }
    double Z(double rho, double T) const override {
        return 1.0 / (1.0 - y(rho)) - alpha(T) * y(rho);
    }

    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        if (!(T > 0.0)) return 0;
        // Below Tc the critical density lies in the falling part of the isotherm.
        const double rho_c = 1.0 / (3.0 * par_[2]);
        const corvane::Branches branches{rho_c, rho_c, top(), T < par_[1]};
        return corvane::density_roots(
            [&](double rho) { return isotherm(rho, T); }, p / (R * T), branches, phase,
            [&](double rho) { return Ar(rho, T) + Z(rho, T) - 1.0 + std::log(rho); }, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override {
        return phase == 1 ? 0.8 / par_[2] : p / (R * T);
    }

  private:
    double y(double rho) const { return par_[2] * rho; }
    double alpha(double T) const { return 27.0 / 8.0 * par_[1] / T; }
    double top() const { return (1.0 - 1e-9) / par_[2]; }
    corvane::IsothermPoint isotherm(double rho, double T) const {
        const double repulsion = 1.0 / (1.0 - y(rho));
        return {rho * Z(rho, T), repulsion * repulsion - 2.0 * alpha(T) * y(rho)};
    }

    std::array<double, 3> par_{1.0, 1.0, 1.0};  // M [g/mol], Ts [K], vs [cm³/mol]
};
}  // namespace

CORVANE_PLUGIN1(VanDerWaals)
