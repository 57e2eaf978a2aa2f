// Tables of the data tree with a row for a substance.
#pragma once

#include <corvane/catalogue/home.h>
#include <corvane/core/files.h>

#include <optional>
#include <string>
#include <vector>

namespace corvane::inline detail {

/// "<home>/CorvaneS/transport/<table>.tsv"; file is null where there is none.
struct TableFile {
    std::string path;
    File file;
};
TableFile open_table(DataHome const& home, std::string const& table);

/// The first `numbers` columns after the name in the row of a substance in the table; nothing where there is no file or no row. @throws OpenFailure a row of other than `columns` columns, or whose
/// numbers are none
std::optional<std::vector<double>> row_of(DataHome const& home, std::string const& table,
                                          std::string const& substance, std::size_t columns,
                                          std::size_t numbers);

}  // namespace corvane::inline detail
