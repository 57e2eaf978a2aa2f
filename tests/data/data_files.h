// What the tests of the data tree share. They run in the data home, so paths start at CorvaneS or
// models.
#pragma once

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace data {

struct Substance {
    std::string name, formula, cas, aliases;            // "-" where unknown
    double M, Tc, pc, vc, omega, Ttriple, ptriple, Tb;  // NaN where unknown
};

inline std::vector<std::string> split(std::string const& text, std::string const& separator) {
    std::vector<std::string> parts;
    for (size_t from = 0;;) {
        const size_t to = text.find(separator, from);
        parts.push_back(text.substr(from, to - from));
        if (to == std::string::npos) return parts;
        from = to + separator.size();
    }
}

inline std::vector<std::string> lines(std::filesystem::path const& path) {
    std::ifstream in(path);
    std::vector<std::string> all;
    for (std::string line; std::getline(in, line);) all.push_back(line);
    return all;
}

/// Values of the labelled lines of a file, by label without the colon.
inline std::map<std::string, std::string> labels(std::filesystem::path const& path) {
    std::map<std::string, std::string> values;
    for (std::string const& line : lines(path))
        if (const size_t at = line.find(":\t"); at != std::string::npos)
            values.emplace(line.substr(0, at), line.substr(at + 2));
    return values;
}

/// The numbers a text starts with; "-" reads as not-a-number.
inline std::vector<double> numbers(std::string const& text) {
    std::istringstream in(text);
    std::vector<double> values;
    for (std::string word; in >> word;) values.push_back(word == "-" ? NAN : std::stod(word));
    return values;
}

/// Regular files of a folder and those below it, sorted.
inline std::vector<std::filesystem::path> files(std::filesystem::path const& folder) {
    std::vector<std::filesystem::path> all;
    const auto follow = std::filesystem::directory_options::follow_directory_symlink;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder, follow))
        if (entry.is_regular_file() && entry.path().extension() != ".dll")
            all.push_back(entry.path());
    std::sort(all.begin(), all.end());
    return all;
}

inline std::map<std::string, Substance> const& substances() {
    static const std::map<std::string, Substance> table = [] {
        std::map<std::string, Substance> read;
        for (std::string const& line : lines("CorvaneS/substances.tsv")) {
            const auto c = split(line, "\t");
            if (c.size() != 12 || c[0] == "name") continue;
            const auto x = [&](int i) { return numbers(c[i]).at(0); };
            read[c[0]] = {c[0], c[1], c[2], c[11], x(3), x(4), x(5), x(6), x(7), x(8), x(9), x(10)};
        }
        return read;
    }();
    return table;
}

/// Numbers of atoms by element symbol in a formula like C2H3Cl3; empty for "-".
inline std::map<std::string, int> atoms(std::string const& formula) {
    std::map<std::string, int> count;
    for (size_t i = 0; i < formula.size() && formula[i] != '-';) {
        size_t j = i + 1;
        while (j < formula.size() && std::islower(formula[j])) ++j;
        size_t k = j;
        while (k < formula.size() && std::isdigit(formula[k])) ++k;
        count[formula.substr(i, j - i)] += k > j ? std::stoi(formula.substr(j, k - j)) : 1;
        i = k;
    }
    return count;
}

}  // namespace data
