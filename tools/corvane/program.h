// The command line as a whole: its commands and their options. Only program.cpp includes CLI11,
// which takes long to compile.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace cli {

/// A command's work; returns the exit code.
using Action = std::function<int()>;

/// What a value may be, and whether it must be given.
struct Rule {
    bool required = false;
    std::vector<std::string> one_of = {};  ///< empty: anything
    char const* type = "VALUE";            ///< what help calls it
    /// Words for which it gives the same are the same: "°C" and "C". Without it capitals do not count.
    std::function<std::string(std::string)> spelling = {};
};

/// A command under construction. The variables must live as long as the program. Without an app, nothing
/// is built: the command was not asked for.
class Command {
  public:
    explicit Command(CLI::App* app) : app_(app) {}
    Command& positional(char const* name, std::string& value, char const* text, bool required);
    /// One or more words, or any number if not required.
    Command& positionals(char const* name, std::vector<std::string>& values, char const* text,
                         bool required = true);
    Command& value(char const* name, std::string& value, char const* text, Rule const& rule = {});
    /// One or more words; given again, more of them.
    Command& words(char const* name, std::vector<std::string>& values, char const* text,
                   char const* type);
    /// A word; given again, more of them.
    Command& repeated(char const* name, std::vector<std::string>& values, char const* text,
                      char const* type);
    /// A whole number above zero.
    Command& count(char const* name, int& value, char const* text);
    Command& flag(char const* name, bool& value, char const* text);
    /// The two options do not go together.
    Command& excludes(char const* name, char const* other);
    Command& examples(char const* lines);

  private:
    CLI::App* app_;
};

class Program {
  public:
    /// The arguments are those of main, for run. Where they name a command, options of others are not
    /// built: all of them take longer than a state.
    Program(char const* text, char const* examples, int argc, char** argv);
    ~Program();

    /// also: a second name.
    Command add(char const* name, char const* text, Action action, char const* also = "");

    /// Parses the command line, runs the command and reports what is thrown: "corvane: <command>:
    /// <text>" on standard error. Returns the exit code: 0 done, 1 failed, 2 wrong use.
    int run();

  private:
    int parse_and_run();
    int wrong_use(std::string text) const;
    std::string command() const;

    int argc_;
    char** argv_;
    std::unique_ptr<CLI::App> app_;
    Action chosen_;
};

}  // namespace cli
