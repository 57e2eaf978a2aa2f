#include <tools/corvane/input/printed_values.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>
#include <tools/corvane/text/text.h>

#include <corvane/text/csv.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace cli {
namespace {
using Of = corvane::PrintedValue::Of;

constexpr std::array<std::pair<char const*, Of>, 6> kQuantities{{{"Ar", Of::Ar},
                                                                 {"Z", Of::Z},
                                                                 {"p", Of::pressure},
                                                                 {"ps", Of::saturation_pressure},
                                                                 {"rhoL", Of::liquid_density},
                                                                 {"rhoV", Of::vapour_density}}};

std::vector<std::string> parts(std::string const& text, char separator) {
    std::vector<std::string> all(1);
    for (char c : text)
        if (c == separator)
            all.emplace_back();
        else
            all.back() += c;
    return all;
}

/// The fields of a row by their titles.
class TitledRow {
  public:
    TitledRow(std::vector<std::string> const& header, std::vector<std::string> const& fields)
        : header_(header), fields_(fields) {}
    bool has(char const* title) const {
        return std::find(header_.begin(), header_.end(), title) != header_.end();
    }
    std::string const& operator()(char const* title) const {
        const auto at = std::find(header_.begin(), header_.end(), title);
        if (at == header_.end()) throw Failure(fmt::format("no column {}", title));
        return fields_[static_cast<std::size_t>(at - header_.begin())];
    }
    double operator()(char const* title, double otherwise) const {
        std::string const& text = (*this)(title);
        return text.empty() ? otherwise : number(text, title);
    }

  private:
    std::vector<std::string> const &header_, &fields_;
};

int whole(double value, char const* what) {
    if (!(value >= 0.0 && value < 1e6 && value == std::floor(value)))
        throw Failure(fmt::format("{} must be a whole number", what));
    return static_cast<int>(value);
}

/// "8=1.6 9=2.4", "8@0.0=1.6".
std::vector<corvane::PrintedValue::Parameter> read_parameters(std::string const& text,
                                                              bool mixture) {
    std::vector<corvane::PrintedValue::Parameter> all;
    for (std::string const& word : parts(text, ' ')) {
        if (word.empty()) continue;
        const auto sides = parts(word, '='), left = parts(sides[0], '@');
        const auto pair = left.size() == 2 ? parts(left[1], '.') : std::vector<std::string>();
        if (sides.size() != 2 || pair.size() != (mixture ? 2 : 0) ||
            left.size() != (mixture ? 2 : 1))
            throw Failure(fmt::format("not a parameter: {}", clipped(word)));
        corvane::PrintedValue::Parameter p;
        p.number = whole(number(left[0], "parameters"), "the number of a parameter");
        if (mixture) {
            p.i = whole(number(pair[0], "parameters"), "the number of a component");
            p.j = whole(number(pair[1], "parameters"), "the number of a component");
        }
        p.value = number(sides[1], "parameters");
        all.push_back(p);
    }
    return all;
}

void read_quantity(std::string const& text, corvane::PrintedValue& v) {
    constexpr std::string_view kMixpar = "mixpar";
    const auto quantity = std::find_if(kQuantities.begin(), kQuantities.end(),
                                       [&](auto const& q) { return text == q.first; });
    if (quantity != kQuantities.end()) {
        v.of = quantity->second;
    } else if (text.rfind(kMixpar, 0) == 0) {
        v.of = Of::mixture_parameter;
        v.number = whole(number(text.substr(kMixpar.size()), "quantity"), "the number of mixpar");
    } else {
        throw Failure(fmt::format("no quantity {}; there are Ar, Z, p, ps, rhoL, rhoV, mixpar0 …",
                                  clipped(text)));
    }
}

PrintedRow read_row(TitledRow const& row) {
    PrintedRow read;
    read.substances = parts(row("substances"), '+');
    read.set = whole(row("set", 1.0), "set");
    corvane::PrintedValue& v = read.value;
    if (!row("x").empty())
        for (std::string const& x : parts(row("x"), ',')) v.x.push_back(number(x, "x"));
    if (v.x.size() != (read.substances.size() > 1 ? read.substances.size() : 0))
        throw Failure("x must have a number for each substance of a mixture");
    read_quantity(row("quantity"), v);
    const bool state = v.of != Of::mixture_parameter;
    v.T = state ? number(row("T"), "T") : row("T", 0.0);
    v.rho = row("rho", 0.0);
    v.value = number(row("value"), "value");
    v.within = number(row("within"), "within");
    v.gas_constant = row("R", 0.0);
    v.source = row("source");
    if (row.has("parameters"))
        v.parameters = read_parameters(row("parameters"), read.substances.size() > 1);
    const bool needs_rho = v.of == Of::Ar || v.of == Of::Z || v.of == Of::pressure;
    if ((state && !(v.T > 0.0)) || !(v.within > 0.0) || (needs_rho && !(v.rho > 0.0)))
        throw Failure("T and within must be positive, and rho where the state is not saturated");
    return read;
}
}  // namespace

std::vector<PrintedRow> read_printed_values(std::string const& path) {
    const corvane::text::CsvFile file = corvane::text::read_csv(path);
    std::vector<PrintedRow> all;
    for (std::size_t k = 0; k < file.rows.size(); ++k) try {
            all.push_back(read_row({file.header, file.rows[k]}));
        } catch (std::runtime_error const& e) {
            throw Failure(fmt::format("{}:{}: {}", path, file.lines[k], e.what()));
        }
    return all;
}

}  // namespace cli
