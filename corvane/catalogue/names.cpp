#include <corvane/catalogue/names.h>
#include <corvane/core/text.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <vector>

namespace corvane {
namespace {
bool is_number(std::string const& part) {
    return !part.empty() && part.find_first_not_of("0123456789") == std::string::npos;
}
/// What is joined to the next part of a name by a hyphen.
bool is_prefix(std::string const& part) {
    static char const* const prefixes[] = {"cis", "trans", "tert", "m", "n", "o", "p"};
    return is_number(part) ||
           std::find(std::begin(prefixes), std::end(prefixes), part) != std::end(prefixes);
}
}  // namespace

std::string written_name(std::string_view name) {
    std::vector<std::string> parts = split(name, '_');
    const std::string first = parts.front();
    if (first.size() > 2 && first[0] == 'r' && std::isdigit(static_cast<unsigned char>(first[1]))) {
        parts.front()[0] = 'R';
        return parts.size() == 2 ? parts[0] + '(' + std::string(1, static_cast<char>(std::toupper(
                                       static_cast<unsigned char>(parts[1][0])))) + ')'
                                 : join(parts, "-");
    }
    std::string text = first == "n" && parts.size() > 1 ? "N" : first;
    for (std::size_t k = 1; k < parts.size(); ++k) {
        const bool number = is_number(parts[k]);
        text += number && is_number(parts[k - 1]) ? "," : number || is_prefix(parts[k - 1]) ? "-" : " ";
        text += parts[k];
    }
    return text;
}

}  // namespace corvane
