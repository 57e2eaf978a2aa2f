#include <corvane/core/errors.h>
#include <corvane/core/text.h>
#include <corvane/transport/rows.h>

namespace corvane::inline detail {

TableFile open_table(DataHome const& home, std::string const& table) {
    const std::string path = home.file("CorvaneS/transport/" + table + ".tsv").string();
    try {
        return {path, open_file(path)};
    } catch (ThException const&) {
        return {path, nullptr};
    }
}

std::optional<std::vector<double>> row_of(DataHome const& home, std::string const& table,
                                          std::string const& substance, std::size_t columns,
                                          std::size_t numbers) {
    const auto [path, file] = open_table(home, table);
    if (!file) return {};
    const std::string wanted = substance + '\t';
    char line[1024];
    for (int number = 1; std::fgets(line, sizeof line, file.get()); ++number) {
        if (std::string_view(line).rfind(wanted, 0) != 0) continue;
        const auto fail = [&, &path = path](std::string const& what) {
            throw OpenFailure(path + ":" + std::to_string(number) + ": " + what, path, number);
        };
        const auto field = split(trimmed(line), '\t');
        if (field.size() != columns) fail(std::to_string(columns) + " columns are needed");
        std::vector<double> values;
        for (std::size_t k = 1; k <= numbers; ++k) {
            const auto x = to_number(field[k]);
            if (!x) fail("'" + clipped(field[k]) + "' is not a number");
            values.push_back(*x);
        }
        return values;
    }
    return {};
}

}  // namespace corvane::inline detail
