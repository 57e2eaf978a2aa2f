// The extension module corvane._native: models opened by name, arrays in and out. Everything that a
// person calls is in the Python files beside it.
#include "module.h"

#include <corvane/core/version.h>

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {

void add_catalogue(nb::module_& m) {
    m.def("find_home", [](std::optional<std::string> const& given) {
        return home_of(given).directory().string();
    }, nb::arg("home").none(), "The directory that data and equations are read from first.");
    m.def("written_name", [](std::string const& name) { return corvane::written_name(name); }, nb::arg("name"),
          "A name of the data home as chemists write it.");
    m.def("substances", [](std::string const& text, std::optional<std::string> const& given) {
        const corvane::Substances index(home_of(given));
        nb::list found;
        const auto add = [&](corvane::Substance const& s) {
            nb::dict d;
            d["name"] = s.name;
            d["formula"] = s.formula;
            d["cas"] = s.cas;
            d["aliases"] = s.aliases;
            d["M"] = 1e-3 * s.M;
            d["T_critical"] = s.Tc;
            d["p_critical"] = kMega * s.pc;
            d["acentric_factor"] = s.omega;
            d["T_triple"] = s.Ttriple;
            d["T_boiling"] = s.Tb;
            found.append(d);
        };
        if (text.empty())
            for (auto const& s : index.all()) add(s);
        else
            for (auto const* s : index.search(text)) add(*s);
        return found;
    }, nb::arg("text"), nb::arg("home").none(), "Substances as dictionaries, in SI units; all without a text.");
    m.def("substance_name", [](std::string const& text, std::optional<std::string> const& given) {
        return corvane::substance_name(home_of(given), "", text);
    }, nb::arg("text"), nb::arg("home").none(), "Name in the data tree of a substance given in any way.");
    m.def("equations_for", [](std::string const& substance, std::optional<std::string> const& given) {
        return corvane::equations_for(home_of(given), substance);
    }, nb::arg("substance"), nb::arg("home").none(), "Equations with parameters for a substance, best first.");
    m.def("mixture_models", [](std::optional<std::string> const& given) {
        return corvane::plugins(home_of(given)).mixture;
    }, nb::arg("home").none(), "Models of mixtures: equation+theory.");
}

}  // namespace py

namespace {
/// The library's exceptions that are no std::exception, in words.
void translate(std::exception_ptr const& p, void*) {
    const auto raise = [](char const* text) {
        std::string words = text;
        while (!words.empty() && words.back() == '\n') words.pop_back();
        PyErr_SetString(PyExc_ValueError, words.c_str());
    };
    try {
        std::rethrow_exception(p);
    } catch (ThException const& e) {
        raise(e.message());
    } catch (MthException const& e) {
        raise(e.message());
    }
}
}  // namespace

NB_MODULE(_native, m) {
    nanobind::set_leak_warnings(false);  // fluids that notebooks keep when the interpreter ends are no fault
    nanobind::register_exception_translator(translate);
    nanobind::exception<corvane::OpenFailure>(m, "OpenError", PyExc_LookupError).attr("__doc__") =
        "A substance, equation, parameter set or data home that is not there, and what is there instead.";
    nanobind::exception<corvane::EquilibriumFailure>(m, "EquilibriumError", PyExc_ArithmeticError)
        .attr("__doc__") = "No certified result: there is none, or the search gave up; the text says which.";
    m.attr("__version__") = CORVANE_VERSION;
    py::add_catalogue(m);
    py::add_fluid(m);
    py::add_mixture(m);
    py::add_table(m);
    py::add_equation(m);
    py::add_outputs(m);
    py::add_transport(m);
#ifdef CORVANE_FIT
    py::add_fit(m);
#endif
}
