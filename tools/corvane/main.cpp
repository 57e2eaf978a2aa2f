// corvane: thermodynamic properties from equations of state on the command line.
//
// Results go to standard output, the rest to standard error. Exit code 0: done; 1: failed; 2: wrong
// use.
#include <tools/corvane/errors.h>
#include <tools/corvane/options.h>
#include <tools/corvane/suggest.h>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {
constexpr int kFailed = 1, kWrongUse = 2;

constexpr char const* kExamples = R"(
Examples:
  corvane list                                  the substances and what there is for each
  corvane list --substance CO2                  parameter sets of all equations for one substance
  corvane state PR propane --T 300 --p 1        all properties at 300 K and 1 MPa
  corvane saturation PR CO2 --T 220:300:10      vapour pressure table
  corvane saturation PR water --p 1.01325 --unit-p bar --unit-T C --mass
corvane COMMAND --help tells the rest.)";

std::string command_of(CLI::App const& app) {
    const auto given = app.get_subcommands();
    return given.empty() ? "" : given.front()->get_name() + ": ";
}

/// Names that could stand where an unexpected word does: options of the command, or commands.
std::vector<std::string> expected_words(CLI::App const& app) {
    std::vector<std::string> words;
    const auto given = app.get_subcommands();
    if (given.empty())
        for (CLI::App const* command : app.get_subcommands([](CLI::App const*) { return true; }))
            words.push_back(command->get_name());
    else
        for (CLI::Option const* option : given.front()->get_options())
            for (std::string const& name : option->get_lnames()) words.push_back("--" + name);
    return words;
}

int wrong_use(CLI::App const& app, std::string text) {
    const auto given = app.get_subcommands();
    const auto extras = app.remaining(true);
    if (!extras.empty()) {
        const std::string word = extras.front().substr(0, extras.front().find('='));
        text = fmt::format("unexpected {}{}", word, cli::did_you_mean(word, expected_words(app)));
    } else if (given.empty()) {
        text = "a command is required: list, state or saturation";
    }
    for (char& c : text)
        if (c == '\n') c = ' ';
    fmt::print(stderr, "corvane: {}{} (see corvane {}--help)\n", command_of(app), text,
               given.empty() ? "" : given.front()->get_name() + ' ');
    return kWrongUse;
}
}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Thermodynamic properties of pure substances from equations of state.", "corvane"};
    app.set_version_flag("--version", "corvane " CORVANE_VERSION);
    app.footer(kExamples);
    app.require_subcommand(1);
    cli::Action action;
    cli::add_list(app, action);
    cli::add_state(app, action);
    cli::add_saturation(app, action);
    try {
        app.parse(argc, argv);
        return action();
    } catch (CLI::Success const& e) {  // --help, --version
        return app.exit(e);
    } catch (CLI::ParseError const& e) {
        return wrong_use(app, e.what());
    } catch (cli::Misuse const& e) {
        fmt::print(stderr, "corvane: {}{}\n", command_of(app), e.what());
        return kWrongUse;
    } catch (std::exception const& e) {
        fmt::print(stderr, "corvane: {}{}\n", command_of(app), e.what());
    } catch (ThException const& e) {
        fmt::print(stderr, "corvane: {}{}\n", command_of(app), cli::describe(e));
    } catch (MthException const& e) {
        fmt::print(stderr, "corvane: {}{}\n", command_of(app), cli::describe(e));
    }
    return kFailed;
}
