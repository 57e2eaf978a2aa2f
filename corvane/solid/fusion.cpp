#include <corvane/core/errors.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/solid/fusion.h>

namespace corvane {
namespace {
constexpr int kColumns = 7;

/// Numbers of a row. A "-" is unknown.
FusionData parse(std::string_view row) {
    double x[kColumns] = {};
    for (double& value : x) {
        const std::string word = trimmed(next_part(row, '\t'));
        if (word == "-") continue;
        const auto number = to_number(word);
        if (!number) throw ThException(th_cannot_open);
        value = *number;
    }
    const FusionData d{x[0], x[1], x[2], x[3], x[4], x[5], x[6]};
    if (!(d.T > 0.0) || !(d.h > 0.0) || d.v < 0.0 || d.T_100 < 0.0 || d.T_min < 0.0 ||
        d.T_min >= d.T)
        throw ThException(th_cannot_open);
    return d;
}
}  // namespace

FusionData load_fusion(std::string const& substance) {
    bool found = false;
    for (std::string const& path : reading_paths("./CorvaneS/fusion.tsv")) {
        const std::string text = file_contents(path.c_str());
        found = found || !text.empty();
        std::string_view rest = text;
        while (!rest.empty()) {
            std::string_view row = next_part(rest, '\n');
            if (next_part(row, '\t') == substance) return parse(row);
        }
    }
    throw ThException(found ? th_no_solid : th_cannot_open);
}

}  // namespace corvane
