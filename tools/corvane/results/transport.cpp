#include <tools/corvane/results/transport.h>
#include <tools/corvane/text/errors.h>

#include <corvane/phases/report/certificate.h>
#include <corvane/phases/saturation/pure_saturation.h>

#include <fmt/format.h>

#include <cmath>

namespace cli {
namespace {
constexpr double kRough = 0.3;  // of the uncertainty
}

Column TransportSources::viscosity_column(std::string const& name, char const* text) const {
    return {name, units_.name(Quantity::viscosity), text};
}
Column TransportSources::conductivity_column(std::string const& name, char const* text) const {
    return {name, "W/(m K)", text};
}
Column TransportSources::tension_column() const {
    return {"sigma", "mN/m", "surface tension of liquid and vapour"};
}

TransportCell TransportSources::show(char const* property, double unit, Row& row, bool lenient,
                                   std::function<corvane::TransportValue()> const& compute) {
    const auto without = [&](std::string const& why) -> TransportCell {
        add_note(row.note, why);
        return {std::monostate(), {}};
    };
    try {
        const corvane::TransportValue v = compute();
        {
            const std::lock_guard lock(mutex_);
            told_.insert(fmt::format("{}: {}, {}", property, v.model, v.source));
        }
        if (v.uncertainty > kRough)
            add_note(row.note, fmt::format("{}: {}, off by up to {:.0f} %", property,
                                           v.model.find("estimate") == std::string::npos ? "rough" : "an estimate",
                                           100.0 * v.uncertainty));
        if (!v.in_range) add_note(row.note, fmt::format("{} extrapolated", property));
        constexpr double kTold = 0.05;
        if (std::abs(v.second_source) > kTold)
            add_note(row.note, fmt::format("{}: a second source differs by {:+.0f} %", property,
                                           100.0 * v.second_source));
        return {v.value / unit, v.value};
    } catch (corvane::OpenFailure const& failure) {
        return without(failure.what());
    } catch (corvane::EquilibriumFailure const&) {
        if (!lenient) throw;
    } catch (ThException const&) {
        if (!lenient) throw;
    } catch (MthException const&) {
        if (!lenient) throw;
    }
    return without(fmt::format("no {} of this state", property));
}

TransportCell TransportSources::viscosity(Row& row, bool lenient, Compute const& compute) {
    // The library's unit of viscosity in tables is uPa s.
    return show("viscosity", units_.to_library(Quantity::viscosity, 1.0) * 1e-6, row, lenient, compute);
}
TransportCell TransportSources::conductivity(Row& row, bool lenient, Compute const& compute) {
    return show("thermal conductivity", 1.0, row, lenient, compute);
}
TransportCell TransportSources::tension(Row& row, bool lenient, Compute const& compute) {
    return show("surface tension", 1e-3, row, lenient, compute);
}

TransportCell TransportSources::diffusion(Row& row, bool lenient, Compute const& compute) {
    return show("diffusion", 1.0, row, lenient, compute);
}

void TransportSources::tell(Heading& head) const {
    for (std::string const& model : told_) head.remarks.push_back(model);
}

TransportCell TransportCells::viscosity(double T, double rho, Row& row, bool lenient) {
    return TransportSources::viscosity(row, lenient, [&] { return transport_.viscosity(T, rho); });
}
TransportCell TransportCells::conductivity(double T, double rho, Row& row, bool lenient) {
    return TransportSources::conductivity(
        row, lenient, [&] { return transport_.thermal_conductivity(T, rho); });
}
TransportCell TransportCells::tension(double T, Row& row) {
    return TransportSources::tension(row, false, [&] { return transport_.surface_tension(T); });
}

TransportCell TransportCells::diffusion(double T, double rho, Row& row) {
    return TransportSources::diffusion(row, false, [&] { return transport_.diffusion(T, rho); });
}

void MixtureTransportCells::add_diffusion_columns(std::vector<Column>& columns) const {
    columns.push_back(diffusion_column("D_MS", "coefficient of Maxwell and Stefan"));
    columns.push_back({"Gamma", "", "thermodynamic factor"});
    columns.push_back(diffusion_column("D", "coefficient of Fick"));
}

void MixtureTransportCells::add_diffusion_cells(double T, corvane::PhaseRecord const& phase, Row& row) {
    std::optional<corvane::MixtureDiffusion> found;
    const TransportCell stefan = diffusion(row, false, [&] {
        found = transport_.diffusion(T, phase.rho, phase.x);
        return found->stefan;
    });
    row.cells.push_back(stefan.cell);
    row.cells.resize(row.cells.size() + 2);
    if (!found) return;
    row.cells.end()[-2] = found->thermodynamic_factor;
    row.cells.end()[-1] = found->fick();
}

void MixtureTransportCells::add_columns(std::vector<Column>& columns) const {
    columns.push_back(viscosity_column("eta", "viscosity of the phase"));
    columns.push_back(conductivity_column("lambda", "thermal conductivity of the phase"));
    columns.push_back(tension_column());
}

void MixtureTransportCells::add_cells(double T, corvane::PhaseRecord const& phase,
                                      corvane::PhaseRecord const* liquid,
                                      corvane::PhaseRecord const* vapour, Row& row) {
    row.cells.push_back(
        viscosity(row, true, [&] { return transport_.viscosity(T, phase.rho, phase.x); }).cell);
    row.cells.push_back(
        conductivity(row, true, [&] {
            return transport_.thermal_conductivity(T, phase.rho, phase.x);
        }).cell);
    row.cells.push_back(liquid && vapour ? tension(row, true, [&] {
        return transport_.surface_tension(T, liquid->rho, liquid->x, vapour->rho, vapour->x);
    }).cell : Cell());
}

void add_boiling(Rows& rows, Heading& head, Fluid const& fluid, std::vector<double> const& temperatures,
                 Units const& units,
                 std::function<Row(double, double, char const*, double)> const& row) {
    head.remarks.emplace_back("no --p was given: liquid and vapour in equilibrium");
    for (double T : temperatures) {
        const std::string name =
            fmt::format("{} at T = {}", fluid.name(), units.text(Quantity::temperature, T));
        if (!rows.add_all(name, {{0, units.from_library(Quantity::temperature, T)}}, [&] {
                if (T >= fluid.model->Tcrit())
                    throw Failure("no liquid and vapour above the critical temperature: give --p");
                const auto s = corvane::pure_saturation_T(*fluid.model, T);
                return std::vector{row(T, s.p, "liquid", s.rhoL), row(T, s.p, "vapour", s.rhoV)};
            }))
            break;
    }
}

}  // namespace cli
