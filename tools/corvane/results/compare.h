// Published values beside calculated ones: --compare FILE.csv.
//
// The file's first line names the columns as in the output: "T/K,p/MPa,rhoL/(kg/m3)"; "T_K" and
// "p [bar]" are understood, too. Columns of other names are ignored. Lines that begin with # are
// comments; the first one is shown as the source.
#pragma once

#include <tools/corvane/output/table.h>
#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/units.h>

#include <map>
#include <string>
#include <vector>

namespace cli {

/// Column k in library units; NaN where a field is empty or "-". @throws Failure a bad number, with
/// its line
std::vector<double> read_column(CsvFile const& csv, std::size_t k, Conversion const& convert,
                                std::string const& path);

/// Mean of the absolute deviations, and the largest.
class Deviations {
  public:
    void add(double deviation, std::size_t where);
    int count() const { return count_; }
    std::size_t where() const { return where_; }  ///< of the largest
    /// "mean deviation 0.1 %, largest -0.3 %"
    std::string text(std::string const& unit) const;

  private:
    int count_ = 0;
    double sum_ = 0.0, largest_ = 0.0;
    std::size_t where_ = 0;
};

class Published {
  public:
    /// Reads the columns whose names are in `known`, those that name no unit in the units chosen.
    /// @throws Failure no file, no column, an unknown unit or a bad number, with its line
    Published(std::string const& path, std::map<std::string, Quantity> const& known, Units const& units);

    bool has(std::string const& name) const { return columns_.count(name) > 0; }
    /// Library units; NaN where a field is empty.
    std::vector<double> const& column(std::string const& name) const { return columns_.at(name); }
    std::string const& source() const { return source_; }

    /// Adds, behind every column of the table that was published, other than the given one, the
    /// published value and the deviation: calculated/published − 1 in percent, for temperatures
    /// the difference. Row k of the table belongs to row k here. Returns a line of summary per
    /// column.
    std::vector<std::string> lay_beside(Table& table, std::string const& given,
                                        std::map<std::string, Quantity> const& known,
                                        Units const& units) const;

  private:
    std::map<std::string, std::vector<double>> columns_;
    std::string source_;
};

}  // namespace cli
