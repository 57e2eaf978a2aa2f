// Reading of text files: whole, or not at all.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cli {

constexpr std::size_t kLargestFile = 64u << 20;  ///< bytes

/// The lines of a file that a person names: a file, or a pipe such as <(...) or /dev/stdin. Line
/// ends (and carriage returns before them) are cut off.
/// @throws Failure "<path>: <why>": not there, a folder, not readable, or above kLargestFile
std::vector<std::string> read_lines(std::string const& path);

}  // namespace cli
