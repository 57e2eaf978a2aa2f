// Equations of state written in Python, as models of the library.
#pragma once

#include <nanobind/nanobind.h>

#include <array>
#include <vector>

class Model1;
class ModelN;

namespace py {

namespace nb = nanobind;

/// Component `which` of n of an equation. M [kg/mol], start values of the critical point [K, mol/m³].
/// @throws nb::value_error no critical point from these
Model1* python_model1(nb::object const& equation, int which, int n, double M, double T, double rho);
/// The mixture; its components are for the caller to make.
ModelN* python_modelN(nb::object const& equation);
/// alphar, T·∂/∂T, rho·∂/∂rho (and rho·T·∂²/∂rho∂T) at rho [mol/m³].
std::array<double, 4> python_derivatives(nb::object const& equation, double T, double rho,
                                         std::vector<double> const& x);

}  // namespace py
