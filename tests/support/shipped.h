// The parameter sets of the data tree, for tests that run over all of them.
#pragma once

#include <corvane/core/collected.h>
#include <corvane/core/files.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using Model = std::unique_ptr<Model1, corvane::Detach>;

struct ParameterSet {
    std::string eos, name;
    int id;
};

/// All sets of an equation that are files and a tenth of those in its table, sorted; empty if the
/// tree has none.
inline std::vector<ParameterSet> shipped_sets(std::string const& eos) {
    std::vector<ParameterSet> sets;
    const std::filesystem::path folder = "CorvaneS/parameters/" + eos;
    if (!std::filesystem::exists(folder)) return sets;
    std::vector<std::string> files;
    const std::vector<std::string> rows = corvane::collected_names(folder);
    for (std::size_t k = 0; k < rows.size(); k += 10) files.push_back(rows[k]);
    for (auto const& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path().filename());
    for (std::string const& file : files)
        if (const std::size_t mark = file.rfind(';'); mark != std::string::npos)
            sets.push_back({eos, file.substr(0, mark), std::atoi(file.c_str() + mark + 1)});
    std::sort(sets.begin(), sets.end(), [](ParameterSet const& a, ParameterSet const& b) {
        return std::pair(a.name, a.id) < std::pair(b.name, b.id);
    });
    return sets;
}

/// A loaded model of a shipped set.
inline Model load_set(std::string const& eos, std::string const& name, int id = 1) {
    Model model(attach1(eos.c_str()));
    model->name(name.c_str());
    model->id(id);
    model->load(eos.c_str());
    return model;
}
inline Model load_set(ParameterSet const& set) {
    return load_set(set.eos, set.name, set.id);
}

/// Value k (from 0) of the free line "<label>:" of a parameter file; NaN where it is '-' or absent.
inline double free_value(ParameterSet const& set, std::string const& label, int k) {
    const std::string path =
        "CorvaneS/parameters/" + set.eos + "/" + set.name + ";" + std::to_string(set.id);
    std::istringstream file(corvane::file_contents(path.c_str()));
    for (std::string line; std::getline(file, line);)
        if (line.rfind(label + ":", 0) == 0) {
            std::istringstream words(line.substr(label.size() + 1));
            std::string word;
            for (int i = 0; i <= k; ++i) words >> word;
            char* end = nullptr;
            const double x = std::strtod(word.c_str(), &end);
            return *end == '\0' && end != word.c_str() ? x : std::nan("");
        }
    return std::nan("");
}
