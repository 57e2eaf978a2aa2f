// corvane flash: how a mixture of given composition splits.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/flash.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/results/transport.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/core/constants.h>
#include <corvane/state/mixture_state.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cli {
namespace {
using corvane::FlashResult;

using What = corvane::Quantity;

/// A quantity that may be given: its option, and what it is in the output.
struct Given {
    char const *symbol, *option, *column;
    Quantity quantity;
    What what;
    std::string text = "";            ///< of the option; empty: not given
    std::vector<double> values = {};  ///< library units
    explicit operator bool() const { return !text.empty(); }
};

struct FlashCommand {
    char const* name = "flash";
    Options options;
    MixtureRequest request;
    Given T{"T", "--T", "T", Quantity::temperature, What::T},
        p{"p", "--p", "p", Quantity::pressure, What::p},
        h{"h", "--h", "h_all", Quantity::energy, What::h},
        s{"s", "--s", "s_all", Quantity::entropy, What::s},
        u{"u", "--u", "u_all", Quantity::energy, What::u},
        q{"q", "--q", "q", Quantity::ratio, What::q},
        rho{"rho", "--rho", "rho_all", Quantity::density, What::rho};
    std::string v;  ///< in place of rho
    FileRun file;
    bool transport = false;  ///< its columns are asked for

    std::vector<Given*> all() { return {&p, &T, &h, &s, &rho, &u, &q}; }
    int run();

  private:
    int of_file(MixtureFluid& mixture);
    std::vector<Column> columns_of_file(MixtureFluid const& mixture) const;
    Row row_of_file(MixtureFluid const& mixture, FlashResult const& state, Units const& units) const;
    void read(Given& given) const;
    std::pair<Given*, Given*> asked();
    bool caloric() const { return h || s || u; }
    std::vector<FlashResult> solve(MixtureFluid const& mixture, Vector<double> const& x,
                                   corvane::Given first, corvane::Given second,
                                   FlashResult const& last, std::string& note) const;
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, FlashResult const& result,
                             Evidence& evidence) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, std::vector<FlashResult> const& all,
                             std::string const& note, Evidence& evidence) const;

    std::unique_ptr<MixtureTransportCells> transport_;
};

/// The two quantities that were given: a pair that mixture_states knows.
std::pair<Given*, Given*> FlashCommand::asked() {
    if (rho && !v.empty()) throw Misuse("give either --rho or --v");
    if (!v.empty()) rho.text = v;
    std::vector<Given*> found;
    for (Given* one : all())
        if (*one) found.push_back(one);
    if (found.size() != 2)
        throw Misuse("give two of --T, --p, --rho or --v, --h, --s, --u, --q");
    const auto is = [&](Given const& a, Given const& b) { return found[0] == &a && found[1] == &b; };
    if (is(h, u) || is(s, u) || (q && !T && !p))
        throw Misuse(fmt::format("{} does not go with {}", found[1]->option, found[0]->option));
    return {found[0], found[1]};
}

void FlashCommand::read(Given& given) const {
    Units const& units = options.units;
    if (&given == &rho && !v.empty()) {
        given.values = positive_points(v, "--v", Quantity::volume, units);
        for (double& value : given.values) value = 1.0 / value;
        return;
    }
    if (&given != &h && &given != &s && &given != &u && &given != &q) {
        given.values = positive_points(given.text, given.option, given.quantity, units);
        return;
    }
    given.values = points(given.text, given.option);
    for (double& value : given.values) value = units.to_library(given.quantity, value);
    for (double value : given.values)
        if (&given == &q && !(value >= 0.0 && value <= 1.0))
            throw Misuse("--q: an amount of vapour lies between 0 and 1");
}

std::vector<FlashResult> FlashCommand::solve(MixtureFluid const& mixture, Vector<double> const& x,
                                             corvane::Given first, corvane::Given second,
                                             FlashResult const& last, std::string& note) const {
    ModelN const& model = *mixture.model;
    corvane::FlashOptions how;
    how.start = last.phases.empty() ? nullptr : &last;
    how.validity = &mixture.validity;
    corvane::MixtureStates all = corvane::mixture_states(model, first, second, x, how);
    if (mixture.ideal && !h && !s)
        for (FlashResult& result : all.states) add_caloric(model, x, result);
    if (!all.complete) note = "there may be more states: flashes failed where they would be";
    if (file && all.states.size() > 1)
        add_note(note, fmt::format("the first of {} states with these values", all.states.size()));
    return std::move(all.states);
}

std::vector<Column> FlashCommand::columns(MixtureFluid const& mixture) const {
    Units const& units = options.units;
    std::vector<Column> result = {
        {"T", units.name(Quantity::temperature), "temperature", static_cast<bool>(T)},
        {"p", units.name(Quantity::pressure), "pressure", static_cast<bool>(p)},
        {"phase", "", "liquid or vapour, by density"},
        {"fraction", "", "mole fraction of the whole that is in this phase"},
        {"rho", units.name(Quantity::density), "density of the phase"}};
    add_fractions(result, mixture, "x", "mole fraction in the phase");
    if (mixture.ideal) {
        result.push_back({"h", units.name(Quantity::energy), "enthalpy of the phase"});
        result.push_back({"s", units.name(Quantity::entropy), "entropy of the phase"});
        result.push_back(
            {"h_all", units.name(Quantity::energy), "enthalpy of the whole", static_cast<bool>(h)});
        result.push_back(
            {"s_all", units.name(Quantity::entropy), "entropy of the whole", static_cast<bool>(s)});
    }
    result.push_back(
        {"rho_all", units.name(Quantity::density), "density of the whole", static_cast<bool>(rho)});
    result.back().detail = !rho;
    result.push_back(
        {"v_all", units.name(Quantity::volume), "volume of the whole", !v.empty(), 7, v.empty()});
    result.push_back({"u_all", units.name(Quantity::energy), "internal energy of the whole",
                      static_cast<bool>(u), 7, !u});
    result.push_back({"q", "", "amount of the lightest phase", static_cast<bool>(q), 7, !q});
    if (transport_) transport_->add_columns(result);
    Evidence::add_columns(result);
    return result;
}

/// One row per phase; what is of the whole, and its certificate, stands in each.
std::vector<Row> FlashCommand::rows_of(MixtureFluid const& mixture, FlashResult const& result,
                                       Evidence& evidence) const {
    Units const& units = options.units;
    ModelN const& model = *mixture.model;
    const auto names = phase_names(mixture, result.phases);
    Row certificate;
    evidence.add(certificate, result.certificate);
    const bool between = names.size() == 2 && names[0] == "liquid" && names[1] == "vapour";
    std::vector<Row> rows;
    for (std::size_t k = 0; k < result.phases.size(); ++k) {
        corvane::PhaseRecord const& phase = result.phases[k];
        Row row;
        row.cells = {units.from_library(Quantity::temperature, result.T),
                     units.from_library(Quantity::pressure, result.p), names[k], result.fraction[k],
                     mixture.density(units, phase.x, phase.rho)};
        add_cells(row, phase.x);
        if (mixture.ideal) {
            Units of_phase = units;
            of_phase.M = mixture.M(phase.x);
            row.cells.emplace_back(of_phase.from_library(
                Quantity::energy, R * result.T * model.Hm(phase.rho, result.T, phase.x)));
            row.cells.emplace_back(of_phase.from_library(
                Quantity::entropy, R * model.Sm(phase.rho, result.T, phase.x)));
            row.cells.emplace_back(units.from_library(Quantity::energy, result.h));
            row.cells.emplace_back(units.from_library(Quantity::entropy, result.s));
        }
        row.cells.emplace_back(units.from_library(Quantity::density, result.rho));
        row.cells.emplace_back(units.from_library(Quantity::volume, 1.0 / result.rho));
        row.cells.emplace_back(units.from_library(Quantity::energy, result.h - result.p / result.rho));
        row.cells.emplace_back(result.phases.size() > 1 ? result.fraction.back() : std::nan(""));
        row.note = certificate.note;
        if (transport_)
            transport_->add_cells(result.T, phase, between ? &result.phases[0] : nullptr,
                                  between ? &result.phases[1] : nullptr, row);
        row.cells.insert(row.cells.end(), certificate.cells.begin(), certificate.cells.end());
        add_note(row.note, ideal_extrapolated(mixture, result.T, units));
        rows.push_back(std::move(row));
    }
    return rows;
}

/// The states that have the values; the first row of each says which it is.
std::vector<Row> FlashCommand::rows_of(MixtureFluid const& mixture, std::vector<FlashResult> const& all,
                                       std::string const& note, Evidence& evidence) const {
    std::vector<Row> rows;
    for (std::size_t k = 0; k < all.size(); ++k) {
        std::vector<Row> one = rows_of(mixture, all[k], evidence);
        if (all.size() > 1)
            add_note(one[0].note, fmt::format("state {} of {} with these values", k + 1, all.size()));
        add_note(one[0].note, note);
        rows.insert(rows.end(), one.begin(), one.end());
    }
    return rows;
}

std::vector<Column> FlashCommand::columns_of_file(MixtureFluid const& mixture) const {
    Units const& unit = options.units;
    std::vector<Column> columns = {{"T", unit.name(Quantity::temperature), ""},
                                   {"p", unit.name(Quantity::pressure), ""},
                                   {"phases", "", ""},
                                   {"vapour", "", "its mole fraction of the whole"},
                                   {"rho", unit.name(Quantity::density), ""}};
    if (mixture.ideal) {
        columns.push_back({"h", unit.name(Quantity::energy), ""});
        columns.push_back({"s", unit.name(Quantity::entropy), ""});
    }
    columns.push_back({"rhoL", unit.name(Quantity::density), ""});
    columns.push_back({"rhoV", unit.name(Quantity::density), ""});
    for (char const* prefix : {"xL", "yV"}) add_fractions(columns, mixture, prefix, "");
    return columns;
}

/// One row for a state: of two phases, liquid and vapour; of one or more, how many there are.
Row FlashCommand::row_of_file(MixtureFluid const& mixture, FlashResult const& state, Units const& units) const {
    const auto names = phase_names(mixture, state.phases);
    corvane::PhaseRecord const *liquid = nullptr, *vapour = nullptr;
    double fraction = 0.0;
    for (std::size_t k = 0; k < names.size(); ++k) {
        (names[k] == "vapour" ? vapour : liquid) = &state.phases[k];
        if (names[k] == "vapour") fraction = state.fraction[k];
    }
    Row row;
    row.cells = {units.from_library(Quantity::temperature, state.T),
                 units.from_library(Quantity::pressure, state.p),
                 static_cast<long>(names.size()), fraction,
                 units.from_library(Quantity::density, state.rho)};
    if (mixture.ideal) {
        row.cells.emplace_back(units.from_library(Quantity::energy, state.h));
        row.cells.emplace_back(units.from_library(Quantity::entropy, state.s));
    }
    const bool plain = names.size() < 3 && (names.size() == 1 || vapour);
    for (auto const* phase : {liquid, vapour})
        row.cells.push_back(phase && plain ? Cell(mixture.density(units, phase->x, phase->rho))
                                           : Cell());
    for (auto const* phase : {liquid, vapour})
        for (int i = 0; i < mixture.size(); ++i)
            row.cells.push_back(phase && plain ? Cell(phase->x[i]) : Cell());
    if (!plain) row.note = "no liquid beside a vapour: see corvane flash without --input";
    return row;
}

int FlashCommand::of_file(MixtureFluid& mixture) {
    std::vector<FileRun::Known> known;
    for (Given const* one : all()) known.push_back({one->symbol, one->quantity});
    file.open(known, options.units, &mixture);
    for (Given* one : all())
        if (file.has(one->symbol)) one->text = one->symbol;
    const auto [first, second] = asked();
    options.set_reference(mixture);
    const auto calculate = [&, a = first, b = second](FileRow const& in, FlashResult& last, Row& row) {
        Units units = options.units;
        units.M = mixture.M(in.x());
        std::string note;
        last = solve(mixture, in.x(), {a->what, in[a->symbol]}, {b->what, in[b->symbol]}, last, note)[0];
        Row certificate;
        Evidence evidence;
        evidence.add(certificate, last.certificate);
        Row found = row_of_file(mixture, last, units);
        row.cells = std::move(found.cells);
        row.note = certificate.note;
        add_note(row.note, note);
        add_note(row.note, found.note);
    };
    return file.run(name, columns_of_file(mixture), options.style, [&]() -> FileRun::Compute {
        return [&, last = FlashResult()](FileRow const& in, Row& row) mutable {
            calculate(in, last, row);
        };
    });
}

int FlashCommand::run() {
    file.begin(options.json());
    if (file) {
        if (transport) throw Misuse("--transport does not go with --input");
        for (Given const* one : all())
            if (*one || !v.empty()) throw Misuse("--input brings the values: no " + std::string(one->option));
        options.begin();
        request.fractions_optional = true;
        MixtureFluid mixture = open_mixture(request);
        options.units.M = mixture.M();
        return of_file(mixture);
    }
    const auto two = asked();
    Given *const first = two.first, *const second =
                                        two.second;  // bindings are not captured by older Clang
    options.begin();
    MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    if (caloric() && !mixture.ideal)
        throw Failure(mixture.text() + ": a component has no ideal-gas data, which h, s and u need");
    for (Given* one : {first, second}) read(*one);
    Heading head = heading(name, mixture);
    head.remarks.emplace_back("a row for each phase, the densest (by mass) first");
    if (mixture.ideal)
        head.remarks.emplace_back("h, s: of the phase; h_all, s_all: of the whole");
    head.remarks.push_back(options.set_reference(mixture) + (caloric() ? options.other_references() : ""));
    if (transport) transport_ = std::make_unique<MixtureTransportCells>(mixture, units);
    Table table{columns(mixture), {}};
    Evidence evidence;
    FlashResult last;
    Rows rows(name, table, first->values.size() * second->values.size());
    const auto point = [&](double a, double b) {
        Rows::Given known;
        for (auto const& [one, value] : {std::pair(first, a), std::pair(second, b)})
            for (std::size_t k = 0; k < table.columns.size(); ++k)
                if (table.columns[k].name == one->column)
                    known.emplace_back(k, units.from_library(one->quantity, value));
        rows.add_all(fmt::format("{} at {} = {}, {} = {}", mixture.text(), first->symbol,
                                 units.text(first->quantity, a), second->symbol,
                                 units.text(second->quantity, b)),
                     known, [&] {
                         std::string note;
                         const auto all = solve(mixture, mixture.x, {first->what, a},
                                                {second->what, b}, last, note);
                         last = all.back();
                         return rows_of(mixture, all, note, evidence);
                     });
    };
    for (double a : first->values)
        for (double b : second->values)
            if (!Watch::interrupted()) point(a, b);
    if (transport_) transport_->tell(head);
    evidence.report(head);
    return rows.write(head, options.style);
}
}  // namespace

int flash(char const* command, Options const& options, MixtureRequest const& request,
          std::map<std::string, std::string> const& given, FileRun file, bool transport) {
    FlashCommand flash;
    flash.transport = transport;
    flash.file = std::move(file);
    flash.name = command;
    flash.options = options;
    flash.request = request;
    for (auto const& [symbol, text] : given) {
        if (text.empty()) continue;
        if (symbol == "v")
            flash.v = text;
        else
            for (Given* one : flash.all())
                if (symbol == one->symbol) one->text = text;
    }
    return flash.run();
}

void add_flash(Program& program) {
    auto flash = std::make_shared<FlashCommand>();
    Command command = program.add("flash", "certified: how a mixture splits, at two of p, T, rho, h, s, u, q",
                                  [flash] { return flash->run(); });
    flash->request.add_to(command);
    command
        .value("--p", flash->p.text, "pressures: 1 or 1,2 or first:last:step", {.type = "VALUES"})
        .value("--T", flash->T.text, "temperatures, in the same forms", {.type = "VALUES"})
        .value("--h", flash->h.text, "enthalpies of the whole", {.type = "VALUES"})
        .value("--s", flash->s.text, "entropies of the whole", {.type = "VALUES"})
        .value("--u", flash->u.text, "internal energies of the whole, with --T, --p, --rho or --v", {.type = "VALUES"})
        .value("--q", flash->q.text, "amounts of the vapour, 0 to 1, with --T or --p", {.type = "VALUES"})
        .value("--rho", flash->rho.text, "densities of the whole", {.type = "VALUES"})
        .value("--v", flash->v, "volumes of the whole, in place of --rho", {.type = "VALUES"})
        .flag("--transport", flash->transport,
              "more columns: viscosity and thermal conductivity of each phase, surface tension");
    flash->file.add_to(command);
    flash->options.add_reference(command);
    flash->options.add_units(command);
    flash->options.add_output(command);
    command.examples(
        R"(  corvane flash PR+vdW1 methane=0.5 propane=0.5 --T 280 --p 2
  corvane flash PR+vdW1 nitrogen=0.1 methane=0.6 propane --T 150:250:25 --p 5,20 --unit-p bar
  corvane flash PR+vdW1 methane=0.5 propane=0.5 --p 2 --h 4000
  corvane flash PR+vdW1 methane=0.5 propane=0.5 --T 280 --rho 0.002)");
}

}  // namespace cli
