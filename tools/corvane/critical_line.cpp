// corvane critical-line: critical points of a mixture, and the critical line of a binary.
#include <tools/corvane/commands.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/mixture_points.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/open.h>
#include <tools/corvane/options.h>
#include <tools/corvane/rows.h>

#include <corvane/corvane.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace cli {
namespace {
struct CriticalLineCommand {
    Options options;
    MixtureRequest request;
    std::string from, step = "0.05", at, T, rho;

    int run();

  private:
    std::vector<Column> columns(MixtureFluid const& mixture) const;
    Row row(MixtureFluid const& mixture, Vector<double> const& x,
            Vector<double> const& point) const;
    Matrix<double> start(MixtureFluid const& mixture, Vector<double> const& x) const;
    int points_at(MixtureFluid const& mixture, Heading& head, Table& table) const;
    void line(MixtureFluid const& mixture, Heading& head, Table& table) const;
    double start_fraction(MixtureFluid const& mixture) const;
};

char const* in_words(corvane::LineEnd end) {
    switch (end) {
        case corvane::LineEnd::pure:
            return "ends at a pure component";
        case corvane::LineEnd::vanishing:
            return "ends where a component's mole fraction falls below 1e-6";
        case corvane::LineEnd::dense:
            return "ends at high density or pressure, towards which the line goes on";
        case corvane::LineEnd::tension:
            return "ends where the pressure is no longer positive; the line goes on under tension";
        case corvane::LineEnd::full:
            return "ends at the largest number of points; the line goes on";
        case corvane::LineEnd::open:
            break;
    }
    return "ends open: no further point was found";
}

std::vector<Column> CriticalLineCommand::columns(MixtureFluid const& mixture) const {
    Units const& u = options.units;
    std::vector<Column> result;
    add_fractions(result, mixture, "x", "mole fraction");
    result.push_back({"T", u.name(Quantity::temperature), "critical temperature"});
    result.push_back({"p", u.name(Quantity::pressure), "critical pressure"});
    result.push_back({"rho", u.name(Quantity::density), "critical density"});
    return result;
}

/// A row of crit_slope_x (x0, T, rho, p) at the composition x.
Row CriticalLineCommand::row(MixtureFluid const& mixture, Vector<double> const& x,
                             Vector<double> const& point) const {
    Units const& u = options.units;
    Row result;
    add_cells(result, x);
    result.cells.emplace_back(u.from_library(Quantity::temperature, point[1]));
    result.cells.emplace_back(u.from_library(Quantity::pressure, point[3]));
    result.cells.emplace_back(mixture.density(u, x, point[2]));
    if (!(point[3] > 0.0)) result.note = "under tension";
    return result;
}

/// The start values of the command line in the form that crit_slope_x takes.
Matrix<double> CriticalLineCommand::start(MixtureFluid const& mixture,
                                          Vector<double> const& x) const {
    Matrix<double> result;
    if (T.empty()) return result;
    Units units = options.units;
    units.M = mixture.M(x);
    result.size(1, 4);
    result[0][0] = x[0];
    result[0][1] = positive_points(T, "--T", Quantity::temperature, units).front();
    result[0][2] = positive_points(rho, "--rho", Quantity::density, units).front();
    return result;
}

int CriticalLineCommand::points_at(MixtureFluid const& mixture, Heading& head, Table& table) const {
    std::vector<Vector<double>> compositions;
    if (at.empty())
        compositions.push_back(mixture.x);
    else
        for (double x0 : mole_fractions(at, "--at")) compositions.push_back(binary(x0));
    Rows rows("critical-line", table, compositions.size());
    for (Vector<double> const& x : compositions)
        rows.add(fmt::format("{}+{}{}: no critical point found", mixture.eos, mixture.mth,
                             mixture.composition(x)),
                 {{0, x[0]}, {1, x[1]}}, [&] {
                     Vector<double> at_x = x;
                     double s = 0.0;
                     Matrix<double> line = start(mixture, x);
                     crit_slope_x(mixture.model.get(), at_x, s, line);
                     return row(mixture, x, line[0]);
                 });
    head.remarks.emplace_back("critical points of given compositions");
    return rows.finish(head);
}

double CriticalLineCommand::start_fraction(MixtureFluid const& mixture) const {
    if (from.empty()) return 1.0;
    if (const auto x = to_number(from)) {
        if (!(*x >= 0.0 && *x <= 1.0)) throw Misuse("--from: a mole fraction lies between 0 and 1");
        return *x;
    }
    const std::string name = substance_name(mixture.eos, from);
    for (int i : {0, 1})
        if (name == mixture.component(i)) return 1.0 - i;
    throw Misuse(fmt::format("--from: {} is not a component of the mixture", name));
}

void CriticalLineCommand::line(MixtureFluid const& mixture, Heading& head, Table& table) const {
    const double x0 = start_fraction(mixture), width = number(step, "--step");
    if (!(std::fabs(width) <= 0.5) || width == 0.0)
        throw Misuse("--step: give a step in the mole fraction, not 0 and at most 0.5");
    // From a pure component there is one direction.
    double s = x0 == 1.0 ? -std::fabs(width) : x0 == 0.0 ? std::fabs(width) : width;
    if (x0 + s < 0.0 || x0 + s > 1.0) throw Misuse("--step leads out of the compositions");
    Vector<double> x = binary(x0);
    Matrix<double> points = start(mixture, x);
    asking(fmt::format("{}: no critical line from {} = {:.6g}", mixture.name(),
                       mixture.component(0), x0),
           [&] { crit_slope_x(mixture.model.get(), x, s, points); });
    for (int k = 0; k < points.size(); ++k)
        table.rows.push_back(row(mixture, binary(points[k][0]), points[k]));
    const std::string end = points.size() == 1
                                ? "has its start only: no further point was found in this direction"
                                : in_words(corvane::critical_line_end(mixture.model.get(), points));
    add_note(table.rows.back().note, end);
    head.summary.push_back(
        fmt::format("{}; the line {}",
                    points.size() == 1 ? "1 point" : fmt::format("{} points", points.size()), end));
    head.remarks.emplace_back(
        "points may be metastable: further phases and the unstable stretch between cusps are not "
        "tested");
}

int CriticalLineCommand::run() {
    if (T.empty() != rho.empty()) throw Misuse("start values are --T and --rho together");
    request.fractions_optional = true;
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    if (mixture.composed && !at.empty())
        throw Misuse("give the composition either with the components or by --at");
    if (mixture.composed && !from.empty())
        throw Misuse("fractions ask for one critical point: leave them out for a line");
    if (mixture.size() != 2 && !mixture.composed)
        throw Misuse("a critical line needs two components; give mole fractions for a point");
    options.units.M = mixture.M();
    Heading head = heading("critical-line", mixture);
    Table table{columns(mixture), {}};
    int code = 0;
    if (mixture.composed || !at.empty())
        code = points_at(mixture, head, table);
    else
        line(mixture, head, table);
    write(head, table, options.style);
    return code;
}
}  // namespace

void add_critical_line(Program& program) {
    auto critical = std::make_shared<CriticalLineCommand>();
    Command command =
        program.add("critical-line", "critical line of a binary, critical point of a mixture",
                    [critical] { return critical->run(); });
    critical->request.fractions_optional = true;
    critical->request.add_to(command);
    command
        .value(
            "--from", critical->from,
            "start of the line: a component (default: the first) or a mole fraction of the first",
            {.type = "NAME|X"})
        .value("--step", critical->step, "first step in the mole fraction of the first component")
        .value("--at", critical->at,
               "binary: only the critical points at these mole fractions of the first component",
               {.type = "VALUES"})
        .excludes("--at", "--from")
        .excludes("--at", "--step")
        .value("--T", critical->T, "start value of the temperature, for lines off the pure ends")
        .value("--rho", critical->rho, "start value of the density, with --T");
    critical->options.add_units(command);
    critical->options.add_output(command);
    command.examples(
        R"(  corvane critical-line PR+vdW1 methane propane
  corvane critical-line PR+vdW1 CO2 decane --from decane --kij 0.1
  corvane critical-line PR+vdW1 methane propane --at 0.1:0.9:0.1
  corvane critical-line PR+vdW1 methane=0.7 ethane=0.2 propane)");
}

}  // namespace cli
