// The data home: the directory that holds CorvaneS, the tree of data and plug-ins.
#pragma once

#include <corvane/catalogue/home.h>

#include <filesystem>
#include <string>

namespace cli {

/// Finds the data home and makes it the working directory, because the library reads ./CorvaneS.
/// In this order:
///   1. `given`, the option --home
///   2. the environment variable CORVANE_DATA
///   3. the working directory
///   4. <folder of the program>/../lib/corvane
///   5. the build tree's home, for a program that lies in its build tree
///   6. <prefix>/lib/corvane, the prefix fixed when the program was built
/// A named home (1, 2) must hold CorvaneS; places that are only tried (3 to 6) must hold a plug-in
/// in it, too, so that a bare checkout of the data does not hide a complete home.
/// @throws Failure naming what was tried
std::filesystem::path enter_data_home(std::string const& given);

/// The one that was entered.
corvane::DataHome entered_home();

}  // namespace cli
