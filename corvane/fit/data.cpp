#include <corvane/catalogue/open.h>
#include <corvane/catalogue/substances.h>
#include <corvane/core/text.h>
#include <corvane/fit/data.h>
#include <corvane/text/csv.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace corvane::fit {
namespace {
using text::Conversion;
using text::Failure;
using text::Quantity;

struct Known {
    Observable what;
    char const* name;
    Quantity quantity;
};
constexpr Known kKnown[] = {
    {Observable::T, "T", Quantity::temperature},
    {Observable::p, "p", Quantity::pressure},
    {Observable::rho, "rho", Quantity::density},
    {Observable::rhoL, "rhoL", Quantity::density},
    {Observable::rhoV, "rhoV", Quantity::density},
    {Observable::hvap, "hvap", Quantity::energy},
    {Observable::cp, "cp", Quantity::entropy},
    {Observable::w, "w", Quantity::speed},
    {Observable::JT, "JT", Quantity::joule_thomson},
    {Observable::B, "B", Quantity::volume},
    {Observable::hE, "hE", Quantity::energy},
    {Observable::vE, "vE", Quantity::volume},
    {Observable::x, "x", Quantity::ratio},
    {Observable::y, "y", Quantity::ratio},
    {Observable::x2, "x2", Quantity::ratio},
    {Observable::gamma, "gamma", Quantity::ratio},
    {Observable::gammainf, "gammainf", Quantity::ratio},
    {Observable::H, "H", Quantity::pressure},
    {Observable::solubility, "solubility", Quantity::ratio},
};
/// Mass fractions, by the mole fractions that they become.
constexpr struct {
    char const* name;
    Observable what;
} kMassFractions[] = {{"w", Observable::x}, {"wy", Observable::y}, {"w2", Observable::x2}};
constexpr std::array kKinds{"saturation",  "state",  "virial",        "critical",
                            "bubble",      "dew",    "liquid_liquid", "azeotrope",
                            "three_phase", "excess", "dilute",        "solubility"};

Known const& known(Observable what) {
    return kKnown[static_cast<std::size_t>(what)];
}

/// What the model answers at a point of a kind.
std::vector<Observable> compared(PointKind kind) {
    using enum Observable;
    switch (kind) {
        case PointKind::saturation:
            return {p, rhoL, rhoV, hvap};
        case PointKind::state:
            return {rho, cp, w, JT};
        case PointKind::virial:
            return {B};
        case PointKind::critical:
            return {T, p, rho};
        case PointKind::bubble:
            return {p, y};
        case PointKind::dew:
        case PointKind::azeotrope:
            return {p, x};
        case PointKind::liquid_liquid:
            return {x, x2};
        case PointKind::three_phase:
            return {p, x, x2, y};
        case PointKind::excess:
            return {hE, vE, gamma};
        case PointKind::dilute:
            return {H, gammainf};
        case PointKind::solubility:
            return {solubility};
    }
    return {};
}

/// 0 (also as 0.0), no, false.
bool says_no(std::string const& word) {
    const auto number = to_number(word);
    return number ? *number == 0.0 : lower(word).starts_with("n") || lower(word).starts_with("f");
}

/// A column of numbers: what it is, and where it goes.
struct Column {
    std::size_t at;
    Observable what;
    int component = -1;
    bool critical = false;  // Tc, pc, rhoc
    Conversion convert = {};
    bool percent = false;  // an uncertainty in % of the value
    bool mass = false;     // a mass fraction
};

class Reader {
  public:
    Reader(std::string const& path, text::CsvFile table, DataHome const& home,
           std::vector<std::string> const& names, double M)
        : path_(path), home_(home), names_(names), M_(M), csv_(std::move(table)) {
        for (std::size_t k = 0; k < csv_.header.size(); ++k) name_column(k);
    }
    DataSet read();

  private:
    using Values = std::map<std::pair<Observable, int>, double>;

    [[noreturn]] void fail(std::string const& why) const { throw Failure(path_ + ": " + why); }
    [[noreturn]] void fail_row(std::size_t row, std::string const& why) const {
        throw Failure(path_ + ":" + std::to_string(csv_.lines[row]) + ": " + why);
    }
    void name_column(std::size_t k);
    bool name_numbers(std::size_t k, std::string heading);
    int component(std::string const& name) const;
    void name_mass(Column& column, std::string& name, bool uncertain);
    std::string const* word(char const* column, std::size_t row) const;
    Values numbers(std::size_t row, std::vector<Column> const& columns, bool critical,
                   Values const* of) const;
    Point point(std::size_t row) const;
    PointKind kind(std::size_t row, Values const& given, bool critical) const;
    void compose(std::size_t row, Values const& given, Observable what,
                 std::vector<double>& x) const;
    void check(std::size_t row, Point const& point) const;
    void observe(Point& point, Values const& given, Values const& uncertain) const;

    std::string path_;
    DataHome const& home_;
    std::vector<std::string> const& names_;
    double M_;
    text::CsvFile csv_;
    std::vector<Column> values_, uncertainties_;
    std::map<std::string, std::size_t> words_;
    std::vector<double> molar_masses_;  // of the components, where mass fractions are given
    std::vector<Observable> by_mass_;   // phases with mass fractions
};

int Reader::component(std::string const& name) const {
    for (std::size_t i = 0; i < names_.size(); ++i)
        if (names_[i] == name) return static_cast<int>(i);
    try {
        const std::string found = substance_name(home_, "", name);
        for (std::size_t i = 0; i < names_.size(); ++i)
            if (names_[i] == found) return static_cast<int>(i);
    } catch (OpenFailure const&) {  // not a substance: a column of another name
    }
    return -1;
}

/// Of mass fractions: they are read as mole fractions of their phase, and converted in `compose`.
void Reader::name_mass(Column& column, std::string& name, bool uncertain) {
    if (names_.size() < 2) return;  // w: the speed of sound
    for (auto const& each : kMassFractions)
        if (name == each.name && (name != "w" || csv_.header[column.at].starts_with("w_"))) {
            if (uncertain)
                fail("column " + csv_.header[column.at] + ": uncertainties are of mole fractions");
            column.mass = true;
            name = name_of(each.what);
        }
    if (!column.mass || !molar_masses_.empty()) return;
    const Substances known(home_);
    for (std::string const& component : names_) {
        auto const& all = known.all();
        const auto found = std::find_if(all.begin(), all.end(),
                                        [&](auto const& each) { return each.name == component; });
        molar_masses_.push_back(found == all.end() ? kUnknown : found->M);
        if (!(molar_masses_.back() > 0.0))
            fail("mass fractions: the molar mass of " + component + " is not known");
    }
}

/// A column of a quantity, "rhoL/(kg/m3)", "x_methane", "Tc/K"; or of its uncertainty.
bool Reader::name_numbers(std::size_t k, std::string heading) {
    const bool uncertain = heading.starts_with("u_") || heading.starts_with("u(");
    if (uncertain) {
        heading.erase(0, 2);
        std::erase(heading, '(');
        std::erase(heading, ')');
    }
    Column column{k, Observable::T};
    const text::ColumnName plain(heading);
    std::string name = plain.name;
    column.critical = name == "Tc" || name == "pc" || name == "rhoc";
    if (column.critical) name.pop_back();
    if (name == "x1" || name == "y1") name.pop_back();
    name_mass(column, name, uncertain);
    const auto* found = std::find_if(std::begin(kKnown), std::end(kKnown),
                                     [&](Known const& each) { return name == each.name; });
    if (found == std::end(kKnown)) return false;
    column.what = found->what;
    if (names_.size() < 2 && column.what >= Observable::hE) return false;
    std::string unit = plain.unit;
    if (of_component(column.what)) {
        const std::size_t mark = heading.find('_'), slash = heading.find('/');
        const bool named = mark != std::string::npos;
        column.component = named ? component(heading.substr(mark + 1, slash - mark - 1))
                           : is_fraction(column.what) ? 0
                                                      : -1;
        if (column.component < 0)
            fail("column " + csv_.header[k] + ": not a component, which are " + join(names_, ", "));
        if (named) unit = slash == std::string::npos ? "" : heading.substr(slash + 1);
    }
    if (uncertain && unit == "%") {
        column.percent = true;
    } else if (found->quantity == Quantity::ratio) {
        if (unit == "%" || unit == (column.mass ? "wt%" : "mol%")) column.convert.scale = 0.01;
    } else {
        const auto convert = text::conversion(found->quantity, unit, M_);
        if (!convert)
            fail("column " + csv_.header[k] + ": " +
                 (unit.empty() ? "no unit" : "unknown unit '" + unit + "'") +
                 (M_ > 0.0 ? "" : ", or one that needs the molar mass"));
        column.convert = *convert;
        if (uncertain) column.convert.shift = 0.0;
    }
    auto& all = uncertain ? uncertainties_ : values_;
    for (Column const& other : all)
        if (other.what == column.what && other.component == column.component &&
            other.critical == column.critical)
            fail("two columns " + csv_.header[k]);
        else if (other.what == column.what && other.mass != column.mass)
            fail("columns " + csv_.header[other.at] + " and " + csv_.header[k] +
                 ": mole and mass fractions of one phase");
    if (column.mass) by_mass_.push_back(column.what);
    all.push_back(column);
    return true;
}

void Reader::name_column(std::size_t k) {
    constexpr std::array kWords{"phase", "kind", "weight", "use", "exclude", "reference", "source"};
    const std::string heading = csv_.header[k];
    if (std::find(kWords.begin(), kWords.end(), heading) != kWords.end())
        words_[heading == "source" ? "reference" : heading] = k;
    else
        name_numbers(k, heading);
}

std::string const* Reader::word(char const* column, std::size_t row) const {
    const auto found = words_.find(column);
    if (found == words_.end() || csv_.rows[row][found->second].empty()) return nullptr;
    return &csv_.rows[row][found->second];
}

Reader::Values Reader::numbers(std::size_t row, std::vector<Column> const& columns, bool critical,
                               Values const* of) const {
    Values result;
    for (Column const& column : columns) {
        std::string const& field = csv_.rows[row][column.at];
        if (column.critical != critical || field.empty() || field == "-") continue;
        const auto number = to_number(field);
        if (!number) fail_row(row, "'" + clipped(field) + "' is not a number");
        double x = column.convert.to_library(*number);
        const std::pair key{column.what, column.component};
        if (of) {  // an uncertainty
            if (!of->count(key)) continue;
            if (column.percent) x *= 0.01 * std::fabs(of->at(key));
            if (!(x > 0.0)) fail_row(row, "an uncertainty must be above zero");
        } else if (is_fraction(column.what)) {
            if (!(x >= 0.0 && x <= 1.0)) fail_row(row, "a mole fraction must be from 0 to 1");
        } else if (column.what == Observable::solubility && !(x > 0.0 && x < 1.0)) {
            fail_row(row, "a solubility is a mole fraction between 0 and 1");
        } else if (!(x > 0.0) && !is_signed(column.what)) {
            fail_row(row, "'" + clipped(field) + "' is not above zero");
        }
        result[key] = x;
    }
    return result;
}

PointKind Reader::kind(std::size_t row, Values const& given, bool critical) const {
    if (std::string const* word = this->word("kind", row)) {
        for (std::size_t k = 0; k < kKinds.size(); ++k)
            if (*word == kKinds[k]) return static_cast<PointKind>(k);
        fail_row(row, "no kind of points '" + clipped(*word) + "'");
    }
    if (critical) return PointKind::critical;
    const auto has = [&](Observable what) {
        return std::any_of(given.begin(), given.end(),
                           [&](auto const& value) { return value.first.first == what; });
    };
    if (has(Observable::B)) return PointKind::virial;
    if (has(Observable::H) || has(Observable::gammainf)) return PointKind::dilute;
    if (has(Observable::solubility)) return PointKind::solubility;
    if (has(Observable::hE) || has(Observable::vE) || has(Observable::gamma))
        return PointKind::excess;
    if (has(Observable::rho) || has(Observable::cp) || has(Observable::w) || has(Observable::JT))
        return PointKind::state;
    if (has(Observable::x) && has(Observable::x2))
        return has(Observable::y) ? PointKind::three_phase : PointKind::liquid_liquid;
    if (names_.size() > 1) return has(Observable::x) ? PointKind::bubble : PointKind::dew;
    return PointKind::saturation;
}

/// Mole fractions of all components; one column may lack.
void Reader::compose(std::size_t row, Values const& given, Observable what,
                     std::vector<double>& x) const {
    x.assign(names_.size(), kUnknown);
    double sum = 0.0;
    int missing = -1, count = 0;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        const auto found = given.find({what, static_cast<int>(i)});
        if (found != given.end()) {
            sum += x[i] = found->second;
            ++count;
        } else {
            missing = static_cast<int>(i);
        }
    }
    if (count == 0) return x.clear();
    const int n = static_cast<int>(names_.size());
    if (count < n - 1) fail_row(row, "more than one component lacks its mole fraction");
    if (count == n - 1) {
        x[static_cast<std::size_t>(missing)] = std::fmax(0.0, 1.0 - sum);
        if (sum > 1.0 + 1e-9) fail_row(row, "the mole fractions sum to more than 1");
    } else if (std::fabs(sum - 1.0) > 0.005) {
        fail_row(row, "the mole fractions do not sum to 1");
    } else {
        for (double& value : x) value /= sum;
    }
    if (std::find(by_mass_.begin(), by_mass_.end(), what) == by_mass_.end()) return;
    sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) sum += x[i] /= molar_masses_[i];
    for (double& value : x) value /= sum;
}

void Reader::observe(Point& point, Values const& given, Values const& uncertain) const {
    const auto add = [&](Observable what, int i, double value) {
        Observation o{what, value, kUnknown, i};
        const auto u = uncertain.find({what, i});
        if (u != uncertain.end()) o.uncertainty = u->second;
        point.observed.push_back(o);
    };
    const auto fractions = [&](Observable what, std::vector<double> const& x) {
        // Of a binary one fraction says all; of more, all but the last are compared.
        for (std::size_t i = 0; i + 1 < x.size(); ++i) add(what, static_cast<int>(i), x[i]);
    };
    const auto value = [&](Observable what) {
        for (auto const& [key, number] : given)
            if (key.first == what) add(what, key.second, number);
    };
    for (Observable what : compared(point.kind)) {
        if (what == Observable::x)
            fractions(what, point.x);
        else if (what == Observable::y)
            fractions(what, point.y);
        else if (what == Observable::x2)
            fractions(what, point.x2);
        else if (what != Observable::p || point.kind != PointKind::three_phase ||
                 names_.size() == 2)
            value(what);
    }
}

/// What the kind of a point needs beside the temperature.
void Reader::check(std::size_t row, Point const& point) const {
    using enum PointKind;
    const PointKind kind = point.kind;
    const bool mixture = names_.size() > 1, binary = names_.size() == 2;
    const auto one_of = [&](std::initializer_list<PointKind> kinds) {
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    };
    const std::string word =
        std::string("points of the kind ") + kKinds[static_cast<std::size_t>(kind)];
    if (mixture ? kind == saturation : !one_of({saturation, state, virial, critical}))
        fail_row(row, word + (mixture ? " are of one substance" : " are of mixtures"));
    if (!binary && (one_of({solubility}) || (kind == three_phase && names_.size() != 3)))
        fail_row(row, word + " need two components");
    if (mixture && point.x.empty() && !one_of({dew, dilute, solubility, azeotrope, three_phase}))
        fail_row(row, "no composition");
    if (kind == dilute && !binary && point.x.empty())
        fail_row(row, "no composition of the solvent");
    if ((kind == dew && point.y.empty()) || (kind == liquid_liquid && point.x2.empty()))
        fail_row(row, "no composition of the second phase");
    if (kind == three_phase && !binary && (point.x.empty() || point.x2.empty() || point.y.empty()))
        fail_row(row, "no composition of one of three phases");
    if (kind == azeotrope && !binary && point.x.empty()) fail_row(row, "no composition");
    if (!(point.p > 0.0) && (one_of({state, bubble, dew, liquid_liquid, excess, solubility}) ||
                             (kind == three_phase && !binary)))
        fail_row(row, "no pressure");
}

Point Reader::point(std::size_t row) const {
    Values given = numbers(row, values_, false, nullptr);
    const Values at_critical = numbers(row, values_, true, nullptr);
    Point result;
    result.line = csv_.lines[row];
    result.kind = kind(row, given, !at_critical.empty());
    const bool critical = result.kind == PointKind::critical;
    const bool own = critical && !at_critical.empty();  // Tc, pc, rhoc
    const Values uncertain = numbers(row, uncertainties_, own, own ? &at_critical : &given);
    for (auto const& [key, value] : at_critical)
        if (own) given[key] = value;
    const auto get = [&](Observable what) {
        const auto found = given.find({what, -1});
        return found == given.end() ? kUnknown : found->second;
    };
    result.T = get(Observable::T);
    result.p = get(Observable::p);
    if (names_.size() > 1) {
        compose(row, given, Observable::x, result.x);
        compose(row, given, Observable::y, result.y);
        compose(row, given, Observable::x2, result.x2);
    }
    if (!critical && !(result.T > 0.0)) fail_row(row, "no temperature");
    check(row, result);
    if (std::string const* phase = word("phase", row))
        result.phase = lower(*phase).starts_with("l") ? 1 : lower(*phase).starts_with("v") ? 3 : -1;
    if (std::string const* weight = word("weight", row)) {
        const auto number = to_number(*weight);
        if (!number || !(*number >= 0.0)) fail_row(row, "a weight is a number from 0 on");
        result.weight = *number;
    }
    std::string const *use = word("use", row), *out = word("exclude", row);
    result.used = !(use && says_no(*use)) && !(out && !says_no(*out));
    if (std::string const* reference = word("reference", row)) result.reference = *reference;
    observe(result, given, uncertain);
    if (result.kind == PointKind::dilute) {  // the solvent: the other of two, or x
        if (result.x.empty()) result.x = {1.0, 1.0};
        for (Observation const& seen : result.observed) {
            double& solute = result.x[static_cast<std::size_t>(seen.component)];
            if (names_.size() == 2) solute = 0.0;
            if (solute > 0.0) fail_row(row, "the solvent holds the solute");
        }
        if (*std::max_element(result.x.begin(), result.x.end()) <= 0.0)
            fail_row(row, "each component is the solute: use two rows");
    }
    return result;
}

DataSet Reader::read() {
    DataSet set;
    const std::size_t slash = path_.find_last_of('/');
    set.name = slash == std::string::npos ? path_ : path_.substr(slash + 1);
    if (!csv_.comments.empty()) set.source = csv_.comments.front();
    set.by_mass = !by_mass_.empty();
    if (values_.empty())
        fail("no column that is known: name columns like T/K, p/MPa, rhoL/(kg/m3)");
    for (std::size_t row = 0; row < csv_.rows.size(); ++row) {
        Point next = point(row);
        if (!next.observed.empty()) set.points.push_back(std::move(next));
    }
    if (set.points.empty()) fail("no measured points");
    return set;
}
}  // namespace

char const* name_of(Observable what) {
    return known(what).name;
}
text::Quantity quantity_of(Observable what) {
    return known(what).quantity;
}

DataSet read_data(std::string const& path, DataHome const& home,
                  std::vector<std::string> const& components, double M) {
    return read_data(path, text::read_csv(path), home, components, M);
}
DataSet read_data(std::string const& name, text::CsvFile const& table, DataHome const& home,
                  std::vector<std::string> const& components, double M) {
    return Reader(name, table, home, components, components.size() == 1 ? M : 0.0).read();
}

}  // namespace corvane::fit
