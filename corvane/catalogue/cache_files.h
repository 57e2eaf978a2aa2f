// Files of what was computed once and is kept. Internal to the library.
#pragma once

#include <corvane/catalogue/home.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvane::inline detail {

/// "cache/<subject>" of the home's first directory, and for homes that are read-only
/// "corvane/<subject>" in the user's cache: $XDG_CACHE_HOME, else $HOME/.cache.
std::vector<std::filesystem::path> cache_folders(DataHome const& home, std::string const& subject);

/// Writes the file into the first of the folders that can be written, which is made where it is
/// missing: under another name, brought to the disk and renamed, so that processes at the same time
/// read the old or the new one, whole. Its path; empty where none can.
std::filesystem::path write_cached(std::vector<std::filesystem::path> const& folders,
                                   std::string const& name, std::string const& bytes);

}  // namespace corvane::inline detail
