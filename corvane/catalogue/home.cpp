#include <corvane/catalogue/home.h>
#include <corvane/core/collected.h>
#include <corvane/core/loaded_from.h>

#include <algorithm>
#include <cstdlib>

namespace corvane {
namespace {
namespace fs = std::filesystem;

bool has_tree(fs::path const& directory) {
    std::error_code error;
    return fs::is_directory(directory / "CorvaneS", error);
}

/// The folder that this library was loaded from; empty if the loader does not say.
fs::path library_folder() {
    static const char here = 0;
    char const* const library = loaded_from(&here);
    if (!library) return {};
    std::error_code error;
    const fs::path file = fs::canonical(library, error);
    return error ? fs::path() : file.parent_path();
}
}  // namespace

DataHome::DataHome(fs::path const& directory) {
    std::error_code error;
    directories_.push_back(fs::absolute(directory, error));
    if (error || !has_tree(directories_.front()))
        throw OpenFailure(directory.string() + " does not hold CorvaneS", directory.string());
}

DataHome DataHome::over(DataHome const& other) const {
    DataHome both = *this;
    for (fs::path const& one : other.directories_) {
        std::error_code error;
        if (std::none_of(both.directories_.begin(), both.directories_.end(),
                         [&](fs::path const& there) { return fs::equivalent(one, there, error); }))
            both.directories_.push_back(one);
    }
    return both;
}

std::vector<std::string> DataHome::names() const {
    return {directories_.begin(), directories_.end()};
}

fs::path DataHome::file(fs::path const& relative) const {
    for (fs::path const& one : directories_)
        if (has_data_file((one / relative).string())) return one / relative;
    return directory() / relative;
}

DataHome DataHome::find() {
    std::vector<fs::path> places;
    if (const fs::path folder = library_folder(); !folder.empty())
        places = {folder / "corvane", folder.parent_path() / "home"};
    const auto beside = std::find_if(places.begin(), places.end(), has_tree);
    char const* const variable = std::getenv("CORVANE_DATA");
    if (variable && *variable) {
        if (!has_tree(variable))
            throw OpenFailure("CORVANE_DATA: " + std::string(variable) + " does not hold CorvaneS",
                              variable);
        const DataHome named(variable);
        return beside == places.end() ? named : named.over(DataHome(*beside));
    }
    if (beside != places.end()) return DataHome(*beside);
    std::error_code error;
    if (const fs::path working = fs::current_path(error); !error) places.push_back(working);
    std::string tried;
    for (fs::path const& place : places) {
        if (has_tree(place)) return DataHome(place);
        tried += (tried.empty() ? "" : ", ") + place.string();
    }
    throw OpenFailure("no data home (a directory that holds CorvaneS) in " + tried +
                      "; name one with CORVANE_DATA");
}

}  // namespace corvane
