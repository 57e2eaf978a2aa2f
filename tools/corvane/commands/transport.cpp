// corvane transport, corvane surface-tension: viscosity and thermal conductivity of fluid states,
// surface tension.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/flash.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/results/transport.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/state/phase_properties.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {

struct TransportCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;
    FileRun file;

    int run();
    int tension();

  private:
    std::vector<Column> columns(TransportCells const& transport) const;
    Row row(Fluid const& fluid, TransportCells& transport, double T_, double p_, char const* phase,
            double rho);
};

std::vector<Column> TransportCommand::columns(TransportCells const& transport) const {
    Units const& u = options.units;
    return {{"T", u.name(Quantity::temperature), "temperature", true},
            {"p", u.name(Quantity::pressure), "pressure", true},
            {"phase", "", "stable phase"},
            {"rho", u.name(Quantity::density), "density"},
            transport.viscosity_column("eta", "viscosity"),
            transport.conductivity_column("lambda", "thermal conductivity"),
            {"Pr", "", "Prandtl number"}};
}

Row TransportCommand::row(Fluid const& fluid, TransportCells& transport, double T_, double p_,
                          char const* phase, double rho) {
    Units const& u = options.units;
    Row result{{u.from_library(Quantity::temperature, T_), u.from_library(Quantity::pressure, p_),
                std::string(phase), u.from_library(Quantity::density, rho)},
               extrapolated(fluid, T_, p_, false, u)};
    const TransportCell eta = transport.viscosity(T_, rho, result, true),
                        lambda = transport.conductivity(T_, rho, result, true);
    result.cells.insert(result.cells.end(), {eta.cell, lambda.cell, std::monostate()});
    if (eta.value && lambda.value && fluid.ideal) {
        const auto s = corvane::phase_properties(*fluid.model, T_, rho);
        result.cells.back() = *eta.value * s.cp / (1e-3 * s.M) / *lambda.value;
    }
    return result;
}

int TransportCommand::run() {
    file.begin(options.json());
    if (file ? !T.empty() || !p.empty() : T.empty()) throw Misuse("give --T, or --input");
    if (options.names_mixture()) {
        if (file || p.empty()) throw Misuse("a mixture takes --T and --p");
        options.to_mixture(request);
        return flash("transport", options, request, {{"T", T}, {"p", p}}, {}, true);
    }
    if (!request.kij.empty() || !request.basis.empty() || request.pair_set > 0)
        throw Misuse("--kij, --basis and --pair-set are of mixtures: MODEL A=0.5 B");
    const Fluid fluid = options.open();
    Units const& u = options.units;
    TransportCells transport(fluid, u);
    const auto at = [&](double T_, double p_) {
        const Roots roots = density_roots(*fluid.model, T_, p_);
        return row(fluid, transport, T_, p_, roots.stable_name, roots.stable);
    };
    if (file) {
        file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, u);
        if (!file.has("T") || !file.has("p")) throw Failure("--input: columns T and p are needed");
        const FileRun::Compute compute = [&](FileRow const& in, Row& result) {
            result = at(in["T"], in["p"]);
        };
        return file.run("transport", columns(transport), options.style, [&] { return compute; });
    }
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, u);
    Heading head = heading("transport", fluid, u);
    Table table{columns(transport), {}};
    const auto name = [&](double T_) {
        return fmt::format("{} at T = {}", fluid.name(), u.text(Quantity::temperature, T_));
    };
    const auto pressures =
        p.empty() ? std::vector<double>() : positive_points(p, "--p", Quantity::pressure, u);
    Rows rows("transport", table, temperatures.size() * std::max<std::size_t>(pressures.size(), 1));
    if (!p.empty()) {
        rows.each(temperatures, pressures, [&](double T_, double p_) {
            return rows.add(name(T_) + ", p = " + u.text(Quantity::pressure, p_),
                            {{0, u.from_library(Quantity::temperature, T_)},
                             {1, u.from_library(Quantity::pressure, p_)}},
                            [&] { return at(T_, p_); });
        });
    } else {
        add_boiling(rows, head, fluid, temperatures, u,
                    [&](double T_, double p_, char const* phase, double rho) {
                        return row(fluid, transport, T_, p_, phase, rho);
                    });
    }
    const int code = rows.finish(head);
    transport.tell(head);
    write(head, table, options.style);
    return code;
}

int TransportCommand::tension() {
    if (T.empty()) throw Misuse("give --T");
    const Fluid fluid = options.open();
    Units const& u = options.units;
    TransportCells transport(fluid, u);
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, u);
    Heading head = heading("surface-tension", fluid, u);
    Table table{{{"T", u.name(Quantity::temperature), "temperature", true},
                 transport.tension_column()},
                {}};
    Rows rows("surface-tension", table, temperatures.size());
    for (double T_ : temperatures)
        if (!rows.add(fmt::format("{} at T = {}", fluid.name(), u.text(Quantity::temperature, T_)),
                      {{0, u.from_library(Quantity::temperature, T_)}}, [&] {
                          Row result{{u.from_library(Quantity::temperature, T_)}, ""};
                          result.cells.push_back(transport.tension(T_, result).cell);
                          return result;
                      }))
            break;
    const int code = rows.finish(head);
    transport.tell(head);
    write(head, table, options.style);
    return code;
}
}  // namespace

void add_transport(Program& program) {
    auto transport = std::make_shared<TransportCommand>();
    Command command = program.add("transport", "viscosity and thermal conductivity of a fluid, or of the phases of a mixture",
                                  [transport] { return transport->run(); });
    transport->options.add_fluid(command);
    command.value("--T", transport->T, "temperatures", {.type = "VALUES"})
        .value("--p", transport->p, "pressures; without: saturated liquid and vapour",
               {.type = "VALUES"});
    transport->file.add_to(command);
    transport->request.add_pairs(command);
    transport->options.add_units(command);
    transport->options.add_output(command);
    command.examples(R"(  corvane transport water --T 300,600 --p 10
  corvane transport toluene --T 20:100:20 --unit-T C      saturated liquid and vapour
  corvane transport PR+vdW1 methane=0.5 propane=0.5 --T 280 --p 2      its phases)");

    auto tension = std::make_shared<TransportCommand>();
    Command second = program.add("surface-tension", "surface tension of a pure liquid",
                                 [tension] { return tension->tension(); });
    tension->options.add_fluid(second);
    second.value("--T", tension->T, "temperatures", {.type = "VALUES"});
    tension->options.add_units(second);
    tension->options.add_output(second);
    second.examples(R"(  corvane surface-tension ethanol --T 280:340:20)");
}

}  // namespace cli
