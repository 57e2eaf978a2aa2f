// corvane excess: activity coefficients and excess functions of a mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/results/references.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/state/excess.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace cli {
namespace {
struct ExcessCommand {
    Options options;
    MixtureRequest request;
    std::string T, p, scan, phase = "liquid";
    FileRun file;

    int run();

  private:
    int of_file(MixtureFluid const& mixture);
    corvane::Root root() const {
        return phase == "liquid"   ? corvane::Root::dense
               : phase == "vapour" ? corvane::Root::dilute
                                   : corvane::Root::stable;
    }
    std::vector<Column> columns(MixtureFluid const& mixture, bool several) const;
    Row row(MixtureFluid const& mixture, double T_, double p_, Vector<double> const& x) const;
};

std::vector<Column> ExcessCommand::columns(MixtureFluid const& mixture, bool several) const {
    Units const& u = options.units;
    std::vector<Column> result = {{"T", u.name(Quantity::temperature), "temperature", several},
                                  {"p", u.name(Quantity::pressure), "pressure", several}};
    add_fractions(result, mixture, "x", "mole fraction", true);
    result.push_back({"rho", u.name(Quantity::density), "density"});
    add_fractions(result, mixture, "gamma", "activity coefficient");
    result.push_back({"gE", u.name(Quantity::energy), "excess Gibbs energy"});
    result.push_back({"hE", u.name(Quantity::energy), "excess enthalpy"});
    result.push_back({"sE", u.name(Quantity::entropy), "excess entropy"});
    result.push_back({"cpE", u.name(Quantity::entropy), "excess isobaric heat capacity"});
    result.push_back({"vE", u.name(Quantity::volume), "excess volume"});
    add_fractions(result, mixture, "phi", "fugacity coefficient");
    add_fractions(result, mixture, "rho0", "density of the pure component");
    for (int k = 1; k <= mixture.size(); ++k)
        result[result.size() - static_cast<unsigned>(k)].unit = u.name(Quantity::density);
    for (int k = 1; k <= 2 * mixture.size(); ++k)
        result[result.size() - static_cast<unsigned>(k)].detail = true;
    return result;
}

/// Values in the order of the columns.
Row ExcessCommand::row(MixtureFluid const& mixture, double T_, double p_,
                       Vector<double> const& x) const {
    const auto q = corvane::excess_properties(*mixture.model, T_, p_, x, root());
    Units u = options.units;
    u.M = mixture.M(x);
    Row result;
    const auto add = [&](Quantity quantity, double value) {
        result.cells.emplace_back(u.from_library(quantity, value));
    };
    add(Quantity::temperature, T_);
    add(Quantity::pressure, p_);
    add_cells(result, x);
    add(Quantity::density, q.rho);
    for (int i = 0; i < x.size(); ++i) result.cells.emplace_back(std::exp(q.ln_gamma[i]));
    add(Quantity::energy, q.g);
    add(Quantity::energy, q.h);
    add(Quantity::entropy, q.s);
    add(Quantity::entropy, q.cp);
    add(Quantity::volume, q.v);
    for (int i = 0; i < x.size(); ++i) result.cells.emplace_back(std::exp(q.ln_phi[i]));
    for (int i = 0; i < x.size(); ++i) {
        auto const& pure = q.pure[static_cast<unsigned>(i)];
        u.M = mixture.model->mdl1[i]->M();
        add(Quantity::density, pure.rho > 0.0 ? pure.rho : std::nan(""));
        add_note(result.note, reference_note(mixture, i, T_, pure, root()));
    }
    return result;
}

int ExcessCommand::of_file(MixtureFluid const& mixture) {
    file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, options.units, &mixture);
    if (!file.has("T") || !file.has("p")) throw Failure("--input: columns T and p are needed");
    const FileRun::Compute compute = [&](FileRow const& in, Row& result) {
        result = row(mixture, in["T"], in["p"], in.x());
    };
    return file.run("excess", columns(mixture, true), options.style, [&] { return compute; });
}

int ExcessCommand::run() {
    file.begin(options.json());
    if (file ? !T.empty() || !p.empty() || !scan.empty() : T.empty() || p.empty())
        throw Misuse("give --T and --p, or --input");
    options.begin();
    request.fractions_optional = !scan.empty() || file;
    const MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    if (file) return of_file(mixture);
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto pressures = positive_points(p, "--p", Quantity::pressure, units);
    const std::vector<Vector<double>> compositions =
        scan.empty() ? std::vector<Vector<double>>{mixture.x} : scanned(mixture, scan);
    const std::size_t asked = temperatures.size() * pressures.size() * compositions.size();
    Heading head = heading("excess", mixture);
    head.remarks.push_back(fmt::format(
        "gamma and excess functions: against the pure components at T and p, {}; whether the phase "
        "splits is not tested here",
        phase == "stable" ? "each on its stable density root"
                          : fmt::format("all on the {} density root", phase)));
    Table table{columns(mixture, asked > 1), {}};
    Rows rows("excess", table, asked, "states");
    rows.each(temperatures, pressures, [&](double T_, double p_) {
        for (Vector<double> const& x : compositions) {
            Rows::Given known = given(units, T_, p_);
            for (int i = 0; i < x.size(); ++i)
                known.emplace_back(static_cast<unsigned>(2 + i), x[i]);
            if (!rows.add(fmt::format("{}{} at T = {}, p = {}", mixture.name(),
                                      mixture.composition(x), units.text(Quantity::temperature, T_),
                                      units.text(Quantity::pressure, p_)),
                          known, [&] { return row(mixture, T_, p_, x); }))
                return false;
        }
        return true;
    });
    return rows.write(head, upright_if(options.style, asked == 1));
}
}  // namespace

void add_excess(Program& program) {
    auto excess = std::make_shared<ExcessCommand>();
    Command command =
        program.add("excess", "activity coefficients and excess functions of a mixture",
                    [excess] { return excess->run(); }, "activity");
    excess->request.fractions_optional = true;
    excess->request.add_to(command);
    command
        .value("--T", excess->T, "temperatures: 300 or 300,310 or first:last:step",
               {.type = "VALUES"})
        .value("--p", excess->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--scan", excess->scan, "binary: mole fractions of a component, acetone=0:1:0.1",
               {.type = "NAME=VALUES"})
        .value("--phase", excess->phase,
               "density root of the mixture and of the pure components: liquid (default), vapour, "
               "or for each the stable one",
               {.one_of = {"liquid", "vapour", "stable"}, .type = "PHASE"});
    excess->file.add_to(command);
    excess->options.add_units(command);
    excess->options.add_output(command);
    command.examples(
        R"(  corvane excess PCSAFT+LB ethanol=0.4 hexane --T 300 --p 0.1
  corvane excess PR+vdW1 acetone chloroform --scan acetone=0:1:0.1 --T 25 --p 1 --units bar
  corvane activity PR+vdW1 propane=0 butane --T 300 --p 1      infinitely dilute propane)");
}

}  // namespace cli
