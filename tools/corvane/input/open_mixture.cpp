#include <tools/corvane/input/home.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/phases/report/validity.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace cli {
namespace {
/// Fractions that sum to 1 within this are taken as they are.
constexpr double kSumOfFractions = 1e-9;

struct Composition {
    std::vector<std::string> names;
    Vector<double> x;
    bool composed = true, normalised = false;
};

/// Components and basis from a file: names in the column "component" (or the first), amounts of any
/// size in a column x, y, z, n, mole..., or w, m, mass..., whatever its unit.
void read_file(MixtureRequest& request) {
    std::string const& path = request.composition;
    if (!request.components.empty() || !request.basis.empty())
        throw Misuse("--composition brings the components, their amounts and the basis");
    const CsvFile csv = read_csv(path);
    std::size_t name = 0, amount = csv.header.size();
    for (std::size_t k = 0; k < csv.header.size(); ++k) {
        const ColumnName column(csv.header[k]);
        const auto is = [&](std::initializer_list<char const*> words) {
            return std::any_of(words.begin(), words.end(),
                               [&](char const* word) { return lower(column.name) == word; });
        };
        const bool mole = is({"x", "y", "z", "n", "mole", "moles", "molar", "mole fraction"});
        const bool mass = is({"w", "m", "mass", "mass fraction"});
        if (is({"component", "substance", "name"})) name = k;
        if (!mole && !mass) continue;
        if (amount < csv.header.size())
            throw Failure(fmt::format("{}: two columns with amounts, {} and {}", path,
                                      csv.header[amount], csv.header[k]));
        amount = k;
        request.basis = mass ? "mass" : "mole";
    }
    if (amount == csv.header.size() || amount == name)
        throw Failure(path + ": no column with amounts: x or n (moles), w or m (mass)");
    for (std::size_t row = 0; row < csv.rows.size(); ++row) {
        std::string const& value = csv.rows[row][amount];
        const std::string suffix = value.ends_with('%') ? "%" : value.ends_with("ppm") ? "ppm" : "";
        std::string digits = trimmed(value.substr(0, value.size() - suffix.size()));
        if (const std::size_t comma = digits.find(','); !suffix.empty() && comma != std::string::npos)
            digits[comma] = '.';  // of numbers alone the reader has done that
        if (csv.rows[row][name].empty() || !to_number(digits))
            throw Failure(fmt::format("{}:{}: a component and its amount are needed", path,
                                      csv.lines[row]));
        request.components.push_back(csv.rows[row][name] + '=' + digits + suffix);
    }
}

/// Splits "methane=0.7"; one component may take the remainder.
Composition read_composition(MixtureRequest const& request) {
    if (request.components.empty())
        throw Misuse(request.binary ? "components are needed"
                                    : "components are needed: methane=0.7 propane, or --composition");
    const int n = static_cast<int>(request.components.size());
    Composition result{{}, Vector<double>(n)};
    auto& [names, x, composed, normalised] = result;
    const auto bare = [](std::string const& word) { return word.find('=') == std::string::npos; };
    if ((request.fractions_optional || request.binary || request.ternary) &&
        std::all_of(request.components.begin(), request.components.end(), bare)) {
        names = request.components;
        composed = false;
        x.set(1.0 / n);
        return result;
    }
    int rest = -1, amounts = 0, percentages = 0;
    double sum = 0.0;
    for (int i = 0; i < n; ++i) {
        std::string const& word = request.components[static_cast<unsigned>(i)];
        const std::size_t mark = word.rfind('=');
        names.push_back(word.substr(0, mark));
        if (mark == std::string::npos) {
            if (rest >= 0)
                throw Misuse(fmt::format("{} and {} both lack a mole fraction",
                                         names[static_cast<unsigned>(rest)], word));
            rest = i;
            continue;
        }
        std::string value = word.substr(mark + 1);
        double part = 0.0;  // of the whole, where it says so
        for (auto const& [suffix, size] : {std::pair("%", 1e-2), {"ppm", 1e-6}})
            if (value.ends_with(suffix)) {
                value.resize(value.size() - std::string_view(suffix).size());
                part = size;
            }
        ++(part > 0.0 ? percentages : amounts);
        x[i] = number(value, word.c_str()) * (part > 0.0 ? part : 1.0);
        if (!(x[i] >= 0.0) || (x[i] > 1.0 && (request.basis.empty() || part > 0.0)))
            throw Misuse(fmt::format("{}: a mole fraction lies between 0 and 1{}", word,
                                     x[i] > 1.0 && part == 0.0
                                         ? fmt::format("; write {}% or, of amounts, --basis mole or mass", word)
                                         : ""));
        sum += x[i];
    }
    if (!request.basis.empty() && amounts > 0 && percentages > 0)
        throw Misuse("a composition is in parts (percent, ppm) or in amounts, not both");
    if (rest >= 0) {
        if (sum > 1.0)
            throw Misuse(fmt::format("the other mole fractions leave {} for {}",
                                     shortest(1.0 - sum), names[static_cast<unsigned>(rest)]));
        x[rest] = 1.0 - sum;
    } else if (!(sum > 0.0)) {
        throw Misuse("the mole fractions sum to zero");
    } else if (std::fabs(sum - 1.0) > kSumOfFractions) {
        for (int i = 0; i < n; ++i) x[i] /= sum;
        normalised = true;
    }
    return result;
}

/// Puts the interaction parameters of the command line in place of the stored ones.
void set_kij(std::string const& text, MixtureFluid& mixture) {
    ModelN& model = *mixture.model;
    const auto index = [&](std::string const& word) {
        if (const int i = mixture.index(word); i >= 0) return i;
        throw Misuse(fmt::format("--kij: {} is not a component of the mixture", word));
    };
    for (std::string const& item : split(text, ',')) {
        const std::size_t equals = item.find('=');
        std::size_t plus = item.find('+');
        for (auto const& s : mixture.defined)  // C7+ has one of its own
            if (item.starts_with(s.name + '+')) plus = s.name.size();
        int i = 0, j = 1;
        if (equals == std::string::npos) {
            if (mixture.size() != 2)
                throw Misuse("--kij: name the pair unless there are two components: A+B=0.01");
        } else {
            if (plus == std::string::npos || plus > equals)
                throw Misuse(fmt::format("--kij: '{}' is not of the form A+B=0.01", item));
            i = index(item.substr(0, plus));
            j = index(item.substr(plus + 1, equals - plus - 1));
            if (i == j) throw Misuse("--kij: a pair has two components");
        }
        const double value =
            number(equals == std::string::npos ? item : item.substr(equals + 1), "--kij");
        if (!model.ppar(0, i, j)) throw Failure(*mixture.theory + " has no interaction parameter");
        model.param(0, i, j, value);
        const std::pair pair(std::min(i, j), std::max(i, j));
        if (std::find(mixture.given.begin(), mixture.given.end(), pair) != mixture.given.end())
            throw Misuse(fmt::format("--kij: {} + {} is given twice", mixture.component(i),
                                     mixture.component(j)));
        mixture.given.push_back(pair);
    }
}
/// What --set asks of each component, 0 for nothing.
std::vector<int> component_sets(std::string const& text, std::vector<std::string> const& names,
                                std::vector<corvane::PseudoComponent> const& defined,
                                std::string const& equation) {
    std::vector<int> sets(names.size());
    if (text.empty()) return sets;
    for (std::string const& item : split(text, ',')) {
        const std::size_t equals = item.rfind('=');
        if (equals == std::string::npos) {
            const int number = set_number(item);
            for (std::size_t i = 0; i < sets.size(); ++i)
                if (sets[i] == 0 && !corvane::find(defined, names[i])) sets[i] = number;
            continue;
        }
        std::string name = item.substr(0, equals);
        if (!corvane::find(defined, name))
            name = corvane::substance_name(entered_home(), equation, name);
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end())
            throw Misuse(fmt::format("--set: {} is not a component of the mixture", name));
        if (corvane::find(defined, name))
            throw Misuse(fmt::format("--set: {} is defined here and has no sets", name));
        sets[static_cast<std::size_t>(found - names.begin())] = set_number(item.substr(equals + 1));
    }
    return sets;
}
}  // namespace

int set_number(std::string const& text) {
    const double x = number(text, "--set");
    if (!(x >= 1.0 && x <= 1e6) || x != std::floor(x))
        throw Misuse(fmt::format("--set: {} is not the number of a set", clipped(text)));
    return static_cast<int>(x);
}

void MixtureRequest::add_to(Command& command) {
    command.positional("MODEL", model, "equation and mixing theory: PR+vdW1", true)
        .positionals(binary || ternary ? "COMPONENT" : "COMPONENT=FRACTION", components,
                     binary    ? "two components: all compositions are searched"
                     : ternary ? "three components: all compositions are searched"
                     : solute ? "the solute, then the solvent or solvents with mole fractions"
                     : fractions_optional
                         ? "components, with or without mole fractions; one gets the rest"
                         : "components with mole fractions; one may be left without: it gets the "
                           "rest",
                     binary);
    if (!binary && !solute)
        command.value("--composition", composition,
                      "in place of components: a CSV file with a component in every row, and its "
                      "amount or flow in a column x, n (moles), w or m (mass)",
                      {.type = "FILE"});
    add_pairs(command);
    command.value("--set", sets,
                  "number of the components' parameter sets, or methane=3,propane=1 (default: those "
                  "that the pairs were made for)",
                  {.type = "SETS"});
    add_define(command, define);
}

void MixtureRequest::add_pairs(Command& command) {
    command
        .value("--basis", basis,
               "of the numbers of a composition: mole or mass, fractions or amounts of any size; "
               "without it mole fractions",
               {.one_of = {"mole", "mass"}, .type = "BASIS"})
        .count("--pair-set", pair_set, "number of the pairs' parameter sets")
        .value("--kij", kij,
               "interaction parameter in place of the stored one: 0.01 for a binary, or "
               "methane+propane=0.01,...",
               {.type = "KIJ"})
        .flag("--no-prediction", no_prediction,
              "reducing parameters 1 for pairs of MEOS+GERG without published ones, in place of those that a "
              "predictive model gives");
}

Vector<double> MixtureFluid::mass_fractions(Vector<double> const& at) const {
    Vector<double> w(size());
    double sum = 0.0;
    for (int i = 0; i < size(); ++i) sum += w[i] = at[i] * molar_mass(i);
    for (int i = 0; i < size(); ++i) w[i] /= sum;
    return w;
}

Vector<double> MixtureFluid::mole_fractions(Vector<double> const& w) const {
    Vector<double> moles(size());
    double sum = 0.0;
    for (int i = 0; i < size(); ++i) sum += moles[i] = w[i] / molar_mass(i);
    for (int i = 0; i < size(); ++i) moles[i] /= sum;
    return moles;
}

double MixtureFluid::M(Vector<double> const& at) const {
    double sum = 0.0;
    for (int i = 0; i < size(); ++i) {
        const double M = model->mdl1[i]->M();
        if (at[i] > 0.0 && !(M > 0.0)) return 0.0;
        sum += at[i] * M;
    }
    return sum;
}

double MixtureFluid::molar_mass(int i) const {
    const double M = model->mdl1[i]->M();
    if (!(M > 0.0)) throw Failure(fmt::format("the molar mass of {} is not known", component(i)));
    return M;
}

double MixtureFluid::weight(Vector<double> const& at) const {
    bool known = true;
    for (int i = 0; i < size(); ++i) known = known && model->mdl1[i]->M() > 0.0;
    if (known) return M(at);
    double sum = 0.0;
    for (int i = 0; i < size(); ++i) sum += at[i] * model->mdl1[i]->vcrit();
    return sum;
}

std::string MixtureFluid::composition(Vector<double> const& at) const {
    std::string text;
    for (int i = 0; i < size(); ++i) text += fmt::format(" {}({:.6g})", component(i), at[i]);
    return text;
}

int MixtureFluid::index(std::string const& text) const {
    const auto found =
        std::find(components.begin(), components.end(),
                  corvane::find(defined, text) ? text
                                               : corvane::substance_name(home, *equation, text));
    return found == components.end() ? -1 : static_cast<int>(found - components.begin());
}

std::string MixtureFluid::text() const {
    std::string text = name();
    if (composed) return text + composition(x);
    for (int i = 0; i < size(); ++i) text += std::string(" ") + component(i);
    return text;
}

double MixtureFluid::density(Units units, Vector<double> const& at, double rho) const {
    units.M = M(at);
    return units.from_library(Quantity::density, rho);
}

MixtureFluid open_mixture(MixtureRequest const& asked) {
    MixtureRequest request = asked;
    if (!request.composition.empty()) read_file(request);
    corvane::DataHome const& home = entered_home();
    const bool fraction = request.model.find('=') != std::string::npos;  // "C7+=0.3"
    const std::size_t plus = fraction ? std::string::npos : request.model.find('+');
    if (plus == std::string::npos) {  // no model is named: it is the first component
        const auto pure = corvane::plugins(home).pure;
        if (!request.composition.empty() ||
            std::find(pure.begin(), pure.end(), request.model) != pure.end())
            throw Misuse(fmt::format("{} is not an equation with a mixing theory, such as PR+vdW1",
                                     request.model));
        if (!request.sets.empty()) throw Misuse("--set: name the model that the sets are of");
        request.components.insert(request.components.begin(), std::exchange(request.model, ""));
    }
    Composition composition = read_composition(request);
    const std::string equation =
        plus == std::string::npos ? "" : request.model.substr(0, plus);
    const auto defined = definitions(request.define, composition.names);
    const std::vector<std::string> asked_names = composition.names;
    for (std::string& name : composition.names) {
        if (!corvane::find(defined, name)) name = corvane::substance_name(home, equation, name);
        if (std::count(composition.names.begin(), composition.names.end(), name) > 1)
            throw Misuse(fmt::format("{} is named twice", name));
    }
    MixtureFluid mixture(corvane::open_mixture(
        request.model, composition.names,
        {.sets = request.sets.empty()
                     ? std::vector<int>()
                     : component_sets(request.sets, composition.names, defined, equation),
         .pair_set = request.pair_set,
         .predict = !request.no_prediction,
         .home = home,
         .defined = defined}));
    mixture.defined = defined;
    mixture.asked = asked_names;
    mixture.x = composition.x;
    mixture.composed = composition.composed;
    mixture.normalised = composition.normalised;
    if (request.basis == "mass" && mixture.composed) {
        mixture.x = mixture.mole_fractions(mixture.x);
        mixture.by_mass = true;
    }
    if (request.kij.empty()) return mixture;
    set_kij(request.kij, mixture);
    std::erase_if(mixture.estimated, [&](std::pair<int, int> const& pair) {
        return std::find(mixture.given.begin(), mixture.given.end(), pair) != mixture.given.end();
    });
    mixture.validity = corvane::validity(*mixture.model, mixture.estimated);
    return mixture;
}

std::string ideal_extrapolated(MixtureFluid const& mixture, double T, Units const& units) {
    std::string text;
    for (std::size_t i = 0; mixture.ideal && i < mixture.gases.size(); ++i)
        if (const std::string gas = beyond(mixture.gases[i], T, units); !gas.empty())
            add_note(text, fmt::format("extrapolated: {} of {}", gas,
                                       mixture.component(static_cast<int>(i))));
    return text;
}

namespace {
MixtureFluid open_bare(MixtureRequest const& request, int count, char const* words) {
    MixtureFluid mixture = open_mixture(request);
    if (mixture.size() != count || mixture.composed)
        throw Misuse(fmt::format(
            "give {} components without mole fractions: all compositions are searched", words));
    return mixture;
}
}  // namespace
MixtureFluid open_binary(MixtureRequest const& request) {
    return open_bare(request, 2, "two");
}
MixtureFluid open_ternary(MixtureRequest const& request) {
    return open_bare(request, 3, "three");
}

namespace {
/// Where the parameters of a pair come from that has no published ones.
std::string estimate_of(MixtureFluid const& mixture, int i, int j) {
    for (corvane::PairEstimate const& p : mixture.predicted)
        if (p.i == i && p.j == j)
            return fmt::format("reducing parameters from {}{}, bubble pressures off by some {:.0f} %", p.model,
                               p.model == "PCSAFT+LB" ? fmt::format(" (pair set {})", p.pair_set) : "",
                               100.0 * p.expected);
    if (*mixture.theory == "GERG") return "all reducing parameters 1: may be off by factors";
    const std::string kij = "kij estimated: " + shortest(mixture.model->param(0, i, j));
    if (*mixture.theory != "HV") return kij;
    return kij + fmt::format(
                     ", as {0}+vdW1; the rule wants alpha, C12 and C21 of the pair: corvane fit "
                     "{0}+HV, from "
                     "measured points or those that SRK+PSRK predicts",
                     *mixture.equation);
}
}  // namespace

Heading heading(std::string const& command, MixtureFluid const& mixture) {
    ModelN const& model = *mixture.model;
    Heading head;
    head.command = command;
    head.fields.emplace_back("model", mixture.name());
    std::string components;
    for (int i = 0; i < mixture.size(); ++i)
        if (mixture.composed)
            head.composition.emplace_back(mixture.component(i), mixture.x[i]);
        else
            components += (i > 0 ? ", " : "") + std::string(mixture.component(i));
    if (!mixture.composed) head.fields.emplace_back("components", components);
    if (!mixture.chosen.empty())
        head.remarks.push_back("no model was named: " + mixture.name() + " is taken, " +
                               mixture.chosen);
    for (int i = 0; i < mixture.size(); ++i)
        if (corvane::find(mixture.defined, mixture.component(i)))
            head.remarks.push_back("component " + defined_remark(*model.mdl1[i], Units()));
        else
            head.remarks.push_back(fmt::format("component {}: set {} {{{}}}", mixture.component(i),
                                           model.id(i, i), model.comment(i, i)));
    for (int i = 0; i < mixture.size(); ++i)
        for (int j = i + 1; j < mixture.size(); ++j) {
            const auto among = [&](std::vector<std::pair<int, int>> const& pairs) {
                return std::find(pairs.begin(), pairs.end(), std::pair(i, j)) != pairs.end();
            };
            const std::string names =
                fmt::format("pair {} + {}: ", mixture.component(i), mixture.component(j));
            const auto kij = [&] { return shortest(model.param(0, i, j)); };
            if (among(mixture.given))
                head.remarks.push_back(names + "kij given: " + kij());
            else if (among(mixture.estimated))
                head.remarks.push_back(names + "no published parameters, " + estimate_of(mixture, i, j));
            else
                head.remarks.push_back(fmt::format(
                    "{}set {} {{{}}}{}", names, model.id(i, j), model.comment(i, j),
                    among(mixture.other_sets) ? ", made for other sets of the components" : ""));
        }
    if (mixture.by_mass) head.remarks.emplace_back("mole fractions from those by mass");
    if (mixture.normalised)
        head.remarks.push_back(fmt::format("{} were divided by their sum",
                                           mixture.by_mass ? "masses" : "mole fractions"));
    return head;
}

}  // namespace cli
