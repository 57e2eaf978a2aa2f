#include <tools/corvane/diagrams/measured.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <utility>

namespace cli {
namespace {
constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// Whether a column "x..." or "y..." is of the second component, whose complement is taken.
bool of_second(ColumnName const& column, MixtureFluid const& mixture, std::string const& path) {
    if (column.unit.empty() || column.name.size() > 1) return false;
    if (const int i = mixture.index(column.unit); i >= 0) return i == 1;
    throw Failure(fmt::format("{}: {} is not a component of the mixture", path, column.unit));
}

}  // namespace

bool same_group(bool isotherms, double one, double other) {
    return std::fabs(one - other) <= (isotherms ? 0.1 : 5e-3 * other);
}

void Measured::add_to(Command& command) {
    command.value("--data", path_,
                  "measured points to compare with: a CSV file with columns such as T/K, p/MPa, "
                  "x_methane, y_methane",
                  {.type = "FILE"});
}

void Measured::begin() {
    if (path_.empty()) return;
    std::error_code error;
    if (std::filesystem::is_directory(path_, error))
        throw Misuse(fmt::format(
            "--data {} is a folder: here it names a file of measured points; the data home is "
            "--home",
            path_));
    path_ = std::filesystem::absolute(path_).string();
}

void Measured::read(MixtureFluid const& mixture, MeasuredKind kind, Units const& units) {
    kind_ = kind;
    const CsvFile csv = read_csv(path_);
    if (!csv.comments.empty()) source_ = csv.comments.front();
    for (std::size_t row = 0; row < csv.rows.size(); ++row)
        points_.push_back({kMissing, kMissing, kMissing, kMissing, csv.lines[row]});
    for (std::size_t k = 0; k < csv.header.size(); ++k) {
        const ColumnName column(csv.header[k]);
        double MeasuredPoint::*member =
            column.name == "T"                          ? &MeasuredPoint::T
            : column.name == "p"                        ? &MeasuredPoint::p
            : column.name == "x" || column.name == "x1" ? &MeasuredPoint::x
            : column.name == "y" || column.name == "y1" ? &MeasuredPoint::y
                                                        : nullptr;
        const bool fraction = column.name != "T" && column.name != "p";
        if (!member || (fraction && mixture.size() != 2)) continue;
        Conversion convert;
        if (!fraction) {
            convert = units.of_column(column.name == "T" ? Quantity::temperature : Quantity::pressure,
                                      column.unit, path_, csv.header[k]);
        } else if (of_second(column, mixture, path_)) {
            convert = {-1.0, 1.0};
        }
        const auto values = read_column(csv, k, convert, path_);
        for (std::size_t row = 0; row < values.size(); ++row) points_[row].*member = values[row];
    }
    const auto any = [&](double MeasuredPoint::*member) {
        return std::any_of(points_.begin(), points_.end(), [&](MeasuredPoint const& point) {
            return std::isfinite(point.*member);
        });
    };
    const bool binary = kind != MeasuredKind::composition;
    const bool found = (kind == MeasuredKind::isotherms || any(&MeasuredPoint::T)) &&
                       (kind == MeasuredKind::isobars || any(&MeasuredPoint::p)) &&
                       (!binary || any(&MeasuredPoint::x) ||
                        (kind != MeasuredKind::critical && any(&MeasuredPoint::y)));
    if (!found)
        throw Failure(fmt::format("{}: no measured points: name columns like T/K, p/MPa{}", path_,
                                  binary ? fmt::format(", x_{}", mixture.component(0)) : ""));
}

std::vector<double> Measured::groups() const {
    const bool isotherms = kind_ == MeasuredKind::isotherms;
    std::vector<double> all;
    for (MeasuredPoint const& m : points_)
        if (const double value = isotherms ? m.T : m.p; value > 0.0) all.push_back(value);
    std::sort(all.begin(), all.end());
    std::vector<double> result;
    for (std::size_t k = 0, first = 0; k < all.size(); ++k) {
        if (k + 1 < all.size() && same_group(isotherms, all[k + 1], all[first])) continue;
        double sum = 0.0;
        for (std::size_t j = first; j <= k; ++j) sum += all[j] - all[first];
        result.push_back(all[first] + sum / static_cast<double>(k + 1 - first));
        first = k + 1;
    }
    return result;
}

void Measured::draw(Picture& picture, Units const& units) const {
    for (MeasuredPoint const& m : points_) {
        if (!m.used) continue;
        const double T = units.from_library(Quantity::temperature, m.T),
                     p = units.from_library(Quantity::pressure, m.p);
        if (kind_ == MeasuredKind::critical || kind_ == MeasuredKind::composition) {
            picture.mark("measured", Symbol::measured_open, Ink::black, {T, p});
            continue;
        }
        const double value = kind_ == MeasuredKind::isotherms ? p : T;
        picture.mark("measured, x", Symbol::measured, Ink::liquid, {m.x, value});
        picture.mark("measured, y", Symbol::measured_open, Ink::vapour, {m.y, value});
    }
}

void Comparison::add(MeasuredPoint const& point) {
    list_.push_back({{"line", static_cast<long>(point.line)}});
    lines_.push_back(point.line);
    put("T", units_.from_library(Quantity::temperature, point.T));
    put("p", units_.from_library(Quantity::pressure, point.p));
    put("x", point.x);
    put("y", point.y);
}

void Comparison::put(std::string const& name, double value) {
    if (std::isfinite(value)) list_.back().emplace_back(name, value);
}

void Comparison::skip(std::string const& why) {
    ++reasons_[why];
    list_.back().emplace_back("not_compared", why);
}

void Comparison::deviation(std::string const& words, std::string const& unit, double value) {
    auto told = std::find_if(told_.begin(), told_.end(),
                             [&](Told const& known) { return known.words == words; });
    if (told == told_.end()) told = told_.insert(told, {words, unit, {}});
    told->deviations.add(value, list_.size() - 1);
}

void Comparison::value(Quantity quantity, std::string const& suffix, std::string const& words,
                       double calculated, double measured) {
    const bool difference = quantity == Quantity::temperature;
    const std::string symbol = difference ? "T" : "p";
    const double d = difference ? calculated - measured : 100.0 * (calculated / measured - 1.0);
    put(symbol + suffix, units_.from_library(quantity, calculated));
    put("d_" + symbol + suffix, d);
    deviation(symbol + words, difference ? "K" : "%", d);
}

void Comparison::fraction(std::string const& symbol, double calculated, double measured) {
    put(symbol + "_Tp", calculated);
    deviation(symbol + " at T and p", "", calculated - measured);
}

void Comparison::tie_end(std::string const& name, double calculated, double measured) {
    put("measured_" + name, measured);
    put(name, calculated);
    deviation(name, "", calculated - measured);
}

void Comparison::finish(std::string const& source, Heading& heading) {
    list(heading, "measured") = std::move(list_);
    if (!source.empty()) heading.remarks.push_back("measured: " + source);
    for (auto const& [words, unit, deviations] : told_)
        heading.summary.push_back(fmt::format("measured: {}: {} in line {}, {} points", words,
                                              deviations.text(unit), lines_[deviations.where()],
                                              deviations.count()));
    for (auto const& [why, count] : reasons_)
        heading.summary.push_back(fmt::format("measured: not compared: {} ({})", count, why));
}

}  // namespace cli
