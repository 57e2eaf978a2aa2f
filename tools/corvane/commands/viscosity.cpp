// corvane viscosity: dilute gas, and dense fluid by friction theory.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace cli {
namespace {
struct ViscosityCommand {
    Options options;
    std::string T, p;
    FileRun file;
    int number = 0;

    int run();

  private:
    Row row(Fluid const& fluid, double T_, std::optional<double> p_) const;
    ParameterNotes dilute_, friction_;
};

std::string friction_file(std::string const& equation, std::string const& substance, int id) {
    return below_home(
        fmt::format("./models/viscosity/friction_theory/{}/{};{}", equation, substance, id));
}
std::string friction_file(Model1 const& model, int id) {
    return friction_file(model.eos(), model.name(), id);
}

/// Where neither equation nor set was asked for: the best equation that has a friction-theory set,
/// with the parameter set that this was made with. Whether it is another one than before.
bool choose_by_friction(Fluid& fluid, Options const& options) {
    if (options.words.size() > 1 || !options.set.empty() || fluid.pseudo) return false;
    const std::string substance = fluid.substance;
    for (std::string const& equation : corvane::equations_for(entered_home(), substance))
        for (int id = 1; id <= 9; ++id) {
            if (!std::filesystem::exists(friction_file(equation, substance, id))) continue;
            const bool other = equation != fluid.equation || id != fluid.set;
            if (other) fluid = open_fluid({equation, substance, id, options.define});
            return other;
        }
    return false;
}

/// The friction-theory set to use: they bear the number of the parameter set that they were made
/// with, and with another one they may be a third off. @throws Failure
int friction_set(Model1 const& model) {
    const auto exists = [&](int id) { return std::filesystem::exists(friction_file(model, id)); };
    if (exists(model.id())) return model.id();
    for (int id = 1; id <= 9; ++id)
        if (exists(id))
            throw Failure(fmt::format(
                "the friction-theory set of {} was made with set {} of {}: give --set {}, or "
                "--friction-set {} to use it with set {} all the same",
                model.name(), id, model.eos(), id, id, model.id()));
    throw Failure(fmt::format(
        "no friction-theory set of {} for the equation {}: without --p the "
        "viscosity of the dilute gas is shown; corvane transport has models of more substances",
        model.name(), model.eos()));
}

Row ViscosityCommand::row(Fluid const& fluid, double T_, std::optional<double> p_) const {
    Model1 const& model = *fluid.model;
    Units const& u = options.units;
    const double eta0 = model.visco.eta0(T_);
    Row row{{u.from_library(Quantity::temperature, T_)}, ""};
    const auto flag = [&](char const* what, ParameterNotes const& range, double at) {
        const std::string limits = beyond(range, T_, at, u);
        if (!limits.empty()) add_note(row.note, fmt::format("extrapolated: {} {}", what, limits));
    };
    if (!p_) {
        flag("dilute gas", dilute_, 0.0);
        row.cells.emplace_back(u.from_library(Quantity::viscosity, eta0));
        return row;
    }
    const Roots roots = density_roots(model, T_, *p_);
    double pr = 0.0, pa = 0.0;
    double eta = model.visco.eta(roots.stable, T_, pr, pa);
    if (model.visco.level() != ft_3) eta += eta0;  // levels 1 and 2 give the dense part alone
    row.cells.insert(
        row.cells.end(),
        {u.from_library(Quantity::pressure, *p_), std::string(roots.stable_name),
         u.from_library(Quantity::density, roots.stable),
         u.from_library(Quantity::viscosity, eta), u.from_library(Quantity::viscosity, eta0),
         u.from_library(Quantity::pressure, pr), u.from_library(Quantity::pressure, pa)});
    row.note = extrapolated(fluid, T_, *p_, false, u);
    flag("friction theory", friction_, *p_);
    if (const int made = model.visco.id(); made != model.id())
        add_note(row.note, fmt::format("friction theory made with set {} of the equation, not {}",
                                       made, model.id()));
    flag("dilute gas", dilute_, 0.0);
    return row;
}

/// dense: of friction theory.
std::vector<Column> columns(bool dense, Units const& units) {
    const Column T_{"T", units.name(Quantity::temperature), "temperature", true};
    if (!dense)
        return {T_, {"eta0", units.name(Quantity::viscosity), "viscosity of the dilute gas"}};
    return {T_,
            {"p", units.name(Quantity::pressure), "pressure", true},
            {"phase", "", "stable phase"},
            {"rho", units.name(Quantity::density), "density"},
            {"eta", units.name(Quantity::viscosity), "viscosity"},
            {"eta0", units.name(Quantity::viscosity), "part of the dilute gas"},
            {"pr", units.name(Quantity::pressure), "repulsive pressure"},
            {"pa", units.name(Quantity::pressure), "attractive pressure"}};
}

int ViscosityCommand::run() {
    file.begin(options.json());
    if (file ? !T.empty() || !p.empty() : T.empty()) throw Misuse("give --T, or --input");
    Fluid fluid = options.open();
    Units const& units = options.units;
    if (file) file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, units);
    const bool dense = !p.empty() || file.has("p");
    const bool chosen = dense && number == 0 && choose_by_friction(fluid, options);
    Model1& model = *fluid.model;
    const std::string dilute = fmt::format("CorvaneS/viscosity/dilute/{}", model.name());
    asking("dilute-gas viscosity " + dilute, [&] { model.visco.load0(); });
    dilute_ = corvane::parameter_notes(below_home("./" + dilute));
    const auto temperatures =
        file ? std::vector<double>() : positive_points(T, "--T", Quantity::temperature, units);
    Heading head = heading("viscosity", fluid, units);
    if (chosen)
        head.remarks.push_back(fmt::format("no equation was named: set {} of {} is the best that friction "
                                           "theory knows", fluid.set, fluid.equation));
    std::vector<std::optional<double>> pressures{std::nullopt};
    if (dense) {
        pressures.clear();
        if (!file)
            for (double x : positive_points(p, "--p", Quantity::pressure, units))
                pressures.emplace_back(x);
        const int id = number > 0 ? number : friction_set(model);
        model.visco.set_id(id);
        asking(fmt::format("friction-theory set {} of {} for {}", id, model.name(), model.eos()),
               [&] { model.visco.load1(model.eos()); });
        friction_ = corvane::parameter_notes(friction_file(model, id));
        head.remarks.push_back(
            fmt::format("friction theory, set {}: {}", id, model.visco.comment()));
    }
    Table table{columns(dense, units), {}};
    if (file) {
        if (!file.has("T")) throw Failure("--input: a column T is needed");
        const FileRun::Compute compute = [&](FileRow const& in, Row& result) {
            result = row(fluid, in["T"], file.has("p") ? std::optional(in["p"]) : std::nullopt);
        };
        return file.run("viscosity", table.columns, options.style, [&] { return compute; });
    }
    Rows rows("viscosity", table, temperatures.size() * pressures.size());
    rows.each(temperatures, pressures, [&](double T_, std::optional<double> p_) {
        std::string what =
            fmt::format("{} at T = {}", fluid.name(), units.text(Quantity::temperature, T_));
        Rows::Given given = {{0, units.from_library(Quantity::temperature, T_)}};
        if (p_) {
            what += ", p = " + units.text(Quantity::pressure, *p_);
            given.emplace_back(1, units.from_library(Quantity::pressure, *p_));
        }
        return rows.add(what, given, [&] { return row(fluid, T_, p_); });
    });
    return rows.write(head, options.style);
}
}  // namespace

void add_viscosity(Program& program) {
    auto viscosity = std::make_shared<ViscosityCommand>();
    Command command = program.add("viscosity", "viscosity of the dilute gas and of the fluid",
                                  [viscosity] { return viscosity->run(); });
    viscosity->options.add_fluid(command);
    command.value("--T", viscosity->T, "temperatures", {.type = "VALUES"})
        .value("--p", viscosity->p, "pressures: the dense fluid, by friction theory",
               {.type = "VALUES"})
        .count("--friction-set", viscosity->number, "number of the friction-theory set");
    viscosity->file.add_to(command);
    viscosity->options.add_units(command);
    viscosity->options.add_output(command);
    command.examples(
        R"(  corvane viscosity PR nitrogen --T 200:400:50
  corvane viscosity MEOS propane --set 2 --T 300 --p 0.1,1,10)");
}

}  // namespace cli
