#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/phases/critical/critical.h>

#include <fmt/format.h>

#include <algorithm>

namespace cli {

Vector<double> binary(double x0) {
    Vector<double> x(2);
    x[0] = x0;
    x[1] = 1.0 - x0;
    return x;
}

namespace {
double between_0_and_1(double x, char const* option) {
    if (!(x >= 0.0 && x <= 1.0 + 1e-12))
        throw Misuse(fmt::format("{}: a mole fraction lies between 0 and 1", option));
    return x > 1.0 - 1e-12 ? 1.0 : x;
}
}  // namespace

double mole_fraction(std::string const& text, char const* option) {
    return between_0_and_1(number(text, option), option);
}

std::vector<double> mole_fractions(std::string const& text, char const* option) {
    std::vector<double> result = points(text, option);
    for (double& x : result) x = between_0_and_1(x, option);
    return result;
}

std::vector<Vector<double>> scanned(MixtureFluid const& mixture, std::string const& scan) {
    if (mixture.size() != 2) throw Misuse("--scan needs two components");
    if (mixture.composed) throw Misuse("--scan gives the mole fractions: name components only");
    const std::size_t equals = scan.find('=');
    if (equals == std::string::npos)
        throw Misuse("--scan: give NAME=first:last:step, such as methane=0:1:0.1");
    const std::string name = scan.substr(0, equals);
    const int i = mixture.index(name);
    if (i < 0) throw Misuse(fmt::format("--scan: {} is not a component of the mixture", name));
    std::vector<Vector<double>> result;
    for (double x : mole_fractions(scan.substr(equals + 1), "--scan"))
        result.push_back(binary(i == 0 ? x : 1.0 - x));
    return result;
}

void add_fractions(std::vector<Column>& columns, MixtureFluid const& mixture, char const* prefix,
                   std::string const& text, bool given) {
    for (int i = 0; i < mixture.size(); ++i)
        columns.push_back({fmt::format("{}_{}", prefix, mixture.component(i)), "", text, given});
}

void add_cells(Row& row, Vector<double> const& x) {
    for (int i = 0; i < x.size(); ++i) row.cells.emplace_back(x[i]);
}

std::string state(MixtureFluid const& mixture, Units const& units, double T, double p) {
    return fmt::format("{} at T = {}, p = {}", mixture.text(), units.text(Quantity::temperature, T),
                       units.text(Quantity::pressure, p));
}

Rows::Given given(Units const& units, double T, double p) {
    return {{0, units.from_library(Quantity::temperature, T)},
            {1, units.from_library(Quantity::pressure, p)}};
}

Rows::Given given(Units const& units, bool by_T, double value, Vector<double> const& x,
                  bool liquid) {
    Rows::Given cells = {
        {by_T ? 0 : 1,
         units.from_library(by_T ? Quantity::temperature : Quantity::pressure, value)}};
    for (int i = 0; i < x.size(); ++i)
        cells.emplace_back(static_cast<unsigned>(2 + (liquid ? 0 : x.size()) + i), x[i]);
    return cells;
}

std::string title(MixtureFluid const& mixture) {
    std::string text;
    for (int i = 0; i < mixture.size(); ++i) {
        text += i > 0 ? " + " : "";
        if (mixture.composed) text += fmt::format("{:.6g} ", mixture.x[i]);
        text += mixture.shown(i);
    }
    return text + ", " + title_of_model(mixture);
}

std::string title_of_model(MixtureFluid const& mixture) {
    std::string text = mixture.name();
    if (*mixture.theory == "GERG") return text + (mixture.estimated.empty() ? "" : ", estimated");
    if (*mixture.theory == "HV" && mixture.size() == 2 && mixture.estimated.empty() &&
        mixture.given.empty())
        return text + fmt::format(", pair set {}", mixture.model->id(0, 1));
    if (mixture.size() == 2 && mixture.model->ppar(0, 0, 1))
        text += ", k\u2081\u2082 " + shortest(mixture.model->param(0, 0, 1));
    const auto all = static_cast<std::size_t>(mixture.size() * (mixture.size() - 1) / 2);
    if (mixture.estimated.empty()) return text;
    return text + (mixture.size() == 2               ? " (estimated)"
                   : mixture.estimated.size() == all ? ", k\u1d62\u2c7c estimated"
                                                     : ", some k\u1d62\u2c7c estimated");
}

std::string axis(Quantity quantity, Units const& units) {
    return (quantity == Quantity::temperature ? "T / " : "p / ") + unit_in_picture(units.name(quantity));
}

std::vector<std::string> phase_names(MixtureFluid const& mixture,
                                     std::vector<corvane::PhaseRecord> const& phases) {
    const auto reduced = [&](corvane::PhaseRecord const& phase) {
        double v = 0.0;
        for (int i = 0; i < mixture.size(); ++i) v += phase.x[i] * mixture.model->mdl1[i]->vcrit();
        return phase.rho * v;
    };
    if (phases.size() == 1) return {reduced(phases[0]) < 1.0 ? "vapour" : "liquid"};
    std::vector<std::string> names = {"liquid"};
    for (std::size_t k = 1; k < phases.size(); ++k)
        names.push_back(reduced(phases[k]) > 1.5 ? fmt::format("liquid{}", k + 1) : "vapour");
    return names;
}

std::string critical_hint(ModelN const& model, Vector<double> const& x, bool by_T, double given,
                          Units const& units) {
    try {
        const corvane::CriticalPoint point = corvane::critical_point(model, x);
        if (given < 0.8 * (by_T ? point.T : point.p)) return "";
        return fmt::format("; this composition has a critical point at T = {}, p = {}",
                           units.text(Quantity::temperature, point.T),
                           units.text(Quantity::pressure, point.p));
    } catch (corvane::EquilibriumFailure const&) {  // only a hint
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return "";
}

}  // namespace cli
