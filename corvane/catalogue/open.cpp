#include <corvane/catalogue/open.h>
#include <corvane/catalogue/pair_estimate.h>
#include <corvane/catalogue/substances.h>
#include <corvane/catalogue/suggest.h>
#include <corvane/core/collected.h>
#include <corvane/core/file_error.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/ideal/load_ideal.h>
#include <corvane/mixture/loading.h>
#include <corvane/phases/report/validity.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
namespace {
/// The order in which an equation is chosen for a substance.
constexpr std::array kBest{"MEOS", "PCSAFT", "PR", "SRK"};

std::string in_words(std::vector<int> const& numbers) {
    std::string text;
    for (int n : numbers) text += (text.empty() ? "" : ", ") + std::to_string(n);
    return text;
}

bool contains(std::vector<std::string> const& names, std::string const& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Runs what reads a file; its exceptions become an OpenFailure that names it.
template <class F>
void reading(std::string const& what, std::string const& file, F f) {
    const auto fail = [&](std::string const& why) {
        throw OpenFailure(what + " (" + file + "): " + why, file);
    };
    try {
        f();
    } catch (FileError const& e) {
        throw OpenFailure(what + ": " + e.what(), e.path.empty() ? file : e.path, e.line);
    } catch (ThException const& e) {
        fail(trimmed(e.message()));
    } catch (MthException const& e) {
        fail(trimmed(e.message()));
    }
}

/// Attaches a plug-in of one kind, or says which there are.
template <class Attach>
auto attached(DataHome const& home, std::string const& name, bool mixture, Attach attach) {
    const std::string file = home.file("CorvaneS/libth" + name + ".dll").string();
    const Plugins all = plugins(home);
    auto const &known = mixture ? all.mixture : all.pure, &others = mixture ? all.pure : all.mixture;
    if (!contains(known, name)) {
        const std::string near = contains(others, name) ? "" : did_you_mean(name, known);
        throw OpenFailure((contains(others, name)
                               ? name + " is a model of mixtures, not an equation of a substance"
                               : "no equation " + clipped(name) + " in " + home.tree().string()) +
                              (!near.empty()   ? near
                               : known.empty() ? ""
                                               : "; there are " + join(known, ", ")),
                          file);
    }
    decltype(attach()) model = nullptr;
    reading("the plug-in cannot be used", file, [&] {
        model = attach();
        if (!model) throw ThException(th_generic);
    });
    return model;
}

void check_critical_point(Model1 const& model, std::string const& file) {
    for (double x : {model.Tcrit(), model.pcrit(), model.vcrit()})
        if (!(x > 0.0) || !std::isfinite(x))
            throw OpenFailure(file + " has no usable critical point", file);
}

/// Loads the ideal-gas table that belongs to a model's parameter set, and returns its notes;
/// nothing if there is none. Within a ReadingFrom the home.
std::optional<IdealNotes> load_ideal_of(DataHome const& home, Model1& model) {
    if (!is_file_name(model.name())) return std::nullopt;
    const std::string table = ideal_table(model);
    const std::string file = home.file(table).string();
    auto notes = ideal_notes(file);
    if (notes) reading("the ideal-gas table", file, [&] {
            load_ideal(model);
            model.ideal.CVm(298.15);  // an empty table is found out here
        });
    return notes;
}

/// The set to load where none is named: 1, or the first there is.
int choose_set(DataHome const& home, std::string const& equation, std::string const& substance,
               int asked) {
    if (has_parameter_set(home, equation, substance, asked > 0 ? asked : 1))
        return asked > 0 ? asked : 1;
    const auto sets = parameter_sets(home, equation, substance);
    if (sets.empty()) {
        const auto others = equations_for(home, substance);
        throw OpenFailure(
            equation + " has no parameters for " + substance +
            (others.empty() ? "" : "; equations that have: " + join(others, ", ")));
    }
    if (asked <= 0) return sets.front();
    throw OpenFailure(equation + " has no set " + std::to_string(asked) + " for " + substance +
                      "; sets: " + in_words(sets));
}
}  // namespace

namespace {
/// The number after a label in the file of a pair; 0 if there is none.
int number_in(std::string const& text, std::string const& label) {
    const std::size_t at = text.find("\n" + label + ":\t");
    return at == std::string::npos ? 0 : std::atoi(text.c_str() + at + label.size() + 3);
}

/// Are all pairs published under a number? fits(a, b, text) may refuse the file of one, in which
/// component a comes first. folder: equation/theory.
template <class Fits>
bool all_published(DataHome const& home, std::string const& folder,
                   std::vector<std::string> const& names, int number, Fits const& fits) {
    const auto published = [&](std::size_t i, std::size_t j) {
        for (auto [a, b] : {std::pair(i, j), std::pair(j, i)}) {
            const std::string text = file_contents(
                home.file("CorvaneS/parameters/" + folder + '/' + names[a] + '+' + names[b] + ';' +
                          std::to_string(number))
                    .c_str());
            if (!text.empty()) return fits(a, b, text);
        }
        return false;
    };
    for (std::size_t i = 0; i < names.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (!published(i, j)) return false;
    return true;
}

/// The first number under which all pairs are published: 1, or another if they were made for the
/// sets that the components have anyway. 1 if there is none.
int choose_pair_set(Mixture const& mixture) {
    constexpr int kMost = 9;
    auto const& names = mixture.components;
    const auto own = [&](std::size_t i) {
        return choose_set(mixture.home, *mixture.equation, names[i], 0);
    };
    for (int number = 1; number <= kMost; ++number) {
        const auto fits = [&](std::size_t a, std::size_t b, std::string const& text) {
            return number == 1 ||
                   (number_in(text, "id1") == own(a) && number_in(text, "id2") == own(b));
        };
        if (all_published(mixture.home, *mixture.equation + '/' + *mixture.theory, names, number,
                          fits))
            return number;
    }
    return 1;
}

/// What open_mixture does where no model is named.
Mixture open_best(std::vector<std::string> const& components, MixtureOptions options) {
    if (!options.sets.empty() || options.pair_set > 0)
        throw OpenFailure("numbers of parameter sets need the model that they are of, such as PCSAFT+LB");
    struct Candidate {
        char const *equation, *theory;
        std::vector<int> pair_sets;
    };
    if (!options.home) options.home = DataHome::find();
    DataHome const& home = *options.home;
    const auto known = plugins(home).mixture;
    const auto take = [&](std::string const& model, std::string const& why) {
        Mixture mixture = open_mixture(model, components, options);
        mixture.chosen = why;
        return mixture;
    };
    std::vector<std::string> names;
    for (std::string const& text : components)
        if (!find(options.defined, text)) names.push_back(substance_name(home, "", text));
    const bool listed = names.size() == components.size();
    for (Candidate const& c :
         {Candidate{"MEOS", "GERG", {1, 2}}, Candidate{"PCSAFT", "LB", {3, 1, 2, 4}}}) {
        const std::string model = std::string(c.equation) + '+' + c.theory;
        const auto has = [&](std::string const& name) {
            return contains(equations_for(home, name), c.equation);
        };
        if (!listed || !contains(known, model) || !std::all_of(names.begin(), names.end(), has))
            continue;
        for (int number : c.pair_sets)
            if (all_published(home, std::string(c.equation) + '/' + c.theory, names, number,
                              [](auto...) { return true; })) {
                options.pair_set = names.size() > 1 ? number : 0;
                return take(model, "all pairs are published");
            }
    }
    if (listed && contains(known, "SRK+PSRK"))
        try {
            return take("SRK+PSRK", "not all pairs are published for better ones, and the groups of "
                                    "all components are");
        } catch (OpenFailure const&) {  // a component or an interaction is not
        }
    return take("PR+vdW1", "no better one has published parameters for all pairs");
}
}  // namespace

std::vector<std::string> equations_for(DataHome const& home, std::string const& substance) {
    std::vector<std::string> names;
    const auto has = [&](std::string const& name) {  // mostly set 1, which needs no folder read
        return has_parameter_set(home, name, substance, 1) ||
               !parameter_sets(home, name, substance).empty();
    };
    for (char const* name : kBest)
        if (has(name)) names.emplace_back(name);
    for (std::string const& name : equations(home))
        if (!contains(names, name) && has(name)) names.push_back(name);
    return names;
}

std::string substance_name(DataHome const& home, std::string const& equation,
                           std::string const& text) {
    if (!equation.empty() && has_parameter_set(home, equation, text, 1)) return text;
    const Substances index(home);
    const auto found = index.find(text);
    if (found.size() == 1) return found.front()->name;
    if (found.size() > 1) {
        std::vector<std::string> names;
        names.reserve(found.size());
        for (Substance const* s : found) names.push_back(s->name);
        throw OpenFailure("'" + clipped(text) + "' is not one substance: " + join(names, ", "));
    }
    std::vector<std::string> names;
    for (auto const& [name, sets] : parameter_sets(home, equation)) names.push_back(name);
    if (contains(names, text)) return text;
    const std::string near = index.suggestion(text, names);
    throw OpenFailure("unknown substance '" + clipped(text) + "'" +
                      (near.empty() ? "; all are in " + (home.tree() / "substances.tsv").string()
                                    : near));
}

bool doubtful(Fluid const& fluid) {
    const double ratio = fluid.model->Tcrit() / fluid.notes.Tc;
    return ratio < 0.9 || ratio > 1.25;
}

Fluid open(std::string const& equation, std::string const& substance, FluidOptions const& options) {
    Fluid fluid{nullptr, equation, "", 1, {}, {}, options.home ? *options.home : DataHome::find()};
    DataHome const& home = fluid.home;
    const ReadingFrom from(home.names());
    PseudoComponent const* const defined = find(options.defined, substance);
    if (defined) {
        fluid.equation = equation.empty() ? "PR" : equation;
        fluid.substance = substance;
    } else if (equation.empty()) {
        fluid.substance = substance_name(home, equation, substance);
        const auto all = equations_for(home, fluid.substance);
        if (all.empty()) throw OpenFailure("no equation has parameters for " + fluid.substance);
        fluid.equation = all.front();
        if (all.size() > 1 && options.set == 0) {
            Fluid first = open(all.front(), fluid.substance, options);
            for (std::size_t k = 1; k < all.size() && doubtful(first); ++k) {
                Fluid other = open(all[k], fluid.substance, options);
                if (!doubtful(other)) return other;
            }
            return first;
        }
    }
    fluid.model.reset(attached(home, fluid.equation, false,
                               [&] { return attach1(fluid.equation.c_str()); }));
    if (defined) {
        fluid.model->id(1);
        define(*fluid.model, *defined);
        fluid.notes = parameter_notes("");
        return fluid;
    }
    if (fluid.substance.empty()) fluid.substance = substance_name(home, equation, substance);
    fluid.set = choose_set(home, fluid.equation, fluid.substance, options.set);
    fluid.notes = parameter_notes(home, fluid.equation, fluid.substance, fluid.set);
    Model1& model = *fluid.model;
    model.name(fluid.substance.c_str());
    model.id(fluid.set);
    const std::string file =
        parameter_file(home, fluid.equation, fluid.substance, fluid.set).string();
    reading("the parameters cannot be read", file, [&] { model.load(fluid.equation.c_str()); });
    check_critical_point(model, file);
    fluid.ideal = load_ideal_of(home, model);
    return fluid;
}

namespace {
void name_components(Mixture& mixture, std::vector<std::string> const& components,
                     MixtureOptions const& options) {
    for (std::string const& text : components) {
        std::string found = find(options.defined, text)
                                ? text
                                : substance_name(mixture.home, *mixture.equation, text);
        if (contains(mixture.components, found)) throw OpenFailure(found + " is named twice");
        mixture.components.push_back(std::move(found));
    }
}

/// Names and set numbers of components and pairs; what load_estimating is to do with each component.
std::vector<ComponentPlan> planned(Mixture& mixture, MixtureOptions const& options) {
    ModelN& model = *mixture.model;
    const int n = mixture.size();
    const int pair_set = options.pair_set > 0 ? options.pair_set
                         : options.sets.empty() && options.defined.empty()
                             ? choose_pair_set(mixture)
                             : 1;
    std::vector<ComponentPlan> plans(static_cast<unsigned>(n));
    for (int i = 0; i < n; ++i) {
        std::string const& component = mixture.components[static_cast<unsigned>(i)];
        for (int j = 0; j < i; ++j) model.id(i, j, pair_set);
        if (PseudoComponent const* const defined = find(options.defined, component)) {
            define(*model.mdl1[i], *defined);
            plans[static_cast<unsigned>(i)] = {1, true};
            continue;
        }
        const int asked = options.sets.empty() ? 0 : options.sets[static_cast<unsigned>(i)];
        const int set = choose_set(mixture.home, *mixture.equation, component, asked);
        model.mdl1[i]->name(component.c_str());
        model.mdl1[i]->id(asked > 0 || set > 1 ? set : -1);  // −1: what the pairs were made for
        plans[static_cast<unsigned>(i)].set = asked;
    }
    return plans;
}

void load_gases(Mixture& mixture, std::vector<ComponentPlan> const& plans) {
    DataHome const& home = mixture.home;
    for (int i = 0; i < mixture.size(); ++i) {
        Model1& component = *mixture.model->mdl1[i];
        check_critical_point(component, parameter_file(home, *mixture.equation, component.name(),
                                                       component.id()).string());
        const auto notes = plans[static_cast<unsigned>(i)].ready ? std::optional<IdealNotes>()
                                                                 : load_ideal_of(home, component);
        if (notes)
            mixture.gases.push_back(*notes);
        else
            mixture.ideal = false;
    }
}
}  // namespace

Mixture open_mixture(std::string const& name, std::vector<std::string> const& components,
                     MixtureOptions const& options) {
    if (name.empty()) return open_best(components, options);
    const std::size_t plus = name.find('+');
    if (plus == std::string::npos || !is_file_name(name))
        throw OpenFailure("'" + clipped(name) + "' is not an equation with a mixing theory, such as PR+vdW1");
    Mixture mixture{std::make_unique<std::string const>(name.substr(0, plus)),
                    std::make_unique<std::string const>(name.substr(plus + 1)),
                    nullptr,
                    {},
                    {},
                    {},
                    {},
                    {},
                    true,
                    {},
                    options.home ? *options.home : DataHome::find(),
                    ""};
    DataHome const& home = mixture.home;
    char const *const equation = mixture.equation->c_str(), *const theory = mixture.theory->c_str();
    if (components.empty()) throw OpenFailure("a mixture needs components");
    if (!options.sets.empty() && options.sets.size() != components.size())
        throw OpenFailure("as many parameter sets as components, or none, can be named");
    name_components(mixture, components, options);
    const ReadingFrom from(home.names());
    mixture.model.reset(
        attached(home, name, true, [&] { return attachN(equation, theory); }));
    ModelN& model = *mixture.model;
    reading("components cannot be made", home.file("CorvaneS/libth" + *mixture.equation + ".dll").string(),
            [&] { model.alloc(mixture.size(), equation); });
    model.mth = theory;
    const std::vector<ComponentPlan> plans = planned(mixture, options);
    reading("the parameters cannot be read",
            home.file("CorvaneS/parameters/" + *mixture.equation).string(), [&] {
                if (options.estimate)
                    mixture.estimated = load_estimating(model, equation, theory, plans, mixture.other_sets);
                else
                    model.load(equation, theory);
            });
    mixture.validity = validity(model, mixture.estimated);
    if (options.predict && name == "MEOS+GERG")
        for (auto const& [i, j] : mixture.estimated)
            if (auto pair = estimate_reducing(home, model, i, j)) mixture.predicted.push_back(*pair);
    load_gases(mixture, plans);
    return mixture;
}

}  // namespace corvane
