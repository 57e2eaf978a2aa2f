// PC-SAFT mixtures a second time: the formulas as printed by Gross & Sadowski (2001, appendix A;
// 2002), polar terms, and the mass balance of all sites by damped substitution, in 100 decimal
// digits.
#pragma once

#include "central_difference.h"

#include <corvane/core/constants.h>
#include <plugins/pcsaft/fluid.h>

#include <boost/math/constants/constants.hpp>

#include <vector>

namespace reference {

struct PcSaftMixture {
    std::vector<corvane::pcsaft::Parameters> par;
    double k, l;  // of every pair
    double cross_energy = 0, cross_volume = 0;  // of the sites of the first two, if not combined
    double k_T = 0;                             // K: k + k_T/T

    /// Residual Helmholtz energy density over RT at partial densities [mol/cm³].
    Big density(std::vector<Big> const& molar, Big const& T) const {
        const Big pi = boost::math::constants::pi<Big>();
        const std::size_t N = par.size();
        std::vector<Big> rho(N), sigma(N), d(N);
        Big total = 0, z[4] = {0, 0, 0, 0};
        for (std::size_t i = 0; i < N; ++i) {
            rho[i] = molar[i] * Big(NA);
            total += rho[i];
            sigma[i] = cbrt(Big(par[i].vs) / (pi / 6 * Big(NA)));
            d[i] = sigma[i] * (1 - Big(12) / 100 * exp(-3 * par[i].Ts / T));
            for (int n = 0; n < 4; ++n) z[n] += pi / 6 * rho[i] * par[i].m * pow(d[i], n);
        }
        const Big m = z[0] / (pi / 6 * total), free = 1 - z[3];
        const auto g = [&](std::size_t i, std::size_t j) -> Big {  // A.7
            const Big e = d[i] * d[j] / (d[i] + d[j]);
            return 1 / free + e * 3 * z[2] / pow(free, 2) + e * e * 2 * z[2] * z[2] / pow(free, 3);
        };
        const Big hs = (3 * z[1] * z[2] / free + pow(z[2], 3) / (z[3] * free * free) +
                        (pow(z[2], 3) / (z[3] * z[3]) - z[0]) * log(free)) /
                       z[0];  // A.6
        Big chain = 0, first = 0, second = 0;
        for (std::size_t i = 0; i < N; ++i) {
            const Big xi = rho[i] / total;
            chain += xi * (par[i].m - 1) * log(g(i, i));
            for (std::size_t j = 0; j < N; ++j) {  // A.12 to A.15
                const Big off = i == j ? 0 : 1;
                const Big s = (sigma[i] + sigma[j]) / 2 * (1 - off * l);
                const Big e = sqrt(Big(par[i].Ts) * par[j].Ts) * (1 - off * (k + k_T / T)) / T;
                const Big term = xi * rho[j] / total * par[i].m * par[j].m * e * s * s * s;
                first += term;
                second += term * e;
            }
        }
        Big i1 = 0, i2 = 0;
        for (int i = 0; i < 7; ++i) {  // A.16 to A.19
            const auto series = [&](double const(&c)[3][7]) -> Big {
                return c[0][i] + (m - 1) / m * c[1][i] + (m - 1) / m * (m - 2) / m * c[2][i];
            };
            i1 += series(corvane::pcsaft::kDispersionA) * pow(z[3], i);
            i2 += series(corvane::pcsaft::kDispersionB) * pow(z[3], i);
        }
        const Big c1 =
            1 / (1 + m * (8 * z[3] - 2 * z[3] * z[3]) / pow(free, 4) +
                 (1 - m) * (20 * z[3] - 27 * z[3] * z[3] + 12 * pow(z[3], 3) - 2 * pow(z[3], 4)) /
                     pow(free * (2 - z[3]), 2));  // A.11
        const Big disp = -2 * pi * total * i1 * first - pi * total * m * c1 * i2 * second;
        Big sites = 0;
        const std::vector<Big> X = free_sites(rho, sigma, T, g);
        for (std::size_t i = 0; i < N; ++i) {
            const auto site = [&](Big const& x) -> Big { return log(x) - x / 2 + Big(1) / 2; };
            sites +=
                rho[i] * (par[i].donors * site(X[2 * i]) + par[i].acceptors * site(X[2 * i + 1]));
        }
        return (total * (m * hs - chain + disp + polar(rho, total, sigma, T, z[3])) + sites) /
               Big(NA);
    }

    /// A2/(1 − A3/A2) of dipoles, quadrupoles and of both, as Gross & Vrabec (2006), Gross (2005)
    /// and Vrabec & Gross (2008) print it.
    Big polar(std::vector<Big> const& rho, Big const& total, std::vector<Big> const& sigma,
              Big const& T, Big const& eta) const {
        using namespace corvane::pcsaft;
        const Big pi = boost::math::constants::pi<Big>(),
                  unit("7242.97051603992e-24");  // D²/k, K·cm³
        const std::size_t N = par.size();
        const auto factors = [](PolarKind kind, Big m) {
            if (kind != quadrupole_quadrupole && m > 2) m = 2;
            return std::array<Big, 3>{1, (m - 1) / m, (m - 1) / m * (m - 2) / m};
        };
        std::vector<Big> mu(N), Q(N);  // ε/kT·μ*², ε/kT·Q*²
        for (std::size_t i = 0; i < N; ++i) {
            mu[i] = unit * par[i].dipole * par[i].dipole / (par[i].m * pow(sigma[i], 3)) / T;
            Q[i] = unit * Big("1e-16") * par[i].quadrupole * par[i].quadrupole /
                   (par[i].m * pow(sigma[i], 5)) / T;
        }
        Big sum = 0;
        for (PolarKind kind : {dipole_dipole, quadrupole_quadrupole, dipole_quadrupole}) {
            bool dipoles = false, quadrupoles = false;
            for (std::size_t i = 0; i < N; ++i) {
                dipoles = dipoles || mu[i] != 0;
                quadrupoles = quadrupoles || Q[i] != 0;
            }
            if ((kind != quadrupole_quadrupole && !dipoles) ||
                (kind != dipole_dipole && !quadrupoles))
                continue;
            PolarConstants const& c = kPolar[kind];
            Big A2 = 0, A3 = 0;
            for (std::size_t i = 0; i < N; ++i)
                for (std::size_t j = 0; j < N; ++j) {
                    const Big xx = rho[i] * rho[j] / (total * total), s = (sigma[i] + sigma[j]) / 2;
                    const auto f = factors(kind, sqrt(Big(par[i].m) * par[j].m));
                    const Big e =
                        sqrt(Big(par[i].Ts) * par[j].Ts) * (1 - (i == j ? 0 : 1) * (k + k_T / T)) / T;
                    Big J2 = 0;
                    for (int n = 0; n < 5; ++n)
                        for (int w = 0; w < 3; ++w)
                            J2 +=
                                f[w] * (c.a[n][w] + (n < 3 ? c.b[n][w] * e : Big(0))) * pow(eta, n);
                    const Big s3 = pow(sigma[i] * sigma[j], 3), s5 = pow(sigma[i] * sigma[j], 5);
                    if (kind == dipole_dipole)
                        A2 -= pi * total * xx * s3 / pow(s, 3) * mu[i] * mu[j] * J2;
                    if (kind == quadrupole_quadrupole)
                        A2 -= pi * 9 / 16 * total * xx * s5 / pow(s, 7) * Q[i] * Q[j] * J2;
                    if (kind == dipole_quadrupole)
                        A2 -= pi * 9 / 4 * total * xx * s3 * sigma[j] * sigma[j] / pow(s, 5) *
                              mu[i] * Q[j] * J2;
                    for (std::size_t o = 0; o < N; ++o) {
                        const Big xxx = xx * rho[o] / total, sss = sigma[i] * sigma[j] * sigma[o];
                        const Big between = (sigma[i] + sigma[j]) * (sigma[i] + sigma[o]) *
                                            (sigma[j] + sigma[o]) / 8;
                        const auto g = factors(kind, cbrt(Big(par[i].m) * par[j].m * par[o].m));
                        Big J3 = 0;
                        for (int n = 0; n < 4; ++n)
                            for (int w = 0; w < 3; ++w) J3 += g[w] * c.c[n][w] * pow(eta, n);
                        const Big two = pi * pi * total * total * xxx * J3;
                        if (kind == dipole_dipole)
                            A3 -= 4 * two / 3 * pow(sss, 3) / between * mu[i] * mu[j] * mu[o];
                        if (kind == quadrupole_quadrupole)
                            A3 += 4 * two / 3 * 27 / 64 * pow(sss, 5) / pow(between, 3) * Q[i] *
                                  Q[j] * Q[o];
                        if (kind == dipole_quadrupole)
                            A3 -= two * pow(sss, 4) / pow(between, 2) *
                                  (mu[i] * mu[j] * Q[o] + kTwoQuadrupoles * mu[i] * Q[j] * Q[o]);
                    }
                }
            if (A2 != 0) sum += A2 / (1 - A3 / A2);
        }
        return sum;
    }

    /// Donors and acceptors of each component, with the combining rules of Wolbach & Sandler as
    /// Gross & Sadowski (2002), eqs. 2 and 3, print them.
    template <class G>
    std::vector<Big> free_sites(std::vector<Big> const& rho, std::vector<Big> const& sigma,
                                Big const& T, G const& g) const {
        const std::size_t N = par.size();
        std::vector<Big> X(2 * N, 1), next(2 * N), delta(N * N);
        for (std::size_t i = 0; i < N; ++i)
            for (std::size_t j = 0; j < N; ++j) {
                const Big mean = (sigma[i] + sigma[j]) / 2;
                Big kappa = sqrt(Big(par[i].kappa) * par[j].kappa);
                Big epsilon = (Big(par[i].epsilon) + par[j].epsilon) / 2;
                if (cross_volume != 0 && i + j == 1) {  // induced association
                    kappa = cross_volume;
                    epsilon = cross_energy;
                }
                kappa *= pow(sqrt(sigma[i] * sigma[j]) / mean, 3);
                delta[i * N + j] = pow(mean, 3) * g(i, j) * kappa * (exp(epsilon / T) - 1);
            }
        for (int step = 0; step < 2000; ++step) {
            Big change = 0;
            for (std::size_t i = 0; i < N; ++i) {
                Big donor = 1, acceptor = 1;
                for (std::size_t j = 0; j < N; ++j) {
                    donor += rho[j] * par[j].acceptors * X[2 * j + 1] * delta[i * N + j];
                    acceptor += rho[j] * par[j].donors * X[2 * j] * delta[i * N + j];
                }
                next[2 * i] = 1 / donor;
                next[2 * i + 1] = 1 / acceptor;
            }
            for (std::size_t s = 0; s < 2 * N; ++s) {
                change = std::max(change, Big(abs(next[s] / X[s] - 1)));
                X[s] = (X[s] + next[s]) / 2;
            }
            if (change < Big("1e-70")) break;
        }
        return X;
    }

    /// rho^i·T^j·∂^(i+j)Ar/∂rho^i∂T^j of a pure fluid.
    Big pure_derivative(double rho, double T, int i, int j) const {
        const auto Ar = [&](Big const& r, Big const& t) -> Big { return density({r}, t) / r; };
        return scaled_derivative(Ar, rho, T, i, j);
    }

    /// A derivative in rho_i times rho_i, in the total rho times rho, or in T times T.
    enum : int { all = -1, temperature = -2 };
    /// Mixed central difference of the density along two or three of these directions, good to
    /// 1e-17.
    Big derivative(std::vector<double> const& rho, double T, std::vector<int> const& along) const {
        const Big h("1e-9");
        Big sum = 0;
        for (unsigned signs = 0; signs < (1u << along.size()); ++signs) {
            std::vector<Big> n(rho.begin(), rho.end());
            Big t = T, sign = 1;
            std::vector<int> steps(rho.size() + 2, 0);
            for (std::size_t a = 0; a < along.size(); ++a) {
                const int s = signs >> a & 1u ? 1 : -1;
                sign *= s;
                steps[static_cast<std::size_t>(along[a] + 2)] += s;
            }
            t *= 1 + steps[0] * h / 2;
            for (std::size_t i = 0; i < n.size(); ++i) n[i] *= 1 + steps[i + 2] * h / 2;
            for (Big& x : n) x *= 1 + steps[1] * h / 2;
            sum += sign * density(n, t);
        }
        return sum / pow(h, static_cast<int>(along.size()));
    }
};

}  // namespace reference
