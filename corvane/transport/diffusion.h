// Diffusion coefficients from viscosities: the dilute gas by Chapman and Enskog, the liquid by relations of Stokes and
// Einstein's kind, and what joins the two.
#pragma once

#include <cmath>

namespace corvane::inline detail {

/// What two molecules of a dilute gas are to one another.
struct GasPair {
    double M;        ///< 2/(1/M1 + 1/M2), g/mol
    double sigma;    ///< arithmetic mean of the collision diameters, nm
    double epsilon;  ///< geometric mean of ε/k, K
};

/// ε/k of a critical temperature (Chung, Ajlan, Lee, Starling, Ind. Eng. Chem. Res. 27 (1988) 671), K.
inline double energy_of(double Tc) { return Tc / 1.2593; }

/// Collision diameter [nm] that gives the viscosity eta0 [Pa·s] of the dilute gas at T.
double collision_diameter(double T, double M, double epsilon, double eta0);

/// rho·D12 of a dilute gas, mol/(m·s): 3/8·√(kT/2πμ)/(σ²·Ω(1,1)), first approximation of Chapman and Enskog.
double dilute_diffusion(double T, GasPair const& pair);

/// The same by Fuller, Schettler, Giddings, Ind. Eng. Chem. 58(5) (1966) 18, from diffusion volumes [cm³/mol]:
/// D12 = 0.00143·T^1.75/(p·√M·(v1^⅓ + v2^⅓)²), cm²/s, bar.
double fuller_diffusion(double T, double M, double v1, double v2);

/// D = √[(D_gas·η0/η)² + (D·η)²_liquid/η²], m²/s. As rho → 0 it is D_gas, where molecules hardly have room the liquid's.
/// @param gas     rho·D of the dilute gas, mol/(m·s)
/// @param liquid  D·η of the liquid, N
/// @param rho     mol/cm³, > 0
double joined_diffusion(double gas, double liquid, double rho, double eta0, double eta);

/// D·η of self-diffusion in liquids: kT·n^(1/3)/2π (Li, Chang, J. Chem. Phys. 23 (1955) 518), N.
double liquid_self_diffusion(double T, double rho);

/// D·η of a solute at infinite dilution by Wilke and Chang, AIChE J. 1 (1955) 264:
/// 7.4e-15·√(φ·M)·T/V^0.6, N.
/// @param M    molar mass of the solvent, g/mol
/// @param phi  its association factor
/// @param V    volume of the solute at its boiling point, cm³/mol
inline double wilke_chang(double T, double M, double phi, double V) {
    return 7.4e-15 * std::sqrt(phi * M) * T / std::pow(V, 0.6);
}

/// Volume of the liquid at its boiling point from the critical one, cm³/mol (Tyn, Calus, Processing 21 (1975) 16).
inline double boiling_volume(double vc) { return 0.285 * std::pow(vc, 1.048); }

}  // namespace corvane::inline detail
