#include <tools/corvane/input/parameter_file.h>
#include <tools/corvane/text/file.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <limits>
#include <sstream>

namespace cli {
namespace {
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

/// The text after "<key>" in a line, if the line begins with it.
bool starts(std::string const& line, std::string_view key, std::string& rest) {
    if (line.compare(0, key.size(), key) != 0) return false;
    rest = trimmed(std::string_view(line).substr(key.size()));
    return true;
}

void read_numbers(std::string const& text, std::initializer_list<double*> values) {
    std::istringstream words(text);
    std::string word;
    for (double* value : values)
        if (words >> word) *value = to_number(word).value_or(kUnknown);
}
}  // namespace

ParameterNotes parameter_notes(std::string const& eos, std::string const& substance, int set) {
    return notes_in("CorvaneS/parameters/" + eos + '/' + substance + ';' + std::to_string(set));
}

ParameterNotes notes_in(std::string const& path) {
    ParameterNotes notes{"", "", kUnknown, kUnknown, kUnknown, kUnknown, kUnknown, kUnknown};
    const auto lines = tree_lines(path);
    if (!lines) return notes;
    std::string rest;
    for (std::size_t k = 0; k < lines->size(); ++k) {
        std::string const& line = (*lines)[k];
        if (k == 2) starts(line, "text:", notes.comment);
        if (starts(line, "valid:", rest))
            read_numbers(rest, {&notes.Tmin, &notes.Tmax, &notes.pmax});
        if (starts(line, "measured:", rest)) read_numbers(rest, {&notes.Tc, &notes.pc, &notes.vc});
        if (starts(line, "source:", rest)) notes.source = rest;
    }
    return notes;
}

std::optional<IdealNotes> ideal_notes(std::string const& path) {
    const auto lines = tree_lines(path);
    if (!lines) return std::nullopt;
    IdealNotes notes{kUnknown, kUnknown, kUnknown, kUnknown, ""};
    std::string rest, number;
    for (std::size_t k = 0; k < lines->size(); ++k) {
        std::string const& line = (*lines)[k];
        std::istringstream words(line);
        if (k > 0 && words >> number)
            if (const auto T = to_number(number)) {
                if (k == 1) notes.first = *T;
                notes.last = *T;
            }
        if (starts(line, "valid:", rest)) read_numbers(rest, {&notes.Tmin, &notes.Tmax});
        if (starts(line, "source:", rest)) notes.source = rest;
    }
    return notes;
}

}  // namespace cli
