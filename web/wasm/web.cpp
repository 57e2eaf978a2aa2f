// What JavaScript needs beside the certified interface: names of substances, binary parameters, and
// a progress function that reaches the page.
#include <corvane/binding/certified.h>
#include <corvane/catalogue/names.h>
#include <corvane/catalogue/parameter_sets.h>
#include <corvane/catalogue/substances.h>
#include <corvane/core/collected.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/mixture/pair_parameters.h>

#include <emscripten.h>

using namespace corvane::binding;

// Progress of the running trace; onProgress of the module is a function of the number of points.
EM_JS(void, report_progress, (int points), {
    if (Module["onProgress"]) Module["onProgress"](points);
});

namespace {
const corvane::DataHome& home() {
    static const corvane::DataHome root("/");
    return root;
}

int report(int points, void*) {
    report_progress(points);
    return 1;  // who cancels ends the worker
}

/// Parameter k of a pair, checked.
double* pair_parameter(CorvaneMixture const* m, int i, int j, int k) {
    ModelN& model = *m->mixture.model;
    const int n = m->mixture.size();
    auto const* const pairs = dynamic_cast<corvane::PairParameters const*>(&model);
    if (i < 0 || j < 0 || i >= n || j >= n || i == j) throw BadArgument("no such pair");
    if (!pairs || k < 0 || k >= pairs->pair_parameters()) throw BadArgument("no such parameter");
    return model.ppar(k, i, j);
}
/// Path of a file of the mixing theory; "" if there is none.
std::string theory_file(corvane::Mixture const& m, std::string const& of, int set) {
    const std::string file = "/CorvaneS/parameters/" + *m.equation + "/" + *m.theory + "/" + of +
                             ";" + std::to_string(set);
    return corvane::has_data_file(file) ? file : "";
}
/// Of the parameters of a pair.
std::string pair_file(CorvaneMixture const* mixture, int i, int j) {
    pair_parameter(mixture, i, j, 0);
    auto const& m = mixture->mixture;
    const auto name = [&](int k) { return m.components[static_cast<unsigned>(k)]; };
    for (auto const& [a, b] : {std::pair(i, j), std::pair(j, i)}) {
        const std::string file = theory_file(m, name(a) + "+" + name(b), m.model->id(i, j));
        if (!file.empty()) return file;
    }
    return "";
}
/// Of what the theory knows of a component by itself, such as its groups; it has the pairs' number.
std::string mixing_file(CorvaneMixture const* mixture, int i) {
    auto const& m = mixture->mixture;
    if (i < 0 || i >= m.size() || m.size() < 2) throw BadArgument("no such component");
    return theory_file(m, m.components[static_cast<unsigned>(i)], m.model->id(i, i == 0 ? 1 : 0));
}
}  // namespace

extern "C" {

/// The name in the data tree of a substance that is named in any way; a failure says what is near.
int corvane_web_substance(char const* text, char* buffer, int size, CorvaneError* error) {
    return certified<CorvaneObject>(error, "substance", nullptr, [&] {
        return write(corvane::substance_name(home(), "", text), buffer, size);
    });
}

/// A name of the data tree as chemists write it.
int corvane_web_written(char const* name, char* buffer, int size, CorvaneError* error) {
    return certified<CorvaneObject>(error, "substance", nullptr, [&] {
        return write(corvane::written_name(name), buffer, size);
    });
}

/// Names with the text within them, their CAS number, formula or a synonym; one a line.
int corvane_web_search(char const* text, char* buffer, int size, CorvaneError* error) {
    return certified<CorvaneObject>(error, "search", nullptr, [&] {
        const corvane::Substances index(home());
        std::string names;
        for (auto const* found : index.search(text)) names += found->name + "\n";
        return write(names, buffer, size);
    });
}

int corvane_web_pair_count(CorvaneMixture const* mixture, CorvaneError* error) {
    return certified(error, "pair", mixture, [&] {
        auto const* const pairs =
            dynamic_cast<corvane::PairParameters const*>(mixture->mixture.model.get());
        return pairs ? pairs->pair_parameters() : 0;
    });
}
double corvane_web_pair_get(CorvaneMixture const* mixture, int i, int j, int k,
                            CorvaneError* error) {
    return certified(error, "pair", mixture, [&] { return *pair_parameter(mixture, i, j, k); });
}
int corvane_web_pair_set(CorvaneMixture* mixture, int i, int j, int k, double value,
                         CorvaneError* error) {
    return certified(error, "pair", mixture, [&] {
        if (!std::isfinite(value)) throw BadArgument("a parameter is not a number");
        *pair_parameter(mixture, i, j, k) = value;
        return 1;
    });
}
/// Where the parameters of a pair come from; "" where nothing is said.
int corvane_web_pair_source(CorvaneMixture const* mixture, int i, int j, char* buffer, int size,
                            CorvaneError* error) {
    return certified(error, "pair", mixture, [&] {
        const std::string file = pair_file(mixture, i, j);
        return write(file.empty() ? "" : corvane::parameter_notes(file).source, buffer, size);
    });
}
/// The parameter file of a pair as it stands; "" where there is none.
int corvane_web_pair_file(CorvaneMixture const* mixture, int i, int j, char* buffer, int size,
                          CorvaneError* error) {
    return certified(error, "pair", mixture, [&] {
        const std::string file = pair_file(mixture, i, j);
        return write(file.empty() ? "" : corvane::file_contents(file.c_str()), buffer, size);
    });
}

/// The same of what the mixing theory knows of component i by itself; "" where there is no such file.
int corvane_web_mixing_source(CorvaneMixture const* mixture, int i, char* buffer, int size,
                              CorvaneError* error) {
    return certified(error, "mixing", mixture, [&] {
        const std::string file = mixing_file(mixture, i);
        return write(file.empty() ? "" : corvane::parameter_notes(file).source, buffer, size);
    });
}
int corvane_web_mixing_file(CorvaneMixture const* mixture, int i, char* buffer, int size,
                            CorvaneError* error) {
    return certified(error, "mixing", mixture, [&] {
        const std::string file = mixing_file(mixture, i);
        return write(file.empty() ? "" : corvane::file_contents(file.c_str()), buffer, size);
    });
}

/// The parameter file of a substance as it stands.
int corvane_web_set_file(char const* equation, char const* substance, int set, char* buffer,
                         int size, CorvaneError* error) {
    return certified<CorvaneObject>(error, "parameters", nullptr, [&] {
        const std::string file = std::string("/CorvaneS/parameters/") + equation + "/" + substance +
                                 ";" + std::to_string(set);
        return write(corvane::file_contents(file.c_str()), buffer, size);
    });
}
/// Where a fluid's ideal-gas heat capacities come from; "" where nothing is said.
int corvane_web_ideal_source(CorvaneFluid const* fluid, char* buffer, int size,
                             CorvaneError* error) {
    return certified(error, "ideal gas", fluid, [&] {
        auto const& ideal = fluid->fluid.ideal;
        return write(ideal ? ideal->source : "", buffer, size);
    });
}
/// The same of component i of a mixture whose components all have a table.
int corvane_web_gas_source(CorvaneMixture const* mixture, int i, char* buffer, int size,
                           CorvaneError* error) {
    return certified(error, "ideal gas", mixture, [&] {
        auto const& m = mixture->mixture;
        if (i < 0 || i >= m.size()) throw BadArgument("no such component");
        return write(m.ideal ? m.gases[static_cast<unsigned>(i)].source : "", buffer, size);
    });
}

/// The progress function to hand to what traces.
CorvaneProgress* corvane_web_progress() {
    return report;
}

}  // extern "C"
