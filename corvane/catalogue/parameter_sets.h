// What a data home offers: plug-ins, parameter sets, and what files say about themselves.
#pragma once

#include <corvane/catalogue/home.h>
#include <corvane/core/api.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane {

/// Names of the plug-ins in the home, its tree and beside it, and of those that are linked in,
/// sorted.
struct Plugins {
    std::vector<std::string> pure;     ///< for attach1: "PR"
    std::vector<std::string> mixture;  ///< equation and mixing theory, for attachN: "PR+vdW1"
};
CORVANE_API Plugins plugins(DataHome const& home);

/// Substance → numbers of the parameter sets of an equation, ascending. Reads the directory.
CORVANE_API std::map<std::string, std::vector<int>> parameter_sets(DataHome const& home,
                                                                   std::string const& equation);

/// The same for one substance.
CORVANE_API std::vector<int> parameter_sets(DataHome const& home, std::string const& equation,
                                            std::string const& substance);

/// Equations with a folder of parameter sets, sorted.
CORVANE_API std::vector<std::string> equations(DataHome const& home);

/// Names of the files in a folder of the home, rows of its table included.
CORVANE_API std::set<std::string> file_names(DataHome const& home, std::string const& folder);

/// Is there the file of this set, readable? No directory is read.
CORVANE_API bool has_parameter_set(DataHome const& home, std::string const& equation,
                                   std::string const& substance, int set);

/// Its path, of the first directory of the home that has it.
CORVANE_API std::filesystem::path parameter_file(DataHome const& home, std::string const& equation,
                                                 std::string const& substance, int set);

/// Can a text be part of a file name of the tree: not empty, no '/', no ';', nothing below a blank,
/// and not longer than a name of the library?
CORVANE_API bool is_file_name(std::string const& text);

/// The lines of a parameter file that the model does not read: "source:", "valid:", "measured:".
/// Not-a-number and "" where a line or number is missing, malformed or "-".
struct ParameterNotes {
    std::string comment, source;
    double Tmin, Tmax, pmax;  ///< stated range, K, K, MPa
    double Tc, pc, vc;        ///< measured critical point, K, MPa, cm³/mol
};

/// Notes of <tree>/parameters/<equation>/<substance>;<set>. An absent file gives empty notes.
CORVANE_API ParameterNotes parameter_notes(DataHome const& home, std::string const& equation,
                                           std::string const& substance, int set);
/// The same of another file with such lines, such as a friction-theory set.
CORVANE_API ParameterNotes parameter_notes(std::string const& file);

struct IdealNotes {
    double first, last;  ///< temperatures of the table, K
    double Tmin, Tmax;   ///< stated range of the source, K
    std::string source;
};

/// Notes of an ideal-gas table, or nothing if there is no such file.
CORVANE_API std::optional<IdealNotes> ideal_notes(std::string const& file);

}  // namespace corvane
