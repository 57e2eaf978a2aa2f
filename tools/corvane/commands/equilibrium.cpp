// corvane equilibrium: bubble and dew points of a mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/incipient.h>
#include <tools/corvane/commands/stability.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/corvane.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
struct EquilibriumCommand {
    Options options;
    MixtureRequest request;
    std::string T, p, kind = "bubble", scan;

    int run();

  private:
    struct Asked {
        double given;
        Vector<double> x;
    };
    bool dew() const { return kind == "dew"; }
    bool by_T() const { return p.empty(); }
    std::vector<Asked> read(MixtureFluid const& mixture) const;
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, Incipient const& point) const;
};

std::vector<EquilibriumCommand::Asked> EquilibriumCommand::read(MixtureFluid const& mixture) const {
    const auto given =
        positive_points(by_T() ? T : p, by_T() ? "--T" : "--p",
                        by_T() ? Quantity::temperature : Quantity::pressure, options.units);
    std::vector<Asked> result;
    if (scan.empty()) {
        for (double value : given) result.push_back({value, mixture.x});
        return result;
    }
    if (mixture.size() != 2) throw Misuse("--scan needs two components");
    if (mixture.composed) throw Misuse("--scan gives the mole fractions: name components only");
    const std::size_t equals = scan.find('=');
    if (equals == std::string::npos)
        throw Misuse("--scan: give NAME=first:last:step, such as methane=0:1:0.1");
    const std::string name = substance_name(mixture.eos, scan.substr(0, equals));
    const int i = name == mixture.component(0) ? 0 : 1;
    if (name != mixture.component(i))
        throw Misuse(fmt::format("--scan: {} is not a component of the mixture", name));
    for (double value : given)
        for (double fraction : mole_fractions(scan.substr(equals + 1), "--scan"))
            result.push_back({value, binary(i == 0 ? fraction : 1.0 - fraction)});
    return result;
}

std::vector<Column> EquilibriumCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {{"T", u.name(Quantity::temperature), "temperature", by_T()},
                                  {"p", u.name(Quantity::pressure), "pressure", !by_T()}};
    add_fractions(result, mixture, "x", "mole fraction in the liquid", !dew());
    add_fractions(result, mixture, "y", "mole fraction in the vapour", dew());
    result.push_back({"rhoL", u.name(Quantity::density), "density of the liquid"});
    result.push_back({"rhoV", u.name(Quantity::density), "density of the vapour"});
    for (int i = 0; i < mixture.size(); ++i)
        result.push_back({fmt::format("K_{}", mixture.component(i)), "", "y/x"});
    return result;
}

Row EquilibriumCommand::row(MixtureFluid const& mixture, Incipient const& point) const {
    Units const& u = options.units;
    const Vector<double> second = point.y();
    Vector<double> const &x = dew() ? second : point.x, &y = dew() ? point.x : second;
    const double rhoL = dew() ? point.rho_i.sum() : point.rho;
    const double rhoV = dew() ? point.rho : point.rho_i.sum();
    Row result;
    result.cells.emplace_back(u.from_library(Quantity::temperature, point.T));
    result.cells.emplace_back(u.from_library(Quantity::pressure, point.p));
    for (Vector<double> const* phase : {&x, &y}) add_cells(result, *phase);
    result.cells.emplace_back(mixture.density(u, x, rhoL));
    result.cells.emplace_back(mixture.density(u, y, rhoV));
    for (int i = 0; i < mixture.size(); ++i)
        result.cells.emplace_back(y[i] / x[i]);  // not finite, so blank, if absent
    char const* given = dew() ? "vapour" : "liquid";
    if (unstable(*mixture.model, point.T, point.x * point.rho))
        result.note = fmt::format("unstable: the {} splits", given);
    else if (splitting_phase(*mixture.model, point.p, point.T, point.rho, point.x))
        result.note = fmt::format("metastable: the {} splits", given);
    return result;
}

int EquilibriumCommand::run() {
    if (T.empty() == p.empty()) throw Misuse("give either --T or --p");
    options.begin();
    request.fractions_optional = !scan.empty();
    const MixtureFluid mixture = open_mixture(request);
    ModelN const& model = *mixture.model;
    Units& units = options.units;
    units.M = mixture.M();
    const std::vector<Asked> asked = read(mixture);
    Heading head = heading("equilibrium", mixture);
    head.remarks.emplace_back(dew() ? "dew points: the vapour (y) is given, x is the first liquid"
                                    : "bubble points: the liquid (x) is given, y is the first "
                                      "vapour");
    Table table{columns(mixture), {}};
    IncipientSearch search(model, dew(), by_T());
    const Quantity quantity = by_T() ? Quantity::temperature : Quantity::pressure;
    Rows rows("equilibrium", table, asked.size());
    for (Asked const& one : asked) {
        const std::string what =
            fmt::format("{}+{}{} at {} = {}", mixture.eos, mixture.mth, mixture.composition(one.x),
                        by_T() ? "T" : "p", units.text(quantity, one.given));
        if (!rows.add(what, cli::given(units, by_T(), one.given, one.x, !dew()), [&] {
                const auto point = search.at(one.given, one.x);
                if (point) return row(mixture, *point);
                throw Failure(fmt::format("no {} point found{} (tried: {})", kind,
                                          critical_hint(model, one.x, by_T(), one.given, units),
                                          search.failure()));
            }))
            break;
    }
    const int code = rows.finish(head);
    write(head, table, options.style);
    return code;
}
}  // namespace

void add_equilibrium(Program& program) {
    auto equilibrium = std::make_shared<EquilibriumCommand>();
    Command command = program.add("equilibrium", "bubble and dew points of a mixture",
                                  [equilibrium] { return equilibrium->run(); });
    equilibrium->request.fractions_optional = true;
    equilibrium->request.add_to(command);
    command
        .value("--T", equilibrium->T, "temperatures: 300 or 300,310 or first:last:step",
               {.type = "VALUES"})
        .value("--p", equilibrium->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--kind", equilibrium->kind, "bubble: of a liquid (default); dew: of a vapour",
               {.one_of = {"bubble", "dew"}, .type = "KIND"})
        .value("--scan", equilibrium->scan,
               "binary: mole fractions of a component, methane=0:1:0.1 (p-x-y, T-x-y diagram)",
               {.type = "NAME=VALUES"});
    equilibrium->options.add_units(command);
    equilibrium->options.add_output(command);
    command.examples(
        R"(  corvane equilibrium PR+vdW1 methane=0.3 propane=0.7 --T 250:300:10
  corvane equilibrium PR+vdW1 nitrogen=0.05 CO2=0.05 methane --p 20 --unit-p bar --kind dew
  corvane equilibrium PR+vdW1 CO2 propane --scan CO2=0:1:0.1 --T 270)");
}

}  // namespace cli
