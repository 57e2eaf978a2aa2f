// corvane envelope: the phase envelope of a mixture of fixed composition.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/diagrams/several.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/watch.h>
#include <tools/corvane/results/certified.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/saturation/envelope.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace cli {
namespace {
using corvane::Envelope;
using corvane::EnvelopeEnd;
using corvane::EnvelopePoint;

struct EnvelopeCommand {
    Options options;
    MixtureRequest request;
    std::string p_start, p_max, T_min;
    PlotFile plot;
    Measured data;
    Models models;
    bool log_p = false;

    int run();

  private:
    Drawn with(MixtureRequest const& of);
    corvane::EnvelopeOptions how() const;
    std::vector<Column> columns(MixtureFluid const& mixture, bool several) const;
    Row row(MixtureFluid const& mixture, EnvelopePoint const& point, long number,
            std::string const& mark) const;
    void add(MixtureFluid const& mixture, Envelope const& envelope, long number,
             Table& table) const;
    void summarise(MixtureFluid const& mixture, Envelope const& envelope, std::string const& line,
                   Heading& head) const;
    void draw(Envelope const& envelope, Picture& picture) const;
    XY at(EnvelopePoint const& point) const;
};

char const* state_of(EnvelopeEnd end) {
    switch (end) {
        case EnvelopeEnd::closed:
            return "closed: back at the pressure where it began";
        case EnvelopeEnd::pressure:
            return "open: at the highest pressure (--p-max)";
        case EnvelopeEnd::cold:
            return "open: at the lowest temperature (--T-min)";
        case EnvelopeEnd::full:
            return "cut off at the largest number of points";
        case EnvelopeEnd::interrupted:
            return "interrupted";
        default:
            break;
    }
    return "open: no further point was found";
}

/// Special points with their names.
struct Named {
    char const* name;
    Symbol symbol;
    std::vector<EnvelopePoint> const& points;
};
std::vector<Named> special(Envelope const& envelope) {
    return {{"critical point", Symbol::critical, envelope.critical},
            {"cricondentherm", Symbol::extremum, envelope.cricondentherm},
            {"cricondenbar", Symbol::three_phase, envelope.cricondenbar},
            {"maximum of T, dense", Symbol::extremum, envelope.beyond_T},
            {"maximum of p, dense", Symbol::three_phase, envelope.beyond_p}};
}

/// The number of the curve's point before a special point: that from which the way over it to the
/// next one is shortest, in ln T and ln p.
std::size_t place(std::vector<EnvelopePoint> const& curve, EnvelopePoint const& point) {
    const auto distance = [&](EnvelopePoint const& other) {
        return std::hypot(4.0 * std::log(other.T / point.T), std::log(other.p / point.p));
    };
    std::size_t best = 0;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t k = 0; k + 1 < curve.size(); ++k) {
        const double way = distance(curve[k]) + distance(curve[k + 1]);
        if (way < least) {
            least = way;
            best = k;
        }
    }
    return best;
}

corvane::EnvelopeOptions EnvelopeCommand::how() const {
    corvane::EnvelopeOptions result;
    result.p_max = 100.0;
    const auto set = [&](std::string const& text, char const* option, Quantity quantity,
                         double& value) {
        if (!text.empty()) value = positive(text, option, quantity, options.units);
    };
    set(p_start, "--p-start", Quantity::pressure, result.p_start);
    set(p_max, "--p-max", Quantity::pressure, result.p_max);
    set(T_min, "--T-min", Quantity::temperature, result.T_min);
    return result;
}

std::vector<Column> EnvelopeCommand::columns(MixtureFluid const& mixture, bool several) const {
    Units const& u = options.units;
    std::vector<Column> result = {
        {"T", u.name(Quantity::temperature), "temperature"},
        {"p", u.name(Quantity::pressure), "pressure"},
        {"kind", "", "bubble: the incipient phase is the lighter one (by mass); dew: the denser"}};
    add_fractions(result, mixture, "y", "mole fraction in the incipient phase");
    result.push_back({"rho", u.name(Quantity::density), "density of the phase of given fractions"});
    result.push_back({"rho2", u.name(Quantity::density), "density of the incipient phase"});
    result.push_back({"line", "", "number of the curve"});
    result.back().detail = !several;
    return result;
}

Row EnvelopeCommand::row(MixtureFluid const& mixture, EnvelopePoint const& point, long number,
                         std::string const& mark) const {
    Units const& u = options.units;
    Row result;
    result.cells = {u.from_library(Quantity::temperature, point.T),
                    u.from_library(Quantity::pressure, point.p),
                    std::string(point.bubble ? "bubble" : "dew")};
    add_cells(result, point.y);
    result.cells.emplace_back(mixture.density(u, mixture.x, point.rho));
    result.cells.emplace_back(mixture.density(u, point.y, point.rho2));
    result.cells.emplace_back(number);
    result.note = mark;
    if (point.unstable) add_note(result.note, "not stable: there is a phase of lower Gibbs energy");
    return result;
}

void EnvelopeCommand::add(MixtureFluid const& mixture, Envelope const& envelope, long number,
                          Table& table) const {
    std::vector<std::vector<Row>> marked(envelope.points.size());
    for (Named const& named : special(envelope))
        for (EnvelopePoint const& point : named.points)
            marked[place(envelope.points, point)].push_back(
                row(mixture, point, number, named.name));
    for (std::size_t k = 0; k < envelope.points.size(); ++k) {
        table.rows.push_back(row(mixture, envelope.points[k], number, ""));
        for (Row& extra : marked[k]) table.rows.push_back(std::move(extra));
    }
}

/// line: "line 2: " where there are several.
void EnvelopeCommand::summarise(MixtureFluid const& mixture, Envelope const& envelope,
                                std::string const& line, Heading& head) const {
    Units const& u = options.units;
    if (!line.empty()) {
        Vector<double> const& y = envelope.points.front().y;
        int most = 0;
        for (int i = 1; i < y.size(); ++i)
            if (y[i] > y[most]) most = i;
        head.summary.push_back(fmt::format(
            "{}begins at T = {}, p = {}, where the incipient phase has {:.3g} {}", line,
            u.text(Quantity::temperature, envelope.points.front().T),
            u.text(Quantity::pressure, envelope.points.front().p), y[most],
            mixture.component(most)));
    }
    for (Named const& named : special(envelope))
        for (EnvelopePoint const& point : named.points) {
            head.summary.push_back(fmt::format(
                "{}{}: T = {}, p = {}{}", line, named.name, u.text(Quantity::temperature, point.T),
                u.text(Quantity::pressure, point.p), point.unstable ? " (not stable)" : ""));
            list(head, "special")
                .push_back({{"name", named.name},
                            {"T", u.from_library(Quantity::temperature, point.T)},
                            {"p", u.from_library(Quantity::pressure, point.p)}});
        }
    head.summary.push_back(fmt::format("{}{} points, {} of them not stable; {}", line,
                                       envelope.points.size(), envelope.unstable,
                                       state_of(envelope.end)));
    Bounds bounds;
    for (auto const* points : {&envelope.points, &envelope.critical})
        for (EnvelopePoint const& point : *points) bounds.add(point);
    head.summary.push_back(fmt::format("{}certified: {}{}; {} evaluations", line,
                                       agreement(envelope.dmu, envelope.dp), bounds.text(),
                                       envelope.evaluations));
    list(head, "certificates")
        .push_back({{"points", static_cast<long>(envelope.points.size())},
                    {"unstable", static_cast<long>(envelope.unstable)},
                    {"end", state_of(envelope.end)},
                    {"dmu", envelope.dmu},
                    {"dp", envelope.dp},
                    {"error", bounds.value()},
                    {"x_error", bounds.x_value()},
                    {"evaluations", envelope.evaluations}});
}

XY EnvelopeCommand::at(EnvelopePoint const& point) const {
    return {options.units.from_library(Quantity::temperature, point.T),
            options.units.from_library(Quantity::pressure, point.p)};
}

/// Stretches of one kind; where the kind changes they meet, at the critical point if there is one.
void EnvelopeCommand::draw(Envelope const& envelope, Picture& picture) const {
    auto const& points = envelope.points;
    std::vector<XY> stretch;
    std::vector<bool> stable;
    for (std::size_t k = 0; k < points.size(); ++k) {
        stretch.push_back(at(points[k]));
        stable.push_back(!points[k].unstable);
        const bool bubble = points[k].bubble;
        if (k + 1 < points.size() && points[k + 1].bubble == bubble) continue;
        XY meeting = k + 1 < points.size() ? at(points[k + 1]) : stretch.back();
        for (EnvelopePoint const& critical : envelope.critical)
            if (place(points, critical) == k) meeting = at(critical);
        stretch.push_back(meeting);
        stable.push_back(stable.back());
        picture.add(bubble ? "bubble points" : "dew points", bubble ? Ink::liquid : Ink::vapour,
                    stretch, stable);
        stretch = {meeting};
        stable = {stable.back()};
    }
    for (Named const& named : special(envelope))
        for (EnvelopePoint const& point : named.points)
            picture.mark(named.name, named.symbol, Ink::black, at(point));
}

Drawn EnvelopeCommand::with(MixtureRequest const& of) {
    const MixtureFluid mixture = open_mixture(of);
    Measured measured = data;
    options.units.M = mixture.M();
    if (measured) measured.read(mixture, MeasuredKind::composition, options.units);
    Heading head = heading("envelope", mixture);
    head.remarks.emplace_back("y: the incipient phase, beside that of the given composition");
    corvane::EnvelopeOptions asked = how();
    Watch watch("corvane: envelope");
    asked.progress = watch.progress();
    const auto envelopes = asking(mixture.text() + ": phase envelope", [&] {
        return corvane::phase_envelopes(*mixture.model, mixture.x, asked);
    });
    Table table{columns(mixture, envelopes.size() > 1), {}};
    Picture drawing;
    drawing.title = title(mixture);
    drawing.x_axis = axis(Quantity::temperature, options.units);
    drawing.y_axis = axis(Quantity::pressure, options.units);
    Cautions cautions;
    bool stuck = false;
    for (std::size_t k = 0; k < envelopes.size(); ++k) {
        Envelope const& envelope = envelopes[k];
        add(mixture, envelope, static_cast<long>(k) + 1, table);
        summarise(mixture, envelope, envelopes.size() > 1 ? fmt::format("line {}: ", k + 1) : "",
                  head);
        draw(envelope, drawing);
        for (EnvelopePoint const& point : envelope.points)
            cautions.add(mixture.validity, point.T, point.p, mixture.x);
        // That a curve of states that are not stable is lost on its way is no failure.
        const bool seen = k == 0 || envelope.unstable < static_cast<int>(envelope.points.size());
        stuck = stuck || (seen && envelope.end == EnvelopeEnd::stuck);
    }
    cautions.report(head);
    // What goes on to dense states does not press the rest to the bottom.
    if (p_max.empty())
        for (Envelope const& envelope : envelopes)
            for (EnvelopePoint const& point : envelope.cricondenbar)
                drawing.y_top = std::max(drawing.y_top, 2.0 * at(point)[1]);
    drawing.log_y = log_p;
    if (measured) {
        measured.compare(mixture, {corvane::Saturated::bubble, corvane::Saturated::dew}, options.units,
                     head);
        measured.draw(drawing, options.units);
    }
    return {head, table, drawing, title_of_model(mixture), Watch::interrupted() ? kInterrupted : stuck ? 1 : 0};
}

int EnvelopeCommand::run() {
    plot.begin();
    data.begin();
    options.begin();
    return models.draw(request, plot, options.style, [&](MixtureRequest const& of) { return with(of); });
}
}  // namespace

void add_envelope(Program& program) {
    auto envelope = std::make_shared<EnvelopeCommand>();
    Command command = program.add("envelope", "phase envelope of a mixture, with critical points",
                                  [envelope] { return envelope->run(); });
    envelope->request.add_to(command);
    command
        .value("--p-start", envelope->p_start,
               "pressure of the dew point where it begins (default: 0.05 MPa)")
        .value("--p-max", envelope->p_max, "where an open envelope ends (default: 100 MPa)")
        .value("--T-min", envelope->T_min, "where it ends at low temperatures (default: 50 K)");
    envelope->plot.add_to(command);
    envelope->data.add_to(command);
    envelope->plot.add_deviations(command);
    envelope->models.add_to(command);
    command.flag("--log-p", envelope->log_p, "logarithmic pressures in the picture");
    envelope->options.add_units(command);
    envelope->options.add_output(command);
    command.examples(
        R"(  corvane envelope PR+vdW1 methane=0.8 ethane=0.15 propane
  corvane envelope MEOS+GERG methane=0.7 propane=0.3 --plot envelope.svg --unit-p bar)");
}

}  // namespace cli
