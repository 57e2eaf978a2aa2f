// Reading of comma-separated values.
#pragma once

#include <string>
#include <vector>

namespace cli {

struct CsvFile {
    std::vector<std::string> comments;           ///< lines that begin with #, without it
    std::vector<std::string> header;             ///< names of the columns
    std::vector<std::vector<std::string>> rows;  ///< as long as the header; trimmed
    std::vector<int> lines;                      ///< line number of each row
};

/// Reads a file: fields in double quotes may hold commas and doubled quotes; empty lines are
/// skipped; short rows are filled up. @throws Failure as read_lines; no header, a row with more
/// fields than the header, or an open quotation, with its line
CsvFile read_csv(std::string const& path);

}  // namespace cli
