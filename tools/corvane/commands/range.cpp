// corvane range: asks for temperatures and pressures on standard error and reads the answers from
// standard input, so that standard output holds the results alone.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/properties.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/classic/input/input.h>

#include <fmt/format.h>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <memory>

#include <unistd.h>

namespace cli {
namespace {
constexpr std::size_t kMostPoints = 100000;

/// A value or a range (first, first + step, …) as it is typed; in library units.
std::vector<double> ask(char const* symbol, Quantity quantity, Units const& units) {
    const std::string prompt = fmt::format("{}/{}: ", symbol, units.name(quantity));
    double first = 0.0, last = 0.0, step = 1.0;
    const int count = read_vars(prompt.c_str(), first, last, step);
    if (count < 1)
        throw Failure(fmt::format(
            "\"{}\" was not answered by a number or a range such as (300 400 25)", prompt));
    if (static_cast<std::size_t>(count) > kMostPoints)
        throw Failure(fmt::format("a range of {} points; {} are the most", count, kMostPoints));
    std::vector<double> values;
    for (int k = 0; k < count; ++k) values.push_back(units.to_library(quantity, first + k * step));
    for (double x : {values.front(), values.back()})
        if (!(x > 0.0) || !std::isfinite(x))
            throw Failure(fmt::format("\"{}\" was answered by {}, which is not above zero", prompt,
                                      units.text(quantity, x)));
    return values;
}

/// What was typed beyond the answers would be lost without a word. From a terminal that is the rest
/// of the line; a file or pipe is read to its end.
void expect_no_more() {
    const bool terminal = isatty(STDIN_FILENO) == 1;
    std::string rest;
    for (int c; (c = std::getchar()) != EOF && !(terminal && c == '\n') && rest.size() < 100;)
        if (!rest.empty() || !std::isspace(c)) rest += static_cast<char>(c);
    if (!rest.empty())
        throw Failure(fmt::format("more was given than the two answers: '{}'",
                                  clipped(trimmed(rest.substr(0, rest.find('\n'))))));
}

struct RangeCommand {
    Options options;
    std::string names = "rho,h,s,cp";

    int run();

  private:
    std::vector<Property const*> chosen(bool ideal) const;
};

/// The properties that are named, in that order.
std::vector<Property const*> RangeCommand::chosen(bool ideal) const {
    std::vector<prop_str> table;
    for (Property const& property : properties())
        table.push_back({property.name, property.text, "", static_cast<int>(property.quantity)});
    table.push_back({"", "", "", 0});
    std::vector<Property const*> result;
    for (std::size_t begin = 0; begin <= names.size();) {
        const std::size_t end = std::min(names.find(',', begin), names.size());
        const std::string name = names.substr(begin, end - begin);
        begin = end + 1;
        const int k = recognize(name.c_str(), table.data());
        if (k < 0) {
            std::string known;
            for (Property const& property : properties()) known += std::string(" ") + property.name;
            throw Misuse(fmt::format("no property \"{}\"; there are{}", name, known));
        }
        Property const& property = properties()[static_cast<unsigned>(k)];
        if (property.needs != Needs::nothing && !ideal)
            throw Failure(fmt::format("{}: {}", name, describe(ThException(th_no_ideal))));
        result.push_back(&property);
    }
    return result;
}

int RangeCommand::run() {
    Fluid fluid = options.open();
    Units const& units = options.units;
    const auto columns = chosen(fluid.ideal.has_value());
    const std::string reference = options.set_reference(fluid);
    const auto temperatures = ask("T", Quantity::temperature, units);
    const auto pressures = ask("p", Quantity::pressure, units);
    expect_no_more();
    const std::size_t asked = temperatures.size() * pressures.size();
    if (asked > kMostPoints) throw Failure(fmt::format("more than {} points", kMostPoints));
    Table table;
    table.columns = {{"T", units.name(Quantity::temperature), "temperature", true},
                     {"p", units.name(Quantity::pressure), "pressure", true},
                     {"phase", "", "stable phase"}};
    for (Property const* property : columns)
        table.columns.push_back({property->name, units.name(property->quantity), property->text});
    Rows rows("range", table, asked);
    rows.each(temperatures, pressures, [&](double T, double p) {
        const Rows::Given given = {{0, units.from_library(Quantity::temperature, T)},
                                   {1, units.from_library(Quantity::pressure, p)}};
        return rows.add(
            fmt::format("{} at T = {}, p = {}", fluid.name(), units.text(Quantity::temperature, T),
                        units.text(Quantity::pressure, p)),
            given, [&] {
                const Roots roots = density_roots(*fluid.model, T, p);
                Row row{{given[0].second, given[1].second, std::string(roots.stable_name)},
                        extrapolated(fluid, T, p, true, units)};
                const State state{fluid.model.get(), T, p, roots.stable};
                for (Property const* property : columns)
                    row.cells.emplace_back(
                        units.from_library(property->quantity, property->value(state)));
                return row;
            });
    });
    Heading head = heading("range", fluid, units);
    head.remarks.push_back(reference);
    return rows.write(head, options.style);
}
}  // namespace

void add_range(Program& program) {
    auto range = std::make_shared<RangeCommand>();
    Command command =
        program.add("range", "properties over ranges that are asked for on the console",
                    [range] { return range->run(); });
    range->options.add_fluid(command);
    command.value("--show", range->names, "properties, separated by commas (default rho,h,s,cp)",
                  {.type = "NAMES"});
    range->options.add_reference(command);
    range->options.add_units(command);
    range->options.add_output(command);
    command.examples(
        R"(  corvane range PR propane --show rho,Z,cp
  printf '(300 400 25) 1.0' | corvane range PR propane --csv > table.csv)");
}

}  // namespace cli
