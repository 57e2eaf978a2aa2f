// corvane state: all properties of states, from any two quantities.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/flash.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/results/transport.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/catalogue/substances.h>
#include <corvane/state/pure_state.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cli {
namespace {
using corvane::PureState;
using What = corvane::Quantity;

/// A quantity that may be given.
struct Input {
    char const *symbol, *option;
    Quantity quantity;
    What what;
    std::string text = "";
    std::vector<double> values = {};  ///< library units
};

struct StateCommand {
    Options options;
    MixtureRequest request;
    std::string phase = "stable";
    FileRun file;
    Input inputs[8] = {{"T", "--T", Quantity::temperature, What::T},
                       {"p", "--p", Quantity::pressure, What::p},
                       {"rho", "--rho", Quantity::density, What::rho},
                       {"v", "--v", Quantity::volume, What::rho},
                       {"h", "--h", Quantity::energy, What::h},
                       {"s", "--s", Quantity::entropy, What::s},
                       {"u", "--u", Quantity::energy, What::u},
                       {"q", "--q", Quantity::ratio, What::q}};

    int run();

  private:
    /// A phase, or the whole of two.
    struct Point {
        char const* name;
        State state;
        std::string note;
        double amount = 1.0;               // mole fraction of the whole, where there may be two
        std::optional<PureState> whole = {};  // then `state` is not of one phase
    };
    int of_mixture();
    int of_file(Fluid& fluid);
    void choose();
    void read(Input& input) const;
    bool is(What a, What b) const { return first_->what == a && second_->what == b; }
    bool by_Tp() const { return is(What::T, What::p); }
    std::vector<Point> at_pressure(Fluid const& fluid, double T_, double p_) const;
    std::vector<Point> at(Fluid const& fluid, double a, double b) const;
    std::vector<Point> single(Fluid const& fluid, double T_, double rho_) const;
    std::vector<Point> stable(Fluid const& fluid, double a, double b) const;
    std::vector<Property const*> shown(Fluid const& fluid) const;
    std::vector<Column> columns(Fluid const& fluid, bool several) const;
    Row row(Fluid const& fluid, Point const& point) const;
    void add_transport(Row& row, Point const& point) const;
    std::string solid_note(Fluid const& fluid, double T) const;

    std::unique_ptr<TransportCells> transport_;
    mutable std::optional<double> T_triple_;  // once it was asked for
    Input *first_ = nullptr, *second_ = nullptr;  // in the order of `inputs`
};

/// The two quantities that were given. @throws Misuse
void StateCommand::choose() {
    std::vector<Input*> found;  // texts, of a file the names of its columns
    for (Input& input : inputs)
        if (!input.text.empty()) found.push_back(&input);
    if (found.size() != 2 || found[0]->what == found[1]->what)
        throw Misuse("give two of --T, --p, --rho (or --v), --h, --s, --u and --q");
    first_ = found[0];
    second_ = found[1];
    const bool known = second_->what == What::q ? is(What::T, What::q) || is(What::p, What::q)
                                                : !is(What::h, What::u) && !is(What::s, What::u);
    if (!known)
        throw Misuse(fmt::format("{} and {} do not make a state here{}", first_->option,
                                 second_->option,
                                 second_->what == What::q ? ": --q goes with --T or --p" : ""));
    if (!by_Tp() && phase != "stable" && !(phase == "single" && is(What::T, What::rho)))
        throw Misuse("--phase goes with --T and --p, or is single with --T and --rho or --v");
    if (by_Tp() && phase == "single") throw Misuse("--phase single goes with --T and --rho");
}

void StateCommand::read(Input& input) const {
    const bool any_sign = input.what == What::h || input.what == What::s || input.what == What::u;
    if (!any_sign && input.what != What::q) {
        input.values = positive_points(input.text, input.option, input.quantity, options.units);
        if (input.quantity == Quantity::volume)
            for (double& value : input.values) value = 1.0 / value;
        return;
    }
    input.values = points(input.text, input.option);
    for (double& value : input.values) {
        if (input.what == What::q && !(value >= 0.0 && value <= 1.0))
            throw Misuse("--q: the amount of vapour lies between 0 and 1");
        value = options.units.to_library(input.quantity, value);
    }
}

std::vector<StateCommand::Point> StateCommand::at_pressure(Fluid const& fluid, double T_,
                                                           double p_) const {
    Model1 const& model = *fluid.model;
    const Roots roots = density_roots(model, T_, p_);
    const auto point = [&](char const* name, double rho_) {
        const bool stable = rho_ == roots.stable;
        return Point{
            name,
            {&model, T_, p_, rho_},
            stable ? "" : fmt::format("metastable: the stable phase is {}", roots.stable_name)};
    };
    if (phase == "stable" || roots.fluid) return {point(roots.stable_name, roots.stable)};
    std::vector<Point> points;
    if (roots.liquid && phase != "vapour") points.push_back(point("liquid", *roots.liquid));
    if (roots.vapour && phase != "liquid") points.push_back(point("vapour", *roots.vapour));
    if (points.empty()) throw ThException(phase == "liquid" ? th_gas_only : th_liquid_only);
    if (phase == "both" && points.size() == 1)
        add_note(points.front().note, "the only phase at this pressure");
    return points;
}

/// The one phase of this density, even where it is not stable.
std::vector<StateCommand::Point> StateCommand::single(Fluid const& fluid, double T_,
                                                      double rho_) const {
    Model1 const& model = *fluid.model;
    Units const& units = options.units;
    const State state{&model, T_, model.Z(rho_, T_) * rho_ * R * T_, rho_};
    if (!std::isfinite(state.p)) throw ThException(th_out_of_range);
    const bool rises = model.pV(rho_, T_) > 0.0;
    const SaturatedPair both = saturated(model, T_);
    std::string note = rises ? "" : "mechanically unstable: the pressure falls with density";
    if (both.found && rho_ > both.vapour && rho_ < both.liquid)
        note = fmt::format("{}, between vapour of {} and liquid of {} at {}",
                           rises ? "metastable" : "mechanically unstable",
                           units.text(Quantity::density, both.vapour),
                           units.text(Quantity::density, both.liquid),
                           units.text(Quantity::pressure, both.p));
    return {{rises ? phase_name(model, T_, rho_) : "unstable", state, note}};
}

/// All stable states with these two values, each in one phase or two.
std::vector<StateCommand::Point> StateCommand::stable(Fluid const& fluid, double a,
                                                      double b) const {
    Model1 const& model = *fluid.model;
    const auto states = corvane::pure_states(model, {first_->what, a}, {second_->what, b});
    std::vector<Point> points;
    int number = 0;
    for (PureState const& q : states) {
        ++number;
        const std::string note =
            states.size() == 1
                ? ""
                : fmt::format("state {} of {} with these values", number, states.size());
        if (q.phase) {
            if (!(q.p > 0.0) || !(q.phase->dp_drho > 0.0)) continue;  // not stable
            points.push_back({phase_name(model, q.T, q.rho), {&model, q.T, q.p, q.rho}, note});
            if (first_->what == What::T && q.T < model.Tcrit() && !saturated(model, q.T).found)
                add_note(points.back().note,
                         "no saturation state was found: whether it splits is not known");
        } else {
            points.push_back({"liquid", {&model, q.T, q.p, q.liquid->rho}, note, 1.0 - q.q});
            points.push_back({"vapour", {&model, q.T, q.p, q.vapour->rho}, "", q.q});
            points.push_back({"whole", {&model, q.T, q.p, q.rho}, "", 1.0, q});
        }
    }
    if (points.empty())
        throw Failure("no stable phase, and no two, have these values where the equation was searched");
    return points;
}

/// Where the stable phase may be a solid, of which an equation of fluids knows nothing; "" elsewhere.
std::string StateCommand::solid_note(Fluid const& fluid, double T) const {
    if (!T_triple_) {
        T_triple_ = 0.0;
        const corvane::Substances index(entered_home());
        for (auto const* s : index.find(fluid.substance)) T_triple_ = s->Ttriple;
    }
    if (!(T < *T_triple_)) return "";
    return fmt::format("below the triple point ({}) a solid may be stable: corvane solid {}",
                       options.units.text(Quantity::temperature, *T_triple_), fluid.asked);
}

/// Of a failure at T and p outside the stated range, that comes first: it is the likely reason.
std::vector<StateCommand::Point> StateCommand::at(Fluid const& fluid, double a, double b) const {
    if (!by_Tp()) return phase == "single" ? single(fluid, a, b) : stable(fluid, a, b);
    const std::string range = beyond(fluid.notes, a, b, options.units);
    if (range.empty()) return at_pressure(fluid, a, b);
    std::vector<Point> points;
    if (const auto why = failure_of([&] { points = at_pressure(fluid, a, b); })) {
        const std::string frozen = solid_note(fluid, a);
        throw Failure(fmt::format("outside the stated range of the set ({}): {}{}{}", range, *why,
                                  frozen.empty() ? "" : "; ", frozen));
    }
    return points;
}

std::vector<Property const*> StateCommand::shown(Fluid const& fluid) const {
    std::vector<Property const*> result;
    for (Property const& property : properties()) {
        if (property.needs != Needs::nothing && !fluid.ideal) continue;
        if (property.needs == Needs::ideal_gas_and_mass && !(fluid.model->M() > 0.0)) continue;
        result.push_back(&property);
    }
    return result;
}

std::vector<Column> StateCommand::columns(Fluid const& fluid, bool several) const {
    std::vector<Column> result = {{"phase", "", ""}};
    if (!by_Tp())
        result.push_back({"amount", "", "mole fraction of the whole that is in this phase"});
    for (Property const* property : shown(fluid)) {
        result.push_back(
            {property->name, options.units.name(property->quantity), property->text});
        const std::string name = property->name;
        result.back().given =
            several && (name == first_->symbol || name == second_->symbol) && name != "v";
    }
    auto const& models = transport_->models();
    if (models.has_viscosity())
        result.push_back(transport_->viscosity_column("eta", "viscosity"));
    if (models.has_conductivity())
        result.push_back(transport_->conductivity_column("lambda", "thermal conductivity"));
    if (models.has_surface_tension() && !by_Tp()) result.push_back(transport_->tension_column());
    return result;
}

/// Of phases the viscosity and conductivity, of two together the surface tension.
void StateCommand::add_transport(Row& row, Point const& point) const {
    auto const& models = transport_->models();
    State const& s = point.state;
    const auto put = [&](bool here, auto const& compute) {
        row.cells.push_back(here ? compute().cell : Cell());
    };
    if (models.has_viscosity())
        put(!point.whole, [&] { return transport_->viscosity(s.T, s.rho, row, true); });
    if (models.has_conductivity())
        put(!point.whole, [&] { return transport_->conductivity(s.T, s.rho, row, true); });
    if (models.has_surface_tension() && !by_Tp())
        put(point.whole.has_value(), [&] { return transport_->tension(s.T, row); });
}

Row StateCommand::row(Fluid const& fluid, Point const& point) const {
    Row result{{std::string(point.name)}, point.note};
    if (!by_Tp()) result.cells.emplace_back(point.amount);
    for (Property const* property : shown(fluid)) {
        const auto value = point.whole ? of_whole(property->name, *point.whole)
                                       : std::optional(property->value(point.state));
        if (value)
            result.cells.emplace_back(options.units.from_library(property->quantity, *value));
        else
            result.cells.emplace_back();
    }
    add_transport(result, point);
    const std::string beyond = extrapolated(fluid, point.state.T, point.state.p, true, options.units);
    add_note(result.note, beyond);
    if (!beyond.empty()) add_note(result.note, solid_note(fluid, point.state.T));
    return result;
}

/// By the certified flashes.
int StateCommand::of_mixture() {
    options.to_mixture(request);
    std::map<std::string, std::string> given;
    for (Input const& input : inputs) given[input.symbol] = input.text;
    return flash("state", options, request, given, std::move(file));
}

/// One row for a state, its properties from one evaluation. Of several states the first.
int StateCommand::of_file(Fluid& fluid) {
    Units const& u = options.units;
    std::vector<FileRun::Known> known;
    for (Input const& input : inputs) known.push_back({input.symbol, input.quantity});
    file.open(known, u);
    for (Input& input : inputs)
        if (file.has(input.symbol)) input.text = input.symbol;
    choose();
    options.set_reference(fluid);
    using P = corvane::PhaseProperties;
    struct Shown {
        char const* name;
        Quantity quantity;
        double PureState::*whole;
        double P::*phase;
    };
    std::vector<Shown> shown = {{"T", Quantity::temperature, &PureState::T, nullptr},
                                {"p", Quantity::pressure, &PureState::p, nullptr},
                                {"rho", Quantity::density, &PureState::rho, nullptr}};
    if (fluid.ideal)
        for (Shown const& one : {Shown{"u", Quantity::energy, &PureState::u, nullptr},
                                 {"h", Quantity::energy, &PureState::h, nullptr},
                                 {"s", Quantity::entropy, &PureState::s, nullptr},
                                 {"cv", Quantity::entropy, nullptr, &P::cv},
                                 {"cp", Quantity::entropy, nullptr, &P::cp},
                                 {"w", Quantity::speed, nullptr, &P::w}})
            shown.push_back(one);
    std::vector<Column> columns = {{"phase", "", ""}, {"q", "", ""}};
    std::vector<Conversion> converted;
    for (Shown const& one : shown) {
        columns.push_back({one.name, u.name(one.quantity), ""});
        converted.push_back(u.conversion(one.quantity));
    }
    Model1 const& model = *fluid.model;
    const auto given = [](FileRow const& in, Input const& input) {
        const double x = in[input.symbol];
        return corvane::Given{input.what, input.quantity == Quantity::volume ? 1.0 / x : x};
    };
    const FileRun::Compute compute = [&](FileRow const& in, Row& row) {
        const auto states = corvane::pure_states(model, given(in, *first_), given(in, *second_));
        if (states.empty()) throw Failure("no stable state has these values");
        PureState const& q = states.front();
        if (q.phase && (!(q.p > 0.0) || !(q.phase->dp_drho > 0.0)))
            throw Failure("no stable phase has this density");
        row.cells.emplace_back(std::string(q.phase ? phase_name(model, q.T, q.rho) : "two"));
        row.cells.emplace_back(q.q);
        for (std::size_t k = 0; k < shown.size(); ++k) {
            const double x = shown[k].whole ? q.*shown[k].whole
                             : q.phase      ? *q.phase.*shown[k].phase
                                            : std::nan("");
            row.cells.emplace_back(converted[k].from_library(x));
        }
        row.note = extrapolated(fluid, q.T, q.p, true, u);
        if (states.size() > 1)
            add_note(row.note, fmt::format("the first of {} states with these values", states.size()));
    };
    return file.run("state", columns, options.style, [&] { return compute; });
}

int StateCommand::run() {
    file.begin(options.json());
    if (!file) choose();
    for (Input const& input : inputs)
        if (file && (!input.text.empty() || phase != "stable"))
            throw Misuse("--input brings the values, of stable states");
    if (options.names_mixture()) return of_mixture();
    if (!request.kij.empty() || !request.basis.empty() || request.pair_set > 0 || !request.composition.empty())
        throw Misuse("--kij, --basis, --pair-set and --composition are of mixtures: MODEL A=0.5 B");
    Fluid fluid = options.open();
    if (file) return of_file(fluid);
    Units const& units = options.units;
    for (Input* input : {first_, second_}) read(*input);
    Heading head = heading("state", fluid, units);
    const auto caloric = [](Input const* input) {
        return input->what == What::h || input->what == What::s || input->what == What::u;
    };
    head.remarks.push_back(options.set_reference(fluid) + (caloric(first_) || caloric(second_) ? options.other_references() : ""));
    transport_ = std::make_unique<TransportCells>(fluid, units);
    const std::size_t asked = first_->values.size() * second_->values.size();
    Table table{columns(fluid, asked > 1), {}};
    const auto add = [&](Rows::Given& known, Input const& input, double value) {
        for (std::size_t k = 0; k < table.columns.size(); ++k)
            if (table.columns[k].name == input.symbol)
                known.emplace_back(k, units.from_library(input.quantity, value));
    };
    const auto shown_as = [](Input const& input, double value) {
        return input.quantity == Quantity::volume ? 1.0 / value : value;
    };
    Rows rows("state", table, asked, "states");
    rows.each(first_->values, second_->values, [&](double a, double b) {
        Rows::Given known;
        const double x = shown_as(*first_, a), y = shown_as(*second_, b);
        add(known, *first_, x);
        add(known, *second_, y);
        return rows.add_all(fmt::format("{} at {} = {}, {} = {}", fluid.name(), first_->symbol,
                                        units.text(first_->quantity, x), second_->symbol,
                                        units.text(second_->quantity, y)),
                            known, [&] {
                                std::vector<Row> result;
                                for (Point const& point : at(fluid, a, b))
                                    result.push_back(row(fluid, point));
                                return result;
                            });
    });
    transport_->tell(head);
    return rows.write(head, upright_if(options.style, asked == 1));
}
}  // namespace

void add_state(Program& program) {
    auto state = std::make_shared<StateCommand>();
    Command command = program.add("state", "all properties of states, from any two quantities",
                                  [state] { return state->run(); });
    state->options.add_fluid(command);
    char const* const texts[] = {"temperatures: 300 or 300,310 or first:last:step, first:last/steps",
                                 "pressures, in the same forms",
                                 "densities of the whole, in one phase or two",
                                 "volumes, in place of --rho",
                                 "enthalpies",
                                 "entropies",
                                 "internal energies",
                                 "amounts of vapour over the whole, 0 to 1, with --T or --p"};
    for (std::size_t k = 0; k < std::size(texts); ++k)
        command.value(state->inputs[k].option, state->inputs[k].text, texts[k], {.type = "VALUES"});
    command.value(
        "--phase", state->phase,
        "at T and p: stable (default), liquid, vapour, both; at T and rho: stable (two phases where "
        "they are), single (one phase, even if it is not stable)",
        {.one_of = {"stable", "liquid", "vapour", "both", "single"}, .type = "PHASE"});
    state->file.add_to(command);
    command.value("--composition", state->request.composition,
                  "in place of a mixture's components: a CSV file with a component in every row, and its "
                  "amount or flow in a column x, n (moles), w or m (mass)",
                  {.type = "FILE"});
    state->request.add_pairs(command);
    state->options.add_reference(command);
    state->options.add_units(command);
    state->options.add_output(command);
    command.examples(
        R"(  corvane state PR propane --T 300 --p 1
  corvane state water --T 400 --p 250 --units bar --reference triple
  corvane state R134a --p 2,5 --h 250 --units bar --reference IIR
  corvane state PR CO2 --T 250 --q 0:1/4 --csv
  corvane state PR propane --T 300:400:10 --p 1 --phase both
  corvane state PR+vdW1 methane=60% propane --T 250 --p 2
  corvane state CO2 --input points.csv --units bar > results.csv)");
}

}  // namespace cli
