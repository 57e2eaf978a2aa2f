#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/file.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

namespace cli {
namespace {
std::vector<std::string> fields_of(std::string const& line, std::string const& path, int number) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (std::size_t k = 0; k < line.size(); ++k) {
        const char c = line[k];
        if (c == '"' && quoted && k + 1 < line.size() && line[k + 1] == '"') {
            fields.back() += '"';
            ++k;
        } else if (c == '"') {
            quoted = !quoted;
        } else if (c == ',' && !quoted) {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    if (quoted) throw Failure(fmt::format("{}:{}: a quotation is not closed", path, number));
    for (std::string& field : fields) field = trimmed(field);
    return fields;
}
}  // namespace

CsvFile read_csv(std::string const& path) {
    CsvFile csv;
    int number = 0;
    for (std::string const& whole : read_lines(path)) {
        ++number;
        std::string const line = trimmed(whole);
        if (line.empty()) continue;
        if (line[0] == '#') {
            csv.comments.push_back(trimmed(line.substr(1)));
            continue;
        }
        auto fields = fields_of(line, path, number);
        if (csv.header.empty()) {
            csv.header = std::move(fields);
            continue;
        }
        if (fields.size() > csv.header.size())
            throw Failure(fmt::format("{}:{}: more fields than columns", path, number));
        fields.resize(csv.header.size());
        csv.rows.push_back(std::move(fields));
        csv.lines.push_back(number);
    }
    if (csv.header.empty())
        throw Failure(fmt::format(
            "{}: {}", path, number > 0 ? "no line with column names" : "the file is empty"));
    return csv;
}

}  // namespace cli
