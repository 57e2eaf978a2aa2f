#include <corvane/catalogue/substances.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>

#include <functional>
#include <limits>
#include <map>

namespace corvane {
namespace {
constexpr std::size_t kColumns = 12;

Substance read_line(std::vector<std::string> const& field) {
    const auto value = [&](std::size_t k) {
        return to_number(field[k]).value_or(std::numeric_limits<double>::quiet_NaN());
    };
    const auto word = [&](std::size_t k) { return field[k] == "-" ? std::string() : field[k]; };
    Substance s{word(0),  word(1),  word(2),  value(3), value(4),  value(5),
                value(6), value(7), value(8), value(9), value(10), {}};
    for (std::string const& alias : split(word(11), ';'))
        if (std::string name = trimmed(alias); !name.empty()) s.aliases.push_back(name);
    return s;
}

/// Spellings that count as the same name.
std::string plain(std::string const& name) {
    std::string text = lower(trimmed(name));
    for (char& c : text)
        if (c == ' ' || c == '-') c = '_';
    return text;
}
}  // namespace

std::string sum_formula(std::string const& text) {
    std::map<std::string, int> atoms;
    for (std::size_t k = 0; k < text.size();) {
        if (!std::isupper(static_cast<unsigned char>(text[k]))) return "";
        std::string element(1, text[k++]);
        while (k < text.size() && std::islower(static_cast<unsigned char>(text[k])))
            element += text[k++];
        int count = 0;
        while (k < text.size() && std::isdigit(static_cast<unsigned char>(text[k])) && count < 1000)
            count = 10 * count + (text[k++] - '0');
        atoms[element] += count > 0 ? count : 1;
    }
    std::string result;
    for (auto const& [element, count] : atoms) result += element + std::to_string(count);
    return result;
}

Substances::Substances(DataHome const& home) {
    const std::string text = file_contents((home.tree() / "substances.tsv").c_str());
    std::string_view rest = text;
    next_part(rest, '\n');  // the column names
    while (!rest.empty()) {
        std::string_view line = next_part(rest, '\n');
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        auto field = split(line, '\t');
        field.resize(kColumns, "-");
        if (Substance s = read_line(field); !s.name.empty()) all_.push_back(std::move(s));
    }
}

std::vector<Substance const*> Substances::find(std::string const& text) const {
    if (trimmed(text).empty()) return {};  // not every substance without a formula
    const std::string name = plain(text), formula = sum_formula(text);
    const auto where = [&](std::function<bool(Substance const&)> const& fits) {
        std::vector<Substance const*> found;
        for (Substance const& s : all_)
            if (fits(s)) found.push_back(&s);
        return found;
    };
    auto found = where([&](Substance const& s) { return plain(s.name) == name; });
    if (found.empty())
        found = where([&](Substance const& s) {
            if (s.cas == text) return true;
            for (std::string const& alias : s.aliases)
                if (plain(alias) == name) return true;
            return false;
        });
    if (found.empty() && !formula.empty())
        found = where([&](Substance const& s) { return sum_formula(s.formula) == formula; });
    if (found.empty())  // "co2"
        found = where([&](Substance const& s) { return lower(s.formula) == lower(text); });
    return found;
}

std::vector<Substance const*> Substances::search(std::string const& text) const {
    const std::string part = plain(text), formula = sum_formula(text);
    std::vector<Substance const*> found;
    for (Substance const& s : all_) {
        bool fits = plain(s.name).find(part) != std::string::npos ||
                    lower(s.formula) == lower(text) || s.cas.find(text) != std::string::npos ||
                    (!formula.empty() && sum_formula(s.formula) == formula);
        for (std::string const& alias : s.aliases)
            fits = fits || plain(alias).find(part) != std::string::npos;
        if (fits) found.push_back(&s);
    }
    return found;
}

std::vector<std::string> Substances::names() const {
    std::vector<std::string> result;
    for (Substance const& s : all_) {
        result.push_back(s.name);
        result.insert(result.end(), s.aliases.begin(), s.aliases.end());
    }
    return result;
}

}  // namespace corvane
