// corvane interface: the profile of densities between a liquid and its vapour by density-gradient theory.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/transport/mixture_transport.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cli {
namespace {
struct InterfaceCommand {
    Options options;
    MixtureRequest request;
    std::string T, p;
    PlotFile plot;

    int run();

  private:
    /// What is on both sides.
    struct Tie {
        double T, p;
        corvane::PhaseRecord liquid, vapour;
    };
    Tie tie(MixtureFluid const& mixture) const;
    Table table(MixtureFluid const& mixture, corvane::InterfaceProfile const& profile) const;
    Picture picture(MixtureFluid const& mixture, Tie const& between, Table const& table) const;
    double density(MixtureFluid const& mixture, int component, double rho) const;
    void tell(MixtureFluid const& mixture, Tie const& between, corvane::InterfaceProfile const& profile,
              corvane::TransportValue const& sigma, Heading& head) const;
};

/// Of a component alone: its partial density.
double InterfaceCommand::density(MixtureFluid const& mixture, int component, double rho) const {
    Units u = options.units;
    u.M = mixture.model->mdl1[component]->M();
    return u.from_library(Quantity::density, rho);
}

InterfaceCommand::Tie InterfaceCommand::tie(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    const double at_T = positive(T, "--T", Quantity::temperature, u);
    const std::string what = fmt::format("{} at T = {}", mixture.text(), u.text(Quantity::temperature, at_T));
    if (p.empty()) {
        corvane::SaturationOptions how;
        how.validity = &mixture.validity;
        const auto s = asking(what + ", bubble point",
                              [&] { return corvane::bubble_T(*mixture.model, at_T, mixture.x, how); });
        if (!s.split.empty()) throw Failure(what + ": the liquid splits: give --p, at which there is one beside a vapour");
        return {s.T, s.p, s.given, s.incipient};
    }
    const double at_p = positive(p, "--p", Quantity::pressure, u);
    corvane::FlashOptions how;
    how.validity = &mixture.validity;
    const std::string there = what + ", p = " + u.text(Quantity::pressure, at_p);
    const auto s = asking(there, [&] { return corvane::flash_pT(*mixture.model, at_p, at_T, mixture.x, how); });
    const auto names = phase_names(mixture, s.phases);
    if (names != std::vector<std::string>{"liquid", "vapour"})
        throw Failure(there + ": there is no liquid beside one vapour, but " + join(names, ", "));
    return {s.T, s.p, s.phases[0], s.phases[1]};
}

Table InterfaceCommand::table(MixtureFluid const& mixture, corvane::InterfaceProfile const& profile) const {
    Units const& u = options.units;
    Table result{{{"z", "nm", "place, 0 half-way, rising into the liquid"}}, {}};
    for (int i = 0; i < mixture.size(); ++i)
        result.columns.push_back({fmt::format("rho_{}", mixture.component(i)), u.name(Quantity::density),
                                  "partial density"});
    result.columns.push_back({"excess", u.name(Quantity::pressure), "grand potential above that of the phases"});
    for (std::size_t k = 0; k < profile.z.size(); ++k) {
        Row row{{profile.z[k]}, ""};
        for (int i = 0; i < mixture.size(); ++i)
            row.cells.emplace_back(density(mixture, i, profile.rho_i[k][static_cast<std::size_t>(i)]));
        row.cells.emplace_back(u.from_library(Quantity::pressure, profile.excess[k]));
        result.rows.push_back(std::move(row));
    }
    return result;
}

void InterfaceCommand::tell(MixtureFluid const& mixture, Tie const& between, corvane::InterfaceProfile const& profile,
                            corvane::TransportValue const& sigma, Heading& head) const {
    Units const& u = options.units;
    head.remarks.push_back(fmt::format("liquid and vapour at T = {}, p = {}", u.text(Quantity::temperature, between.T),
                                       u.text(Quantity::pressure, between.p)));
    for (auto const& [name, phase] : {std::pair("liquid", &between.liquid), {"vapour", &between.vapour}})
        head.remarks.push_back(fmt::format("{}:{}, {}", name, mixture.composition(phase->x),
                                           fmt::format("{:.7g} {}", mixture.density(u, phase->x, phase->rho),
                                                       u.name(Quantity::density))));
    head.remarks.push_back("density-gradient theory on the model of the phases; each influence parameter gives its component "
                           "the surface tension of " + sigma.source);
    head.summary.push_back(fmt::format("surface tension {:.5g} mN/m{}; 10 to 90 % of the way in {:.3g} nm",
                                       1e3 * profile.tension, sigma.in_range ? "" : ", extrapolated", profile.thickness));
    Fields fields = {{"sigma", profile.tension}, {"thickness", 1e-9 * profile.thickness},
                     {"quadrature", profile.tension_error}, {"T", between.T}, {"p", between.p}};
    constexpr double kUneven = 1e-3;
    if (!(profile.tension_error < kUneven))
        head.summary.push_back(fmt::format("the profile is not smooth: half the nodes give {:.2g} % else",
                                           100.0 * profile.tension_error));
    if (mixture.size() > 1 && sigma.model == "density-gradient theory")
        head.summary.push_back(fmt::format("parachors give {:+.0f} %", 100.0 * sigma.second_source));
    for (int i = 0; i < mixture.size(); ++i) {
        const auto here = [&](std::size_t k) { return profile.rho_i[k][static_cast<std::size_t>(i)]; };
        std::size_t top = 0;
        for (std::size_t k = 0; k < profile.z.size(); ++k)
            if (here(k) > here(top)) top = k;
        const double outside = std::max(between.liquid.rho * between.liquid.x[i], between.vapour.rho * between.vapour.x[i]);
        constexpr double kTold = 1.01;
        if (here(top) > kTold * outside)
            head.summary.push_back(fmt::format("{} collects in the surface: {:.3g} times as dense as in either phase, at {:.2g} nm",
                                               mixture.component(i), here(top) / outside, profile.z[top]));
        fields.emplace_back(fmt::format("influence_{}", mixture.component(i)), profile.influence[static_cast<std::size_t>(i)]);
    }
    list(head, "interface").push_back(std::move(fields));
}

Picture InterfaceCommand::picture(MixtureFluid const& mixture, Tie const& between, Table const& table) const {
    constexpr Ink inks[] = {Ink::liquid, Ink::vapour, Ink::liquid2, Ink::solid, Ink::azeotrope, Ink::black, Ink::grey};
    Units const& u = options.units;
    Picture result{.title = fmt::format("{}, {}", title(mixture), u.text(Quantity::temperature, between.T)),
                   .x_axis = "z / nm",
                   .y_axis = "ρ / " + u.name(Quantity::density)};
    const double margin = 0.15 * (std::get<double>(table.rows.back().cells[0]) - std::get<double>(table.rows.front().cells[0]));
    for (int i = 0; i < mixture.size(); ++i) {
        Curve curve{mixture.shown(i), inks[static_cast<std::size_t>(i) % std::size(inks)], Stroke::line, {}};
        const auto phase = [&](corvane::PhaseRecord const& q) { return density(mixture, i, q.rho * q.x[i]); };
        curve.points.push_back({std::get<double>(table.rows.front().cells[0]) - margin, phase(between.vapour)});
        for (Row const& row : table.rows)
            curve.points.push_back({std::get<double>(row.cells[0]),
                                    std::get<double>(row.cells[static_cast<std::size_t>(i) + 1])});
        curve.points.push_back({std::get<double>(table.rows.back().cells[0]) + margin, phase(between.liquid)});
        result.curves.push_back(std::move(curve));
    }
    return result;
}

int InterfaceCommand::run() {
    plot.begin();
    options.begin();
    if (request.components.size() == 1) request.fractions_optional = true;  // a pure fluid
    const MixtureFluid mixture = open_mixture(request);
    options.units.M = mixture.M();
    const corvane::MixtureTransport transport(mixture);
    const Tie between = tie(mixture);
    const auto [profile, sigma] = asking(mixture.text() + ", profile", [&] {
        auto const &l = between.liquid, &v = between.vapour;
        return std::pair(transport.interface_profile(between.T, l.rho, l.x, v.rho, v.x),
                         transport.surface_tension(between.T, l.rho, l.x, v.rho, v.x));
    });
    Heading head = heading("interface", mixture);
    tell(mixture, between, profile, sigma, head);
    const Table all = table(mixture, profile);
    plot.show(plot ? picture(mixture, between, all) : Picture(), head, all, options.style);
    return 0;
}
}  // namespace

void add_interface(Program& program) {
    auto interface = std::make_shared<InterfaceCommand>();
    Command command = program.add("interface", "densities through the surface of a liquid, by density-gradient theory",
                                  [interface] { return interface->run(); });
    interface->request.add_to(command);
    command.value("--T", interface->T, "temperature", {.required = true})
        .value("--p", interface->p, "pressure, at which the mixture splits; without: the liquid of this composition, boiling");
    interface->plot.add_to(command);
    interface->options.add_units(command);
    interface->options.add_output(command);
    command.examples(R"(  corvane interface CPA+vdW1 ethanol=0.05 water --T 298.15
  corvane interface PR+vdW1 methane=0.5 decane --T 311 --p 10 --plot interface.svg
  corvane interface PCSAFT+LB hexane --T 300 --csv      of a pure fluid)");
}

}  // namespace cli
