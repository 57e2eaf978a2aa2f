// The numbers that carry derivatives, and the opening of models that are written in Python.
#include "jet.h"
#include "module.h"
#include "python_model.h"

#include <corvane/core/files.h>

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

#include <cmath>

namespace py {
namespace {
/// Reads the component's ideal-gas table from a data home; false without one.
bool add_ideal(Model1& model, std::optional<std::string> const& home, std::string const& name) {
    model.name(name.c_str());
    if (!home) return false;
    const corvane::ReadingFrom from(home_of(home).names());
    model.ideal.load();
    return true;
}

corvane::Fluid python_fluid(nb::object object, double M, double T, double rho, std::string const& name,
                            std::optional<std::string> const& home) {
    std::unique_ptr<Model1, corvane::Detach> model(python_model1(object, 0, 1, M, T, rho));
    corvane::Fluid fluid{.model = std::move(model),
                         .equation = "Python",
                         .substance = name,
                         .notes = {},
                         .ideal = {},
                         .home = corvane::DataHome::find()};
    if (add_ideal(*fluid.model, home, name)) fluid.ideal.emplace();
    return fluid;
}

corvane::Mixture python_mixture(nb::object object, std::vector<double> const& M, std::vector<double> const& T,
                                std::vector<double> const& rho, std::vector<std::string> const& names,
                                std::vector<std::optional<std::string>> const& homes) {
    const int n = static_cast<int>(names.size());
    std::unique_ptr<ModelN, corvane::Detach> model(python_modelN(object));
    corvane::Mixture mixture{.equation = std::make_unique<std::string const>("Python"),
                             .theory = std::make_unique<std::string const>("Python"),
                             .model = std::move(model),
                             .components = names,
                             .estimated = {},
                             .validity = {},
                             .home = corvane::DataHome::find()};
    mixture.model->mdl1.size(n);
    for (int i = 0; i < n; ++i) mixture.model->mdl1[i] = nullptr;
    for (int i = 0; i < n; ++i) {
        mixture.model->mdl1[i] = python_model1(object, i, n, M[i], T[i], rho[i]);
        mixture.ideal = add_ideal(*mixture.model->mdl1[i], homes[i], names[i]) && mixture.ideal;
    }
    return mixture;
}

/// An operator for numbers and Jets; arrays get their turn by NotImplemented, and work element by element.
template <class F>
auto with(F f) {
    return [f](Jet const& a, nb::handle b) -> nb::object {
        if (nb::isinstance<Jet>(b)) return nb::cast(f(a, nb::cast<Jet const&>(b)));
        const bool number = PyFloat_Check(b.ptr()) || PyLong_Check(b.ptr()) ||
                            (nb::hasattr(b, "ndim") && nb::cast<int>(b.attr("ndim")) == 0);
        if (!number) return nb::borrow(Py_NotImplemented);
        const double x = PyFloat_AsDouble(b.ptr());
        if (PyErr_Occurred()) throw nb::python_error();
        return nb::cast(f(a, x));
    };
}
Jet inverse(Jet const& a) {
    return a.pow(-1.0);
}
double inverse(double a) {
    return 1 / a;
}
Jet power(double base, Jet const& exponent) {
    return (exponent * std::log(base)).exp();
}
}  // namespace

void add_equation(nb::module_& m) {
    nb::class_<Jet>(m, "Jet", "A number with its derivatives, as `Equation.alphar` receives it.")
        .def_prop_ro("value", &Jet::value, "Without the derivatives.")
        .def("__neg__", [](Jet const& a) { return -a; })
        .def("__pos__", [](Jet const& a) { return a; })
        .def("__add__", with([](auto const& a, auto const& b) { return a + b; }),
             nb::sig("def __add__(self, arg: object, /) -> Jet"))
        .def("__radd__", with([](auto const& a, auto const& b) { return a + b; }),
             nb::sig("def __radd__(self, arg: object, /) -> Jet"))
        .def("__sub__", with([](auto const& a, auto const& b) { return a + -b; }),
             nb::sig("def __sub__(self, arg: object, /) -> Jet"))
        .def("__rsub__", with([](auto const& a, auto const& b) { return -a + b; }),
             nb::sig("def __rsub__(self, arg: object, /) -> Jet"))
        .def("__mul__", with([](auto const& a, auto const& b) { return a * b; }),
             nb::sig("def __mul__(self, arg: object, /) -> Jet"))
        .def("__rmul__", with([](auto const& a, auto const& b) { return a * b; }),
             nb::sig("def __rmul__(self, arg: object, /) -> Jet"))
        .def("__truediv__", with([](auto const& a, auto const& b) { return a * inverse(b); }),
             nb::sig("def __truediv__(self, arg: object, /) -> Jet"))
        .def("__rtruediv__", with([](auto const& a, auto const& b) { return inverse(a) * b; }),
             nb::sig("def __rtruediv__(self, arg: object, /) -> Jet"))
        .def("__pow__", with([](auto const& a, auto const& b) { return a.pow(b); }),
             nb::sig("def __pow__(self, arg: object, /) -> Jet"))
        .def("__rpow__", with([](Jet const& a, auto const& b) {
                 if constexpr (std::is_same_v<std::decay_t<decltype(b)>, double>)
                     return power(b, a);
                 else
                     return b.pow(a);
             }),
             nb::sig("def __rpow__(self, arg: object, /) -> Jet"))
        .def("__abs__", [](Jet const& a) { return a.value() < 0 ? -a : a; })
        .def("__lt__", [](Jet const& a, double b) { return a.value() < b; }, nb::is_operator())
        .def("__le__", [](Jet const& a, double b) { return a.value() <= b; }, nb::is_operator())
        .def("__gt__", [](Jet const& a, double b) { return a.value() > b; }, nb::is_operator())
        .def("__ge__", [](Jet const& a, double b) { return a.value() >= b; }, nb::is_operator())
        .def("exp", &Jet::exp, "exp, with its derivatives.")
        .def("expm1", &Jet::expm1, "expm1, with its derivatives.")
        .def("log", &Jet::log, "log, with its derivatives.")
        .def("log1p", &Jet::log1p, "log1p, with its derivatives.")
        .def("sqrt", &Jet::sqrt, "sqrt, with its derivatives.")
        .def("sin", &Jet::sin, "sin, with its derivatives.")
        .def("cos", &Jet::cos, "cos, with its derivatives.")
        .def("tanh", &Jet::tanh, "tanh, with its derivatives.")
        .def("arctan", &Jet::arctan, "arctan, with its derivatives.")
        .def("__repr__", [](Jet const& a) { return "Jet(" + std::to_string(a.value()) + ")"; });
    m.def(
        "python_derivatives",
        [](nb::object object, double T, double rho, std::vector<double> const& x) {
            const auto d = python_derivatives(object, T, rho, x);
            return nb::make_tuple(d[0], d[1], d[2]);
        },
        nb::arg("equation"), nb::arg("T"), nb::arg("rho"), nb::arg("x"),
        "alphar, T·∂alphar/∂T and rho·∂alphar/∂rho at T (K) and rho (mol/m³).");
    m.def("python_fluid", &python_fluid, nb::arg("equation"), nb::arg("M"), nb::arg("T_critical"),
          nb::arg("rho_critical"), nb::arg("name"), nb::arg("home") = nb::none(),
          "A fluid whose equation is an object with alphar (SI units).");
    m.def("python_mixture", &python_mixture, nb::arg("equation"), nb::arg("M"), nb::arg("T_critical"),
          nb::arg("rho_critical"), nb::arg("names"), nb::arg("homes"),
          "A mixture whose equation is an object with alphar (SI units).");
}

}  // namespace py
