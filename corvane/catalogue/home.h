// Where data and plug-ins are read: a directory that holds the tree CorvaneS.
#pragma once

#include <corvane/core/api.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace corvane {

/// Something that was asked for by name cannot be opened. what() is one sentence that says what was
/// asked, which file (and line, where one is at fault) and what there is instead.
class CORVANE_API OpenFailure : public std::runtime_error {
  public:
    explicit OpenFailure(std::string const& sentence, std::string file = "", int line = 0)
        : std::runtime_error(sentence), file_(std::move(file)), line_(line) {}
    /// The file at fault, or "" where none is, and its line, 0 where none is to blame.
    std::string const& file() const { return file_; }
    int line() const { return line_; }

  private:
    std::string file_;
    int line_;
};

/// A data home. The directory is made absolute, so that it stays right when the process changes its
/// working directory.
class CORVANE_API DataHome {
  public:
    /// @throws OpenFailure `directory` does not hold CorvaneS
    explicit DataHome(std::filesystem::path const& directory);

    /// The home to use where none is named: the one in the environment variable CORVANE_DATA; else
    /// the first that holds CorvaneS of those beside the library itself (<its folder>/corvane, as
    /// installed, and <its folder>/../home, in a build tree), and the working directory.
    /// @throws OpenFailure there is none, or CORVANE_DATA does not hold CorvaneS
    static DataHome find();

    std::filesystem::path const& directory() const { return directory_; }
    std::filesystem::path tree() const { return directory_ / "CorvaneS"; }

  private:
    std::filesystem::path directory_;
};

}  // namespace corvane
