// corvane split: the two fluid phases of a binary at given pressure and temperature.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/stability.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/corvane.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace cli {
namespace {
struct SplitCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;

    int run();

  private:
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, double p_, double T_) const;
    Row point(MixtureFluid const& mixture, double p_, double T_) const;
};

/// Bound of |Δμ/(RT)| between the phases, far above the convergence of the fit.
constexpr double kPotentials = 1e-8;

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
    return result;
}

Row SplitCommand::row(MixtureFluid const& mixture, double p_, double T_) const {
    ModelN const& m = *mixture.model;
    Units const& u = options.units;
    Vector<double> z(2), rho(2);
    equil2(&m, p_, T_, z, rho);
    if (rho[0] < rho[1]) {  // the denser phase first
        std::swap(z[0], z[1]);
        std::swap(rho[0], rho[1]);
    }
    Vector<double> const x[2] = {binary(z[0]), binary(z[1])};
    for (int i : {0, 1})
        if (!(std::fabs(m.my(x[0] * rho[0], T_, i) - m.my(x[1] * rho[1], T_, i)) < kPotentials))
            throw ThException(th_generic);
    Row result;
    result.cells.emplace_back(u.from_library(Quantity::temperature, T_));
    result.cells.emplace_back(u.from_library(Quantity::pressure, p_));
    for (auto const& phase : x)
        for (int i : {0, 1}) result.cells.emplace_back(phase[i]);
    for (int k : {0, 1}) result.cells.emplace_back(mixture.density(u, x[k], rho[k]));
    if (const auto other = splitting_phase(m, p_, T_, rho[0], x[0]))
        result.note = fmt::format("metastable: a phase near {} {:.4g} lowers the Gibbs energy",
                                  mixture.component(0), (*other)[0]);
    if (mixture.composed) {
        const double first = (mixture.x[0] - z[1]) / (z[0] - z[1]);
        if (first >= 0.0 && first <= 1.0) {
            result.cells.emplace_back(first);
            result.cells.emplace_back(1.0 - first);
        } else {
            result.cells.resize(result.cells.size() + 2);
            add_note(result.note, "the overall composition lies outside: it does not split here");
        }
    }
    return result;
}

/// The row, or a failure with its reason. @throws Failure
Row SplitCommand::point(MixtureFluid const& mixture, double p_, double T_) const {
    try {
        return row(mixture, p_, T_);
    } catch (ThException const& e) {
        try {
            ffinit(mixture.model.get(), p_, T_);
        } catch (ThException const& grid) {
            throw Failure(grid.number == th_generic
                              ? "does not split into two fluid phases: its Gibbs energy of mixing "
                                "is convex (ThException 0)"
                              : describe(grid));
        }
        throw Failure(
            "a split was found on the grid of compositions, but no equilibrium from there: " +
            describe(e));
    } catch (MthException const& e) {
        throw Failure("no equilibrium from the split on the grid: " + describe(e));
    }
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
    head.remarks.emplace_back("phase 1 has the higher molar density");
    Table table{columns(mixture), {}};
    Rows rows("split", table, temperatures.size() * pressures.size());
    rows.each(temperatures, pressures, [&](double T_, double p_) {
        return rows.add(state(mixture, units, T_, p_), given(units, T_, p_),
                        [&] { return point(mixture, p_, T_); });
    });
    const int code = rows.finish(head);
    write(head, table, options.style);
    return code;
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
