// The one model behind every kind of output: rows of cells under named columns, with a heading that
// says where the numbers come from.
#pragma once

#include <tools/corvane/text/errors.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace cli {

struct Column {
    std::string name;
    std::string unit;             ///< empty: none
    std::string text;             ///< what it is, in words
    bool given = false;           ///< numbers are input: printed as short as they were given
    int digits = 7;               ///< significant digits of other numbers
    bool detail = false;          ///< in CSV and JSON only
    std::string heading() const;  ///< "T/K", "rho/(mol/cm3)"
};

/// Nothing (not known, or failed), a number, a count or a word.
using Cell = std::variant<std::monostate, double, long, std::string>;

struct Row {
    std::vector<Cell> cells;
    std::string note;  ///< why a number is missing or to be read with care
};

struct Table {
    std::vector<Column> columns;
    std::vector<Row> rows;
};

using Fields = std::vector<std::pair<std::string, Cell>>;

struct Heading {
    std::string command;
    /// Equation, substance, parameter set …: named values for the first line and for JSON.
    Fields fields;
    Fields composition;                ///< mole fractions by component
    std::vector<std::string> remarks;  ///< further lines
    std::vector<std::string> summary;  ///< lines after the rows
    /// What the summary says, by name and in full: arrays in JSON alone.
    std::vector<std::pair<std::string, std::vector<Fields>>> lists;
};

/// The list of that name, which is added if it is not there.
std::vector<Fields>& list(Heading& heading, std::string const& name);

enum class Format { text, csv, json };

struct Style {
    Format format = Format::text;
    bool full = false;     ///< 17 digits instead of 7
    int precision = 0;     ///< significant digits of text and CSV; 0: those of the columns
    bool upright = false;  ///< text: a line per column instead of a line per row
    bool heading = true;   ///< text and CSV: the lines that begin with #
};

/// Standard output does not take the result.
struct OutputRefused : Failure {
    using Failure::Failure;
    bool nobody_reads = false;  ///< it is a pipe whose reader has gone, and SIGPIPE is ignored
};

/// Writes to standard output. @throws OutputRefused
void write(Heading const& heading, Table const& table, Style const& style);

/// The lines of the text form before its table, without "# ".
std::vector<std::string> heading_lines(Heading const& heading);
/// The cells as in CSV, row by row; the last of a row is its note.
std::vector<std::vector<std::string>> printed(Table const& table, Style const& style);

std::string to_json(Heading const& heading, Table const& table);

}  // namespace cli
