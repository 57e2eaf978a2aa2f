// Small operations on strings: the library's, and what a terminal needs.
#pragma once

#include <corvane/catalogue/names.h>
#include <corvane/core/text.h>

#include <string>
#include <string_view>

namespace cli {

using corvane::clipped;
using corvane::join;
using corvane::lower;
using corvane::split;
using corvane::to_number;
using corvane::trimmed;
using corvane::written_name;

/// What a terminal shows as it stands: valid UTF-8 without control characters, each of which, and
/// each byte of what is no UTF-8, becomes '?'.
std::string printable(std::string_view text);

/// A substance in a picture: a formula that it was asked for by, with subscripts (CO2 as CO₂, but no
/// family such as C3), C7+ as C₇₊, else written_name(name).
std::string name_in_picture(std::string const& asked, std::string const& name);

/// A unit as it is written in a picture: °C, kg/m³, µPa s.
std::string unit_in_picture(std::string unit);

}  // namespace cli
