// Where data and plug-ins are read: a directory that holds the tree CorvaneS.
#pragma once

#include <corvane/core/api.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

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

/// A data home, which may lie over others: each file (plug-in, parameter set, table ...) is that of
/// the first that has it, and of substances.tsv and fusion.tsv each row. Directories are made
/// absolute, so that they stay right when the process changes its working directory.
class CORVANE_API DataHome {
  public:
    /// @throws OpenFailure `directory` does not hold CorvaneS
    explicit DataHome(std::filesystem::path const& directory);

    /// This home, and behind it what `other` has. A directory that is there already stays once.
    DataHome over(DataHome const& other) const;

    /// The home to use where none is named: the first that holds CorvaneS of those beside the
    /// library itself (<its folder>/corvane, as installed, and <its folder>/../home, in a build
    /// tree), with the one in the environment variable CORVANE_DATA over it; where there is neither,
    /// the working directory.
    /// @throws OpenFailure there is none, or CORVANE_DATA does not hold CorvaneS
    static DataHome find();

    /// The first.
    std::filesystem::path const& directory() const { return directories_.front(); }
    std::filesystem::path tree() const { return directory() / "CorvaneS"; }

    /// All, the first on top.
    std::vector<std::filesystem::path> const& directories() const { return directories_; }
    /// The same as texts, for ReadingFrom.
    std::vector<std::string> names() const;
    /// A file or folder below the home ("CorvaneS/ideal/propane"): in the first directory that has
    /// it, in the first of all if none has.
    std::filesystem::path file(std::filesystem::path const& relative) const;

  private:
    std::vector<std::filesystem::path> directories_;
};

}  // namespace corvane
