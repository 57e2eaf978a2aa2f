#include <tools/corvane/manual.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/core/version.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace cli {
namespace {
/// Text that a formatter of man pages shows as it stands: hyphens that can be copied, no control lines.
std::string as_roff(std::string const& text) {
    std::string result;
    for (char c : text) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    if (!result.empty() && (result[0] == '.' || result[0] == '\'')) result.insert(0, "\\&");
    return result;
}

std::string upper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

/// "corvane-state", the page of a command.
std::string page_name(CommandText const& one, CommandText const& program) {
    return &one == &program ? one.name : program.name + "-" + one.name;
}

std::string synopsis(CommandText const& one, CommandText const& program) {
    if (&one == &program)
        return ".B corvane\n.I COMMAND\n.RI [ OPTION ...]\n.br\n.B corvane\n.RB [ \\-\\-help | \\-\\-version ]\n";
    std::string text = fmt::format(".B {} {}\n", program.name, as_roff(one.name));
    for (OptionText const& option : one.options) {
        const bool optional = !option.required;
        const std::string more = option.repeated ? "..." : "";
        if (option.positional)
            text += optional ? fmt::format(".RI [ {} {}]\n", as_roff(option.names.front()), more)
                             : fmt::format(".IR {}{}\n", as_roff(option.names.front()), more.empty() ? "" : " " + more);
        else if (option.required)
            text += fmt::format(".BI {} \" {}\"\n", as_roff(option.names.back()), as_roff(option.type));
    }
    return text + ".RI [ OPTION ...]\n";
}

std::string entry(OptionText const& option) {
    std::string names;
    for (std::string const& name : option.names)
        names += (names.empty() ? "" : ", ") + ("\\fB" + as_roff(name) + "\\fR");
    if (!option.type.empty()) names += " \\fI" + as_roff(option.type) + "\\fR";
    if (option.repeated) names += " ...";
    return ".TP\n" + names + "\n" + as_roff(option.text) +
           (option.required ? " (required)" : "") + "\n";
}

/// Lines of a footer: those that are indented stand as they are, "Examples:" is a heading.
std::string footer(std::string const& text) {
    std::string result;
    bool verbatim = false;
    for (std::string const& line : split(text, '\n')) {
        const bool example = line.starts_with("  ");
        if (example != verbatim) result += example ? ".PP\n.nf\n.RS 4\n" : ".RE\n.fi\n";
        verbatim = example;
        if (example)
            result += as_roff(line.substr(2)) + "\n";
        else if (line == "Examples:")
            result += ".SH EXAMPLES\n";
        else if (!trimmed(line).empty())
            result += ".PP\n" + as_roff(line) + "\n";
    }
    return result + (verbatim ? ".RE\n.fi\n" : "");
}

/// What holds for every command.
constexpr char kCommon[] = R"(.SH EXIT STATUS
0: done; 1: failed; 2: wrong use. Results go to standard output, everything else to standard error.
.SH ENVIRONMENT
.TP
.B CORVANE_DATA
the data home, a folder that holds
.IR CorvaneS ;
what it lacks is read from the installed one.
.B \-\-home
goes before it.
)";

void write(std::filesystem::path const& path, std::string const& text) {
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream file(path, std::ios::binary);
    if (!(file << text).flush()) throw Failure(path.string() + " cannot be written");
}
}  // namespace

std::string man_page(CommandText const& one, std::vector<CommandText> const& all) {
    CommandText const& program = all.front();
    const std::string name = page_name(one, program);
    std::string page = fmt::format(
        ".TH {} 1 \"\" \"corvane {}\" \"Corvane\"\n.SH NAME\n{} \\- {}\n.SH SYNOPSIS\n{}",
        as_roff(upper(name)), CORVANE_VERSION, as_roff(name), as_roff(one.text), synopsis(one, program));
    if (&one == &program) {
        page += ".SH COMMANDS\n";
        for (CommandText const& command : all)
            if (&command != &program)
                page += fmt::format(".TP\n.BR {} (1)\n{}\n", as_roff(page_name(command, program)),
                                    as_roff(command.text));
    }
    page += ".SH OPTIONS\n";
    for (OptionText const& option : one.options) page += entry(option);
    page += footer(one.footer) + kCommon + ".SH SEE ALSO\n";
    if (&one != &program) return page + ".BR corvane (1)\n";
    for (CommandText const& command : all)
        if (&command != &program)
            page += fmt::format(".BR {} (1){}\n", as_roff(page_name(command, program)),
                                &command == &all.back() ? "" : ",");
    return page;
}

void write_manual(std::string const& folder, std::vector<CommandText> const& all) {
    const std::filesystem::path root(folder);
    for (CommandText const& one : all)
        write(root / "man" / (page_name(one, all.front()) + ".1"), man_page(one, all));
    write(root / "bash" / all.front().name, bash_completion(all));
    write(root / "zsh" / ("_" + all.front().name), zsh_completion(all));
}

}  // namespace cli
