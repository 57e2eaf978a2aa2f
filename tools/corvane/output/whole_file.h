// Files that are written as a whole or not at all.
#pragma once

#include <filesystem>
#include <string>

namespace cli {

/// Puts the bytes into the place of the file: all of them, or nothing changes. They go into a file
/// next to it, which takes its name once they are on the disk. What is no file, but a pipe or a
/// device, gets them as they come. `option` begins the sentence. @throws Failure
void write_whole(std::string const& bytes, std::filesystem::path const& path,
                 std::string const& option);

}  // namespace cli
