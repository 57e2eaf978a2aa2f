// corvane critical-line: critical points of a mixture, and the critical lines of a binary.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/commands/critical_slope.h>
#include <tools/corvane/diagrams/binary_lines.h>
#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/critical/critical.h>

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace cli {
namespace {
using corvane::CriticalLine;
using corvane::CriticalPoint;

struct CriticalLineCommand {
    Options options;
    MixtureRequest request;
    std::string from, step, at, T, rho;
    LineLimits limits;
    bool unstable = false;
    PlotFile plot;
    Measured data;

    int run();

  private:
    void check(MixtureFluid const& mixture) const;
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, Cell const& line, Vector<double> const& x, double T_,
            double p_, double rho_) const;
    Row row(MixtureFluid const& mixture, Cell const& line, CriticalPoint const& point);
    double start_value(std::string const& text, char const* option, Quantity quantity,
                       Vector<double> const& x, MixtureFluid const& mixture) const;
    int points_at(MixtureFluid const& mixture, Heading& head, Table& table);
    int slope(MixtureFluid const& mixture, Heading& head, Table& table) const;
    std::vector<CriticalLine> trace(MixtureFluid const& mixture) const;
    int lines(MixtureFluid const& mixture, Heading& head, Table& table, Picture& picture);
    void report(MixtureFluid const& mixture, CriticalLine const& line, long number,
                Heading& head) const;
    std::optional<int> from_component(MixtureFluid const& mixture) const;
    bool of_compositions(MixtureFluid const& mixture) const {
        return mixture.composed || !at.empty();
    }
    bool from_values() const { return !T.empty() || to_number(from); }
    Evidence evidence_;
};

void CriticalLineCommand::check(MixtureFluid const& mixture) const {
    if (mixture.composed && !at.empty())
        throw Misuse("give the composition either with the components or by --at");
    if (mixture.composed && !from.empty())
        throw Misuse("fractions ask for one critical point: leave them out for a line");
    if (mixture.size() != 2 && !at.empty()) throw Misuse("--at needs two components");
    if (mixture.size() != 2 && !mixture.composed)
        throw Misuse("a critical line needs two components; give mole fractions for a point");
    if (of_compositions(mixture) && !step.empty())
        throw Misuse("--step is of lines: not with mole fractions");
    if ((of_compositions(mixture) || from_values()) && limits)
        throw Misuse(
            "--p-max and --T-min end certified lines: not with mole fractions or start values");
    if ((plot || data) && (of_compositions(mixture) || from_values()))
        throw Misuse(fmt::format("{} the critical lines of two components without start values",
                                 plot ? "--plot draws" : "--data is compared with"));
}

std::vector<Column> CriticalLineCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result;
    add_fractions(result, mixture, "x", "mole fraction");
    result.push_back({"T", u.name(Quantity::temperature), "critical temperature"});
    result.push_back({"p", u.name(Quantity::pressure), "critical pressure"});
    result.push_back({"rho", u.name(Quantity::density), "critical density"});
    result.push_back({"line", "", "number of the line"});
    result.back().detail = of_compositions(mixture);
    result.push_back({"conditions", "", "largest residual of the critical conditions"});
    result.back().detail = true;
    result.back().digits = 3;
    Evidence::add_columns(result);
    return result;
}

Row CriticalLineCommand::row(MixtureFluid const& mixture, Cell const& line, Vector<double> const& x,
                             double T_, double p_, double rho_) const {
    Units const& u = options.units;
    Row result;
    add_cells(result, x);
    result.cells.emplace_back(u.from_library(Quantity::temperature, T_));
    result.cells.emplace_back(u.from_library(Quantity::pressure, p_));
    result.cells.emplace_back(mixture.density(u, x, rho_));
    result.cells.push_back(line);
    return result;
}

Row CriticalLineCommand::row(MixtureFluid const& mixture, Cell const& line,
                             CriticalPoint const& point) {
    Row result = row(mixture, line, point.x, point.T, point.p, point.rho);
    result.cells.emplace_back(point.certificate.conditions);
    if (!point.stable) result.note = "not stable: there is a phase of lower Gibbs energy";
    evidence_.add(result, point.certificate);
    return result;
}

double CriticalLineCommand::start_value(std::string const& text, char const* option,
                                        Quantity quantity, Vector<double> const& x,
                                        MixtureFluid const& mixture) const {
    Units units = options.units;
    units.M = mixture.M(x);
    return positive(text, option, quantity, units);
}

int CriticalLineCommand::points_at(MixtureFluid const& mixture, Heading& head, Table& table) {
    std::vector<Vector<double>> compositions;
    if (at.empty())
        compositions.push_back(mixture.x);
    else
        for (double x0 : mole_fractions(at, "--at")) compositions.push_back(binary(x0));
    Rows rows("critical-line", table, compositions.size());
    for (Vector<double> const& x : compositions) {
        Rows::Given known;
        for (int i = 0; i < x.size(); ++i) known.emplace_back(static_cast<unsigned>(i), x[i]);
        if (!rows.add(fmt::format("{}{}: no critical point found", mixture.name(),
                                  mixture.composition(x)),
                      known, [&] {
                          CriticalPoint start;
                          corvane::CriticalOptions how;
                          how.validity = &mixture.validity;
                          how.unstable = unstable;
                          if (!T.empty()) {
                              start.x = x;
                              start.T = start_value(T, "--T", Quantity::temperature, x, mixture);
                              start.rho = start_value(rho, "--rho", Quantity::density, x, mixture);
                              how.start = &start;
                          }
                          return row(mixture, Cell(),
                                     corvane::critical_point(*mixture.model, x, how));
                      }))
            break;
    }
    head.remarks.emplace_back("critical points of given compositions");
    evidence_.report(head);
    return rows.finish(head);
}

/// The component that --from names; nothing without it, or if it is a mole fraction.
std::optional<int> CriticalLineCommand::from_component(MixtureFluid const& mixture) const {
    if (from.empty() || to_number(from)) return {};
    if (const int i = mixture.index(from); i >= 0) return i;
    throw Misuse(fmt::format("--from: {} is not a component of the mixture", from));
}

/// One line from start values, uncertified.
int CriticalLineCommand::slope(MixtureFluid const& mixture, Heading& head, Table& table) const {
    CriticalStart start;
    if (const auto i = from_component(mixture))
        start.x0 = 1.0 - *i;
    else if (!from.empty())
        start.x0 = mole_fraction(from, "--from");
    if (!step.empty()) start.step = number(step, "--step");
    if (!T.empty()) {
        const Vector<double> x = binary(start.x0);
        start.T = start_value(T, "--T", Quantity::temperature, x, mixture);
        start.rho = start_value(rho, "--rho", Quantity::density, x, mixture);
    }
    trace_slope(mixture, start, head, table,
                [&](Vector<double> const& x, double T_, double p_, double rho_) {
                    Row result = row(mixture, 1L, x, T_, p_, rho_);
                    result.cells.resize(table.columns.size());
                    return result;
                });
    return 0;
}

/// The lines, or those from the component that --from names, which then begin there.
std::vector<CriticalLine> CriticalLineCommand::trace(MixtureFluid const& mixture) const {
    Watch watch("corvane: critical-line");
    auto how =
        limits.apply<corvane::CriticalLineOptions>(mixture, options.units, watch, bool(plot));
    if (!step.empty()) how.step = number(step, "--step");
    if (!(how.step > 0.0 && how.step <= 0.5)) throw Misuse("--step: from above 0 to 0.5");
    how.unstable = unstable;
    const auto start = from_component(mixture);
    auto found = asking(mixture.text() + ": critical lines",
                        [&] { return corvane::critical_lines(*mixture.model, how); });
    if (start) {
        const auto is_start = [&](CriticalPoint const& point) { return point.x[*start] == 1.0; };
        for (CriticalLine& line : found)
            if (is_start(line.points.back())) {
                std::reverse(line.points.begin(), line.points.end());
                std::swap(line.begin, line.end);
                std::swap(line.begin_phase, line.end_phase);
            }
        std::erase_if(found,
                      [&](CriticalLine const& line) { return !is_start(line.points.front()); });
    }
    if (found.empty()) throw Failure(mixture.text() + ": no critical line found");
    return found;
}

void CriticalLineCommand::report(MixtureFluid const& mixture, CriticalLine const& line, long number,
                                 Heading& head) const {
    Units const& u = options.units;
    const auto words = [&](corvane::CriticalLineEnd end, CriticalPoint const& point,
                           corvane::PhaseRecord const& other) {
        std::string text = fmt::format("{} (T = {}, p = {}", in_words(end, point, mixture),
                                       u.text(Quantity::temperature, point.T),
                                       u.text(Quantity::pressure, point.p));
        if (other.x.size() > 0)
            text += fmt::format("; the other phase has x_{} = {:.6g}", mixture.component(0),
                                other.x[0]);
        return text + ')';
    };
    const std::string begin = words(line.begin, line.points.front(), line.begin_phase),
                      end = words(line.end, line.points.back(), line.end_phase);
    head.summary.push_back(fmt::format("line {}{}: {} points, from {} to {}", number,
                                       line.stable ? "" : " (not stable)", line.points.size(),
                                       begin, end));
    list(head, "lines")
        .push_back({{"line", number},
                    {"stable", static_cast<long>(line.stable)},
                    {"points", static_cast<long>(line.points.size())},
                    {"begin", begin},
                    {"end", end},
                    {"evaluations", line.evaluations}});
}

int CriticalLineCommand::lines(MixtureFluid const& mixture, Heading& head, Table& table,
                               Picture& picture) {
    const auto found = trace(mixture);
    Projection projection(mixture, options.units);
    if (plot)
        for (int i : {0, 1}) projection.add_pure(vapour_pressures(mixture, i), i);
    long number = 0;
    bool open = false;
    for (CriticalLine const& line : found) {
        ++number;
        const std::size_t first = table.rows.size();
        for (CriticalPoint const& point : line.points)
            table.rows.push_back(row(mixture, number, point));
        add_note(table.rows[first].note,
                 "begins at " + in_words(line.begin, line.points.front(), mixture));
        add_note(table.rows.back().note,
                 "ends at " + in_words(line.end, line.points.back(), mixture));
        report(mixture, line, number, head);
        projection.add(line);
        for (auto end : {line.begin, line.end})
            open = open || (line.stable && end == corvane::CriticalLineEnd::stuck);
    }
    evidence_.report(head);
    picture = projection.picture;
    limits.frame(picture);
    if (data) {
        data.compare(mixture, found, {.unstable = unstable}, options.units, head);
        data.draw(picture, options.units);
    }
    if (Watch::interrupted()) head.summary.emplace_back("interrupted: lines are missing");
    return Watch::interrupted() ? kInterrupted : open ? 1 : 0;
}

int CriticalLineCommand::run() {
    plot.begin();
    data.begin();
    if (T.empty() != rho.empty()) throw Misuse("start values are --T and --rho together");
    request.fractions_optional = true;
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    check(mixture);
    options.units.M = mixture.M();
    if (data) data.read(mixture, MeasuredKind::critical, options.units);
    Heading head = heading("critical-line", mixture);
    Table table{columns(mixture), {}};
    Picture picture;
    const int code = of_compositions(mixture) ? points_at(mixture, head, table)
                     : from_values()          ? slope(mixture, head, table)
                                              : lines(mixture, head, table, picture);
    plot.show(picture, head, table, options.style);
    return code;
}
}  // namespace

void add_critical_line(Program& program) {
    auto critical = std::make_shared<CriticalLineCommand>();
    Command command =
        program.add("critical-line", "critical lines of a binary, critical point of a mixture",
                    [critical] { return critical->run(); });
    critical->request.fractions_optional = true;
    critical->request.add_to(command);
    command
        .value("--from", critical->from,
               "only the line from this component; or a mole fraction of the first component: one "
               "line from there, not certified",
               {.type = "NAME|X"})
        .value("--step", critical->step,
               "longest step (default: 0.05; 0.02 with --plot); with start values the first step "
               "in the mole fraction")
        .value("--at", critical->at,
               "binary: only the critical points at these mole fractions of the first component",
               {.type = "VALUES"})
        .excludes("--at", "--from")
        .excludes("--at", "--step")
        .value("--T", critical->T,
               "start value of the temperature: of a critical point, or of a line that is not "
               "certified")
        .value("--rho", critical->rho, "start value of the density, with --T")
        .flag("--unstable", critical->unstable, "what is not stable, too");
    critical->limits.add_to(command);
    critical->plot.add_to(command);
    critical->data.add_to(command);
    critical->plot.add_deviations(command);
    critical->options.add_units(command);
    critical->options.add_output(command);
    command.examples(
        R"(  corvane critical-line PR+vdW1 methane propane
  corvane critical-line PR+vdW1 CO2 decane --kij 0.1 --plot critical.svg
  corvane critical-line PR+vdW1 ethane butane --data examples/measured/ethane_butane_critical.csv
  corvane critical-line PR+vdW1 methane propane --at 0.1:0.9:0.1
  corvane critical-line PR+vdW1 methane=0.7 ethane=0.2 propane)");
}

}  // namespace cli
