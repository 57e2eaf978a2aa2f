// Numbers and states in the texts of failures and certificates: with a point, whatever locale the
// process has. Internal to the library.
#pragma once

#include <corvane/core/containers.h>
#include <corvane/core/number_text.h>
#include <corvane/phases/phase/fixed.h>

#include <string>
#include <string_view>

namespace corvane::inline detail {

/// As printf's %g with so many digits; %e with `places` behind the point.
inline std::string shortest(double x, int digits = 6) {
    return number_text(x, 'g', digits);
}
inline std::string scientific(double x, int places = 1) {
    return number_text(x, 'e', places);
}

/// "T = 300 K"
inline std::string quantity(std::string_view name, double x, std::string_view unit, int digits = 6) {
    return std::string(name) + " = " + shortest(x, digits) + " " + std::string(unit);
}
inline std::string T_or_p(Fixed held) {
    return held.at_T ? quantity("T", held.value, "K") : quantity("p", held.value, "MPa");
}
/// "z = 0.3 0.7"
inline std::string composition_text(Vector<double> const& z, int digits = 4) {
    std::string text = "z =";
    for (int i = 0; i < z.size(); ++i) text += " " + shortest(z[i], digits);
    return text;
}

}  // namespace corvane::inline detail
