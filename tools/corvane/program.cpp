#include <tools/corvane/manual.h>
#include <tools/corvane/program.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/suggest.h>
#include <corvane/core/version.h>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <stdexcept>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace cli {
namespace {
constexpr int kFailed = 1, kWrongUse = 2;

/// Where a file may grow no further, writing fails, as on a full disk, and the program goes on.
void report_full_files() {
    signal(SIGXFSZ, SIG_IGN);
}

/// A stream that the caller has closed must not become the next file that is opened: messages would
/// be written into it. What then stands in its place takes no output, so that failing to write is
/// noticed as before.
void occupy_closed_streams() {
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0)
            // Takes the lowest free number, which is this one.
            if (open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream)
                throw Failure("/dev/null cannot be opened");
}

bool any(CLI::App const*) {
    return true;
}

/// Names that could stand where an unexpected word does: options of the command, or commands.
std::vector<std::string> expected_words(CLI::App const& app) {
    std::vector<std::string> words;
    const auto given = app.get_subcommands();
    if (given.empty())
        for (CLI::App const* command : app.get_subcommands(any))
            words.push_back(command->get_name());
    else
        for (CLI::Option const* option : given.front()->get_options())
            for (std::string const& name : option->get_lnames()) words.push_back("--" + name);
    return words;
}
/// What a value of the option may be; empty: anything. See Command::value.
std::vector<std::string> values_of(CLI::Option& option) {
    for (int i = 0;; ++i) {
        try {
            std::string const& name = option.get_validator(i)->get_name();
            if (!name.empty()) return split(name, '\n');
        } catch (CLI::OptionNotFound const&) {  // the end of the checks
            return {};
        }
    }
}

OptionText text_of(CLI::Option& option) {
    OptionText text;
    text.positional = option.get_positional();
    for (std::string const& name : option.get_snames()) text.names.push_back("-" + name);
    for (std::string const& name : option.get_lnames()) text.names.push_back("--" + name);
    if (text.positional) text.names = {option.get_name()};
    text.text = option.get_description();
    text.required = option.get_required();
    text.repeated = option.get_items_expected_max() > 1;
    if (option.get_items_expected_max() > 0) text.type = option.get_type_name();
    text.one_of = values_of(option);
    return text;
}

CommandText text_of(CLI::App& app) {
    CommandText text{app.get_name(), app.get_description(), app.get_footer(), {}};
    for (CLI::Option* option : app.get_options(nullptr)) text.options.push_back(text_of(*option));
    return text;
}
}  // namespace

Command& Command::positional(char const* name, std::string& value, char const* text,
                             bool required) {
    if (!app_) return *this;
    app_->add_option(name, value, text)->required(required)->type_name("");
    return *this;
}

Command& Command::positionals(char const* name, std::vector<std::string>& values,
                              char const* text, bool required) {
    if (!app_) return *this;
    app_->add_option(name, values, text)->required(required)->expected(-1)->type_name("");
    return *this;
}

Command& Command::value(char const* name, std::string& value, char const* text, Rule const& rule) {
    if (!app_) return *this;
    CLI::Option* option = app_->add_option(name, value, text);
    option->required(rule.required)->type_name(rule.type);
    const auto empty = [](std::string& v) { return std::string(v.empty() ? "no value" : ""); };
    option->check(CLI::Validator(empty, ""));
    // The name of the check is what completion offers: help has the values in the option's text.
    if (rule.one_of.empty()) return *this;
    const auto one_of = [&](CLI::Validator member) {
        return member.description("").name(join(rule.one_of, "\n"));
    };
    const std::function<std::string(std::string)> as_written = [](std::string word) { return lower(word); };
    option->transform(one_of(CLI::IsMember(rule.one_of, rule.spelling ? rule.spelling : as_written)));
    return *this;
}

Command& Command::words(char const* name, std::vector<std::string>& values, char const* text,
                        char const* type) {
    if (!app_) return *this;
    app_->add_option(name, values, text)->expected(1, -1)->type_name(type);
    return *this;
}

Command& Command::repeated(char const* name, std::vector<std::string>& values, char const* text,
                           char const* type) {
    if (!app_) return *this;
    app_->add_option(name, values, text)->allow_extra_args(false)->type_name(type);
    return *this;
}

Command& Command::count(char const* name, int& value, char const* text) {
    if (!app_) return *this;
    app_->add_option(name, value, text)->type_name("N")->check(CLI::PositiveNumber.description(""));
    return *this;
}

Command& Command::flag(char const* name, bool& value, char const* text) {
    if (!app_) return *this;
    app_->add_flag(name, value, text);
    return *this;
}

Command& Command::excludes(char const* name, char const* other) {
    if (!app_) return *this;
    app_->get_option(name)->excludes(app_->get_option(other));
    return *this;
}

Command& Command::examples(char const* lines) {
    if (!app_) return *this;
    app_->footer(std::string("\nExamples:\n") + lines);
    return *this;
}

Program::Program(char const* text, char const* examples, int argc, char** argv)
    : argc_(argc), argv_(argv), app_(std::make_unique<CLI::App>(text, "corvane")) {
    app_->set_version_flag("--version", "corvane " CORVANE_VERSION);
    app_->footer(examples);
    app_->require_subcommand(1);
}

Program::~Program() = default;

Command Program::add(char const* name, char const* text, Action action, char const* also) {
    CLI::App* sub = app_->add_subcommand(name, text);
    if (*also != '\0') sub->alias(also);
    sub->callback([this, action = std::move(action)] { chosen_ = action; });
    const std::string_view asked = argc_ > 1 ? argv_[1] : "";
    const bool any_other = asked.empty() || asked.front() == '-';
    return Command(any_other || asked == name || asked == also ? sub : nullptr);
}

std::string Program::command() const {
    const auto given = app_->get_subcommands();
    return given.empty() ? "" : given.front()->get_name();
}

int Program::wrong_use(std::string text) const {
    const auto extras = app_->remaining(true);
    const std::string name = command();
    if (!extras.empty()) {
        const std::string word = clipped(extras.front().substr(0, extras.front().find('=')));
        text = fmt::format("unexpected {}{}", word, corvane::did_you_mean(word, expected_words(*app_)));
    } else if (name.empty()) {
        std::vector<std::string> names;
        for (CLI::App const* one : app_->get_subcommands(any)) names.push_back(one->get_name());
        text = "a command is required: " + join(names, ", ");
    }
    std::replace(text.begin(), text.end(), '\n', ' ');
    tell(fmt::format("{}{}{} (see corvane {}{}--help)", name, name.empty() ? "" : ": ", text, name,
                     name.empty() ? "" : " "));
    return kWrongUse;
}

int Program::parse_and_run() {
    if (argc_ == 3 && std::string_view(argv_[1]) == "--generate") {  // the build does; help is silent
        std::vector<CommandText> all{text_of(*app_)};
        for (CLI::App* command : app_->get_subcommands(nullptr)) all.push_back(text_of(*command));
        write_manual(argv_[2], all);
        return 0;
    }
    try {
        app_->parse(argc_, argv_);
    } catch (CLI::Success const& e) {  // --help, --version
        app_->exit(e);
        if (!std::cout.flush() || std::fflush(stdout) != 0)
            throw Failure("standard output does not take the help");
        return 0;
    } catch (CLI::ParseError const& e) {
        return wrong_use(e.what());
    }
    return chosen_();
}

int Program::run() {
    std::string failure;
    int code = kFailed;
    try {
        report_full_files();
        occupy_closed_streams();
        return parse_and_run();
    } catch (Misuse const& e) {
        failure = e.what();
        code = kWrongUse;
    } catch (std::bad_alloc const&) {
        failure = "not enough memory for what was asked";
    } catch (std::length_error const&) {  // of a container, by numbers from a file
        failure = "not enough memory for what was asked";
    } catch (std::exception const& e) {
        failure = e.what();
    } catch (ThException const& e) {
        failure = describe(e);
    } catch (MthException const& e) {
        failure = describe(e);
    }
    tell((command().empty() ? "" : command() + ": ") + failure);
    return code;
}

}  // namespace cli
