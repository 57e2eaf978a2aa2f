// PC-SAFT mixtures with Lorentz-Berthelot combining rules. See README.md.
#include <corvane/plugin/exact_slots.h>
#include <corvane/plugin/plugin.h>
#include <plugins/common/pcsaft/density.h>
#include <plugins/pcsaft_lb/potentials.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

using corvane::Jet;
using corvane::SmallArray;
using corvane::pcsaft::Components;
using corvane::pcsaft::MixtureIsotherm;
using corvane::pcsaft::Potentials;

class PcSaftLB final : public corvane::PairTableMixture {
  public:
    PcSaftLB() : PairTableMixture("PCSAFT", "LB", kLabel.size()) {}

    // ---- binary parameters: 0 = k_ij, 1 = l_ij, 2 = ε_AB/k [K], 3 = κ_AB of unlike sites,
    // 4 = k_T,ij [K]: k_ij + k_T,ij/T

    void par_in(FILE* f, int i, int j) override {
        corvane::SectionReader section(f);
        corvane::pair_is_swapped(section, mdl1[i]->name(), mdl1[j]->name());  // both are symmetric
        std::array<double, kLabel.size()> read{};
        for (std::size_t k = 0; k < read.size(); ++k) read[k] = section.number(kLabel[k], 0.0);
        std::copy(read.begin(), read.end(), pairs_.at(i, j));
    }
    void par_out(FILE* f, int i, int j) const override {
        corvane::SectionWriter section(f);
        section.word("of", mdl1[i]->name());
        for (std::size_t k = 0; k < kLabel.size(); ++k)
            if (k < 2 || pairs_.at(i, j)[k] != 0.0) section.number(kLabel[k], pairs_.at(i, j)[k]);
    }
    /// Mean number of segments; m²·ε·σ³ and m²·ε²·σ³ averaged over pairs, as ε/k [K] and π/6·NA·σ³
    /// [cm³/mol]; at 298.15 K where a k_ij depends on temperature.
    Vector<double> mixpar(Vector<double> const& x) const override {
        const Components c = components();
        Vector<double> p(3);
        for (int k = 0; k < 3; ++k) p[k] = 0.0;
        for (int i = 0; i < c.size; ++i) {
            p[0] += x[i] * c[i].m;
            for (int j = 0; j < c.size; ++j) {
                const corvane::pcsaft::PairEnergy e = c.energy(i, j);
                p[1] += x[i] * x[j] * (e.first + e.first_more(1.0 / 298.15));
                p[2] += x[i] * x[j] * (e.second + e.second_more(1.0 / 298.15));
            }
        }
        return p;
    }

    // ---- at one composition

    double Ar(double rho, double T, Vector<double> const& x) const override {
        const MixtureIsotherm<double> fluid(components(), x, T);
        return fluid.ar(fluid.packing() * rho);
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        const MixtureIsotherm<double> fluid(components(), x, T);
        const double eta = fluid.packing() * rho;
        if (eta >= 1.0) return std::numeric_limits<double>::quiet_NaN();  // space is full
        return 1.0 + eta * fluid.slope(eta);
    }
    double betaV(double rho, double T, Vector<double> const& x) const override {
        using Series = Jet<1>;  // in T
        const MixtureIsotherm<Series> fluid(components(), x, Series::along_h(T));
        const Series eta = fluid.packing() * rho, Z = 1.0 + eta * fluid.slope(eta);
        const double beta = Z(0) + Z(1);
        const bool possible = eta(0) < 1.0 && std::isfinite(beta) && std::isfinite(T);
        return possible ? beta : ModelN::betaV(rho, T, x);
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        if (nrho < 0 || nT < 0) return 0;
        if (nrho == 1 && nT == 0) return first_in_rho<double>(rho, T, x, d);
        if (nrho == 1 && nT == 1) return first_in_rho<Jet<1>>(rho, Jet<1>::along_h(T), x, d);
        if (nT == 0 && nrho <= 3) return derivatives_at<3, 0>(rho, T, x, nrho, nT, d);
        if (nrho == 0 && nT == 1) return derivatives_at<1, 1>(rho, T, x, nrho, nT, d);
        if (nrho <= 2 && nT <= 2) return derivatives_at<2, 2>(rho, T, x, nrho, nT, d);
        return 0;
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a,
              double& rho_b) const override {
        if (!(T > 0.0)) return 0;
        double Tc = 0.0;  // near enough for a start
        for (int i = 0; i < x.size(); ++i) Tc += x[i] * mdl1[i]->Tcrit();
        const MixtureIsotherm<double> fluid(components(), x, T);
        return corvane::pcsaft::density_roots(fluid, fluid.packing(), p / (R * T), mode,
                                              corvane::pcsaft::liquid_packing(T / Tc), rho_a,
                                              rho_b);
    }

    // ---- composition derivatives

    double myr(Vector<double> const& rho_i, double T, int i) const override {
        if (rho_i.sum() == 0.0) return 0.0;
        const double mu = Potentials<double>(components(), rho_i, T, false).mu(i);
        return std::isfinite(mu) ? mu : ModelN::myr(rho_i, T, i);
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* mu_rho) const override {
        const int n = rho_i.size();
        const Components c = components();
        if (rho_i.sum() == 0.0) {
            for (int i = 0; i < n; ++i) {
                mu[i] = 0.0;
                if (mu_T) mu_T[i] = 0.0;
            }
            // The limit depends on the composition, through the mean segment number; here equal
            // amounts go to zero.
            Vector<double> trace(n);
            for (int i = 0; i < n; ++i) trace[i] = 1e-100;
            if (mu_rho) Potentials<double>(c, trace, T, true).hessian(mu_rho);
            return;
        }
        const Potentials<double> at(c, rho_i, T, mu_rho != nullptr);
        for (int i = 0; i < n; ++i) mu[i] = at.mu(i);
        if (mu_rho) at.hessian(mu_rho);
        if (!mu_T) return;
        const Potentials<Jet<1>> along(c, rho_i, Jet<1>::along_h(T), false);
        for (int i = 0; i < n; ++i) mu_T[i] = along.mu(i)(1);
    }

  private:
    static constexpr std::array<double, 4> kFactorial{1, 1, 2, 6};

    Components components() const { return {mdl1, pairs_}; }

    /// Ar and rho·Ar_rho, with a series in T beside each T·∂/∂T of it.
    template <class X>
    int first_in_rho(double rho, X const& T, Vector<double> const& x, double* d) const {
        const MixtureIsotherm<X> fluid(components(), x, T);
        const X eta = fluid.packing() * rho, a = fluid.ar(eta), slope = eta * fluid.slope(eta);
        if constexpr (std::is_same_v<X, double>)
            d[0] = a, d[1] = slope;
        else
            d[0] = a(0), d[1] = a(1), d[2] = slope(0), d[3] = slope(1);
        return 1;
    }
    /// Derivatives of total order N at most from truncated series in rho and, where M > 0, in T.
    template <int N, int M>
    int derivatives_at(double rho, double T, Vector<double> const& x, int nrho, int nT,
                       double* d) const {
        using Series = Jet<N, M>;
        using Temperature = std::conditional_t<M == 0, double, Series>;
        Temperature temperature{T};
        if constexpr (M > 0) temperature = Series::along_k(T);
        const MixtureIsotherm<Temperature> fluid(components(), x, temperature);
        const Series a = fluid.ar(Series(fluid.packing() * Series::along_h(rho)));
        for (int i = 0; i <= nrho; ++i)
            for (int j = 0; j <= nT && i + j <= N; ++j)
                d[i * (nT + 1) + j] = kFactorial[i] * kFactorial[j] * a(i, j);
        return 1;
    }

    static constexpr std::array<char const*, 5> kLabel{"kij", "lij", "epsAB", "kappaAB", "kijT"};
};

}  // namespace

CORVANE_PLUGINN(PcSaftLB)
