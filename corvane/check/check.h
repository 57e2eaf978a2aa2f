// Is an equation of state what the library takes it for? Contract, identities and densities of a
// model, over a grid of states, against slow and sure methods.
#pragma once

#include <corvane/core/api.h>

#include <limits>
#include <string>
#include <vector>

class Model1;
class ModelN;

namespace corvane {
struct Fluid;

/// One check over all its states, with the worst of them.
struct Check {
    std::string name;    ///< "Z is 1 + rho·∂Ar/∂rho"
    long states = 0;     ///< at which it was made; 0: it does not apply
    double worst = 0.0;  ///< largest deviation over what rounding and the check's own error allow
    /// Of the worst state: K, mol/cm³, MPa; not-a-number what the check does not ask for.
    double T = std::numeric_limits<double>::quiet_NaN();
    double rho = std::numeric_limits<double>::quiet_NaN();
    double p = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> x = {};  ///< mole fractions of a mixture
    std::string what;            ///< what was found there, in words

    bool passed() const { return !(worst > 1.0); }
};

/// Where an equation is asked; 0 stands for what its critical point says.
struct CheckRange {
    double T_low = 0.0;   ///< K; 0.4·Tc
    double T_high = 0.0;  ///< K; 3·Tc
    double top = 0.0;     ///< densest state, mol/cm³; 2.9/vc
    /// Where the set is stated to hold, K and MPa. Outside, nobody asks for the signs of heat
    /// capacity and compressibility, nor whether the isotherm rises on.
    struct Stated {
        double T_min = 0.0, T_max = std::numeric_limits<double>::infinity(), p_max = T_max;
    };
    Stated stated = {};
};

/// That of an opened set: as stated with it, and not below its lowest temperature if that lies
/// between 0.4·Tc and Tc.
CORVANE_API CheckRange check_range(Fluid const& fluid);

/// Checks a loaded pure model. Derivatives are compared with Ridders' extrapolated differences,
/// which know their error (Ridders, Adv. Eng. Softw. 4 (1982) 75) and the rounding of what they
/// difference, densities with a scan of the
/// isotherm, saturation with equal potentials and the Clausius–Clapeyron equation. Heat capacities
/// must be positive where the fluid is stable, the ideal-gas part included where it is loaded.
/// Parameters are written during the call and put back; nobody else may use the model meanwhile.
/// About 0.1 s. Does not throw: what the model throws is a failed check.
CORVANE_API std::vector<Check> check_equation(Model1& model, CheckRange const& range = {});

/// The same for a loaded mixture: potentials, their derivatives, Euler's and Gibbs–Duhem's
/// relations, pure limits, components in another order, a component split into two alike.
CORVANE_API std::vector<Check> check_mixture(ModelN& mixture, CheckRange const& range = {});

/// A figure that was printed for an equation, with the state that it was printed for.
struct PrintedValue {
    enum class Of {
        Ar,
        Z,
        pressure,             ///< MPa
        saturation_pressure,  ///< MPa; of a mixture at its bubble point
        liquid_density,       ///< mol/cm³; these two of pure saturated fluids
        vapour_density,
        mixture_parameter  ///< element `number` of ModelN::mixpar, at whatever T that is for
    };
    Of of = Of::Ar;
    double T = 0.0, rho = 0.0;   ///< K; mol/cm³ where the state is not saturated
    std::vector<double> x = {};  ///< mole fractions of a mixture
    double value = 0.0;
    double within = 0.0;        ///< what rounding of value and state may make of it
    double gas_constant = 0.0;  ///< of the source, J/(mol K), for pressures; 0: the library's
    std::string source;
    /// Parameters that it was printed for, where they are not those of the set:
    /// Model1::param(number), ModelN::param(number, i, j).
    struct Parameter {
        int number = 0, i = 0, j = 0;
        double value = 0.0;
    };
    std::vector<Parameter> parameters = {};
    int number = 0;  ///< of a mixture parameter
};

/// Compares with printed figures, the only check that sees an error which is the same in every
/// slot: a wrong constant of the formula. Parameters are put back, nobody else may use the model
/// meanwhile. Does not throw: what the model throws is a failed check.
CORVANE_API std::vector<Check> check_values(Model1& model, std::vector<PrintedValue> const& values);
CORVANE_API std::vector<Check> check_values(ModelN& mixture,
                                            std::vector<PrintedValue> const& values);

}  // namespace corvane
