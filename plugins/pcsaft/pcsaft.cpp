// PC-SAFT equation of state of pure fluids: chains that may associate and be polar. See README.md.
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>
#include <plugins/common/pcsaft/density.h>
#include <plugins/pcsaft/fluid.h>

#include <array>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

using corvane::Jet;
using corvane::pcsaft::Isotherm;
using corvane::pcsaft::Parameters;

class PcSaft final : public Model1, public corvane::Deriv1 {
  public:
    PcSaft() {
        eos_ = "PCSAFT";
        mpar_ = static_cast<int>(par_.size());
        madj_ = 6;
    }

    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }

    void par_in(FILE* f, int) override {
        corvane::SectionReader in(f);
        std::array<double, 10> read{};
        read[0] = in.number(kLabel[0]);
        for (int i = 1; i < 4; ++i) read[i] = in.positive(kLabel[i]);
        for (int i = 4; i < 10; ++i) read[i] = in.number(kLabel[i], 0.0);
        par_ = read;
        fill_tables();
    }
    void par_out(FILE* f) const override {
        corvane::SectionWriter out(f);
        for (int i = 0; i < 4; ++i) out.number(kLabel[i], par_[i]);
        for (int i = 4; i < 10; ++i)
            if (par_[i] != 0.0) out.number(kLabel[i], par_[i]);
    }

    double Ar(double rho, double T) const override {
        const Isotherm<double> fluid(parameters(), T);
        return fluid.ar(par_[2] * fluid.packing() * rho);
    }
    double Z(double rho, double T) const override {
        const Isotherm<double> fluid(parameters(), T);
        const double eta = par_[2] * fluid.packing() * rho;
        if (eta >= 1.0) return std::numeric_limits<double>::quiet_NaN();  // space is full
        return 1.0 + eta * fluid.slope(eta);
    }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        if (nrho < 0 || nT < 0) return 0;
        if (nT == 0 && nrho <= 3) return derivatives_at<3, 0>(rho, T, nrho, nT, d);
        if (nrho == 0 && nT == 1) return derivatives_at<1, 1>(rho, T, nrho, nT, d);
        if (nrho <= 2 && nT <= 2) return derivatives_at<2, 2>(rho, T, nrho, nT, d);
        return 0;
    }

    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        if (!(T > 0.0)) return 0;
        const Isotherm<double> fluid(parameters(), T);
        return corvane::pcsaft::density_roots(fluid, par_[2] * fluid.packing(), p / (R * T), phase,
                                              liquid_start(T), rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override {
        if (phase != 1) return p / (R * T);
        return liquid_start(T) / (par_[2] * Isotherm<double>(parameters(), T).packing());
    }

  private:
    static constexpr std::array<char const*, 10> kLabel{
        "M", "Ts", "vs", "m", "kappaAB", "epsAB", "donors", "acceptors", "dipole", "quadrupole"};
    static constexpr std::array<double, 4> kFactorial{1, 1, 2, 6};

    Parameters parameters() const {
        return {par_[0], par_[1], par_[2], par_[3], par_[4],
                par_[5], par_[6], par_[7], par_[8], par_[9]};
    }
    /// Derivatives of total order N at most from truncated series in rho and, where M > 0, in T.
    template <int N, int M>
    int derivatives_at(double rho, double T, int nrho, int nT, double* d) const {
        using Series = Jet<N, M>;
        using Temperature = std::conditional_t<M == 0, double, Series>;
        Temperature temperature{T};
        if constexpr (M > 0) temperature = Series::along_k(T);
        const Isotherm<Temperature> fluid(parameters(), temperature);
        const Series a = fluid.ar(par_[2] * fluid.packing() * Series::along_h(rho));
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT && i + j <= N; ++j)
                d[i * (nT + 1) + j] = kFactorial[i] * kFactorial[j] * a(i, j);
        return 1;
    }
    double liquid_start(double T) const { return corvane::pcsaft::liquid_packing(T / Tcrit()); }

    void fill_tables() {
        auto at = [this](double rho, double T) {
            const Isotherm<double> fluid(parameters(), T);
            return corvane::pcsaft::PressureCurve<Isotherm<double>>{fluid,
                                                                    par_[2] * fluid.packing()}(rho);
        };
        // The largest density stays below the further loops at low temperature.
        const corvane::TableRange range{.Tc = Tcrit(),
                                        .rho_c = 1 / vcrit(),
                                        .top = corvane::pcsaft::kDense / (par_[3] * par_[2]),
                                        .Tmin = 0.25 * Tcrit()};
        corvane::fill_density_tables(at, range, Ttable_, dilute_, dense_);
    }

    // 0 M [g/mol], 1 Ts = ε/k [K], 2 vs = π/6·NA·σ³ [cm³/mol], 3 m, 4 κ_AB, 5 ε_AB/k [K],
    // 6 donor sites, 7 acceptor sites, 8 dipole [D], 9 quadrupole [D·Å]
    std::array<double, 10> par_{16.0, 150.0, 15.0, 1.0};
};

}  // namespace

CORVANE_PLUGIN1(PcSaft)
