// What tables are made of: the stable states of a pure fluid or of a mixture of fixed composition.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>
#include <corvane/table/property_table.h>

#include <memory>

class Model1;
class ModelN;

namespace corvane {

/// The pairs that a table goes by: K, MPa, mol/cm³, J/mol. p and rho are logarithmic.
enum class TableInputs { pT, ph, rhou };

/// States for PropertyTable::build, with their columns:
///
/// pT    rho, h, s, u, cv, cp, w
/// ph    T, rho, s, u, q, cv, cp, w
/// rhou  T, p, h, s, q, cv, cp, w
///
/// in K, MPa, mol/cm³, J/mol, J/(mol K), m/s; of the whole. cv, cp and w are of one phase, q (vapour, or
/// the lightest phase, over the whole) of several, else not-a-number. T, p, rho, cv, cp and w count
/// errors relative to the value; h and u in R·Tc (of a mixture Σ z·Tc), s in R, q in 1.
///
/// Of a pure fluid as pure_states, of a mixture the certified flashes (mixture_state), of which
/// rho and u take many each. A state that is refused is none. The model must outlive this and what
/// sample() gives; threads may share both while nobody changes the model.
class CORVANE_API TableStates {
  public:
    /// Precomputes the saturation of a fluid where that can be done (SaturationExpansion).
    /// @throws ThException 3 ph or rhou without an ideal-gas table
    TableStates(Model1 const& model, TableInputs inputs);
    /// @throws ThException 3 as above, for a component
    TableStates(ModelN const& model, Vector<double> z, TableInputs inputs);

    /// Axes and columns, for p (MPa) or rho (mol/cm³) and T (K), h or u (J/mol); the rest as it stands.
    TableDesign design(double a_from, double a_to, double b_from, double b_to) const;
    TableSample sample() const;

  private:
    struct Source;
    std::shared_ptr<Source const> source_;
};

}  // namespace corvane
