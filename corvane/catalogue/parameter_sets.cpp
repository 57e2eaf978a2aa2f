#include <corvane/catalogue/parameter_sets.h>
#include <corvane/core/collected.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>
#include <corvane/pure/plugin_registry.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <limits>
#include <set>

#include <unistd.h>

namespace corvane {
namespace {
namespace fs = std::filesystem;
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

void each_entry(fs::path const& folder, std::function<void(fs::path const&)> const& use) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        use(entry->path());
}

/// The equation in "libth<equation>.dll", or "".
std::string equation_of(std::string const& file) {
    constexpr std::string_view head = "libth", tail = ".dll";
    if (file.size() <= head.size() + tail.size() || !file.starts_with(head) ||
        !file.ends_with(tail))
        return "";
    return file.substr(head.size(), file.size() - head.size() - tail.size());
}

const fs::path kParameters = "CorvaneS/parameters";

/// What lies in a folder of any directory of the home.
void each_entry(DataHome const& home, fs::path const& folder,
                std::function<void(fs::path const&)> const& use) {
    for (fs::path const& directory : home.directories()) each_entry(directory / folder, use);
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

/// The text after "<key>" in a line, if the line begins with it.
bool starts(std::string_view line, std::string_view key, std::string& rest) {
    if (!line.starts_with(key)) return false;
    rest = trimmed(line.substr(key.size()));
    return true;
}

/// The next words as numbers; a word that is none leaves its value unknown.
void read_numbers(std::string_view text, std::initializer_list<double*> values) {
    auto value = values.begin();
    for (std::string const& word : split(text, ' '))
        if (!word.empty() && value != values.end())
            **value++ = to_number(trimmed(word)).value_or(kUnknown);
}
}  // namespace

Plugins plugins(DataHome const& home) {
    const auto linked1 = linked_names<Model1>(), linkedN = linked_names<ModelN>();
    std::set<std::string> pure(linked1.begin(), linked1.end());
    std::set<std::string> mixture(linkedN.begin(), linkedN.end());
    for (char const* folder : {"CorvaneS", "."})
        each_entry(home, folder, [&](fs::path const& file) {
            const std::string name = equation_of(file.filename().string());
            if (!name.empty())
                (name.find('+') == std::string::npos ? pure : mixture).insert(name);
        });
    return {{pure.begin(), pure.end()}, {mixture.begin(), mixture.end()}};
}

std::vector<std::string> equations(DataHome const& home) {
    std::set<std::string> names;
    each_entry(home, kParameters, [&](fs::path const& folder) {
        std::error_code error;
        if (fs::is_directory(folder, error)) names.insert(folder.filename().string());
    });
    return {names.begin(), names.end()};
}

std::set<std::string> file_names(DataHome const& home, std::string const& folder) {
    std::set<std::string> names;
    each_entry(home, folder, [&](fs::path const& file) { names.insert(file.filename().string()); });
    for (fs::path const& directory : home.directories())
        for (std::string& name : collected_names((directory / folder).string()))
            names.insert(std::move(name));
    return names;
}

std::map<std::string, std::vector<int>> parameter_sets(DataHome const& home,
                                                       std::string const& equation) {
    std::map<std::string, std::vector<int>> sets;
    if (!is_file_name(equation)) return sets;
    for (std::string const& file : file_names(home, (kParameters / equation).string())) {
        std::string substance;
        if (const int number = set_number(file, substance)) sets[substance].push_back(number);
    }
    for (auto& [substance, numbers] : sets) {
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    }
    return sets;
}

std::vector<int> parameter_sets(DataHome const& home, std::string const& equation,
                                std::string const& substance) {
    std::set<int> numbers;  // without sorting those of thousands of others
    if (!is_file_name(equation)) return {};
    const auto take = [&](std::string const& file) {
        std::string name;
        if (!file.starts_with(substance)) return;
        if (const int number = set_number(file, name); name == substance && number != 0)
            numbers.insert(number);
    };
    const fs::path folder = kParameters / equation;
    each_entry(home, folder, [&](fs::path const& file) { take(file.filename().string()); });
    for (fs::path const& directory : home.directories())
        for (std::string const& file : collected_names((directory / folder).string())) take(file);
    return {numbers.begin(), numbers.end()};
}

bool has_parameter_set(DataHome const& home, std::string const& equation,
                       std::string const& substance, int set) {
    if (!is_file_name(equation) || !is_file_name(substance)) return false;
    const std::string file = parameter_file(home, equation, substance, set).string();
    return access(file.c_str(), R_OK) == 0 || !collected_text(file).empty();
}

fs::path parameter_file(DataHome const& home, std::string const& equation,
                        std::string const& substance, int set) {
    return home.file(kParameters / equation / (substance + ';' + std::to_string(set)));
}

bool is_file_name(std::string const& text) {
    return !text.empty() && text.size() < th_namelength && text != "." && text != ".." &&
           std::none_of(text.begin(), text.end(), [](char c) {
               return c == '/' || c == ';' || static_cast<unsigned char>(c) <= ' ';
           });
}

ParameterNotes parameter_notes(DataHome const& home, std::string const& equation,
                               std::string const& substance, int set) {
    return parameter_notes(parameter_file(home, equation, substance, set).string());
}

ParameterNotes parameter_notes(std::string const& file) {
    ParameterNotes notes{"", "", kUnknown, kUnknown, kUnknown, kUnknown, kUnknown, kUnknown};
    const std::string text = file_contents(file.c_str());
    std::string_view lines = text;
    std::string rest;
    for (int k = 1; !lines.empty(); ++k) {
        const std::string_view line = next_part(lines, '\n');
        if (k == 3) starts(line, "text:", notes.comment);
        if (starts(line, "valid:", rest))
            read_numbers(rest, {&notes.Tmin, &notes.Tmax, &notes.pmax});
        if (starts(line, "measured:", rest)) read_numbers(rest, {&notes.Tc, &notes.pc, &notes.vc});
        if (starts(line, "source:", rest)) notes.source = rest;
    }
    return notes;
}

std::optional<IdealNotes> ideal_notes(std::string const& file) {
    if (!has_data_file(file)) return std::nullopt;
    const std::string text = file_contents(file.c_str());
    IdealNotes notes{kUnknown, kUnknown, kUnknown, kUnknown, ""};
    std::string_view lines = text;
    std::string rest;
    for (int k = 0; !lines.empty(); ++k) {
        const std::string_view line = next_part(lines, '\n');
        const std::string words = trimmed(line);
        if (k > 0)
            if (const auto T = to_number(words.substr(0, words.find_first_of(" \t")))) {
                if (k == 1) notes.first = *T;
                notes.last = *T;
            }
        if (starts(line, "valid:", rest)) read_numbers(rest, {&notes.Tmin, &notes.Tmax});
        if (starts(line, "source:", rest)) notes.source = rest;
    }
    return notes;
}

}  // namespace corvane
