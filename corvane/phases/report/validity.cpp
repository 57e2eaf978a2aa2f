#include <corvane/core/files.h>
#include <corvane/core/number_text.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/report/validity.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {
constexpr std::size_t kMost = 1 << 20;  // bytes of a file that are looked at

/// What the file holds; empty if it cannot be read.
template <class... Part>
std::string contents(char const* format, Part... part) {
    std::string text;
    try {
        const File file = open_file(path_of(format, part...));
        char block[4096];
        for (std::size_t n = 1; n > 0 && text.size() < kMost;)
            text.append(block, n = std::fread(block, 1, sizeof block, file.get()));
    } catch (ThException const&) {
        // no file is no knowledge
    }
    return text;
}

/// Takes what stands before the next separator off the text.
std::string_view next(std::string_view& text, char const* separators) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// The next word as a positive number, or `unknown`.
double number(std::string_view& text, double unknown) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r"), text.size()));
    const std::string_view word = next(text, " \t\r");
    double x = 0.0;
    const auto [end, error] = number_from_chars(word.data(), word.data() + word.size(), x);
    const bool whole = error == std::errc() && end == word.data() + word.size();
    return whole && std::isfinite(x) && x > 0.0 ? x : unknown;
}

void narrow(Validity& v, std::string_view file) {
    constexpr std::string_view key = "valid:";
    while (!file.empty()) {
        std::string_view line = next(file, "\n");
        if (line.substr(0, key.size()) != key) continue;
        line.remove_prefix(key.size());
        v.T_min = std::max(v.T_min, number(line, 0.0));
        v.T_max = std::min(v.T_max, number(line, Validity::unknown));
        v.p_max = std::min(v.p_max, number(line, Validity::unknown));
        return;
    }
}

/// Triple temperature of a substance in the index, 0 if unknown.
double triple(std::string_view index, std::string_view substance) {
    std::string_view head = next(index, "\n");
    int column = 0;
    for (int k = 0; column == 0 && !head.empty(); ++k)
        if (next(head, "\t\r") == "Ttriple [K]") column = k;
    if (column == 0) return 0.0;
    const std::string start = '\n' + std::string(substance) + '\t';
    const bool first = index.substr(0, start.size() - 1) == std::string_view(start).substr(1);
    const std::size_t at = first ? 0 : index.find(start);
    if (at == std::string_view::npos) return 0.0;
    index.remove_prefix(at + (first ? start.size() - 1 : start.size()));
    std::string_view line = next(index, "\n");
    for (int k = 1; k < column; ++k) next(line, "\t");
    std::string_view cell = next(line, "\t");
    return number(cell, 0.0);
}
}  // namespace

Validity validity(ModelN const& model, std::vector<std::pair<int, int>> const& estimated) {
    Validity v;
    v.estimated_pairs = !estimated.empty();
    v.T_triple = Vector<double>(model.mdl1.size());
    std::vector<std::string> indices;
    for (std::string const& path : reading_paths("./CorvaneS/substances.tsv"))
        indices.push_back(file_contents(path.c_str()));
    for (int i = 0; i < model.mdl1.size(); ++i) {
        Model1 const& c = *model.mdl1[i];
        if (model.eos)
            narrow(v, contents("./CorvaneS/parameters/%s/%s;%d", model.eos, c.name(), c.id()));
        for (std::string const& index : indices)
            if (v.T_triple[i] == 0.0) v.T_triple[i] = triple(index, c.name());
    }
    return v;
}

}  // namespace corvane
