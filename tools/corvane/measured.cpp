#include <tools/corvane/compare.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/measured.h>
#include <tools/corvane/open.h>

#include <corvane/phases/flash.h>
#include <corvane/phases/saturation.h>

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>

namespace cli {
namespace {
using corvane::Branch;
using corvane::EquilibriumFailure;
using corvane::Saturated;
using corvane::SaturationPoint;

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// Whether a column "x..." or "y..." is of the second component, whose complement is taken.
bool of_second(ColumnName const& column, MixtureFluid const& mixture, std::string const& path) {
    if (column.unit.empty() || column.name.size() > 1) return false;
    const std::string name = substance_name(mixture.eos, column.unit);
    for (int i : {0, 1})
        if (name == mixture.component(i)) return i == 1;
    throw Failure(fmt::format("{}: {} is not a component of the mixture", path, column.unit));
}

/// The solution at composition x0 nearest to what was measured: lowest, highest, and what is found
/// without a branch.
/// @throws EquilibriumFailure none
SaturationPoint nearest(MixtureFluid const& mixture, Saturated kind, bool at_T, double given,
                        double x0, double measured) {
    std::optional<SaturationPoint> best;
    std::optional<EquilibriumFailure> failure;
    for (Branch branch : {Branch::any, Branch::lower, Branch::upper}) try {
            corvane::SaturationOptions how;
            how.branch = branch;
            const SaturationPoint point =
                at_T ? saturation_T(*mixture.model, kind, given, binary(x0), how)
                     : saturation_p(*mixture.model, kind, given, binary(x0), how);
            const auto distance = [&](SaturationPoint const& s) {
                return std::fabs(std::log((at_T ? s.p : s.T) / measured));
            };
            if (!best || distance(point) < distance(*best)) best = point;
        } catch (EquilibriumFailure const& e) {
            failure = e;
        }
    if (!best) throw *failure;
    return *best;
}

/// Mole fractions of the first component in the phases nearer to x and y into which a mixture
/// half-way between them splits at p and T; nothing if it does not.
std::optional<std::pair<double, double>> split_around(MixtureFluid const& mixture, double p,
                                                      double T, double x, double y) {
    try {
        const auto phases = corvane::flash_pT(*mixture.model, p, T, binary(0.5 * (x + y))).phases;
        if (phases.size() < 2) return {};
        const double a = phases[0].x[0], b = phases[1].x[0];
        return (a < b) == (x < y) ? std::pair(a, b) : std::pair(b, a);
    } catch (EquilibriumFailure const&) {
        return {};
    }
}

/// The points that could not be compared, by reason.
using Reasons = std::map<std::string, int>;
}  // namespace

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

void Measured::read(MixtureFluid const& mixture, bool isotherms) {
    isotherms_ = isotherms;
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
        if (!member) continue;
        Conversion convert;
        if (column.name == "T" || column.name == "p") {
            const auto known = conversion(
                column.name == "T" ? Quantity::temperature : Quantity::pressure, column.unit, 0.0);
            if (!known)
                throw Failure(fmt::format("{}: column {}: unknown unit '{}'", path_, csv.header[k],
                                          column.unit));
            convert = *known;
        } else if (of_second(column, mixture, path_)) {
            convert = {-1.0, 1.0};
        }
        const auto values = read_column(csv, k, convert, path_);
        for (std::size_t row = 0; row < values.size(); ++row) points_[row].*member = values[row];
    }
    const auto any = [&](double MeasuredPoint::*member) {
        for (MeasuredPoint const& point : points_)
            if (std::isfinite(point.*member)) return true;
        return false;
    };
    if (!any(isotherms ? &MeasuredPoint::p : &MeasuredPoint::T) ||
        !(any(&MeasuredPoint::x) || any(&MeasuredPoint::y)))
        throw Failure(fmt::format("{}: no measured points: name columns like T/K, p/MPa, x_{}",
                                  path_, mixture.component(0)));
}

void Measured::compare(MixtureFluid const& mixture, std::vector<double> const& given,
                       Units const& units, Heading& heading) {
    const Quantity sought = isotherms_ ? Quantity::pressure : Quantity::temperature;
    const std::string symbol = isotherms_ ? "p" : "T";
    // Deviations in percent, of temperatures in K.
    const std::string unit = isotherms_ ? "%" : "K";
    const auto deviation = [&](double calculated, double measured) {
        return isotherms_ ? 100.0 * (calculated / measured - 1.0) : calculated - measured;
    };
    Deviations at_x, at_y, of_x, of_y;
    Reasons reasons;
    std::vector<Fields> list;
    for (std::size_t k = 0; k < points_.size(); ++k) {
        MeasuredPoint& m = points_[k];
        double fixed = isotherms_ ? m.T : m.p;
        const double measured = isotherms_ ? m.p : m.T;
        if (std::isnan(fixed) && given.size() == 1) fixed = given.front();
        for (double one : given)
            m.used |= std::fabs(fixed - one) <= (isotherms_ ? 0.1 : 5e-3 * one);
        Fields fields = {{"line", static_cast<long>(m.line)}};
        const auto put = [&](std::string const& name, double value) {
            if (std::isfinite(value)) fields.emplace_back(name, value);
        };
        put("T", units.from_library(Quantity::temperature, m.T));
        put("p", units.from_library(Quantity::pressure, m.p));
        put("x", m.x);
        put("y", m.y);
        const auto skip = [&](std::string const& why) {
            ++reasons[why];
            fields.emplace_back("not_compared", why);
        };
        const auto side = [&](Saturated kind, double x0, std::string const& suffix,
                              Deviations& deviations) {
            if (std::isnan(x0)) return;
            if (!(x0 >= 0.0 && x0 <= 1.0)) return skip("mole fraction not between 0 and 1");
            try {
                const SaturationPoint point =
                    nearest(mixture, kind, isotherms_, fixed, x0, measured);
                const double value = isotherms_ ? point.p : point.T;
                const double d = deviation(value, measured);
                put(symbol + suffix, units.from_library(sought, value));
                put("d_" + symbol + suffix, d);
                deviations.add(d, k);
            } catch (EquilibriumFailure const& e) {
                skip(fmt::format(
                    "{} point: {}", kind == Saturated::bubble ? "bubble" : "dew",
                    e.kind() == EquilibriumFailure::Kind::no_solution ? "no solution" : "gave up"));
            }
        };
        const auto compositions = [&] {
            if (!std::isfinite(m.x) || !std::isfinite(m.y)) return;
            const auto split = split_around(mixture, isotherms_ ? measured : fixed,
                                            isotherms_ ? fixed : measured, m.x, m.y);
            if (!split) return skip("x and y: does not split at the T and p measured");
            put("x_Tp", split->first);
            put("y_Tp", split->second);
            of_x.add(split->first - m.x, k);
            of_y.add(split->second - m.y, k);
        };
        if (!m.used)
            skip(isotherms_ ? "at another temperature" : "at another pressure");
        else if (!(measured > 0.0) || !(fixed > 0.0))
            skip("no T or p");
        else {
            side(Saturated::bubble, m.x, "_x", at_x);
            side(Saturated::dew, m.y, "_y", at_y);
            compositions();
        }
        list.push_back(std::move(fields));
    }
    cli::list(heading, "measured") = std::move(list);
    if (!source_.empty()) heading.remarks.push_back("measured: " + source_);
    const auto tell = [&](std::string const& what, Deviations const& d, std::string const& in) {
        if (d.count() > 0)
            heading.summary.push_back(fmt::format("measured: {}: {} in line {}, {} points", what,
                                                  d.text(in), points_[d.where()].line, d.count()));
    };
    tell(symbol + " at the x of the liquid", at_x, unit);
    tell(symbol + " at the y of the vapour", at_y, unit);
    tell("x at T and p", of_x, "");
    tell("y at T and p", of_y, "");
    for (auto const& [why, count] : reasons)
        heading.summary.push_back(fmt::format("measured: not compared: {} ({})", count, why));
}

void Measured::draw(Picture& picture, Units const& units) const {
    for (MeasuredPoint const& m : points_) {
        if (!m.used) continue;
        const double value = isotherms_ ? units.from_library(Quantity::pressure, m.p)
                                        : units.from_library(Quantity::temperature, m.T);
        picture.mark("measured, x", Symbol::measured, Ink::liquid, {m.x, value});
        picture.mark("measured, y", Symbol::measured_open, Ink::vapour, {m.y, value});
    }
}

}  // namespace cli
