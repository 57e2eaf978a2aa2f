#include <tools/corvane/output/table.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/core/version.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>

namespace cli {
namespace {
std::string print(double x, Column const& column, bool full) {
    if (!std::isfinite(x)) return "";
    if (column.given) return full ? shortest(x) : fmt::format("{:.10g}", x);
    if (full) return fmt::format("{:.17g}", x);
    std::string text = fmt::format("{:#.{}g}", x, column.digits);
    if (text.back() == '.') text.pop_back();
    return text;
}

struct Printer {
    Column const& column;
    bool full;
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(double x) const { return print(x, column, full); }
    std::string operator()(long n) const { return fmt::format("{}", n); }
    std::string operator()(std::string const& word) const { return printable(word); }
};

std::string print(Cell const& cell, Column const& column, bool full) {
    return std::visit(Printer{column, full}, cell);
}

/// Left-aligned columns, two blanks apart; no blanks at line ends.
std::string aligned(std::vector<std::vector<std::string>> const& lines) {
    std::vector<std::size_t> width;
    const auto length = [](std::string const& word) {  // of UTF-8 text, in characters
        return static_cast<std::size_t>(
            std::count_if(word.begin(), word.end(), [](char c) { return (c & 0xC0) != 0x80; }));
    };
    for (auto const& line : lines) {
        width.resize(std::max(width.size(), line.size()));
        for (std::size_t k = 0; k + 1 < line.size(); ++k)
            width[k] = std::max(width[k], length(line[k]));
    }
    std::string text;
    for (auto const& line : lines) {
        std::string row;
        for (std::size_t k = 0; k < line.size(); ++k) {
            row += line[k];
            if (k + 1 < line.size()) row.append(width[k] - length(line[k]) + 2, ' ');
        }
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + '\n';
    }
    return text;
}

std::string or_dash(std::string word) {
    return word.empty() ? "-" : word;
}

std::string to_text(Table const& table, bool full) {
    std::vector<std::vector<std::string>> lines(1);
    for (Column const& column : table.columns)
        if (!column.detail) lines[0].push_back(column.heading());
    if (!lines[0].empty()) lines[0][0].insert(0, "# ");
    for (Row const& row : table.rows) {
        lines.emplace_back();
        for (std::size_t k = 0; k < row.cells.size(); ++k)
            if (!table.columns[k].detail)
                lines.back().push_back(or_dash(print(row.cells[k], table.columns[k], full)));
        if (!row.note.empty()) lines.back().push_back("# " + printable(row.note));
    }
    return aligned(lines);
}

std::string to_upright_text(Table const& table, bool full) {
    std::vector<std::vector<std::string>> lines;
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
        Column const& column = table.columns[k];
        lines.push_back({(lines.empty() ? "# " : "") + column.name});
        for (Row const& row : table.rows)
            lines.back().push_back(or_dash(print(row.cells[k], column, full)));
        lines.back().push_back(column.unit);
        lines.back().push_back(column.text);
    }
    std::string text = aligned(lines);
    for (Row const& row : table.rows)
        if (!row.note.empty())
            text += "# " + print(row.cells[0], Column{}, full) + ": " + printable(row.note) + '\n';
    return text;
}

std::string in_quotes(std::string const& word) {
    if (word.find_first_of(",\"\n#") == std::string::npos) return word;
    std::string text = "\"";
    for (char c : word) text += c == '"' ? "\"\"" : std::string(1, c);
    return text + '"';
}

std::string to_csv(Table const& table, Style const& style) {
    std::vector<std::string> line;
    for (Column const& column : table.columns) line.push_back(in_quotes(column.heading()));
    line.emplace_back("note");
    std::string text = join(line, ",") + '\n';
    for (auto& row : printed(table, style)) {
        for (std::string& cell : row) cell = in_quotes(cell);
        text += join(row, ",") + '\n';
    }
    return text;
}

/// Columns with the digits that --precision asks for.
Table as_precise(Table table, Style const& style) {
    for (Column& column : table.columns)
        if (style.precision > 0 && !column.detail) column.digits = style.precision;
    return table;
}
}  // namespace

std::vector<std::string> heading_lines(Heading const& heading) {
    std::string text = fmt::format("corvane {}  {}", CORVANE_VERSION, heading.command);
    Fields fields = heading.fields;
    fields.insert(fields.end(), heading.composition.begin(), heading.composition.end());
    for (auto const& [name, value] : fields) {
        const std::string word = print(value, Column{}, false);
        text += name == "comment" ? fmt::format(" {{{}}}", word)
                                  : fmt::format("  {} {}", printable(name), word);
    }
    std::vector<std::string> lines{text};
    for (std::string const& remark : heading.remarks) lines.push_back(printable(remark));
    return lines;
}

std::vector<std::vector<std::string>> printed(Table const& given, Style const& style) {
    const Table table = as_precise(given, style);
    std::vector<std::vector<std::string>> rows;
    for (Row const& row : table.rows) {
        std::vector<std::string>& line = rows.emplace_back();
        for (std::size_t k = 0; k < row.cells.size(); ++k)
            line.push_back(print(row.cells[k], table.columns[k], style.full));
        line.push_back(printable(row.note));
    }
    return rows;
}

std::string Column::heading() const {
    const std::string word = printable(name);
    if (unit.empty()) return word;
    return unit.find_first_of("/ ") == std::string::npos ? word + '/' + unit
                                                         : word + "/(" + unit + ')';
}

std::vector<Fields>& list(Heading& heading, std::string const& name) {
    for (auto& [known, fields] : heading.lists)
        if (known == name) return fields;
    return heading.lists.emplace_back(name, std::vector<Fields>()).second;
}

void write(Heading const& heading, Table const& table, Style const& style) {
    std::string text;
    if (style.format == Format::json) {
        text = to_json(heading, table);
    } else {
        if (style.heading)
            for (std::string const& line : heading_lines(heading)) text += "# " + line + '\n';
        const Table precise = as_precise(table, style);
        text += style.format == Format::csv ? to_csv(precise, style)
                : style.upright             ? to_upright_text(precise, style.full)
                                            : to_text(precise, style.full);
        if (style.heading)
            for (std::string const& line : heading.summary)
                text += "# " + printable(line) + '\n';
    }
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) return;
    const bool nobody_reads = errno == EPIPE;
    OutputRefused refused("standard output does not take the result");
    refused.nobody_reads = nobody_reads;
    throw refused;
}

}  // namespace cli
