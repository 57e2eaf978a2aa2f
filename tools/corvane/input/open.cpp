#include <tools/corvane/input/home.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace cli {
namespace {
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
    return fmt::format("{} {}", equation, substance);
}

namespace {
/// "27bar" in the library's unit; without unit, that one.
double constant(std::string const& text, Quantity quantity, std::string const& word) {
    std::size_t end = text.size();
    while (end > 0 && !to_number(text.substr(0, end))) --end;
    const std::string unit = trimmed(text.substr(end));
    const auto convert = unit.empty() ? Conversion{} : conversion(quantity, unit, 0.0);
    if (end == 0 || !convert)
        throw Misuse(fmt::format("--define: '{}' is not a number with a unit", clipped(word)));
    return convert->to_library(*to_number(text.substr(0, end)));
}
}  // namespace

std::vector<corvane::PseudoComponent> definitions(std::vector<std::string> const& given) {
    std::vector<corvane::PseudoComponent> result;
    std::vector<std::string> words;  // a definition may also come in one, with blanks
    for (std::string const& word : given)
        for (std::string const& part : split(word, ' '))
            if (!part.empty()) words.push_back(part);
    for (std::string const& word : words) {
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos) {
            if (corvane::find(result, word)) throw Misuse("--define: " + word + " is defined twice");
            result.push_back({word, std::nan(""), std::nan(""), std::nan("")});
            continue;
        }
        if (result.empty()) throw Misuse("--define begins with a name: C7+ Tc=540 pc=2.7 omega=0.35");
        auto& s = result.back();
        const std::string name = word.substr(0, equals), value = word.substr(equals + 1);
        if (name == "Tc")
            s.Tc = constant(value, Quantity::temperature, word);
        else if (name == "pc")
            s.pc = constant(value, Quantity::pressure, word);
        else if (name == "omega")
            s.omega = constant(value, Quantity::ratio, word);
        else if (name == "M")
            s.M = constant(value, Quantity::ratio, word);
        else if (name == "c")
            s.c = constant(value, Quantity::volume, word);
        else
            throw Misuse(fmt::format("--define: '{}' is none of Tc, pc, omega, M and c; components "
                                     "stand before --define",
                                     clipped(word)));
    }
    for (auto const& s : result)
        if (std::isnan(s.Tc) || std::isnan(s.pc) || std::isnan(s.omega))
            throw Misuse(fmt::format("--define {}: Tc, pc and omega are needed", s.name));
    return result;
}

std::vector<corvane::PseudoComponent> definitions(std::vector<std::string> const& words,
                                                  std::vector<std::string> const& components) {
    auto result = definitions(words);
    for (auto const& s : result)
        if (std::find(components.begin(), components.end(), s.name) == components.end())
            throw Misuse(fmt::format("--define {}: there is no component of this name", s.name));
    return result;
}

void add_define(Command& command, std::vector<std::string>& words) {
    command.words("--define", words,
                  "a substance that no file knows, for PR and SRK: C7+ Tc=540 pc=2.7 omega=0.35 "
                  "M=96 (K, MPa, g/mol, or with units: pc=27bar; c: volume translation, cm3/mol)",
                  "NAME CONSTANT=VALUE ...");
}

Fluid open_fluid(FluidRequest const& request) {
    const auto defined = definitions(request.define, {request.substance});
    Fluid fluid(corvane::open(request.eos, request.substance, {request.set, entered_home(), defined}));
    fluid.chosen = request.eos.empty();
    fluid.asked = request.substance;
    fluid.pseudo = corvane::find(defined, fluid.substance) != nullptr;
    Model1 const& model = *fluid.model;
    if (model.name() != fluid.substance || model.id() != fluid.set)
        tell(fmt::format("warning: the file of {} set {} says that it holds {};{}", fluid.name(),
                         fluid.set, model.name(), model.id()));
    return fluid;
}

std::string defined_remark(Model1 const& model, Units const& units) {
    return fmt::format("{} is defined here: Tc {}, pc {}, omega {}{}; no ideal-gas heat capacities, "
                       "so that there are no total energies and entropies",
                       model.name(), units.text(Quantity::temperature, model.Tcrit()),
                       units.text(Quantity::pressure, model.pcrit()), shortest(model.omega()),
                       model.M() > 0.0 ? fmt::format(", M {} g/mol", shortest(model.M())) : "");
}

Heading heading(std::string const& command, Fluid const& fluid, Units const& units) {
    Model1 const& model = *fluid.model;
    Heading result;
    result.command = command;
    result.fields = {{"eos", std::string(model.eos() ? model.eos() : "")},
                     {"substance", std::string(model.name())},
                     {"set", static_cast<long>(model.id())},
                     {"comment", std::string(model.comment())}};
    if (fluid.chosen)
        result.remarks.push_back("no equation was named: " + fluid.equation +
                                 " is the best that there is for this substance");
    if (fluid.pseudo)
        result.remarks.push_back(defined_remark(model, units));
    else
        result.remarks.push_back("stated range of the set:" + stated_range(fluid.notes, units));
    if (!fluid.pseudo && corvane::doubtful(fluid))
        result.remarks.push_back(fmt::format("doubtful parameters: the critical temperature is {}, {} was measured",
                                             units.text(Quantity::temperature, model.Tcrit()),
                                             units.text(Quantity::temperature, fluid.notes.Tc)));
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
