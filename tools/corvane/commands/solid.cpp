// corvane solid: sublimation curve, properties of the stable solid phase, melting.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/input/solids.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/core/numelo.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <optional>

namespace cli {
namespace {
constexpr double kBold = 1.0;  // MPa, from which an estimated volume of melting tells
constexpr int kSteps = 1;      // per cent of the triple temperature that melting may be below it

struct SolidCommand {
    Options options;
    std::string T, p, melting, data;

    int run();

  private:
    using Solve = Row (SolidCommand::*)(Fluid const&, double) const;
    Row sublimation(Fluid const& fluid, double T_) const;
    Row properties_at(Fluid const& fluid, double T_) const;
    Row melting_at(Fluid const& fluid, double p_) const;
    std::vector<Column> columns() const;

    std::optional<PureSolid> solid_;
    double p_ = 0.0;  // pressure of properties_at, MPa
    bool total_ = false;
};

/// Enthalpy of a phase of the fluid less that of the solid, J/mol. The slope of Ge counts RT beside
/// the residual enthalpy, because ln rho at constant p falls as 1/T.
double enthalpy_above_solid(Model1 const& model, double p, double T, int phase) {
    double rho = 0.0;
    return R * T * (model.Hr(p, T, phase, rho) + 1.0 - model.solid.He(p, T));
}

/// Reduced Gibbs energy of the solid less that of the liquid at p; zero at the melting point.
struct Melting {
    Model1 const* model;
    double p;
};
double gibbs_difference(double T, void* context) {
    auto const& m = *static_cast<Melting*>(context);
    int phase = 0;
    double rho = 0.0, liquid = 0.0;
    return m.model->solid.Ge(m.p, T, phase, rho) - m.model->Ge(m.p, T, 1, liquid);
}

std::vector<Column> SolidCommand::columns() const {
    Units const& units = options.units;
    const Column T_col{"T", units.name(Quantity::temperature), "temperature", melting.empty()};
    const Column p_col{"p", units.name(Quantity::pressure), "pressure", !melting.empty()};
    std::vector<Column> result;
    result.push_back(melting.empty() ? T_col : p_col);
    if (!melting.empty()) result.push_back(T_col);
    if (melting.empty()) result.push_back(p_col);
    result.push_back({"phase", "", "solid phase"});
    result.push_back({"rho", units.name(Quantity::density), "density of the solid"});
    result.push_back({"v", units.name(Quantity::volume), "volume of the solid"});
    if (!melting.empty()) {
        result.push_back({"rhoL", units.name(Quantity::density), "density of the liquid"});
        result.push_back({"hfus", units.name(Quantity::energy), "enthalpy of melting"});
    } else if (p.empty()) {
        result.push_back({"kappa", units.name(Quantity::compressibility), "compressibility"});
        result.push_back({"hsub", units.name(Quantity::energy), "enthalpy of sublimation"});
    } else if (total_) {
        result.push_back({"h", units.name(Quantity::energy), "enthalpy"});
        result.push_back({"s", units.name(Quantity::entropy), "entropy"});
        result.push_back({"g", units.name(Quantity::energy), "Gibbs energy"});
    }
    return result;
}

Row SolidCommand::sublimation(Fluid const& fluid, double T_) const {
    Model1 const& model = *fluid.model;
    Units const& u = options.units;
    double psub = 0.0, v = 0.0, kappa = 0.0;
    if (solid_->anchored) {
        psub = solid_->anchored->sublimation(T_);
        const auto state = solid_->anchored->at(psub, T_);
        double rho = 0.0;
        return {{u.from_library(Quantity::temperature, T_),
                 u.from_library(Quantity::pressure, psub), std::string(solid_->form(state.form)),
                 u.from_library(Quantity::density, state.rho),
                 u.from_library(Quantity::volume, 1.0 / state.rho), Cell(),
                 u.from_library(Quantity::energy,
                                R * T_ * (model.Hr(psub, T_, 3, rho) + 1.0 + state.g_T))},
                ""};
    }
    const int i = model.solid.sge(T_, -1, psub, v, kappa);
    if (i < 0) throw ThException(model.solid.sg.size() < 1 ? th_no_solid : th_out_of_range);
    const double hsub = enthalpy_above_solid(model, psub, T_, 3);
    return {{u.from_library(Quantity::temperature, T_), u.from_library(Quantity::pressure, psub),
             std::string(model.solid.id(i)), u.from_library(Quantity::density, 1.0 / v),
             u.from_library(Quantity::volume, v),
             kappa > 0.0 ? Cell(u.from_library(Quantity::compressibility, kappa)) : Cell(),
             u.from_library(Quantity::energy, hsub)},
            ""};
}

Row SolidCommand::properties_at(Fluid const& fluid, double T_) const {
    Model1 const& model = *fluid.model;
    Units const& u = options.units;
    int i = 0;
    double rho = 0.0, stable = 0.0, g = 0.0, slope = 0.0;
    if (solid_->anchored) {
        const auto state = solid_->anchored->at(p_, T_);
        g = state.g;
        slope = state.g_T;
        rho = state.rho;
        i = state.form;
    } else {
        g = model.solid.Ge(p_, T_, i, rho);
        if (total_) slope = -model.solid.He(p_, T_);
    }
    Row row{{u.from_library(Quantity::temperature, T_), u.from_library(Quantity::pressure, p_),
             std::string(solid_->form(i)), u.from_library(Quantity::density, rho),
             u.from_library(Quantity::volume, 1.0 / rho)},
            ""};
    if (total_) {
        // The slope of g counts RT beside the enthalpy, because ln rho at constant p falls as 1/T.
        const double h = R * T_ * (model.ideal.Hm(T_) - 1.0 - slope);
        const double gibbs = R * T_ * (g + model.ideal.Gm(T_));
        row.cells.emplace_back(u.from_library(Quantity::energy, h));
        row.cells.emplace_back(u.from_library(Quantity::entropy, (h - gibbs) / T_));
        row.cells.emplace_back(u.from_library(Quantity::energy, gibbs));
    }
    if (model.Ge(p_, T_, 2, stable) < g) row.note = "metastable: the fluid is stable";
    return row;
}

Row SolidCommand::melting_at(Fluid const& fluid, double at) const {
    Model1 const& model = *fluid.model;
    Units const& u = options.units;
    Melting melting_{&model, at};
    if (solid_->anchored) {
        const double T_ = solid_->anchored->melting(at);
        const auto state = solid_->anchored->at(at, T_);
        double liquid = 0.0;
        const double hfus = solid_->anchored->enthalpy_of_fusion(at, T_);
        model.Ge(at, T_, 1, liquid);
        const bool bold = !solid_->anchored->measured_volume() && at > kBold;
        Row row{{u.from_library(Quantity::pressure, at), u.from_library(Quantity::temperature, T_),
                 std::string(solid_->form(state.form)), u.from_library(Quantity::density, state.rho),
                 u.from_library(Quantity::volume, 1.0 / state.rho),
                 u.from_library(Quantity::density, liquid), u.from_library(Quantity::energy, hfus)},
                bold ? "slope estimated: no volume of melting is known" : ""};
        double stable = 0.0;
        model.Ge(at, T_, 2, stable);
        if (stable < 0.9 * liquid)  // the other root, a vapour
            add_note(row.note, "not stable: below the triple point's pressure the solid sublimes");
        return row;
    }
    // From the end of the solid data downward in steps of 1 % until the solid is the stable one.
    const double top = model.solid.Tmax();
    double above = top, f_above = gibbs_difference(above, &melting_), T_ = 0.0;
    if (f_above < 0.0)
        throw Failure(fmt::format("the solid is still stable at {}, where its data end",
                                  u.text(Quantity::temperature, top)));
    for (int k = 0; k < kSteps && T_ == 0.0; ++k) {
        const double below = above - 0.01 * top, f = gibbs_difference(below, &melting_);
        if (f <= 0.0)
            T_ = eqn_regulafalsi(gibbs_difference, &melting_, below, above, f, f_above, 1e-9 * top);
        above = below;
        f_above = f;
    }
    if (T_ == 0.0)
        throw Failure(
            fmt::format("solid and liquid have no common Gibbs energy within {} % of the triple "
                        "temperature {}: the equation's vapour pressure there does not fit the "
                        "sublimation curve",
                        kSteps, u.text(Quantity::temperature, model.solid.Ttrp())));
    int i = 0;
    double rho = 0.0, liquid = 0.0;
    model.solid.Ge(at, T_, i, rho);
    model.Ge(at, T_, 1, liquid);
    const double hfus = enthalpy_above_solid(model, at, T_, 1);
    return {{u.from_library(Quantity::pressure, at), u.from_library(Quantity::temperature, T_),
             std::string(model.solid.id(i)), u.from_library(Quantity::density, rho),
             u.from_library(Quantity::volume, 1.0 / rho), u.from_library(Quantity::density, liquid),
             u.from_library(Quantity::energy, hfus)},
            liquid > 1.0 / model.vcrit() ? "" : "the equation has no liquid here"};
}

int SolidCommand::run() {
    if (T.empty() == melting.empty()) throw Misuse("give either --T or --melting");
    if (!p.empty() && !melting.empty()) throw Misuse("--p goes with --T");
    Fluid fluid = options.open();
    Units const& units = options.units;
    // The sublimation curve itself is best where it is measured.
    if (data.empty() && melting.empty() && p.empty())
        solid_ = load_solid(*fluid.model, "sublimation");
    if (!solid_) solid_ = require_solid(*fluid.model, data);
    total_ = fluid.ideal.has_value();
    Solve solve = &SolidCommand::sublimation;
    std::vector<double> given;
    if (melting.empty()) {
        given = positive_points(T, "--T", Quantity::temperature, units);
        if (!p.empty()) {
            p_ = positive(p, "--p", Quantity::pressure, units);
            solve = &SolidCommand::properties_at;
        }
    } else {
        given = positive_points(melting, "--melting", Quantity::pressure, units);
        solve = &SolidCommand::melting_at;
    }
    Table table{columns(), {}};
    Heading head = heading("solid", fluid, units);
    head.remarks.push_back(solid_->remark(units));
    const Quantity quantity = melting.empty() ? Quantity::temperature : Quantity::pressure;
    Rows rows("solid", table, given.size());
    for (double x : given)
        if (!rows.add(fmt::format("{} at {} = {}", fluid.name(), melting.empty() ? "T" : "p",
                                  units.text(quantity, x)),
                      {{0, units.from_library(quantity, x)}},
                      [&] {
                          Row row = (this->*solve)(fluid, x);
                          if (melting.empty() && x < solid_->T_min())
                              add_note(row.note, "extrapolated: below the end of the solid's data");
                          return row;
                      }))
            break;
    return rows.write(head, options.style);
}
}  // namespace

void add_solid(Program& program) {
    auto solid = std::make_shared<SolidCommand>();
    Command command = program.add("solid", "sublimation curve, solid properties, melting",
                                  [solid] { return solid->run(); });
    solid->options.add_fluid(command);
    command
        .value("--T", solid->T, "temperatures: the sublimation curve, or properties with --p",
               {.type = "VALUES"})
        .value("--p", solid->p, "pressure of the solid")
        .value("--melting", solid->melting,
               "pressures: melting temperatures, by equal Gibbs energies of solid and liquid",
               {.type = "VALUES"});
    add_solid_data(command, solid->data);
    solid->options.add_units(command);
    solid->options.add_output(command);
    command.examples(
        R"(  corvane solid PR CO2 --T 180:216:6
  corvane solid MEOS water --T 260 --p 10
  corvane solid MEOS water --melting 1,10,50)");
}

}  // namespace cli
