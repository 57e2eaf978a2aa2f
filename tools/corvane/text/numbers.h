// Numbers on the command line and in CSV files: always with a decimal point, whatever the locale.
#pragma once

#include <tools/corvane/text/text.h>
#include <tools/corvane/text/units.h>

#include <string>
#include <vector>

namespace cli {

/// The value of an option, which takes a single one. @throws Misuse naming the option
double number(std::string const& text, char const* option);

/// Values of an option: numbers and ranges first:last:step or first:last/steps, separated by commas
/// ("300:360:10", "300:360/6", "300,310", "250:300:25,301"). The last value belongs to a range when the step meets it. At most
/// 100000 values. @throws Misuse naming the option
std::vector<double> points(std::string const& text, char const* option);

/// points in library units, each above zero. @throws Misuse naming the option
std::vector<double> positive_points(std::string const& text, char const* option, Quantity quantity,
                                    Units const& units);

/// One such value; a range or list is refused. @throws Misuse naming the option
double positive(std::string const& text, char const* option, Quantity quantity, Units const& units);

/// Shortest text that reads back as the same number.
std::string shortest(double x);

}  // namespace cli
