#include <corvane/catalogue/home.h>
#include <corvane/core/errors.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/transport/figures.h>

#include <cmath>

namespace corvane::inline detail {

Figures::Figures(std::string const& path) : path_(path) {
    constexpr std::size_t kLargest = 1 << 20;
    std::string content;
    try {
        const File file = open_file(path);
        char buffer[4096];
        for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file.get())) > 0;) {
            content.append(buffer, n);
            if (content.size() > kLargest) throw OpenFailure(path + ": larger than 1 MiB", path);
        }
    } catch (ThException const&) {
        throw OpenFailure(path + ": cannot be read", path);
    }
    std::string_view rest = content;
    for (int number = 1; !rest.empty(); ++number) {
        const std::string_view line = next_part(rest, '\n');
        const std::size_t colon = line.find(':');
        if (line.empty() || line.front() == '#' || colon == std::string_view::npos) continue;
        lines_.emplace(trimmed(line.substr(0, colon)),
                       Line{trimmed(line.substr(colon + 1)), number});
    }
}

void Figures::fail(std::string const& name, std::string const& what) const {
    const auto line = lines_.find(name);
    const int number = line == lines_.end() ? 0 : line->second.number;
    throw OpenFailure(
        path_ + (number > 0 ? ":" + std::to_string(number) : "") + ": " + name + ": " + what, path_,
        number);
}

std::string const& Figures::text(std::string const& name) const {
    const auto line = lines_.find(name);
    if (line == lines_.end()) fail(name, "the line is missing");
    return line->second.text;
}

std::vector<double> Figures::numbers(std::string const& name, std::size_t count) const {
    std::vector<double> result;
    std::string_view rest = text(name);
    while (!rest.empty()) {
        const std::string_view word = next_part(rest, ' ');
        if (word.empty()) continue;
        const auto x = to_number(word);
        if (!x) fail(name, "'" + clipped(word) + "' is not a number");
        result.push_back(*x);
    }
    if (count > 0 && result.size() != count)
        fail(name,
             std::to_string(count) + " numbers are needed, not " + std::to_string(result.size()));
    return result;
}

double Figures::reducing_density(std::string const& part, double M) const {
    const std::string name = part + ".rho_red", mass = name + "_mass";
    return has(mass) ? number(mass) / (1e-3 * M) : number(name);
}

Powers::Powers(Figures const& figures, std::string const& a_name, std::string const& t_name)
    : a(figures.numbers(a_name)), t(figures.numbers(t_name, a.size())) {}

double Powers::operator()(double x) const {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * std::pow(x, t[i]);
    return sum;
}

}  // namespace corvane::inline detail
