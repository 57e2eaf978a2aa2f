#include <tools/corvane/input/catalogue.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/substances.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/suggest.h>
#include <tools/corvane/text/text.h>

#include <corvane/ideal/load_ideal.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <unistd.h>

namespace cli {
namespace {
std::string parameter_path(std::string const& eos, std::string const& substance, int set) {
    return fmt::format("CorvaneS/parameters/{}/{};{}", eos, substance, set);
}

bool is_there(std::string const& path) {
    return access(path.c_str(), R_OK) == 0;
}

std::unique_ptr<Model1, corvane::Detach> attach(std::string const& eos) {
    try {
        if (!is_file_name(eos)) throw ThException(th_cannot_open);
        if (Model1* model = attach1(eos.c_str()))
            return std::unique_ptr<Model1, corvane::Detach>(model);
        throw ThException(th_generic);
    } catch (ThException const& e) {
        const Plugins found = plugins();
        auto const& known = found.pure;
        auto const& mixtures = found.mixture;
        if (std::find(mixtures.begin(), mixtures.end(), eos) != mixtures.end())
            throw Failure(fmt::format(
                "{} is a model of mixtures; here an equation of a pure substance is wanted: {}",
                eos, join(known, ", ")));
        const std::string file = fmt::format("libth{}.dll", clipped(eos));
        if (std::find(known.begin(), known.end(), eos) != known.end())
            throw Failure(fmt::format("the plug-in {} cannot be used{}: {}", file,
                                      e.number == th_generic ? ", it lacks create1 or destroy1" : "",
                                      describe(e)));
        std::string near = did_you_mean(eos, known);
        if (near.empty() && !known.empty()) near = ": equations: " + join(known, ", ");
        throw Failure(
            fmt::format("no plug-in ./CorvaneS/{0} or ./{0}: {1}{2}", file, describe(e), near));
    }
}

std::string in_words(std::vector<int> const& sets) {
    std::vector<std::string> words;
    for (int set : sets) words.push_back(std::to_string(set));
    return join(words, ", ");
}

/// The name in the data tree of what a person calls `text`.
std::string tree_name(std::string const& eos, std::string const& text) {
    const Substances index;
    const auto found = index.find(text);
    if (found.size() == 1) return found.front()->name;
    if (found.size() > 1) {
        std::vector<std::string> names;
        for (Substance const* s : found) names.push_back(s->name);
        throw Failure(
            fmt::format("'{}' is not one substance: {}", clipped(text), join(names, ", ")));
    }
    std::vector<std::string> names;
    for (auto const& [name, sets] : parameter_sets(eos)) names.push_back(name);
    const std::string near = index.suggestion(text, names);
    throw Failure(fmt::format("unknown substance {}{}", clipped(text),
                              near.empty() ? " (corvane list shows all)" : near));
}

void expect_sets(std::string const& eos, std::string const& substance) {
    if (!parameter_sets(eos, substance).empty()) return;
    std::vector<std::string> others;
    for (std::string const& other : parameter_folders())
        if (!parameter_sets(other, substance).empty()) others.push_back(other);
    throw Failure(
        fmt::format("{} has no parameter set for {}{}", eos, substance,
                    others.empty() ? "" : "; equations that have one: " + join(others, ", ")));
}

/// Sets request.substance and request.set to an existing parameter file.
void locate(FluidRequest& request) {
    std::vector<int> sets;
    if (is_file_name(request.substance)) sets = parameter_sets(request.eos, request.substance);
    if (sets.empty()) {
        request.substance = tree_name(request.eos, request.substance);
        sets = parameter_sets(request.eos, request.substance);
    }
    expect_sets(request.eos, request.substance);
    if (request.set == 0)
        request.set = sets.front();
    else if (std::find(sets.begin(), sets.end(), request.set) == sets.end())
        throw Failure(fmt::format("set {} of {} {} does not exist; sets: {}", request.set,
                                  request.eos, request.substance, in_words(sets)));
}

void load_ideal(Fluid& fluid) {
    Model1& model = *fluid.model;
    const std::string path = corvane::ideal_table(model);
    fluid.ideal = ideal_notes(path);
    if (!fluid.ideal) return;
    asking("ideal-gas table " + path, [&] {
        corvane::load_ideal(model);
        model.ideal.CVm(298.15);  // an empty table is found out here
    });
}

bool below(double x, double limit) {
    return std::isfinite(limit) && x < limit * (1.0 - 1e-12);
}
bool above(double x, double limit) {
    return std::isfinite(limit) && x > limit * (1.0 + 1e-12);
}

std::string stated_range(ParameterNotes const& notes, Units const& units) {
    std::string text;
    const auto add = [&](Quantity quantity, char const* words, double x) {
        if (std::isfinite(x)) text += fmt::format(" {} {}", words, units.text(quantity, x));
    };
    add(Quantity::temperature, "from", notes.Tmin);
    add(Quantity::temperature, "to", notes.Tmax);
    add(Quantity::pressure, text.empty() ? "up to" : "and up to", notes.pmax);
    return text.empty() ? " not known" : text;
}
}  // namespace

std::string Fluid::name() const {
    return fmt::format("{} {}", model->eos() ? model->eos() : "", model->name());
}

std::string substance_name(std::string const& eos, std::string const& text) {
    if (is_file_name(text) && !parameter_sets(eos, text).empty()) return text;
    return tree_name(eos, text);
}

std::string component_name(std::string const& eos, std::string const& text) {
    const std::string name = substance_name(eos, text);
    expect_sets(eos, name);
    return name;
}

Fluid open_fluid(FluidRequest const& asked) {
    FluidRequest request = asked;
    Fluid fluid;
    fluid.model = attach(request.eos);
    const int first = request.set == 0 ? 1 : request.set;
    if (is_file_name(request.substance) &&
        is_there(parameter_path(request.eos, request.substance, first)))
        request.set = first;
    else
        locate(request);

    Model1& model = *fluid.model;
    model.name(request.substance.c_str());
    model.id(request.set);
    const std::string path = parameter_path(request.eos, request.substance, request.set);
    asking("parameter file " + path, [&] { model.load(request.eos.c_str()); });
    for (double x : {model.Tcrit(), model.pcrit(), model.vcrit()})
        if (!(x > 0.0) || !std::isfinite(x))
            throw Failure(fmt::format("parameter file {}: no usable critical point", path));
    if (model.name() != request.substance || model.id() != request.set)
        tell(fmt::format("warning: {} says that it holds {};{}", path, model.name(), model.id()));
    fluid.notes = parameter_notes(request.eos, request.substance, request.set);
    load_ideal(fluid);
    return fluid;
}

Heading heading(std::string const& command, Fluid const& fluid, Units const& units) {
    Model1 const& model = *fluid.model;
    Heading result;
    result.command = command;
    result.fields = {{"eos", std::string(model.eos() ? model.eos() : "")},
                     {"substance", std::string(model.name())},
                     {"set", static_cast<long>(model.id())},
                     {"comment", std::string(model.comment())}};
    result.remarks.push_back("stated range of the set:" + stated_range(fluid.notes, units));
    return result;
}

std::string beyond(IdealNotes const& gas, double T, Units const& units) {
    const double low = std::fmax(gas.Tmin, gas.first), high = std::fmin(gas.Tmax, gas.last);
    const auto text = [&](char const* words, double limit) {
        return fmt::format("ideal-gas data {} {}", words, units.text(Quantity::temperature, limit));
    };
    return below(T, low) ? text("below", low) : above(T, high) ? text("above", high) : "";
}

std::string beyond(ParameterNotes const& range, double T, double p, Units const& units) {
    std::string limits;
    const auto add = [&](bool outside, char const* words, Quantity quantity, double limit) {
        if (outside)
            limits += fmt::format("{}{} {}", limits.empty() ? "" : ", ", words,
                                  units.text(quantity, limit));
    };
    add(below(T, range.Tmin), "below", Quantity::temperature, range.Tmin);
    add(above(T, range.Tmax), "above", Quantity::temperature, range.Tmax);
    add(above(p, range.pmax), "above", Quantity::pressure, range.pmax);
    return limits;
}

std::string extrapolated(Fluid const& fluid, double T, double p, bool with_ideal,
                         Units const& units) {
    std::string limits = beyond(fluid.notes, T, p, units);
    if (with_ideal && fluid.ideal) {
        const std::string gas = beyond(*fluid.ideal, T, units);
        if (!gas.empty()) limits += (limits.empty() ? "" : ", ") + gas;
    }
    return limits.empty() ? "" : "extrapolated: " + limits;
}

void add_note(std::string& notes, std::string const& note) {
    if (note.empty()) return;
    notes += notes.empty() ? note : "; " + note;
}

}  // namespace cli
