// corvane ternary: the phase diagram of three components at T and p.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/fields.h>
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/diagrams/xy_branch.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/phases/ternary/ternary_diagram.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace cli {
namespace {
using corvane::CurveKind;
using corvane::PhasePair;
using corvane::PhaseRecord;
using corvane::TernaryDiagram;
using corvane::TernaryEnd;
using corvane::TernaryRegion;

/// A number, or nothing where it is not known.
void add_finite(Row& row, double value) {
    row.cells.resize(row.cells.size() + 1);
    if (std::isfinite(value)) row.cells.back() = value;
}

struct TernaryCommand {
    Options options;
    MixtureRequest request;
    std::string T, p, step;
    int mesh = 10;
    PlotFile plot;
    Measured measured;

    int run();

  private:
    bool by_mass() const { return request.basis == "mass"; }
    /// Mole fractions as they are shown.
    Vector<double> shown(MixtureFluid const& mixture, Vector<double> const& x) const {
        return by_mass() ? mixture.mass_fractions(x) : x;
    }
    void draw(MixtureFluid const& mixture, TernaryDiagram const& d, Picture& picture) const;
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    std::vector<Row> rows_of(MixtureFluid const& mixture, TernaryDiagram const& d) const;
    void report(MixtureFluid const& mixture, TernaryDiagram const& d, Heading& head) const;
    void report_points(MixtureFluid const& mixture, TernaryDiagram const& d, Heading& head) const;
};

std::vector<Column> TernaryCommand::columns(MixtureFluid const& mixture) const {
    std::vector<Column> result{{"region", "", "number of the region of two phases"},
                               {"phases", "", "what the two phases are"}};
    const std::string fraction = by_mass() ? "mass fraction" : "mole fraction";
    add_fractions(result, mixture, by_mass() ? "wx" : "x",
                  fraction + " in the denser phase (by mass)");
    add_fractions(result, mixture, by_mass() ? "wy" : "y", fraction + " in the lighter phase");
    const std::string rho = options.units.name(Quantity::density);
    result.push_back({"rho_x", rho, "density of the phase x"});
    result.push_back({"rho_y", rho, "density of the phase y"});
    for (char const* name : {"dmu", "dp", "tpd", "x_error"})
        result.push_back({name, "", "certificate of the tie line", false, 3, true});
    return result;
}

std::vector<Row> TernaryCommand::rows_of(MixtureFluid const& mixture,
                                         TernaryDiagram const& d) const {
    std::vector<Row> rows;
    for (std::size_t r = 0; r < d.regions.size(); ++r) {
        TernaryRegion const& region = d.regions[r];
        for (corvane::TernaryTieLine const& tie : region.tie_lines) {
            Row row;
            row.cells.emplace_back(static_cast<long>(r + 1));
            row.cells.emplace_back(std::string(in_words(region.kind)));
            for (PhaseRecord const& phase : tie.phases) add_cells(row, shown(mixture, phase.x));
            for (PhaseRecord const& phase : tie.phases)
                row.cells.emplace_back(mixture.density(options.units, phase.x, phase.rho));
            for (double value : {tie.dmu, tie.dp, tie.tpd, tie.x_error}) add_finite(row, value);
            rows.push_back(std::move(row));
        }
        const std::size_t first = rows.size() - region.tie_lines.size();
        add_note(rows[first].note,
                 std::string("begins at ") + in_words(region.begin, CurveKind::ternary));
        add_note(rows.back().note,
                 std::string("ends at ") + in_words(region.end, CurveKind::ternary));
    }
    return rows;
}

/// Triangles, plait points, what is not resolved.
void TernaryCommand::report_points(MixtureFluid const& mixture, TernaryDiagram const& d,
                                   Heading& head) const {
    const auto phase_fields = [&](Fields& fields, PhaseRecord const& phase, std::string const& of) {
        const Vector<double> x = shown(mixture, phase.x);
        for (int i = 0; i < 3; ++i)
            fields.emplace_back(
                fmt::format("{}{}_{}", by_mass() ? "w" : "x", of, mixture.component(i)), x[i]);
        fields.emplace_back("rho" + of, mixture.density(options.units, phase.x, phase.rho));
    };
    for (corvane::TernaryTriangle const& t : d.three_phase) {
        Fields fields;
        std::string text = "three phases:";
        for (std::size_t k = 0; k < 3; ++k) {
            phase_fields(fields, t.phases[k], std::to_string(k + 1));
            text += mixture.composition(shown(mixture, t.phases[k].x));
            if (k < 2) text += " |";
        }
        append(fields, t.certificate);
        list(head, "three_phase").push_back(std::move(fields));
        head.summary.push_back(std::move(text));
    }
    for (corvane::CriticalPoint const& q : d.plait) {
        Fields fields;
        phase_fields(fields, {q.rho, q.x}, "");
        append(fields, q.certificate);
        list(head, "plait").push_back(std::move(fields));
        head.summary.push_back("plait point:" + mixture.composition(shown(mixture, q.x)));
    }
    for (Vector<double> const& z : d.open) {
        Fields fields;
        for (int i = 0; i < 3; ++i)
            fields.emplace_back(fmt::format("{}_{}", by_mass() ? "w" : "z", mixture.component(i)),
                                shown(mixture, z)[i]);
        list(head, "open").push_back(std::move(fields));
        head.summary.push_back("not resolved:" + mixture.composition(shown(mixture, z)));
    }
}

void TernaryCommand::report(MixtureFluid const& mixture, TernaryDiagram const& d,
                            Heading& head) const {
    double dmu = 0.0, dp = 0.0, x_error = 0.0;
    std::size_t lines = 0;
    for (TernaryRegion const& r : d.regions) {
        dmu = std::max(dmu, r.dmu);
        dp = std::max(dp, r.dp);
        if (!(r.x_error <= x_error) && !std::isnan(x_error)) x_error = r.x_error;
        lines += r.tie_lines.size();
        head.summary.push_back(
            fmt::format("region {}: {} from {} to {}, {} tie lines", &r - d.regions.data() + 1,
                        in_words(r.kind), in_words(r.begin, CurveKind::ternary),
                        in_words(r.end, CurveKind::ternary), r.tie_lines.size()));
    }
    report_points(mixture, d, head);
    if (d.regions.empty()) head.summary.emplace_back("one phase in all compositions searched");
    head.summary.push_back(
        fmt::format("{}; certified: {}, {}; {} evaluations",
                    d.complete() ? "complete" : "not complete", agreement(dmu, dp),
                    std::isnan(x_error) ? "mole fractions without a bound"
                                        : fmt::format("mole fractions to {:.1g}", x_error),
                    d.evaluations));
    list(head, "certificates")
        .push_back({{"T", options.units.from_library(Quantity::temperature, d.T)},
                    {"p", options.units.from_library(Quantity::pressure, d.p)},
                    {"complete", static_cast<long>(d.complete())},
                    {"tie_lines", static_cast<long>(lines)},
                    {"dmu", dmu},
                    {"dp", dp},
                    {"x_error", x_error},
                    {"evaluations", d.evaluations}});
    Cautions cautions;
    for (std::size_t k = 0; k < lines; ++k) cautions.add(mixture.validity, d.T, d.p, mixture.x);
    cautions.report(head);
}

/// The boundaries, tie lines a good distance apart, and what is marked.
void TernaryCommand::draw(MixtureFluid const& mixture, TernaryDiagram const& d,
                          Picture& picture) const {
    const auto place_of = [&](Vector<double> const& x) {
        const Vector<double> at = shown(mixture, x);
        return Picture::in_triangle(at[0], at[1]);
    };
    const auto place = [&](PhaseRecord const& phase) { return place_of(phase.x); };
    constexpr double apart = 0.06;  // of tie lines, at both ends together
    for (TernaryRegion const& r : d.regions) {
        const Ink inks[] = {Ink::liquid,
                            r.kind == PhasePair::vapour_liquid ? Ink::vapour : Ink::liquid2};
        char const* const names[] = {
            "liquid", r.kind == PhasePair::vapour_liquid ? "vapour" : "second liquid"};
        for (std::size_t k : {0, 1}) {
            std::vector<XY> points;
            for (auto const& tie : r.tie_lines) points.push_back(place(tie.phases[k]));
            picture.curves.push_back({names[k], inks[k], Stroke::line, std::move(points)});
        }
        std::vector<XY> ties;
        XY a{9.0, 9.0}, b = a;
        for (auto const& tie : r.tie_lines) {
            const XY c = place(tie.phases[0]), e = place(tie.phases[1]);
            if (std::hypot(c[0] - a[0], c[1] - a[1]) + std::hypot(e[0] - b[0], e[1] - b[1]) < apart)
                continue;
            ties.insert(ties.end(), {c, e, XY{std::nan(""), std::nan("")}});
            a = c;
            b = e;
        }
        picture.curves.push_back({"tie lines", Ink::grey, Stroke::thin, std::move(ties)});
    }
    for (corvane::TernaryTriangle const& t : d.three_phase) {
        std::vector<XY> corners;
        for (std::size_t k : {0, 1, 2, 0}) corners.push_back(place(t.phases[k]));
        for (std::size_t k : {0, 1, 2})
            picture.mark("three phases", Symbol::three_phase, Ink::black, corners[k]);
        picture.labels.push_back({"3 phases",
                                  {(corners[0][0] + corners[1][0] + corners[2][0]) / 3,
                                   (corners[0][1] + corners[1][1] + corners[2][1]) / 3}});
        picture.curves.push_back({"", Ink::black, Stroke::line, std::move(corners)});
    }
    for (corvane::CriticalPoint const& q : d.plait)
        picture.mark("plait point", Symbol::critical, Ink::black, place_of(q.x));
    if (measured) measured.draw_ties(picture, place_of);
}

int TernaryCommand::run() {
    plot.begin();
    measured.begin();
    options.begin();
    const MixtureFluid mixture = open_ternary(request);
    if (measured) measured.read_ties(mixture);
    Units& units = options.units;
    units.M = mixture.M();
    corvane::TernaryOptions how;
    const double at_T = positive(T, "--T", Quantity::temperature, units),
                 at_p = positive(p, "--p", Quantity::pressure, units);
    how.step = !step.empty() ? number(step, "--step") : plot ? 0.02 : 0.05;
    if (!(how.step > 0.0 && how.step <= 0.5)) throw Misuse("--step: from above 0 to 0.5");
    if (mesh < 2 || mesh > 100) throw Misuse("--mesh: from 2 to 100");
    how.mesh = mesh;
    how.validity = &mixture.validity;
    Heading head = heading("ternary", mixture);
    head.remarks.push_back(fmt::format("T = {}, p = {}", units.text(Quantity::temperature, at_T),
                                       units.text(Quantity::pressure, at_p)));
    head.remarks.emplace_back(
        by_mass() ? "tie lines of every stable region; mass fractions, wx in the denser phase"
                  : "tie lines of every stable region; x is the denser phase (by mass)");
    Watch watch("corvane: ternary");
    how.progress = watch.progress();
    const TernaryDiagram d = asking(
        fmt::format("{} at T = {}, p = {}", mixture.text(), units.text(Quantity::temperature, at_T),
                    units.text(Quantity::pressure, at_p)),
        [&] { return corvane::ternary_diagram(*mixture.model, at_T, at_p, how); });
    report(mixture, d, head);
    if (measured) measured.compare_ties(mixture, at_T, at_p, units, head);
    if (Watch::interrupted()) head.summary.emplace_back("interrupted: regions are missing");
    const Table table{columns(mixture), rows_of(mixture, d)};
    Picture picture;
    picture.title =
        fmt::format("{}, {}, {}", title(mixture), units.text(Quantity::temperature, at_T),
                    units.text(Quantity::pressure, at_p));
    if (by_mass()) picture.title += ", mass fractions";
    for (int i = 0; i < 3; ++i) picture.corners[static_cast<std::size_t>(i)] = mixture.shown(i);
    draw(mixture, d, picture);
    if (plot && d.complete())
        label_fields(picture, [&](XY const& at) {
            Vector<double> x(3);
            x[0] = at[1] / (0.5 * std::sqrt(3.0));
            x[1] = 1.0 - at[0] - 0.5 * x[0];
            x[2] = 1.0 - x[0] - x[1];
            return phase_letter(mixture, by_mass() ? mixture.mole_fractions(x) : x, at_T, at_p);
        });
    plot.show(picture, head, table, options.style);
    return Watch::interrupted() ? kInterrupted : d.complete() ? 0 : 1;
}
}  // namespace

void add_ternary(Program& program) {
    auto ternary = std::make_shared<TernaryCommand>();
    Command command =
        program.add("ternary", "phase diagram of three components at T and p: regions, tie lines",
                    [ternary] { return ternary->run(); });
    ternary->request.ternary = true;
    ternary->request.add_to(command);
    command.value("--T", ternary->T, "temperature", {.required = true})
        .value("--p", ternary->p, "pressure", {.required = true})
        .value("--step", ternary->step,
               "longest step in both compositions together (0.05; 0.02 with --plot)")
        .count("--mesh", ternary->mesh, "parts of an edge in the search for islands (10)");
    ternary->measured.add_to(command);
    ternary->plot.add_to(command);
    ternary->options.add_units(command);
    ternary->options.add_output(command);
    command.examples(
        R"(  corvane ternary PCSAFT+LB CO2 methanol water --T 300 --p 7 --plot ternary.svg
  corvane ternary PR+vdW1 nitrogen methane ethane --T 120 --p 3 --json)");
}

}  // namespace cli
