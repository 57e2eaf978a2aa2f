// corvane split: the pairs of fluid phases of a binary at given pressure and temperature.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/flash/flash.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cli {
namespace {
using corvane::FlashResult;

struct SplitCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;

    int run();

  private:
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, double p_, double T_);
    Row row(MixtureFluid const& mixture, FlashResult const& result);
    Evidence evidence_;
};

std::vector<Column> SplitCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {{"T", u.name(Quantity::temperature), "temperature", true},
                                  {"p", u.name(Quantity::pressure), "pressure", true}};
    for (int phase : {1, 2})
        for (int i : {0, 1})
            result.push_back({fmt::format("x{}_{}", phase, mixture.component(i)), "",
                              fmt::format("mole fraction in phase {}", phase)});
    for (int phase : {1, 2})
        result.push_back({fmt::format("rho{}", phase), u.name(Quantity::density),
                          fmt::format("density of phase {}", phase)});
    if (mixture.composed)
        for (int phase : {1, 2})
            result.push_back({fmt::format("amount{}", phase), "",
                              fmt::format("mole fraction of all that is in phase {}", phase)});
    Evidence::add_columns(result);
    return result;
}

/// Whether a mole fraction of component 0 lies between the phases of a split.
bool within(FlashResult const& split, double x0) {
    const double a = split.phases[0].x[0], b = split.phases[1].x[0];
    return (x0 - a) * (x0 - b) <= 0.0;
}

Row SplitCommand::row(MixtureFluid const& mixture, FlashResult const& split) {
    Units const& u = options.units;
    Row result;
    result.cells = {u.from_library(Quantity::temperature, split.T),
                    u.from_library(Quantity::pressure, split.p)};
    for (auto const& phase : split.phases) add_cells(result, phase.x);
    for (auto const& phase : split.phases)
        result.cells.emplace_back(mixture.density(u, phase.x, phase.rho));
    std::string outside;
    if (mixture.composed) {
        const double a = split.phases[0].x[0], b = split.phases[1].x[0];
        const double first = (mixture.x[0] - b) / (a - b);
        if (within(split, mixture.x[0])) {
            result.cells.emplace_back(first);
            result.cells.emplace_back(1.0 - first);
        } else {
            result.cells.resize(result.cells.size() + 2);
            outside = "the overall composition lies outside: it does not split here";
        }
    }
    evidence_.add(result, split.certificate);
    add_note(result.note, outside);
    return result;
}

/// Certified flashes of the composition asked for, then of a series of others that lie within none
/// of the splits found so far.
std::vector<Row> SplitCommand::rows_of(MixtureFluid const& mixture, double p_, double T_) {
    // x/(1 − x) from 1e-6 to 1e6 by half decades: a split that lies between two of these is missed.
    std::vector<double> trials;
    if (mixture.composed) trials.push_back(mixture.x[0]);
    for (int k = -12; k <= 12; ++k) trials.push_back(1.0 / (1.0 + std::pow(10.0, -0.5 * k)));
    std::vector<FlashResult> splits;
    std::vector<Row> rows;
    corvane::FlashOptions how;
    how.validity = &mixture.validity;
    for (double x0 : trials) {
        if (std::any_of(splits.begin(), splits.end(),
                        [&](FlashResult const& known) { return within(known, x0); }))
            continue;
        FlashResult result = corvane::flash_pT(*mixture.model, p_, T_, binary(x0), how);
        if (result.phases.size() != 2) continue;
        rows.push_back(row(mixture, result));
        splits.push_back(std::move(result));
    }
    if (rows.empty())
        throw Failure(fmt::format("does not split into two fluid phases: stable at {} compositions",
                                  trials.size()));
    return rows;
}

int SplitCommand::run() {
    request.fractions_optional = true;
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    if (mixture.size() != 2) throw Misuse("a split needs two components");
    Units& units = options.units;
    units.M = mixture.M();
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto pressures = positive_points(p, "--p", Quantity::pressure, units);
    Heading head = heading("split", mixture);
    head.remarks.emplace_back("phase 1 is the denser one (by mass)");
    Table table{columns(mixture), {}};
    Rows rows("split", table, temperatures.size() * pressures.size());
    rows.each(temperatures, pressures, [&](double T_, double p_) {
        return rows.add_all(state(mixture, units, T_, p_), given(units, T_, p_),
                            [&] { return rows_of(mixture, p_, T_); });
    });
    evidence_.report(head);
    return rows.write(head, options.style);
}
}  // namespace

void add_split(Program& program) {
    auto split = std::make_shared<SplitCommand>();
    Command command = program.add("split", "the two fluid phases of a binary at (p, T)",
                                  [split] { return split->run(); });
    split->request.fractions_optional = true;
    split->request.add_to(command);
    command
        .value("--T", split->T, "temperatures: 300 or 300,310 or first:last:step",
               {.required = true, .type = "VALUES"})
        .value("--p", split->p, "pressures, in the same forms",
               {.required = true, .type = "VALUES"});
    split->options.add_units(command);
    split->options.add_output(command);
    command.examples(
        R"(  corvane split PR+vdW1 methane=0.5 propane=0.5 --T 300 --p 5
  corvane split PR+vdW1 CO2 water --T 300:340:10 --p 10,20)");
}

}  // namespace cli
