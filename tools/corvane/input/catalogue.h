// What the data tree offers: plug-ins and parameter sets. Everything here reads directories, which
// takes time; answers to a well-put question do without.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace cli {

/// Whether a folder holds a plug-in (libth….dll).
bool has_plugin(std::filesystem::path const& folder);

/// Names of the plug-ins that attach1 (pure) or attachN (mixtures, "PR+vdW1") would find, sorted.
struct Plugins {
    std::vector<std::string> pure, mixture;
};
Plugins plugins();

/// Folders of ./CorvaneS/parameters without a mixing theory in their name, sorted.
std::vector<std::string> parameter_folders();

/// Substance → numbers of the parameter sets in ./CorvaneS/parameters/<eos>, ascending.
std::map<std::string, std::vector<int>> parameter_sets(std::string const& eos);

/// The same for one substance.
std::vector<int> parameter_sets(std::string const& eos, std::string const& substance);

/// Whether a text can be part of a file name of the data tree: not empty, no '/', no ';', and not
/// longer than a name of the library.
bool is_file_name(std::string const& text);

}  // namespace cli
