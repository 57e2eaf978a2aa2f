#include <corvane/catalogue/substances.h>
#include <corvane/catalogue/suggest.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <set>

namespace corvane {
namespace {
constexpr std::size_t kColumns = 12;
using Fields = std::array<std::string_view, kColumns>;

Substance read_line(Fields const& field) {
    const auto value = [&](std::size_t k) {
        if (field[k] == "-") return std::numeric_limits<double>::quiet_NaN();
        return to_number(field[k]).value_or(std::numeric_limits<double>::quiet_NaN());
    };
    const auto word = [&](std::size_t k) { return std::string(field[k] == "-" ? "" : field[k]); };
    Substance s{word(0),  word(1),  word(2),  value(3), value(4),  value(5),
                value(6), value(7), value(8), value(9), value(10), {}};
    for (std::string_view rest = field[11] == "-" ? "" : field[11]; !rest.empty();)
        if (std::string name = trimmed(next_part(rest, ';')); !name.empty())
            s.aliases.push_back(std::move(name));
    return s;
}

/// Subscripts of a formula as digits: "CO\u2082" is CO2.
std::string without_subscripts(std::string text) {
    for (char digit = 0; digit < 10; ++digit) {  // U+2080 to U+2089
        const std::string subscript = {'\xe2', '\x82', static_cast<char>(0x80 + digit)};
        for (std::size_t at; (at = text.find(subscript)) != std::string::npos;)
            text.replace(at, subscript.size(), 1, static_cast<char>('0' + digit));
    }
    return text;
}

/// The capital letters of a text, as bits: those of two formulas of the same atoms are equal.
unsigned capitals(std::string_view text) {
    unsigned bits = 0;
    for (char c : text)
        if (c >= 'A' && c <= 'Z') bits |= 1u << (c - 'A');
    return bits;
}

/// Spellings that count as the same name: without regard to case, what parts its words, and British
/// or American sulphur.
std::string plain(std::string const& name) {
    std::string text;
    for (char c : lower(name))
        if (std::string_view(" \t_-,'()[]").find(c) == std::string_view::npos) text += c;
    for (std::size_t at; (at = text.find("sulph")) != std::string::npos;)
        text.replace(at, 5, "sulf");
    return text;
}

/// plain(name) == wanted, without making it for the many names that are others.
bool spells(std::string_view name, std::string_view wanted) {
    std::size_t at = 0;
    for (char c : name) {
        if (std::string_view(" \t_-,'()[]").find(c) != std::string_view::npos) continue;
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        const bool same = at < wanted.size() && c == wanted[at];
        if (!same) return c == 'p' && plain(std::string(name)) == wanted;  // perhaps of "sulph"
        ++at;
    }
    return at == wanted.size();
}

/// "r134a" for the names that makers and lists of refrigerants put before the number: HFC-134a.
std::string refrigerant(std::string const& plain_name) {
    for (std::string_view family : {"freon", "refrigerant", "hcfc", "hfc", "cfc", "hfo", "pfc"}) {
        const std::string number(plain_name.substr(std::min(family.size(), plain_name.size())));
        if (plain_name.rfind(family, 0) == 0 && !number.empty() &&
            std::isdigit(static_cast<unsigned char>(number[0])))
            return 'r' + number;
    }
    return plain_name;
}

/// What stands before a name to tell isomers apart.
bool of_isomers(std::string const& word) {
    constexpr std::string_view words[] = {"n",   "i",     "iso",  "s",    "sec",  "t",   "tert",
                                          "neo", "cis",   "trans", "o",    "m",    "p",   "ortho",
                                          "meta", "para", "e",    "z", "normal", "alpha", "beta"};
    const bool locant = !word.empty() && std::isdigit(static_cast<unsigned char>(word[0]));
    return locant || std::find(std::begin(words), std::end(words), word) != std::end(words);
}

/// A name's words, those that tell isomers apart by themselves.
struct Words {
    std::vector<std::string> isomer;
    std::string rest;
    explicit Words(std::string const& name) {
        std::string word;
        const auto take = [&] {
            if (of_isomers(word))
                isomer.push_back(word);
            else
                rest += word;
            word.clear();
        };
        for (char c : lower(name))
            if (std::string_view(" _-,()").find(c) != std::string_view::npos)
                take();
            else
                word += c;
        take();
        if (rest.rfind("iso", 0) == 0) {
            isomer.emplace_back("iso");
            rest.erase(0, 3);
        }
    }
};

/// The ending that tells the kind of substance: butane, butene, butanol, butanal, butenal.
std::string_view kind(std::string_view name) {
    const auto ends = [&](std::string_view ending) {
        return name.size() > ending.size() && name.substr(name.size() - ending.size()) == ending;
    };
    for (std::string_view ending : {"amine", "ether", "ane", "ene", "yne", "ide", "ite"})
        if (ends(ending)) return ending;
    for (std::string_view ending : {"oate", "oicacid", "acid", "one", "ate", "ol", "al"})
        if (ends(ending)) {
            for (std::string_view bond : {"an", "en", "yn"})
                if (ends(std::string(bond) + std::string(ending)))
                    return name.substr(name.size() - ending.size() - bond.size());
            return ending;
        }
    return "";
}

std::string digits(std::string const& text) {
    std::string result;
    for (char c : text)
        if (std::isdigit(static_cast<unsigned char>(c))) result += c;
    return result;
}

/// Whether a slip of the hand, and not another substance, is likely to be between the two: letters
/// may differ, but no number, nothing that tells isomers apart and no ending.
bool alike(std::string const& asked, Words const& a, std::string const& name) {
    const bool code = asked.size() > 1 && std::isdigit(static_cast<unsigned char>(asked[1]));
    if (code && lower(asked)[0] == 'r') return false;  // every letter of R123a tells
    const Words b(name);
    const std::string_view kind_a = kind(a.rest), kind_b = kind(b.rest);
    return digits(asked) == digits(name) && a.isomer == b.isomer &&
           (kind_a.empty() || kind_b.empty() || kind_a == kind_b);
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
    for (auto const& directory : home.directories()) {
        const std::string text = file_contents((directory / "CorvaneS/substances.tsv").c_str());
        std::set<std::string> before;  // what a home above this one says holds
        for (Substance const& s : all_) before.insert(s.name);
        std::string_view lines = text;
        next_part(lines, '\n');  // the column names
        while (!lines.empty()) {
            std::string_view line = next_part(lines, '\n');
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            Fields field;
            for (std::string_view& one : field) one = line.empty() ? "-" : next_part(line, '\t');
            if (Substance s = read_line(field); !s.name.empty() && !before.count(s.name))
                all_.push_back(std::move(s));
        }
    }
}

std::vector<Substance const*> Substances::find(std::string const& given) const {
    const std::string text = without_subscripts(trimmed(given));
    if (text.empty()) return {};  // not every substance without a formula
    const std::string name = refrigerant(plain(text)), formula = sum_formula(text);
    const auto where = [&](std::function<bool(Substance const&)> const& fits) {
        std::vector<Substance const*> found;
        for (Substance const& s : all_)
            if (fits(s)) found.push_back(&s);
        return found;
    };
    auto found = where([&](Substance const& s) { return spells(s.name, name); });
    if (found.empty())
        found = where([&](Substance const& s) {
            if (s.cas == text) return true;
            for (std::string const& alias : s.aliases)
                if (spells(alias, name)) return true;
            return false;
        });
    if (found.empty() && !formula.empty())
        found = where([&, letters = capitals(text)](Substance const& s) {
            return capitals(s.formula) == letters && sum_formula(s.formula) == formula;
        });
    if (found.empty())  // "co2"
        found = where([&](Substance const& s) { return lower(s.formula) == lower(text); });
    return found;
}

std::vector<Substance const*> Substances::search(std::string const& text) const {
    const std::string part = plain(without_subscripts(text)), formula = sum_formula(text);
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

std::string Substances::suggestion(std::string const& asked,
                                   std::vector<std::string> const& others) const {
    constexpr std::size_t kShortest = 5;  // below it a slip of one letter is another abbreviation
    constexpr std::size_t kLongestAsked = 100;
    if (asked.size() > kLongestAsked || plain(asked).size() < kShortest) return "";
    const Words words(asked);
    std::vector<std::string> near;
    const auto each = [&](std::function<void(std::string const&, Substance const*)> const& use) {
        for (Substance const& s : all_) {
            use(s.name, &s);
            for (std::string const& alias : s.aliases) use(alias, &s);
        }
        for (std::string const& name : others) use(name, nullptr);
    };
    std::map<std::string, std::string> shown;  // by name
    const auto show = [&](std::string const& name, Substance const* s) {
        std::string const& own = s ? s->name : name;
        shown.emplace(own, s && !s->formula.empty() ? own + " (" + s->formula + ')' : own);
        return own;
    };
    if (words.isomer.empty())  // "butanol": the isomers
        each([&](std::string const& name, Substance const* s) {
            if (Words(name).rest == words.rest) near.push_back(show(name, s));
        });
    if (near.empty()) {
        std::map<std::string, std::string> own_name;
        std::vector<std::string> names;
        each([&](std::string const& name, Substance const* s) {
            if (!alike(asked, words, name)) return;
            names.push_back(name);
            own_name[name] = show(name, s);
        });
        for (std::string const& name : nearest(asked, names)) near.push_back(own_name[name]);
    }
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    for (std::string& name : near) name = shown[name];
    return near.empty() ? "" : ": did you mean " + join(near, " or ") + "?";
}

}  // namespace corvane
