// corvane flash: how a mixture of given composition splits.
#include <tools/corvane/certified.h>
#include <tools/corvane/commands.h>
#include <tools/corvane/mixture_points.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/options.h>
#include <tools/corvane/rows.h>

#include <corvane/phases/flash.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
using corvane::FlashResult;

struct FlashCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;

    int run();

  private:
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, FlashResult const& result,
                             Evidence& evidence) const;
};

std::vector<Column> FlashCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {
        {"T", u.name(Quantity::temperature), "temperature", true},
        {"p", u.name(Quantity::pressure), "pressure", true},
        {"phase", "", "liquid or vapour, by density"},
        {"fraction", "", "mole fraction of the whole that is in this phase"},
        {"rho", u.name(Quantity::density), "density of the phase"}};
    add_fractions(result, mixture, "x", "mole fraction in the phase");
    Evidence::add_columns(result);
    return result;
}

/// One row per phase; the certificate is that of the whole, and stands in each.
std::vector<Row> FlashCommand::rows_of(MixtureFluid const& mixture, FlashResult const& result,
                                       Evidence& evidence) const {
    Units const& u = options.units;
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
        row.cells.insert(row.cells.end(), certificate.cells.begin(), certificate.cells.end());
        row.note = certificate.note;
        rows.push_back(std::move(row));
    }
    return rows;
}

int FlashCommand::run() {
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto pressures = positive_points(p, "--p", Quantity::pressure, units);
    Heading head = heading("flash", mixture);
    head.remarks.emplace_back("a row for each phase, the densest (by mass) first");
    Table table{columns(mixture), {}};
    Evidence evidence;
    FlashResult last;
    Rows rows("flash", table, temperatures.size() * pressures.size());
    const auto point = [&](double p_, double T_) {
        rows.add_all(state(mixture, units, T_, p_), given(units, T_, p_), [&] {
            corvane::FlashOptions how;
            how.start = last.phases.size() == 2 ? &last : nullptr;
            how.validity = &mixture.validity;
            last = flash_pT(*mixture.model, p_, T_, mixture.x, how);
            return rows_of(mixture, last, evidence);
        });
    };
    for (double p_ : pressures)
        for (double T_ : temperatures)
            if (!Watch::interrupted()) point(p_, T_);
    evidence.report(head);
    const int code = rows.finish(head);
    write(head, table, options.style);
    return code;
}
}  // namespace

void add_flash(Program& program) {
    auto flash = std::make_shared<FlashCommand>();
    Command command = program.add("flash", "certified: how a mixture splits at given p and T",
                                  [flash] { return flash->run(); });
    flash->request.add_to(command);
    command
        .value("--T", flash->T, "temperatures: 300 or 300,310 or first:last:step",
               {.required = true, .type = "VALUES"})
        .value("--p", flash->p, "pressures, in the same forms",
               {.required = true, .type = "VALUES"});
    flash->options.add_units(command);
    flash->options.add_output(command);
    command.examples(
        R"(  corvane flash PR+vdW1 methane=0.5 propane=0.5 --T 280 --p 2
  corvane flash PR+vdW1 nitrogen=0.1 methane=0.6 propane --T 150:250:25 --p 5,20 --unit-p bar)");
}

}  // namespace cli
