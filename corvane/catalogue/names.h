// Names of substances for people.
#pragma once

#include <corvane/core/api.h>

#include <string>
#include <string_view>

namespace corvane {

/// A name of the data tree as chemists write it: "carbon dioxide", "1,2-dichloroethane",
/// "cis-2-butene", "methyl tert-butyl ether", "R1234ze(E)"; a name of another form as it stands.
CORVANE_API std::string written_name(std::string_view name);

}  // namespace corvane
