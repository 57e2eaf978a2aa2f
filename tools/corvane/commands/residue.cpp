// corvane residue-curves: simple distillation of three components at p.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/watch.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/phases/ternary/residue_curves.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
using corvane::ResidueMap;
using corvane::SingularKind;
using corvane::SingularPoint;

struct ResidueCommand {
    Options options;
    MixtureRequest request;
    std::string p;
    int mesh = 6;
    PlotFile plot;

    int run();

  private:
    Table table(MixtureFluid const& mixture, ResidueMap const& map) const;
    void report(MixtureFluid const& mixture, ResidueMap const& map, Heading& head) const;
    double T(double kelvin) const { return options.units.from_library(Quantity::temperature, kelvin); }
};

Table ResidueCommand::table(MixtureFluid const& mixture, ResidueMap const& map) const {
    Table result{{{"curve", "", "number of the curve"},
                  {"T", options.units.name(Quantity::temperature), "temperature"},
                  {"xi", "", "time of distillation: -ln of the liquid that is left"}},
                 {}};
    add_fractions(result.columns, mixture, "x", "mole fraction in the liquid");
    add_fractions(result.columns, mixture, "y", "mole fraction in the vapour");
    const auto name = [&](int k) {
        if (k < 0) return std::string("an open end");
        SingularPoint const& s = map.singular[static_cast<std::size_t>(k)];
        return fmt::format("the {} at {}", in_words(s.kind), options.units.text(Quantity::temperature, s.T));
    };
    for (std::size_t c = 0; c < map.curves.size(); ++c) {
        corvane::ResidueCurve const& curve = map.curves[c];
        for (corvane::ResiduePoint const& q : curve.points) {
            Row row;
            row.cells = {static_cast<long>(c + 1), T(q.T), q.xi};
            add_cells(row, q.x);
            add_cells(row, q.y);
            result.rows.push_back(std::move(row));
        }
        Row& first = result.rows[result.rows.size() - curve.points.size()];
        if (curve.boundary) add_note(first.note, "boundary");
        add_note(first.note, "comes from " + name(curve.begin));
        add_note(result.rows.back().note, "goes to " + name(curve.end));
    }
    return result;
}

void ResidueCommand::report(MixtureFluid const& mixture, ResidueMap const& map, Heading& head) const {
    for (SingularPoint const& s : map.singular) {
        Fields fields = {{"T", T(s.T)}, {"components", static_cast<long>(s.components)}, {"kind", in_words(s.kind)}};
        for (int i = 0; i < 3; ++i) fields.emplace_back(fmt::format("x_{}", mixture.component(i)), s.x[i]);
        list(head, "singular").push_back(std::move(fields));
        head.summary.push_back(fmt::format("{}: {}{} at {}", in_words(s.kind),
                                           s.components == 1 ? "pure" : "azeotrope", mixture.composition(s.x),
                                           options.units.text(Quantity::temperature, s.T)));
    }
    head.summary.push_back(fmt::format(
        "{} curves; nodes and saddles {}{}", map.curves.size(),
        map.consistent() ? "are consistent" : "are not consistent: a singular point is missing or unclear",
        map.failures > 0 ? fmt::format("; {} bubble points were not found", map.failures) : ""));
}

void draw(ResidueMap const& map, Picture& picture) {
    const auto place = [](Vector<double> const& x) { return Picture::in_triangle(x[0], x[1]); };
    for (corvane::ResidueCurve const& curve : map.curves) {
        std::vector<XY> points;
        if (curve.begin >= 0) points.push_back(place(map.singular[static_cast<std::size_t>(curve.begin)].x));
        for (corvane::ResiduePoint const& q : curve.points) points.push_back(place(q.x));
        if (curve.end >= 0) points.push_back(place(map.singular[static_cast<std::size_t>(curve.end)].x));
        // An arrow half-way, to where it boils higher.
        const std::size_t m = points.size() / 2;
        if (!curve.boundary && m > 0) {
            const XY d{points[m][0] - points[m - 1][0], points[m][1] - points[m - 1][1]};
            const double scale = 0.015 / std::max(1e-9, std::hypot(d[0], d[1]));
            const XY at = points[m], u{d[0] * scale, d[1] * scale};
            picture.curves.push_back({"", Ink::liquid, Stroke::thin,
                                      {{at[0] - u[0] - 0.5 * u[1], at[1] - u[1] + 0.5 * u[0]}, at,
                                       {at[0] - u[0] + 0.5 * u[1], at[1] - u[1] - 0.5 * u[0]}}});
        }
        picture.curves.push_back(curve.boundary
                                     ? Curve{"distillation boundary", Ink::black, Stroke::line, std::move(points)}
                                     : Curve{"residue curves", Ink::liquid, Stroke::thin, std::move(points)});
    }
    for (SingularPoint const& s : map.singular)
        picture.mark(in_words(s.kind),
                     s.kind == SingularKind::stable_node     ? Symbol::critical
                     : s.kind == SingularKind::unstable_node ? Symbol::measured_open
                     : s.kind == SingularKind::saddle        ? Symbol::three_phase
                                                             : Symbol::extremum,
                     Ink::black, place(s.x));
}

int ResidueCommand::run() {
    plot.begin();
    options.begin();
    const MixtureFluid mixture = open_ternary(request);
    Units& units = options.units;
    units.M = mixture.M();
    corvane::ResidueOptions how;
    const double at_p = positive(p, "--p", Quantity::pressure, units);
    if (mesh < 3 || mesh > 30) throw Misuse("--mesh: from 3 to 30");
    how.mesh = mesh;
    how.validity = &mixture.validity;
    Heading head = heading("residue-curves", mixture);
    const std::string where = "p = " + units.text(Quantity::pressure, at_p);
    head.remarks.push_back(where + ": what is left in a still, dx/dxi = x - y, every point a certified bubble point");
    Watch watch("corvane: residue-curves");
    how.progress = watch.progress();
    const ResidueMap map = asking(mixture.text() + " at " + where,
                                  [&] { return corvane::residue_map(*mixture.model, at_p, how); });
    report(mixture, map, head);
    if (Watch::interrupted()) head.summary.emplace_back("interrupted: curves are missing");
    const Table all = table(mixture, map);
    Picture picture;
    picture.title = fmt::format("{}, {}", title(mixture), units.text(Quantity::pressure, at_p));
    for (std::size_t i = 0; i < 3; ++i) picture.corners[i] = mixture.shown(static_cast<int>(i));
    draw(map, picture);
    for (SingularPoint const& s : map.singular) {
        const std::string boils = fmt::format("{:.4g} {}", T(s.T), units.name(Quantity::temperature));
        const XY at = Picture::in_triangle(s.x[0], s.x[1]);
        if (s.components > 1) picture.labels.push_back({boils, {at[0], at[1] + 0.04}});
        for (std::size_t i = 0; i < 3; ++i)
            if (s.x[static_cast<int>(i)] == 1.0) picture.corners[i] += ", " + boils;
    }
    plot.show(picture, head, all, options.style);
    return Watch::interrupted() ? kInterrupted : map.consistent() ? 0 : 1;
}
}  // namespace

void add_residue_curves(Program& program) {
    auto residue = std::make_shared<ResidueCommand>();
    Command command = program.add("residue-curves", "simple distillation of three components at p: residue curve map",
                                  [residue] { return residue->run(); });
    residue->request.ternary = true;
    residue->request.add_to(command);
    command.value("--p", residue->p, "pressure", {.required = true})
        .count("--mesh", residue->mesh, "curves begin at inner points of a triangle divided by this (6)");
    residue->plot.add_to(command);
    residue->options.add_units(command);
    residue->options.add_output(command);
    command.examples(
        R"(  corvane residue-curves PR+vdW1 propane butane pentane --p 5 --unit-p bar --plot residue.svg
  corvane residue-curves PR+vdW1 CO2 ethane propane --p 2 --json)");
}

}  // namespace cli
