// The data home: the directory that holds CorvaneS, the tree of data and plug-ins.
#pragma once

#include <corvane/catalogue/home.h>

#include <string>

namespace cli {

/// Finds the data home, from which everything that the library reads as ./CorvaneS is read from
/// then on. In this order:
///   1. `given`, the option --home, or else the environment variable CORVANE_DATA
///   2. the working directory, unless one is named by 1
///   3. <folder of the program>/../lib/corvane
///   4. the build tree's home, for a program that lies in its build tree
///   5. <prefix>/lib/corvane, the prefix fixed when the program was built
/// The first of 3 to 5 lies behind the others: what they do not have is read from it. A named home
/// must hold CorvaneS; places that are only tried (2 to 5) must hold a plug-in in it, too, so that a
/// bare checkout of the data does not hide what is installed. A working directory whose tree others
/// can write to is passed over, as plug-ins are code, and that is told on standard error.
/// @throws Failure naming what was tried
void enter_data_home(std::string const& given);

/// The one that was entered.
corvane::DataHome const& entered_home();

/// The path of a file below it, for one that may begin with "./": as corvane::reading_path.
std::string below_home(std::string const& path);

}  // namespace cli
