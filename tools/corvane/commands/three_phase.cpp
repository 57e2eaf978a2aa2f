// corvane three-phase, corvane azeotrope: special states of a binary, as points or as whole lines.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/binary_lines.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/three_phase_line.h>

#include <fmt/format.h>

#include <memory>
#include <optional>

namespace cli {
namespace {
using corvane::AzeotropePoint;
using corvane::ThreePhasePoint;

struct ThreePhases {
    using Point = ThreePhasePoint;
    static constexpr char const *name = "three-phase", *state = "three phases";
    static Point at_T(ModelN const& m, double T, corvane::ThreePhaseOptions const& how) {
        return corvane::three_phase_T(m, T, how);
    }
    static Point at_p(ModelN const& m, double p, corvane::ThreePhaseOptions const& how) {
        return corvane::three_phase_p(m, p, how);
    }
    static auto lines(ModelN const& m, corvane::PhaseLineOptions const& how) {
        return corvane::three_phase_lines(m, how);
    }
    using How = corvane::ThreePhaseOptions;
};

struct Azeotropes {
    using Point = AzeotropePoint;
    static constexpr char const *name = "azeotrope", *state = "azeotrope";
    static Point at_T(ModelN const& m, double T, corvane::AzeotropeOptions const& how) {
        return corvane::azeotrope_T(m, T, how);
    }
    static Point at_p(ModelN const& m, double p, corvane::AzeotropeOptions const& how) {
        return corvane::azeotrope_p(m, p, how);
    }
    static auto lines(ModelN const& m, corvane::PhaseLineOptions const& how) {
        return corvane::azeotropic_lines(m, how);
    }
    using How = corvane::AzeotropeOptions;
};

template <class Kind>
struct SpecialStates {
    Options options;
    MixtureRequest request;
    LineLimits limits;
    std::string T, p;
    PlotFile plot;

    int run();

  private:
    int points(MixtureFluid const& mixture, BinaryLines& result, Heading& head) const;
    int lines(MixtureFluid const& mixture, BinaryLines& result, Heading& head) const;
};

/// At the temperatures or pressures asked for, each from the last one, or else from nothing.
template <class Kind>
int SpecialStates<Kind>::points(MixtureFluid const& mixture, BinaryLines& result,
                                Heading& head) const {
    Units const& units = options.units;
    const bool by_T = p.empty();
    const Quantity quantity = by_T ? Quantity::temperature : Quantity::pressure;
    const auto values = positive_points(by_T ? T : p, by_T ? "--T" : "--p", quantity, units);
    typename Kind::How how;
    how.validity = &mixture.validity;
    if (!limits.p_max.empty())
        how.p_max = positive(limits.p_max, "--p-max", Quantity::pressure, units);
    const auto solve = [&](double value) {
        return by_T ? Kind::at_T(*mixture.model, value, how)
                    : Kind::at_p(*mixture.model, value, how);
    };
    std::optional<typename Kind::Point> last;
    Rows rows(Kind::name, result.table, values.size());
    for (double value : values)
        if (!rows.add(fmt::format("{} at {} = {}: {}", mixture.text(), by_T ? "T" : "p",
                                  units.text(quantity, value), Kind::state),
                      {{by_T ? 2 : 3, units.from_library(quantity, value)}}, [&] {
                          how.start = last ? &*last : nullptr;
                          try {
                              last = solve(value);
                          } catch (corvane::EquilibriumFailure const&) {
                              if (!how.start) throw;
                              how.start = nullptr;
                              last = solve(value);
                          }
                          return result.row(*last);
                      }))
            break;
    return rows.finish(head);
}

template <class Kind>
int SpecialStates<Kind>::lines(MixtureFluid const& mixture, BinaryLines& result, Heading& head) const {
    Watch watch(fmt::format("corvane: {}", Kind::name));
    const auto how =
        limits.apply<corvane::PhaseLineOptions>(mixture, options.units, watch, bool(plot));
    const std::string what = fmt::format("{}: {}", mixture.text(), Kind::state);
    const auto found = asking(what, [&] { return Kind::lines(*mixture.model, how); });
    if (plot)
        for (int i : {0, 1}) result.projection.add_pure(vapour_pressures(mixture, i), i);
    for (auto const& line : found) result.add(line);
    if (Watch::interrupted())
        head.summary.emplace_back("interrupted: lines are missing");
    else if (found.empty())
        throw Failure(what + ": no line found");
    return Watch::interrupted() ? kInterrupted : result.open() ? 1 : 0;
}

template <class Kind>
int SpecialStates<Kind>::run() {
    if (!T.empty() && !p.empty()) throw Misuse("give --T or --p, or neither for whole lines");
    const bool whole = T.empty() && p.empty();
    if (plot && !whole) throw Misuse("--plot draws whole lines: give neither --T nor --p");
    if (!limits.T_min.empty() && !whole)
        throw Misuse("--T-min ends whole lines: give neither --T nor --p");
    plot.begin();
    options.begin();
    const MixtureFluid mixture = open_binary(request);
    options.units.M = mixture.M();
    Heading head = heading(Kind::name, mixture);
    BinaryLines result(mixture, options.units);
    const int code = whole ? lines(mixture, result, head) : points(mixture, result, head);
    result.finish(head);
    limits.frame(result.projection.picture);
    plot.show(result.projection.picture, head, result.table, options.style);
    return code;
}

template <class Kind>
void add(Program& program, char const* text, char const* examples) {
    auto states = std::make_shared<SpecialStates<Kind>>();
    Command command = program.add(Kind::name, text, [states] { return states->run(); });
    states->request.binary = true;
    states->request.add_to(command);
    command
        .value("--T", states->T, "only the states at these temperatures: 300,310 or 300:310:5",
               {.type = "VALUES"})
        .value("--p", states->p, "only those at these pressures", {.type = "VALUES"});
    states->limits.add_to(command);
    states->plot.add_to(command);
    states->options.add_units(command);
    states->options.add_output(command);
    command.examples(examples);
}
}  // namespace

void add_three_phase(Program& program) {
    add<ThreePhases>(program, "three fluid phases of a binary, certified: lines or points",
                     R"(  corvane three-phase PR+vdW1 CO2 water
  corvane three-phase PR+vdW1 ethanol water --p 0.101325)");
}

void add_azeotrope(Program& program) {
    add<Azeotropes>(program, "azeotropes of a binary, certified: lines or points",
                    R"(  corvane azeotrope PR+vdW1 CO2 ethane --plot azeotropes.svg
  corvane azeotrope PR+vdW1 CO2 ethane --T 220:280:20)");
}

}  // namespace cli
