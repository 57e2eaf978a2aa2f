// Small operations on strings: the library's, and what a terminal needs.
#pragma once

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

/// What a terminal shows as it stands: valid UTF-8 without control characters, each of which, and
/// each byte of what is no UTF-8, becomes '?'.
std::string printable(std::string_view text);

/// A substance as chemists write it: "carbon dioxide", "1,2-dichloroethane", "cis-2-butene",
/// "methyl tert-butyl ether", "R1234ze(E)"; a name of another form as it stands.
std::string written_name(std::string_view name);

}  // namespace cli
