// corvane flash: how a mixture of given composition splits.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/flash.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/core/constants.h>
#include <corvane/phases/flash/flash.h>

#include <fmt/format.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cli {
namespace {
using corvane::FlashResult;

/// A quantity that may be given: its option, and what it is in the output.
struct Given {
    char const *symbol, *option, *column;
    Quantity quantity;
    std::string text;            ///< of the option; empty: not given
    std::vector<double> values;  ///< library units
    explicit operator bool() const { return !text.empty(); }
};

struct FlashCommand {
    char const* name = "flash";
    Options options;
    MixtureRequest request;
    Given T{"T", "--T", "T", Quantity::temperature, "", {}},
        p{"p", "--p", "p", Quantity::pressure, "", {}},
        h{"h", "--h", "h_all", Quantity::energy, "", {}},
        s{"s", "--s", "s_all", Quantity::entropy, "", {}},
        rho{"rho", "--rho", "rho_all", Quantity::density, "", {}};
    std::string v;  ///< in place of rho
    FileRun file;

    int run();

  private:
    int of_file(MixtureFluid& mixture);
    void read(Given& given) const;
    std::pair<Given*, Given*> asked();
    FlashResult solve(MixtureFluid const& mixture, Vector<double> const& x, double first, double second,
                      FlashResult const& last) const;
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, FlashResult const& result,
                             Evidence& evidence) const;
};

/// The two quantities that were given: p and T, p and h, p and s, T and rho.
std::pair<Given*, Given*> FlashCommand::asked() {
    if (rho && !v.empty()) throw Misuse("give either --rho or --v");
    if (!v.empty()) rho.text = v;
    std::vector<Given*> found;
    for (Given* one : {&p, &T, &h, &s, &rho})
        if (*one) found.push_back(one);
    if (found.size() == 2 && (found[0] == &p ? found[1] != &rho : found[0] == &T && rho))
        return {found[0], found[1]};
    throw Misuse("give --p with --T, --h or --s, or --T with --rho or --v");
}

void FlashCommand::read(Given& given) const {
    Units const& u = options.units;
    if (&given == &rho && !v.empty()) {
        given.values = positive_points(v, "--v", Quantity::volume, u);
        for (double& value : given.values) value = 1.0 / value;
        return;
    }
    if (&given != &h && &given != &s) {
        given.values = positive_points(given.text, given.option, given.quantity, u);
        return;
    }
    given.values = points(given.text, given.option);
    for (double& value : given.values) value = u.to_library(given.quantity, value);
}

FlashResult FlashCommand::solve(MixtureFluid const& mixture, Vector<double> const& x, double first,
                                double second, FlashResult const& last) const {
    ModelN const& model = *mixture.model;
    corvane::FlashOptions how;
    how.start = last.phases.empty() ? nullptr : &last;
    how.validity = &mixture.validity;
    FlashResult result = h     ? flash_ph(model, first, second, x, how)
                         : s   ? flash_ps(model, first, second, x, how)
                         : rho ? flash_Trho(model, first, second, x, how)
                               : flash_pT(model, first, second, x, how);
    if (mixture.ideal && !h && !s) add_caloric(model, x, result);
    return result;
}

std::vector<Column> FlashCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {
        {"T", u.name(Quantity::temperature), "temperature", static_cast<bool>(T)},
        {"p", u.name(Quantity::pressure), "pressure", static_cast<bool>(p)},
        {"phase", "", "liquid or vapour, by density"},
        {"fraction", "", "mole fraction of the whole that is in this phase"},
        {"rho", u.name(Quantity::density), "density of the phase"}};
    add_fractions(result, mixture, "x", "mole fraction in the phase");
    if (mixture.ideal) {
        result.push_back({"h", u.name(Quantity::energy), "enthalpy of the phase"});
        result.push_back({"s", u.name(Quantity::entropy), "entropy of the phase"});
        result.push_back(
            {"h_all", u.name(Quantity::energy), "enthalpy of the whole", static_cast<bool>(h)});
        result.push_back(
            {"s_all", u.name(Quantity::entropy), "entropy of the whole", static_cast<bool>(s)});
    }
    result.push_back(
        {"rho_all", u.name(Quantity::density), "density of the whole", static_cast<bool>(rho)});
    result.back().detail = !rho;
    result.push_back(
        {"v_all", u.name(Quantity::volume), "volume of the whole", !v.empty(), 7, v.empty()});
    Evidence::add_columns(result);
    return result;
}

/// One row per phase; what is of the whole, and its certificate, stands in each.
std::vector<Row> FlashCommand::rows_of(MixtureFluid const& mixture, FlashResult const& result,
                                       Evidence& evidence) const {
    Units const& u = options.units;
    ModelN const& model = *mixture.model;
    const auto names = phase_names(mixture, result.phases);
    Row certificate;
    evidence.add(certificate, result.certificate);
    std::vector<Row> rows;
    for (std::size_t k = 0; k < result.phases.size(); ++k) {
        corvane::PhaseRecord const& phase = result.phases[k];
        Row row;
        row.cells = {u.from_library(Quantity::temperature, result.T),
                     u.from_library(Quantity::pressure, result.p), names[k], result.fraction[k],
                     mixture.density(u, phase.x, phase.rho)};
        add_cells(row, phase.x);
        if (mixture.ideal) {
            Units of_phase = u;
            of_phase.M = mixture.M(phase.x);
            row.cells.emplace_back(of_phase.from_library(
                Quantity::energy, R * result.T * model.Hm(phase.rho, result.T, phase.x)));
            row.cells.emplace_back(of_phase.from_library(
                Quantity::entropy, R * model.Sm(phase.rho, result.T, phase.x)));
            row.cells.emplace_back(u.from_library(Quantity::energy, result.h));
            row.cells.emplace_back(u.from_library(Quantity::entropy, result.s));
        }
        row.cells.emplace_back(u.from_library(Quantity::density, result.rho));
        row.cells.emplace_back(u.from_library(Quantity::volume, 1.0 / result.rho));
        row.cells.insert(row.cells.end(), certificate.cells.begin(), certificate.cells.end());
        row.note = certificate.note;
        add_note(row.note, ideal_extrapolated(mixture, result.T, u));
        rows.push_back(std::move(row));
    }
    return rows;
}

/// One row for a state: of two phases, liquid and vapour; of one or more, how many there are.
int FlashCommand::of_file(MixtureFluid& mixture) {
    std::vector<FileRun::Known> known;
    for (Given const* one : {&T, &p, &h, &s, &rho}) known.push_back({one->symbol, one->quantity});
    file.open(known, options.units, &mixture);
    for (Given* one : {&T, &p, &h, &s, &rho})
        if (file.has(one->symbol)) one->text = one->symbol;
    const auto [first, second] = asked();
    options.set_reference(mixture);
    Units const& u = options.units;
    std::vector<Column> columns = {{"T", u.name(Quantity::temperature), ""},
                                   {"p", u.name(Quantity::pressure), ""},
                                   {"phases", "", ""},
                                   {"vapour", "", "its mole fraction of the whole"},
                                   {"rho", u.name(Quantity::density), ""}};
    if (mixture.ideal) {
        columns.push_back({"h", u.name(Quantity::energy), ""});
        columns.push_back({"s", u.name(Quantity::entropy), ""});
    }
    columns.push_back({"rhoL", u.name(Quantity::density), ""});
    columns.push_back({"rhoV", u.name(Quantity::density), ""});
    for (char const* prefix : {"xL", "yV"}) add_fractions(columns, mixture, prefix, "");
    const auto calculate = [&, a = first, b = second](FileRow const& in, FlashResult& last, Row& row) {
        Units units = options.units;
        units.M = mixture.M(in.x());
        last = solve(mixture, in.x(), in[a->symbol], in[b->symbol], last);
        const auto names = phase_names(mixture, last.phases);
        corvane::PhaseRecord const *liquid = nullptr, *vapour = nullptr;
        double fraction = 0.0;
        for (std::size_t k = 0; k < names.size(); ++k) {
            (names[k] == "vapour" ? vapour : liquid) = &last.phases[k];
            if (names[k] == "vapour") fraction = last.fraction[k];
        }
        row.cells = {units.from_library(Quantity::temperature, last.T),
                     units.from_library(Quantity::pressure, last.p),
                     static_cast<long>(names.size()), fraction,
                     units.from_library(Quantity::density, last.rho)};
        if (mixture.ideal) {
            row.cells.emplace_back(units.from_library(Quantity::energy, last.h));
            row.cells.emplace_back(units.from_library(Quantity::entropy, last.s));
        }
        const bool plain = names.size() < 3 && (names.size() == 1 || fraction > 0.0);
        for (auto const* phase : {liquid, vapour})
            row.cells.push_back(phase && plain ? Cell(mixture.density(units, phase->x, phase->rho))
                                               : Cell());
        for (auto const* phase : {liquid, vapour})
            for (int i = 0; i < mixture.size(); ++i)
                row.cells.push_back(phase && plain ? Cell(phase->x[i]) : Cell());
        Row certificate;
        Evidence evidence;
        evidence.add(certificate, last.certificate);
        row.note = certificate.note;
        if (!plain) add_note(row.note, "no liquid beside a vapour: see corvane flash without --input");
    };
    return file.run(name, columns, options.style, [&]() -> FileRun::Compute {
        return [&, last = FlashResult()](FileRow const& in, Row& row) mutable {
            calculate(in, last, row);
        };
    });
}

int FlashCommand::run() {
    file.begin(options.json());
    if (file) {
        for (Given const* one : {&T, &p, &h, &s, &rho})
            if (*one || !v.empty()) throw Misuse("--input brings the values: no " + std::string(one->option));
        options.begin();
        request.fractions_optional = true;
        MixtureFluid mixture = open_mixture(request);
        options.units.M = mixture.M();
        return of_file(mixture);
    }
    const auto [first, second] = asked();
    options.begin();
    MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    if ((h || s) && !mixture.ideal)
        throw Failure(mixture.text() + ": a component has no ideal-gas data, which h and s need");
    for (Given* one : {first, second}) read(*one);
    Heading head = heading(name, mixture);
    head.remarks.emplace_back("a row for each phase, the densest (by mass) first");
    if (mixture.ideal)
        head.remarks.emplace_back("h, s: of the phase; h_all, s_all: of the whole");
    head.remarks.push_back(options.set_reference(mixture));
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
                         last = solve(mixture, mixture.x, a, b, last);
                         return rows_of(mixture, last, evidence);
                     });
    };
    for (double a : first->values)
        for (double b : second->values)
            if (!Watch::interrupted()) point(a, b);
    evidence.report(head);
    const int code = rows.finish(head);
    write(head, table, options.style);
    return code;
}
}  // namespace

int flash(char const* command, Options const& options, MixtureRequest const& request,
          std::map<std::string, std::string> const& given, FileRun file) {
    FlashCommand flash;
    flash.file = std::move(file);
    flash.name = command;
    flash.options = options;
    flash.request = request;
    for (auto const& [symbol, text] : given) {
        if (text.empty()) continue;
        if (symbol == "v")
            flash.v = text;
        else if (symbol == "u" || symbol == "q")
            throw Misuse("--" + symbol + " is of pure fluids; bubble and dew points of a mixture "
                         "are those of corvane bubble and dew");
        else
            for (Given* one : {&flash.T, &flash.p, &flash.h, &flash.s, &flash.rho})
                if (symbol == one->symbol) one->text = text;
    }
    return flash.run();
}

void add_flash(Program& program) {
    auto flash = std::make_shared<FlashCommand>();
    Command command = program.add("flash", "certified: how a mixture splits, at p with T, h or s",
                                  [flash] { return flash->run(); });
    flash->request.add_to(command);
    command
        .value("--p", flash->p.text, "pressures: 1 or 1,2 or first:last:step", {.type = "VALUES"})
        .value("--T", flash->T.text, "temperatures, in the same forms", {.type = "VALUES"})
        .value("--h", flash->h.text, "enthalpies of the whole, with --p", {.type = "VALUES"})
        .value("--s", flash->s.text, "entropies of the whole, with --p", {.type = "VALUES"})
        .value("--rho", flash->rho.text, "densities of the whole, with --T", {.type = "VALUES"})
        .value("--v", flash->v, "volumes of the whole, with --T", {.type = "VALUES"});
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
