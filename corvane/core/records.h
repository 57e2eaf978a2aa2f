// Context records that reach objective functions through an untyped pointer. Nothing in them is
// owned.
#pragma once

#include <corvane/core/containers.h>

class Model1;
class ModelN;

/// State of a pure fluid.
struct pass1 {
    Model1 const* mdl1 = nullptr;
    int mode = 0;      ///< phase or root option of the caller
    double p = 0.0;    ///< MPa
    double rho = 0.0;  ///< mol/cm³
    double T = 0.0;    ///< K
};

/// State of a mixture.
struct passN {
    ModelN const* mdlN = nullptr;
    int i = 0;                          ///< component index
    double p = 0.0;                     ///< MPa
    double rho = 0.0;                   ///< mol/cm³
    double T = 0.0;                     ///< K
    double h = 0.0;                     ///< increment or target value of the caller
    Vector<double> const* x = nullptr;  ///< mole fractions
};

/// Two-phase residual of a mixture.
struct pass_ffeN {
    ModelN const* m = nullptr;
    int mode = 0;    ///< 0: T is given; 1: p is given and T is the last fit variable
    double p = 0.0;  ///< MPa, mode 1
    double T = 0.0;  ///< K, mode 0
    Vector<double> const* xl = nullptr;  ///< mole fractions of the given phase
};

/// Phase of a component in an equilibrium.
struct phdesc {
    int species = 0;
    int phase = 0;
};
