// Reading of separated values, line by line.
#pragma once

#include <corvane/text/failure.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::text {

/// Rows of a file, which is never held as a whole. What separates fields is seen in the line of
/// column names: a tab if there is one, else a semicolon, else a comma; with tabs and semicolons
/// numbers may have a decimal comma. A byte-order mark, carriage returns and empty lines are
/// skipped; lines that begin with # are comments; fields in double quotes may hold separators and
/// doubled quotes.
class CsvReader {
  public:
    /// @param path  a file, a pipe, or "-" for standard input
    /// @param stop  asked when a signal comes while the file keeps us waiting (a pipe, a terminal):
    /// if true, it
    ///              ends there
    /// @throws Failure no such file, a folder, not readable, no text, or no line with column names
    explicit CsvReader(std::string const& path, bool (*stop)() = nullptr);

    std::vector<std::string> const& header() const { return header_; }
    /// Those met so far, without the #.
    std::vector<std::string> const& comments() const { return comments_; }
    char separator() const { return separator_; }

    /// The next row: trimmed fields, as many as there are columns; false at the end of the file.
    /// @throws Failure with the line: more fields than columns, an open quotation, a line above 1 MiB
    bool next(std::vector<std::string>& fields);
    /// Whether the next row may have to be waited for.
    bool waits() const;
    /// Of the row that was read last, counted from 1.
    int line() const { return line_; }

    /// A field with the decimal point.
    std::string decimal(std::string const& field) const;
    /// A number has been read with a decimal comma.
    bool decimal_comma() const { return decimal_comma_; }

  private:
    struct Closer {
        void operator()(FILE* f) const {
            if (f != stdin) std::fclose(f);
        }
    };
    bool fill();
    bool get_line();
    void split_line(std::vector<std::string>& fields);

    std::string path_, text_, block_;
    std::size_t used_ = 0;  ///< of the block
    bool (*stop_)();
    std::unique_ptr<FILE, Closer> file_;
    std::vector<std::string> header_, comments_;
    char separator_ = ',';
    mutable bool decimal_comma_ = false;
    int line_ = 0;
};

/// A column's name and unit: "rhoL/(kg/m3)", "T_K", "p [bar]".
struct ColumnName {
    explicit ColumnName(std::string const& heading);
    std::string name, unit;
};

struct CsvFile {
    std::vector<std::string> comments;           ///< lines that begin with #, without it
    std::vector<std::string> header;             ///< names of the columns
    std::vector<std::vector<std::string>> rows;  ///< as long as the header; decimal points
    std::vector<int> lines;                      ///< line number of each row
};

/// A file as a whole, of at most 64 MiB. @throws Failure as CsvReader
CsvFile read_csv(std::string const& path);

}  // namespace corvane::text
