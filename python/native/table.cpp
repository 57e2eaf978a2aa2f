// Tables of properties.
#include "module.h"

#include <corvane/core/file_error.h>
#include <corvane/table/property_table.h>
#include <corvane/table/table_states.h>

#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {
namespace {
using corvane::PropertyTable;
using corvane::TableInputs;
using corvane::TableStates;

/// Of p and rho: MPa in Pa, mol/cm³ in mol/m³.
double si(std::string const& name) {
    return name == "p" || name == "rho" ? kMega : 1.0;
}
/// ValueError for what a table cannot be of, OSError for files.
template <class F>
auto translated(F const& f) {
    try {
        return f();
    } catch (corvane::FileError const& e) {
        PyErr_SetString(PyExc_OSError, e.what().c_str());
    } catch (ThException const& e) {
        PyErr_SetString(PyExc_ValueError, e.number == th_no_ideal
                                              ? "no ideal-gas data: h and u are not known"
                                              : "a range, a tolerance (1e-10 to 1e-2) or halvings (0 to 16) that no table has");
    }
    throw nb::python_error();
}

PropertyTable build(TableStates const& states, std::vector<double> const& range, double tolerance,
                    int halvings, std::string const& note) {
    if (range.size() != 4) throw nb::value_error("four numbers");
    corvane::TableDesign d = states.design(range[0] / kMega, range[1] / kMega, range[2], range[3]);
    d.tolerance = tolerance;
    d.halvings = halvings;
    d.note = note;
    Tracing tracing;
    std::optional<PropertyTable> table;
    traced(tracing, [&] {
        try {
            table = PropertyTable::build(d, states.sample(), tracing.progress);
        } catch (ThException const&) {
            if (!tracing.interrupted) throw;
        }
        return true;
    });
    return std::move(*table);
}
TableInputs inputs_of(PropertyTable const& t) {
    std::string const& b = t.design().b.name;
    return b == "T" ? TableInputs::pT : b == "h" ? TableInputs::ph : TableInputs::rhou;
}
nb::dict checked(PropertyTable const& t, TableStates const& states, int points, unsigned seed) {
    const corvane::TableCheck c = [&] {
        const nb::gil_scoped_release released;
        return t.check(states.sample(), points, seed);
    }();
    nb::dict worst, all;
    for (std::size_t k = 0; k < c.worst.size(); ++k) worst[t.columns()[k].name.c_str()] = c.worst[k];
    all["points"] = c.points, all["answered"] = c.answered, all["without"] = c.without;
    all["other"] = c.other, all["worst"] = worst;
    return all;
}
nb::tuple at(PropertyTable const& t, Column a, Column b, int threads, bool single) {
    same_length(a.shape(0), b.shape(0));
    const std::size_t n = a.shape(0), width = t.columns().size();
    const double to_a = 1 / si(t.design().a.name), to_b = 1 / si(t.design().b.name);
    std::vector<double> unit;
    for (auto const& c : t.columns()) unit.push_back(si(c.name));
    Out out({n, width});
    Report report(n);
    const bool finished = each(out, report, n, threads, [&](std::size_t i, double* row) {
        if (!t.at(a(i) * to_a, b(i) * to_b, row)) throw NotTabulated();
        for (std::size_t k = 0; k < width; ++k) row[k] *= unit[k];
    });
    return result(out, report, finished, single);
}
}  // namespace

void add_table(nb::module_& m) {
    nb::class_<PropertyTable>(m, "PropertyTable", "Tabulated states; corvane.PropertyTable is for people.")
        .def_static("of_fluid",
                    [](corvane::Fluid const& f, int inputs, std::vector<double> const& range, double tolerance,
                       int halvings, std::string const& note) {
                        return translated([&] {
                            return build(TableStates(*f.model, static_cast<TableInputs>(inputs)), range, tolerance,
                                         halvings, note);
                        });
                    },
                    nb::arg("fluid"), nb::arg("inputs"), nb::arg("range"), nb::arg("tolerance"), nb::arg("halvings"), nb::arg("note"),
                    "Of a fluid, by (0) p and T, (1) p and h, (2) rho and u within four numbers (SI).")
        .def_static("of_mixture",
                    [](corvane::Mixture const& f, Column z, int inputs, std::vector<double> const& range,
                       double tolerance, int halvings, std::string const& note) {
                        return translated([&] {
                            return build(TableStates(*f.model, vector_of(z), static_cast<TableInputs>(inputs)), range,
                                         tolerance, halvings, note);
                        });
                    },
                    nb::arg("mixture"), nb::arg("z"), nb::arg("inputs"), nb::arg("range"), nb::arg("tolerance"), nb::arg("halvings"), nb::arg("note"),
                    "Of mole fractions z, as of_fluid.")
        .def_static("read", [](std::string const& path) { return translated([&] { return PropertyTable::read(path); }); },
                    nb::arg("path"), "From a file. OSError: none, or damaged.")
        .def("write", [](PropertyTable const& t, std::string const& path) { translated([&] { return t.write(path), 0; }); },
             nb::arg("path"), "As a whole or not at all.")
        .def("at", &at, nb::arg("a"), nb::arg("b"), nb::arg("threads"), nb::arg("single"),
             "All columns (SI), with what became of every element.")
        .def("check_fluid",
             [](PropertyTable const& t, corvane::Fluid const& f, int points, unsigned seed) {
                 return translated([&] { return checked(t, TableStates(*f.model, inputs_of(t)), points, seed); });
             },
             nb::arg("fluid"), nb::arg("points"), nb::arg("seed"), "Against the equation at random points.")
        .def("check_mixture",
             [](PropertyTable const& t, corvane::Mixture const& f, Column z, int points, unsigned seed) {
                 return translated([&] { return checked(t, TableStates(*f.model, vector_of(z), inputs_of(t)), points, seed); });
             },
             nb::arg("mixture"), nb::arg("z"), nb::arg("points"), nb::arg("seed"), "Against certified flashes at random points.")
        .def_prop_ro("inputs",
                     [](PropertyTable const& t) { return std::vector{t.design().a.name, t.design().b.name}; },
                     "Names of what it goes by.")
        .def_prop_ro("range",
                     [](PropertyTable const& t) {
                         auto const &a = t.design().a, &b = t.design().b;
                         return std::vector{a.from * si(a.name), a.to * si(a.name), b.from * si(b.name), b.to * si(b.name)};
                     },
                     "From and to, of both (SI).")
        .def_prop_ro("columns",
                     [](PropertyTable const& t) {
                         std::vector<std::string> names;
                         for (auto const& c : t.columns()) names.push_back(c.name);
                         return names;
                     },
                     "Names of what it gives.")
        .def_prop_ro("tolerance", [](PropertyTable const& t) { return t.design().tolerance; }, "Of its values.")
        .def_prop_ro("halvings", [](PropertyTable const& t) { return t.design().halvings; }, "Of the range at most.")
        .def_prop_ro("note", [](PropertyTable const& t) { return t.design().note; }, "What it is of.")
        .def_prop_ro("cells", [](PropertyTable const& t) { return t.leaves(); }, "That answer.")
        .def_prop_ro("coverage", [](PropertyTable const& t) { return t.coverage(); }, "Share of the range that they cover.");
}

}  // namespace py
