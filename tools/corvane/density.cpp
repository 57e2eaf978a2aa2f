// corvane density: the densities at temperatures and pressures, by the equation's own solver or by
// the library's volume finders.
#include <tools/corvane/commands.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/options.h>
#include <tools/corvane/properties.h>

#include <corvane/volume/volume.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cli {
namespace {
/// Roots that a strategy found, in any order; none if it failed.
using Found = std::vector<double>;

/// The volume finders work in a reduced density below 1: the scale is the density at a pressure far
/// above the one asked for.
double reference_volume(Model1 const& model, double T, double p) {
    double dense = 0.0, spare = 0.0;
    const double high = std::max(1000.0, 100.0 * p);
    if (model.vcalc(high, T, 1, dense, spare) < 1) throw ThException(th_no_density);
    return 1.0 / dense;
}

Found by_equation(Model1 const& model, double T, double p) {
    double dense = 0.0, dilute = 0.0;
    switch (model.vcalc(p, T, 1, dense, dilute)) {
        case 0:
            return {};
        case 1:
            return {dense};
        default:
            return {dense, dilute};
    }
}
Found by_volume(Model1 const& model, double T, double p) {
    Vector<double> roots(3);
    const int n = volume(&model, 0, p, T, nullptr, reference_volume(model, T, p), roots);
    Found found;
    for (int i = 0; i < n; ++i) found.push_back(roots[i]);
    return found;
}
/// A finder that starts from a density: from the equation's own dense and dilute start values.
template <class Finder>
Found from_starts(Model1 const& model, double T, double p, Finder finder) {
    const double d = reference_volume(model, T, p);
    Found found;
    for (int phase : {1, 3}) {
        double rho = model.xinit(p, T, phase);
        if (finder(d, rho)) found.push_back(rho);
    }
    return found;
}
Found by_volav(Model1 const& model, double T, double p) {
    return from_starts(model, T, p, [&](double d, double& rho) {
        return volav(&model, 0, p, T, nullptr, d, rho) == 1;
    });
}
Found by_volnewt(Model1 const& model, double T, double p) {
    return from_starts(model, T, p, [&](double d, double& rho) {
        return volnewt(&model, 0, p, T, nullptr, d, rho);
    });
}
Found by_volf1(Model1 const& model, double T, double p) {
    double a = 0.0, b = 0.0;
    const int n = volf1(&model, p, T, reference_volume(model, T, p), a, b);
    return n == 0 ? Found{} : n == 1 ? Found{a} : Found{a, b};
}

struct Strategy {
    char const* name;
    Found (*find)(Model1 const&, double, double);
};
const Strategy kStrategies[] = {{"equation", by_equation},
                                {"volume", by_volume},
                                {"volav", by_volav},
                                {"volnewt", by_volnewt},
                                {"volf1", by_volf1}};
/// Roots closer than this count as one: ten times the finders' tolerance.
constexpr double kSame = 1e-8;

struct DensityCommand {
    Options options;
    std::string T, p, strategy = "equation";

    int run();

  private:
    int add_rows(Fluid const& fluid, Strategy const& how, double T_, double p_, Table& table) const;
};

char const* kind(Model1 const& model, double T, double rho) {
    if (model.pV(rho, T) <= 0.0) return "unstable";
    if (T >= model.Tcrit()) return "fluid";
    return rho > 1.0 / model.vcrit() ? "liquid" : "vapour";
}

/// Returns the number of failures.
int DensityCommand::add_rows(Fluid const& fluid, Strategy const& how, double T_, double p_,
                             Table& table) const {
    Model1 const& model = *fluid.model;
    Units const& units = options.units;
    Found roots;
    std::string failure;
    try {
        roots = how.find(model, T_, p_);
        if (roots.empty()) failure = ThException(th_no_density).message();
    } catch (ThException const& e) {
        failure = describe(e);
    } catch (MthException const& e) {
        failure = describe(e);
    }
    std::sort(roots.rbegin(), roots.rend());
    roots.erase(std::unique(roots.begin(), roots.end(),
                            [](double a, double b) { return a - b <= kSame * a; }),
                roots.end());
    const auto row = [&](double rho, std::string const& note) {
        const bool there = std::isfinite(rho);
        const auto cell = [&](Quantity q, double x) -> Cell {
            if (!there) return std::monostate();
            return units.from_library(q, x);
        };
        table.rows.push_back({{units.from_library(Quantity::temperature, T_),
                               units.from_library(Quantity::pressure, p_), std::string(how.name),
                               there ? Cell(std::string(kind(model, T_, rho))) : Cell(),
                               cell(Quantity::density, rho), cell(Quantity::volume, 1.0 / rho),
                               cell(Quantity::ratio, there ? model.Z(rho, T_) : 0.0),
                               cell(Quantity::ratio, there ? model.Ge(rho, T_) : 0.0)},
                              note});
    };
    for (double rho : roots) {
        const double back = model.Z(rho, T_) * R * T_ * rho;
        std::string note = extrapolated(fluid, T_, p_, false, units);
        if (std::fabs(back - p_) > 1e-6 * p_)
            add_note(note, fmt::format("gives back {}", units.text(Quantity::pressure, back)));
        row(rho, note);
    }
    if (failure.empty()) return 0;
    row(std::nan(""), "failed: " + failure);
    return 1;
}

int DensityCommand::run() {
    Fluid fluid = options.open();
    Units const& units = options.units;
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto pressures = positive_points(p, "--p", Quantity::pressure, units);
    Table table;
    table.columns = {{"T", units.name(Quantity::temperature), "temperature", true},
                     {"p", units.name(Quantity::pressure), "pressure", true},
                     {"strategy", "", "how it was found"},
                     {"kind", "", "kind of root"},
                     {"rho", units.name(Quantity::density), "density"},
                     {"v", units.name(Quantity::volume), "volume"},
                     {"Z", "", "compressibility factor"},
                     {"g", "", "reduced Gibbs energy Ar + Z - 1 + ln rho: the lowest is stable"}};
    int failures = 0;
    for (double T_ : temperatures)
        for (double p_ : pressures)
            for (Strategy const& how : kStrategies)
                if (strategy == "all" || strategy == how.name)
                    failures += add_rows(fluid, how, T_, p_, table);
    write(heading("density", fluid, units), table, options.style);
    return failures == 0 ? 0 : 1;
}
}  // namespace

void add_density(Program& program) {
    auto density = std::make_shared<DensityCommand>();
    Command command = program.add("density", "all density roots at temperatures and pressures",
                                  [density] { return density->run(); });
    density->options.add_fluid(command);
    command.value("--T", density->T, "temperatures", {.required = true, .type = "VALUES"})
        .value("--p", density->p, "pressures", {.required = true, .type = "VALUES"})
        .value(
            "--strategy", density->strategy,
            "equation (its own solver, default), volume (global search), volav, volnewt (from "
            "start values), volf1 (brackets), all",
            {.one_of = {"equation", "volume", "volav", "volnewt", "volf1", "all"}, .type = "NAME"});
    density->options.add_units(command);
    density->options.add_output(command);
    command.examples(
        R"(  corvane density PR propane --T 300 --p 0.9 --strategy all
  corvane density PR CO2 --T 220:320:20 --p 1,5,10)");
}

}  // namespace cli
