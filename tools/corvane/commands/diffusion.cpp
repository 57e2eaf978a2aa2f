// corvane diffusion: of a fluid in itself, and of two components in the phases of their mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/results/transport.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/flash/flash.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
struct DiffusionCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;

    int run();

  private:
    int of_fluid();
    int of_mixture();
    std::vector<Column> columns() const;
};

std::vector<Column> DiffusionCommand::columns() const {
    Units const& u = options.units;
    return {{"T", u.name(Quantity::temperature), "temperature", true},
            {"p", u.name(Quantity::pressure), "pressure", !p.empty()},
            {"phase", "", "liquid or vapour, by density"},
            {"rho", u.name(Quantity::density), "density"}};
}

int DiffusionCommand::of_fluid() {
    if (!request.kij.empty() || !request.basis.empty() || request.pair_set > 0)
        throw Misuse("--kij, --basis and --pair-set are of mixtures: MODEL A=0.5 B");
    const Fluid fluid = options.open();
    Units const& u = options.units;
    TransportCells transport(fluid, u);
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, u);
    const auto pressures = p.empty() ? std::vector<double>() : positive_points(p, "--p", Quantity::pressure, u);
    Heading head = heading("diffusion", fluid, u);
    Table table{columns(), {}};
    table.columns.push_back(TransportSources::diffusion_column("D", "coefficient of self-diffusion"));
    Rows rows("diffusion", table, temperatures.size() * std::max<std::size_t>(pressures.size(), 1));
    const auto name = [&](double T_) {
        return fmt::format("{} at T = {}", fluid.name(), u.text(Quantity::temperature, T_));
    };
    const auto row = [&](double T_, double p_, char const* phase, double rho) {
        Row result{{u.from_library(Quantity::temperature, T_), u.from_library(Quantity::pressure, p_), std::string(phase),
                    u.from_library(Quantity::density, rho)},
                   extrapolated(fluid, T_, p_, false, u)};
        result.cells.push_back(transport.diffusion(T_, rho, result).cell);
        return result;
    };
    if (!p.empty()) {
        rows.each(temperatures, pressures, [&](double T_, double p_) {
            return rows.add(name(T_) + ", p = " + u.text(Quantity::pressure, p_), given(u, T_, p_), [&] {
                const Roots roots = density_roots(*fluid.model, T_, p_);
                return row(T_, p_, roots.stable_name, roots.stable);
            });
        });
    } else {
        add_boiling(rows, head, fluid, temperatures, u, row);
    }
    transport.tell(head);
    return rows.write(head, options.style);
}

/// In every phase of the mixture.
int DiffusionCommand::of_mixture() {
    if (p.empty()) throw Misuse("a mixture takes --T and --p");
    options.begin();
    options.to_mixture(request);
    const MixtureFluid mixture = open_mixture(request);
    if (mixture.size() != 2) throw Failure("diffusion is of two components, not of " + std::to_string(mixture.size()));
    Units& u = options.units;
    u.M = mixture.M();
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, u),
               pressures = positive_points(p, "--p", Quantity::pressure, u);
    MixtureTransportCells transport(mixture, u);
    Heading head = heading("diffusion", mixture);
    head.remarks.emplace_back("a row for each phase, the densest (by mass) first");
    head.remarks.emplace_back("D_MS: of Maxwell and Stefan; D: of Fick, D_MS times the thermodynamic factor of the model");
    Table table{columns(), {}};
    add_fractions(table.columns, mixture, "x", "mole fraction in the phase");
    transport.add_diffusion_columns(table.columns);
    Rows rows("diffusion", table, temperatures.size() * pressures.size());
    corvane::FlashOptions how;
    how.validity = &mixture.validity;
    rows.each(temperatures, pressures, [&](double T_, double p_) {
        return rows.add_all(state(mixture, u, T_, p_), given(u, T_, p_), [&] {
            const auto split = corvane::flash_pT(*mixture.model, p_, T_, mixture.x, how);
            const auto names = phase_names(mixture, split.phases);
            std::vector<Row> result;
            for (std::size_t k = 0; k < names.size(); ++k) {
                corvane::PhaseRecord const& phase = split.phases[k];
                Row row{{u.from_library(Quantity::temperature, T_), u.from_library(Quantity::pressure, p_), names[k],
                         mixture.density(u, phase.x, phase.rho)},
                        split.certificate.extrapolated ? "extrapolated" : ""};
                add_cells(row, phase.x);
                transport.add_diffusion_cells(T_, phase, row);
                result.push_back(std::move(row));
            }
            return result;
        });
    });
    transport.tell(head);
    return rows.write(head, options.style);
}

int DiffusionCommand::run() {
    if (T.empty()) throw Misuse("give --T");
    return options.names_mixture() ? of_mixture() : of_fluid();
}
}  // namespace

void add_diffusion(Program& program) {
    auto diffusion = std::make_shared<DiffusionCommand>();
    Command command = program.add("diffusion", "diffusion of a fluid in itself, and of two components",
                                  [diffusion] { return diffusion->run(); });
    diffusion->options.add_fluid(command);
    command.value("--T", diffusion->T, "temperatures", {.type = "VALUES"})
        .value("--p", diffusion->p, "pressures; without, of one fluid: saturated liquid and vapour", {.type = "VALUES"});
    diffusion->request.add_pairs(command);
    diffusion->options.add_units(command);
    diffusion->options.add_output(command);
    command.examples(R"(  corvane diffusion water --T 280:340:20 --p 0.1
  corvane diffusion PCSAFT+LB ethanol=0.3 water --T 298.15 --p 0.1
  corvane diffusion MEOS+GERG methane=0.5 CO2 --T 300 --p 1,5)");
}

}  // namespace cli
