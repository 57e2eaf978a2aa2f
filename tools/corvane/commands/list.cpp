// corvane list: equations, substances and parameter sets.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/home.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/parameter_sets.h>
#include <corvane/catalogue/substances.h>
#include <corvane/catalogue/suggest.h>

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <set>

namespace cli {
namespace {
using corvane::Substance;

struct ListCommand {
    Options options;
    std::string eos, substance, text;

    int run();

  private:
    // Equation → substance → numbers of its parameter sets.
    using Sets = std::map<std::string, std::map<std::string, std::vector<int>>>;

    Sets sets_;
    corvane::Substances const* index_ = nullptr;
    bool filtered_ = false;
    std::set<std::string> wanted_;  // substances that the filters leave

    bool wanted(std::string const& name) const { return !filtered_ || wanted_.count(name) > 0; }
    void read_sets();
    void choose_substances();
    Heading head() const;
    Table of_substances() const;
    Table of_sets() const;
};

void ListCommand::read_sets() {
    corvane::DataHome const& home = entered_home();
    auto names = corvane::plugins(home).pure;
    for (std::string const& folder : corvane::equations(home))
        if (folder.find('+') == std::string::npos &&
            std::find(names.begin(), names.end(), folder) == names.end())
            names.push_back(folder);
    std::sort(names.begin(), names.end());
    if (!eos.empty() && std::find(names.begin(), names.end(), eos) == names.end())
        throw Failure(fmt::format("unknown equation {}{}", eos, corvane::did_you_mean(eos, names)));
    for (std::string const& name : names)
        if (eos.empty() || name == eos) sets_[name] = corvane::parameter_sets(home, name);
}

/// Which substances the filters leave. Those that only have parameter files are found by name.
void ListCommand::choose_substances() {
    filtered_ = !substance.empty() || !text.empty();
    if (!filtered_) return;
    const auto found = substance.empty() ? index_->search(text) : index_->find(substance);
    for (Substance const* s : found) wanted_.insert(s->name);
    for (auto const& [name, sets] : sets_)
        for (auto const& [fluid, numbers] : sets)
            if (substance.empty() ? fluid.find(lower(text)) != std::string::npos
                                  : fluid == substance)
                wanted_.insert(fluid);
    if (wanted_.empty()) {
        std::string const& asked = substance.empty() ? text : substance;
        throw Failure(
            fmt::format("unknown substance {}{}", clipped(asked), index_->suggestion(asked, {})));
    }
}

Heading ListCommand::head() const {
    Heading result;
    result.command = "list";
    const corvane::Plugins found = corvane::plugins(entered_home());
    std::vector<std::string> words;
    for (auto const& [name, sets] : sets_) {
        std::size_t count = 0;
        for (auto const& [fluid, numbers] : sets) count += numbers.size();
        const bool loads =
            std::find(found.pure.begin(), found.pure.end(), name) != found.pure.end();
        words.push_back(fmt::format("{} ({} substances, {} sets{})", name, sets.size(), count,
                                    loads ? "" : ", no plug-in"));
    }
    result.remarks.push_back("equations: " + (words.empty() ? "none" : join(words, ", ")));
    std::vector<std::string> homes;
    for (auto const& directory : entered_home().directories()) homes.push_back(directory.string());
    if (homes.size() > 1) result.remarks.push_back("data homes, the first before: " + join(homes, ", "));
    if (!found.mixture.empty())
        result.remarks.push_back("mixture models: " + join(found.mixture, ", "));
    return result;
}

Table ListCommand::of_substances() const {
    Table table;
    table.columns = {{"substance", "", "name in the data tree"},
                     {"formula", "", "sum formula"},
                     {"CAS", "", "CAS registry number"},
                     {"M", "g/mol", "molar mass", true},
                     {"Tc", "K", "critical temperature", true},
                     {"pc", "MPa", "critical pressure", true},
                     {"omega", "", "acentric factor", true},
                     {"Tb", "K", "normal boiling point", true},
                     {"Ttriple", "K", "triple point", true},
                     {"data", "", "ideal gas, reaction, solid, viscosity"},
                     {"sets", "", "parameter sets by equation"},
                     {"synonyms", "", "other names"}};
    std::map<std::string, Substance> all;
    for (Substance const& s : index_->all()) all[s.name] = s;
    for (auto const& [name, sets] : sets_)
        for (auto const& [fluid, numbers] : sets)
            if (!all.count(fluid))
                all[fluid] = Substance{fluid, "", "", NAN, NAN, NAN, NAN, NAN, NAN, NAN, NAN, {}};
    std::map<std::string, std::set<std::string>> files;  // kind of data → substances
    for (auto const& [folder, kind] : {std::pair{"ideal", "ideal"},
                                       {"reaction", "reaction"},
                                       {"solid", "solid"},
                                       {"viscosity/dilute", "viscosity"}})
        files[kind] = corvane::file_names(entered_home(), std::string("CorvaneS/") + folder);
    for (auto const& [name, s] : all) {
        if (!wanted(name)) continue;
        std::vector<std::string> data, sets;
        for (char const* kind : {"ideal", "reaction", "solid", "viscosity"})
            if (files[kind].count(name)) data.emplace_back(kind);
        for (auto const& [equation, of] : sets_) {
            const auto found = of.find(name);
            if (found == of.end()) continue;
            std::vector<std::string> numbers;
            for (int number : found->second) numbers.push_back(std::to_string(number));
            sets.push_back(equation + ':' + join(numbers, ","));
        }
        table.rows.push_back({{name, s.formula, s.cas, s.M, s.Tc, s.pc, s.omega, s.Tb, s.Ttriple, join(data, ","),
                               join(sets, ";"), join(s.aliases, "; ")},
                              ""});
    }
    return table;
}

Table ListCommand::of_sets() const {
    Table table;
    corvane::DataHome const& home = entered_home();
    table.columns = {
        {"eos", "", "equation of state"},    {"substance", "", "name in the data tree"},
        {"set", "", "number of the set"},    {"Tmin", "K", "stated range", true},
        {"Tmax", "K", "stated range", true}, {"pmax", "MPa", "stated range", true},
        {"comment", "", "what the set is"},  {"source", "", "where its numbers come from"}};
    for (auto const& [equation, of] : sets_)
        for (auto const& [fluid, numbers] : of)
            for (int number : numbers) {
                if (!wanted(fluid)) continue;
                const auto notes = corvane::parameter_notes(home, equation, fluid, number);
                table.rows.push_back({{equation, fluid, static_cast<long>(number), notes.Tmin,
                                       notes.Tmax, notes.pmax, notes.comment, notes.source},
                                      ""});
            }
    return table;
}

int ListCommand::run() {
    if (!text.empty() && !substance.empty()) throw Misuse("give either TEXT or --substance");
    options.begin();
    const corvane::Substances index(entered_home());
    index_ = &index;
    read_sets();
    choose_substances();
    const bool sets = !eos.empty() || !substance.empty();
    Table table = sets ? of_sets() : of_substances();
    Heading heading = head();
    if (sets && options.style.format == Format::text) {
        table.columns.pop_back();  // sources are long
        for (Row& row : table.rows) row.cells.pop_back();
    }
    if (!substance.empty() && wanted_.size() == 1)
        for (Substance const& s : index.all())
            if (s.name == *wanted_.begin())
                heading.remarks.push_back(
                    fmt::format("{}: {}, CAS {}{}", s.name, s.formula, s.cas,
                                s.aliases.empty() ? "" : ", " + join(s.aliases, "; ")));
    write(heading, table, options.style);
    return 0;
}
}  // namespace

void add_list(Program& program) {
    auto list = std::make_shared<ListCommand>();
    Command command = program.add("list", "equations, substances and parameter sets",
                                  [list] { return list->run(); });
    command
        .positional("TEXT", list->text,
                    "substances with this in their name, a synonym or the CAS number, or with this "
                    "sum formula",
                    false)
        .value("--eos", list->eos, "parameter sets of this equation", {.type = "NAME"})
        .value("--substance", list->substance,
               "parameter sets of this substance: name, synonym, sum formula, CAS number",
               {.type = "NAME"});
    list->options.add_output(command);
    command.examples(
        R"(  corvane list                        all substances
  corvane list propan                 propane, cyclopropane, 2_propanol ...
  corvane list C2H6O                  the isomers
  corvane list --substance 74-98-6    parameter sets for propane
  corvane list --eos PR benz          those of PR for benzene and its like)");
}

}  // namespace cli
