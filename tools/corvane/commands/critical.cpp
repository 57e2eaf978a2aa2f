// corvane critical: the critical point that the equation really has, beside that of its parameter
// file and the measured one.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/text/errors.h>

#include <corvane/core/numelo.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace cli {
namespace {
struct CriticalPoint {
    double T, p, v;  ///< K, MPa, cm³/mol
};

/// The two critical conditions of the model, reduced, over T/T0 and rho/rho0.
struct Conditions {
    Model1 const* model;
    double T0, rho0;
};
Vector<double> residuals(Vector<double> const& x, void* context) {
    auto const& c = *static_cast<Conditions*>(context);
    const double T = x[0] * c.T0, rho = x[1] * c.rho0;
    if (!(T > 0.0) || !(rho > 0.0)) throw ThException(th_out_of_range);
    const Vector<double> r = c.model->crit(T, rho, 0.0);
    Vector<double> y(2);
    y[0] = r[1];
    y[1] = r[2] * rho;
    return y;
}

/// @throws ThException 0 if the conditions do not vanish
CriticalPoint solve(Model1 const& model) {
    Conditions conditions{&model, model.Tcrit(), 1.0 / model.vcrit()};
    Vector<double> x(2);
    x.set(1.0);
    if (!(fit_marquardt(residuals, x, 2, &conditions, 100, 0) < 1e-14))
        throw ThException(th_generic);
    const double T = x[0] * conditions.T0, rho = x[1] * conditions.rho0;
    return {T, model.Z(rho, T) * rho * R * T, 1.0 / rho};
}

struct CriticalCommand {
    Options options;
    int run();
};

int CriticalCommand::run() {
    Fluid fluid = options.open();
    Units const& units = options.units;
    Model1 const& model = *fluid.model;
    const CriticalPoint solved =
        asking(fmt::format("critical point of {}, from T = {} and v = {} of its parameter file",
                           fluid.name(), units.text(Quantity::temperature, model.Tcrit()),
                           units.text(Quantity::volume, model.vcrit())),
               [&] { return solve(model); });
    Table table;
    table.columns = {{"source", "", ""},
                     {"T", units.name(Quantity::temperature), "critical temperature"},
                     {"p", units.name(Quantity::pressure), "critical pressure"},
                     {"rho", units.name(Quantity::density), "critical density"},
                     {"v", units.name(Quantity::volume), "critical volume"},
                     {"Z", "", "critical compressibility factor"},
                     {"dT", "%", "deviation from the solved point in T"},
                     {"dp", "%", "in p"},
                     {"dv", "%", "in v"}};
    const auto add = [&](char const* source, CriticalPoint const& c, bool compare) {
        const auto cell = [&](Quantity q, double x) -> Cell {
            if (!std::isfinite(x)) return std::monostate();
            return units.from_library(q, x);
        };
        const auto deviation = [&](double x, double of) -> Cell {
            if (!compare || !std::isfinite(x)) return std::monostate();
            return 100.0 * (x / of - 1.0);
        };
        table.rows.push_back(
            {{std::string(source), cell(Quantity::temperature, c.T), cell(Quantity::pressure, c.p),
              cell(Quantity::density, 1.0 / c.v), cell(Quantity::volume, c.v),
              cell(Quantity::ratio, c.p * c.v / (R * c.T)), deviation(c.T, solved.T),
              deviation(c.p, solved.p), deviation(c.v, solved.v)},
             ""});
    };
    add("solved", solved, false);
    add("parameter-file", {model.Tcrit(), model.pcrit(), model.vcrit()}, true);
    if (std::isfinite(fluid.notes.Tc) || std::isfinite(fluid.notes.pc))
        add("measured", {fluid.notes.Tc, fluid.notes.pc, fluid.notes.vc}, true);
    write(heading("critical", fluid, units), table, options.style);
    return 0;
}
}  // namespace

void add_critical(Program& program) {
    auto critical = std::make_shared<CriticalCommand>();
    Command command = program.add("critical", "critical point of the equation, solved and compared",
                                  [critical] { return critical->run(); });
    critical->options.add_fluid(command);
    critical->options.add_units(command);
    critical->options.add_output(command);
    command.examples("  corvane critical PR propane\n  corvane critical MEOS water --csv");
}

}  // namespace cli
