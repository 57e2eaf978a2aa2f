#include <corvane/catalogue/open.h>
#include <corvane/catalogue/reaction.h>
#include <corvane/catalogue/substances.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <map>

namespace corvane {
namespace {
constexpr double kT0 = 298.15;
constexpr std::size_t kLongest = 4096, kMostSpecies = 100;
using Atoms = std::map<std::string, double>;

/// Atoms of a sum formula in fixed order, as sum_formula gives it: "C1H4O1".
Atoms atoms(std::string const& formula) {
    Atoms result;
    const std::string text = sum_formula(formula);
    for (std::size_t k = 0; k < text.size();) {
        std::size_t digits = k;
        while (!std::isdigit(static_cast<unsigned char>(text[digits]))) ++digits;
        std::size_t end = digits;
        while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) ++end;
        result[text.substr(k, digits - k)] += to_number(text.substr(digits, end - digits)).value();
        k = end;
    }
    return result;
}

struct Term {
    double nu;
    std::string name;
};

/// "3 H2", "0.5*O2", "3H2". A number that the name begins with (1-butene, 74-82-8) stays there.
Term term(std::string const& text) {
    std::size_t end = 0;
    while (end < text.size() && (std::isdigit(static_cast<unsigned char>(text[end])) || text[end] == '.'))
        ++end;
    const auto nu = to_number(text.substr(0, end));
    const std::string rest = trimmed(text.substr(end));
    const bool apart = end < text.size() && (text[end] == ' ' || text[end] == '*');
    if (nu && (apart || !sum_formula(rest).empty())) {
        const std::string name = trimmed(text.substr(end + (text[end] == '*' ? 1 : 0)));
        if (!(*nu > 0.0 && *nu <= 1e6) || name.empty())
            throw OpenFailure("'" + clipped(text) + "' is not a number and a substance");
        return {*nu, name};
    }
    if (text.empty()) throw OpenFailure("a substance is missing between two signs of the reaction");
    return {1.0, text};
}

/// Both sides of the reaction.
std::array<std::string, 2> sides(std::string const& text) {
    for (std::string_view sign : {"<=>", "<->", "=>", "->", "="}) {
        const std::size_t at = text.find(sign);
        if (at == std::string::npos) continue;
        const std::string right = text.substr(at + sign.size());
        if (right.find_first_of("=>") != std::string::npos) break;
        return {trimmed(text.substr(0, at)), trimmed(right)};
    }
    throw OpenFailure("'" + clipped(text) + "' is not a reaction such as N2 + 3 H2 = 2 NH3");
}

/// The line "ideal:" of a reaction file: H0 and S0 of the ideal gas. False if there is none.
bool of_ideal_gas(std::string const& file, double& H0, double& S0) {
    const std::string text = file_contents(file.c_str());
    std::string_view lines = text;
    constexpr std::string_view key = "ideal:";
    while (!lines.empty()) {
        const std::string_view line = next_part(lines, '\n');
        if (!line.starts_with(key)) continue;
        const auto words = split(trimmed(line.substr(key.size())), ' ');
        if (words.size() != 2 || !to_number(words[0]) || !to_number(words[1]))
            throw OpenFailure(file + ": ideal: is not followed by two numbers", file);
        H0 = *to_number(words[0]);
        S0 = *to_number(words[1]);
        return true;
    }
    return false;
}

/// Entropy over R at the standard pressure.
double entropy(Ideal const& gas, double T) {
    return gas.Sm(T) - std::log(pref / (R * T));
}

/// Every substance once, with its net number.
std::vector<ReactionSpecies> species_of(DataHome const& home, std::string const& text) {
    std::vector<ReactionSpecies> species;
    const auto both = sides(text);
    for (int side : {0, 1})
        for (std::string const& part : split(both[static_cast<unsigned>(side)], '+')) {
            const Term one = term(trimmed(part));
            const std::string name = substance_name(home, "", one.name);
            const double nu = side == 0 ? -one.nu : one.nu;
            const auto there =
                std::find_if(species.begin(), species.end(),
                             [&](ReactionSpecies const& s) { return s.substance == name; });
            if (there != species.end()) {
                there->nu += nu;
                continue;
            }
            if (species.size() >= kMostSpecies) throw OpenFailure("the reaction has too many substances");
            species.push_back({name, "", nu, 0.0, 0.0, false, "", 0.0, 0.0});
        }
    std::erase_if(species, [](ReactionSpecies const& s) { return s.nu == 0.0; });
    if (species.empty()) throw OpenFailure("both sides of the reaction are the same");
    return species;
}

/// "1.5" of 1.500000.
std::string shown(double x) {
    std::string digits = std::to_string(x);
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    return digits;
}

void check_balance(std::vector<ReactionSpecies> const& species) {
    std::map<std::string, std::array<double, 2>> elements;
    for (ReactionSpecies const& s : species) {
        const Atoms in = atoms(s.formula);
        if (in.empty()) throw OpenFailure("the sum formula of " + s.substance + " is not known");
        for (auto const& [element, count] : in)
            elements[element][s.nu > 0.0 ? 1 : 0] += std::fabs(s.nu) * count;
    }
    std::string unbalanced;
    for (auto const& [element, n] : elements)
        if (std::fabs(n[0] - n[1]) > 1e-9 * (n[0] + n[1]))
            unbalanced += (unbalanced.empty() ? "" : ", ") + element + ' ' + shown(n[0]) +
                          " before and " + shown(n[1]) + " after";
    if (!unbalanced.empty()) throw OpenFailure("the reaction is not balanced: " + unbalanced);
}

/// The ideal gas of s with its enthalpy and entropy, which s is told, too.
Fluid gas_of(DataHome const& home, ReactionSpecies& s) {
    Fluid fluid = open("", s.substance, {.home = home});
    if (!fluid.ideal)
        throw OpenFailure(s.substance + " has no ideal-gas heat capacities");
    s.equation = fluid.equation;
    s.T_min = std::fmax(fluid.ideal->first, fluid.ideal->Tmin);  // of a number and none: the number
    s.T_max = std::fmin(fluid.ideal->last, fluid.ideal->Tmax);
    const std::string file = home.file("CorvaneS/reaction/" + s.substance).string();
    Ideal& gas = fluid.model->ideal;
    if (!of_ideal_gas(file, s.H0, s.S0)) {
        const ReadingFrom from(home.names());
        try {
            fluid.model->load_thchem();
        } catch (FileError const& e) {
            throw OpenFailure(s.substance + " has no enthalpy of formation: " + e.what(), file);
        } catch (ThException const& e) {
            throw OpenFailure(s.substance + " has no enthalpy of formation: " + trimmed(e.message()),
                              file);
        }
        s.estimated = true;
        s.H0 = R * kT0 * gas.Hm(kT0);
        s.S0 = R * entropy(gas, kT0);
    }
    gas.offset(s.H0 / R - kT0 * gas.Hm(kT0), s.S0 / R - entropy(gas, kT0));
    return fluid;
}
}  // namespace

struct Reaction::Gases {
    std::vector<Fluid> fluids;
};

Reaction::Reaction(Reaction&&) noexcept = default;
Reaction& Reaction::operator=(Reaction&&) noexcept = default;
Reaction::~Reaction() = default;

Reaction::Reaction(std::string const& text, std::optional<DataHome> const& given)
    : gases_(std::make_unique<Gases>()) {
    const DataHome home = given ? *given : DataHome::find();
    const Substances index(home);
    if (text.size() > kLongest) throw OpenFailure("the reaction is too long");
    species_ = species_of(home, text);
    for (ReactionSpecies& s : species_)
        for (Substance const& known : index.all())
            if (known.name == s.substance) s.formula = known.formula;
    check_balance(species_);
    for (ReactionSpecies& s : species_) gases_->fluids.push_back(gas_of(home, s));
}

ReactionState Reaction::at(double T) const {
    if (!(T > 0.0) || !std::isfinite(T)) throw ThException(th_out_of_range);
    ReactionState r{T, 0.0, 0.0, 0.0, 0.0, 0.0, false};
    for (std::size_t k = 0; k < species_.size(); ++k) {
        ReactionSpecies const& s = species_[k];
        Ideal const& gas = gases_->fluids[k].model->ideal;
        r.dH += s.nu * R * T * gas.Hm(T);
        r.dS += s.nu * R * entropy(gas, T);
        r.dcp += s.nu * R * gas.Cpm(T);
        r.extrapolated = r.extrapolated || T < s.T_min || T > s.T_max;
    }
    r.dG = r.dH - T * r.dS;
    r.lnK = -r.dG / (R * T);
    return r;
}

}  // namespace corvane
