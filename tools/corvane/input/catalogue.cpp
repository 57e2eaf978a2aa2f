#include <tools/corvane/input/catalogue.h>
#include <tools/corvane/text/text.h>

#include <corvane/core/constants.h>

#include <algorithm>
#include <charconv>
#include <functional>

namespace cli {
namespace {
namespace fs = std::filesystem;

void each_entry(fs::path const& folder, std::function<void(std::string const&)> const& use) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        use(entry->path().filename().string());
}

/// The equation in "libth<equation>.dll", or "".
std::string equation_of(std::string const& file) {
    constexpr std::string_view head = "libth", tail = ".dll";
    if (file.size() <= head.size() + tail.size() || file.compare(0, head.size(), head) != 0 ||
        file.compare(file.size() - tail.size(), tail.size(), tail) != 0)
        return "";
    return file.substr(head.size(), file.size() - head.size() - tail.size());
}

/// Splits "<substance>;<number>"; 0 for anything else.
int set_number(std::string const& file, std::string& substance) {
    const std::size_t at = file.rfind(';');
    if (at == std::string::npos) return 0;
    int number = 0;
    const auto [end, error] =
        std::from_chars(file.data() + at + 1, file.data() + file.size(), number);
    if (error != std::errc() || end != file.data() + file.size()) return 0;
    substance = file.substr(0, at);
    return number;
}
}  // namespace

bool has_plugin(fs::path const& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (!equation_of(entry->path().filename().string()).empty()) return true;
    return false;
}

Plugins plugins() {
    Plugins found;
    for (char const* folder : {"CorvaneS", "."})
        each_entry(folder, [&](std::string const& file) {
            const std::string name = equation_of(file);
            if (name.empty()) return;
            auto& names = name.find('+') == std::string::npos ? found.pure : found.mixture;
            if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
        });
    std::sort(found.pure.begin(), found.pure.end());
    std::sort(found.mixture.begin(), found.mixture.end());
    return found;
}

std::vector<std::string> parameter_folders() {
    std::vector<std::string> names;
    each_entry("CorvaneS/parameters", [&](std::string const& file) {
        std::error_code error;
        if (fs::is_directory(fs::path("CorvaneS/parameters") / file, error)) names.push_back(file);
    });
    std::sort(names.begin(), names.end());
    return names;
}

std::map<std::string, std::vector<int>> parameter_sets(std::string const& eos) {
    std::map<std::string, std::vector<int>> sets;
    each_entry(fs::path("CorvaneS/parameters") / eos, [&](std::string const& file) {
        std::string substance;
        if (const int number = set_number(file, substance)) sets[substance].push_back(number);
    });
    for (auto& [substance, numbers] : sets) std::sort(numbers.begin(), numbers.end());
    return sets;
}

std::vector<int> parameter_sets(std::string const& eos, std::string const& substance) {
    const auto all = parameter_sets(eos);
    const auto found = all.find(substance);
    return found == all.end() ? std::vector<int>() : found->second;
}

bool is_file_name(std::string const& text) {
    return !text.empty() && text.size() < th_namelength && text != "." && text != ".." &&
           text.find_first_of("/;") == std::string::npos;
}

}  // namespace cli
