// corvane solubility: the fluid of a binary that coexists with a pure solid.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/input/solids.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/corvane.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <optional>

namespace cli {
namespace {
struct SolubilityCommand {
    Options options;
    MixtureRequest request;
    std::string solid, T, p, phase = "stable", data;

    int run();

  private:
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, double T_, double p_);
    Row any_root(MixtureFluid const& mixture, double T_, double p_) const;
    Row point(MixtureFluid const& mixture, double T_, double p_);
    std::string reason(ModelN const& m, double T_, double p_) const;
    Row stable_row(MixtureFluid const& mixture, double T_, double p_);
    void add_amount(MixtureFluid const& mixture, double x, Row& result) const;
    int s_ = 0;  // index of the component that forms the solid
    std::optional<PureSolid> pure_[2];
    Evidence evidence_;  // of the stable fluids
};

/// Bound of |Δμ/(RT)| of the solid's component between both phases: the search stops at 1e-9 in
/// ln(x/(1 − x)).
constexpr double kPotentials = 1e-7;

std::vector<Column> SolubilityCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result = {{"T", u.name(Quantity::temperature), "temperature", true},
                                  {"p", u.name(Quantity::pressure), "pressure", true}};
    for (int i : {0, 1})
        result.push_back(
            {fmt::format("x_{}", mixture.component(i)), "", "mole fraction in the fluid"});
    result.push_back({"rho", u.name(Quantity::density), "density of the fluid"});
    result.push_back({"solid", "", "phase of the solid"});
    result.push_back({"rhoS", u.name(Quantity::density), "density of the solid"});
    if (mixture.composed) result.push_back({"amountS", "", "mole fraction of all that is solid"});
    if (phase == "stable") Evidence::add_columns(result);
    return result;
}

Row SolubilityCommand::row(MixtureFluid const& mixture, double T_, double p_) {
    return phase == "stable" ? stable_row(mixture, T_, p_) : any_root(mixture, T_, p_);
}

/// The root asked for, by the published function: not certified.
Row SolubilityCommand::any_root(MixtureFluid const& mixture, double T_, double p_) const {
    ModelN const& m = *mixture.model;
    Solid const& curve = m.mdl1[s_]->solid;
    Units const& u = options.units;
    Vector<double> z(2), rho(2);
    z[0] = 1 - s_;
    int form = 0;
    equil2s(&m, p_, T_, z, phase == "liquid" ? 1 : 3, 0.0, rho, form);
    Vector<double> x(2), pure(2);
    x[0] = z[1];
    x[1] = 1.0 - z[1];
    pure[s_] = 1.0;
    // Recomputed from the solid's own Gibbs energy and, for the fluid's density, the pressure.
    int again = 0;
    double rho_solid = 0.0;
    const double g = curve.Ge(p_, T_, again, rho_solid);
    const double p_fluid = m.Z(rho[1], T_, x) * rho[1] * R * T_;
    if (!(std::fabs(m.my(x * rho[1], T_, s_) - g) < kPotentials) ||
        !(std::fabs(p_fluid - p_) < 1e-7 * p_ + 1e-11 * rho[1] * R * T_))
        throw ThException(th_generic);
    Row result;
    result.cells.emplace_back(u.from_library(Quantity::temperature, T_));
    result.cells.emplace_back(u.from_library(Quantity::pressure, p_));
    for (int i : {0, 1}) result.cells.emplace_back(x[i]);
    result.cells.emplace_back(mixture.density(u, x, rho[1]));
    result.cells.emplace_back(std::string(curve.id(form)));
    result.cells.emplace_back(mixture.density(u, pure, rho[0]));
    const corvane::StabilityResult fluid = corvane::stability(m, p_, T_, x);
    if (!fluid.stable)
        result.note = "metastable: the fluid splits into two";
    else if (fluid.unconverged > 0)
        result.note = "whether the fluid splits is not known";
    if (pure_[1 - s_] && T_ <= pure_[1 - s_]->T_max() &&
        m.my(x * rho[1], T_, 1 - s_) > pure_[1 - s_]->g(p_, T_) + kPotentials)
        add_note(result.note,
                 fmt::format("metastable: {} freezes, too", mixture.component(1 - s_)));
    add_amount(mixture, x[s_], result);
    return result;
}

/// Which part of the mixture asked for is solid, if the fluid has a mole fraction x of its
/// component.
void SolubilityCommand::add_amount(MixtureFluid const& mixture, double x, Row& result) const {
    if (!mixture.composed) return;
    const double amount = (mixture.x[s_] - x) / (1.0 - x);
    result.cells.emplace_back(std::max(amount, 0.0));
    if (amount < 0.0) add_note(result.note, "the mixture given is not saturated");
}

/// The stable fluid, by the certified search.
Row SolubilityCommand::stable_row(MixtureFluid const& mixture, double T_, double p_) {
    Units const& u = options.units;
    corvane::SolidFluidOptions how;
    corvane::Validity validity = mixture.validity;  // ranges begin at triple points: here is below
    validity.T_min = 0.0;
    validity.T_triple = {};
    how.validity = &validity;
    for (int i : {0, 1})
        if (pure_[i]) how.anchored[i] = pure_[i]->pointer();
    const corvane::SolidFluidPoint q = corvane::solubility(*mixture.model, s_, p_, T_, how);
    Vector<double> pure(2);
    pure[s_] = 1.0;
    Row result;
    result.cells.emplace_back(u.from_library(Quantity::temperature, T_));
    result.cells.emplace_back(u.from_library(Quantity::pressure, p_));
    for (int i : {0, 1}) result.cells.emplace_back(q.x[i]);
    result.cells.emplace_back(mixture.density(u, q.x, q.rho));
    result.cells.emplace_back(std::string(pure_[s_]->form(q.form)));
    result.cells.emplace_back(mixture.density(u, pure, q.rho_solid));
    add_amount(mixture, q.x[s_], result);
    if (!q.certificate.holds()) add_note(result.note, "not certified");
    if (T_ < pure_[s_]->T_min())
        add_note(result.note, "extrapolated: below the transition or the end of the solid's data");
    evidence_.add(result, q.certificate);
    return result;
}

/// Why there is no equilibrium, as far as the pure component tells.
std::string SolubilityCommand::reason(ModelN const& m, double T_, double p_) const {
    Model1 const& pure = *m.mdl1[s_];
    try {
        double rho_fluid = 0.0;
        if (pure.Ge(p_, T_, 2, rho_fluid) < pure_[s_]->g(p_, T_))
            return " (the pure component is no solid there: it melts or evaporates)";
        if (phase != "stable") return " (the fluid takes up the solid in no composition)";
    } catch (ThException const&) {  // only a hint
    } catch (MthException const&) {
    }
    return "";
}

/// The row, or a failure with its reason. @throws Failure
Row SolubilityCommand::point(MixtureFluid const& mixture, double T_, double p_) {
    try {
        return asking(fmt::format("no fluid in equilibrium with solid {}", mixture.component(s_)),
                      [&] { return row(mixture, T_, p_); });
    } catch (Failure const& failure) {
        throw Failure(failure.what() + reason(*mixture.model, T_, p_));
    }
}

int SolubilityCommand::run() {
    request.fractions_optional = true;
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    if (mixture.size() != 2) throw Misuse("solubility needs two components");
    s_ = mixture.index(solid);
    if (s_ < 0) throw Misuse(fmt::format("--solid: {} is not a component of the mixture", solid));
    if (data.empty() && phase != "stable") data = "sublimation";
    if (data == "fusion" && phase != "stable")
        throw Misuse("--phase goes with --solid-data sublimation; beside a solid from fusion data "
                     "the stable fluid is found");
    for (int i : {0, 1}) pure_[i] = load_solid(*mixture.model->mdl1[i], data);
    pure_[s_] = require_solid(*mixture.model->mdl1[s_], data);
    Units& units = options.units;
    units.M = mixture.M();
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto pressures = positive_points(p, "--p", Quantity::pressure, units);
    const double top = pure_[s_]->T_max();
    Heading head = heading("solubility", mixture);
    head.remarks.push_back(pure_[s_]->remark(units));
    if (pure_[1 - s_])
        head.remarks.push_back(pure_[1 - s_]->remark(units));
    else
        head.remarks.push_back(fmt::format("no solid data of {}: whether it freezes is not tested",
                                           mixture.component(1 - s_)));
    Table table{columns(mixture), {}};
    Rows rows("solubility", table, temperatures.size() * pressures.size());
    rows.each(pressures, temperatures, [&](double p_, double T_) {
        return rows.add(state(mixture, units, T_, p_), given(units, T_, p_), [&] {
            if (T_ > top)
                throw Failure(fmt::format("the data of solid {} end at {}", mixture.component(s_),
                                          units.text(Quantity::temperature, top)));
            return point(mixture, T_, p_);
        });
    });
    evidence_.report(head);
    return rows.write(head, options.style);
}
}  // namespace

void add_solubility(Program& program) {
    auto solubility = std::make_shared<SolubilityCommand>();
    Command command = program.add("solubility", "fluid of a binary above a pure solid: freeze-out",
                                  [solubility] { return solubility->run(); });
    solubility->request.fractions_optional = true;
    solubility->request.add_to(command);
    command
        .value("--solid", solubility->solid, "the component that forms the solid",
               {.required = true, .type = "NAME"})
        .value("--T", solubility->T, "temperatures: 300 or 300,310 or first:last:step",
               {.required = true, .type = "VALUES"})
        .value("--p", solubility->p, "pressures, in the same forms",
               {.required = true, .type = "VALUES"})
        .value("--phase", solubility->phase,
               "root of the fluid where there are two: stable (default), liquid, vapour",
               {.one_of = {"stable", "liquid", "vapour"}, .type = "PHASE"});
    add_solid_data(command, solubility->data);
    solubility->options.add_units(command);
    solubility->options.add_output(command);
    command.examples(
        R"(  corvane solubility PR+vdW1 methane CO2 --solid CO2 --T 120:180:10 --p 5
  corvane solubility PR+vdW1 methane=0.98 CO2=0.02 --solid CO2 --T 150 --p 30 --unit-p bar)");
}

}  // namespace cli
