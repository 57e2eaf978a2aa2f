#include <tools/corvane/text/numbers.h>

#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <cmath>

namespace cli {
namespace {
constexpr int kMostPoints = 100000;

void append_range(std::vector<double>& values, std::vector<std::string> const& parts,
                  char const* option) {
    const double first = number(parts[0], option), last = number(parts[1], option),
                 step = number(parts[2], option);
    const double count = std::floor((last - first) / step + 1e-9) + 1.0;  // 1e-9: rounded steps
    if (!(count >= 1.0))
        throw Misuse(fmt::format("{}: the step {} does not lead from {} to {}", option, parts[2],
                                 parts[0], parts[1]));
    if (count + static_cast<double>(values.size()) > kMostPoints)
        throw Misuse(fmt::format("{}: more than {} points", option, kMostPoints));
    for (int k = 0; k < static_cast<int>(count); ++k) values.push_back(first + k * step);
}
/// So many equal steps from the first value to the last, both included.
void append_steps(std::vector<double>& values, std::string const& from, std::string const& to,
                  std::string const& steps, char const* option) {
    const double first = number(from, option), last = number(to, option),
                 count = number(steps, option);
    if (!(count >= 1.0) || count != std::floor(count))
        throw Misuse(fmt::format("{}: '{}' is not a number of steps", option, clipped(steps)));
    if (count + static_cast<double>(values.size()) >= kMostPoints)
        throw Misuse(fmt::format("{}: more than {} points", option, kMostPoints));
    for (int k = 0; k < static_cast<int>(count); ++k)
        values.push_back(first + (last - first) * (k / count));
    values.push_back(last);
}
}  // namespace

double number(std::string const& text, char const* option) {
    if (const auto x = to_number(text)) return *x;
    const bool several = text.find_first_of(",:") != std::string::npos;
    throw Misuse(fmt::format("{}: '{}' is not {}", clipped(option), clipped(text),
                             several ? "one number; here neither lists nor ranges are taken"
                                     : "a number"));
}

std::vector<double> points(std::string const& text, char const* option) {
    std::vector<double> values;
    for (std::string const& item : split(text, ',')) {
        const auto parts = split(item, ':');
        const std::size_t slash = parts.back().find('/');
        if (parts.size() == 1)
            values.push_back(number(item, option));
        else if (parts.size() == 2 && slash != std::string::npos)
            append_steps(values, parts[0], parts[1].substr(0, slash), parts[1].substr(slash + 1),
                         option);
        else if (parts.size() == 3)
            append_range(values, parts, option);
        else
            throw Misuse(
                fmt::format("{}: '{}' is not a range first:last:step or first:last/steps", option, clipped(item)));
    }
    return values;
}

std::string shortest(double x) {
    return fmt::format("{}", x);
}

namespace {
double above_zero(double given, char const* option, Quantity quantity, Units const& units) {
    const double x = units.to_library(quantity, given);
    if (!(x > 0.0) || !std::isfinite(x))
        throw Misuse(fmt::format("{} {} {} is not {}", option, shortest(given),
                                 units.name(quantity), x > 0.0 ? "finite" : "above zero"));
    return x;
}
}  // namespace

std::vector<double> positive_points(std::string const& text, char const* option, Quantity quantity,
                                    Units const& units) {
    std::vector<double> values = points(text, option);
    for (double& x : values) x = above_zero(x, option, quantity, units);
    return values;
}

double positive(std::string const& text, char const* option, Quantity quantity,
                Units const& units) {
    return above_zero(number(text, option), option, quantity, units);
}

}  // namespace cli
