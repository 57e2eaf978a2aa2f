// corvane check-equation: is a plug-in what the library takes it for? A row per check, with the
// worst of its states and a command that shows it.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/input/printed_values.h>
#include <tools/corvane/output/watch.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/open.h>
#include <corvane/check/check.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>

namespace cli {
namespace {
/// A check, and for which substance, or with which components.
struct Outcome {
    corvane::Check check;
    std::string of;
};

struct CheckCommand {
    Options options;
    std::string plugin;
    std::vector<std::string> substances;
    std::string low, high, values;
    int pair_set = 0;

    int run();

  private:
    bool mixture() const { return plugin.find('+') != std::string::npos; }
    void add(std::vector<corvane::Check> const& checks, std::string const& of);
    void check_mixture(corvane::CheckRange const& range);
    void check_pure(corvane::CheckRange const& range, Watch& watch);
    void read_values();
    void check_values(std::vector<std::string> components);
    std::string command(Outcome const& worst) const;

    std::vector<Outcome> worst_;  // one for each check, in the order in which they came
    std::vector<PrintedRow> printed_;
    long states_ = 0, sets_ = 0;
};

/// Keeps the worst of each check.
void CheckCommand::add(std::vector<corvane::Check> const& checks, std::string const& of) {
    for (corvane::Check const& check : checks) {
        states_ += check.states;
        auto at = std::find_if(worst_.begin(), worst_.end(),
                               [&](Outcome const& o) { return o.check.name == check.name; });
        if (at == worst_.end()) {
            worst_.push_back({check, of});
            continue;
        }
        const long states = at->check.states + check.states;
        if (check.worst > at->check.worst) *at = {check, of};
        at->check.states = states;
    }
}

/// Those that were asked for, or those of the data home.
void CheckCommand::read_values() {
    std::string path = values;
    if (path.empty()) {
        path = entered_home().file("CorvaneS/values/" + plugin + ".tsv").string();
        if (!std::filesystem::exists(path)) return;
    }
    printed_ = read_printed_values(path);
}

/// Of these components, in the order and with the pairs that the figures were printed for.
void CheckCommand::check_values(std::vector<std::string> components) {
    std::sort(components.begin(), components.end());
    for (PrintedRow const& row : printed_) {
        std::vector<std::string> of = row.substances;
        std::sort(of.begin(), of.end());
        if (of != components) continue;
        const corvane::Mixture m = corvane::open_mixture(
            plugin, row.substances, {.pair_set = row.set, .home = entered_home()});
        add(corvane::check_values(*m.model, {row.value}), join(row.substances, " "));
    }
}

void CheckCommand::check_mixture(corvane::CheckRange const& range) {
    if (substances.empty()) throw Misuse("name the components of the mixture");
    const corvane::Mixture m = corvane::open_mixture(
        plugin, substances, {.pair_set = pair_set, .home = entered_home()});
    std::string of;
    for (std::string const& name : m.components) of += (of.empty() ? "" : " ") + name;
    add(corvane::check_mixture(*m.model, range), of);
    check_values(m.components);
}

void CheckCommand::check_pure(corvane::CheckRange const& range, Watch& watch) {
    if (substances.empty())
        for (auto const& [name, sets] : corvane::parameter_sets(entered_home(), plugin))
            substances.push_back(name);
    for (std::string const& text : substances) {
        const std::string name = corvane::substance_name(entered_home(), plugin, text);
        for (int set : corvane::parameter_sets(entered_home(), plugin, name)) {
            const corvane::Fluid fluid =
                corvane::open(plugin, name, {.set = set, .home = entered_home()});
            corvane::CheckRange here = corvane::check_range(fluid);
            if (range.T_low > 0.0) here.T_low = range.T_low;
            here.T_high = range.T_high;
            const std::string of = set == 1 ? name : fmt::format("{} --set {}", name, set);
            add(corvane::check_equation(*fluid.model, here), of);
            std::vector<corvane::PrintedValue> printed;
            for (PrintedRow const& row : printed_)
                if (row.substances.size() == 1 && row.substances[0] == name && row.set == set)
                    printed.push_back(row.value);
            add(corvane::check_values(*fluid.model, printed), of);
            ++sets_;
            if (!watch.go_on()) return;
        }
    }
    const auto known = corvane::plugins(entered_home()).pure;
    if (std::find(known.begin(), known.end(), plugin) == known.end())
        throw Failure(
            fmt::format("no equation {}; there are {}", clipped(plugin), join(known, ", ")));
    if (sets_ == 0)
        throw Failure(fmt::format("{}: there are no parameter sets to check it with", plugin));
}

/// Where the worst state can be seen.
std::string CheckCommand::command(Outcome const& worst) const {
    corvane::Check const& c = worst.check;
    const bool state = std::isfinite(c.T) && c.T > 0.0;
    if (!state || (!std::isfinite(c.rho) && !std::isfinite(c.p)))
        return fmt::format("corvane check-equation {} {}", plugin,
                           worst.of.substr(0, worst.of.find(" --set")));
    if (!mixture())
        return std::isfinite(c.p)
                   ? fmt::format("corvane state {} {} --T {:.17g} --p {:.17g}", plugin, worst.of,
                                 c.T, c.p)
                   : fmt::format("corvane state {} {} --T {:.17g} --rho {:.17g} --phase single",
                                 plugin, worst.of, c.T, c.rho);
    std::string text = fmt::format("x = (");
    for (double x : c.x) text += fmt::format("{:.4g} ", x);
    if (!c.x.empty()) text.back() = ')';
    return fmt::format("{} at T = {:.9g}{}, {}", worst.of, c.T,
                       std::isfinite(c.rho) ? fmt::format(", rho = {:.9g}", c.rho)
                                            : fmt::format(", p = {:.9g}", c.p),
                       text);
}

int CheckCommand::run() {
    options.begin();
    corvane::CheckRange range;
    auto temperature = [&](std::string const& text, char const* name) {
        return text.empty() ? 0.0 : positive(text, name, Quantity::temperature, options.units);
    };
    range.T_low = temperature(low, "--T-low");
    range.T_high = temperature(high, "--T-high");
    if (pair_set > 0 && !mixture()) throw Misuse("--pair-set is of mixtures");
    read_values();
    Watch watch("corvane: check-equation");
    if (mixture())
        check_mixture(range);
    else
        check_pure(range, watch);
    Table table;
    table.columns = {{"check", "", "what was checked"},
                     {"states", "", "at how many states"},
                     {"worst", "", "largest deviation over what is allowed", false, 3},
                     {"verdict", "", ""},
                     {"found", "", "what was found in the worst case"},
                     {"command", "", "a command that shows it"}};
    int failed = 0;
    for (Outcome const& o : worst_) {
        const bool passed = o.check.passed();
        failed += !passed;
        const std::string found = o.check.what.empty() ? "" : o.check.what;
        table.rows.push_back(
            {{o.check.name, o.check.states,
              o.check.worst >= 1e90 ? Cell(std::string("no number")) : Cell(o.check.worst),
              std::string(passed ? "passed" : "FAILED"),
              found.empty() ? Cell(std::monostate()) : Cell(found), command(o)},
             ""});
    }
    Heading head;
    head.command = "check-equation";
    head.fields = {{"equation", Cell(plugin)},
                   {mixture() ? "components" : "sets",
                    Cell(mixture() ? static_cast<long>(substances.size()) : sets_)}};
    head.summary = {
        fmt::format("{} of {} checks failed, {} states", failed, worst_.size(), states_)};
    if (Watch::interrupted())
        head.summary.push_back(fmt::format("interrupted after {} sets", sets_));
    write(head, table, options.style);
    return Watch::interrupted() ? kInterrupted : failed > 0 ? 1 : 0;
}
}  // namespace

void add_check_equation(Program& program) {
    auto check = std::make_shared<CheckCommand>();
    Command command =
        program.add("check-equation", "contract, identities and densities of a plug-in",
                    [check] { return check->run(); });
    command.positional("PLUGIN", check->plugin, "equation, or equation+mixing", true);
    command.positionals("SUBSTANCE", check->substances,
                        "substances, each by itself with all its sets (default: all of the "
                        "equation); for a mixture its components",
                        false);
    command.value("--T-low", check->low, "lowest temperature (default 0.4 Tc, or that of the set)",
                  {.type = "VALUE"});
    command.value("--T-high", check->high, "highest temperature (default 3 Tc)", {.type = "VALUE"});
    command.count("--pair-set", check->pair_set, "of a mixture: number of the pairs' parameter sets");
    command.value(
        "--values", check->values,
        "printed values to compare with (default CorvaneS/values/PLUGIN.tsv, if there is one)",
        {.type = "FILE"});
    check->options.add_output(command);
    command.examples(
        "  corvane check-equation PR propane\n  corvane check-equation PCSAFT+LB ethanol water");
}

}  // namespace cli
