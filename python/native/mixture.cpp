// Mixtures: what they are made of, and their parameters.
#include "mixture.h"

#include <corvane/mixture/pair_parameters.h>

#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

namespace py {
namespace {
void check_pair(Mixture const& m, int i, int j) {
    if (i < 0 || j < 0 || i >= m.size() || j >= m.size() || i == j)
        throw nb::index_error("no such pair");
}

/// Of a model that does not tell how many parameters a pair has, the first one alone.
void check_parameter(Mixture const& m, int k, int i, int j) {
    check_pair(m, i, j);
    auto const* known = dynamic_cast<corvane::PairParameters const*>(m.model.get());
    if (k < 0 || k >= (known ? known->pair_parameters() : 1) || !m.model->ppar(k, i, j))
        throw nb::index_error("no such parameter");
}

Model1& component(Mixture const& m, int i) {
    if (i < 0 || i >= m.size()) throw nb::index_error("no such component");
    return *m.model->mdl1[i];
}

void add_data(MixtureClass& of) {
    of.def_static("open",
                    [](std::string const& model, std::vector<std::string> const& components,
                       std::vector<int> const& sets, int pair_set, bool estimate, bool predict,
                       std::optional<std::string> const& home) {
                        corvane::MixtureOptions options;
                        options.sets = sets;
                        options.pair_set = pair_set;
                        options.estimate = estimate;
                        options.predict = predict;
                        options.home = home_of(home);
                        return corvane::open_mixture(model, components, options);
                    },
                    nb::arg("model"), nb::arg("components"), nb::arg("sets"), nb::arg("pair_set"),
                    nb::arg("estimate"), nb::arg("predict"), nb::arg("home").none(), "Opens a mixture by names; without a model the best there is.")
        .def_prop_ro("model", [](Mixture const& x) { return x.name(); }, "equation+theory")
        .def_prop_ro("components", [](Mixture const& x) { return x.components; }, "Names in the data tree.")
        .def_prop_ro("chosen", [](Mixture const& x) { return x.chosen; }, "Why this model, where none was named.")
        .def_prop_ro("estimated",
                     [](Mixture const& x) {
                         nb::list pairs;
                         for (auto const& [i, j] : x.estimated) pairs.append(nb::make_tuple(i, j));
                         return pairs;
                     },
                     "Pairs without published parameters.")
        .def_prop_ro("predicted",
                     [](Mixture const& x) {
                         nb::list pairs;
                         for (corvane::PairEstimate const& p : x.predicted)
                             pairs.append(nb::make_tuple(p.i, p.j, p.model, p.expected));
                         return pairs;
                     },
                     "Those of them whose reducing parameters a predictive model gave: i, j, model, expected error.")
        .def_prop_ro("has_ideal", [](Mixture const& x) { return x.ideal; }, "Has every component an ideal-gas table?")
        .def_prop_ro("home", [](Mixture const& x) { return x.home.directory().string(); },
                     "Directory that data are read from first.")
        .def_prop_ro("M",
                     [](Mixture const& x) {
                         std::vector<double> M;
                         for (int i = 0; i < x.size(); ++i)
                             M.push_back(1e-3 * x.model->mdl1[i]->M());
                         return M;
                     },
                     "Molar masses, kg/mol.")
        .def_prop_ro("sets",
                     [](Mixture const& x) {
                         std::vector<int> sets;
                         for (int i = 0; i < x.size(); ++i) sets.push_back(x.model->id(i, i));
                         return sets;
                     },
                     "Numbers of the components' parameter sets.");
}

void add_parameters(MixtureClass& of) {
    of.def("pair_comment",
             [](Mixture const& x, int i, int j) {
                 check_pair(x, i, j);
                 return std::string(x.model->comment(i, j));
             },
             nb::arg("i"), nb::arg("j"), "Remark on the parameters of a pair.")
        .def("pair_parameter",
             [](Mixture const& x, int k, int i, int j) {
                 check_parameter(x, k, i, j);
                 return x.model->param(k, i, j);
             },
             nb::arg("k"), nb::arg("i"), nb::arg("j"), "Parameter k of a pair.")
        .def("set_pair_parameter",
             [](Mixture& x, int k, int i, int j, double value) {
                 check_parameter(x, k, i, j);
                 x.model->param(k, i, j, value);
             },
             nb::arg("k"), nb::arg("i"), nb::arg("j"), nb::arg("value"), "Changes parameter k of a pair.")
        .def("component_parameters",
             [](Mixture const& x, int i) {
                 std::vector<double> p;
                 Model1 const& pure = component(x, i);
                 for (int k = 0; k < pure.mpar(); ++k) p.push_back(pure.param(k));
                 return p;
             },
             nb::arg("i"), "Parameters of the equation of component i, in its own units.")
        .def("set_component_parameter",
             [](Mixture& x, int i, int k, double value) {
                 Model1& pure = component(x, i);
                 if (k < 0 || k >= pure.mpar()) throw nb::index_error("no such parameter");
                 pure.param(k, value);
             },
             nb::arg("i"), nb::arg("k"), nb::arg("value"), "Changes parameter k of component i.");
}
}  // namespace

void add_mixture(nb::module_& m) {
    MixtureClass of(m, "Mixture", "A mixture with its model; corvane.Mixture is for people.");
    add_data(of);
    add_parameters(of);
    add_mixture_states(of);
    add_mixture_curves(of);
    add_mixture_lines(of);
    add_mixture_solids(of);
}

}  // namespace py
