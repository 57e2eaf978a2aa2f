// corvane property-diagram: saturation and isolines in p-h, T-s, h-s, p-v or T-rho.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/core/constants.h>
#include <corvane/state/property_diagram.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cli {
namespace {
using corvane::Isoline;
using corvane::PropertyPoint;
using What = corvane::Quantity;

/// What a kind of diagram shows.
struct Kind {
    char const *name, *x, *y;
    bool log_x, log_y, isotherms, isobars, isochores, qualities;
};
const Kind kKinds[] = {{"ph", "h", "p", false, true, true, false, true, true},
                       {"Ts", "s", "T", false, false, false, true, true, true},
                       {"hs", "s", "h", false, false, true, true, false, true},
                       {"pv", "v", "p", true, true, true, false, false, false},
                       {"Trho", "rho", "T", false, false, false, true, false, false}};

/// Round values from 1, 2, 5, 10 … times a power of ten, about `count` of them between the ends.
std::vector<double> round_values(double from, double to, int count) {
    const double rough = (to - from) / count, power = std::pow(10.0, std::floor(std::log10(rough)));
    const double part = rough / power,
                 step = (part > 5 ? 10 : part > 2 ? 5 : part > 1 ? 2 : 1) * power;
    std::vector<double> values;
    for (double k = std::ceil(from / step); k * step <= to; ++k) values.push_back(k * step);
    return values;
}
/// 1, 2, 5 of every decade between the ends, or the decades alone.
std::vector<double> decades(double from, double to, std::initializer_list<int> digits) {
    std::vector<double> values;
    for (int k = static_cast<int>(std::floor(std::log10(from))); k < 12; ++k)
        for (int digit : digits) {
            const double v = digit * std::pow(10.0, k);
            if (v > from && v < to) values.push_back(v);
        }
    return values;
}
std::vector<double> round_decades(double from, double to) {
    return decades(from, to, {1, 2, 5});
}

struct PropertyDiagramCommand {
    Options options;
    MixtureRequest request;
    std::string kind = "ph", isotherms, isobars, isentropes, isochores, qualities, T_min, T_max, p_min, p_max;
    PlotFile plot;

    int run();

  private:
    corvane::PropertyDiagramOptions how(Kind const& k, double Tc, double pc, double vc, double lowest) const;
    double value(PropertyPoint const& q, std::string const& name) const;
    Quantity quantity(std::string const& name) const;
    std::string symbol(What what) const;
    Picture picture(corvane::PropertyDiagram const& d, Kind const& k) const;
    Table table(corvane::PropertyDiagram const& d) const;
};

Quantity PropertyDiagramCommand::quantity(std::string const& name) const {
    return name == "T"     ? Quantity::temperature
           : name == "p"   ? Quantity::pressure
           : name == "rho" ? Quantity::density
           : name == "v"   ? Quantity::volume
           : name == "s"   ? Quantity::entropy
           : name == "q"   ? Quantity::ratio
                           : Quantity::energy;
}
double PropertyDiagramCommand::value(PropertyPoint const& q, std::string const& name) const {
    const double raw = name == "T"     ? q.T
                       : name == "p"   ? q.p
                       : name == "rho" ? q.rho
                       : name == "v"   ? 1.0 / q.rho
                       : name == "h"   ? q.h
                       : name == "s"   ? q.s
                       : name == "u"   ? q.u
                                       : q.q;
    return options.units.from_library(quantity(name), raw);
}
std::string PropertyDiagramCommand::symbol(What what) const {
    return what == What::T ? "T" : what == What::p ? "p" : what == What::q ? "q" : what == What::rho ? "rho" : "s";
}

corvane::PropertyDiagramOptions PropertyDiagramCommand::how(Kind const& k, double Tc, double pc,
                                                            double vc, double lowest) const {
    Units const& u = options.units;
    corvane::PropertyDiagramOptions o;
    const auto bound = [&](std::string const& text, char const* name, Quantity q, double otherwise) {
        return text.empty() ? otherwise : positive(text, name, q, u);
    };
    o.T_min = bound(T_min, "--T-min", Quantity::temperature, lowest);
    o.T_max = bound(T_max, "--T-max", Quantity::temperature, 1.6 * Tc);
    o.p_max = bound(p_max, "--p-max", Quantity::pressure, 10.0 * pc);
    o.p_min = bound(p_min, "--p-min", Quantity::pressure, 1e-3 * pc);
    if (o.T_max <= o.T_min || o.p_max <= o.p_min) throw Misuse("a lower bound is above the upper one");
    const auto given = [&](std::string const& text, char const* name, Quantity q) {
        std::vector<double> values = points(text, name);
        for (double& v : values) v = u.to_library(q, v);
        return values;
    };
    const auto in_units = [&](Quantity q, auto make, double from, double to) {
        double a = u.from_library(q, from), b = u.from_library(q, to);
        std::vector<double> values = make(std::min(a, b), std::max(a, b));
        for (double& v : values) v = u.to_library(q, v);
        return values;
    };
    if (!isotherms.empty())
        o.T = positive_points(isotherms, "--isotherms", Quantity::temperature, u);
    else if (k.isotherms)
        o.T = in_units(Quantity::temperature,
                       [](double a, double b) { return round_values(a, b, 12); }, o.T_min, o.T_max);
    if (!isobars.empty())
        o.p = positive_points(isobars, "--isobars", Quantity::pressure, u);
    else if (k.isobars)
        o.p = in_units(Quantity::pressure,
                       [&](double a, double b) {  // of mixtures fewer: no isobar is level there
                           return request.model.empty() ? round_decades(a, b) : decades(a, b, {1, 3});
                       },
                       o.p_min, o.p_max);
    if (!isentropes.empty()) o.s = given(isentropes, "--isentropes", Quantity::entropy);
    if (!isochores.empty())
        o.rho = positive_points(isochores, "--isochores", Quantity::density, u);
    else if (k.isochores)  // from dilute gas to liquid; few where isobars run beside them
        o.rho = in_units(Quantity::density,
                         [&](double a, double b) {
                             return k.isobars ? decades(a, b, {1}) : round_decades(a, b);
                         },
                         3.0 * o.p_min / (R * o.T_max), 2.5 / vc);
    if (!qualities.empty())
        o.q = given(qualities, "--qualities", Quantity::ratio);
    else if (k.qualities)
        o.q = {0.2, 0.4, 0.6, 0.8};
    for (double q : o.q)
        if (!(q >= 0.0 && q <= 1.0)) throw Misuse("--qualities: between 0 and 1");
    return o;
}

Table PropertyDiagramCommand::table(corvane::PropertyDiagram const& d) const {
    Units const& u = options.units;
    Table table{{{"line", "", "bubble or dew points, or what is constant along the line"},
                 {"value", "", "of the constant quantity, in its unit"}},
                {}};
    char const* const names[] = {"T", "p", "rho", "v", "h", "s", "u", "q"};
    char const* const words[] = {"temperature", "pressure",       "density", "volume",
                                 "enthalpy",    "entropy", "internal energy",
                                 "amount of vapour over the whole, in two phases"};
    for (std::size_t k = 0; k < std::size(names); ++k)
        table.columns.push_back(
            {names[k], names[k][0] == 'q' ? "" : u.name(quantity(names[k])), words[k]});
    const auto add = [&](std::string const& line, double of, PropertyPoint const& q) {
        Row row;
        row.cells.resize(2 + std::size(names));
        row.cells[0] = line;
        if (std::isfinite(of)) row.cells[1] = of;
        for (std::size_t k = 0; k < std::size(names); ++k) {
            const double v = value(q, names[k]);
            if (std::isfinite(v)) row.cells[2 + k] = v;
        }
        table.rows.push_back(std::move(row));
    };
    for (PropertyPoint const& q : d.liquid) add("bubble", std::nan(""), q);
    for (PropertyPoint const& q : d.vapour) add("dew", std::nan(""), q);
    for (Isoline const& line : d.lines)
        for (PropertyPoint const& q : line.points)
            add(symbol(line.what), u.from_library(quantity(symbol(line.what)), line.value), q);
    return table;
}

Picture PropertyDiagramCommand::picture(corvane::PropertyDiagram const& d, Kind const& k) const {
    Units const& u = options.units;
    Picture result;
    const auto name = [&](char const* symbol) {
        if (symbol[0] == 'T' || symbol[0] == 'p') return axis(quantity(symbol), u);
        const std::string unit = unit_in_picture(u.name(quantity(symbol)));
        return fmt::format("{} / {}", symbol == std::string_view("rho") ? "\u03c1" : symbol,
                           unit.find('/') == std::string::npos ? unit : "(" + unit + ")");
    };
    result.x_axis = name(k.x);
    result.y_axis = name(k.y);
    result.log_x = k.log_x;
    result.log_y = k.log_y;
    const auto curve = [&](std::vector<PropertyPoint> const& points) {
        std::vector<XY> xy;
        for (PropertyPoint const& q : points) xy.push_back({value(q, k.x), value(q, k.y)});
        return xy;
    };
    for (Isoline const& line : d.lines) {
        const std::string of = symbol(line.what);
        const Ink ink = line.what == What::T   ? Ink::vapour
                        : line.what == What::p ? Ink::liquid2
                        : line.what == What::q ? Ink::grey
                        : line.what == What::rho ? Ink::solid
                                               : Ink::azeotrope;
        char const* const key = line.what == What::T   ? "isotherms"
                                : line.what == What::p ? "isobars"
                                : line.what == What::q ? "equal vapour content"
                                : line.what == What::rho ? "isochores"
                                                       : "isentropes";
        std::vector<XY> points = curve(line.points);
        const bool first = line.what == What::q || (line.what == What::T && k.y[0] == 'p');
        const double of_line = u.from_library(quantity(of), line.value);
        result.labels.push_back({fmt::format("{:.4g}", of_line), {}, points, first ? 0.1 : 0.9, ink});
        const std::string unit = line.what == What::q ? "" : unit_in_picture(u.name(quantity(of)));
        result.curves.push_back({unit.empty() ? key : fmt::format("{}, {}", key, unit), ink, Stroke::thin,
                                 std::move(points)});
    }
    std::vector<XY> bubble = curve(d.liquid);
    // Both have an end next to the critical point: no gap there.
    const auto near = [](double a, double b, double part) { return std::fabs(a - b) < part * a; };
    if (!d.liquid.empty() && !d.vapour.empty())
        for (PropertyPoint const* end : {&d.liquid.back(), &d.liquid.front()})
            for (PropertyPoint const* next : {&d.vapour.back(), &d.vapour.front()})
                if (near(end->T, next->T, 0.005) && near(end->p, next->p, 0.02) && near(end->rho, next->rho, 0.5))
                    bubble.insert(end == &d.liquid.back() ? bubble.end() : bubble.begin(),
                                  {value(*next, k.x), value(*next, k.y)});
    result.curves.push_back({"bubble points", Ink::liquid, Stroke::line, std::move(bubble)});
    result.curves.push_back({"dew points", Ink::black, Stroke::line, curve(d.vapour)});
    return result;
}

int PropertyDiagramCommand::run() {
    plot.begin();
    Kind const& k = *std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](Kind const& each) { return each.name == kind; });
    Watch watch("corvane: property-diagram");
    const bool mixed = options.words.front().find('+') != std::string::npos;
    const auto draw = [&](Heading& head, corvane::PropertyDiagram const& d, std::string const& of) {
        if (d.liquid.empty() && d.lines.empty()) throw Failure("no state was found");
        if (d.failures > 0)
            head.summary.push_back(fmt::format("{} states of the lines were not found", d.failures));
        if (Watch::interrupted()) head.summary.emplace_back("interrupted: lines are missing");
        const Table all = table(d);
        Picture drawn = picture(d, k);
        drawn.title = of;
        plot.show(drawn, head, all, options.style);
        return Watch::interrupted() ? kInterrupted : 0;
    };
    const bool energies = kind != "pv" && kind != "Trho";
    if (mixed) {
        request.model = options.words.front();
        request.components.assign(options.words.begin() + 1, options.words.end());
        request.sets = options.set;
        request.define = options.define;
        options.begin();
        MixtureFluid mixture = open_mixture(request);
        options.units.M = mixture.M();
        Heading head = heading("property-diagram", mixture);
        head.remarks.push_back(options.set_reference(mixture));
        if (energies && !mixture.ideal)
            throw Failure("--kind " + kind + " needs ideal-gas data of all components");
        double Tc = 0.0, pc = 0.0, vc = 0.0, mean = 0.0;
        for (int i = 0; i < mixture.size(); ++i) {
            if (!(mixture.x[i] > 0.0)) continue;
            mean += mixture.x[i] * mixture.model->mdl1[i]->Tcrit();
            vc += mixture.x[i] * mixture.model->mdl1[i]->vcrit();
            Tc = std::max(Tc, mixture.model->mdl1[i]->Tcrit());
            pc = std::max(pc, mixture.model->mdl1[i]->pcrit());
        }
        corvane::PropertyDiagramOptions o = how(k, Tc, pc, vc, 0.55 * mean);
        o.q.clear();
        if (k.isobars && isochores.empty()) o.rho.clear();  // they would run between the isobars
        o.progress = watch.progress();
        return draw(head, asking(mixture.text(), [&] {
                        return corvane::property_diagram(*mixture.model, mixture.x, o);
                    }), title(mixture));
    }
    if (!request.kij.empty() || !request.basis.empty() || request.pair_set > 0)
        throw Misuse("--kij, --basis and --pair-set are of mixtures: MODEL A=0.5 B");
    Fluid fluid = options.open();
    Heading head = heading("property-diagram", fluid, options.units);
    head.remarks.push_back(options.set_reference(fluid));
    if (energies && !fluid.ideal) throw Failure("--kind " + kind + " needs ideal-gas data");
    // From where the equation is said to hold, often the triple point.
    const double Tc = fluid.model->Tcrit(), stated = fluid.notes.Tmin;
    corvane::PropertyDiagramOptions o =
        how(k, Tc, fluid.model->pcrit(), fluid.model->vcrit(), stated > 0.3 * Tc && stated < 0.9 * Tc ? stated : 0.55 * Tc);
    o.progress = watch.progress();
    return draw(head, asking(fluid.name(), [&] { return corvane::property_diagram(*fluid.model, o); }),
                fmt::format("{}, {}", fluid.shown(), fluid.equation));
}
}  // namespace

void add_property_diagram(Program& program) {
    auto diagram = std::make_shared<PropertyDiagramCommand>();
    Command command =
        program.add("property-diagram", "saturation and isolines in p-h, T-s, h-s, p-v or T-rho",
                    [diagram] { return diagram->run(); });
    diagram->options.add_fluid(command);
    command
        .value("--kind", diagram->kind, "ph (default), Ts, hs, pv, Trho",
               {.one_of = {"ph", "Ts", "hs", "pv", "Trho"}, .type = "KIND"})
        .value("--isotherms", diagram->isotherms, "temperatures, in place of round ones",
               {.type = "LIST"})
        .value("--isobars", diagram->isobars, "pressures, in place of 1, 2, 5 (of mixtures 1, 3) of every decade",
               {.type = "LIST"})
        .value("--isochores", diagram->isochores, "densities, in place of round ones (with isobars of mixtures: none)",
               {.type = "LIST"})
        .value("--isentropes", diagram->isentropes, "entropies (none)", {.type = "LIST"})
        .value("--qualities", diagram->qualities, "amounts of vapour, pure fluids alone",
               {.type = "LIST"})
        .value("--T-min", diagram->T_min, "lowest temperature (of the stated range, or 0.55 Tc)")
        .value("--T-max", diagram->T_max, "highest temperature (1.6 Tc)")
        .value("--p-min", diagram->p_min, "lowest pressure (0.001 pc)")
        .value("--p-max", diagram->p_max, "highest pressure (10 pc)");
    diagram->plot.add_to(command);
    diagram->request.add_pairs(command);
    diagram->options.add_reference(command);
    diagram->options.add_units(command);
    diagram->options.add_output(command);
    command.examples(
        R"(  corvane property-diagram CO2 --kind ph --units bar --plot ph.svg
  corvane property-diagram water --kind Ts --isobars 0.1,1,10 --csv
  corvane property-diagram PR+vdW1 methane=0.7 propane --kind ph --plot mixture.svg)");
}

}  // namespace cli
