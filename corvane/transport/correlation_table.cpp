#include <corvane/core/errors.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/transport/correlation_table.h>
#include <corvane/transport/rows.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>

namespace corvane::inline detail {
namespace {

using Form = Correlation::Form;
struct NamedForm {
    std::string_view name;
    Form form;
    std::size_t least, most;  // figures
};
constexpr std::array<NamedForm, 11> kForms = {{{"polynomial", Form::polynomial, 1, 5},
                                               {"perry_liquid", Form::perry_liquid, 5, 5},
                                               {"perry_gas", Form::perry_gas, 4, 4},
                                               {"ppds_liquid", Form::ppds_liquid, 5, 5},
                                               {"vogel", Form::vogel, 3, 3},
                                               {"andrade", Form::andrade, 2, 2},
                                               {"power", Form::power, 2, 2},
                                               {"chemsep_16", Form::chemsep_16, 5, 5},
                                               {"tension_sum", Form::tension_sum, 2, 6},
                                               {"tension_ppds", Form::tension_ppds, 5, 5},
                                               {"tension_powers", Form::tension_powers, 3, 3}}};

double polynomial(std::vector<double> const& c, double x) {
    double sum = 0.0;
    for (std::size_t k = c.size(); k-- > 0;) sum = sum * x + c[k];
    return sum;
}

double tension(Correlation const& f, double T) {
    auto const& c = f.c;
    const double Tr = T / f.Tc, x = 1.0 - Tr;
    if (!(x > 0.0)) return 0.0;
    if (f.form == Form::tension_ppds)
        return c[0] * std::pow(x, c[1] + Tr * (c[2] + Tr * (c[3] + Tr * c[4])));
    if (f.form == Form::tension_powers) return std::pow(x, 1.25) * (c[0] + x * (c[1] + x * c[2]));
    double sum = 0.0;
    for (std::size_t k = 0; k + 1 < c.size(); k += 2) sum += c[k] * std::pow(x, c[k + 1]);
    return sum;
}

/// name, form, Tmin, Tmax, Tc, source, figures apart by blanks; "-" for what is not known.
Correlation read_row(std::vector<std::string> const& field,
                     std::map<std::string, std::string> const& sources, std::string const& where) {
    if (field.size() != 7) throw OpenFailure(where + "seven columns are needed");
    Correlation row;
    std::size_t least = 1, most = 0;
    for (NamedForm const& known : kForms)
        if (known.name == field[1]) row.form = known.form, least = known.least, most = known.most;
    if (most == 0) throw OpenFailure(where + "unknown form '" + clipped(field[1]) + "'");
    const auto value = [&](std::size_t k) {
        const auto x = to_number(field[k]);
        if (!x && field[k] != "-")
            throw OpenFailure(where + "'" + clipped(field[k]) + "' is not a number");
        return x.value_or(std::numeric_limits<double>::quiet_NaN());
    };
    row.Tmin = value(2), row.Tmax = value(3), row.Tc = value(4);
    const auto source = sources.find(field[5]);
    row.source = source == sources.end() ? field[5] : source->second;
    for (std::string const& word : split(field[6], ' ')) {
        const auto x = to_number(word);
        if (!x) throw OpenFailure(where + "'" + clipped(word) + "' is not a number");
        row.c.push_back(*x);
    }
    if (row.c.size() < least || row.c.size() > most)
        throw OpenFailure(where + "the form takes another number of figures");
    if (row.form >= Form::tension_sum && !(row.Tc > 0.0))
        throw OpenFailure(where + "a surface tension needs its critical temperature");
    return row;
}

}  // namespace

double Correlation::operator()(double T) const {
    switch (form) {
        case Form::polynomial:
            return polynomial(c, T);
        case Form::perry_liquid:
            return std::exp(c[0] + c[1] / T + c[2] * std::log(T) +
                            (c[3] == 0.0 ? 0.0 : c[3] * std::pow(T, c[4])));
        case Form::perry_gas:
            return c[0] * std::pow(T, c[1]) / (1.0 + (c[2] + c[3] / T) / T);
        case Form::ppds_liquid: {
            const double u = (c[2] - T) / (T - c[3]), third = std::cbrt(u);
            return c[4] * std::exp(third * (c[0] + c[1] * u));
        }
        case Form::vogel:
            return 1e-3 * std::pow(10.0, c[0] + c[1] / (c[2] - T));
        case Form::andrade:
            return std::pow(10.0, c[0] + c[1] / T);
        case Form::power:
            return c[0] * std::pow(T, c[1]);
        case Form::chemsep_16:
            return c[0] + std::exp(c[1] / T + c[2] + T * (c[3] + T * c[4]));
        default:
            return tension(*this, T);
    }
}

std::vector<Correlation> correlations(DataHome const& home, std::string const& table,
                                      std::string const& substance) {
    const auto [path, file] = open_table(home, table);
    if (!file) return {};
    std::vector<Correlation> found;
    std::map<std::string, std::string> sources;  // lines "# key text"
    const std::string wanted = substance + '\t';
    char line[4096];
    for (int number = 1; std::fgets(line, sizeof line, file.get()); ++number) {
        if (line[0] == '#') {
            const std::string text = trimmed(line + 1);
            const std::size_t blank = text.find(' ');
            if (blank != std::string::npos) sources[text.substr(0, blank)] = text.substr(blank + 1);
        } else if (std::string_view(line).rfind(wanted, 0) == 0) {
            found.push_back(read_row(split(trimmed(line), '\t'), sources,
                                     path + ":" + std::to_string(number) + ": "));
        }
    }
    return found;
}

}  // namespace corvane::inline detail
