#include <tools/corvane/input/home.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/substances.h>
#include <corvane/state/reference.h>

#include <algorithm>
#include <utility>

namespace cli {

void Options::add_output(Command& command) {
    command.flag("--csv", csv_, "comma-separated values")
        .flag("--json", json_, "JSON, with all digits")
        .excludes("--json", "--csv")
        .flag("--full", style.full, "17 digits, so that output can be input again")
        .count("--precision", style.precision, "significant digits of text and CSV (default 7)")
        .flag("--no-heading", bare_, "leave out the lines on where the numbers come from")
        .value("--home", data_,
               "data home, which holds CorvaneS: what it lacks is read from the installed one", {.type = "DIRECTORY"});
}

void Options::add_units(Command& command) {
    const auto unit = [&](char const* name, std::string& value, char const* what, Quantity q) {
        const auto names = unit_names(q);
        const std::string text = std::string(what) + " in and out: " + join(names, ", ");
        command.value(name, value, text.c_str(),
                      {.one_of = names, .type = "UNIT", .spelling = corvane::text::unit_spelling});
    };
    unit("--unit-T", units.temperature, "of temperatures", Quantity::temperature);
    unit("--unit-p", units.pressure, "of pressures", Quantity::pressure);
    unit("--unit-rho", units.density, "of densities", Quantity::density);
    unit("--unit-v", units.volume, "of volumes", Quantity::volume);
    unit("--unit-h", units.energy, "of h, u, g, a", Quantity::energy);
    unit("--unit-s", units.entropy, "of s and heat capacities", Quantity::entropy);
    unit("--unit-w", units.speed, "of speeds of sound", Quantity::speed);
    unit("--unit-eta", units.viscosity, "of viscosities", Quantity::viscosity);
    command
        .value("--units", preset_,
               "all units: si (K, Pa, J/mol), bar (C, bar, kJ/kg), us (F, psi, BTU/lb), mass (K, "
               "MPa, kJ/kg)",
               {.one_of = {"si", "bar", "us", "mass"}, .type = "PRESET"})
        .flag("--molar", molar_, "J/mol, mol/cm3 (the default)")
        .flag("--mass", units.mass, "kJ/kg, kg/m3")
        .excludes("--mass", "--molar");
}

void Options::add_fluid(Command& command) {
    command
        .positionals("SUBSTANCE", words,
                     "[EOS] SUBSTANCE: equation of state (PR, SRK ...; without one the best that "
                     "there is), then name, synonym, sum formula or CAS number")
        .value("--set", set, "number of the parameter set (default: 1 or the first)", {.type = "N"});
    add_define(command, define);
}

bool Options::names_mixture() const {
    std::string const& first = words.front();
    if (first.find('+') != std::string::npos && !corvane::find(definitions(define), first)) return true;
    return std::any_of(words.begin(), words.end(),
                       [](std::string const& word) { return word.find('=') != std::string::npos; });
}

void Options::to_mixture(MixtureRequest& request) const {
    request.model = words.front();
    request.components.assign(words.begin() + 1, words.end());
    request.sets = set;
    request.define = define;
}

namespace {
constexpr std::pair<char const*, corvane::ReferenceState> kReferences[] = {
    {"table", corvane::ReferenceState::table},   {"formation", corvane::ReferenceState::formation},
    {"IIR", corvane::ReferenceState::IIR},       {"ASHRAE", corvane::ReferenceState::ASHRAE},
    {"NBP", corvane::ReferenceState::NBP},       {"triple", corvane::ReferenceState::triple}};

corvane::ReferenceState reference_of(std::string const& name) {
    for (auto const& [known, state] : kReferences)
        if (name == known) return state;
    throw Misuse("no reference state " + name);
}

char const* in_words(corvane::ReferenceState which) {
    switch (which) {
        case corvane::ReferenceState::table:
            return "u = 0 and s = 0 for the ideal gas at the start of its table and 1 mol/cm3";
        case corvane::ReferenceState::formation:
            return "enthalpy of formation and standard entropy at 0.1 MPa";
        case corvane::ReferenceState::IIR:
            return "h = 200 kJ/kg and s = 1 kJ/(kg K) for the saturated liquid at 0 C";
        case corvane::ReferenceState::ASHRAE:
            return "h = 0 and s = 0 for the saturated liquid at -40 C";
        case corvane::ReferenceState::NBP:
            return "h = 0 and s = 0 for the saturated liquid at 1 atm";
        case corvane::ReferenceState::triple:
            break;
    }
    return "u = 0 and s = 0 for the saturated liquid at the triple point";
}

/// @throws Failure naming the substance
void move_reference(Model1& model, corvane::ReferenceState which, double T_triple) {
    const std::string what = std::string("reference state of ") + model.name();
    if (which == corvane::ReferenceState::triple && !(T_triple > 0.0))
        throw Failure(what + ": its triple point is not known");
    asking(what, [&] { corvane::set_reference(model, which, T_triple); });
}
}  // namespace

void Options::add_reference(Command& command) {
    std::vector<std::string> names;
    for (auto const& [name, state] : kReferences) names.emplace_back(name);
    command.value("--reference", reference_,
                  "zero of energies and entropies: table (of the ideal-gas data, default), "
                  "formation, IIR, ASHRAE, NBP, triple (steam tables)",
                  {.one_of = names, .type = "STATE"});
}

std::string Options::set_reference(Fluid& fluid) const {
    const auto which = reference_of(reference_);
    if (!fluid.ideal) {
        if (which != corvane::ReferenceState::table)
            throw Failure(fluid.name() + ": --reference needs ideal-gas data: " +
                          describe(ThException(th_no_ideal)));
        return "no ideal-gas heat capacities for this substance: total properties are left out";
    }
    double T_triple = 0.0;
    if (which == corvane::ReferenceState::triple) {
        const corvane::Substances index(entered_home());
        for (auto const* s : index.find(fluid.substance)) T_triple = s->Ttriple;
    }
    move_reference(*fluid.model, which, T_triple);
    if (which == corvane::ReferenceState::table)
        return "reference state: u = 0 and s = 0 for the ideal gas at " +
               units.text(Quantity::temperature, fluid.ideal->first) + " and 1 mol/cm3";
    return std::string("reference state: ") + in_words(which);
}

std::string Options::set_reference(MixtureFluid& mixture) const {
    if (!mixture.ideal) {
        if (reference_ != "table")
            throw Failure(mixture.name() + ": --reference needs ideal-gas data of all components");
        return "a component has no ideal-gas data: total properties are left out";
    }
    const auto which = reference_of(reference_);
    Vector<double> const& triple = mixture.validity.T_triple;
    for (int i = 0; i < mixture.size(); ++i)
        move_reference(*mixture.model->mdl1[i], which, i < triple.size() ? triple[i] : 0.0);
    return std::string("zero of energies and entropies, for each pure component: ") +
           in_words(which);
}

std::string Options::other_references() const {
    return reference_ == "table" ? "; --reference IIR, ASHRAE, NBP, triple, formation takes another one" : "";
}

void Options::begin() {
    style.format = json_ ? Format::json : csv_ ? Format::csv : Format::text;
    style.heading = !bare_;
    units.preset(preset_);
    enter_data_home(data_);
}

Fluid Options::open() {
    begin();
    if (words.size() > 2)
        throw Misuse(words[0].find('+') != std::string::npos
                         ? words[0] + " is a model of mixtures, for which there are corvane state, mixture and flash"
                         : "give an equation and a substance, or a substance alone; there are " +
                               std::to_string(words.size()) + " words");
    const std::string equation = words.size() == 2 ? words[0] : "";
    Fluid result =
        open_fluid({equation, words.back(), set.empty() ? 0 : set_number(set), define});
    units.M = result.model->M();
    for (Quantity quantity : {Quantity::density, Quantity::energy})
        if (units.needs_mass(quantity) && !(units.M > 0.0))
            throw Failure("the molar mass of " + result.name() + " is not known");
    return result;
}

}  // namespace cli
