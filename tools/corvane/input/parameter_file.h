// What parameter files and ideal-gas tables say about themselves, in lines that the library does
// not read: "valid:", "measured:", "source:". Missing numbers ("-") are NaN.
#pragma once

#include <optional>
#include <string>

namespace cli {

struct ParameterNotes {
    std::string comment, source;
    double Tmin, Tmax, pmax;  ///< stated range, K, K, MPa
    double Tc, pc, vc;        ///< measured critical point, K, MPa, cm³/mol
};

/// Notes of ./CorvaneS/parameters/<eos>/<substance>;<set>. An absent file gives empty notes.
ParameterNotes parameter_notes(std::string const& eos, std::string const& substance, int set);

/// The same of another file with such lines, such as a friction-theory set.
ParameterNotes notes_in(std::string const& path);

struct IdealNotes {
    double first, last;  ///< temperatures of the table, K
    double Tmin, Tmax;   ///< stated range of the source, K
    std::string source;
};

/// Notes of the ideal-gas table of a path, or nothing if there is no table.
std::optional<IdealNotes> ideal_notes(std::string const& path);

}  // namespace cli
