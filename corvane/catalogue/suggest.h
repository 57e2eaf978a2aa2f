// "did you mean": names near a misspelt one. Internal to the library and its command.
#pragma once

#include <corvane/core/api.h>

#include <string>
#include <vector>

namespace corvane::inline detail {

/// Number of insertions, deletions, substitutions and swaps of neighbours that turn one text into
/// the other, without regard to case (Damerau, Commun. ACM 7 (1964) 171; the restricted form).
CORVANE_API int edit_distance(std::string const& a, std::string const& b);

/// Up to three of the names that are nearest to it; none where none is near.
CORVANE_API std::vector<std::string> nearest(std::string const& asked, std::vector<std::string> const& names);

/// ": did you mean saturation?", with these names; "" when none is near.
CORVANE_API std::string did_you_mean(std::string const& asked,
                                     std::vector<std::string> const& names);

}  // namespace corvane::inline detail
