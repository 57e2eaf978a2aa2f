#include <tools/corvane/input/home.h>
#include <tools/corvane/input/solids.h>
#include <tools/corvane/text/errors.h>

#include <corvane/catalogue/parameter_sets.h>
#include <corvane/solid/fusion.h>

#include <fmt/format.h>

#include <cmath>
#include <filesystem>

namespace cli {

double PureSolid::T_max() const {
    return anchored ? anchored->T_max() : model->solid.Tmax();
}

double PureSolid::T_min() const {
    return anchored ? anchored->T_min() : measured;
}

double PureSolid::g(double p, double T) const {
    int form = 0;
    double rho = 0.0;
    return anchored ? anchored->at(p, T, false).g : model->solid.Ge(p, T, form, rho);
}

char const* PureSolid::form(int i) const {
    char const* name = model->solid.id(i);
    return name ? name : "solid";
}

std::string PureSolid::remark(Units const& units) const {
    if (!anchored)
        return fmt::format(
            "solid {}: from its measured sublimation curve, up to {}; Gibbs energies meet in the "
            "equation's vapour, so that melting is off where its vapour pressure is",
            model->name(), units.text(Quantity::temperature, T_max()));
    corvane::FusionData const& d = anchored->data();
    std::string text = fmt::format(
        "solid {}: anchored at {} to the equation's liquid, enthalpy of fusion {:g} J/mol; {}; "
        "volume of melting {}",
        model->name(), units.text(Quantity::temperature, d.T), d.h,
        anchored->sublimation_curve() ? "below by its measured sublimation enthalpies"
        : d.cp != 0.0                 ? "measured difference of heat capacities"
                                      : "heat capacity as the liquid's",
        anchored->measured_volume() ? "measured" : "estimated");
    if (d.T_min > 0.0)
        text += fmt::format("; another form below {}", units.text(Quantity::temperature, d.T_min));
    return text;
}

void add_solid_data(Command& command, std::string& data) {
    command.value("--solid-data", data,
                  "what the solid is made from: fusion (melting point and enthalpy; default where "
                  "known), sublimation (measured curve)",
                  {.one_of = {"fusion", "sublimation"}, .type = "DATA"});
}

std::optional<PureSolid> load_solid(Model1& model, std::string const& data) {
    PureSolid solid;
    solid.model = &model;
    const std::string name = model.name();
    const std::string file = "CorvaneS/solid/" + name;
    const bool curve = std::filesystem::exists(below_home("./" + file));
    if (curve) asking("solid data " + file, [&] { model.solid.load(); });
    if (data != "sublimation") {
        std::optional<corvane::FusionData> fusion;
        asking("fusion data CorvaneS/fusion.tsv", [&] {
            try {
                fusion = corvane::load_fusion(name);
            } catch (ThException const& e) {
                if (e.number != th_no_solid) throw;  // else there is no such row
            }
        });
        if (fusion) {
            asking(fmt::format("solid {}, anchored at {} K", name, fusion->T),
                   [&] { solid.anchored.emplace(model, *fusion); });
            return solid;
        }
        if (data == "fusion") return std::nullopt;
    }
    if (!curve) return std::nullopt;
    auto const& coldest = model.solid.sg[model.solid.sg.size() - 1].x;
    const double valid = corvane::parameter_notes(file).Tmin;
    solid.measured = std::isfinite(valid) ? valid : 1.0 / coldest[coldest.size() - 1];
    return solid;
}

PureSolid require_solid(Model1& model, std::string const& data) {
    auto solid = load_solid(model, data);
    if (!solid)
        throw Failure(fmt::format("no {} data of {}: {}", data.empty() ? "solid" : data,
                                  model.name(), describe(ThException(th_no_solid))));
    return *solid;
}

}  // namespace cli
