// corvane density: the densities at temperatures and pressures, by the equation's own solver or by
// the library's volume finders.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/classic/volume/volume.h>

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
/// A density that gives back the pressure, or is as close to one that does, needs no word ...
constexpr double kExact = 1e-6;
/// ... and one that is further away is no root: volav, whose tolerance is absolute, returns those
/// of a very thin gas.
constexpr double kRoot = 1e-3;

struct DensityCommand {
    Options options;
    std::string T, p, strategy = "equation";
    FileRun file;

    int run();

  private:
    int of_file(Fluid const& fluid);
    std::vector<Row> roots(Fluid const& fluid, Strategy const& how, double T_, double p_) const;
};

char const* kind(Model1 const& model, double T, double rho) {
    if (model.pV(rho, T) <= 0.0) return "unstable";
    if (T >= model.Tcrit()) return "fluid";
    return rho > 1.0 / model.vcrit() ? "liquid" : "vapour";
}

/// A row for each root, the densest first.
std::vector<Row> DensityCommand::roots(Fluid const& fluid, Strategy const& how, double T_,
                                       double p_) const {
    Model1 const& model = *fluid.model;
    Units const& units = options.units;
    Found found = how.find(model, T_, p_);
    if (found.empty()) throw ThException(th_no_density);
    std::sort(found.rbegin(), found.rend());
    found.erase(std::unique(found.begin(), found.end(),
                            [](double a, double b) { return a - b <= kSame * a; }),
                found.end());
    std::vector<Row> result;
    for (double rho : found) {
        const double back = model.Z(rho, T_) * R * T_ * rho;
        std::string note = extrapolated(fluid, T_, p_, false, units);
        const double off = std::fabs(back - p_);
        const double error = off / std::fabs(model.pV(rho, T_) * R * T_ * rho);  // of rho
        if (!(off <= kExact * p_ || error <= kExact)) {
            const std::string text =
                fmt::format("gives back {}", units.text(Quantity::pressure, back));
            if (!(error <= kRoot))
                throw Failure(fmt::format("no root: {} {}", units.text(Quantity::density, rho), text));
            add_note(note, text);
        }
        result.push_back({{units.from_library(Quantity::temperature, T_),
                           units.from_library(Quantity::pressure, p_), std::string(how.name),
                           std::string(kind(model, T_, rho)),
                           units.from_library(Quantity::density, rho),
                           units.from_library(Quantity::volume, 1.0 / rho), model.Z(rho, T_),
                           model.Ge(rho, T_)},
                          note});
    }
    return result;
}

/// The stable root of every row.
int DensityCommand::of_file(Fluid const& fluid) {
    Units const& u = options.units;
    file.open({{"T", Quantity::temperature}, {"p", Quantity::pressure}}, u);
    if (!file.has("T") || !file.has("p")) throw Failure("--input: columns T and p are needed");
    const Conversion rho = u.conversion(Quantity::density), v = u.conversion(Quantity::volume);
    const FileRun::Compute compute = [&](FileRow const& in, Row& row) {
        const double T_ = in["T"], p_ = in["p"];
        const Roots found = density_roots(*fluid.model, T_, p_);
        row.cells = {std::string(found.stable_name), rho.from_library(found.stable),
                     v.from_library(1.0 / found.stable), p_ / (found.stable * R * T_)};
        row.note = extrapolated(fluid, T_, p_, false, u);
    };
    return file.run("density",
                    {{"phase", "", ""},
                     {"rho", u.name(Quantity::density), ""},
                     {"v", u.name(Quantity::volume), ""},
                     {"Z", "", ""}},
                    options.style, [&] { return compute; });
}

int DensityCommand::run() {
    file.begin(options.json());
    if (file ? !T.empty() || !p.empty() : T.empty() || p.empty())
        throw Misuse("give --T and --p, or --input");
    Fluid fluid = options.open();
    Units const& units = options.units;
    if (file) return of_file(fluid);
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
    std::vector<Strategy> chosen;
    for (Strategy const& how : kStrategies)
        if (strategy == "all" || strategy == how.name) chosen.push_back(how);
    Rows rows("density", table, temperatures.size() * pressures.size() * chosen.size());
    rows.each(temperatures, pressures, [&](double T_, double p_) {
        bool go_on = true;
        for (Strategy const& how : chosen)
            go_on = go_on && rows.add_all(fmt::format("{} at T = {}, p = {}, {}", fluid.name(),
                                                      units.text(Quantity::temperature, T_),
                                                      units.text(Quantity::pressure, p_), how.name),
                                          {{0, units.from_library(Quantity::temperature, T_)},
                                           {1, units.from_library(Quantity::pressure, p_)},
                                           {2, std::string(how.name)}},
                                          [&] { return roots(fluid, how, T_, p_); });
        return go_on;
    });
    Heading head = heading("density", fluid, units);
    return rows.write(head, options.style);
}
}  // namespace

void add_density(Program& program) {
    auto density = std::make_shared<DensityCommand>();
    Command command = program.add("density", "all density roots at temperatures and pressures",
                                  [density] { return density->run(); });
    density->options.add_fluid(command);
    command.value("--T", density->T, "temperatures", {.type = "VALUES"})
        .value("--p", density->p, "pressures", {.type = "VALUES"})
        .value(
            "--strategy", density->strategy,
            "equation (its own solver, default), volume (global search), volav, volnewt (from "
            "start values), volf1 (brackets), all",
            {.one_of = {"equation", "volume", "volav", "volnewt", "volf1", "all"}, .type = "NAME"});
    density->file.add_to(command);
    density->options.add_units(command);
    density->options.add_output(command);
    command.examples(
        R"(  corvane density PR propane --T 300 --p 0.9 --strategy all
  corvane density PR CO2 --T 220:320:20 --p 1,5,10)");
}

}  // namespace cli
