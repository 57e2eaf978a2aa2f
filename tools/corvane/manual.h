// The commands and their options as a table of texts, and what is written from it: man pages and
// completions of shells.
#pragma once

#include <string>
#include <vector>

namespace cli {

struct OptionText {
    std::vector<std::string> names;   ///< "-h", "--help"; of a positional its name alone
    std::string type, text;           ///< "N"; empty for flags
    std::vector<std::string> one_of;  ///< what a value may be; empty: anything
    bool positional = false, required = false, repeated = false;
};

struct CommandText {
    std::string name, text, footer;  ///< of the program itself: "corvane"
    std::vector<OptionText> options;
};

/// A page of section 1 with the macros of man(7). The page of the program, the first of all, lists the
/// others.
std::string man_page(CommandText const& one, std::vector<CommandText> const& all);

std::string bash_completion(std::vector<CommandText> const& all);
std::string zsh_completion(std::vector<CommandText> const& all);

/// Writes man/corvane.1, man/corvane-<command>.1, bash/corvane and zsh/_corvane into the folder.
/// @throws Failure where a file cannot be written
void write_manual(std::string const& folder, std::vector<CommandText> const& all);

}  // namespace cli
