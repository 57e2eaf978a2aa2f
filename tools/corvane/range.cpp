// corvane range: asks for temperatures and pressures on standard error and reads the answers from
// standard input, so that standard output holds the results alone.
#include <tools/corvane/commands.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/options.h>
#include <tools/corvane/properties.h>

#include <corvane/input/input.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
constexpr int kMostPoints = 100000;

/// A value or a range: first, first + step, …
struct Range {
    double first = 0.0, last = 0.0, step = 1.0;
    int count = 0;
    double at(int k) const { return first + k * step; }
};

Range ask(std::string const& prompt) {
    Range r;
    r.count = read_vars(prompt.c_str(), r.first, r.last, r.step);
    if (r.count < 1)
        throw Failure(fmt::format(
            "\"{}\" was not answered by a number or a range such as (300 400 25)", prompt));
    if (r.count > kMostPoints)
        throw Failure(fmt::format("a range of {} points; {} are the most", r.count, kMostPoints));
    return r;
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
    const Range T = ask(fmt::format("T/{}: ", units.name(Quantity::temperature)));
    const Range p = ask(fmt::format("p/{}: ", units.name(Quantity::pressure)));
    if (static_cast<long>(T.count) * p.count > kMostPoints)
        throw Failure(fmt::format("more than {} points", kMostPoints));
    Table table;
    table.columns = {{"T", units.name(Quantity::temperature), "temperature", true},
                     {"p", units.name(Quantity::pressure), "pressure", true},
                     {"phase", "", "stable phase"}};
    for (Property const* property : columns)
        table.columns.push_back({property->name, units.name(property->quantity), property->text});
    int failures = 0;
    for (int i = 0; i < T.count; ++i)
        for (int k = 0; k < p.count; ++k) {
            Row row{{T.at(i), p.at(k)}, ""};
            const double T_ = units.to_library(Quantity::temperature, T.at(i));
            const double p_ = units.to_library(Quantity::pressure, p.at(k));
            try {
                asking(fmt::format("{} at T = {}, p = {}", fluid.name(),
                                   units.text(Quantity::temperature, T_),
                                   units.text(Quantity::pressure, p_)),
                       [&] {
                           const Roots roots = density_roots(*fluid.model, T_, p_);
                           row.cells.emplace_back(std::string(roots.stable_name));
                           const State state{fluid.model.get(), T_, p_, roots.stable};
                           for (Property const* property : columns)
                               row.cells.emplace_back(
                                   units.from_library(property->quantity, property->value(state)));
                       });
                row.note = extrapolated(fluid, T_, p_, true, units);
            } catch (Failure const& failure) {
                ++failures;
                row.cells.resize(table.columns.size());
                row.note = std::string("failed: ") + failure.what();
            }
            table.rows.push_back(std::move(row));
        }
    write(heading("range", fluid, units), table, options.style);
    return failures == 0 ? 0 : 1;
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
    range->options.add_units(command);
    range->options.add_output(command);
    command.examples(
        R"(  corvane range PR propane --show rho,Z,cp
  printf '(300 400 25) 1.0' | corvane range PR propane --csv > table.csv)");
}

}  // namespace cli
