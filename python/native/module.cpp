// The extension module corvane._native: models opened by name, arrays in and out. Everything that a
// person calls is in the Python files beside it.
#include "module.h"

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {

void add_catalogue(nb::module_& m) {
    const auto home = [](std::optional<std::string> const& given) {
        return given ? corvane::DataHome(*given) : corvane::DataHome::find();
    };
    m.def("find_home", [home](std::optional<std::string> const& given) {
        return home(given).directory().string();
    });
    m.def("substances", [home](std::string const& text, std::optional<std::string> const& given) {
        const corvane::Substances index(home(given));
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
    });
    m.def("substance_name", [home](std::string const& text, std::optional<std::string> const& given) {
        return corvane::substance_name(home(given), "", text);
    });
    m.def("equations_for", [home](std::string const& substance, std::optional<std::string> const& given) {
        return corvane::equations_for(home(given), substance);
    });
    m.def("mixture_models", [home](std::optional<std::string> const& given) {
        return corvane::plugins(home(given)).mixture;
    });
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
    nanobind::exception<corvane::OpenFailure>(m, "OpenError", PyExc_LookupError);
    nanobind::exception<corvane::EquilibriumFailure>(m, "EquilibriumError", PyExc_ArithmeticError);
    py::add_catalogue(m);
    py::add_fluid(m);
    py::add_mixture(m);
    py::add_equation(m);
}
