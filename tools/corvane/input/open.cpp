#include <tools/corvane/input/home.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

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

Fluid open_fluid(FluidRequest const& request) {
    Fluid fluid(corvane::open(request.eos, request.substance, {request.set, entered_home()}));
    fluid.chosen = request.eos.empty();
    Model1 const& model = *fluid.model;
    if (model.name() != fluid.substance || model.id() != fluid.set)
        tell(fmt::format("warning: the file of {} set {} says that it holds {};{}", fluid.name(),
                         fluid.set, model.name(), model.id()));
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
    if (fluid.chosen)
        result.remarks.push_back("no equation was named: " + fluid.equation +
                                 " is the best that there is for this substance");
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
