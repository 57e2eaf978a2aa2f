// Physical constants (CODATA 2010: Mohr, Taylor, Newell, Rev. Mod. Phys. 84 (2012) 1527) and global
// settings. Units throughout: K, MPa, mol/cm³, cm³/mol, so that p = Z·R·T·rho without factors.
#pragma once

#include <corvane/core/api.h>

inline constexpr CORVANE_API double R = 8.3144621;        ///< molar gas constant, J/(mol K)
inline constexpr CORVANE_API double NA = 6.02214129e+23;  ///< Avogadro constant, 1/mol
inline constexpr CORVANE_API double kB = 1.3806488e-23;   ///< Boltzmann constant, J/K
inline constexpr CORVANE_API double hP = 6.62606957e-34;  ///< Planck constant, J s
inline constexpr CORVANE_API double pref = 0.1;           ///< standard pressure, MPa

/// Relative increment of the volume finder and of its derivative steps.
inline constexpr CORVANE_API double th_inc0 = 2e-05;
/// Relative initial step of the numerical differentiation in the property calculus.
inline constexpr CORVANE_API double th_inc1 = 0.001;
/// Relative root tolerance of the volume finder; absolute step where a partial density is zero.
inline constexpr CORVANE_API double th_veps = 1e-09;

inline constexpr CORVANE_API int th_pathlength = 153;  ///< length of a path buffer, characters
inline constexpr CORVANE_API int th_namelength = 32;   ///< length of a name field, characters
inline constexpr CORVANE_API int th_eqnlength = 20;    ///< length of an equation identifier
inline constexpr CORVANE_API int th_commlength = 80;   ///< length of a comment line, characters

/// Home directory of the data that the library writes (friction-theory sets): corvane/models beside
/// the library where that folder's corvane/ exists, as in an installed tree, wherever it was moved;
/// otherwise <prefix>/lib/corvane/models of the prefix set when the library was built.
extern CORVANE_API char const* const th_home;
