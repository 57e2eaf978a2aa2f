// Reading of separated values: the library's.
#pragma once

#include <corvane/text/csv.h>

namespace cli {

using corvane::text::ColumnName;
using corvane::text::CsvFile;
using corvane::text::CsvReader;
using corvane::text::read_csv;

}  // namespace cli
