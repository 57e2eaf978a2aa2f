// corvane henry: Henry's constants of a solute in a solvent.
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
struct HenryCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;
    FileRun file;

    int run();

  private:
    MixtureFluid open() const;
    int of_file(MixtureFluid const& mixture);
    std::vector<Column> columns(bool several) const;
    Row row(MixtureFluid const& mixture, double T_, double p_, Vector<double> const& x) const;
};

/// The solute, of mole fraction 0, is the first component.
MixtureFluid HenryCommand::open() const {
    MixtureRequest all = request;
    if (all.components.size() < 2)
        throw Misuse("give the solute, then the solvent: nitrogen water");
    if (all.components.front().find('=') != std::string::npos)
        throw Misuse(
            "the first component is the solute, and has no mole fraction: it is infinitely dilute");
    all.components.front() += "=0";
    return open_mixture(all);
}

std::vector<Column> HenryCommand::columns(bool several) const {
    Units const& u = options.units;
    const Units molar;
    return {{"T", u.name(Quantity::temperature), "temperature", several},
            {"p", u.name(Quantity::pressure), "pressure", several && !p.empty()},
            {"H", u.name(Quantity::pressure), "Henry's constant, f/x for x to 0"},
            {"lnH", "", "its logarithm, H in MPa"},
            {"gamma", "", "activity coefficient at infinite dilution"},
            {"phi", "", "fugacity coefficient at infinite dilution"},
            {"v", molar.name(Quantity::volume), "partial molar volume of the solute"},
            {"h_sol", molar.name(Quantity::energy),
             "enthalpy of solution from the ideal gas, per mole of solute"},
            {"rho", u.name(Quantity::density), "density of the solvent"}};
}

/// At the vapour pressure of the solvent where p_ is not-a-number.
Row HenryCommand::row(MixtureFluid const& mixture, double T_, double p_,
                      Vector<double> const& x) const {
    ModelN const& model = *mixture.model;
    const corvane::HenryConstant q = std::isnan(p_) ? corvane::henry_constant(model, 0, T_, x)
                                                    : corvane::henry_constant(model, 0, T_, p_, x);
    Units const& u = options.units;
    Row result{{u.from_library(Quantity::temperature, T_), u.from_library(Quantity::pressure, q.p),
                u.from_library(Quantity::pressure, q.H), q.ln_H, std::exp(q.ln_gamma),
                std::exp(q.ln_phi), q.v, q.h_solution, mixture.density(u, x, q.rho)},
               reference_note(mixture, 0, T_, q.pure, corvane::Root::dense)};
    double v = 0.0;
    for (int i = 0; i < x.size(); ++i) v += x[i] * model.mdl1[i]->vcrit();
    if (q.rho * v < 1.0)
        add_note(result.note, "the solvent is no liquid at T and p");
    else if (!q.stable && !std::isnan(p_))  // at the vapour pressure rounding decides
        add_note(result.note, "the liquid solvent is metastable there");
    return result;
}

int HenryCommand::of_file(MixtureFluid const& mixture) {
    file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, options.units);
    if (!file.has("T")) throw Failure("--input: a column T is needed");
    if (file.has("p")) p = "p";
    const FileRun::Compute compute = [&](FileRow const& in, Row& result) {
        result = row(mixture, in["T"], p.empty() ? std::nan("") : in["p"], mixture.x);
    };
    return file.run("henry", columns(true), options.style, [&] { return compute; });
}

int HenryCommand::run() {
    file.begin(options.json());
    if (file ? !T.empty() || !p.empty() : T.empty()) throw Misuse("give --T, or --input");
    options.begin();
    const MixtureFluid mixture = open();
    Units& units = options.units;
    units.M = mixture.M();
    if (file) return of_file(mixture);
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const std::vector<double> pressures =
        p.empty() ? std::vector<double>{std::nan("")}
                  : positive_points(p, "--p", Quantity::pressure, units);
    const std::size_t asked = temperatures.size() * pressures.size();
    Heading head = heading("henry", mixture);
    head.remarks.push_back(fmt::format(
        "{} infinitely dilute in the liquid of the rest, {}; H = lim f/x; gamma: against pure {} "
        "at T and p",
        mixture.component(0), p.empty() ? "at its vapour pressure" : "at T and p",
        mixture.component(0)));
    Table table{columns(asked > 1), {}};
    Rows rows("henry", table, asked, "states");
    rows.each(temperatures, pressures, [&](double T_, double p_) {
        Rows::Given known = given(units, T_, p_);
        std::string at = "T = " + units.text(Quantity::temperature, T_);
        if (std::isnan(p_))
            known.pop_back();
        else
            at += ", p = " + units.text(Quantity::pressure, p_);
        return rows.add(fmt::format("{} at {}", mixture.text(), at), known,
                        [&] { return row(mixture, T_, p_, mixture.x); });
    });
    return rows.write(head, upright_if(options.style, asked == 1));
}
}  // namespace

void add_henry(Program& program) {
    auto henry = std::make_shared<HenryCommand>();
    Command command =
        program.add("henry", "Henry's constant and activity coefficient at infinite dilution",
                    [henry] { return henry->run(); });
    henry->request.solute = true;
    henry->request.add_to(command);
    command
        .value("--T", henry->T, "temperatures: 300 or 300,310 or first:last:step",
               {.type = "VALUES"})
        .value("--p", henry->p,
               "pressures, in the same forms (default: the solvent's vapour pressure)",
               {.type = "VALUES"});
    henry->file.add_to(command);
    henry->options.add_units(command);
    henry->options.add_output(command);
    command.examples(
        R"(  corvane henry PCSAFT+LB methane water --T 300:400:20
  corvane henry PR+vdW1 nitrogen propane=0.5 butane --T 250 --p 20 --units bar)");
}

}  // namespace cli
