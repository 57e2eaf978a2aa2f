#include <tools/corvane/results/compare.h>
#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <cmath>
#include <limits>

namespace cli {
namespace {
constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

}  // namespace

std::vector<double> read_column(CsvFile const& csv, std::size_t k, Conversion const& convert,
                                std::string const& path) {
    std::vector<double> values;
    for (std::size_t row = 0; row < csv.rows.size(); ++row) {
        std::string const& field = csv.rows[row][k];
        const auto x = to_number(field);
        if (!x && !field.empty() && field != "-")
            throw Failure(fmt::format("{}:{}: '{}' is not a number", path, csv.lines[row], field));
        values.push_back(x ? convert.to_library(*x) : kMissing);
    }
    return values;
}

void Deviations::add(double deviation, std::size_t where) {
    ++count_;
    sum_ += std::fabs(deviation);
    if (std::fabs(deviation) >= std::fabs(largest_)) {
        largest_ = deviation;
        where_ = where;
    }
}

std::string Deviations::text(std::string const& unit) const {
    const std::string in = unit.empty() ? "" : " " + unit;
    return fmt::format("mean deviation {:.3g}{}, largest {:.3g}{}", sum_ / count_, in, largest_,
                       in);
}

Published::Published(std::string const& path, std::map<std::string, Quantity> const& known,
                     Units const& units) {
    const CsvFile csv = read_csv(path);
    if (!csv.comments.empty()) source_ = csv.comments.front();
    for (std::size_t k = 0; k < csv.header.size(); ++k) {
        const ColumnName column(csv.header[k]);
        const auto found = known.find(column.name);
        if (found == known.end()) continue;
        const Conversion convert = units.of_column(found->second, column.unit, path, csv.header[k]);
        columns_[column.name] = read_column(csv, k, convert, path);
    }
    if (columns_.empty() || csv.rows.empty())
        throw Failure(fmt::format("{}: no published values: name columns like T/K, p/MPa", path));
}

std::vector<std::string> Published::lay_beside(Table& table, std::string const& given,
                                               std::map<std::string, Quantity> const& known,
                                               Units const& units) const {
    std::vector<std::string> summary;
    std::size_t given_at = 0;
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
        const Column calculated = table.columns[k];
        if (calculated.name == given) given_at = k;
        if (calculated.name == given || !has(calculated.name)) continue;
        const Quantity quantity = known.at(calculated.name);
        const bool difference = quantity == Quantity::temperature;  // its zero may be anywhere
        const std::string unit = difference ? std::string("K") : std::string("%");
        const auto at = static_cast<std::ptrdiff_t>(k) + 1;
        table.columns.insert(
            table.columns.begin() + at,
            {{calculated.name + "_pub", calculated.unit, "published value", true, 7},
             {"d_" + calculated.name, unit,
              difference ? "calculated - published" : "deviation: calculated/published - 1", false,
              4}});
        Deviations deviations;
        for (std::size_t row = 0; row < table.rows.size(); ++row) {
            const double value = units.from_library(quantity, column(calculated.name)[row]);
            auto& cells = table.rows[row].cells;
            const double* x = std::get_if<double>(&cells[k]);
            const double deviation = !x           ? kMissing
                                     : difference ? *x - value
                                                  : 100.0 * (*x / value - 1.0);
            if (std::isfinite(deviation)) deviations.add(deviation, row);
            cells.insert(cells.begin() + at, {Cell(value), Cell(deviation)});
        }
        if (deviations.count() > 0)
            summary.push_back(fmt::format(
                "{}: {} at {} = {:.10g}, {} points", calculated.name, deviations.text(unit), given,
                std::get<double>(table.rows[deviations.where()].cells[given_at]),
                deviations.count()));
    }
    return summary;
}

}  // namespace cli
